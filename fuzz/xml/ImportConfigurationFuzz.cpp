// Parse on any text; whatever it reads must survive its own ToXml and Parse.
#include "FuzzText.h"

#include "import/ImportTxtConfiguration.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const WString text = FuzzText(data, size);
    ImportTxtConfiguration first;
    if (!first.Parse(text.c_str()))
        return 0;
    const WString written = first.ToXml();
    ImportTxtConfiguration second;
    if (second.Parse(written.c_str()) != 1 || second.GetMode() != first.GetMode() ||
        second.GetPositions() != first.GetPositions() || second.GetColumns().size() != first.GetColumns().size())
        std::abort();
    for (std::size_t i = 0; i < first.GetColumns().size(); ++i) {
        const CColumnData& a = *first.GetColumns()[i];
        const CColumnData& b = *second.GetColumns()[i];
        if (a.GetNo() != b.GetNo() || a.GetType() != b.GetType() || a.GetOnOff() != b.GetOnOff())
            std::abort();
    }
    return 0;
}
