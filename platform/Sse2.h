#pragma once
// The module's SIMD kernels, the one place that uses intrinsics. SSE2 is part of every
// x86-64 processor and is used there; elsewhere the helpers do nothing (or the plain thing)
// and the callers' own loops do the work.

#include "host/Text.h"
#include "platform/AddressSanitizer.h"

#include <array>
#include <cstddef>
#include <cstdint>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#define TESSEL_HAS_SSE2 1
#endif

// Widens the leading bytes 0x01-0x7F of in[0, count) into out, whole blocks of eight or
// sixteen at a time (the last block of a run may overlap the one before), and returns how
// many it took. The caller converts the rest, starting with the block that holds the first
// other byte.
inline std::size_t WidenAsciiBlocks(const unsigned char* in, std::size_t count, WChar* out)
{
    std::size_t i = 0;
#ifdef TESSEL_HAS_SSE2
    const __m128i zero = _mm_setzero_si128();
    const auto plain = [zero](__m128i chunk) {
        return (_mm_movemask_epi8(chunk) | _mm_movemask_epi8(_mm_cmpeq_epi8(chunk, zero))) == 0;
    };
    for (; i + 16 <= count; i += 16) {
        const __m128i chunk = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + i));
        if (!plain(chunk))
            return i;
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), _mm_unpacklo_epi8(chunk, zero));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i + 8), _mm_unpackhi_epi8(chunk, zero));
    }
    if (i < count && count >= 16) {
        const std::size_t last = count - 16;
        const __m128i chunk = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + last));
        if (plain(chunk)) {
            _mm_storeu_si128(reinterpret_cast<__m128i*>(out + last), _mm_unpacklo_epi8(chunk, zero));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(out + last + 8), _mm_unpackhi_epi8(chunk, zero));
            return count;
        }
    }
    if (i + 8 <= count) {
        const __m128i chunk = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(in + i));
        // The upper half loads as zero bytes; make them count as plain.
        if (plain(_mm_unpacklo_epi64(chunk, _mm_set1_epi8(1)))) {
            _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), _mm_unpacklo_epi8(chunk, zero));
            i += 8;
        }
    }
#else
    (void)in;
    (void)count;
    (void)out;
#endif
    return i;
}

// The index of the first U+0000 in text[0, count), or count.
inline std::size_t FindNulUnit(const WChar* text, std::size_t count)
{
    std::size_t i = 0;
#ifdef TESSEL_HAS_SSE2
    const __m128i zero = _mm_setzero_si128();
    for (; i + 8 <= count; i += 8) {
        const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
        if (_mm_movemask_epi8(_mm_cmpeq_epi16(units, zero)) != 0)
            break;
    }
#endif
    while (i < count && text[i] != 0)
        ++i;
    return i;
}

// Narrows the leading units 0x0000-0x007F of text[0, count) into out, eight at a time, and
// returns how many it took. The caller converts the rest, starting with the block that holds
// the first other unit.
inline std::size_t NarrowAsciiBlocks(const WChar* text, std::size_t count, unsigned char* out)
{
    std::size_t i = 0;
#ifdef TESSEL_HAS_SSE2
    const __m128i high = _mm_set1_epi16(static_cast<short>(0xFF80));
    for (; i + 8 <= count; i += 8) {
        const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
        if (_mm_movemask_epi8(_mm_cmpeq_epi16(_mm_and_si128(units, high), _mm_setzero_si128())) != 0xFFFF)
            break;
        _mm_storel_epi64(reinterpret_cast<__m128i*>(out + i), _mm_packus_epi16(units, units));
    }
#else
    (void)text;
    (void)count;
    (void)out;
#endif
    return i;
}

// The index of the first line feed or U+0000 of a NUL-terminated text. Reads in aligned
// blocks, which never cross into a page that the text does not reach.
TESSEL_READS_PAST_END inline std::size_t FindLineFeedOrNul(const WChar* text)
{
    const WChar* at = text;
#ifdef TESSEL_HAS_SSE2
    if (reinterpret_cast<std::uintptr_t>(at) % sizeof(WChar) == 0) {
        for (; reinterpret_cast<std::uintptr_t>(at) % 16 != 0; ++at) {
            if (*at == WTEXT('\n') || *at == 0)
                return static_cast<std::size_t>(at - text);
        }
        const __m128i lineFeed = _mm_set1_epi16(WTEXT('\n'));
        const __m128i zero = _mm_setzero_si128();
        for (;; at += 8) {
            const __m128i units = _mm_load_si128(reinterpret_cast<const __m128i*>(at));
            if (_mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi16(units, lineFeed), _mm_cmpeq_epi16(units, zero))) != 0)
                break;
        }
    }
#endif
    while (*at != WTEXT('\n') && *at != 0)
        ++at;
    return static_cast<std::size_t>(at - text);
}

// The positions of the units of text[0, length) equal to `always` or to one of
// targets[0, targetCount), in order, written to out (which has room for length + 8
// entries: a block of eight is stored whole before it is counted); returns how many.
// Without SIMD, or for a text shorter than one block, returns kNotListed and writes
// nothing: the caller's own loop does the work.
constexpr std::size_t kNotListed = static_cast<std::size_t>(-1);

#ifdef TESSEL_HAS_SSE2
namespace sse2_detail {

// For each pattern of eight lanes, the indexes of the set lanes, first to last.
struct LaneList {
    std::uint8_t lane[8];
    std::uint8_t count;
};

constexpr std::array<LaneList, 256> MakeLaneLists()
{
    std::array<LaneList, 256> lists{};
    for (unsigned mask = 0; mask < 256; ++mask)
        for (std::uint8_t lane = 0; lane < 8; ++lane)
            if (mask & (1u << lane))
                lists[mask].lane[lists[mask].count++] = lane;
    return lists;
}

inline constexpr std::array<LaneList, 256> kLaneLists = MakeLaneLists();

} // namespace sse2_detail
#endif

// Eight units at a time: the matching lanes become a mask, whose lane list is widened and
// stored whole; only its count advances the output. The last block overlaps the one before
// and skips the lanes already listed.
inline std::size_t ListMatchingUnits(const WChar* text, std::size_t length, WChar always, const WChar* targets,
                                     std::size_t targetCount, std::uint32_t* out)
{
#ifdef TESSEL_HAS_SSE2
    using sse2_detail::kLaneLists;
    using sse2_detail::LaneList;
    if (length < 8)
        return kNotListed;
    const __m128i alwaysUnit = _mm_set1_epi16(static_cast<short>(always));
    const __m128i first = _mm_set1_epi16(static_cast<short>(targetCount > 0 ? targets[0] : always));
    const __m128i zero = _mm_setzero_si128();
    const auto hitsAt = [&](std::size_t start) {
        const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + start));
        __m128i hits = _mm_or_si128(_mm_cmpeq_epi16(units, alwaysUnit), _mm_cmpeq_epi16(units, first));
        for (std::size_t t = 1; t < targetCount; ++t)
            hits = _mm_or_si128(hits, _mm_cmpeq_epi16(units, _mm_set1_epi16(static_cast<short>(targets[t]))));
        return hits;
    };
    std::uint32_t* const begin = out;
    const auto store = [&](unsigned mask, std::size_t start) {
        const LaneList& list = kLaneLists[mask];
        const __m128i lanes = _mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(list.lane)), zero);
        const __m128i base = _mm_set1_epi32(static_cast<int>(start));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_add_epi32(_mm_unpacklo_epi16(lanes, zero), base));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 4), _mm_add_epi32(_mm_unpackhi_epi16(lanes, zero), base));
        out += list.count;
    };
    std::size_t i = 0;
    for (; i + 16 <= length; i += 16) {
        const unsigned mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(hitsAt(i), hitsAt(i + 8))));
        store(mask & 0xFF, i);
        store(mask >> 8, i + 8);
    }
    if (i + 8 <= length) {
        store(static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(hitsAt(i), zero))), i);
        i += 8;
    }
    if (i < length) {
        const std::size_t start = length - 8;
        const unsigned mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(hitsAt(start), zero)));
        store(mask & ~((1u << (i - start)) - 1), start);
    }
    return static_cast<std::size_t>(out - begin);
#else
    (void)text, (void)length, (void)always, (void)targets, (void)targetCount, (void)out;
    return kNotListed;
#endif
}

// Asks the processor to start loading the cache line at address; never faults.
inline void PrefetchForReading(const void* address)
{
#if defined(__GNUC__) || defined(__clang__)
    __builtin_prefetch(address);
#elif defined(TESSEL_HAS_SSE2)
    _mm_prefetch(static_cast<const char*>(address), _MM_HINT_T0);
#else
    (void)address;
#endif
}
