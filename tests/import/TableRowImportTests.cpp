#include "ImportTestSupport.h"

#include "host/GisUtility.h"
#include "refhost/HostSide.h"

#include <boost/make_shared.hpp>
#include <stdexcept>

using namespace importtest;
using namespace VeltoGis::ImportExport;
using VeltoGis::Data::CDataBox;

namespace {

class TableRowImport : public ImportTest {
protected:
    WString Configuration(const std::string& bytes, const Layout& layout) { return ConfigurationXml(File(bytes), layout); }
    static boost::shared_ptr<CDBTable> Table(int linkedFieldIndex = 0)
    {
        auto table = boost::make_shared<CDBTable>();
        refhost::SetLinkedFieldIndex(*table, linkedFieldIndex);
        return table;
    }
};

// A switched-off column and one beyond every line still get their values.
const Layout kFourColumns{{";"}, "#", 0, {}, {{0, "k", Text}, {1, "n", Integer}, {2, "r", Real, 0}, {5, "far", Text}}};

} // namespace

TEST_F(TableRowImport, EveryLineUpToMaxLinesGivesARow)
{
    const WString configuration = Configuration("a;1;2.5\n#c\nb;2\n\nc;x;4.5\n", kFourColumns);
    auto table = Table();
    table->AddDBRow(boost::make_shared<CDBRow>()); // rows already there stay
    ASSERT_EQ(engine.ImportTableRows(configuration.c_str(), table, 0), 1);
    EXPECT_EQ(Describe(*table), (Texts{"[]", "[t:a i:1 r:2.5 null]", "[t:b i:2 null null]", "[null null null null]",
                                       "[t:c i:0 r:4.5 null]"}));
    // maxLines counts every line read, comments included.
    for (auto [maxLines, rows] : {std::pair{-3, 4u}, {1, 1u}, {2, 1u}, {4, 3u}, {5, 4u}, {99, 4u}}) {
        auto limited = Table();
        ASSERT_EQ(engine.ImportTableRows(configuration.c_str(), limited, maxLines), 1);
        EXPECT_EQ(refhost::RowsOf(*limited).size(), rows) << maxLines;
    }
    Layout fixed{{}, "", 1, {2, 5}, {{2, "c", Text}, {0, "a", Text}, {1, "b", Integer}}};
    auto fixedTable = Table();
    ASSERT_EQ(engine.ImportTableRows(Configuration("a1 42xyz\nb2\n", fixed).c_str(), fixedTable, 0), 1);
    EXPECT_EQ(Describe(*fixedTable), (Texts{"[t:xyz t:a1 i:42]", "[null t:b2 null]"}));
}

TEST_F(TableRowImport, LinkedRowsMatchTheUpperCasedKeyAndStoreIt)
{
    Layout layout{{";"}, "#", 0, {}, {{0, "key", Text}, {1, "value", Integer}}};
    const WString configuration = Configuration("ab12;1\n#AB12;0\nAb12;2\nzz;3\nx;4\n", layout);
    auto table = Table(0);
    ASSERT_EQ(engine.ImportLinkedTableRows(configuration.c_str(), table, KeySet{W("AB12"), W("X")}), 1);
    EXPECT_EQ(Describe(*table), (Texts{"[t:AB12 i:1]", "[t:AB12 i:2]", "[t:X i:4]"}));
    auto lowerCaseKeys = Table(0);
    ASSERT_EQ(engine.ImportLinkedTableRows(configuration.c_str(), lowerCaseKeys, KeySet{W("ab12")}), 1);
    EXPECT_TRUE(refhost::RowsOf(*lowerCaseKeys).empty());
}

TEST_F(TableRowImport, KeyIndexOutsideTheLinesFieldsThrowsAndEarlierRowsStay)
{
    Layout layout{{";"}, "", 0, {}, {{0, "a", Text}, {1, "b", Text}, {2, "key", Text}}};
    const WString configuration = Configuration("a;b;k\nshort;line\nc;d;k\n", layout);
    auto linked = Table(2);
    EXPECT_THROW(engine.ImportLinkedTableRows(configuration.c_str(), linked, KeySet{W("K")}), std::invalid_argument);
    EXPECT_EQ(Describe(*linked), Texts{"[t:a t:b t:K]"});
    EXPECT_FALSE(refhost::ProgressBarShown());
    EXPECT_THROW(engine.ImportLinkedTableRows(configuration.c_str(), Table(-1), KeySet{}), std::invalid_argument);
    // A blank delimited line has no fields at all, and the key is checked before the value.
    EXPECT_THROW(engine.UpdateLinkedTableRows(Configuration("\n", layout).c_str(), Table(0), nullptr),
                 std::invalid_argument);
    Layout negative{{";"}, "", 0, {}, {{0, "a", Text}, {-1, "bad", Text}}};
    EXPECT_THROW(engine.ImportTableRows(Configuration("a;b\n", negative).c_str(), Table(), 0), std::invalid_argument);
}

TEST_F(TableRowImport, UpdateAddsOnlyEmptyKeysThatConvertToTheValue)
{
    CDataBox realZero, realOne, integerZero, emptyText, null;
    realZero.SetValue(0.0);
    realOne.SetValue(1.0);
    integerZero.SetValue(0);
    emptyText.SetValue(WTEXT(""));
    struct Case {
        int keyType;
        const CDataBox* value;
        bool rows;
    } cases[] = {{Real, &realZero, true}, {Real, &realOne, false},   {Real, &integerZero, false},
                 {Integer, &integerZero, true}, {Text, &emptyText, true}, {4711, &null, false},
                 {Real, &null, false},    {Real, nullptr, false}};
    for (const Case& c : cases) {
        // Two delimiters keep empty fields; the key is the first field.
        Layout layout{{";", ","}, "", 0, {}, {{0, "key", c.keyType}, {1, "id", Text}}};
        auto table = Table(0);
        ASSERT_EQ(engine.UpdateLinkedTableRows(Configuration(";p1\n5;p2\n,p3\n0;p4\n", layout).c_str(), table,
                                               c.value),
                  1);
        EXPECT_EQ(Describe(*table), c.rows ? (Texts{"[null t:p1]", "[null t:p3]"}) : Texts{}) << c.keyType;
    }
    // The key column is the list's entry at the key index (here an integer column reading
    // field 0), not the column whose number is the key index; none there: no rows.
    Layout byPosition{{";", ","}, "", 0, {}, {{1, "id", Text}, {0, "n", Integer}}};
    auto table = Table(1);
    ASSERT_EQ(engine.UpdateLinkedTableRows(Configuration("7;;x\n8;y;z\n", byPosition).c_str(), table, &integerZero), 1);
    EXPECT_EQ(Describe(*table), Texts{"[null i:7]"});
    Layout oneColumn{{";", ","}, "", 0, {}, {{0, "id", Text}}};
    auto noKeyColumn = Table(1);
    ASSERT_EQ(engine.UpdateLinkedTableRows(Configuration("7;;x\n", oneColumn).c_str(), noKeyColumn, &integerZero), 1);
    EXPECT_TRUE(refhost::RowsOf(*noKeyColumn).empty());
}
