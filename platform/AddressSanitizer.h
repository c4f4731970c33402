#pragma once
// What the module's own memory handling needs to know of the address sanitizer, in one place:
// whether the build has it, how to mark memory as not to be touched (and back), and how to
// let a function read a few bytes past an object on purpose. Without the sanitizer all of
// it costs nothing.

#if defined(__SANITIZE_ADDRESS__)
#define TESSEL_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TESSEL_ADDRESS_SANITIZER 1
#endif
#endif

#ifdef TESSEL_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#define TESSEL_POISON(address, size) ASAN_POISON_MEMORY_REGION(address, size)
#define TESSEL_UNPOISON(address, size) ASAN_UNPOISON_MEMORY_REGION(address, size)
#else
#define TESSEL_POISON(address, size) ((void)(address), (void)(size))
#define TESSEL_UNPOISON(address, size) ((void)(address), (void)(size))
#endif

// Aligned block reads may look at a few bytes past the end of a text: they never leave its
// page, but the address sanitizer would take them for overflows.
#if defined(__GNUC__) || defined(__clang__)
#define TESSEL_READS_PAST_END __attribute__((no_sanitize_address))
#else
#define TESSEL_READS_PAST_END
#endif
