// File names beyond Latin-1 reach the system unchanged: open, read, write and append.

#include "TextFileTesting.h"

#include <gtest/gtest.h>

using namespace textfile_testing;

namespace {

TEST(FileNames, NonLatinNamesOpenReadWriteAndAppend)
{
    ScratchFolder folder;
    for (const std::string name : {"Zażółć gęślą jaźń.txt", "Ελληνικά.txt", "日本語のファイル.txt", "🗺 map.txt"}) {
        const WString path = folder.WidePath(name);
        TextFile file;
        ASSERT_EQ(file.Open(path, TextFileMode::Write, TextEncoding::Utf16LE), 0) << name;
        EXPECT_EQ(file.WriteString(nullptr, WTEXT("first\n")), 0);
        EXPECT_EQ(file.Close(), 0);
        ASSERT_EQ(file.Open(path, TextFileMode::Append, TextEncoding::Utf16LE), 0) << name;
        EXPECT_EQ(file.WriteString(nullptr, WTEXT("second\n")), 0);
        EXPECT_EQ(file.Close(), 0);

        const ReadResult result = ReadAll(path);
        EXPECT_EQ(result.encoding, TextEncoding::Utf16LE) << name;
        EXPECT_EQ(result.lines, (std::vector<WString>{WTEXT("first"), WTEXT("second")})) << name;
        EXPECT_EQ(ReadBytes(folder.Path(name)).size(), 2u + 2 * 15) << name; // one mark only
    }
}

} // namespace
