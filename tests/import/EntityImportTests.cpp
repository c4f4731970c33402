#include "ImportTestSupport.h"
#include "refhost/HostSide.h"

#include <stdexcept>

using namespace importtest;
using namespace VeltoGis::ImportExport;

namespace {

const Layout kSurvey{{" "}, "#", 0, {}, {{0, "name", Text}, {1, "x", Real}, {2, "y", Real}, {3, "code", Integer}}};
const std::vector<BindPair> kSurveyBinds{
    {"name", "ENTITY_NAME"}, {"x", "NODE_COORDINATE_X"}, {"y", "NODE_COORDINATE_Y"}, {"code", "CODE"}};

class EntityImport : public ImportTest {
protected:
    Texts Points(CImportDefinition& job, CLq* filter = nullptr, int secondary = 0)
    {
        ImpexEntityList points;
        EXPECT_EQ(engine.ImportPoints(&job, points, secondary, filter), 1);
        return Describe(points);
    }
};

} // namespace

TEST_F(EntityImport, PointsFromDelimitedLines)
{
    auto job = Job(VeltoGis::EntityTypePoint, "# survey\nP1 10.5 20.25 7\r\n\nP2   11 21\n#P9 1 1\n P3 12 22 3\n",
                   kSurvey, kSurveyBinds);
    EXPECT_EQ(Points(job), (Texts{"P1 @10.5,20.25 [t:P1 r:10.5 r:20.25 i:7]",
                                  "- @- [null null null null]",         // a blank line has no fields
                                  "P2 @11,21 [t:P2 r:11 r:21 null]",    // runs collapse; short line
                                  "- @0,12 [null r:0 r:12 i:22]"}));    // a leading blank is a field
}

TEST_F(EntityImport, PointsFromFixedWidthLinesKeepTheFirstLinesLength)
{
    Layout layout{{}, "*", 1, {3, 8}, {{0, "name", Text}, {1, "x", Real}, {2, "y", Real}}};
    auto job = Job(VeltoGis::EntityTypePoint, "P1 1.5  2.5\n* c\nP2 3.5  4.5 extra\nP3 5.5  6.25\n\n", layout,
                   {{"name", "ENTITY_NAME"}, {"x", "NODE_X"}, {"y", "NODE_COORDINATE_Y"}});
    EXPECT_EQ(Points(job), (Texts{"P1  @1.5,2.5 [t:P1  r:1.5 r:2.5]", "P2  @3.5,4.5 [t:P2  r:3.5 r:4.5]",
                                  "P3  @5.5,6.2 [t:P3  r:5.5 r:6.2]", // y ends at the first line's length
                                  "- @0,0 [null null null]"}));       // present but empty fields
}

TEST_F(EntityImport, PointCoordinateTargetsAndTypedValues)
{
    // X answers to three targets, Y only to NODE_COORDINATE_Y; every bind is also a value.
    Layout layout{{";", "|"}, "", 0, {}, {{0, "a", Real}, {1, "b", Real}, {2, "n", Integer}, {3, "t", Text},
                                         {4, "o", 4711}, {5, "c", Text}, {1, "c", Integer}}};
    const char* line = "1.5;2,5;12abc;a b;x;;z\n";
    struct Case {
        const char *x, *y, *expected;
    } cases[] = {
        {"NODE_COORDINATE_X", "NODE_COORDINATE_Y", "- @1.5,2.5 [r:1.5 r:2.5 i:12 t:a b null null]"},
        {"NODE_E", "NODE_COORDINATE_Y", "- @1.5,2.5 [r:1.5 r:2.5 i:12 t:a b null null]"},
        {"NODE_X", "NODE_Y", "- @- [r:1.5 r:2.5 i:12 t:a b null null]"},
    };
    for (const Case& c : cases) {
        auto job = Job(VeltoGis::EntityTypePoint, line, layout,
                       {{"a", c.x}, {"b", c.y}, {"n", "N"}, {"t", "T"}, {"o", "O"}, {"nothing", "Z"}, {"c", "C"}});
        EXPECT_EQ(Points(job), Texts{c.expected}) << c.x;
    }
}

TEST_F(EntityImport, PointFilterTestsUnsetCoordinatesAsZero)
{
    auto job = Job(VeltoGis::EntityTypePoint, "P1 5 5\nP2 150 5\n\nP3 7\n", kSurvey, kSurveyBinds);
    CLq awayFromOrigin(1, 1, 100, 100), aroundOrigin(-10, -10, 10, 10);
    EXPECT_EQ(Points(job, &awayFromOrigin), (Texts{"P1 @5,5 [t:P1 r:5 r:5 null]"}));
    EXPECT_EQ(Points(job, &aroundOrigin),
              (Texts{"P1 @5,5 [t:P1 r:5 r:5 null]", "- @- [null null null null]", "P3 @- [t:P3 r:7 null null]"}));
}

TEST_F(EntityImport, PointsWithoutBindsOrFromTheSecondaryConfiguration)
{
    auto job = Job(VeltoGis::EntityTypePoint, "P1 1 2\n#c\nP2 3 4\n", kSurvey, {});
    EXPECT_EQ(Points(job), (Texts{"- @- []", "- @- []"}));
    refhost::SetDBCollection(job, nullptr);
    EXPECT_EQ(Points(job), Texts{});

    Layout nodes{{","}, "", 0, {}, {{0, "id", Text}, {1, "e", Real}, {2, "n", Real}}};
    job.SetImporterConfigurationNode(ConfigurationXml(File("N1,100,200\n", "nodes.txt"), nodes).c_str());
    refhost::SetDBCollectionNode(
        job,
        refhost::testing::MakeBinds({{"id", "ENTITY_NAME"}, {"e", "NODE_COORDINATE_X"}, {"n", "NODE_COORDINATE_Y"}}));
    EXPECT_EQ(Points(job, nullptr, 1), (Texts{"N1 @100,200 [t:N1 r:100 r:200]"}));
}

TEST_F(EntityImport, NameGoesThroughTheImportTransformUnlessItYieldsNull)
{
    Layout layout{{";"}, "", 0, {}, {{0, "name", Text}}};
    auto job = Job(VeltoGis::EntityTypePolygon, "p1\nkeep\n;x\n", layout, {{"name", "ENTITY_NAME"}});
    refhost::SetImportTransform(*job.GetDBCollection()->GetDataBindCollection()[0],
                                [](VeltoGis::Data::CDataBox& value) {
                                    if (refhost::TextOf(value) == W("keep"))
                                        value.SetNull();
                                    else
                                        value.SetValue((W("N-") + refhost::TextOf(value)).c_str());
                                });
    ImpexEntityList polygons;
    ASSERT_EQ(engine.ImportPolygons(&job, polygons), 1);
    EXPECT_EQ(Describe(polygons), (Texts{"N-p1 [t:p1]", "keep [t:keep]", "N- [null]"}));
}

TEST_F(EntityImport, NegativeColumnThrowsOnlyWhenALineReachesItsBind)
{
    Layout layout{{" "}, "#", 0, {}, {{0, "name", Text}, {-1, "bad", Real}}};
    auto comments = Job(VeltoGis::EntityTypePoint, "#a\n#b\n", layout, {{"name", "ENTITY_NAME"}, {"bad", "X"}});
    EXPECT_EQ(Points(comments), Texts{});
    auto data = Job(VeltoGis::EntityTypePoint, "#a\nP1 1\n", layout, {{"name", "ENTITY_NAME"}, {"bad", "X"}});
    ImpexEntityList points;
    EXPECT_THROW(engine.ImportPoints(&data, points, 0, nullptr), std::invalid_argument);
    EXPECT_FALSE(refhost::ProgressBarShown());
}

TEST_F(EntityImport, LinesCarryRawNodeNames)
{
    Layout layout{{";", ","}, "#", 0, {}, {{0, "from", Text}, {1, "to", Text}, {2, "name", Text}, {3, "x", Real}}};
    auto job = Job(VeltoGis::EntityTypeLine, "# roads\nA;B;road;1\nB;;lane\nC\n\nA;B;road\n", layout,
                   {{"from", "NODE_S"}, {"to", "NODE_E"}, {"name", "ENTITY_NAME"}, {"x", "NODE_COORDINATE_X"}});
    for (const auto& bind : job.GetDBCollection()->GetDataBindCollection())
        if (bind->GetTargetDataId() != W("ENTITY_NAME"))
            refhost::SetImportTransform(*bind,
                                        [](VeltoGis::Data::CDataBox& value) { value.SetValue(W("changed").c_str()); });
    ImpexEntityList lines;
    ASSERT_EQ(engine.ImportLines(&job, lines), 1);
    EXPECT_EQ(Describe(lines), (Texts{"road A>B [t:A t:B t:road r:1]", "lane B> [t:B null t:lane null]",
                                      "- C>? [t:C null null null]", "- ?>? [null null null null]",
                                      "road A>B [t:A t:B t:road null]"}));

    Layout fixed{{}, "", 1, {4, 8}, layout.columns};
    auto fixedJob = Job(VeltoGis::EntityTypeLine, "N1  N2  main\nN3  N4  side road\n", fixed,
                        {{"from", "NODE_S"}, {"name", "ENTITY_NAME"}});
    lines.clear();
    ASSERT_EQ(engine.ImportLines(&fixedJob, lines), 1);
    EXPECT_EQ(Describe(lines), (Texts{"main N1  >? [t:N1   t:main]", "side N3  >? [t:N3   t:side]"}));
}

TEST_F(EntityImport, PolygonsMatchThePrimaryFileAgainstSecondaryBindsWithSectionNodes)
{
    Layout parcels{{"\t"}, "'", 0, {}, {{0, "parcel", Text}, {1, "area", Real}, {2, "owner", Text}}};
    auto job = Job(VeltoGis::EntityTypePolygon, "'parcels\n101\t250.5\tSmith\n\t12\tJones\n101\t\tSmith\n", parcels,
                   {{"parcel", "ENTITY_NAME"}, {"area", "NODE_COORDINATE_X"}, {"owner", "OWNER"}});
    refhost::SetDBCollectionNode(job, refhost::testing::MakeBinds({{"owner", "ENTITY_NAME"}}));
    ImpexEntityList polygons;
    ASSERT_EQ(engine.ImportPolygons(&job, polygons), 1);
    EXPECT_EQ(Describe(polygons), (Texts{"101 [t:101 r:250.5 t:Smith]", "- [null r:12 t:Jones]",
                                         "101 [t:101 null t:Smith]"}));
    refhost::SetImportSectionNodes(job, 1);
    polygons.clear();
    ASSERT_EQ(engine.ImportPolygons(&job, polygons), 1);
    EXPECT_EQ(Describe(polygons), (Texts{"Smith [t:Smith]", "Jones [t:Jones]", "Smith [t:Smith]"}));
    refhost::SetDBCollectionNode(job, nullptr);
    polygons.clear();
    EXPECT_EQ(engine.ImportPolygons(&job, polygons), 1);
    EXPECT_TRUE(polygons.empty());
}
