#pragma once
// The one place where the module reaches the operating system: files and code pages.
// Shaped after the Win32 calls the module uses on Windows (CreateFileW, ReadFile,
// WriteFile, SetFilePointer, GetFileSize, CloseHandle, MultiByteToWideChar,
// WideCharToMultiByte); on Linux it is POSIX file calls and iconv.
// Nothing here throws or prints; failures are reported through the results.

#include "host/Text.h"

#include <cstdint>

namespace Platform {

using FileHandle = std::intptr_t;
constexpr FileHandle kInvalidFile = -1;

enum class FileAccess { Read, Write };
enum class FileCreation {
    OpenExisting, // fails when the file is missing
    CreateAlways, // creates, or truncates an existing file
    OpenAlways    // opens an existing file or creates a new one, keeping its content
};
enum class SeekOrigin { Begin, End };

// Opens a file; others may read it meanwhile, nobody else may write (where the system
// can enforce that). Returns kInvalidFile on failure (missing file, a directory, no rights).
FileHandle OpenFile(const WChar* path, FileAccess access, FileCreation creation);
// Reads up to size bytes; *bytesRead is 0 at end of file. False on an I/O error.
bool ReadFile(FileHandle file, void* buffer, std::uint32_t size, std::uint32_t* bytesRead);
// Writes size bytes; false when not all of them could be written.
bool WriteFile(FileHandle file, const void* data, std::uint32_t size, std::uint32_t* bytesWritten);
// The low 32 bits of the file's size (0 on failure).
std::uint32_t FileSizeLow(FileHandle file);
bool SeekFile(FileHandle file, std::int64_t offset, SeekOrigin origin);
bool CloseFile(FileHandle file);

// Code page 0 stands for the system's ANSI code page. On Linux that is a setting:
// Windows-1252 unless the environment variable TESSEL_CODEPAGE names another
// (e.g. 1250), or SetAnsiCodePage changed it.
unsigned AnsiCodePage();
void SetAnsiCodePage(unsigned codePage);

// MultiByteToWideChar: converts byteCount bytes (-1: up to and including the terminating
// NUL) into at most outCapacity units; returns the number of units written, 0 on failure.
// Bytes that Windows maps in a single-byte code page convert as Windows converts them.
int MultiByteToWide(unsigned codePage, const char* bytes, int byteCount, WChar* out, int outCapacity);

// WideCharToMultiByte: converts count units (-1: up to and including the NUL) into at most
// outCapacity bytes; characters the code page cannot hold become defaultChar (the code
// page's own default, '?', when null) and set *usedDefault when it is given. Returns the
// number of bytes written, 0 on failure.
int WideToMultiByte(unsigned codePage, const WChar* text, int count, char* out, int outCapacity,
                    const char* defaultChar, bool* usedDefault);

} // namespace Platform
