// SetText on any text, then a walk over every level reading attributes and decoding them.
// One document serves every input, as a second SetText must discard all of the first.
#include "FuzzText.h"

#include "xml/ConfigValueCodec.h"
#include "xml/XmlDocument.h"
#include "xml/XmlEscape.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static XmlDocument document;
    const WString text = FuzzText(data, size);
    document.SetText(text);
    (void)document.GetError();
    do {
        while (document.FindElement(nullptr))
            for (const WChar* name : {WTEXT("txtFile"), WTEXT("delimiter"), WTEXT("no"), WTEXT("a[1]"), WTEXT("")})
                (void)DecodeConfigValue(document.GetAttribute(name));
    } while (document.EnterElement());
    document.FindElement(WTEXT("cfg"));

    if (text.find(WTEXT('&')) == WString::npos && XmlUnescape(XmlEscape(text)) != text)
        std::abort();
    (void)EncodeConfigValue(text);
    return 0;
}
