#include "export/CXMLTextFileExportConfiguration.h"

#include "host/WideText.h"
#include "xml/ConfigValueCodec.h"
#include "xml/XmlDocument.h"

namespace {

const WChar kCfgFormat[] = WTEXT("<?xml version=\"1.0\" encoding=\"utf-8\"?><cfg txtFile=\"%s\" comment=\"%s\" ")
                           WTEXT("delimiter=\"%s\" header=\"%d\" format=\"%d\"/>");
const WChar kDescriptionFormat[] = WTEXT("%s: %s \r\n%s: %s");

} // namespace

CXMLTextFileExportConfiguration::CXMLTextFileExportConfiguration()
    : comment_(WTEXT("#")), delimiter_(WTEXT("\t")), header_(1), format_(0)
{
}

CXMLTextFileExportConfiguration::~CXMLTextFileExportConfiguration() = default;

WString CXMLTextFileExportConfiguration::GetTxtFile() const { return txtFile_; }
void CXMLTextFileExportConfiguration::SetTxtFile(const WString& txtFile) { txtFile_ = txtFile; }
WString CXMLTextFileExportConfiguration::GetComment() const { return comment_; }
void CXMLTextFileExportConfiguration::SetComment(const WString& comment) { comment_ = comment; }
WString CXMLTextFileExportConfiguration::GetDelimiter() const { return delimiter_; }
void CXMLTextFileExportConfiguration::SetDelimiter(const WString& delimiter) { delimiter_ = delimiter; }
int CXMLTextFileExportConfiguration::GetHeader() const { return header_; }
void CXMLTextFileExportConfiguration::SetHeader(int header) { header_ = header; }
int CXMLTextFileExportConfiguration::GetFormat() const { return format_; }
void CXMLTextFileExportConfiguration::SetFormat(int format) { format_ = format; }

WString CXMLTextFileExportConfiguration::ToXml() const
{
    return FormatWide(kCfgFormat, {EncodeConfigValue(txtFile_), EncodeConfigValue(comment_),
                                   EncodeConfigValue(delimiter_), header_, format_});
}

int CXMLTextFileExportConfiguration::FromXml(const WString& text)
{
    XmlDocument document;
    document.SetText(text);
    if (!document.FindElement(WTEXT("cfg")))
        return 1;
    txtFile_ = DecodeConfigValue(document.GetAttribute(WTEXT("txtFile")));
    comment_ = DecodeConfigValue(document.GetAttribute(WTEXT("comment")));
    delimiter_ = DecodeConfigValue(document.GetAttribute(WTEXT("delimiter")));
    header_ = WideToInt(document.GetAttribute(WTEXT("header")));
    format_ = WideToInt(document.GetAttribute(WTEXT("format")));
    return 1;
}

WString DescribeExportConfiguration(const CXMLTextFileExportConfiguration& configuration, const WString& fileLabel,
                                    const WString& delimiterLabel)
{
    return FormatWide(kDescriptionFormat,
                      {fileLabel, configuration.GetTxtFile(), delimiterLabel, configuration.GetDelimiter()});
}
