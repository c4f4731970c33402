#pragma once
// The one place where the module reaches the operating system: files, code pages and large
// memory blocks.
// Shaped after the Win32 calls the module uses on Windows (CreateFileW, ReadFile,
// WriteFile, SetFilePointer, GetFileSize, CloseHandle, MultiByteToWideChar,
// WideCharToMultiByte); on Linux it is POSIX file calls and iconv. One implementation file
// per system (…Posix.cpp, …Windows.cpp); what does not depend on the system sits beside them.
// Nothing here throws or prints; failures are reported through the results.

#include "host/Text.h"
#include "platform/CodePage.h"

#include <cstddef>
#include <cstdint>
#include <vector>

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
// can enforce that). Returns kInvalidFile on failure: a missing file, a directory (also
// for reading), no rights, an empty or unconvertible path.
FileHandle OpenFile(const WChar* path, FileAccess access, FileCreation creation);
// Reads up to size bytes; *bytesRead is 0 at end of file. False on an I/O error.
bool ReadFile(FileHandle file, void* buffer, std::uint32_t size, std::uint32_t* bytesRead);
// Writes size bytes; false when not all of them could be written (*bytesWritten tells how
// many were).
bool WriteFile(FileHandle file, const void* data, std::uint32_t size, std::uint32_t* bytesWritten);
// The file's whole size in bytes; false when the system cannot tell.
bool FileSize(FileHandle file, std::uint64_t* size);
bool SeekFile(FileHandle file, std::int64_t offset, SeekOrigin origin);
bool CloseFile(FileHandle file);

// The system's error number (errno; GetLastError on Windows) of the most recent failed call
// above on this thread, for callers that want to name the cause. Injected faults report EIO
// (ERROR_IO_DEVICE) for open and read failures and ENOSPC (ERROR_DISK_FULL) for write
// failures.
int LastError();

// Code page 0 stands for the system's ANSI code page: on Windows CP_ACP, on Linux
// Windows-1252. The environment variable TESSEL_CODEPAGE ("1250", "cp1250") or
// SetAnsiCodePage chooses another on both; SetAnsiCodePage(0) goes back to the environment's
// choice. The choice is the process's, as CP_ACP is: SetAnsiCodePage keeps it in the
// process's environment, where every copy of this layer in the process (a host application
// that links the module's code has one, the module it loads another) reads the same one.
// Like setenv, SetAnsiCodePage must not run while other threads read or write text.
unsigned AnsiCodePage();
void SetAnsiCodePage(unsigned codePage);

// MultiByteToWideChar: converts byteCount bytes (-1: up to and including the terminating
// NUL) into at most outCapacity units; returns the number of units written, 0 on failure
// (unknown code page, byteCount 0, output too small). With outCapacity 0 nothing is written
// and the number of units needed is returned. Bytes that Windows maps in a single-byte code
// page convert as Windows converts them (0x81 in 1252 becomes U+0081); a malformed sequence
// of a multi-byte code page becomes the code page's Unicode default character (U+FFFD in
// UTF-8, U+30FB in 932, '?' in the other East Asian code pages).
int MultiByteToWide(unsigned codePage, const char* bytes, int byteCount, WChar* out, int outCapacity);

// WideCharToMultiByte: converts count units (-1: up to and including the NUL) into at most
// outCapacity bytes; characters the code page cannot hold (a surrogate pair counts as one,
// a lone surrogate too) become the first byte of defaultChar (the code page's own default,
// '?', when null or empty) and set *usedDefault when it is given. Never a look-alike
// character instead (no "best fit"). In UTF-8 a lone surrogate becomes U+FFFD and
// usedDefault is left alone. Returns the number of bytes written, 0 on failure. With
// outCapacity 0 the number of bytes needed is returned.
int WideToMultiByte(unsigned codePage, const WChar* text, int count, char* out, int outCapacity,
                    const char* defaultChar, bool* usedDefault);

// True when the system converts the Windows code page of that number both ways (0 and
// the ANSI code page's aliases are not code page numbers: false).
bool IsConvertibleCodePage(unsigned codePage);
// Every Windows code page that the system converts, ascending. Host applications offer
// these; a code page missing here can still be tried with IsConvertibleCodePage.
std::vector<unsigned> ConvertibleCodePages();

// The conversion table of a single-byte code page (0: the ANSI code page), built on first
// use and kept for the life of the process, so that hot loops can convert table-driven
// without a call per line. Null for a multi-byte code page (UTF-8, the East Asian ones) or
// one the system does not know.
const SingleByteCodePage* FindSingleByteCodePage(unsigned codePage);

// Memory for objects that are made by the million and live long: a block of kMemoryBlockSize
// bytes straight from the system, aligned to that size (so that an address tells its block)
// and zero-filled. With largePages the system is asked to back it with large pages where it
// offers them, which saves most of the page faults of filling it. Null when the system has
// no memory left.
constexpr std::size_t kMemoryBlockSize = std::size_t(2) << 20;
void* AllocateBlock(bool largePages);
void FreeBlock(void* block);

// The module's own instance: on Windows the HINSTANCE of the DLL (or of the program that
// links the module statically) whose resources hold the dialog templates; elsewhere the base
// address the module is loaded at. Never null.
void* ModuleInstance();

// Failure injection for tests, in the manner of a mock of the system calls: the error paths
// of everything above the platform layer can be run for real. Counters are process-wide
// and count down as calls are made; ClearFaults() restores normal service.
namespace Faults {
// After goodOpens more successful OpenFile calls, the next count calls fail.
void FailOpens(int count, int goodOpens = 0);
// After goodReads more successful ReadFile calls, the next count calls fail.
void FailReads(int count, int goodReads = 0);
// Writes succeed for byteBudget more bytes; the write that crosses the budget stores the
// part that fits and fails, and so does every write after it (a full disk).
void FailWritesAfter(std::uint64_t byteBudget);
// After goodCloses more successful CloseFile calls, the next count calls fail (the file is
// closed all the same, as a system that reports a late write error on close does).
void FailCloses(int count, int goodCloses = 0);
// The next count ReplaceFileWith calls fail and leave both files as they were.
void FailReplaces(int count);
// Every ReadFile call waits this many microseconds before it reads (a slow network drive),
// whichever thread makes it: work that is quick on a local disk can be made to take long.
void SlowReads(int microseconds);
void ClearFaults();
} // namespace Faults

} // namespace Platform
