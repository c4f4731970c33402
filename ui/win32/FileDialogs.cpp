#include "ui/win32/FileDialogs.h"

#include "ui/win32/Win32.h"

#include <cderr.h>
#include <commdlg.h>

#include <algorithm>
#include <vector>

namespace {

// The longest path the system's wide calls take, with its terminating NUL.
constexpr std::size_t kLongPathBuffer = 32768;

enum class Purpose { Open, Save };

bool RunChooser(Purpose purpose, DialogWindow owner, const WString& hostFilter, const WString& start,
                WString& path)
{
    const WString filter = FileDialogFilter(hostFilter);
    std::vector<WChar> buffer(kLongPathBuffer, WChar());
    start.copy(buffer.data(), std::min(start.size(), kLongPathBuffer - 1));

    OPENFILENAMEW request{};
    request.lStructSize = sizeof request;
    request.hwndOwner = owner;
    request.lpstrFilter = filter.empty() ? nullptr : filter.c_str();
    request.nFilterIndex = 1;
    request.lpstrFile = buffer.data();
    request.nMaxFile = static_cast<DWORD>(buffer.size());
    request.Flags = OFN_EXPLORER | OFN_ENABLESIZING | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST |
                    (purpose == Purpose::Save ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST);
    const BOOL chosen = purpose == Purpose::Save ? GetSaveFileNameW(&request) : GetOpenFileNameW(&request);
    if (!chosen) {
        // A start the chooser refuses (a folder's name, characters a file name cannot hold)
        // makes it fail before it shows: it then starts empty instead.
        if (!start.empty() && CommDlgExtendedError() == FNERR_INVALIDFILENAME)
            return RunChooser(purpose, owner, hostFilter, WString(), path);
        return false;
    }
    path.assign(buffer.data());
    return true;
}

} // namespace

WString FileDialogFilter(const WString& hostFilter)
{
    WString filter = hostFilter;
    while (!filter.empty() && filter.back() == '|')
        filter.pop_back();
    if (filter.empty())
        return filter;
    for (WChar& c : filter) {
        if (c == '|')
            c = WChar();
    }
    filter.push_back(WChar()); // with the string's own terminator: the two NULs at the end
    return filter;
}

bool ChooseFileToOpen(DialogWindow owner, const WString& hostFilter, WString& path)
{
    return RunChooser(Purpose::Open, owner, hostFilter, path, path);
}

bool ChooseFileToSave(DialogWindow owner, const WString& hostFilter, WString& path)
{
    return RunChooser(Purpose::Save, owner, hostFilter, path, path);
}
