// Case folding, hashing and comparing of whole texts.
#include "settings/folded_text.h"

#include <QChar>

#include <cstring>

namespace {

constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;
constexpr qsizetype kWord = sizeof(std::uint64_t);

// Eight ASCII characters at once: bit 0x20 is set where a byte is one of A to Z.
constexpr std::uint64_t FoldWord(std::uint64_t word) {
    constexpr std::uint64_t kEach = 0x0101010101010101;
    const std::uint64_t fromA = word + (0x80 - 'A') * kEach;
    const std::uint64_t pastZ = word + (0x80 - 'Z' - 1) * kEach;
    return word | ((fromA & ~pastZ & 0x80 * kEach) >> 2);
}

template <typename Word>
std::uint64_t Load(const char* at) {
    Word word = 0;
    std::memcpy(&word, at, sizeof word);
    return word;
}

// One to seven bytes as a word, each of them at least once, always in the same way.
std::uint64_t LoadShort(const char* text, qsizetype size) {
    if (size >= 4) {
        return Load<std::uint32_t>(text) << 32 | Load<std::uint32_t>(text + size - 4);
    }
    return Load<std::uint8_t>(text) << 16 | Load<std::uint8_t>(text + size / 2) << 8 |
           Load<std::uint8_t>(text + size - 1);
}

// Calls `word(at)` for each eight bytes; the last ones overlap those before when the size is no multiple.
// Stops at the first false and returns it. For texts of eight bytes or more.
template <typename Word>
bool ForEachWord(qsizetype size, Word&& word) {
    qsizetype at = 0;
    for (; at + kWord < size; at += kWord) {
        if (!word(at)) {
            return false;
        }
    }
    return word(size - kWord);
}

constexpr std::uint64_t Mix(std::uint64_t hash, std::uint64_t word) {
    hash = (hash ^ word) * kFactor;
    return hash ^ hash >> 32;
}

std::uint64_t AsciiHash(const char* text, qsizetype size, std::uint64_t seed) {
    std::uint64_t hash = seed + static_cast<std::uint64_t>(size) * kFactor;
    if (size < kWord) {
        return size == 0 ? hash : Mix(hash, FoldWord(LoadShort(text, size)));
    }
    ForEachWord(size, [&](qsizetype at) {
        hash = Mix(hash, FoldWord(Load<std::uint64_t>(text + at)));
        return true;
    });
    return hash;
}

QString FoldCase(QStringView text) {
    QString folded;
    folded.reserve(text.size());
    for (qsizetype at = 0; at < text.size(); ++at) {
        char32_t code = text[at].unicode();
        if (text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate()) {
            code = QChar::surrogateToUcs4(text[at], text[at + 1]);
            ++at;
        }
        folded += QChar::fromUcs4(QChar::toCaseFolded(code));
    }
    return folded;
}

} // namespace

FoldedText::FoldedText(QStringView text) : size_(text.size()), isAscii_(PackAscii(text)) {
    if (!isAscii_) {
        wide_ = FoldCase(text);
        size_ = wide_.size();
        // A few letters beyond ASCII, as the Kelvin sign, fold into it.
        isAscii_ = PackAscii(wide_);
    }
}

bool FoldedText::PackAscii(QStringView text) {
    ascii_.resize(text.size());
    char* const bytes = ascii_.data();
    unsigned all = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t code = text[i].unicode();
        bytes[i] = static_cast<char>(code);
        all |= code;
    }
    return all < 0x80;
}

std::uint64_t FoldedText::Hash(std::uint64_t seed) const {
    if (isAscii_) {
        return AsciiHash(ascii_.data(), size_, seed);
    }
    std::uint64_t hash = ~seed;
    for (const QChar c : wide_) {
        hash = Mix(hash, c.unicode());
    }
    return hash;
}

bool FoldedText::Equals(const FoldedText& other) const {
    if (other.isAscii_) {
        return EqualsAscii({other.ascii_.data(), other.size_});
    }
    return !isAscii_ && wide_ == other.wide_;
}

bool FoldedText::SameAscii(const char* text) const {
    const char* const own = ascii_.data();
    if (size_ < kWord) {
        return size_ == 0 || FoldWord(LoadShort(text, size_)) == FoldWord(LoadShort(own, size_));
    }
    return ForEachWord(size_, [&](qsizetype at) {
        return FoldWord(Load<std::uint64_t>(text + at)) == FoldWord(Load<std::uint64_t>(own + at));
    });
}

std::uint64_t FoldedText::HashOfAscii(QByteArrayView text, std::uint64_t seed) {
    return AsciiHash(text.data(), text.size(), seed);
}

std::size_t FoldedTable::SizeFor(std::size_t count) {
    std::size_t size = 16;
    while (size < 2 * count) {
        size *= 2;
    }
    return size;
}

void FoldedTable::Place(const Slot& slot) {
    std::size_t at = slot.mark & (slots_.size() - 1);
    while (slots_[at].index != kNone) {
        at = (at + 1) & (slots_.size() - 1);
    }
    slots_[at] = slot;
}

void FoldedTable::Grow() {
    std::vector<Slot> old(slots_.size() * 2);
    old.swap(slots_);
    for (const Slot& slot : old) {
        if (slot.index != kNone) {
            Place(slot);
        }
    }
}
