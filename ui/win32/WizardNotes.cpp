#include "ui/win32/WizardNotes.h"

#include "host/Messages.h"
#include "host/WideText.h"
#include "import/ImportTxtConfiguration.h"
#include "textfile/TextFileTypes.h"

#include <utility>

WString StoredChangeNote(unsigned changes)
{
    const std::pair<unsigned, MessageId> notes[] = {
        {ImportValueChange::OutsideCodePage, MessageId::OutsideCodePageNote},
        {ImportValueChange::SignReadAsQuote, MessageId::SignReadAsQuoteNote},
        {ImportValueChange::QuoteReadAsSign, MessageId::QuoteReadAsSignNote},
    };
    WString note;
    for (const auto& [bit, message] : notes) {
        if (changes & bit)
            note += (note.empty() ? WTEXT("") : WTEXT("\n")) + LoadMessage(message);
    }
    return note;
}

WString ShownColumnsText(int columnsFound, int columnsShown)
{
    return FormatWide(LoadMessage(MessageId::ShownColumnsNote), {columnsFound, columnsShown});
}

WString EncodingText(const PreviewEncoding& found)
{
    switch (found.encoding) {
    case TextEncoding::Ansi:
        return FormatWide(LoadMessage(MessageId::EncodingAnsi), {static_cast<int>(found.codePage)});
    case TextEncoding::Utf8: return LoadMessage(MessageId::EncodingUtf8);
    case TextEncoding::Utf16LE: return LoadMessage(MessageId::EncodingUtf16LE);
    case TextEncoding::Utf16BE: return LoadMessage(MessageId::EncodingUtf16BE);
    default: return WString();
    }
}
