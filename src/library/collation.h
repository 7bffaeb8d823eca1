// The system's order of texts, without case.
#pragma once

#include <QString>

#include <array>
#include <cstdint>

struct UCollator;

// The collation of the environment's locale (LC_ALL, LC_COLLATE, LANG), the root collation of the Unicode
// Collation Algorithm (UTS 10) in the C locale. Letters that differ in their case alone are equal, accents
// count.
class Collation {
public:
    Collation();
    ~Collation();
    Collation(const Collation&) = delete;
    Collation& operator=(const Collation&) = delete;

    // Below, equal to or above 0 as `a` stands before, with or behind `b`.
    int Compare(QStringView a, QStringView b) const;

    // Appends the weights of `text` to `key`, which has room for text.size() bytes more, and moves it on.
    // False when the text has no such weights: it is not ASCII, or the locale has an order of its own. Two
    // texts with weights compare as the bytes of their weights do.
    bool AppendWeights(QStringView text, std::uint8_t*& key) const {
        char16_t all = 0;
        for (const QChar c : text) {
            // Characters without a weight are passed over; those beyond ASCII spoil the key, which is told
            // below.
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
    // The place of each ASCII character among all of them, 0 for those that the order passes over.
    std::array<std::uint8_t, 128> weights_{};
    bool hasWeights_ = false;
};
