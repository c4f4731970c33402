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

bool ToCodePageBytes(const WString& text, unsigned codePage, std::string& bytes)
{
    bytes.clear();
    if (text.empty())
        return Platform::IsConvertibleCodePage(codePage);
    const int count = static_cast<int>(text.size());
    const int needed = Platform::WideToMultiByte(codePage, text.data(), count, nullptr, 0, nullptr, nullptr);
    if (needed <= 0)
        return false;
    bytes.resize(static_cast<std::size_t>(needed));
    bool usedDefault = false;
    if (Platform::WideToMultiByte(codePage, text.data(), count, bytes.data(), needed, nullptr, &usedDefault) != needed ||
        usedDefault)
        return false;
    return true;
}

} // namespace tessel
