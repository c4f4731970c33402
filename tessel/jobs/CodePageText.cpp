#include "tessel/jobs/CodePageText.h"

#include "platform/Platform.h"
#include "tessel/core/AppError.h"

#include <string>

namespace tessel {

unsigned ModuleCodePage()
{
    return Platform::AnsiCodePage();
}

void SelectModuleCodePage(unsigned codePage)
{
    if (!Platform::IsConvertibleCodePage(codePage)) {
        std::string offered;
        for (const unsigned page : Platform::ConvertibleCodePages())
            offered += (offered.empty() ? "" : " ") + std::to_string(page);
        throw UsageError("--codepage: " + std::to_string(codePage) +
                         " is not a code page this system converts (it converts: " + offered + ")");
    }
    Platform::SetAnsiCodePage(codePage);
}

} // namespace tessel
