#include "host/GisData.h"
#include "host/GisSystem.h"
#include "host/GisUtility.h"
#include "refhost/HostSide.h"
#include "refhost/testing/TestText.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <random>

using VeltoGis::Data::CDataBox;
using VeltoGis::Data::CDataDefinition;
using VeltoGis::Data::CDataRW;
using VeltoGis::System::CSystemManager;
using VeltoGis::Topology::CEntity;
using VeltoGis::Utility::CUtility;
using refhost::testing::U8;

namespace {

CDataBox Integer(int value)
{
    CDataBox box;
    box.SetValue(value);
    return box;
}

CDataBox Real(double value)
{
    CDataBox box;
    box.SetValue(value);
    return box;
}

CDataBox Text(const WChar* text) { return CDataBox(text); }

} // namespace

TEST(DataBox, TextFormByKind)
{
    const struct {
        CDataBox box;
        const char* text;
    } cases[] = {
        {CDataBox(), ""},
        {CDataBox(nullptr), ""},
        {Integer(0), "0"},
        {Integer(-42), "-42"},
        {Integer(INT_MIN), "-2147483648"},
        {Real(456789.123), "456789.123"},
        {Real(5000000.0), "5000000"},  // plain, as a surveyor reads it back
        {Real(3e9), "3000000000"},
        {Real(0.1), "0.1"},
        {Real(-2.5), "-2.5"},
        {Real(1e-8), "1e-08"},
        {Real(1e21), "1e+21"},
        {Real(100.0), "100"},
        {Real(-0.0), "-0"},
        {Text(WTEXT("P1234567")), "P1234567"},
        {Text(WTEXT("")), ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(U8(c.box), c.text);
}

TEST(DataBox, RealTextReadsBackToTheSameDouble)
{
    std::mt19937_64 random(99);
    for (int i = 0; i < 100000; ++i) {
        const std::uint64_t bits = random();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value))
            continue;
        const WString text = Real(value);
        const double back = CUtility::AtoF(text.c_str());
        ASSERT_EQ(std::memcmp(&back, &value, sizeof value), 0) << U8(text);
    }
}

TEST(DataBox, EqualityNeedsEqualKindsAndValues)
{
    EXPECT_EQ(CDataBox(), CDataBox());
    EXPECT_EQ(Integer(0), Integer(0));
    EXPECT_EQ(Real(0.0), Real(0.0));
    EXPECT_EQ(Real(0.0), Real(-0.0));
    EXPECT_EQ(Text(WTEXT("")), Text(WTEXT("")));
    EXPECT_EQ(Text(WTEXT("AB12")), Text(WTEXT("AB12")));

    EXPECT_NE(Integer(0), Real(0.0));
    EXPECT_NE(Real(0.0), Text(WTEXT("0")));
    EXPECT_NE(CDataBox(), Text(WTEXT("")));
    EXPECT_NE(CDataBox(), Integer(0));
    EXPECT_NE(Text(WTEXT("AB12")), Text(WTEXT("ab12")));
    EXPECT_NE(Real(1.0), Real(std::nextafter(1.0, 2.0)));
    EXPECT_NE(Real(NAN), Real(NAN));
}

// Short texts live in the box, longer ones in a block of their own: copies, moves and
// reassignments must keep every text whole on both sides of that boundary.
TEST(DataBox, TextSurvivesCopyMoveAndReassignmentAtEveryLength)
{
    for (const char* utf8 : {"", "M", "WALL", "POSTS", "P1000000", "a much longer field text \xC3\xA9"}) {
        SCOPED_TRACE(utf8);
        const WString text = refhost::testing::W(utf8);
        CDataBox original(text.c_str());
        CDataBox copy(original);
        EXPECT_EQ(copy, original);
        EXPECT_EQ(WString(copy), text);

        CDataBox moved(std::move(copy));
        EXPECT_EQ(WString(moved), text);
        EXPECT_FALSE(copy.IsNotNull());

        CDataBox assigned = Text(WTEXT("previous text of some length"));
        assigned = original;
        EXPECT_EQ(WString(assigned), text);
        assigned = Real(2.5);
        EXPECT_EQ(assigned, Real(2.5));
        EXPECT_EQ(refhost::TextOf(assigned), WString());

        // A box given its own text keeps it.
        CDataBox self(text.c_str());
        self.SetValue(WString(self).c_str());
        EXPECT_EQ(WString(self), text);
        EXPECT_EQ(refhost::TextOf(original), text);
    }
}

TEST(DataRW, ReadsTheFieldNamedByTheDefinition)
{
    CEntity entity;
    refhost::SetEntityField(entity, WTEXT("HEIGHT"), Real(301.25));
    refhost::SetEntityField(entity, WTEXT("CODE"), Text(WTEXT("TREE")));
    refhost::SetEntityField(entity, WTEXT("HEIGHT"), Real(302.5)); // replaces the earlier value

    CDataDefinition height;
    height.SetDataID(WTEXT("HEIGHT"));
    CDataDefinition missing;
    missing.SetDataID(WTEXT("WIDTH"));
    auto* system = CSystemManager::Instance()->GetActiveSystem();

    CDataBox value;
    EXPECT_EQ(CDataRW::Read(&height, &entity, value, 0, system), 1);
    EXPECT_EQ(value, Real(302.5));

    CDataBox untouched;
    EXPECT_EQ(CDataRW::Read(&missing, &entity, untouched, 0, system), 0);
    EXPECT_FALSE(untouched.IsNotNull());
    EXPECT_EQ(CDataRW::Read(nullptr, &entity, untouched, 0, system), 0);
    EXPECT_EQ(CDataRW::Read(&height, nullptr, untouched, 0, system), 0);
}
