#include "host/WideText.h"

#include <climits>

namespace {

bool IsBlank(WChar c)
{
    return c == WTEXT(' ') || (c >= WTEXT('\t') && c <= WTEXT('\r'));
}

bool IsDigit(WChar c) { return c >= WTEXT('0') && c <= WTEXT('9'); }

void AppendArg(WString& out, const FormatArg& arg)
{
    if (arg.IsText())
        out += arg.Text();
    else
        out += IntToWide(arg.Number());
}

} // namespace

int WideToInt(const WChar* text)
{
    if (!text)
        return 0;
    while (IsBlank(*text))
        ++text;
    bool negative = false;
    if (*text == WTEXT('+') || *text == WTEXT('-'))
        negative = (*text++ == WTEXT('-'));
    long long value = 0;
    for (; IsDigit(*text); ++text) {
        value = value * 10 + (*text - WTEXT('0'));
        if (value > static_cast<long long>(INT_MAX) + 1) {
            value = static_cast<long long>(INT_MAX) + 1;
            break;
        }
    }
    if (negative)
        return value > INT_MAX ? INT_MIN : static_cast<int>(-value);
    return value > INT_MAX ? INT_MAX : static_cast<int>(value);
}

WString IntToWide(long long value)
{
    WChar digits[24];
    int n = 0;
    unsigned long long magnitude = value < 0 ? 0ULL - static_cast<unsigned long long>(value)
                                             : static_cast<unsigned long long>(value);
    do {
        digits[n++] = static_cast<WChar>(WTEXT('0') + magnitude % 10);
        magnitude /= 10;
    } while (magnitude != 0);
    WString out;
    out.reserve(n + 1);
    if (value < 0)
        out += WTEXT('-');
    while (n > 0)
        out += digits[--n];
    return out;
}

WString WidenAscii(const char* text)
{
    WString out;
    if (text)
        for (; *text; ++text)
            out += static_cast<WChar>(static_cast<unsigned char>(*text));
    return out;
}

std::size_t WideLength(const WChar* text)
{
    std::size_t n = 0;
    if (text)
        while (text[n])
            ++n;
    return n;
}

WString FormatWide(const WString& format, std::initializer_list<FormatArg> args)
{
    WString out;
    out.reserve(format.size() + 16 * args.size());
    auto next = args.begin();
    for (std::size_t i = 0; i < format.size(); ++i) {
        WChar c = format[i];
        if (c != WTEXT('%') || i + 1 >= format.size()) {
            out += c;
            continue;
        }
        if (format[i + 1] == WTEXT('%')) {
            out += WTEXT('%');
            ++i;
            continue;
        }
        std::size_t j = i + 1;
        while (j < format.size() && format[j] == WTEXT('l'))
            ++j;
        const bool known = j < format.size() && (format[j] == WTEXT('s') || format[j] == WTEXT('d') ||
                                                 format[j] == WTEXT('i') || format[j] == WTEXT('u'));
        if (!known || next == args.end()) {
            out += c;
            continue;
        }
        AppendArg(out, *next++);
        i = j;
    }
    return out;
}
