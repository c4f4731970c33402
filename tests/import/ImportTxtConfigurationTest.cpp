#include "import/ImportTxtConfiguration.h"

#include "tests/xml/Windows1252Test.h"

#include <gtest/gtest.h>

#include <string>

namespace {

const WString kDeclaration = WTEXT("<?xml version=\"1.0\" encoding=\"utf-8\"?>");

// Byte forms below are those of Windows-1252.
class ImportTxtConfigurationTest : public Windows1252Test {};

boost::shared_ptr<CColumnData> Column(int no, const WString& name, int type, int onOff)
{
    auto column = boost::shared_ptr<CColumnData>(new CColumnData);
    column->SetNo(no);
    column->SetName(name);
    column->SetType(type);
    column->SetOnOff(onOff);
    return column;
}

// A record with every field set.
ImportTxtConfiguration Filled()
{
    ImportTxtConfiguration record;
    record.SetTxtFile(WTEXT("keep.txt"));
    record.SetDelimiters({WTEXT(",")});
    record.SetComments(WTEXT("#"));
    record.SetMode(1);
    record.GetPositions() = {3};
    record.GetColumns().push_back(Column(2, WTEXT("Z"), kColumnReal, 1));
    return record;
}

ImportTxtConfiguration ReadBack(ImportTxtConfiguration& written)
{
    ImportTxtConfiguration read;
    EXPECT_EQ(read.Parse(written.ToXml().c_str()), 1);
    return read;
}

TEST_F(ImportTxtConfigurationTest, WritesTheFixedTextByteForByte)
{
    ImportTxtConfiguration record;
    record.SetTxtFile(WTEXT("C:\\Data\\M\u00fcller & \"Partner\".txt"));
    record.SetDelimiters({WTEXT("\t"), WTEXT(";")});
    record.SetComments(WTEXT("#'"));
    record.SetMode(1);
    record.GetPositions() = {12, 25, 40};
    record.GetColumns().push_back(Column(0, WTEXT("X"), kColumnReal, 1));
    record.GetColumns().push_back(Column(1, WTEXT("a=\"b\""), kColumnText, 0));

    EXPECT_EQ(record.ToXml(),
              kDeclaration +
                  WTEXT("<cfg txtFile=\"C:\\Data\\M=EF=BF=BCller &amp; =EF=BF=97Partner=EF=BF=97.txt\" ")
                  WTEXT("delimiter=\"\t;\" comments=\"#&apos;\" mode=\"1\" colPositions=\"12\u00a425\u00a440\u00a4\">")
                  WTEXT("<col no=\"0\" name=\"X\" type=\"5001\" onOff=\"1\"/>")
                  WTEXT("<col no=\"1\" name=\"a=3D=EF=BF=97b=EF=BF=97\" type=\"5005\" onOff=\"0\"/></cfg>"));
}

TEST_F(ImportTxtConfigurationTest, NewRecordWritesEmptyAttributes)
{
    ImportTxtConfiguration record;
    EXPECT_EQ(record.ToXml(),
              kDeclaration + WTEXT("<cfg txtFile=\"\" delimiter=\"\" comments=\"\" mode=\"0\" colPositions=\"\"></cfg>"));
    const ImportTxtConfiguration read = ReadBack(record);
    EXPECT_TRUE(read.GetPositions().empty());
    EXPECT_TRUE(read.GetDelimiters().empty());
    EXPECT_TRUE(read.GetColumns().empty());
}

TEST_F(ImportTxtConfigurationTest, AwkwardTextsSurviveARoundTripExceptWhereDeliberatelyNot)
{
    const struct {
        const WChar* written;
        const WChar* pathReadBack;
        const WChar* nameReadBack;
    } cases[] = {
        {WTEXT("C:\\Data\\plain.txt"), WTEXT("C:\\Data\\plain.txt"), WTEXT("C:\\Data\\plain.txt")},
        {WTEXT("a \"quoted\" path"), WTEXT("a \"quoted\" path"), WTEXT("a \u00d7quoted\u00d7 path")},
        {WTEXT("R&D <x> 'y' a=b"), WTEXT("R&D <x> 'y' a=b"), WTEXT("R&D <x> 'y' a=b")},
        {WTEXT("M\u00fcller Stra\u00dfe \u20ac \u00e9"), WTEXT("M\u00fcller Stra\u00dfe \u20ac \u00e9"), WTEXT("M\u00fcller Stra\u00dfe \u20ac \u00e9")},
        {WTEXT("1\u00a42\t3"), WTEXT("1\u00a42\t3"), WTEXT("1\u00a42\t3")},
        {WTEXT("=3D=EF"), WTEXT("=3D=EF"), WTEXT("=3D=EF")},
        {WTEXT("a\u00d7b"), WTEXT("a\"b"), WTEXT("a\u00d7b")},  // the stand-in itself reads back as a quote in paths
        {WTEXT("&lt;"), WTEXT("<"), WTEXT("<")},                 // a typed reference is kept, then unescaped twice
        {WTEXT(""), WTEXT(""), WTEXT("")},
    };
    for (const auto& c : cases) {
        ImportTxtConfiguration record;
        record.SetTxtFile(c.written);
        record.SetComments(c.written);
        record.GetColumns().push_back(Column(0, c.written, kColumnText, 1));
        const WString xml = record.ToXml();
        for (const WChar unit : xml.substr(kDeclaration.size()))
            EXPECT_TRUE(unit < 0x80 || unit == 0xA4) << "raw character in " << ::testing::PrintToString(xml);
        ImportTxtConfiguration read;
        ASSERT_EQ(read.Parse(xml.c_str()), 1) << ::testing::PrintToString(xml);
        EXPECT_EQ(read.GetTxtFile(), WString(c.pathReadBack)) << ::testing::PrintToString(xml);
        EXPECT_EQ(read.GetComments(), WString(c.pathReadBack)) << ::testing::PrintToString(xml);
        ASSERT_EQ(read.GetColumns().size(), 1u);
        EXPECT_EQ(read.GetColumns()[0]->GetName(), WString(c.nameReadBack)) << ::testing::PrintToString(xml);
    }
}

// The one rule that tessel and the wizard ask must agree with what writing and reading the
// string really do, field by field.
TEST_F(ImportTxtConfigurationTest, ValueChangesTellWhatTheStringGivesBack)
{
    using namespace ImportValueChange;
    const struct {
        const WChar* text;
        unsigned changes;     // as the file path, the delimiters or the comments
        unsigned nameChanges; // as a column name
    } cases[] = {
        {WTEXT("plain \u00a4 \u00e9 \u20ac R&D <x> 'y' a=b"), 0, 0},
        {WTEXT("a \"quoted\" b"), 0, QuoteReadAsSign},
        {WTEXT("a\u00d7b"), SignReadAsQuote, 0},
        {WTEXT("\u03a9"), OutsideCodePage, OutsideCodePage},
        {WTEXT("\"\u03a9\u00d7"), OutsideCodePage | SignReadAsQuote, OutsideCodePage | QuoteReadAsSign},
        {WTEXT(""), 0, 0},
    };
    for (const auto& c : cases) {
        const WString text = c.text;
        SCOPED_TRACE(::testing::PrintToString(text));
        for (const ImportValue value : {ImportValue::FilePath, ImportValue::Delimiters, ImportValue::Comments})
            EXPECT_EQ(ImportValueChanges(value, text), c.changes);
        EXPECT_EQ(ImportValueChanges(ImportValue::ColumnName, text), c.nameChanges);

        ImportTxtConfiguration record;
        record.SetTxtFile(text);
        DelimiterList delimiters;
        for (const WChar unit : text)
            delimiters.emplace_back(1, unit);
        record.SetDelimiters(delimiters);
        record.SetComments(text);
        record.GetColumns().push_back(Column(0, text, kColumnText, 1));
        const ImportTxtConfiguration read = ReadBack(record);
        WString readDelimiters;
        for (const WString& delimiter : read.GetDelimiters())
            readDelimiters += delimiter;
        EXPECT_EQ(read.GetTxtFile() == text, c.changes == 0);
        EXPECT_EQ(readDelimiters == text, c.changes == 0);
        EXPECT_EQ(read.GetComments() == text, c.changes == 0);
        EXPECT_EQ(read.GetColumns()[0]->GetName() == text, c.nameChanges == 0);
    }
}

// The quote is stored as its stand-in, so a code page without "×" cannot hold a quote either.
TEST(ImportValueChanges, AQuoteNeedsTheStandInInTheCodePage)
{
    using namespace ImportValueChange;
    const WString quote = WTEXT("a\"b");
    EXPECT_EQ(ImportValueChanges(ImportValue::Comments, quote, 1252), 0u);
    EXPECT_EQ(ImportValueChanges(ImportValue::Comments, quote, 1251), OutsideCodePage);
    EXPECT_EQ(ImportValueChanges(ImportValue::ColumnName, quote, 1251), OutsideCodePage | QuoteReadAsSign);

    AnsiCodePageScope cyrillic(1251);
    ImportTxtConfiguration record;
    record.SetComments(quote);
    EXPECT_EQ(ReadBack(record).GetComments(), WTEXT("a?b"));
}

TEST_F(ImportTxtConfigurationTest, WritingChangesTheRecordsOwnPathOnly)
{
    ImportTxtConfiguration record;
    record.SetTxtFile(WTEXT("C:\\\"x\".txt"));
    record.SetComments(WTEXT("\""));
    record.SetDelimiters({WTEXT("\"")});
    record.GetColumns().push_back(Column(0, WTEXT("\"n\""), kColumnText, 1));
    record.ToXml();
    EXPECT_EQ(record.GetTxtFile(), WTEXT("C:\\\u00d7x\u00d7.txt"));
    EXPECT_EQ(record.GetComments(), WTEXT("\""));
    EXPECT_EQ(record.GetDelimiters(), DelimiterList{WTEXT("\"")});
    EXPECT_EQ(record.GetColumns()[0]->GetName(), WTEXT("\"n\""));
    // Written again, the changed path gives the same text.
    const WString first = record.ToXml();
    EXPECT_EQ(record.ToXml(), first);
}

TEST_F(ImportTxtConfigurationTest, DelimitersComeBackOneCharacterEach)
{
    ImportTxtConfiguration record;
    record.SetDelimiters({WTEXT("\t"), WTEXT(";"), WTEXT("ab"), WTEXT("\""), WTEXT("\u00d7")});
    const WString xml = record.ToXml();
    EXPECT_NE(xml.find(WTEXT("delimiter=\"\t;ab=EF=BF=97=EF=BF=97\"")), WString::npos) << ::testing::PrintToString(xml);
    EXPECT_EQ(ReadBack(record).GetDelimiters(), (DelimiterList{WTEXT("\t"), WTEXT(";"), WTEXT("a"), WTEXT("b"), WTEXT("\""), WTEXT("\"")}));
}

TEST_F(ImportTxtConfigurationTest, ReadsPositionsDroppingEmptyPiecesAndNonNumbersAsZero)
{
    const struct {
        const WChar* attribute;
        PositionList positions;
    } cases[] = {
        {WTEXT(""), {}},
        {WTEXT("12\u00a425"), {12, 25}},
        {WTEXT("\u00a4\u00a45\u00a4abc\u00a47\u00a4"), {5, 0, 7}},
        {WTEXT(" 8x\u00a4+9\u00a4"), {8, 9}},
        {WTEXT("-1\u00a4"), {0xFFFFFFFFu}},
    };
    for (const auto& c : cases) {
        ImportTxtConfiguration record;
        ASSERT_EQ(record.Parse((WTEXT("<cfg colPositions=\"") + WString(c.attribute) + WTEXT("\"/>")).c_str()), 1);
        EXPECT_EQ(record.GetPositions(), c.positions) << ::testing::PrintToString(WString(c.attribute));
    }
    ImportTxtConfiguration wide;
    wide.GetPositions() = {0xFFFFFFFFu};
    EXPECT_NE(wide.ToXml().find(WTEXT("colPositions=\"-1\u00a4\"")), WString::npos);
}

TEST_F(ImportTxtConfigurationTest, NumbersThatAreNotNumbersReadAsZero)
{
    ImportTxtConfiguration record;
    ASSERT_EQ(record.Parse(WTEXT("<cfg mode=\"fixed\"><col no=\"abc\" type=\"5010x\" onOff=\" 1\"/><col/></cfg>")), 1);
    EXPECT_EQ(record.GetMode(), 0);
    ASSERT_EQ(record.GetColumns().size(), 2u);
    EXPECT_EQ(record.GetColumns()[0]->GetNo(), 0);
    EXPECT_EQ(record.GetColumns()[0]->GetType(), kColumnInteger);
    EXPECT_EQ(record.GetColumns()[0]->GetOnOff(), 1);
    const CColumnData& bare = *record.GetColumns()[1];
    EXPECT_EQ(bare.GetNo(), 0);
    EXPECT_EQ(bare.GetName(), WTEXT(""));
    EXPECT_EQ(bare.GetType(), 0);
    EXPECT_EQ(bare.GetOnOff(), 0);
}

// Parse replaces every field, missing attributes included, but only when there is a cfg
// element; Clear empties every field but the mode.
TEST_F(ImportTxtConfigurationTest, ParseReplacesEverythingOnlyWhenThereIsACfg)
{
    const auto summary = [](const ImportTxtConfiguration& record) {
        WString text = record.GetTxtFile() + WTEXT("|") + record.GetComments() + WTEXT("|");
        for (const WString& delimiter : record.GetDelimiters())
            text += delimiter;
        for (const std::uint32_t position : record.GetPositions())
            text += WTEXT("@") + WString(1, static_cast<WChar>(WTEXT('0') + position));
        return text + WTEXT("|") + WString(1, static_cast<WChar>(WTEXT('0') + record.GetMode())) + WTEXT("|") +
               WString(1, static_cast<WChar>(WTEXT('0') + record.GetColumns().size()));
    };
    const WString filled = WTEXT("keep.txt|#|,@3|1|1");
    for (const WChar* text : {static_cast<const WChar*>(nullptr), WTEXT(""), WTEXT("not xml"), WTEXT("<other/>"), WTEXT("<x><cfg/></x>"),
                              WTEXT("<!-- <cfg/> -->")}) {
        ImportTxtConfiguration record = Filled();
        EXPECT_EQ(record.Parse(text), 0);
        EXPECT_EQ(summary(record), filled);
    }
    ImportTxtConfiguration record = Filled();
    ASSERT_EQ(record.Parse(WTEXT("<cfg/>")), 1);
    EXPECT_EQ(summary(record), WTEXT("|||0|0"));
    record = Filled();
    record.Clear();
    EXPECT_EQ(summary(record), WTEXT("|||1|0"));
}

TEST_F(ImportTxtConfigurationTest, ColumnsKeepDocumentOrderAndDuplicates)
{
    ImportTxtConfiguration record;
    ASSERT_EQ(record.Parse(WTEXT("<cfg><col no=\"3\" name=\"c\"/><x/><col no=\"1\" name=\"a\"/><col no=\"1\" name=\"b\"/></cfg>")),
              1);
    ASSERT_EQ(record.GetColumns().size(), 3u);
    EXPECT_EQ(record.GetColumns()[0]->GetNo(), 3);
    EXPECT_EQ(record.GetColumns()[1]->GetName(), WTEXT("a"));
    EXPECT_EQ(record.GetColumns()[2]->GetNo(), 1);
    EXPECT_EQ(record.GetColumns()[2]->GetName(), WTEXT("b"));
}

TEST_F(ImportTxtConfigurationTest, LiteralStandInsInTheTextBecomeQuotesBeforeParsing)
{
    ImportTxtConfiguration record;
    ASSERT_EQ(record.Parse(WTEXT("<cfg txtFile='a\u00d7b'><col name='n\u00d7'/></cfg>")), 1);
    EXPECT_EQ(record.GetTxtFile(), WTEXT("a\"b"));
    EXPECT_EQ(record.GetColumns()[0]->GetName(), WTEXT("n\""));
    // Inside double quotes the stand-in ends the value and leaves the tag open.
    EXPECT_EQ(record.Parse(WTEXT("<cfg txtFile=\"a\u00d7b\"/>")), 0);
}

TEST_F(ImportTxtConfigurationTest, BrokenTextStillYieldsWhatCouldBeMatched)
{
    ImportTxtConfiguration record;
    ASSERT_EQ(record.Parse(WTEXT("<cfg txtFile=\"p.txt\" mode=\"1\"><col no=\"4\"><col no=\"5\"/></cfg>")), 1);
    EXPECT_EQ(record.GetTxtFile(), WTEXT("p.txt"));
    EXPECT_EQ(record.GetMode(), 1);
    ASSERT_EQ(record.GetColumns().size(), 2u);
    EXPECT_EQ(record.GetColumns()[1]->GetNo(), 5);
    // A cfg that is never ended hands its columns to the top level, where they are not read.
    ASSERT_EQ(record.Parse(WTEXT("<cfg txtFile=\"q.txt\"><col no=\"4\"/>")), 1);
    EXPECT_EQ(record.GetTxtFile(), WTEXT("q.txt"));
    EXPECT_TRUE(record.GetColumns().empty());
}

TEST_F(ImportTxtConfigurationTest, GeneratedRecordsRoundTrip)
{
    const WString pieces[] = {WTEXT("\""), WTEXT("&"), WTEXT("="), WTEXT("\u00e9"), WTEXT("\u00a4"), WTEXT("\t"), WTEXT("<"), WTEXT("'"), WTEXT("x"), WTEXT("\\"), WTEXT(" "), WTEXT("&amp")};
    unsigned seed = 12345;
    const auto next = [&seed] { return (seed = seed * 1103515245u + 12345u) >> 16; };
    for (int round = 0; round < 200; ++round) {
        ImportTxtConfiguration record;
        WString path;
        for (unsigned i = next() % 12; i > 0; --i)
            path += pieces[next() % 12];
        record.SetTxtFile(path);
        record.SetComments(path);
        record.SetMode(static_cast<int>(next() % 3));
        for (unsigned i = next() % 5; i > 0; --i)
            record.GetPositions().push_back(next() % 300);
        for (unsigned i = next() % 6; i > 0; --i)
            record.GetColumns().push_back(Column(static_cast<int>(next() % 9), path, kColumnInteger, 1));

        const ImportTxtConfiguration read = ReadBack(record);
        EXPECT_EQ(read.GetTxtFile(), path) << ::testing::PrintToString(path);
        EXPECT_EQ(read.GetComments(), path);
        EXPECT_EQ(read.GetMode(), record.GetMode());
        EXPECT_EQ(read.GetPositions(), record.GetPositions());
        ASSERT_EQ(read.GetColumns().size(), record.GetColumns().size());
        WString name = path;
        for (WChar& c : name)
            if (c == WTEXT('"'))
                c = 0x00D7;
        for (std::size_t i = 0; i < read.GetColumns().size(); ++i) {
            EXPECT_EQ(read.GetColumns()[i]->GetNo(), record.GetColumns()[i]->GetNo());
            EXPECT_EQ(read.GetColumns()[i]->GetName(), name);
        }
    }
}

} // namespace
