#pragma once
// What the import engine tests share: configuration strings from a short description, a
// fixture with a private folder and the host's recordings reset, and results as short text.

#include "host/GisUtility.h"
#include "host/ImpexEngines.h"
#include "import/ImportEngine_Txt.h"
#include "refhost/testing/JobBuilders.h"
#include "refhost/testing/TempDir.h"
#include "refhost/testing/TestText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace importtest {

using refhost::testing::BindPair;
using refhost::testing::U8;
using refhost::testing::W;
using Texts = std::vector<std::string>;

constexpr int Real = 5001, Text = 5005, Integer = 5010;

struct Column {
    int no;
    std::string name;
    int type;
    int onOff = 1;
};

// How a file is laid out (its path is given separately).
struct Layout {
    std::vector<std::string> delimiters; // UTF-8, one character each
    std::string comments;
    int mode = 0; // 0 delimited, else fixed width
    std::vector<std::uint32_t> positions;
    std::vector<Column> columns;
};

WString ConfigurationXml(const WString& path, const Layout& layout);

// Values as "null", "i:12", "r:12.5", "t:abc", joined by blanks.
std::string Describe(const VeltoGis::ImportExport::DataValueList& values);
// "name @x,y [values]" for points (no position: "@-"), "name from>to [values]" for lines
// (an unset node: "?"), "name [values]" otherwise; an unset name is "-".
Texts Describe(const VeltoGis::ImportExport::ImpexEntityList& entities);
// One "[values]" per row.
Texts Describe(const VeltoGis::ImportExport::CDBTable& table);
// The progress bar's recorded calls: "show:<text>:0:3", "pos:1", "hide", "restore".
Texts ProgressCalls();
WString Msg(unsigned id);

class ImportTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    WString File(const std::string& bytes, const std::string& name = "survey.txt") { return dir.WriteFile(name, bytes); }
    // A job of the type whose primary configuration reads the bytes with the layout.
    VeltoGis::ImportExport::CImportDefinition Job(VeltoGis::enmEntityType type, const std::string& bytes,
                                                  const Layout& layout, const std::vector<BindPair>& binds)
    {
        return refhost::testing::MakeImportDefinition(type, ConfigurationXml(File(bytes), layout), binds);
    }

    CImportEngine_Txt engine;
    refhost::testing::TempDir dir;
};

} // namespace importtest
