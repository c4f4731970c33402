#pragma once
// The C runtime's low-level file calls as tessel uses them, one implementation per system
// (FileDescriptorPosix.cpp, FileDescriptorWindows.cpp): paths in UTF-8 (wide on Windows, so
// any name works), binary data, descriptors not inherited by child processes. Failures
// return -1 (or false) with errno set.

#include <cstddef>
#include <string>

namespace tessel::files {

// Creates a new file for writing; fails when the name exists.
int CreateNew(const std::string& path);
// Opens an existing file (a device too) for writing.
int OpenForWriting(const std::string& path);
// The descriptor of standard output (binary once refhost::UseBinaryStandardStreams ran).
int StandardOutput();

// Writes up to size bytes; the number written, or -1.
long Write(int descriptor, const void* data, std::size_t size);
// Puts the file's data on the disk.
bool Sync(int descriptor);
bool Close(int descriptor);
bool Remove(const std::string& path);
// Renames from over to, replacing it.
bool Replace(const std::string& from, const std::string& to);

// Gives the file the permission bits mode (ignored on Windows, which has none to copy).
bool SetMode(int descriptor, unsigned mode);
// The permission bits of an existing file, else of a new one (after the umask).
unsigned ModeOf(const std::string& path);

enum class Kind { Missing, Regular, Folder, Special };
Kind KindOf(const std::string& path);

// True for what the file system's status cannot tell apart from a missing file: a Windows
// device (NUL, CON, COM1) or pipe. False on POSIX, where a device has a status of its own.
bool IsDevice(const std::string& path);

} // namespace tessel::files
