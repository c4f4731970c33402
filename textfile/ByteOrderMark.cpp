#include "textfile/TextFileTypes.h"

#include <cstring>

namespace {

const unsigned char kUtf16LEMark[] = {0xFF, 0xFE};
const unsigned char kUtf16BEMark[] = {0xFE, 0xFF};
const unsigned char kUtf8Mark[] = {0xEF, 0xBB, 0xBF};
const int kMarkedEncodings[] = {TextEncoding::Utf16LE, TextEncoding::Utf16BE, TextEncoding::Utf8};

} // namespace

const unsigned char* ByteOrderMarkOf(int encoding, std::size_t* length)
{
    switch (encoding) {
    case TextEncoding::Utf16LE: *length = sizeof(kUtf16LEMark); return kUtf16LEMark;
    case TextEncoding::Utf16BE: *length = sizeof(kUtf16BEMark); return kUtf16BEMark;
    case TextEncoding::Utf8: *length = sizeof(kUtf8Mark); return kUtf8Mark;
    default: *length = 0; return nullptr;
    }
}

int EncodingOfByteOrderMark(const unsigned char* head, std::size_t count, std::size_t* markLength)
{
    for (int encoding : kMarkedEncodings) {
        std::size_t length = 0;
        const unsigned char* mark = ByteOrderMarkOf(encoding, &length);
        if (count >= length && std::memcmp(head, mark, length) == 0) {
            *markLength = length;
            return encoding;
        }
    }
    *markLength = 0;
    return 0;
}

bool MayBeginByteOrderMark(const unsigned char* head, std::size_t count)
{
    for (int encoding : kMarkedEncodings) {
        std::size_t length = 0;
        const unsigned char* mark = ByteOrderMarkOf(encoding, &length);
        if (count < length && std::memcmp(head, mark, count) == 0)
            return true;
    }
    return false;
}
