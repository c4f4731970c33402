#include "ImportTestSupport.h"
#include "refhost/HostSide.h"

#include <boost/make_shared.hpp>
#include <stdexcept>

using namespace importtest;
using namespace VeltoGis::ImportExport;
using Coordinates = std::vector<double>;

namespace {

const Layout kXyz{{" "}, "#", 0, {}, {{0, "id", Text}, {1, "x", Real}, {2, "y", Real}, {3, "z", Real}}};

class CloudImport : public ImportTest {
protected:
    Coordinates Cloud(CImportDefinition& job)
    {
        auto cloud = boost::make_shared<CCloud>();
        EXPECT_EQ(engine.ImportCloud(&job, cloud), 1);
        return refhost::CoordinatesOf(*cloud);
    }
};

} // namespace

TEST_F(CloudImport, CompleteLinesAddOnePointEachAndOnlyCoordinateTargetsCount)
{
    struct Case {
        std::vector<BindPair> binds;
        Coordinates coordinates;
    } cases[] = {
        {{{"id", "ENTITY_NAME"}, {"x", "NODE_COORDINATE_X"}, {"y", "NODE_COORDINATE_Y"}}, {1.5, 2.5, 4, 5}},
        {{{"x", "NODE_X"}, {"y", "NODE_Y"}}, {}}, // Y answers only to NODE_COORDINATE_Y
        {{{"x", "NODE_E"}, {"y", "NODE_COORDINATE_Y"}}, {1.5, 2.5, 4, 5}},
        {{{"x", "NODE_COORDINATE_X"}, {"z", "NODE_X"}, {"y", "NODE_COORDINATE_Y"}}, {9, 2.5, 4, 5}}, // later X wins
    };
    for (const Case& c : cases) {
        // "b 3" lacks Y: nothing, and the next line starts again from zero.
        auto job = Job(VeltoGis::EntityTypePoint, "# scan\na 1.5 2.5 9\nb 3\n\nc 4 5\n", kXyz, c.binds);
        EXPECT_EQ(Cloud(job), c.coordinates);
    }
}

TEST_F(CloudImport, ConfigurationAndBindsFollowEntityTypeAndSectionNodes)
{
    const Layout layout{{","}, "", 0, {}, {{0, "x", Real}, {1, "y", Real}}};
    struct Case {
        VeltoGis::enmEntityType type;
        int sectionNodes;
        Coordinates coordinates;
    } cases[] = {
        {VeltoGis::EntityTypeLine, 1, {2, 20}},    // secondary configuration, secondary binds
        {VeltoGis::EntityTypePoint, 1, {1, 10}},   // primary configuration, secondary binds
        {VeltoGis::EntityTypeLine, 0, {10, 1}},    // primary both
        {VeltoGis::EntityTypePolygon, 0, {10, 1}},
    };
    for (const Case& c : cases) {
        auto job = Job(c.type, "10,1\n", layout, {{"x", "NODE_COORDINATE_X"}, {"y", "NODE_COORDINATE_Y"}});
        job.SetImporterConfigurationNode(ConfigurationXml(File("20,2\n", "nodes.txt"), layout).c_str());
        // The secondary binds read the columns crosswise.
        refhost::SetDBCollectionNode(
            job, refhost::testing::MakeBinds({{"x", "NODE_COORDINATE_Y"}, {"y", "NODE_COORDINATE_X"}}));
        refhost::SetImportSectionNodes(job, c.sectionNodes);
        EXPECT_EQ(Cloud(job), c.coordinates) << c.type << "/" << c.sectionNodes;
    }
}

TEST_F(CloudImport, FixedWidthAndNegativeColumns)
{
    auto fixed = Job(VeltoGis::EntityTypePoint, "  1.0  2.0\n  3.0  4.0xx\n",
                     Layout{{}, "", 1, {5}, {{0, "x", Real}, {1, "y", Real}}},
                     {{"x", "NODE_COORDINATE_X"}, {"y", "NODE_COORDINATE_Y"}});
    EXPECT_EQ(Cloud(fixed), (Coordinates{1, 2, 3, 4}));

    // A negative column matters only where a coordinate bind reaches it.
    Layout negative{{" "}, "", 0, {}, {{0, "x", Real}, {1, "y", Real}, {-2, "bad", Text}}};
    auto passedOver = Job(VeltoGis::EntityTypePoint, "1 2\n", negative,
                          {{"bad", "ENTITY_NAME"}, {"x", "NODE_COORDINATE_X"}, {"y", "NODE_COORDINATE_Y"}});
    EXPECT_EQ(Cloud(passedOver), (Coordinates{1, 2}));
    auto reached = Job(VeltoGis::EntityTypePoint, "1 2\n", negative, {{"bad", "NODE_X"}});
    EXPECT_THROW(engine.ImportCloud(&reached, boost::make_shared<CCloud>()), std::invalid_argument);
}
