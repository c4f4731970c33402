// The dialog templates that both views are made from: captions with their mnemonics, and
// lists that a view can be built from (ids unique, captions where the kind shows one, the
// ids the wx views and the shared scenarios reach being there).

#include "scenarios/DialogScenarios.h"
#include "host/Messages.h"
#include "refhost/testing/TestText.h"
#include "ui/DialogTemplates.h"
#include "ui/TemplateIds.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>

using refhost::testing::U8;
using refhost::testing::W;

namespace {

struct NamedTemplate {
    const char* name;
    const DialogTemplate& dialog;
};

const NamedTemplate kTemplates[] = {{"import", ImportDialogTemplate()},
                                    {"export", ExportDialogTemplate()},
                                    {"file choice", FileChoiceDialogTemplate()}};

bool ShowsCaption(ControlKind kind)
{
    switch (kind) {
    case ControlKind::Button:
    case ControlKind::DefaultButton:
    case ControlKind::RadioFirst:
    case ControlKind::Radio:
    case ControlKind::Check:
    case ControlKind::GroupBox: return true;
    default: return false;
    }
}

// The letter after a single '&', lower case; 0 when there is none.
char MnemonicOf(const WString& caption)
{
    for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] == '&' && caption[i + 1] == '&')
            ++i;
        else if (caption[i] == '&')
            return static_cast<char>(std::tolower(static_cast<int>(caption[i + 1])));
    }
    return 0;
}

} // namespace

TEST(DialogTemplates, WithMnemonicMarksTheFirstOccurrenceInEitherCaseAndDoublesAmpersands)
{
    struct Case {
        const char* text;
        char letter;
        const char* marked;
    };
    const Case cases[] = {
        {"Output file:", 'f', "Output &file:"},
        {"Space", 's', "&Space"},        // either case
        {"Append", 'p', "A&ppend"},      // the first occurrence only
        {"Tab", 'x', "Tab"},             // a letter the text lacks: no mnemonic
        {"Tab", 0, "Tab"},
        {"Save & close", 'c', "Save && &close"},
        {"", 'a', ""},
        {"\xC3\x9C" "ber", 'b', "\xC3\x9C&ber"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(U8(WithMnemonic(W(c.text), c.letter)), c.marked) << c.text;
}

TEST(DialogTemplates, ControlCaptionIsTheMessageWithItsMnemonicOrTheTemplateLabel)
{
    const DialogControl* fileLabel = ExportDialogTemplate().Find(115);
    ASSERT_NE(fileLabel, nullptr);
    EXPECT_EQ(ControlCaption(*fileLabel), WithMnemonic(LoadMessage(MessageId::ExportDialogFileLabel), 'f'));
    const DialogControl* fixedWidth = ImportDialogTemplate().Find(205);
    ASSERT_NE(fixedWidth, nullptr);
    EXPECT_EQ(U8(ControlCaption(*fixedWidth)), "Fi&xed width");
    const DialogControl* path = ImportDialogTemplate().Find(201);
    ASSERT_NE(path, nullptr);
    EXPECT_EQ(ControlCaption(*path), WString());
}

TEST(DialogTemplates, IdsAreUniqueCaptionsShownAndMnemonicsDistinctPerDialog)
{
    for (const NamedTemplate& entry : kTemplates) {
        SCOPED_TRACE(entry.name);
        EXPECT_FALSE(LoadMessage(static_cast<MessageId>(entry.dialog.title)).empty()) << "title";
        std::set<int> ids;
        std::set<char> mnemonics;
        for (const DialogControl& control : entry.dialog) {
            SCOPED_TRACE(control.id);
            EXPECT_TRUE(ids.insert(control.id).second) << "id twice";
            const WString caption = ControlCaption(control);
            if (ShowsCaption(control.kind)) {
                EXPECT_FALSE(caption.empty()) << "no caption";
            }
            if (control.caption != 0) {
                EXPECT_FALSE(LoadMessage(static_cast<MessageId>(control.caption)).empty()) << "unknown message";
            }
            if (control.mnemonic != 0) {
                EXPECT_NE(MnemonicOf(caption), 0) << "the mnemonic letter is not in the caption";
            }
            if (const char letter = MnemonicOf(caption)) {
                EXPECT_TRUE(mnemonics.insert(letter).second) << "mnemonic " << letter << " twice";
            }
        }
    }
}

TEST(DialogTemplates, EveryControlTheWxViewsReachIsInItsTemplateWithItsKind)
{
    const auto check = [](const DialogTemplate& dialog, const auto& used) {
        for (const auto& [id, kind] : used) {
            const DialogControl* control = dialog.Find(id);
            ASSERT_NE(control, nullptr) << "template " << dialog.id << " lacks " << id;
            EXPECT_EQ(control->kind, kind) << "template " << dialog.id << " control " << id;
        }
    };
    check(ImportDialogTemplate(), ImportControl::kUsed);
    check(ExportDialogTemplate(), ExportControl::kUsed);
    check(FileChoiceDialogTemplate(), FileChoiceControl::kUsed);
}

// A scenario that names a control its dialog lacks would fail on one toolkit and not make
// sense on any.
TEST(DialogTemplates, EveryControlTheScenariosUseIsInTheirDialog)
{
    for (const DialogScenario& scenario : DialogScenarios()) {
        SCOPED_TRACE(scenario.name);
        const DialogTemplate& dialog = scenario.dialog == kImportDialogId   ? ImportDialogTemplate()
                                       : scenario.dialog == kExportDialogId ? ExportDialogTemplate()
                                                                            : FileChoiceDialogTemplate();
        EXPECT_EQ(dialog.id, scenario.dialog);
        for (const ScenarioStep& step : scenario.steps) {
            if (step.control != 0 && step.kind != ScenarioStep::ExpectAlert) {
                EXPECT_NE(dialog.Find(step.control), nullptr) << "control " << step.control;
            }
        }
    }
}
