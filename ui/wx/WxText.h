#pragma once
// The module's UTF-16 text to and from the toolkit's strings (wchar_t, UTF-32 on Linux).
// Only the dialog views and the host's dialog base include this.

#include "host/Text.h"

#include <wx/string.h>
#include <wx/strconv.h>

inline wxString ToWxString(const WChar* text, std::size_t length)
{
    if constexpr (sizeof(wchar_t) == sizeof(WChar)) {
        return wxString(reinterpret_cast<const wchar_t*>(text), length);
    } else {
        return wxString(reinterpret_cast<const char*>(text), wxMBConvUTF16(), length * sizeof(WChar));
    }
}

inline wxString ToWxString(const WString& text) { return ToWxString(text.data(), text.size()); }

inline WString FromWxString(const wxString& text)
{
    if constexpr (sizeof(wchar_t) == sizeof(WChar)) {
        return WString(reinterpret_cast<const WChar*>(text.wc_str()), text.length());
    } else {
        const wxCharBuffer bytes = text.mb_str(wxMBConvUTF16());
        return WString(reinterpret_cast<const WChar*>(bytes.data()), bytes.length() / sizeof(WChar));
    }
}
