// The configuration drafts that tessel composes from options, read by the loaded module's
// engines: every field must come back as given, through the engines' own operations.

#include "refhost/HostSide.h"
#include "refhost/testing/TempDir.h"
#include "refhost/testing/TestText.h"
#include "tessel/core/AppError.h"
#include "tessel/jobs/ConfigDraft.h"
#include "tests/tessel/AppTestSupport.h"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

namespace tessel {
namespace testing {
namespace {

using namespace VeltoGis::ImportExport;
using refhost::testing::TempDir;
using refhost::testing::U8;
using refhost::testing::W;

constexpr unsigned kCodePage = 1252;

ColumnOption Column(const char* name, ColumnTypeCode type = kColumnText, bool enabled = true)
{
    return ColumnOption{name, type, enabled};
}

TEST(ImportConfigDraft, EngineReadsBackPathDescriptionAndSourceFields)
{
    IImportEngine& engine = LoadedModule().Importer();
    ImportConfigChoice choice;
    choice.columns = {Column("Punkt"), Column("Höhe", kColumnReal), Column("skip", kColumnInteger, false),
                    Column("a&b<c>'d=e", kColumnInteger)};
    CImportDefinition definition;
    definition.SetImporterConfiguration(ImportConfigDraft(choice, kCodePage).c_str());
    const WString path = W("/Vermessung/Grüße \"neu\" & <alt>=1.txt");
    ASSERT_EQ(engine.SetPrimaryFilePath(&definition, path.c_str()), 1);

    EXPECT_EQ(engine.GetPrimaryFilePath(&definition), path);
    WString description;
    engine.GetDescription(description, &definition, 0);
    EXPECT_EQ(description, W("Text file:") + path);
    DataDefinitionList fields;
    engine.GetSourceDataDefinitions(&definition, fields, 0);
    ASSERT_EQ(fields.size(), 3u);
    const std::pair<const char*, int> expected[] = {{"Punkt", 5005}, {"Höhe", 5001}, {"a&b<c>'d=e", 5010}};
    for (std::size_t i = 0; i < fields.size(); ++i) {
        EXPECT_EQ(U8(fields[i]->GetDataID()), expected[i].first);
        EXPECT_EQ(U8(fields[i]->GetName()), expected[i].first);
        EXPECT_EQ(fields[i]->GetDataType(), expected[i].second);
    }
}

struct SplitCase {
    const char* name;
    std::optional<std::string> delimiters;
    std::optional<std::string> comments;
    std::vector<unsigned> positions;
    std::string file;
    std::vector<std::vector<std::string>> rows;
};

void PrintTo(const SplitCase& test, std::ostream* out) { *out << test.name; }

const SplitCase kSplitCases[] = {
    {"DefaultBlankAndHash", std::nullopt, std::nullopt, {}, "# x\na  b\n", {{"a", "b"}}},
    {"MarkupCharacters", "\"&", "<", {}, "<skip\na\"b&c\n", {{"a", "b", "c"}}},
    {"EqualsSignAndQuote", "='", "=", {}, "=skip\na=b'c\n", {{"a", "b", "c"}}},
    // The file is in the ANSI code page: ° is B0, § A7, ¤ A4.
    {"CodePageCharacters", "§¤", "°", {}, "\xB0skip\na\xA7" "b\xA4" "c\n", {{"a", "b", "c"}}},
    {"TabAndSemicolonKeepEmptyFields", "\t;", "", {}, "a\t;b\n", {{"a", "", "b"}}},
    {"FixedPositions", std::nullopt, "*", {2, 5}, "*skip\nabcdefg\n", {{"ab", "cde", "fg"}}},
};

class ImportConfigDraftSplitting : public ::testing::TestWithParam<SplitCase> {};

TEST_P(ImportConfigDraftSplitting, EngineSplitsAndSkipsAsComposed)
{
    const SplitCase& test = GetParam();
    TempDir folder;
    const WString path = folder.WriteFile("in.txt", test.file);
    ImportConfigChoice choice;
    choice.delimiters = test.delimiters;
    choice.comments = test.comments;
    choice.fixedPositions = test.positions;
    choice.columns = {Column("c0"), Column("c1"), Column("c2")};
    CImportDefinition definition;
    definition.SetImporterConfiguration(ImportConfigDraft(choice, kCodePage).c_str());
    IImportEngine& engine = LoadedModule().Importer();
    ASSERT_EQ(engine.SetPrimaryFilePath(&definition, path.c_str()), 1);

    auto table = boost::make_shared<CDBTable>();
    ASSERT_EQ(engine.ImportTableRows(definition.GetImporterConfiguration().c_str(), table, 0), 1);
    std::vector<std::vector<std::string>> rows;
    for (const auto& row : refhost::RowsOf(*table)) {
        std::vector<std::string> values;
        for (const auto& value : row->Data())
            values.push_back(U8(static_cast<WString>(*value)));
        while (values.size() > test.rows.front().size())
            values.pop_back();
        rows.push_back(values);
    }
    EXPECT_EQ(rows, test.rows);
}

INSTANTIATE_TEST_SUITE_P(Cases, ImportConfigDraftSplitting, ::testing::ValuesIn(kSplitCases),
                         [](const auto& info) { return std::string(info.param.name); });

// What the wizard can store but likely is a mistake: a warning, and the configuration is
// composed all the same; with --strict an error. A character outside the code page cannot be
// stored at all.
struct DoubtfulCase {
    const char* name;
    ImportConfigChoice choice;
    std::string message;
    bool alwaysAnError = false;
};

void PrintTo(const DoubtfulCase& test, std::ostream* out) { *out << test.name; }

ImportConfigChoice ChoiceWith(std::optional<std::string> delimiters, std::vector<ColumnOption> columns)
{
    ImportConfigChoice choice;
    choice.delimiters = std::move(delimiters);
    choice.columns = std::move(columns);
    return choice;
}

const DoubtfulCase kDoubtfulCases[] = {
    {"MultiplicationSignDelimiter", ChoiceWith("×", {Column("a")}),
     "--delimiters: the configuration reads the character '×' back as '\"'"},
    {"QuoteInColumnName", ChoiceWith(std::nullopt, {Column("a\"b")}),
     "--column: 'a\"b' contains '\"', which the configuration reads back as '×'"},
    {"DuplicateColumn", ChoiceWith(std::nullopt, {Column("a"), Column("a")}),
     "--column: 'a' is given twice; binds reach only the first"},
    {"NoDelimiter", ChoiceWith("", {Column("a")}), "--delimiters: no delimiter, so every line is one field"},
    {"NoColumns", ChoiceWith(std::nullopt, {}),
     "no columns: the engine offers no source fields (describe them with --column NAME[:type], or give --config)"},
    {"OutsideCodePage", ChoiceWith("Ω", {Column("a")}), "--delimiters: 'Ω' cannot be written in code page 1252", true},
};

class ImportConfigDraftDoubts : public ::testing::TestWithParam<DoubtfulCase> {};

TEST_P(ImportConfigDraftDoubts, WarnOrUnderStrictRefuse)
{
    const DoubtfulCase& test = GetParam();
    for (const bool strict : {false, true}) {
        ImportConfigChoice choice = test.choice;
        choice.strict = strict;
        ::testing::internal::CaptureStderr();
        try {
            const WString text = ImportConfigDraft(choice, kCodePage);
            EXPECT_FALSE(strict || test.alwaysAnError) << "composed " << U8(text);
            EXPECT_NE(text.find(WTEXT("<cfg")), WString::npos);
            EXPECT_EQ(::testing::internal::GetCapturedStderr(), "warning: " + test.message + "\n");
        } catch (const AppError& error) {
            ::testing::internal::GetCapturedStderr();
            EXPECT_TRUE(strict || test.alwaysAnError) << error.what();
            EXPECT_EQ(error.Status(), ExitUsage);
            EXPECT_EQ(error.what(), test.message + (test.alwaysAnError ? "" : " (--strict)"));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, ImportConfigDraftDoubts, ::testing::ValuesIn(kDoubtfulCases),
                         [](const auto& info) { return std::string(info.param.name); });

// Configuration files: the module's text layer decides by the byte-order mark, and a file
// without one is UTF-8, as tessel writes it.
template <std::size_t N>
std::string Bytes(const char (&literal)[N])
{
    return std::string(literal, N - 1);
}

const struct {
    const char* name;
    std::string bytes;
    WString text;
} kStoredConfigurations[] = {
    {"Utf8WithoutMark", "<cfg p=\"1\xC2\xA4\" n=\"\xC3\xA9\"/>\n", W("<cfg p=\"1\u00a4\" n=\"\u00e9\"/>")},
    {"Utf8WithMark", "\xEF\xBB\xBF<cfg n=\"\xC3\xA9\"/>\r\n", W("<cfg n=\"\u00e9\"/>")},
    {"Utf16LittleEndian", Bytes("\xFF\xFE<\0c\0f\0g\0 \0\xE9\0/\0>\0\r\0\n\0"), W("<cfg \u00e9/>")},
    {"Utf16BigEndian", Bytes("\xFE\xFF\0<\0c\0f\0g\0 \0\xE9\0/\0>"), W("<cfg \u00e9/>")},
    {"LinesJoinedLineEndsAfterDropped", "<cfg\r\n n=\"1\"/>\n\r\n\n", W("<cfg\n n=\"1\"/>")},
    {"BadUtf8ReadsAsReplacement", "<cfg n=\"\xFF\"/>", W("<cfg n=\"\ufffd\"/>")},
};

TEST(ReadConfigurationFile, DecodesByTheMarkAndUtf8WithoutOne)
{
    TempDir folder;
    for (const auto& stored : kStoredConfigurations) {
        SCOPED_TRACE(stored.name);
        const WString path = folder.WriteFile("cfg.xml", stored.bytes);
        EXPECT_EQ(ReadConfigurationFile("--config", U8(path)), stored.text);
    }
}

TEST(ReadConfigurationFile, NamesTheFileItCannotUse)
{
    TempDir folder;
    const std::string empty = U8(folder.WriteFile("empty.xml", ""));
    const std::string markOnly = U8(folder.WriteFile("mark.xml", "\xEF\xBB\xBF\r\n"));
    const std::string missing = U8(folder.FilePath("missing.xml"));
    const auto messageOf = [](const std::string& path) {
        try {
            ReadConfigurationFile("--config", path);
        } catch (const AppError& error) {
            EXPECT_EQ(error.Status(), ExitUsage);
            return std::string(error.what());
        }
        return std::string("read");
    };
    EXPECT_EQ(messageOf(empty), "--config: '" + empty + "' is empty");
    EXPECT_EQ(messageOf(markOnly), "--config: '" + markOnly + "' is empty");
    const std::string unreadable = "--config: cannot read '" + missing + "': ";
    EXPECT_EQ(messageOf(missing).substr(0, unreadable.size()), unreadable);
    EXPECT_GT(messageOf(missing).size(), unreadable.size()); // and says why
}

TEST(ExportConfigDraft, EngineWritesWithTheComposedCommentDelimiterAndEncoding)
{
    IExportEngine& engine = LoadedModule().Exporter();
    TempDir folder;
    for (const bool utf16 : {false, true}) {
        ExportConfigChoice choice;
        choice.comment = "<!-- ";
        choice.delimiter = " & \"=\" ";
        choice.utf16 = utf16;
        CExportDefinition definition;
        refhost::SetEntityType(definition, VeltoGis::EntityTypePoint);
        definition.SetExporterConfiguration(ExportConfigDraft(choice, kCodePage).c_str());
        const WString path = folder.FilePath(utf16 ? "utf16.txt" : "ansi.txt");
        ASSERT_EQ(engine.SetPrimaryFilePath(&definition, path.c_str()), 1);
        auto binds = boost::make_shared<CDataBindCollection>();
        refhost::AddBind(*binds, boost::make_shared<CDataBind>(WTEXT("a"), WTEXT("X")));
        refhost::AddBind(*binds, boost::make_shared<CDataBind>(WTEXT("b"), WTEXT("Y")));
        refhost::SetDBCollection(definition, binds);
        ImpexEntityList entities = {boost::make_shared<CImpexPoint>()};
        entities[0]->AddData(boost::make_shared<VeltoGis::Data::CDataBox>(WTEXT("1")));
        entities[0]->AddData(boost::make_shared<VeltoGis::Data::CDataBox>(WTEXT("é")));

        ASSERT_EQ(engine.ExportPoints(&definition, entities), 1);
        const std::string ansi = "<!-- X & \"=\" Y\r\n1 & \"=\" \xE9\r\n";
        EXPECT_EQ(folder.ReadFile(utf16 ? "utf16.txt" : "ansi.txt"),
                  utf16 ? Utf16LeWithMark(WTEXT("<!-- X & \"=\" Y\r\n1 & \"=\" é\r\n")) : ansi);
    }
}

TEST(ExportConfigDraft, DefaultsAreHashTabHeaderAndAnsi)
{
    CExportDefinition definition;
    definition.SetExporterConfiguration(ExportConfigDraft(ExportConfigChoice(), kCodePage).c_str());
    IExportEngine& engine = LoadedModule().Exporter();
    ASSERT_EQ(engine.SetPrimaryFilePath(&definition, WTEXT("out.txt")), 1);
    EXPECT_EQ(U8(definition.GetExporterConfiguration()),
              R"(<?xml version="1.0" encoding="utf-8"?><cfg txtFile="out.txt" comment="#" delimiter="	" header="1" )"
              R"(format="0"/>)");
}

} // namespace
} // namespace testing
} // namespace tessel
