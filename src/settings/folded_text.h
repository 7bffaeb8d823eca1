// Text compared without case, and a table that finds an index by such text.
#pragma once

#include <QByteArrayView>
#include <QString>
#include <QVarLengthArray>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

// A text that is looked for without regard to case, by the simple case folding of each character (Unicode
// Standard, 5.18).
class FoldedText {
public:
    explicit FoldedText(QStringView text);
    FoldedText(const FoldedText&) = delete;
    FoldedText& operator=(const FoldedText&) = delete;

    // Equal for texts that are equal without case.
    std::uint64_t Hash(std::uint64_t seed) const;
    bool Equals(const FoldedText& other) const;

    // The same for text that is known to be ASCII, as bytes.
    static std::uint64_t HashOfAscii(QByteArrayView text, std::uint64_t seed);
    bool EqualsAscii(QByteArrayView text) const {
        return isAscii_ && text.size() == size_ && SameAscii(text.data());
    }

private:
    static constexpr qsizetype kUsualLength = 120;

    bool PackAscii(QStringView text);
    bool SameAscii(const char* text) const;

    // The folded text: bytes when it is ASCII, else UTF-16.
    QVarLengthArray<char, kUsualLength> ascii_;
    QString wide_;
    qsizetype size_ = 0;
    bool isAscii_ = false;
};

// Open addressing over hashes: holds indexes, knows nothing of the texts.
class FoldedTable {
public:
    static constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

    // Makes room for about `count` entries at once.
    explicit FoldedTable(std::size_t count) : slots_(SizeFor(count)) {}

    // The index entered under the hash for which `same(index)` holds, or kNone.
    template <typename Same>
    std::uint32_t Find(std::uint64_t hash, Same&& same) const {
        const auto mark = static_cast<std::uint32_t>(hash);
        for (std::size_t at = mark & (slots_.size() - 1);; at = (at + 1) & (slots_.size() - 1)) {
            const Slot& slot = slots_[at];
            if (slot.index == kNone || (slot.mark == mark && same(slot.index))) {
                return slot.index;
            }
        }
    }
    // Enters an index whose text is not in the table yet.
    void Insert(std::uint64_t hash, std::uint32_t index) {
        if (++used_ * 2 > slots_.size()) {
            Grow();
        }
        Place({static_cast<std::uint32_t>(hash), index});
    }

private:
    struct Slot {
        std::uint32_t mark = 0;
        std::uint32_t index = kNone;
    };

    static std::size_t SizeFor(std::size_t count);
    void Place(const Slot& slot);
    void Grow();

    // A power of two, never more than half full.
    std::vector<Slot> slots_;
    std::size_t used_ = 0;
};
