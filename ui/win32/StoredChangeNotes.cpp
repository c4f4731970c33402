#include "ui/win32/StoredChangeNotes.h"

#include "host/Messages.h"
#include "import/ImportTxtConfiguration.h"

#include <cwchar>
#include <vector>

WString StoredChangeNote(unsigned changes)
{
    const std::pair<unsigned, MessageId> notes[] = {
        {ImportValueChange::OutsideCodePage, MessageId::StoredOutsideCodePage},
        {ImportValueChange::SignReadAsQuote, MessageId::StoredSignReadAsQuote},
        {ImportValueChange::QuoteReadAsSign, MessageId::StoredQuoteReadAsSign},
    };
    WString note;
    for (const auto& [bit, message] : notes) {
        if (changes & bit)
            note += (note.empty() ? WTEXT("") : WTEXT("\n")) + LoadMessage(message);
    }
    return note;
}

WString ShownColumnsNote(int columnsFound, int columnsShown)
{
    const WString format = LoadMessage(MessageId::ShownColumnsCut);
    std::vector<WChar> text(format.size() + 64);
    const int length = std::swprintf(text.data(), text.size(), format.c_str(), columnsFound, columnsShown);
    return length < 0 ? format : WString(text.data(), static_cast<std::size_t>(length));
}
