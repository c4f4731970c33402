#include "host/ImpexData.h"
#include "host/GisUtility.h"
#include "host/ImpexDefinitions.h"
#include "refhost/HostSide.h"
#include "refhost/testing/JobBuilders.h"
#include "refhost/testing/TestText.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>
#include <cmath>
#include <limits>

using namespace VeltoGis::ImportExport;
using refhost::testing::MakeBinds;
using refhost::testing::U8;

TEST(Lq, RectangleIncludesItsEdges)
{
    CLq filter(10.0, 20.0, 30.0, 40.0);
    const struct {
        double x, y;
        int accepted;
    } cases[] = {
        {20.0, 30.0, 1},   {10.0, 20.0, 1},   {30.0, 40.0, 1},   {10.0, 40.0, 1},
        {30.0, 20.0, 1},   {std::nextafter(10.0, 0.0), 30.0, 0}, {std::nextafter(30.0, 99.0), 30.0, 0},
        {20.0, std::nextafter(20.0, 0.0), 0}, {20.0, std::nextafter(40.0, 99.0), 0},
        {NAN, 30.0, 0},    {20.0, NAN, 0},    {INFINITY, 30.0, 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(filter.CheckPoint(c.x, c.y), c.accepted) << c.x << ' ' << c.y;
}

TEST(Lq, CornersMayComeInEitherOrder)
{
    CLq filter(30.0, 40.0, 10.0, 20.0);
    EXPECT_EQ(filter.CheckPoint(10.0, 20.0), 1);
    EXPECT_EQ(filter.CheckPoint(30.0, 40.0), 1);
    EXPECT_EQ(filter.CheckPoint(31.0, 40.0), 0);
}

TEST(Lq, DefaultAcceptsEverything)
{
    CLq filter;
    const double inf = std::numeric_limits<double>::infinity();
    for (double value : {0.0, -1e308, 1e308, inf, -inf, static_cast<double>(NAN)})
        EXPECT_EQ(filter.CheckPoint(value, value), 1) << value;
}

TEST(DataBind, TransformsAreIdentityUntilGiven)
{
    CDataBind bind(WTEXT("C1"), WTEXT("HEIGHT"));
    CDataBox value(WTEXT("12.5"));
    bind.TransformData_Import(&value);
    bind.TransformData_Export(&value);
    EXPECT_EQ(U8(value), "12.5");
    bind.TransformData_Import(nullptr);
    bind.TransformData_Export(nullptr);
}

TEST(DataBind, GivenTransformsChangeOrNullTheValueInTheirDirectionOnly)
{
    CDataBind bind(WTEXT("C1"), WTEXT("HEIGHT"));
    refhost::SetImportTransform(
        bind, [](CDataBox& value) { value.SetValue(2.0 * VeltoGis::Utility::CUtility::AtoF(WString(value).c_str())); });
    refhost::SetExportTransform(bind, [](CDataBox& value) { value.SetNull(); });

    CDataBox imported(WTEXT("12.5"));
    bind.TransformData_Import(&imported);
    EXPECT_EQ(U8(imported), "25");

    CDataBox exported(WTEXT("12.5"));
    bind.TransformData_Export(&exported);
    EXPECT_FALSE(exported.IsNotNull());

    refhost::SetExportTransform(bind, nullptr);
    CDataBox plain(WTEXT("7"));
    bind.TransformData_Export(&plain);
    EXPECT_EQ(U8(plain), "7");
}

TEST(DataBindCollection, FindsTheFirstBindOfATarget)
{
    auto binds = MakeBinds({{"C1", "NODE_COORDINATE_X"}, {"C2", "CODE"}, {"C3", "CODE"}});
    refhost::AddBind(*binds, boost::shared_ptr<CDataBind>()); // an empty slot is skipped, not dereferenced
    EXPECT_EQ(binds->GetDataBindByTargetDataId(WTEXT("CODE"))->GetSourceDataId(), WTEXT("C2"));
    EXPECT_FALSE(binds->GetDataBindByTargetDataId(WTEXT("code")));
    EXPECT_FALSE(binds->GetDataBindByTargetDataId(WTEXT("ENTITY_NAME")));
    EXPECT_FALSE(binds->GetDataBindByTargetDataId(nullptr));
    ASSERT_NE(binds->GetDataBindCollection()[0]->GetSourceDataDefinition(), nullptr);
    EXPECT_EQ(binds->GetDataBindCollection()[0]->GetSourceDataDefinition()->GetDataID(), WTEXT("C1"));
}

TEST(Cloud, CountOnlyKeepsNoPointsButTheSameCountAndChecksum)
{
    CCloud kept(CCloud::Storage::KeepPoints);
    CCloud counted(CCloud::Storage::CountOnly);
    for (int i = 0; i < 1000; ++i) {
        const double x = 456789.0 + i * 0.001;
        const double y = 5123456.0 - i * 0.002;
        kept.AddPoint(x, y);
        counted.AddPoint(x, y);
    }
    EXPECT_EQ(refhost::PointCountOf(kept), 1000u);
    EXPECT_EQ(refhost::CoordinatesOf(kept).size(), 2000u);
    EXPECT_EQ(refhost::CoordinatesOf(kept)[2], 456789.001);
    EXPECT_EQ(refhost::PointCountOf(counted), 1000u);
    EXPECT_TRUE(refhost::CoordinatesOf(counted).empty());
    EXPECT_EQ(refhost::ChecksumOf(kept), refhost::ChecksumOf(counted));
}

TEST(Cloud, ChecksumSeesOrderAxesAndEveryBit)
{
    auto checksum = [](std::initializer_list<std::pair<double, double>> points) {
        CCloud cloud(CCloud::Storage::CountOnly);
        for (const auto& point : points)
            cloud.AddPoint(point.first, point.second);
        return refhost::ChecksumOf(cloud);
    };
    const auto reference = checksum({{1.0, 2.0}, {3.0, 4.0}});
    EXPECT_EQ(reference, checksum({{1.0, 2.0}, {3.0, 4.0}}));
    EXPECT_NE(reference, checksum({{3.0, 4.0}, {1.0, 2.0}}));
    EXPECT_NE(reference, checksum({{2.0, 1.0}, {4.0, 3.0}}));
    EXPECT_NE(reference, checksum({{1.0, 2.0}, {3.0, std::nextafter(4.0, 5.0)}}));
    EXPECT_NE(reference, checksum({{-1.0, 2.0}, {3.0, 4.0}}));
    EXPECT_NE(checksum({{0.0, 0.0}}), checksum({{0.0, 0.0}, {0.0, 0.0}}));
}

TEST(ImpexEntity, ReportsWhatWasSetAndKeepsValuesInOrder)
{
    CImpexLine line;
    EXPECT_FALSE(refhost::HasName(line));
    EXPECT_FALSE(refhost::HasStartingNodeName(line));
    line.SetName(WTEXT("L1"));
    line.SetStartingNodeName(WTEXT(""));
    line.SetEndingNodeName(WTEXT("P2"));
    for (int i = 0; i < 20; ++i) {
        auto value = boost::make_shared<CDataBox>();
        value->SetValue(i);
        line.AddData(value);
    }
    EXPECT_TRUE(refhost::HasName(line));
    EXPECT_EQ(refhost::NameOf(line), WTEXT("L1"));
    EXPECT_TRUE(refhost::HasStartingNodeName(line));
    EXPECT_EQ(refhost::StartingNodeNameOf(line), WTEXT(""));
    EXPECT_EQ(refhost::EndingNodeNameOf(line), WTEXT("P2"));
    ASSERT_EQ(line.GetData()->size(), 20u);
    EXPECT_EQ(refhost::IntegerOf(*(*line.GetData())[19]), 19);

    CImpexPoint point;
    EXPECT_FALSE(refhost::HasPosition(point));
    point.SetPosition(AcGePoint3d(1.0, 2.0, 0.0));
    EXPECT_TRUE(refhost::HasPosition(point));
    EXPECT_EQ(refhost::PositionOf(point).y, 2.0);
}
