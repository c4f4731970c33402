#include "export/CXMLTextFileExportConfiguration.h"

#include "tests/xml/Windows1252Test.h"

#include <gtest/gtest.h>

namespace {

const WString kDeclaration = u"<?xml version=\"1.0\" encoding=\"utf-8\"?>";

// Byte forms below are those of Windows-1252.
class ExportConfiguration : public Windows1252Test {};

CXMLTextFileExportConfiguration Changed()
{
    CXMLTextFileExportConfiguration record;
    record.SetTxtFile(u"C:\\out.txt");
    record.SetComment(u"//");
    record.SetDelimiter(u";");
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
    ExpectFields(record, u"", u"#", u"\t", 1, 0);
    EXPECT_EQ(record.ToXml(),
              kDeclaration + u"<cfg txtFile=\"\" comment=\"#\" delimiter=\"\t\" header=\"1\" format=\"0\"/>");
}

TEST_F(ExportConfiguration, WritesEncodedValues)
{
    CXMLTextFileExportConfiguration record;
    record.SetTxtFile(u"C:\\R&D\\\"Fl\u00e4che\".txt");
    record.SetComment(u"<#>");
    record.SetDelimiter(u" = ");
    record.SetHeader(0);
    record.SetFormat(2);
    EXPECT_EQ(record.ToXml(), kDeclaration +
                                  u"<cfg txtFile=\"C:\\R&amp;D\\&quot;Fl=EF=BF=A4che&quot;.txt\" comment=\"&lt;#&gt;\" "
                                  u"delimiter=\" =3D \" header=\"0\" format=\"2\"/>");
}

TEST_F(ExportConfiguration, TextWithoutCfgChangesNothingAndStillSucceeds)
{
    for (const char16_t* text : {u"", u"garbage", u"<other txtFile=\"x\"/>", u"<x><cfg/></x>", u"<!-- <cfg/> -->"}) {
        CXMLTextFileExportConfiguration fresh;
        EXPECT_EQ(fresh.FromXml(text), 1);
        ExpectFields(fresh, u"", u"#", u"\t", 1, 0);
        CXMLTextFileExportConfiguration changed = Changed();
        EXPECT_EQ(changed.FromXml(text), 1);
        ExpectFields(changed, u"C:\\out.txt", u"//", u";", 0, 1);
    }
}

TEST_F(ExportConfiguration, MissingAttributesOverrideTheDefaults)
{
    CXMLTextFileExportConfiguration record;
    EXPECT_EQ(record.FromXml(u"<cfg txtFile=\"a.txt\"/>"), 1);
    ExpectFields(record, u"a.txt", u"", u"", 0, 0);
}

TEST_F(ExportConfiguration, NumbersReadLikeWtoi)
{
    const struct {
        const char16_t* header;
        const char16_t* format;
        int headerValue;
        int formatValue;
    } cases[] = {
        {u"yes", u"2", 0, 2}, {u" 1", u"-1", 1, -1}, {u"1x", u"", 1, 0}, {u"+7", u"0x1", 7, 0},
    };
    for (const auto& c : cases) {
        CXMLTextFileExportConfiguration record;
        record.FromXml(u"<cfg header=\"" + WString(c.header) + u"\" format=\"" + WString(c.format) + u"\"/>");
        EXPECT_EQ(record.GetHeader(), c.headerValue) << ::testing::PrintToString(WString(c.header));
        EXPECT_EQ(record.GetFormat(), c.formatValue) << ::testing::PrintToString(WString(c.format));
    }
}

TEST_F(ExportConfiguration, ValuesSurviveARoundTrip)
{
    const struct {
        const char16_t* written;
        const char16_t* readBack;
    } cases[] = {
        {u"C:\\a & b\\\"q\".txt", u"C:\\a & b\\\"q\".txt"},
        {u"<'x'>=\u00e9\u00a4\t\u20ac", u"<'x'>=\u00e9\u00a4\t\u20ac"},
        {u"\u00d7", u"\u00d7"}, // no stand-in here: quotes are escaped, not replaced
        {u"=", u"="},
        {u"&lt;", u"<"}, // a typed reference is kept, then unescaped twice
        {u"", u""},
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
    EXPECT_EQ(DescribeExportConfiguration(record, u"File", u"Delimiter"), u"File: C:\\out.txt \r\nDelimiter: ;");
    EXPECT_EQ(DescribeExportConfiguration(CXMLTextFileExportConfiguration(), u"%s", u"%d"), u"%s:  \r\n%d: \t");
}

} // namespace
