// Lines are never lost or duplicated where buffer fills end, whatever the buffer size, and
// the counting pass counts exactly the lines that reading delivers.

#include "TextFileTesting.h"

#include <gtest/gtest.h>

#include <random>

using namespace textfile_testing;

namespace {

// Characters every test encoding can hold (1252 has é and €); no CR, no NUL.
const WString kAlphabet = WTEXT("abcXYZ 0123456789,.;\t\u00E9\u20AC");
const WString kWideOnly = WTEXT("\u3042\U0001F600");

struct Encoded {
    std::uint32_t flags;
    std::string bytes;
};

void AppendUnit(std::string& out, WChar unit, int encoding)
{
    switch (encoding) {
    case 1: // the test alphabet in 1252
        out += unit == WTEXT('\u00E9') ? '\xE9' : unit == WTEXT('\u20AC') ? '\x80' : static_cast<char>(unit);
        break;
    case 2:
        out += static_cast<char>(unit & 0xFF);
        out += static_cast<char>(unit >> 8);
        break;
    case 3:
        out += static_cast<char>(unit >> 8);
        out += static_cast<char>(unit & 0xFF);
        break;
    }
}

// The file of lines in one encoding (1, 2, 3, 4; with a mark for the UTF ones) with each
// line ended by LF or CR LF, and the last line maybe not ended at all.
std::string EncodeFile(const std::vector<WString>& lines, const std::vector<bool>& crlf, bool endLast, int encoding)
{
    std::string out = encoding == 2 ? "\xFF\xFE" : encoding == 3 ? "\xFE\xFF" : encoding == 4 ? "\xEF\xBB\xBF" : "";
    for (std::size_t i = 0; i < lines.size(); ++i) {
        WString text = lines[i];
        if (i + 1 < lines.size() || endLast)
            text += crlf[i] ? WTEXT("\r\n") : WTEXT("\n");
        if (encoding == 4)
            out += ToUtf8(text);
        else
            for (WChar unit : text)
                AppendUnit(out, unit, encoding);
    }
    return out;
}

std::vector<int> BufferSizes()
{
    std::vector<int> sizes;
    for (int size = 1; size <= 70; ++size)
        sizes.push_back(size);
    for (int size : {127, 128, 129, 4095, 4096, 4097})
        sizes.push_back(size);
    return sizes;
}

TEST(BufferBoundaries, LinesAreNeitherLostNorDuplicatedAtAnyBufferSize)
{
    std::mt19937 random(20240611);
    ScratchFolder folder;
    for (int encoding : {1, 2, 3, 4}) {
        const WString alphabet = encoding == 1 ? kAlphabet : kAlphabet + kWideOnly;
        std::vector<WString> lines(150);
        std::vector<bool> crlf(lines.size());
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const int length = std::uniform_int_distribution<int>(0, 30)(random);
            for (int k = 0; k < length; ++k) {
                const WChar c = alphabet[std::uniform_int_distribution<std::size_t>(0, alphabet.size() - 1)(random)];
                if (c >= 0xDC00 && c <= 0xDFFF)
                    continue; // only as the second half of its pair
                lines[i] += c;
                if (c >= 0xD800 && c <= 0xDBFF)
                    lines[i] += alphabet[alphabet.find(c) + 1];
            }
            crlf[i] = random() % 2 == 0;
        }
        for (bool endLast : {true, false}) {
            if (!endLast && lines.back().empty())
                lines.back() = WTEXT("last");
            const WString path = folder.Write("lines.txt", EncodeFile(lines, crlf, endLast, encoding));
            for (int bufferSize : BufferSizes()) {
                const ReadResult result = ReadAll(path, 0, bufferSize, 1252);
                ASSERT_EQ(result.encoding, encoding);
                ASSERT_EQ(result.lines, lines) << "encoding " << encoding << ", buffer size " << bufferSize;
                ASSERT_EQ(result.counted, lines.size()) << "encoding " << encoding << ", buffer size " << bufferSize;
            }
        }
    }
}

// Bytes full of line ends, CRs, NULs, marks and broken sequences: whatever the reader makes
// of them, the counting pass agrees with it line for line.
TEST(BufferBoundaries, CountLinesEqualsReadLineOnArbitraryBytes)
{
    const unsigned char pieces[] = {'\n', '\r', '\0', 'a', 0xFF, 0xFE, 0xEF, 0xBB, 0xBF, 0xC3, 0xF0, 0x80};
    const std::uint32_t flagSets[] = {0, 1, 2, 3, 4, 2 | 0x200, 3 | 0x200, 4 | 0x200};
    std::mt19937 random(77);
    ScratchFolder folder;
    for (int round = 0; round < 120; ++round) {
        std::string bytes(std::uniform_int_distribution<int>(0, 200)(random), '\0');
        for (char& b : bytes)
            b = static_cast<char>(pieces[random() % sizeof(pieces)]);
        const WString path = folder.Write("bytes.bin", bytes);
        for (std::uint32_t flags : flagSets) {
            for (int bufferSize : {1, 2, 3, 5, 8, 0}) {
                const ReadResult result = ReadAll(path, flags, bufferSize);
                ASSERT_EQ(result.openResult, 0);
                ASSERT_EQ(result.endResult, -1);
                ASSERT_EQ(result.counted, result.lines.size())
                    << "round " << round << ", flags " << flags << ", buffer size " << bufferSize;
                for (const WString& line : result.lines)
                    ASSERT_EQ(line.find(WChar(0)), WString::npos);
            }
        }
    }
}

// The lone-CR rule depends on where fills end; everything else does not.
TEST(BufferBoundaries, LoneCrIsLostOnlyAtTheEndOfAFill)
{
    ScratchFolder folder;
    const WString path = folder.Write("cr.txt", "ab\rcd\n");
    for (int bufferSize = 1; bufferSize <= 8; ++bufferSize) {
        const ReadResult result = ReadAll(path, 0, bufferSize);
        const bool crEndsAFill = bufferSize == 1 || bufferSize == 3;
        EXPECT_EQ(result.lines, std::vector<WString>{crEndsAFill ? WTEXT("abcd") : WTEXT("ab\rcd")}) << "buffer size " << bufferSize;
    }
}

} // namespace
