// Field splitting: the delimiter cutter, the preparation of delimited lines, the fixed
// position cutter with its growing position list, and comment lines.

#include "textfile/FieldSplit.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using Fields = std::vector<WString>;

// Test lines write the separator as '|'.
WString Sep(WString text)
{
    for (WChar& c : text)
        if (c == WTEXT('|'))
            c = kFieldSeparator;
    return text;
}

struct DelimiterCase {
    const char* name;
    WString line;
    std::uint8_t keepEmpty;
    Fields fields;
};

void PrintTo(const DelimiterCase& c, std::ostream* os) { *os << c.name; }

const DelimiterCase kDelimiterCases[] = {
    {"EmptyLineHasNoFields", WTEXT(""), 1, {}},
    {"EmptyLineHasNoFieldsEvenWithoutKeep", WTEXT(""), 0, {}},
    {"TwoFields", WTEXT("a|b"), 1, {WTEXT("a"), WTEXT("b")}},
    {"NoDelimiterOneField", WTEXT("abc"), 0, {WTEXT("abc")}},
    {"EmptyMiddleKept", WTEXT("a||b"), 1, {WTEXT("a"), WTEXT(""), WTEXT("b")}},
    {"EmptyMiddleDropped", WTEXT("a||b"), 0, {WTEXT("a"), WTEXT("b")}},
    {"LeadingDelimiterKept", WTEXT("|a"), 1, {WTEXT(""), WTEXT("a")}},
    {"LeadingDelimiterDropped", WTEXT("|a"), 0, {WTEXT("a")}},
    {"TrailingDelimiterKept", WTEXT("a|"), 1, {WTEXT("a"), WTEXT("")}},
    {"TrailingDelimiterDropped", WTEXT("a|"), 0, {WTEXT("a")}},
    {"OnlyDelimiterKept", WTEXT("|"), 1, {WTEXT(""), WTEXT("")}},
    {"OnlyDelimitersDropped", WTEXT("||"), 0, {}},
    {"KeepFlagTwoDropsEmptyFields", WTEXT("a||b|"), 2, {WTEXT("a"), WTEXT("b")}},
    {"FieldsNotTrimmed", WTEXT(" a | b "), 1, {WTEXT(" a "), WTEXT(" b ")}},
};

class DelimiterSplit : public testing::TestWithParam<DelimiterCase> {};

TEST_P(DelimiterSplit, CutsAtTheDelimiter)
{
    const DelimiterCase& c = GetParam();
    Fields fields = {WTEXT("stale"), WTEXT("fields"), WTEXT("from"), WTEXT("before"), WTEXT("here"), WTEXT("!")};
    SplitByDelimiter(Sep(c.line), fields, kFieldSeparator, c.keepEmpty);
    EXPECT_EQ(fields, c.fields);
}

INSTANTIATE_TEST_SUITE_P(FieldSplit, DelimiterSplit, testing::ValuesIn(kDelimiterCases),
                         [](const testing::TestParamInfo<DelimiterCase>& info) { return info.param.name; });

struct NormalizeCase {
    const char* name;
    WString line;
    std::vector<WString> delimiters;
    Fields fields;
};

void PrintTo(const NormalizeCase& c, std::ostream* os) { *os << c.name; }

const NormalizeCase kNormalizeCases[] = {
    {"EmptyLineHasNoFields", WTEXT(""), {WTEXT(",")}, {}},
    {"SingleDelimiterRunCollapses", WTEXT("1,,2"), {WTEXT(",")}, {WTEXT("1"), WTEXT("2")}},
    {"TwoDelimitersKeepEmptyFields", WTEXT("1,,2"), {WTEXT(","), WTEXT(";")}, {WTEXT("1"), WTEXT(""), WTEXT("2")}},
    {"TwoDelimitersBothSeparate", WTEXT("1;2,3"), {WTEXT(","), WTEXT(";")}, {WTEXT("1"), WTEXT("2"), WTEXT("3")}},
    {"TabAloneKeepsEmptyFields", WTEXT("1\t\t2"), {WTEXT("\t")}, {WTEXT("1"), WTEXT(""), WTEXT("2")}},
    {"TrailingBlanksCollapseAndGo", WTEXT("10 20 30   "), {WTEXT(" ")}, {WTEXT("10"), WTEXT("20"), WTEXT("30")}},
    {"OneTrailingSeparatorRemoved", WTEXT("A;B;"), {WTEXT(";")}, {WTEXT("A"), WTEXT("B")}},
    {"LeadingDelimitersNotTrimmed", WTEXT(" 10 20"), {WTEXT(" ")}, {WTEXT(""), WTEXT("10"), WTEXT("20")}},
    {"LeadingRunCollapsesToOneEmptyField", WTEXT("   10 20"), {WTEXT(" ")}, {WTEXT(""), WTEXT("10"), WTEXT("20")}},
    {"TabAloneOnlyOneTrailingSeparatorRemoved", WTEXT("1\t\t"), {WTEXT("\t")}, {WTEXT("1"), WTEXT("")}},
    {"LineEndsTrimmed", WTEXT("a,b\r\n\n"), {WTEXT(",")}, {WTEXT("a"), WTEXT("b")}},
    {"CrAfterLfNotTrimmedAsLineFeed", WTEXT("a,b\n\r"), {WTEXT(",")}, {WTEXT("a"), WTEXT("b\n")}},
    {"SeparatorInLineCutsToo", WTEXT("a|b,c"), {WTEXT(",")}, {WTEXT("a"), WTEXT("b"), WTEXT("c")}},
    {"SeparatorInLineCollapsesWithDelimiters", WTEXT("a|,b"), {WTEXT(",")}, {WTEXT("a"), WTEXT("b")}},
    {"SeparatorAsDelimiterCollapses", WTEXT("a||b||"), {WTEXT("|")}, {WTEXT("a"), WTEXT("b")}},
    {"MultiCharacterDelimiter", WTEXT("1::2::::3"), {WTEXT("::")}, {WTEXT("1"), WTEXT("2"), WTEXT("3")}},
    {"MultiCharacterDelimiterTrimsItsCharacters", WTEXT("1::2:"), {WTEXT("::")}, {WTEXT("1"), WTEXT("2")}},
    {"MultiCharacterDelimiterWithTwoConfigured", WTEXT("1::2;;3"), {WTEXT("::"), WTEXT(";")}, {WTEXT("1"), WTEXT("2"), WTEXT(""), WTEXT("3")}},
    {"MultiCharacterDelimitersReplacedInOrder", WTEXT("xabc"), {WTEXT("a"), WTEXT("ab")}, {WTEXT("x"), WTEXT("bc")}},
    {"TrailingCharactersOfAnyDelimiterTrimmed", WTEXT("xab"), {WTEXT("a"), WTEXT("ab")}, {WTEXT("x"), WTEXT("")}},
    {"ReplacementRepeatedUntilNoneIsLeft", WTEXT("a|xxb"), {WTEXT("|x")}, {WTEXT("a"), WTEXT("b")}},
    {"EmptyDelimiterIgnored", WTEXT("a,b"), {WTEXT(""), WTEXT(",")}, {WTEXT("a"), WTEXT("b")}},
    {"NoDelimitersOneField", WTEXT("a b"), {}, {WTEXT("a b")}},
    {"OnlyDelimiters", WTEXT(",,,"), {WTEXT(",")}, {}},
    {"SurveyLine", WTEXT("P1234567 456789.123 5123456.789 301.250 CODE"),
     {WTEXT(" ")}, {WTEXT("P1234567"), WTEXT("456789.123"), WTEXT("5123456.789"), WTEXT("301.250"), WTEXT("CODE")}},
};

class Normalize : public testing::TestWithParam<NormalizeCase> {};

TEST_P(Normalize, PreparesAndSplits)
{
    const NormalizeCase& c = GetParam();
    std::vector<WString> delimiters;
    for (const WString& d : c.delimiters)
        delimiters.push_back(Sep(d));
    WString line = Sep(c.line);
    Fields fields = {WTEXT("stale")};
    NormalizeDelimitedLine(line, delimiters, fields);
    EXPECT_EQ(fields, c.fields);
}

INSTANTIATE_TEST_SUITE_P(FieldSplit, Normalize, testing::ValuesIn(kNormalizeCases),
                         [](const testing::TestParamInfo<NormalizeCase>& info) { return info.param.name; });

TEST(FieldSplit, NormalizedLineIsLeftInTheSeparatorForm)
{
    WString line = WTEXT("a, b,,c,\r");
    Fields fields;
    NormalizeDelimitedLine(line, {WTEXT(",")}, fields);
    EXPECT_EQ(line, Sep(WTEXT("a| b|c")));
}

TEST(FieldSplit, FixedPositionsGrowOneBoundaryPerLine)
{
    PositionList positions = {3, 6};
    Fields fields;
    EXPECT_EQ(SplitAtPositions(WTEXT("abcdefgh"), positions, fields), 3);
    EXPECT_EQ(fields, (Fields{WTEXT("abc"), WTEXT("def"), WTEXT("gh")}));
    EXPECT_EQ(SplitAtPositions(WTEXT("ab"), positions, fields), 4);
    EXPECT_EQ(fields, (Fields{WTEXT("ab"), WTEXT(""), WTEXT(""), WTEXT("")}));
    EXPECT_EQ(SplitAtPositions(WTEXT("abcdefghijk"), positions, fields), 5);
    EXPECT_EQ(fields, (Fields{WTEXT("abc"), WTEXT("def"), WTEXT("gh"), WTEXT(""), WTEXT("cdefghijk")}));
    EXPECT_EQ(positions, (PositionList{3, 6, 8, 2, 11}));
}

// Positions reach the host string as int: from 2^31 on they count as negative, so the field
// is empty and the next one starts at 0 (its length still measured from the negative start).
TEST(FieldSplit, FixedPositionsOnOneLine)
{
    const struct {
        WString line;
        PositionList positions;
        Fields fields;
    } cases[] = {
        {WTEXT(""), {5, 10}, {WTEXT(""), WTEXT(""), WTEXT("")}},
        {WTEXT("whole line"), {}, {WTEXT("whole line")}},
        {WTEXT("abcdef"), {2, 0xFFFFFFFEu, 4}, {WTEXT("ab"), WTEXT(""), WTEXT("abcdef"), WTEXT("ef")}},
    };
    for (const auto& c : cases) {
        PositionList positions = c.positions;
        Fields fields;
        EXPECT_EQ(SplitAtPositions(c.line, positions, fields), static_cast<int>(c.fields.size()));
        EXPECT_EQ(fields, c.fields);
    }
}

TEST(FieldSplit, LimitedFixedSplitEqualsFullSplitForItsFields)
{
    std::mt19937 random(9);
    for (int round = 0; round < 300; ++round) {
        PositionList configured;
        for (int i = std::uniform_int_distribution<int>(0, 6)(random); i > 0; --i)
            configured.push_back(std::uniform_int_distribution<std::uint32_t>(0, 30)(random));
        PositionList full = configured;
        PositionList limited = configured;
        const std::size_t limit = std::uniform_int_distribution<std::size_t>(0, 9)(random);
        Fields fullFields;
        Fields limitedFields;
        for (int line = 0; line < 5; ++line) {
            const WString text(std::uniform_int_distribution<std::size_t>(0, 40)(random), WTEXT('a'));
            WString varied = text;
            for (std::size_t i = 0; i < varied.size(); ++i)
                varied[i] = static_cast<WChar>(WTEXT('a') + i % 26);
            const int fullCount = SplitAtPositions(varied, full, fullFields);
            const int limitedCount = SplitAtPositions(varied, limited, limitedFields, limit);
            ASSERT_EQ(limitedCount, fullCount);
            ASSERT_EQ(limited, full);
            ASSERT_EQ(limitedFields.size(), std::min(limit, fullFields.size()));
            for (std::size_t i = 0; i < limitedFields.size(); ++i)
                ASSERT_EQ(limitedFields[i], fullFields[i]) << "round " << round << ", field " << i;
        }
    }
}

// Refilling assigns into the strings already in the list: a file of uniform lines splits
// without allocating once the first line has sized the fields.
TEST(FieldSplit, FieldStringsAreReusedFromLineToLine)
{
    Fields fields;
    WString line = WTEXT("P1234567 456789.123 5123456.789 301.250 CODE");
    NormalizeDelimitedLine(line, {WTEXT(" ")}, fields);
    std::vector<const WChar*> storage;
    for (const WString& field : fields)
        storage.push_back(field.data());
    WString next = WTEXT("P7654321 987654.321 5987654.321 123.456 EDOC");
    NormalizeDelimitedLine(next, {WTEXT(" ")}, fields);
    ASSERT_EQ(fields.size(), storage.size());
    for (std::size_t i = 0; i < fields.size(); ++i)
        EXPECT_EQ(fields[i].data(), storage[i]) << "field " << i;
    EXPECT_EQ(fields[4], WTEXT("EDOC"));
}

TEST(FieldSplit, CommentLines)
{
    const WString markers = CommentMarkersOf(Sep(WTEXT("#|;")));
    EXPECT_EQ(markers, WTEXT("#;"));
    EXPECT_TRUE(IsCommentLine(WTEXT("#x 1 2"), markers));
    EXPECT_TRUE(IsCommentLine(WTEXT(";"), markers));
    EXPECT_FALSE(IsCommentLine(WTEXT(" #x 1 2"), markers));
    EXPECT_FALSE(IsCommentLine(WTEXT(""), markers));
    EXPECT_FALSE(IsCommentLine(WTEXT("x#"), markers));
    EXPECT_FALSE(IsCommentLine(Sep(WTEXT("|x")), markers)) << "the separator is never a marker";
    EXPECT_FALSE(IsCommentLine(WTEXT("#x"), CommentMarkersOf(WTEXT("")))) << "no comment string marks no line";
}

} // namespace

namespace {

// Lines of single-character delimiters take a fast path; lines too long for it, and
// delimiter lists with an empty entry, take the step-by-step one. Both must agree.
TEST(FieldSplit, FastAndStepwisePreparationAgree)
{
    const WString alphabet = Sep(WTEXT("ab ,;\t|\r\n"));
    const WString prefix(600, WTEXT('x')); // too long for the fast path, and delimiter-free
    std::mt19937 random(31);
    for (int round = 0; round < 3000; ++round) {
        WString line;
        for (int i = std::uniform_int_distribution<int>(0, 40)(random); i > 0; --i)
            line += alphabet[std::uniform_int_distribution<std::size_t>(0, alphabet.size() - 1)(random)];
        for (const DelimiterList& delimiters : {DelimiterList{WTEXT(" ")}, DelimiterList{WTEXT(",")}, DelimiterList{WTEXT("\t")},
                                                DelimiterList{Sep(WTEXT("|"))}, DelimiterList{WTEXT(","), WTEXT(";")},
                                                DelimiterList{WTEXT(" "), WTEXT("\t"), WTEXT(";")}}) {
            WString fast = line;
            Fields fastFields;
            NormalizeDelimitedLine(fast, delimiters, fastFields);

            WString longLine = prefix + line;
            Fields longFields;
            NormalizeDelimitedLine(longLine, delimiters, longFields);
            Fields expected = fastFields.empty() ? Fields{WTEXT("")} : fastFields;
            expected[0] = prefix + expected[0];
            ASSERT_EQ(longFields, expected) << "round " << round;
            ASSERT_EQ(longLine, prefix + fast);

            // A limited cut gives the full cut's first fields, on either path.
            const std::size_t limit = std::uniform_int_distribution<std::size_t>(0, 6)(random);
            for (const WString& original : {line, prefix + line}) {
                WString full = original;
                Fields fullFields;
                NormalizeDelimitedLine(full, delimiters, fullFields);
                WString limited = original;
                Fields limitedFields{WTEXT("stale")};
                NormalizeDelimitedLine(limited, delimiters, limitedFields, limit);
                ASSERT_EQ(limited, full);
                fullFields.resize(std::min(limit, fullFields.size()));
                ASSERT_EQ(limitedFields, fullFields) << "round " << round << ", limit " << limit;
            }

            if (delimiters.size() > 1) {
                DelimiterList withEmpty = delimiters;
                withEmpty.push_back(WTEXT(""));
                WString stepwise = line;
                Fields stepwiseFields;
                NormalizeDelimitedLine(stepwise, withEmpty, stepwiseFields);
                ASSERT_EQ(stepwiseFields, fastFields) << "round " << round;
                ASSERT_EQ(stepwise, fast);
            }
        }
    }
}

} // namespace
