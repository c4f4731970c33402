// Header lines and the account of what an import did not take: a configuration without
// header lines is the text it always was and imports as it always did; with them, the first
// non-comment lines are skipped and listed; values that do not convert are counted per
// column and listed with their line, while the values themselves stay what they were.

#include "ImportTestSupport.h"

#include "import/ImportTxtConfiguration.h"
#include "refhost/HostSide.h"
#include "import/LastImportAccount.h"
#include "tests/xml/Windows1252Test.h"

#include <boost/make_shared.hpp>

#include <regex>

using namespace importtest;
using namespace VeltoGis::ImportExport;
using namespace TxtImport;

namespace {

// Configuration strings the other suites store (ImportTxtConfigurationTest,
// InformationCommandTest, ImportCommandTest, BadInputTest, CadHostLoadTest,
// ImportConfigurationModelTest, ConfigDraftTest's drafts), each as the engine writes it.
const char* const kStoredConfigurations[] = {
    R"(<?xml version="1.0" encoding="utf-8"?><cfg txtFile="" delimiter="" comments="" mode="0" colPositions=""></cfg>)",
    R"(<?xml version="1.0" encoding="utf-8"?><cfg txtFile="C:\Data\M=EF=BF=BCller &amp; =EF=BF=97Partner=EF=BF=97.txt" )"
    "delimiter=\"\t;\" comments=\"#&apos;\" mode=\"1\" colPositions=\"12\xC2\xA4" "25\xC2\xA4" "40\xC2\xA4\">"
    R"(<col no="0" name="X" type="5001" onOff="1"/><col no="1" name="a=3D=EF=BF=97b=EF=BF=97" type="5005" onOff="0"/></cfg>)",
    R"(<?xml version="1.0" encoding="utf-8"?><cfg txtFile="data.txt" delimiter=";" comments="#" mode="0" colPositions="">)"
    R"(<col no="0" name="a" type="5005" onOff="1"/><col no="1" name="b" type="5001" onOff="0"/></cfg>)",
    "<?xml version=\"1.0\" encoding=\"utf-8\"?><cfg txtFile=\"in.txt\" delimiter=\";\" comments=\"#\" mode=\"1\" "
    "colPositions=\"3\xC2\xA4\"><col no=\"0\" name=\"a=EF=BF=97b\" type=\"5005\" onOff=\"1\"/></cfg>",
    R"(<?xml version="1.0" encoding="utf-8"?><cfg txtFile="" delimiter=" " comments="" mode="0" colPositions="">)"
    R"(<col no="-1" name="a" type="5005" onOff="1"/></cfg>)",
    R"(<?xml version="1.0" encoding="utf-8"?><cfg txtFile="survey.txt" delimiter=";" comments="#" mode="0" colPositions="">)"
    R"(<col no="0" name="Name" type="5005" onOff="1"/><col no="1" name="X" type="5001" onOff="1"/>)"
    R"(<col no="2" name="Y" type="5001" onOff="1"/><col no="3" name="Code" type="5010" onOff="1"/></cfg>)",
    "<?xml version=\"1.0\" encoding=\"utf-8\"?><cfg txtFile=\"survey.txt\" delimiter=\"\t;\" comments=\"#&amp;\" "
    "mode=\"1\" colPositions=\"2\xC2\xA4" "5\xC2\xA4\"><col no=\"0\" name=\"C1\" type=\"5005\" onOff=\"0\"/>"
    "<col no=\"1\" name=\"Height\" type=\"5005\" onOff=\"1\"/></cfg>",
    "<?xml version=\"1.0\" encoding=\"utf-8\"?><cfg txtFile=\"survey.txt\" delimiter=\"\t;\" comments=\"#&amp;\" "
    "mode=\"0\" colPositions=\"\"><col no=\"0\" name=\"C1\" type=\"5010\" onOff=\"0\"/>"
    "<col no=\"1\" name=\"Height\" type=\"5001\" onOff=\"1\"/><col no=\"2\" name=\"C3\" type=\"5005\" onOff=\"1\"/></cfg>",
    R"(<?xml version="1.0" encoding="utf-8"?><cfg txtFile="" delimiter=" " comments="#" mode="0" colPositions="">)"
    R"(<col no="0" name="name" type="5005" onOff="1"/><col no="1" name="x" type="5001" onOff="1"/></cfg>)",
};

class StoredConfigurations : public Windows1252Test {};

class HeaderLinesAndAccount : public ImportTest {
protected:
    // The stored string reading the bytes: its file path swapped for a file holding them.
    WString Reading(const std::string& stored, const std::string& bytes)
    {
        static const std::regex path(R"(txtFile="[^"]*")");
        return W(std::regex_replace(stored, path, "txtFile=\"" + U8(File(bytes)) + "\""));
    }

    Texts Rows(const WString& configuration)
    {
        auto table = boost::make_shared<CDBTable>();
        EXPECT_EQ(engine.ImportTableRows(configuration.c_str(), table, 0), 1);
        return Describe(*table);
    }
};

} // namespace

TEST_F(StoredConfigurations, ReadAndWriteByteForByteAsBefore)
{
    for (const char* stored : kStoredConfigurations) {
        ImportTxtConfiguration record;
        ASSERT_EQ(record.Parse(W(stored).c_str()), 1) << stored;
        EXPECT_EQ(record.GetHeaderLines(), 0);
        EXPECT_EQ(U8(record.ToXml()), stored);
    }
}

TEST_F(HeaderLinesAndAccount, StoredConfigurationsImportAsBeforeAndHeaderLinesSkipOnlyDataLines)
{
    const std::string bytes = "#c\nA;1.5;2\n&x\nB\t2.5;7\nC;q;9\n";
    // What each stored configuration read from these bytes before header lines existed.
    const Texts expected[] = {
        {"[]", "[]", "[]", "[]", "[]"},
        {"[r:0 null]", "[r:0 null]", "[r:0 null]", "[r:0 null]"},
        {"[t:A r:1.5]", "[t:&x null]", "[t:B\t2.5 r:7]", "[t:C r:0]"},
        {"[t:A;1]", "[t:&x]", "[t:B\t2]", "[t:C;q]"},
        {},
        {"[t:A r:1.5 r:2 null]", "[t:&x null null null]", "[t:B\t2.5 r:7 null null]", "[t:C r:0 r:9 null]"},
        {"[t:A; t:1.5]", "[t:B\t t:2.5]", "[t:C; t:q;9]"},
        {"[i:0 r:1.5 t:2]", "[i:0 r:2.5 t:7]", "[i:0 r:0 t:9]"},
        {"[t:A;1.5;2 null]", "[t:&x null]", "[t:B\t2.5;7 null]", "[t:C;q;9 null]"},
    };
    for (std::size_t i = 0; i < std::size(kStoredConfigurations); ++i) {
        const std::string stored = kStoredConfigurations[i];
        if (stored.find("no=\"-1\"") != std::string::npos)
            continue; // a negative column throws, before and after
        const WString configuration = Reading(stored, bytes);
        EXPECT_EQ(Rows(configuration), expected[i]) << stored;
        ImportTxtConfiguration withHeader;
        withHeader.Parse(configuration.c_str());
        withHeader.SetHeaderLines(1);
        Texts rest = expected[i];
        if (!rest.empty())
            rest.erase(rest.begin());
        EXPECT_EQ(Rows(withHeader.ToXml()), rest) << stored;
    }
}

TEST_F(HeaderLinesAndAccount, HeaderLinesAreWrittenOnlyWhenSetAndReadBack)
{
    for (const auto& [lines, attribute] : {std::pair{0, ""}, {-2, ""}, {1, " headerLines=\"1\""}, {12, " headerLines=\"12\""}}) {
        ImportTxtConfiguration record;
        record.SetHeaderLines(lines);
        const std::string xml = U8(record.ToXml());
        EXPECT_NE(xml.find(std::string("colPositions=\"\"") + attribute + ">"), std::string::npos) << xml;
        ImportTxtConfiguration read;
        read.Parse(record.ToXml().c_str());
        EXPECT_EQ(read.GetHeaderLines(), std::max(lines, 0));
    }
}

TEST_F(HeaderLinesAndAccount, CountsAndListsWhatDidNotConvertWithoutChangingValues)
{
    const Layout layout{{","}, "#", 0, {}, {{0, "name", Text}, {1, "x", Real}, {2, "y", Real}, {3, "n", Integer}}};
    const std::string bytes = "name,x,y,n\n#note\nP1,1.5,2,7\nP2,abc,2,7\nP3,1,2,7.5\n,,,\nP5,12m,-,8\n";
    auto definition = Job(VeltoGis::EntityTypePoint, bytes, layout,
                          {{"name", "ENTITY_NAME"}, {"x", "NODE_COORDINATE_X"}, {"y", "NODE_COORDINATE_Y"}, {"n", "N"}});
    ImportTxtConfiguration configuration;
    configuration.Parse(definition.GetImporterConfiguration().c_str());
    configuration.SetHeaderLines(1);
    definition.SetImporterConfiguration(configuration.ToXml().c_str());
    ImpexEntityList points;
    ASSERT_EQ(engine.ImportPoints(&definition, points, 0, nullptr), 1);
    EXPECT_EQ(Describe(points), (Texts{"P1 @1.5,2 [t:P1 r:1.5 r:2 i:7]", "P2 @0,2 [t:P2 r:0 r:2 i:7]",
                                       "P3 @1,2 [t:P3 r:1 r:2 i:7]", "- @- [null null null null]",
                                       "P5 @12,0 [t:P5 r:12 r:0 i:8]"}));

    const CImportAccount& account = *TesselLastImportAccount();
    EXPECT_EQ(account.lines, 7u);
    EXPECT_EQ(account.commentLines, 1u);
    ASSERT_EQ(account.skipped.size(), 1u);
    EXPECT_EQ(account.skipped[0].line, 1u);
    EXPECT_EQ(account.skipped[0].reason, SkipHeaderLine);
    std::vector<std::string> rejected;
    for (const CImportRejectedValue& value : account.rejected)
        rejected.push_back(std::to_string(value.line) + ":" + std::to_string(value.columnNo) + ":" + U8(value.text) +
                           ":" + std::to_string(value.fault));
    EXPECT_EQ(rejected, (std::vector<std::string>{"4:1:abc:1", "5:3:7.5:2", "7:1:12m:1", "7:2:-:1"}));
    std::vector<std::string> counts;
    for (const CImportColumnAccount& column : account.columns)
        counts.push_back(U8(column.name) + "=" + std::to_string(column.unconverted));
    EXPECT_EQ(counts, (std::vector<std::string>{"x=2", "y=1", "n=1"}));
}

TEST_F(HeaderLinesAndAccount, LinesLeftOutByTheBuildersAreListedWithTheirReason)
{
    const Layout layout{{" "}, "", 0, {}, {{0, "x", Real}, {1, "y", Real}}};
    const std::vector<BindPair> binds = {{"x", "NODE_COORDINATE_X"}, {"y", "NODE_COORDINATE_Y"}};
    auto definition = Job(VeltoGis::EntityTypePoint, "1 1\n50 50\nbad 2\n", layout, binds);
    ImpexEntityList points;
    CLq filter(0, 0, 10, 10);
    ASSERT_EQ(engine.ImportPoints(&definition, points, 0, &filter), 1);
    const CImportAccount& filtered = *TesselLastImportAccount();
    ASSERT_EQ(filtered.skipped.size(), 1u);
    EXPECT_EQ(filtered.skipped[0].line, 2u);
    EXPECT_EQ(filtered.skipped[0].reason, SkipOutsideFilter);
    // A kept point's value that did not convert is listed; a filtered one's is not looked at.
    EXPECT_EQ(filtered.rejected.size(), 1u);

    auto cloud = boost::make_shared<CCloud>(CCloud::Storage::KeepPoints);
    auto cloudJob = Job(VeltoGis::EntityTypePoint, "1 1\n7\n", layout, binds);
    ASSERT_EQ(engine.ImportCloud(&cloudJob, cloud), 1);
    ASSERT_EQ(TesselLastImportAccount()->skipped.size(), 1u);
    EXPECT_EQ(TesselLastImportAccount()->skipped[0].reason, SkipWithoutPosition);
}
