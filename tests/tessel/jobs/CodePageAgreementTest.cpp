// tessel and the module it loads must agree on every code page the platform layer converts:
// tessel accepts it, writes a column name as the module's own configuration writer does,
// and the loaded engine reads the same name back. Both follow one choice for the process.

#include "host/Utf8.h"
#include "import/ImportTxtConfiguration.h"
#include "platform/Platform.h"
#include "refhost/HostSide.h"
#include "refhost/testing/TempDir.h"
#include "tessel/jobs/ConfigDraft.h"
#include "tests/tessel/AppTestSupport.h"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

namespace tessel {
namespace testing {
namespace {

// A character beyond ASCII that the code page holds, so that its byte form is the code
// page's own; 0 when none of the candidates fits.
WChar CharacterOf(unsigned codePage)
{
    const WChar candidates[] = {0x20AC, 0x00E9, 0x0141, 0x03A9, 0x0416, 0x05E9, 0x0627, 0x0E01, 0x65E5, 0x00A7};
    for (const WChar candidate : candidates) {
        char bytes[8] = {};
        bool usedDefault = false;
        if (Platform::WideToMultiByte(codePage, &candidate, 1, bytes, sizeof bytes, nullptr, &usedDefault) > 0 &&
            !usedDefault)
            return candidate;
    }
    return 0;
}

// The module's own configuration string for one text column of that name.
WString ModuleWrites(const WString& name, unsigned codePage)
{
    Platform::SetAnsiCodePage(codePage);
    ImportTxtConfiguration configuration;
    configuration.SetDelimiters({WTEXT(" ")});
    configuration.SetComments(WTEXT("#"));
    auto column = boost::make_shared<CColumnData>();
    column->SetName(name);
    column->SetType(kColumnText);
    column->SetOnOff(1);
    configuration.GetColumns().push_back(column);
    const WString text = configuration.ToXml();
    Platform::SetAnsiCodePage(0);
    return text;
}

} // namespace

TEST(CodePageAgreement, EveryConvertibleCodePageWritesAndReadsColumnsAsTheModuleDoes)
{
    const std::vector<unsigned> codePages = Platform::ConvertibleCodePages();
    ASSERT_FALSE(codePages.empty());
    refhost::testing::TempDir folder;
    for (const unsigned codePage : codePages) {
        SCOPED_TRACE("code page " + std::to_string(codePage));
        const WChar character = CharacterOf(codePage);
        if (!character)
            continue;
        const WString name = WString(1, character) + WTEXT("uro");
        const std::string page = std::to_string(codePage);
        const TesselRun config =
            RunTessel({"-q", "--codepage", page, "config", "import", "--column", ToUtf8(name)}, folder.Path());
        ASSERT_EQ(config.status, 0) << config.err;
        EXPECT_EQ(config.out, ToUtf8(ModuleWrites(name, codePage)) + "\n");

        folder.WriteFile("cfg.xml", config.out);
        const TesselRun described = RunTessel({"-q", "--codepage", page, "describe", "cfg.xml"}, folder.Path());
        ASSERT_EQ(described.status, 0) << described.err;
        EXPECT_NE(described.out.find("source fields: " + ToUtf8(name) + " (text)"), std::string::npos)
            << described.out;
    }
}

// The module loaded into this process reads in the code page chosen on tessel's side after it
// was loaded: a copy of the platform layer of its own must not keep a choice of its own.
TEST(CodePageAgreement, TheLoadedModuleReadsInTheCodePageChosenAfterItLoaded)
{
    VeltoGis::ImportExport::IImportEngine& engine = LoadedModule().Importer();
    refhost::testing::TempDir folder;
    const WString path = folder.WriteFile("in.txt", "\x8D\xA3\n");
    const std::pair<unsigned, WString> cases[] = {{1250, WTEXT("\u0164\u0141")}, {1252, WTEXT("\u008D\u00A3")}};
    for (const auto& [codePage, text] : cases) {
        Platform::SetAnsiCodePage(codePage);
        ImportConfigChoice choice;
        choice.columns = {ColumnOption{"c0", kColumnText, true}};
        VeltoGis::ImportExport::CImportDefinition definition;
        definition.SetImporterConfiguration(ImportConfigDraft(choice, codePage).c_str());
        ASSERT_EQ(engine.SetPrimaryFilePath(&definition, path.c_str()), 1);
        auto table = boost::make_shared<VeltoGis::ImportExport::CDBTable>();
        ASSERT_EQ(engine.ImportTableRows(definition.GetImporterConfiguration().c_str(), table, 0), 1);
        const auto rows = refhost::RowsOf(*table);
        ASSERT_EQ(rows.size(), 1u);
        EXPECT_EQ(static_cast<WString>(*rows[0]->Data().at(0)), text) << "code page " << codePage;
    }
    Platform::SetAnsiCodePage(0);
}

} // namespace testing
} // namespace tessel
