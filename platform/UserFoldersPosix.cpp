#include "platform/UserFolders.h"

#include "host/Utf8.h"
#include "platform/PosixPath.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <string>

namespace Platform {

WString UserSettingsFolder()
{
    const char* config = std::getenv("XDG_CONFIG_HOME");
    std::string folder;
    // A relative XDG_CONFIG_HOME counts as unset, by XDG's own rules.
    if (config && config[0] == '/') {
        folder = config;
    } else if (const char* home = std::getenv("HOME"); home && home[0] != '\0') {
        folder = std::string(home) + "/.config";
    } else {
        return WString();
    }
    return FromUtf8(folder + "/VeltoXTessel");
}

std::vector<WString> FilesInFolder(const WString& folder)
{
    std::vector<WString> names;
    const std::string path = Posix::PathToUtf8(folder.c_str());
    DIR* directory = opendir(path.c_str());
    if (!directory)
        return names;
    while (const dirent* entry = readdir(directory)) {
        const std::string name = entry->d_name;
        struct stat status {};
        if (stat((path + "/" + name).c_str(), &status) == 0 && S_ISREG(status.st_mode))
            names.push_back(FromUtf8(name));
    }
    closedir(directory);
    std::sort(names.begin(), names.end());
    return names;
}

bool MakeFolders(const WString& folder)
{
    const std::string path = Posix::PathToUtf8(folder.c_str());
    for (std::size_t slash = path.find('/', 1);; slash = path.find('/', slash + 1)) {
        const std::string part = path.substr(0, slash);
        if (!part.empty() && mkdir(part.c_str(), 0777) != 0 && errno != EEXIST)
            return false;
        if (slash == std::string::npos)
            break;
    }
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

WChar PathSeparator() { return WTEXT('/'); }

} // namespace Platform
