#include "ImportTestSupport.h"
#include "refhost/HostSide.h"

using namespace importtest;
using namespace VeltoGis::ImportExport;
using VeltoGis::enmEntityType;

namespace {

// Which targets a collection binds; "name" is ENTITY_NAME, "xy" the pair of coordinate
// targets named by the row, "nodes" NODE_S and NODE_E.
enum Bound : unsigned { None = 0, Name = 1, CoordXY = 2, ShortXY = 4, Nodes = 8 };

std::vector<BindPair> BindsOf(unsigned bound)
{
    std::vector<BindPair> binds{{"other", "ATTRIBUTE"}};
    if (bound & Name)
        binds.push_back({"c0", "ENTITY_NAME"});
    if (bound & CoordXY) {
        binds.push_back({"c1", "NODE_COORDINATE_X"});
        binds.push_back({"c2", "NODE_COORDINATE_Y"});
    }
    if (bound & ShortXY) {
        binds.push_back({"c3", "NODE_X"});
        binds.push_back({"c4", "NODE_Y"});
    }
    if (bound & Nodes) {
        binds.push_back({"c5", "NODE_S"});
        binds.push_back({"c6", "NODE_E"});
    }
    return binds;
}

struct ValidationCase {
    enmEntityType type;
    int dataOnly;
    int sectionNodes;
    unsigned primary;
    unsigned secondary;
    int result;
    unsigned message; // 0 on failure: the message is emptied; on success it is left alone
};

const ValidationCase kMatrix[] = {
    // Points
    {VeltoGis::EntityTypePoint, 0, 0, CoordXY, None, 1, 0},
    {VeltoGis::EntityTypePoint, 0, 0, ShortXY, None, 0, 8481},
    {VeltoGis::EntityTypePoint, 0, 1, None, CoordXY, 0, 8481}, // only the primary binds count
    {VeltoGis::EntityTypePoint, 1, 0, Name, None, 1, 0},
    {VeltoGis::EntityTypePoint, 1, 0, CoordXY, None, 0, 8482},
    // The type 32 kind
    {VeltoGis::EntityTypeNodeXY, 0, 0, ShortXY, None, 1, 0},
    {VeltoGis::EntityTypeNodeXY, 0, 0, CoordXY, None, 0, 8481},
    {VeltoGis::EntityTypeNodeXY, 1, 0, Name, None, 1, 0},
    {VeltoGis::EntityTypeNodeXY, 1, 0, ShortXY, None, 0, 8482},
    // Lines
    {VeltoGis::EntityTypeLine, 0, 0, Nodes, None, 1, 0},
    {VeltoGis::EntityTypeLine, 0, 0, Name | CoordXY, None, 0, 9001},
    {VeltoGis::EntityTypeLine, 0, 1, None, CoordXY, 1, 0}, // node names need not be bound
    {VeltoGis::EntityTypeLine, 0, 1, Nodes | CoordXY, ShortXY, 0, 8481},
    {VeltoGis::EntityTypeLine, 1, 0, Name, None, 1, 0},
    {VeltoGis::EntityTypeLine, 1, 1, None, Name, 0, 8482},
    // data-only with section nodes: the secondary file must name its entities too
    {VeltoGis::EntityTypeLine, 1, 1, Name, None, 0, 8482},
    {VeltoGis::EntityTypeLine, 1, 1, Name, CoordXY, 0, 8482},
    {VeltoGis::EntityTypeLine, 1, 1, Name, Name, 1, 0},
    // Polygons: only data-only jobs pass; others fail without a message
    {VeltoGis::EntityTypePolygon, 1, 0, Name, None, 1, 0},
    {VeltoGis::EntityTypePolygon, 1, 0, None, Name, 0, 8482},
    {VeltoGis::EntityTypePolygon, 0, 0, Name | CoordXY | Nodes, None, 0, 0},
    // Any other type
    {VeltoGis::EntityTypeNone, 0, 0, Name | CoordXY | ShortXY | Nodes, None, 0, 0},
    {VeltoGis::EntityTypeNone, 1, 0, Name, None, 0, 0},
};

class ImportValidation : public ImportTest {};

} // namespace

TEST_F(ImportValidation, BindsAreCheckedAgainstEntityTypeAndJobOptions)
{
    for (const ValidationCase& c : kMatrix) {
        SCOPED_TRACE(::testing::Message() << "type " << c.type << " dataOnly " << c.dataOnly << " sectionNodes "
                                          << c.sectionNodes << " primary " << c.primary << " secondary "
                                          << c.secondary);
        auto job = refhost::testing::MakeImportDefinition(c.type, WString(), BindsOf(c.primary));
        refhost::SetDBCollectionNode(job, refhost::testing::MakeBinds(BindsOf(c.secondary)));
        refhost::SetImportDataOnly(job, c.dataOnly);
        refhost::SetImportSectionNodes(job, c.sectionNodes);
        const WString earlier = WTEXT("the caller's earlier text");
        WString message = earlier;
        EXPECT_EQ(engine.ValidateDefinition(&job, message), c.result);
        EXPECT_EQ(message, c.result == 1 ? earlier : c.message ? Msg(c.message) : WString());
    }
}

TEST_F(ImportValidation, BindWithEmptySourceCountsAsUnbound)
{
    auto job = refhost::testing::MakeImportDefinition(VeltoGis::EntityTypePoint, WString(),
                                                      {{"", "NODE_COORDINATE_X"}, {"y", "NODE_COORDINATE_Y"}});
    WString message;
    EXPECT_EQ(engine.ValidateDefinition(&job, message), 0);
    refhost::SetDBCollection(job, nullptr);
    EXPECT_EQ(engine.ValidateDefinition(&job, message), 0);
    EXPECT_EQ(engine.ValidateDefinition(nullptr, message), 0);
}

TEST_F(ImportValidation, RequiredAndExcludedTargetsFollowTheJob)
{
    const Texts excludedWhenDataOnly{"NODE_X", "NODE_Y", "NODE_S", "NODE_E", "NODE_COORDINATE_X", "NODE_COORDINATE_Y"};
    struct Case {
        enmEntityType type;
        int dataOnly;
        Texts required, excluded;
    } cases[] = {{VeltoGis::EntityTypePoint, 0, {"NODE_COORDINATE_X", "NODE_COORDINATE_Y"}, {}},
                 {VeltoGis::EntityTypeNodeXY, 0, {"NODE_X", "NODE_Y"}, {}},
                 {VeltoGis::EntityTypeLine, 0, {}, {}},
                 {VeltoGis::EntityTypePolygon, 0, {}, {}},
                 {VeltoGis::EntityTypePoint, 1, {"ENTITY_NAME"}, excludedWhenDataOnly},
                 {VeltoGis::EntityTypePolygon, 1, {"ENTITY_NAME"}, excludedWhenDataOnly}};
    auto appended = [](const TargetIdList& ids) {
        Texts texts;
        for (std::size_t i = 1; i < ids.size(); ++i) // behind what the list held before
            texts.push_back(U8(ids[i]));
        return texts;
    };
    for (const Case& c : cases) {
        auto job = refhost::testing::MakeImportDefinition(c.type, WString(), {});
        refhost::SetImportDataOnly(job, c.dataOnly);
        TargetIdList required{W("ALREADY")}, excluded{W("ALREADY")};
        engine.GetRequiredTargetIds(&job, required);
        engine.GetExcludedTargetIds(&job, excluded);
        EXPECT_EQ(appended(required), c.required) << c.type << "/" << c.dataOnly;
        EXPECT_EQ(appended(excluded), c.excluded) << c.type << "/" << c.dataOnly;
    }
    TargetIdList none;
    engine.GetRequiredTargetIds(nullptr, none);
    engine.GetExcludedTargetIds(nullptr, none);
    EXPECT_TRUE(none.empty());
}
