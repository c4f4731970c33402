#pragma once
// The user's own folders and the files in them, for settings the module keeps per user
// (survey presets). One implementation per system: UserFoldersPosix.cpp, UserFoldersWindows.cpp.

#include "host/Text.h"

#include <vector>

namespace Platform {

// The module's settings folder of the user, not necessarily existing yet:
// $XDG_CONFIG_HOME/VeltoXTessel (else ~/.config/VeltoXTessel) on POSIX systems,
// %APPDATA%\VeltoXTessel on Windows. Empty when the system names no such place.
WString UserSettingsFolder();

// The names (not paths) of the regular files in the folder, sorted; empty when the folder
// does not exist or cannot be read.
std::vector<WString> FilesInFolder(const WString& folder);

// Makes the folder and any missing folder above it. True when it exists afterwards.
bool MakeFolders(const WString& folder);

// The separator between a folder and a name: '/' or '\\'.
WChar PathSeparator();

} // namespace Platform
