#include "platform/UserFolders.h"

#include "platform/Windows.h"

#include <algorithm>
#include <cstdlib>

namespace Platform {

WString UserSettingsFolder()
{
    const wchar_t* appData = _wgetenv(L"APPDATA");
    if (!appData || appData[0] == L'\0')
        return WString();
    return WString(appData) + L"\\VeltoXTessel";
}

std::vector<WString> FilesInFolder(const WString& folder)
{
    std::vector<WString> names;
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return names;
    do {
        if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
            names.push_back(found.cFileName);
    } while (FindNextFileW(search, &found));
    FindClose(search);
    std::sort(names.begin(), names.end());
    return names;
}

bool MakeFolders(const WString& folder)
{
    for (std::size_t separator = folder.find_first_of(L"\\/", 3);; separator = folder.find_first_of(L"\\/", separator + 1)) {
        const WString part = folder.substr(0, separator);
        if (!CreateDirectoryW(part.c_str(), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS)
            return false;
        if (separator == WString::npos)
            break;
    }
    const DWORD attributes = GetFileAttributesW(folder.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

WChar PathSeparator() { return L'\\'; }

} // namespace Platform
