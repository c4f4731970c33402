#pragma once
// Numbers shared by TextFile and its readers and writers: results, open modes, encodings,
// open flags, and the byte-order marks that announce an encoding.

#include <cstddef>
#include <cstdint>

namespace TextFileResult {
constexpr int Ok = 0;         // success; for a read: a line or character was delivered
constexpr int EndOfFile = -1; // nothing more to read
constexpr int IoError = -2;   // the system reported an error (open, read or write)
} // namespace TextFileResult

namespace TextFileMode {
constexpr int Read = 1;   // existing file
constexpr int Write = 2;  // new file; an existing one is truncated
constexpr int Append = 3; // any value but 1 and 2 appends as well
} // namespace TextFileMode

// The low byte of the open flags.
namespace TextEncoding {
constexpr int Detect = 0; // reading: by byte-order mark (so are 5 to 255); writing: ANSI
constexpr int Ansi = 1;   // 8-bit text in a Windows code page, never a mark
constexpr int Utf16LE = 2;
constexpr int Utf16BE = 3;
constexpr int Utf8 = 4;
} // namespace TextEncoding

namespace TextFileFlags {
constexpr std::uint32_t EncodingMask = 0xFF;
constexpr std::uint32_t RawLineFeeds = 0x100; // writing: a line feed stays alone, no CR before it
constexpr std::uint32_t NoMarkCheck = 0x200;  // reading a named UTF encoding: do not skip a mark
} // namespace TextFileFlags

// The byte-order mark of a UTF encoding (FF FE, FE FF, EF BB BF); null with length 0 for
// any other encoding number.
const unsigned char* ByteOrderMarkOf(int encoding, std::size_t* length);

// Detection over a file's first bytes. Returns the UTF encoding whose whole mark the count
// bytes of head begin with (setting *markLength), or 0 when they begin with none. Pure.
int EncodingOfByteOrderMark(const unsigned char* head, std::size_t count, std::size_t* markLength);
// True when head (count bytes) is a proper beginning of some mark, so one more byte decides.
bool MayBeginByteOrderMark(const unsigned char* head, std::size_t count);
