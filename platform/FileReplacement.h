#pragma once
// Whole files by name: what a writer needs so that a user's file is never left half-written.
// A new version is written beside the file and put in its place in one step once complete;
// an append that fails is cut back to the old length. Links are followed: the file a link
// names is the one replaced, and the link stays. Nothing here throws or prints; failures set
// Platform::LastError().

#include "host/Text.h"

#include <cstdint>

namespace Platform {

enum class PathKind {
    Missing,   // nothing there, or nothing the system lets us look at
    Regular,   // an ordinary file
    Directory,
    Other      // a device, pipe or socket: written in place, never replaced
};
PathKind KindOfPath(const WChar* path);

// The size in bytes of the file the path names; false when it cannot be told.
bool SizeOfFile(const WChar* path, std::uint64_t* size);

// Creates a new, empty file of a fresh name in the folder of the file that target names,
// with target's permissions when target exists (its owner too where the system lets us);
// its path in *created. False when the folder takes no new file.
bool CreateFileBeside(const WChar* target, WString* created);

// Puts the complete, closed file replacement in target's place in one step: its data reach
// the disk first, then it takes target's name (on Windows through ReplaceFileW, which keeps
// target's attributes and security). False when not done: target is then as it was and
// replacement is still there.
bool ReplaceFileWith(const WChar* target, const WChar* replacement);

bool RemoveFile(const WChar* path);

// Cuts the file back to length bytes.
bool TruncateFile(const WChar* path, std::uint64_t length);

// The system's own words for an error number of LastError(), for a message to the user.
WString ErrorDescription(int error);

} // namespace Platform
