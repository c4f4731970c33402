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

// The extension of the system filter's first pattern ("txt" of "*.txt"): the chooser puts it
// on a name typed without one, before it looks whether that file exists, so that the
// question about overwriting is asked of the file that is then written. "" when the pattern
// names no single extension.
WString DefaultExtension(const WString& filter)
{
    const std::size_t pattern = filter.find(WChar()) + 1;
    if (pattern == 0 || filter.compare(pattern, 2, WTEXT("*.")) != 0)
        return {};
    WString extension = filter.substr(pattern + 2, filter.find_first_of(WString(WTEXT(";")) + WChar(), pattern) - pattern - 2);
    return extension.find_first_of(WTEXT("*?")) == WString::npos ? extension : WString();
}

bool RunChooser(Purpose purpose, DialogWindow owner, const WString& hostFilter, const WString& start,
                WString& path)
{
    const WString filter = FileDialogFilter(hostFilter);
    const WString extension = DefaultExtension(filter);
    std::vector<WChar> buffer(kLongPathBuffer, WChar());
    start.copy(buffer.data(), std::min(start.size(), kLongPathBuffer - 1));

    OPENFILENAMEW request{};
    request.lStructSize = sizeof request;
    request.hwndOwner = owner;
    request.lpstrFilter = filter.empty() ? nullptr : filter.c_str();
    request.nFilterIndex = 1;
    request.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
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
