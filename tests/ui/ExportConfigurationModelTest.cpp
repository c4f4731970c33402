// The export configuration dialog's rules, without a display.

#include "export/CXMLTextFileExportConfiguration.h"
#include "host/ImpexDefinitions.h"
#include "platform/Platform.h"
#include "refhost/testing/TestText.h"
#include "ui/ExportConfigurationModel.h"
#include "ui/FileChoiceModel.h"
#include "host/WideText.h"

#include <gtest/gtest.h>

using VeltoGis::ImportExport::CExportDefinition;

namespace {

WString Stored(const WString& path, const WString& delimiter, int header, int format,
               const WString& comment = WTEXT("#"))
{
    CXMLTextFileExportConfiguration configuration;
    configuration.SetTxtFile(path);
    configuration.SetComment(comment);
    configuration.SetDelimiter(delimiter);
    configuration.SetHeader(header);
    configuration.SetFormat(format);
    return configuration.ToXml();
}

CXMLTextFileExportConfiguration Parsed(const WString& text)
{
    CXMLTextFileExportConfiguration configuration;
    configuration.FromXml(text);
    return configuration;
}

} // namespace

TEST(ExportConfigurationModel, OpensEachStoredValueAsTheDialogShowsIt)
{
    struct Case {
        WString stored;
        ExportConfigurationModel::DelimiterKind kind;
        WString other;
        bool header;
        int format;
        WString path = WTEXT("a.txt");
    };
    using Model = ExportConfigurationModel;
    const Case cases[] = {
        {Stored(WTEXT("a.txt"), WTEXT(" "), 1, 0), Model::DelimiterSpace, WTEXT(""), true, 0},
        {Stored(WTEXT("a.txt"), WTEXT("\t"), 0, 1), Model::DelimiterTab, WTEXT(""), false, 1},
        {Stored(WTEXT("a.txt"), WTEXT(";"), 2, 2), Model::DelimiterOther, WTEXT(";"), true, 0},
        {Stored(WTEXT("a.txt"), WTEXT(""), 0, -1), Model::DelimiterOther, WTEXT(""), false, 0},
        {Stored(WTEXT("a.txt"), WTEXT(" ;"), 0, 0), Model::DelimiterOther, WTEXT(" ;"), false, 0},
        // Text that is no configuration opens with the dialog's defaults.
        {WTEXT(""), Model::DelimiterSpace, WTEXT(""), false, 0, WTEXT("")},
        {WTEXT("not xml at all"), Model::DelimiterSpace, WTEXT(""), false, 0, WTEXT("")},
        {WTEXT("<other txtFile=\"x\"/>"), Model::DelimiterSpace, WTEXT(""), false, 0, WTEXT("")},
    };
    for (const Case& c : cases) {
        for (const bool node : {false, true}) {
            CExportDefinition definition;
            (node ? definition.SetExporterConfigurationNode(c.stored.c_str())
                  : definition.SetExporterConfiguration(c.stored.c_str()));
            ExportConfigurationModel model(definition, node);
            model.Open();
            EXPECT_EQ(model.filePath, c.path);
            EXPECT_EQ(model.delimiterKind, c.kind);
            EXPECT_EQ(model.otherDelimiter, c.other);
            EXPECT_EQ(model.header, c.header);
            EXPECT_EQ(model.formatChoice, c.format);
            EXPECT_EQ(model.OtherDelimiterEnabled(), c.kind == Model::DelimiterOther);
        }
    }
}

TEST(ExportConfigurationModel, ChosenFileGetsTxtUnlessItEndsInIt)
{
    const std::pair<WString, WString> cases[] = {
        {WTEXT("out.TXT"), WTEXT("out.TXT")},      {WTEXT("out.csv"), WTEXT("out.csv.txt")},
        {WTEXT("out.txt"), WTEXT("out.txt")},      {WTEXT("/a.b/out"), WTEXT("/a.b/out.txt")},
        {WTEXT(""), WTEXT("")},                    {WTEXT("txt"), WTEXT("txt.txt")},
        {WTEXT("x.Txt"), WTEXT("x.Txt")},          {WTEXT("x.txt "), WTEXT("x.txt .txt")},
        // The last four characters count, the dot among them: "txt" at the end is not enough.
        {WTEXT("mytxt"), WTEXT("mytxt.txt")},      {WTEXT("out_txt"), WTEXT("out_txt.txt")},
        {WTEXT(".txt"), WTEXT(".txt")},            {WTEXT("a.TxT"), WTEXT("a.TxT")}};
    for (const auto& [chosen, expected] : cases) {
        SCOPED_TRACE(refhost::testing::U8(chosen));
        CExportDefinition definition;
        ExportConfigurationModel model(definition, false);
        model.TakeChosenFile(chosen);
        EXPECT_EQ(model.filePath, expected);
    }
}

TEST(ExportConfigurationModel, OkStoresBeforeItChecks)
{
    struct Case {
        WString path;
        ExportConfigurationModel::DelimiterKind kind;
        WString other;
        std::optional<MessageId> problem;
        WString storedDelimiter;
    };
    const Case cases[] = {
        {WTEXT(""), ExportConfigurationModel::DelimiterSpace, WTEXT(""), MessageId::ExportPathMissing, WTEXT(" ")},
        {WTEXT(""), ExportConfigurationModel::DelimiterOther, WTEXT(""), MessageId::ExportPathMissing, WTEXT("")},
        {WTEXT("o.txt"), ExportConfigurationModel::DelimiterOther, WTEXT(""), MessageId::ExportDelimiterMissing,
         WTEXT("")},
        {WTEXT("o.txt"), ExportConfigurationModel::DelimiterOther, WTEXT("||"), std::nullopt, WTEXT("||")},
        {WTEXT("o.txt"), ExportConfigurationModel::DelimiterTab, WTEXT("ignored"), std::nullopt, WTEXT("\t")},
    };
    for (const Case& c : cases) {
        for (const bool node : {false, true}) {
            CExportDefinition definition;
            ExportConfigurationModel model(definition, node);
            model.filePath = c.path;
            model.delimiterKind = c.kind;
            model.otherDelimiter = c.other;
            model.header = true;
            model.formatChoice = 1;
            EXPECT_EQ(model.Confirm(), c.problem);
            const CXMLTextFileExportConfiguration stored = Parsed(
                node ? definition.GetExporterConfigurationNode() : definition.GetExporterConfiguration());
            EXPECT_EQ(stored.GetTxtFile(), c.path);
            EXPECT_EQ(stored.GetDelimiter(), c.storedDelimiter);
            EXPECT_EQ(stored.GetHeader(), 1);
            EXPECT_EQ(stored.GetFormat(), 1);
            EXPECT_EQ((node ? definition.GetExporterConfiguration() : definition.GetExporterConfigurationNode()),
                      WString());
        }
    }
}

TEST(ExportConfigurationModel, HardPathsAndAStoredFormatOfTwoRoundTripThroughOk)
{
    // Stored values pass through the ANSI code page: a path keeps what that code page holds.
    const std::pair<unsigned, WString> paths[] = {
        {1252, WString(10000, WChar('p')) + WTEXT(".txt")},
        {1252, WTEXT("/tmp/M\u00fcller/Stra\u00dfe \u00bd.txt")},
        {1250, WTEXT("/tmp/\u0141\u00f3d\u017a/plik.txt")},
        {1253, WTEXT("/tmp/\u03b1\u03b2\u03b3.txt")},
        {1252, WTEXT("/tmp/say \"hi\".txt")},
        {1252, WTEXT("C:\\a&b<c>'d=e.txt")}};
    for (const auto& [codePage, path] : paths) {
        Platform::SetAnsiCodePage(codePage);
        CExportDefinition definition;
        definition.SetExporterConfiguration(Stored(path, WTEXT("\t"), 1, 2, WTEXT("// \u00a7")).c_str());
        ExportConfigurationModel model(definition, false);
        model.Open();
        EXPECT_EQ(model.Confirm(), std::nullopt);
        const CXMLTextFileExportConfiguration stored = Parsed(definition.GetExporterConfiguration());
        EXPECT_EQ(stored.GetTxtFile(), path);
        EXPECT_EQ(stored.GetComment(), WTEXT("// \u00a7"));
        EXPECT_EQ(stored.GetFormat(), 0);
        EXPECT_EQ(stored.GetDelimiter(), WTEXT("\t"));
    }
    Platform::SetAnsiCodePage(0);
}

TEST(FileChoiceModel, AsksAboutThePath)
{
    const FileChoiceModel model(WTEXT("/data/out.txt"));
    EXPECT_EQ(model.Question(), FormatWide(LoadMessage(MessageId::FileExistsQuestion), {WTEXT("/data/out.txt")}));
    EXPECT_NE(model.Question().find(WTEXT("/data/out.txt")), WString::npos);
    EXPECT_EQ(model.Title(), LoadMessage(MessageId::FileExistsTitle));
}
