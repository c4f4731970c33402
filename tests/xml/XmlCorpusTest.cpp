// Robustness over externally written XML: the libxml2 regression inputs and the W3C
// conformance suite. Every document must parse into a consistent element table; the
// standalone valid documents of the W3C suite must parse without a message.

#include "host/Utf8.h"
#include "xml/ElementParser.h"
#include "xml/XmlDocument.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

WString DecodeDocument(const std::string& bytes)
{
    const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    if (bytes.size() >= 2 && ((byteAt(0) == 0xFF && byteAt(1) == 0xFE) || (byteAt(0) == 0xFE && byteAt(1) == 0xFF))) {
        const bool little = byteAt(0) == 0xFF;
        WString text;
        for (std::size_t i = 2; i + 1 < bytes.size(); i += 2)
            text += static_cast<WChar>(little ? byteAt(i) | byteAt(i + 1) << 8 : byteAt(i) << 8 | byteAt(i + 1));
        return text;
    }
    return FromUtf8(bytes);
}

std::string ReadBytes(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Every record reachable once from record 0, with consistent parent and sibling links.
void ExpectConsistentTable(const WString& text, const std::string& name)
{
    ElementTable table;
    WString error;
    table.Reset(static_cast<std::int64_t>(text.size()));
    ElementParser(text.data(), static_cast<int>(text.size()), table, error).Parse(0);
    std::vector<int> pending{0};
    std::set<int> seen{0};
    while (!pending.empty()) {
        const int parent = pending.back();
        pending.pop_back();
        const int first = table[parent].firstChild;
        int previous = 0;
        for (int child = first; child != 0; child = table[child].nextSibling) {
            ASSERT_TRUE(seen.insert(child).second) << name << ": record " << child << " reached twice";
            ASSERT_EQ(table[child].parent, parent) << name;
            if (previous != 0) {
                ASSERT_EQ(table[child].prevSibling, previous) << name;
            }
            ASSERT_GE(table[child].start, 0) << name;
            ASSERT_LE(table[child].start + table[child].StartTagLength(), static_cast<int>(text.size())) << name;
            previous = child;
            pending.push_back(child);
        }
        if (first != 0) {
            ASSERT_EQ(table[first].prevSibling, previous) << name;
        }
    }
    EXPECT_EQ(static_cast<int>(seen.size()), table.Count()) << name;
}

// Reads every attribute name the configurations use on each element of each level.
void WalkDocument(const WString& text)
{
    XmlDocument document;
    document.SetText(text);
    do {
        while (document.FindElement(nullptr))
            for (const WChar* name : {WTEXT("txtFile"), WTEXT("id"), WTEXT("a"), WTEXT("name"), WTEXT("version")})
                (void)document.GetAttribute(name);
    } while (document.EnterElement());
}

std::vector<fs::path> FilesUnder(const fs::path& folder, const std::string& extension = "")
{
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file() && (extension.empty() || entry.path().extension() == extension))
            files.push_back(entry.path());
    return files;
}

const fs::path kTestData = TESSEL_TESTDATA;

TEST(XmlCorpus, Libxml2InputsParseIntoConsistentTables)
{
    const fs::path folder = kTestData / "libxml2" / "test";
    if (!fs::exists(folder))
        GTEST_SKIP() << "libxml2 corpus not found at " << folder;
    int documents = 0;
    for (const fs::path& file : FilesUnder(folder)) {
        const WString text = DecodeDocument(ReadBytes(file));
        ExpectConsistentTable(text, file.string());
        WalkDocument(text);
        ++documents;
    }
    EXPECT_GT(documents, 100);
}

class W3cConformanceSuite : public ::testing::Test {
protected:
    // The build unpacks the suite's archive into TESSEL_XMLCONF_FOLDER when the corpus is there.
    static void SetUpTestSuite()
    {
        folder_ = TESSEL_XMLCONF_FOLDER;
        if (!fs::is_directory(folder_ / "xmlconf"))
            skipReason_ = "W3C conformance suite not found (the build unpacks " + (kTestData / "w3c-xmlconf").string() +
                          "/xmlts20130923.zip)";
    }
    void SetUp() override
    {
        if (!skipReason_.empty())
            GTEST_SKIP() << skipReason_;
    }

    static fs::path folder_;
    static std::string skipReason_;
};

fs::path W3cConformanceSuite::folder_;
std::string W3cConformanceSuite::skipReason_;

TEST_F(W3cConformanceSuite, EveryDocumentParsesIntoAConsistentTable)
{
    int documents = 0;
    for (const fs::path& file : FilesUnder(folder_, ".xml")) {
        const WString text = DecodeDocument(ReadBytes(file));
        ExpectConsistentTable(text, file.string());
        WalkDocument(text);
        ++documents;
    }
    EXPECT_GT(documents, 1000);
}

TEST_F(W3cConformanceSuite, StandaloneValidDocumentsHaveNoError)
{
    const fs::path folder = folder_ / "xmlconf" / "xmltest" / "valid" / "sa";
    ASSERT_TRUE(fs::exists(folder));
    int documents = 0;
    for (const fs::path& file : FilesUnder(folder, ".xml")) {
        if (file.parent_path().filename() == "out")
            continue;
        XmlDocument document;
        EXPECT_TRUE(document.SetText(DecodeDocument(ReadBytes(file)))) << file << ": " << ::testing::PrintToString(document.GetError());
        ++documents;
    }
    EXPECT_GT(documents, 100);
}

} // namespace
