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
        if (c == u'|')
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
    {"EmptyLineHasNoFields", u"", 1, {}},
    {"EmptyLineHasNoFieldsEvenWithoutKeep", u"", 0, {}},
    {"TwoFields", u"a|b", 1, {u"a", u"b"}},
    {"NoDelimiterOneField", u"abc", 0, {u"abc"}},
    {"EmptyMiddleKept", u"a||b", 1, {u"a", u"", u"b"}},
    {"EmptyMiddleDropped", u"a||b", 0, {u"a", u"b"}},
    {"LeadingDelimiterKept", u"|a", 1, {u"", u"a"}},
    {"LeadingDelimiterDropped", u"|a", 0, {u"a"}},
    {"TrailingDelimiterKept", u"a|", 1, {u"a", u""}},
    {"TrailingDelimiterDropped", u"a|", 0, {u"a"}},
    {"OnlyDelimiterKept", u"|", 1, {u"", u""}},
    {"OnlyDelimitersDropped", u"||", 0, {}},
    {"KeepFlagTwoDropsEmptyFields", u"a||b|", 2, {u"a", u"b"}},
    {"FieldsNotTrimmed", u" a | b ", 1, {u" a ", u" b "}},
};

class DelimiterSplit : public testing::TestWithParam<DelimiterCase> {};

TEST_P(DelimiterSplit, CutsAtTheDelimiter)
{
    const DelimiterCase& c = GetParam();
    Fields fields = {u"stale", u"fields", u"from", u"before", u"here", u"!"};
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
    {"EmptyLineHasNoFields", u"", {u","}, {}},
    {"SingleDelimiterRunCollapses", u"1,,2", {u","}, {u"1", u"2"}},
    {"TwoDelimitersKeepEmptyFields", u"1,,2", {u",", u";"}, {u"1", u"", u"2"}},
    {"TwoDelimitersBothSeparate", u"1;2,3", {u",", u";"}, {u"1", u"2", u"3"}},
    {"TabAloneKeepsEmptyFields", u"1\t\t2", {u"\t"}, {u"1", u"", u"2"}},
    {"TrailingBlanksCollapseAndGo", u"10 20 30   ", {u" "}, {u"10", u"20", u"30"}},
    {"OneTrailingSeparatorRemoved", u"A;B;", {u";"}, {u"A", u"B"}},
    {"LeadingDelimitersNotTrimmed", u" 10 20", {u" "}, {u"", u"10", u"20"}},
    {"LeadingRunCollapsesToOneEmptyField", u"   10 20", {u" "}, {u"", u"10", u"20"}},
    {"TabAloneOnlyOneTrailingSeparatorRemoved", u"1\t\t", {u"\t"}, {u"1", u""}},
    {"LineEndsTrimmed", u"a,b\r\n\n", {u","}, {u"a", u"b"}},
    {"CrAfterLfNotTrimmedAsLineFeed", u"a,b\n\r", {u","}, {u"a", u"b\n"}},
    {"SeparatorInLineCutsToo", u"a|b,c", {u","}, {u"a", u"b", u"c"}},
    {"SeparatorInLineCollapsesWithDelimiters", u"a|,b", {u","}, {u"a", u"b"}},
    {"SeparatorAsDelimiterCollapses", u"a||b||", {u"|"}, {u"a", u"b"}},
    {"MultiCharacterDelimiter", u"1::2::::3", {u"::"}, {u"1", u"2", u"3"}},
    {"MultiCharacterDelimiterTrimsItsCharacters", u"1::2:", {u"::"}, {u"1", u"2"}},
    {"MultiCharacterDelimiterWithTwoConfigured", u"1::2;;3", {u"::", u";"}, {u"1", u"2", u"", u"3"}},
    {"MultiCharacterDelimitersReplacedInOrder", u"xabc", {u"a", u"ab"}, {u"x", u"bc"}},
    {"TrailingCharactersOfAnyDelimiterTrimmed", u"xab", {u"a", u"ab"}, {u"x", u""}},
    {"ReplacementRepeatedUntilNoneIsLeft", u"a|xxb", {u"|x"}, {u"a", u"b"}},
    {"EmptyDelimiterIgnored", u"a,b", {u"", u","}, {u"a", u"b"}},
    {"NoDelimitersOneField", u"a b", {}, {u"a b"}},
    {"OnlyDelimiters", u",,,", {u","}, {}},
    {"SurveyLine", u"P1234567 456789.123 5123456.789 301.250 CODE",
     {u" "}, {u"P1234567", u"456789.123", u"5123456.789", u"301.250", u"CODE"}},
};

class Normalize : public testing::TestWithParam<NormalizeCase> {};

TEST_P(Normalize, PreparesAndSplits)
{
    const NormalizeCase& c = GetParam();
    std::vector<WString> delimiters;
    for (const WString& d : c.delimiters)
        delimiters.push_back(Sep(d));
    WString line = Sep(c.line);
    Fields fields = {u"stale"};
    NormalizeDelimitedLine(line, delimiters, fields);
    EXPECT_EQ(fields, c.fields);
}

INSTANTIATE_TEST_SUITE_P(FieldSplit, Normalize, testing::ValuesIn(kNormalizeCases),
                         [](const testing::TestParamInfo<NormalizeCase>& info) { return info.param.name; });

TEST(FieldSplit, NormalizedLineIsLeftInTheSeparatorForm)
{
    WString line = u"a, b,,c,\r";
    Fields fields;
    NormalizeDelimitedLine(line, {u","}, fields);
    EXPECT_EQ(line, Sep(u"a| b|c"));
}

TEST(FieldSplit, FixedPositionsGrowOneBoundaryPerLine)
{
    PositionList positions = {3, 6};
    Fields fields;
    EXPECT_EQ(SplitAtPositions(u"abcdefgh", positions, fields), 3);
    EXPECT_EQ(fields, (Fields{u"abc", u"def", u"gh"}));
    EXPECT_EQ(SplitAtPositions(u"ab", positions, fields), 4);
    EXPECT_EQ(fields, (Fields{u"ab", u"", u"", u""}));
    EXPECT_EQ(SplitAtPositions(u"abcdefghijk", positions, fields), 5);
    EXPECT_EQ(fields, (Fields{u"abc", u"def", u"gh", u"", u"cdefghijk"}));
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
        {u"", {5, 10}, {u"", u"", u""}},
        {u"whole line", {}, {u"whole line"}},
        {u"abcdef", {2, 0xFFFFFFFEu, 4}, {u"ab", u"", u"abcdef", u"ef"}},
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
            const WString text(std::uniform_int_distribution<std::size_t>(0, 40)(random), u'a');
            WString varied = text;
            for (std::size_t i = 0; i < varied.size(); ++i)
                varied[i] = static_cast<WChar>(u'a' + i % 26);
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
    WString line = u"P1234567 456789.123 5123456.789 301.250 CODE";
    NormalizeDelimitedLine(line, {u" "}, fields);
    std::vector<const WChar*> storage;
    for (const WString& field : fields)
        storage.push_back(field.data());
    WString next = u"P7654321 987654.321 5987654.321 123.456 EDOC";
    NormalizeDelimitedLine(next, {u" "}, fields);
    ASSERT_EQ(fields.size(), storage.size());
    for (std::size_t i = 0; i < fields.size(); ++i)
        EXPECT_EQ(fields[i].data(), storage[i]) << "field " << i;
    EXPECT_EQ(fields[4], u"EDOC");
}

TEST(FieldSplit, CommentLines)
{
    const WString markers = CommentMarkersOf(Sep(u"#|;"));
    EXPECT_EQ(markers, u"#;");
    EXPECT_TRUE(IsCommentLine(u"#x 1 2", markers));
    EXPECT_TRUE(IsCommentLine(u";", markers));
    EXPECT_FALSE(IsCommentLine(u" #x 1 2", markers));
    EXPECT_FALSE(IsCommentLine(u"", markers));
    EXPECT_FALSE(IsCommentLine(u"x#", markers));
    EXPECT_FALSE(IsCommentLine(Sep(u"|x"), markers)) << "the separator is never a marker";
    EXPECT_FALSE(IsCommentLine(u"#x", CommentMarkersOf(u""))) << "no comment string marks no line";
}

} // namespace

namespace {

// Lines of single-character delimiters take a fast path; lines too long for it, and
// delimiter lists with an empty entry, take the step-by-step one. Both must agree.
TEST(FieldSplit, FastAndStepwisePreparationAgree)
{
    const WString alphabet = Sep(u"ab ,;\t|\r\n");
    const WString prefix(600, u'x'); // too long for the fast path, and delimiter-free
    std::mt19937 random(31);
    for (int round = 0; round < 3000; ++round) {
        WString line;
        for (int i = std::uniform_int_distribution<int>(0, 40)(random); i > 0; --i)
            line += alphabet[std::uniform_int_distribution<std::size_t>(0, alphabet.size() - 1)(random)];
        for (const DelimiterList& delimiters : {DelimiterList{u" "}, DelimiterList{u","}, DelimiterList{u"\t"},
                                                DelimiterList{Sep(u"|")}, DelimiterList{u",", u";"},
                                                DelimiterList{u" ", u"\t", u";"}}) {
            WString fast = line;
            Fields fastFields;
            NormalizeDelimitedLine(fast, delimiters, fastFields);

            WString longLine = prefix + line;
            Fields longFields;
            NormalizeDelimitedLine(longLine, delimiters, longFields);
            Fields expected = fastFields.empty() ? Fields{u""} : fastFields;
            expected[0] = prefix + expected[0];
            ASSERT_EQ(longFields, expected) << "round " << round;
            ASSERT_EQ(longLine, prefix + fast);

            if (delimiters.size() > 1) {
                DelimiterList withEmpty = delimiters;
                withEmpty.push_back(u"");
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
