// tessel and the module it loads must agree on every code page the platform layer converts:
// tessel accepts it, writes a column name as the module's own configuration writer does,
// and the loaded engine reads the same name back.

#include "host/Utf8.h"
#include "import/ImportTxtConfiguration.h"
#include "platform/Platform.h"
#include "refhost/testing/TempDir.h"
#include "tests/tessel/AppTestSupport.h"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

namespace tessel {
namespace testing {
namespace {

// A character beyond ASCII that the code page holds, so that its byte form is the code
// page's own; 0 when none of the candidates fits.
WChar CharacterOf(unsigned codePage)
{
    const WChar candidates[] = {0x20AC, 0x00E9, 0x0141, 0x03A9, 0x0416, 0x05E9, 0x0627, 0x0E01, 0x65E5, 0x00A7};
    for (const WChar candidate : candidates) {
        char bytes[8] = {};
        bool usedDefault = false;
        if (Platform::WideToMultiByte(codePage, &candidate, 1, bytes, sizeof bytes, nullptr, &usedDefault) > 0 &&
            !usedDefault)
            return candidate;
    }
    return 0;
}

// The module's own configuration string for one text column of that name.
WString ModuleWrites(const WString& name, unsigned codePage)
{
    Platform::SetAnsiCodePage(codePage);
    ImportTxtConfiguration configuration;
    configuration.SetDelimiters({WTEXT(" ")});
    configuration.SetComments(WTEXT("#"));
    auto column = boost::make_shared<CColumnData>();
    column->SetName(name);
    column->SetType(kColumnText);
    column->SetOnOff(1);
    configuration.GetColumns().push_back(column);
    const WString text = configuration.ToXml();
    Platform::SetAnsiCodePage(0);
    return text;
}

} // namespace

TEST(CodePageAgreement, EveryConvertibleCodePageWritesAndReadsColumnsAsTheModuleDoes)
{
    const std::vector<unsigned> codePages = Platform::ConvertibleCodePages();
    ASSERT_FALSE(codePages.empty());
    refhost::testing::TempDir folder;
    for (const unsigned codePage : codePages) {
        SCOPED_TRACE("code page " + std::to_string(codePage));
        const WChar character = CharacterOf(codePage);
        if (!character)
            continue;
        const WString name = WString(1, character) + WTEXT("uro");
        const std::string page = std::to_string(codePage);
        const TesselRun config =
            RunTessel({"-q", "--codepage", page, "config", "import", "--column", ToUtf8(name)}, folder.Path());
        ASSERT_EQ(config.status, 0) << config.err;
        EXPECT_EQ(config.out, ToUtf8(ModuleWrites(name, codePage)) + "\n");

        folder.WriteFile("cfg.xml", config.out);
        const TesselRun described = RunTessel({"-q", "--codepage", page, "describe", "cfg.xml"}, folder.Path());
        ASSERT_EQ(described.status, 0) << described.err;
        EXPECT_NE(described.out.find("source fields: " + ToUtf8(name) + " (text)"), std::string::npos)
            << described.out;
    }
}

} // namespace testing
} // namespace tessel
