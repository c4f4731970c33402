#include "export/CXMLTextFileExportConfiguration.h"

#include "tests/xml/Windows1252Test.h"

#include <gtest/gtest.h>

namespace {

const WString kDeclaration = WTEXT("<?xml version=\"1.0\" encoding=\"utf-8\"?>");

// Byte forms below are those of Windows-1252.
class ExportConfiguration : public Windows1252Test {};

CXMLTextFileExportConfiguration Changed()
{
    CXMLTextFileExportConfiguration record;
    record.SetTxtFile(WTEXT("C:\\out.txt"));
    record.SetComment(WTEXT("//"));
    record.SetDelimiter(WTEXT(";"));
    record.SetHeader(0);
    record.SetFormat(1);
    return record;
}

void ExpectFields(const CXMLTextFileExportConfiguration& record, const WString& txtFile, const WString& comment,
                  const WString& delimiter, int header, int format)
{
    EXPECT_EQ(record.GetTxtFile(), txtFile);
    EXPECT_EQ(record.GetComment(), comment);
    EXPECT_EQ(record.GetDelimiter(), delimiter);
    EXPECT_EQ(record.GetHeader(), header);
    EXPECT_EQ(record.GetFormat(), format);
}

TEST_F(ExportConfiguration, NewRecordHoldsTheDefaultsAndWritesThem)
{
    const CXMLTextFileExportConfiguration record;
    ExpectFields(record, WTEXT(""), WTEXT("#"), WTEXT("\t"), 1, 0);
    EXPECT_EQ(record.ToXml(),
              kDeclaration + WTEXT("<cfg txtFile=\"\" comment=\"#\" delimiter=\"\t\" header=\"1\" format=\"0\"/>"));
}

TEST_F(ExportConfiguration, WritesEncodedValues)
{
    CXMLTextFileExportConfiguration record;
    record.SetTxtFile(WTEXT("C:\\R&D\\\"Fl\u00e4che\".txt"));
    record.SetComment(WTEXT("<#>"));
    record.SetDelimiter(WTEXT(" = "));
    record.SetHeader(0);
    record.SetFormat(2);
    EXPECT_EQ(record.ToXml(), kDeclaration +
                                  WTEXT("<cfg txtFile=\"C:\\R&amp;D\\&quot;Fl=EF=BF=A4che&quot;.txt\" comment=\"&lt;#&gt;\" ")
                                  WTEXT("delimiter=\" =3D \" header=\"0\" format=\"2\"/>"));
}

TEST_F(ExportConfiguration, TextWithoutCfgChangesNothingAndStillSucceeds)
{
    for (const WChar* text : {WTEXT(""), WTEXT("garbage"), WTEXT("<other txtFile=\"x\"/>"), WTEXT("<x><cfg/></x>"), WTEXT("<!-- <cfg/> -->")}) {
        CXMLTextFileExportConfiguration fresh;
        EXPECT_EQ(fresh.FromXml(text), 1);
        ExpectFields(fresh, WTEXT(""), WTEXT("#"), WTEXT("\t"), 1, 0);
        CXMLTextFileExportConfiguration changed = Changed();
        EXPECT_EQ(changed.FromXml(text), 1);
        ExpectFields(changed, WTEXT("C:\\out.txt"), WTEXT("//"), WTEXT(";"), 0, 1);
    }
}

TEST_F(ExportConfiguration, MissingAttributesOverrideTheDefaults)
{
    CXMLTextFileExportConfiguration record;
    EXPECT_EQ(record.FromXml(WTEXT("<cfg txtFile=\"a.txt\"/>")), 1);
    ExpectFields(record, WTEXT("a.txt"), WTEXT(""), WTEXT(""), 0, 0);
}

TEST_F(ExportConfiguration, NumbersReadLikeWtoi)
{
    const struct {
        const WChar* header;
        const WChar* format;
        int headerValue;
        int formatValue;
    } cases[] = {
        {WTEXT("yes"), WTEXT("2"), 0, 2}, {WTEXT(" 1"), WTEXT("-1"), 1, -1}, {WTEXT("1x"), WTEXT(""), 1, 0}, {WTEXT("+7"), WTEXT("0x1"), 7, 0},
    };
    for (const auto& c : cases) {
        CXMLTextFileExportConfiguration record;
        record.FromXml(WTEXT("<cfg header=\"") + WString(c.header) + WTEXT("\" format=\"") + WString(c.format) + WTEXT("\"/>"));
        EXPECT_EQ(record.GetHeader(), c.headerValue) << ::testing::PrintToString(WString(c.header));
        EXPECT_EQ(record.GetFormat(), c.formatValue) << ::testing::PrintToString(WString(c.format));
    }
}

TEST_F(ExportConfiguration, ValuesSurviveARoundTrip)
{
    const struct {
        const WChar* written;
        const WChar* readBack;
    } cases[] = {
        {WTEXT("C:\\a & b\\\"q\".txt"), WTEXT("C:\\a & b\\\"q\".txt")},
        {WTEXT("<'x'>=\u00e9\u00a4\t\u20ac"), WTEXT("<'x'>=\u00e9\u00a4\t\u20ac")},
        {WTEXT("\u00d7"), WTEXT("\u00d7")}, // no stand-in here: quotes are escaped, not replaced
        {WTEXT("="), WTEXT("=")},
        {WTEXT("&lt;"), WTEXT("<")}, // a typed reference is kept, then unescaped twice
        {WTEXT(""), WTEXT("")},
    };
    for (const auto& c : cases) {
        CXMLTextFileExportConfiguration record;
        record.SetTxtFile(c.written);
        record.SetComment(c.written);
        record.SetDelimiter(c.written);
        record.SetHeader(0);
        record.SetFormat(1);
        CXMLTextFileExportConfiguration read;
        EXPECT_EQ(read.FromXml(record.ToXml()), 1);
        ExpectFields(read, c.readBack, c.readBack, c.readBack, 0, 1);
    }
}

TEST_F(ExportConfiguration, DescriptionHasABlankBeforeTheLineBreak)
{
    const CXMLTextFileExportConfiguration record = Changed();
    EXPECT_EQ(DescribeExportConfiguration(record, WTEXT("File"), WTEXT("Delimiter")), WTEXT("File: C:\\out.txt \r\nDelimiter: ;"));
    EXPECT_EQ(DescribeExportConfiguration(CXMLTextFileExportConfiguration(), WTEXT("%s"), WTEXT("%d")), WTEXT("%s:  \r\n%d: \t"));
}

} // namespace
