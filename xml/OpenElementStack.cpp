#include "xml/OpenElementStack.h"

#include "xml/XmlNames.h"

namespace {

constexpr std::uint64_t kFnvOffset = 14695981039346656037ULL;
constexpr std::uint64_t kFnvPrime = 1099511628211ULL;

std::uint64_t AddToHash(std::uint64_t hash, WChar c)
{
    return (hash ^ static_cast<std::uint64_t>(c)) * kFnvPrime;
}

std::uint64_t NameKey(std::uint64_t hash, int length)
{
    return hash ^ (static_cast<std::uint64_t>(length) * 0x9E3779B97F4A7C15ULL);
}

} // namespace

OpenElementStack::OpenElementStack(const WChar* text, int length) : text_(text), length_(length)
{
    entries_.reserve(6);
}

void OpenElementStack::Push(const OpenElement& open)
{
    if (entries_.size() == entries_.capacity())
        entries_.reserve(2 * entries_.size() + 6);
    Entry entry{open, 0, 0, 0};
    entry.nameLength = ElementNameLength(text_, length_, open.tagStart, &entry.nameStart);
    std::uint64_t hash = kFnvOffset;
    for (int i = 0; i < entry.nameLength; ++i)
        hash = AddToHash(hash, text_[entry.nameStart + i]);
    entry.key = NameKey(hash, entry.nameLength);
    depthsByName_[entry.key].push_back(Size());
    entries_.push_back(entry);
}

void OpenElementStack::PopFrom(int depth)
{
    while (Size() > depth) {
        depthsByName_[entries_.back().key].pop_back();
        entries_.pop_back();
    }
}

// Every prefix of wanted that NameMatches could accept (all of it, or a part followed by
// one of " =/[]") is looked up by key; the deepest hit is confirmed against the text.
int OpenElementStack::FindInnermostNamed(const WChar* wanted, int wantedLength) const
{
    int best = -1;
    std::uint64_t hash = kFnvOffset;
    for (int p = 1; p <= wantedLength; ++p) {
        hash = AddToHash(hash, wanted[p - 1]);
        if (p < wantedLength && !ContinuesWantedName(wanted[p]))
            continue;
        const auto found = depthsByName_.find(NameKey(hash, p));
        if (found != depthsByName_.end() && !found->second.empty() && found->second.back() > best)
            best = found->second.back();
    }
    if (best < 0 || EntryNamed(best, wanted, wantedLength))
        return best;
    return ScanForNamed(wanted, wantedLength); // a hash collision: fall back to the plain walk
}

int OpenElementStack::ScanForNamed(const WChar* wanted, int wantedLength) const
{
    for (int depth = Size() - 1; depth >= 0; --depth)
        if (EntryNamed(depth, wanted, wantedLength))
            return depth;
    return -1;
}

bool OpenElementStack::EntryNamed(int depth, const WChar* wanted, int wantedLength) const
{
    const Entry& entry = entries_[depth];
    return NameMatches(text_ + entry.nameStart, entry.nameLength, wanted, wantedLength);
}
