// The first byte chooses the reader, the rest is its input. Readers may refuse input with a
// usage error; they must never crash, hang or read out of bounds.

#include "tessel/core/AppError.h"
#include "tessel/core/OptionSyntax.h"
#include "tessel/text/ExportInput.h"

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

namespace {

void ParseOptionValues(const std::string& text)
{
    const auto attempt = [](auto&& parse) {
        try {
            parse();
        } catch (const tessel::AppError&) {
        }
    };
    attempt([&] { tessel::ResolveEscapes("--delimiters", text); });
    attempt([&] { tessel::ParseColumnOption(text); });
    attempt([&] { tessel::ParseBindOption("--bind", text); });
    attempt([&] { tessel::ParseTransformOption(text); });
    attempt([&] { tessel::ParsePositions(text); });
    attempt([&] { tessel::ParseFilter(text); });
    attempt([&] {
        std::string value;
        tessel::KeyValueType type;
        tessel::ParseKeyValue(text, value, type);
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    switch (data[0] % 4) {
    case 0:
    case 1: {
        std::istringstream input(text);
        try {
            tessel::ParseExportInput(
                input, data[0] % 4 == 0 ? tessel::InputFormat::JsonLines : tessel::InputFormat::GeoJson, "fuzz");
        } catch (const tessel::AppError&) {
        }
        break;
    }
    default: ParseOptionValues(text); break;
    }
    return 0;
}
