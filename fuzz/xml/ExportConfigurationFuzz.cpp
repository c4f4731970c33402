// FromXml on any text; whatever it reads must survive its own ToXml and FromXml.
#include "FuzzText.h"

#include "export/CXMLTextFileExportConfiguration.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CXMLTextFileExportConfiguration first;
    if (first.FromXml(FuzzText(data, size)) != 1)
        std::abort();
    CXMLTextFileExportConfiguration second;
    second.SetHeader(first.GetHeader() + 1);
    if (second.FromXml(first.ToXml()) != 1 || second.GetHeader() != first.GetHeader() ||
        second.GetFormat() != first.GetFormat())
        std::abort();
    (void)DescribeExportConfiguration(second, WTEXT("File"), WTEXT("Delimiter"));
    return 0;
}
