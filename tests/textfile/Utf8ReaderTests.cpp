// The UTF-8 reader's decoder, with its kept quirks, over single lines.

#include "TextFileTesting.h"

#include <gtest/gtest.h>

using namespace std::string_literals;
using namespace textfile_testing;

namespace {

struct DecodeCase {
    const char* name;
    std::string bytes; // one line, without the mark
    WString text;
};

void PrintTo(const DecodeCase& c, std::ostream* os) { *os << c.name; }

const DecodeCase kDecodeCases[] = {
    {"EmptyLine", "", WTEXT("")},
    {"Ascii", "P1 10.5", WTEXT("P1 10.5")},
    {"TwoByteForm", "\xC3\xA9", WTEXT("\u00E9")},
    {"ThreeByteForm", "\xE2\x82\xAC", WTEXT("\u20AC")},
    {"FourByteFormBecomesSurrogatePair", "\xF0\x9F\x98\x80", WTEXT("\U0001F600")},
    {"LastCodePoint", "\xF4\x8F\xBF\xBF", WTEXT("\U0010FFFF")},
    {"AboveLastCodePointIsLimited", "\xF4\x90\x80\x80", WTEXT("\U0010FFFF")},
    {"LargestFourByteFormIsLimited", "\xF7\xBF\xBF\xBF", WTEXT("\U0010FFFF")},
    {"UFFFFIsOneUnit", "\xEF\xBF\xBF", WTEXT("\uFFFF")},
    {"OverlongFormAccepted", "\xC0\xAF", WTEXT("/")},
    {"OverlongThreeByteFormAccepted", "\xE0\x80\xAF", WTEXT("/")},
    {"TrailingBytesNotChecked", "\xE0\x41\x42", WTEXT("B")},
    {"StrayContinuationLeadsTwoByteForm", "\xBF\xBF", WTEXT("\u07FF")},
    {"StrayContinuationTakesAsciiAsTrail", "\x80\x41", WTEXT("\u0001")},
    {"LeadF8IsReplacementAlone", "\xF8" "a", WTEXT("\uFFFDa")},
    {"LeadFFIsReplacementAlone", "\xFF\xFE", WTEXT("\uFFFD\uFFFD")},
    {"EncodedSurrogateDecodedAsIs", "\xED\xA0\x80", WTEXT("\xD800")},
    {"CutSequenceFirstGivesReplacement", "\xC3", WTEXT("\uFFFD")},
    {"CutSequenceRepeatsPreviousAscii", "a\xC3", WTEXT("aa")},
    {"CutSequenceRepeatsPreviousTwoByte", "\xC3\xA9\xE2\x82", WTEXT("\u00E9\u00E9")},
    {"CutSequenceRepeatsPreviousPair", "\xF0\x9F\x98\x80\xF0\x9F", WTEXT("\U0001F600\U0001F600")},
    {"CutSequenceAfterF8RepeatsReplacement", "x\xF8\xE2", WTEXT("x\uFFFD\uFFFD")},
    {"CutFourByteFormConsumesWhatIsThere", "ab\xF0\x9F\x98", WTEXT("abb")},
    {"NulByteEndsText", "a\0b"s, WTEXT("a")},
    {"OverlongNulEndsText", "a\xC0\x80" "b", WTEXT("a")},
    {"CrInsideLineStays", "a\rb", WTEXT("a\rb")},
};

class Utf8DecodeTest : public testing::TestWithParam<DecodeCase> {};

TEST_P(Utf8DecodeTest, DecodesLine)
{
    const DecodeCase& c = GetParam();
    ScratchFolder folder;
    // Alone and followed by another line: a cut sequence is cut by the line's end either way.
    for (const std::string& tail : {""s, "\nnext"s}) {
        const ReadResult result = ReadAll(folder.Write("u.txt", "\xEF\xBB\xBF" + c.bytes + tail));
        ASSERT_EQ(result.encoding, 4);
        const std::size_t expectedLines = !tail.empty() ? 2 : c.bytes.empty() ? 0 : 1;
        ASSERT_EQ(result.lines.size(), expectedLines);
        if (expectedLines > 0) {
            EXPECT_EQ(result.lines[0], c.text);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Utf8Reader, Utf8DecodeTest, testing::ValuesIn(kDecodeCases),
                         [](const testing::TestParamInfo<DecodeCase>& info) { return info.param.name; });

} // namespace
