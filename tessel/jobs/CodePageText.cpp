#include "tessel/jobs/CodePageText.h"

#include "platform/Platform.h"
#include "refhost/Environment.h"
#include "tessel/core/AppError.h"

#include <cstdlib>
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
    // The module loaded later reads the variable; this process's own copy of the platform
    // layer is told directly.
    refhost::SetEnvironment("TESSEL_CODEPAGE", std::to_string(codePage).c_str());
    Platform::SetAnsiCodePage(codePage);
}

} // namespace tessel
