#include "host/GisUtility.h"
#include "refhost/testing/TestText.h"

#include <gtest/gtest.h>

#include <algorithm>

using VeltoGis::CModuleConfiguration;
using refhost::testing::U8;

namespace {

// Every message number the text-file module asks for.
const unsigned int kUsedMessages[] = {49,   60,   67,   250,  264,  276,  425,  464,  910,  2620, 3204, 3205,
                                      3206, 3207, 3208, 3229, 4048, 4563, 7866, 7867, 7868, 7869, 7870, 7871,
                                      7872, 7873, 7874, 7875, 7876, 7877, 7878, 8481, 8482, 9001, 60043, 61050};

std::size_t Count(const WString& text, const WString& part)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != WString::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

} // namespace

TEST(ModuleConfiguration, HasATextForEveryMessageTheModuleUses)
{
    const CModuleConfiguration* configuration = CModuleConfiguration::Instance();
    for (unsigned int id : kUsedMessages)
        EXPECT_FALSE(configuration->GetMsg(id).empty()) << id;
    EXPECT_TRUE(configuration->GetMsg(0).empty());
    EXPECT_TRUE(configuration->GetMsg(7879).empty());
    EXPECT_TRUE(configuration->GetMsg(4294967295u).empty());
}

// The module formats these texts with printf rules: only the two path messages may hold a
// conversion, and exactly one %s.
TEST(ModuleConfiguration, OnlyThePathMessagesTakeAnArgument)
{
    const CModuleConfiguration* configuration = CModuleConfiguration::Instance();
    for (unsigned int id : kUsedMessages) {
        const WString text = configuration->GetMsg(id);
        const bool takesPath = id == 60043 || id == 7876;
        EXPECT_EQ(Count(text, WTEXT("%")), takesPath ? 1u : 0u) << id << ": " << U8(text);
        EXPECT_EQ(Count(text, WTEXT("%s")), takesPath ? 1u : 0u) << id;
    }
}
