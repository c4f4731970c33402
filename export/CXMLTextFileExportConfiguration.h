#pragma once
// The export configuration record and its XML string, as the host keeps it in an export
// definition (main and node strings alike):
//   <?xml version="1.0" encoding="utf-8"?><cfg txtFile=".." comment=".." delimiter=".."
//   header="1" format="0"/>
// The three strings go through the configuration value codec.

#include "host/Text.h"

class CXMLTextFileExportConfiguration {
public:
    // No path, comment "#", a tab as delimiter, a header line, ANSI output.
    CXMLTextFileExportConfiguration();
    virtual ~CXMLTextFileExportConfiguration();

    // Full path of the text file to write.
    WString GetTxtFile() const;
    void SetTxtFile(const WString& txtFile);
    // The header line begins with it.
    WString GetComment() const;
    void SetComment(const WString& comment);
    // Put between two fields of a line; any length.
    WString GetDelimiter() const;
    void SetDelimiter(const WString& delimiter);
    // Non-zero: a header line with the field names comes first.
    int GetHeader() const;
    void SetHeader(int header);
    // 0: ANSI (system code page, no byte-order mark); anything else: UTF-16LE with FF FE.
    int GetFormat() const;
    void SetFormat(int format);

    WString ToXml() const;

    // Fills the record from a configuration string and returns 1, always. Without a
    // top-level "cfg" element (text that does not parse included) nothing changes; with one,
    // every field is read, and a missing attribute gives "" or 0 rather than the default.
    int FromXml(const WString& text);

private:
    WString txtFile_;
    WString comment_;
    WString delimiter_;
    int header_;
    int format_;
};

// The description the export engine gives the host: "<fileLabel>: <path> \r\n<delimiterLabel>:
// <delimiter>", with the blank before the carriage return. The labels are host messages.
WString DescribeExportConfiguration(const CXMLTextFileExportConfiguration& configuration, const WString& fileLabel,
                                    const WString& delimiterLabel);
