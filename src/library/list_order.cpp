// Sorting many texts by collation, with the weights of each computed only once.
#include "library/list_order.h"

#include "library/collation.h"
#include "state/library_state.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

namespace {

// A text with known weights.
struct Weighed {
    // The first eight weights, the first in the highest byte: most comparisons need no more.
    std::uint64_t head = 0;
    const std::uint8_t* weights = nullptr;
    std::uint32_t size = 0;
    std::uint32_t index = 0;
};

// A text without weights.
struct Spelled {
    QString text;
    std::uint32_t index = 0;
};

// Returns a value below, equal to or above 0, like memcmp.
int CompareWeights(const Weighed& a, const Weighed& b) {
    if (a.head != b.head) {
        return a.head < b.head ? -1 : 1;
    }
    const int order = std::memcmp(a.weights, b.weights, std::min(a.size, b.size));
    return order != 0 ? order : static_cast<int>(a.size) - static_cast<int>(b.size);
}

std::uint64_t Head(const std::uint8_t* weights, std::uint32_t size) {
    std::uint64_t head = 0;
    for (std::uint32_t i = 0; i < 8; ++i) {
        head = head << 8 | (i < size ? weights[i] : 0);
    }
    return head;
}

// The texts of a list, split into those with weights and the others.
struct Parted {
    std::vector<std::uint8_t> weights;
    std::vector<Weighed> weighed;
    std::vector<Spelled> spelled;
};

// The names of a folder.
struct NameTexts {
    const QStringList& names;

    std::uint32_t Count() const { return static_cast<std::uint32_t>(names.size()); }
    // The maximum number of weights of a text.
    std::size_t Length(std::uint32_t i) const { return static_cast<std::size_t>(names[i].size()); }
    bool Weigh(const Collation& collation, std::uint32_t i, std::uint8_t*& key) const {
        return collation.AppendWeights(names[i], key);
    }
    QString Text(std::uint32_t i) const { return names[i]; }
    // The order of two texts that the collation considers equal.
    bool Earlier(std::uint32_t a, std::uint32_t b) const { return names[a] < names[b]; }
};

// The whole texts of the list's lines.
struct LineTexts {
    const std::vector<ListLine>& lines;

    std::uint32_t Count() const { return static_cast<std::uint32_t>(lines.size()); }
    std::size_t Length(std::uint32_t i) const {
        const ListLine& line = lines[i];
        return static_cast<std::size_t>(line.key.size() + line.type.size() + line.path.size() +
                                        line.title.size() + 3);
    }
    bool Weigh(const Collation& collation, std::uint32_t i, std::uint8_t*& key) const {
        const ListLine& line = lines[i];
        return collation.AppendWeights(line.key, key) && collation.AppendWeights(u"|", key) &&
               collation.AppendWeights(line.type, key) && collation.AppendWeights(u"|", key) &&
               collation.AppendWeights(line.path, key) && collation.AppendWeights(u"|", key) &&
               collation.AppendWeights(line.title, key);
    }
    QString Text(std::uint32_t i) const { return lines[i].Text(); }
    static bool Earlier(std::uint32_t a, std::uint32_t b) { return a < b; }
};

template <typename Texts>
Parted Part(const Texts& texts, const Collation& collation) {
    Parted parted;
    std::size_t room = 0;
    for (std::uint32_t i = 0; i < texts.Count(); ++i) {
        room += texts.Length(i);
    }
    parted.weights.resize(room);
    parted.weighed.reserve(texts.Count());
    std::uint8_t* key = parted.weights.data();
    for (std::uint32_t i = 0; i < texts.Count(); ++i) {
        std::uint8_t* const start = key;
        if (texts.Weigh(collation, i, key)) {
            const auto size = static_cast<std::uint32_t>(key - start);
            parted.weighed.push_back({Head(start, size), start, size, i});
        } else {
            key = start;
            parted.spelled.push_back({texts.Text(i), i});
        }
    }
    return parted;
}

// Returns the first position from `begin` on where `isBefore` no longer holds: doubling steps, then binary
// search.
template <typename Iterator, typename Predicate>
Iterator Gallop(Iterator begin, Iterator end, Predicate&& isBefore) {
    std::ptrdiff_t step = 1;
    while (end - begin > step && isBefore(begin[step - 1])) {
        begin += step;
        step *= 2;
    }
    return std::partition_point(begin, end - begin > step ? begin + step : end, isBefore);
}

// Returns the indexes of all texts in sorted order.
template <typename Texts>
std::vector<std::uint32_t> SortedIndexes(const Texts& texts) {
    const Collation collation;
    Parted parted = Part(texts, collation);
    std::sort(parted.weighed.begin(), parted.weighed.end(), [&](const Weighed& a, const Weighed& b) {
        const int order = CompareWeights(a, b);
        return order != 0 ? order < 0 : texts.Earlier(a.index, b.index);
    });
    std::sort(parted.spelled.begin(), parted.spelled.end(), [&](const Spelled& a, const Spelled& b) {
        const int order = collation.Compare(a.text, b.text);
        return order != 0 ? order < 0 : texts.Earlier(a.index, b.index);
    });
    std::vector<std::uint32_t> indexes;
    indexes.reserve(texts.Count());
    auto next = parted.weighed.begin();
    const auto takeTo = [&](auto end) {
        std::for_each(next, end, [&](const Weighed& weighed) { indexes.push_back(weighed.index); });
        next = end;
    };
    for (const Spelled& spelled : parted.spelled) {
        takeTo(Gallop(next, parted.weighed.end(), [&](const Weighed& weighed) {
            const int order = collation.Compare(texts.Text(weighed.index), spelled.text);
            return order != 0 ? order < 0 : texts.Earlier(weighed.index, spelled.index);
        }));
        indexes.push_back(spelled.index);
    }
    takeTo(parted.weighed.end());
    return indexes;
}

} // namespace

void SortNames(QStringList& names) {
    QStringList sorted;
    sorted.reserve(names.size());
    for (const std::uint32_t index : SortedIndexes(NameTexts{names})) {
        sorted += names[index];
    }
    names = std::move(sorted);
}

void SortLines(std::vector<ListLine>& lines) {
    std::vector<ListLine> sorted;
    sorted.reserve(lines.size());
    for (const std::uint32_t index : SortedIndexes(LineTexts{lines})) {
        sorted.push_back(std::move(lines[index]));
    }
    lines = std::move(sorted);
}
