// The system's collation order, without case.
#pragma once

#include <QString>

#include <array>
#include <cstdint>

struct UCollator;

// The collation of the environment's locale (LC_ALL, LC_COLLATE, LANG); in the C locale, the root collation
// of the Unicode Collation Algorithm (UTS 10). Letters that differ only in case are equal, accents count.
class Collation {
public:
    Collation();
    ~Collation();
    Collation(const Collation&) = delete;
    Collation& operator=(const Collation&) = delete;

    // Returns a value below, equal to or above 0 when `a` comes before `b`, equals it or comes after it.
    int Compare(QStringView a, QStringView b) const;

    // Appends the weights of `text` to `key`, which needs room for text.size() bytes, and advances `key`.
    // Returns false when the text has no weights: it is not ASCII, or the locale has its own order. Texts
    // with weights compare like the bytes of their weights.
    bool AppendWeights(QStringView text, std::uint8_t*& key) const {
        char16_t all = 0;
        for (const QChar c : text) {
            // Characters without a weight are skipped. One beyond ASCII makes the key useless; the result is
            // then false.
            const std::uint8_t weight = weights_[c.unicode() & 0x7F];
            *key = weight;
            key += weight != 0;
            all = static_cast<char16_t>(all | c.unicode());
        }
        return hasWeights_ && all < 0x80;
    }

private:
    void FindWeights();

    UCollator* collator_ = nullptr;
    // The rank of each ASCII character, 0 for those that the order ignores.
    std::array<std::uint8_t, 128> weights_{};
    bool hasWeights_ = false;
};
