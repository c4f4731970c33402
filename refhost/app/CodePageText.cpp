#include "refhost/app/CodePageText.h"

#include "refhost/app/AppError.h"

#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <string>

#include <iconv.h>

namespace tessel {
namespace {

constexpr unsigned kDefaultCodePage = 1252;

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
const char* const kUtf16Name = "UTF-16BE";
#else
const char* const kUtf16Name = "UTF-16LE";
#endif

// iconv's name of a Windows code page number.
std::string ConverterName(unsigned codePage)
{
    if (codePage == 65001)
        return "UTF-8";
    if (codePage >= 28591 && codePage <= 28599)
        return "ISO-8859-" + std::to_string(codePage - 28590);
    return "CP" + std::to_string(codePage);
}

class Converter {
public:
    explicit Converter(unsigned codePage) : handle_(iconv_open(ConverterName(codePage).c_str(), kUtf16Name)) {}
    ~Converter()
    {
        if (IsOpen())
            iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool IsOpen() const { return handle_ != reinterpret_cast<iconv_t>(-1); }
    iconv_t Handle() const { return handle_; }

private:
    iconv_t handle_;
};

// "1250", "cp1250" and "windows-1250" all name code page 1250; 0 for no number.
unsigned ParseCodePageName(const char* text)
{
    const std::string name = text ? text : "";
    const auto digits = name.find_first_of("0123456789");
    unsigned number = 0;
    if (digits == std::string::npos)
        return 0;
    const auto result = std::from_chars(name.data() + digits, name.data() + name.size(), number);
    return result.ec == std::errc() && result.ptr == name.data() + name.size() && number <= 0xFFFF ? number : 0;
}

} // namespace

unsigned ModuleCodePage()
{
    const unsigned named = ParseCodePageName(std::getenv("TESSEL_CODEPAGE"));
    return named != 0 && Converter(named).IsOpen() ? named : kDefaultCodePage;
}

void SelectModuleCodePage(unsigned codePage)
{
    if (codePage == 0 || !Converter(codePage).IsOpen())
        throw UsageError("--codepage: " + std::to_string(codePage) + " is not a code page this system converts");
    setenv("TESSEL_CODEPAGE", std::to_string(codePage).c_str(), 1);
}

bool ToCodePageBytes(const WString& text, unsigned codePage, std::string& bytes)
{
    bytes.clear();
    Converter converter(codePage);
    if (!converter.IsOpen())
        return false;
    char* in = const_cast<char*>(reinterpret_cast<const char*>(text.data()));
    std::size_t inLeft = text.size() * sizeof(WChar);
    char buffer[256];
    while (inLeft > 0) {
        char* out = buffer;
        std::size_t outLeft = sizeof buffer;
        const std::size_t result = iconv(converter.Handle(), &in, &inLeft, &out, &outLeft);
        bytes.append(buffer, static_cast<std::size_t>(out - buffer));
        if (result == static_cast<std::size_t>(-1) && errno != E2BIG)
            return false;
    }
    char* out = buffer;
    std::size_t outLeft = sizeof buffer;
    iconv(converter.Handle(), nullptr, nullptr, &out, &outLeft);
    bytes.append(buffer, static_cast<std::size_t>(out - buffer));
    return true;
}

} // namespace tessel
