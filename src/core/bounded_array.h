// Arrays with fixed bounds and checked access: a subscript out of bounds raises run-time error 9.
#pragma once

#include "core/integer.h"
#include "core/run_time_error.h"

#include <cstddef>
#include <map>
#include <tuple>
#include <utility>
#include <vector>

// A subscript of the arrays below. Converts implicitly from a 16-bit or 32-bit integer and from a plain int.
class Subscript {
public:
    constexpr Subscript(int index) : index_(index) {}               // NOLINT(google-explicit-constructor)
    constexpr Subscript(Integer16 index) : index_(index.value()) {} // NOLINT(google-explicit-constructor)
    constexpr Subscript(Integer32 index) : index_(index.value()) {} // NOLINT(google-explicit-constructor)

    // Returns the subscript as an offset. Raises 9 unless it is in 0..upper.
    std::size_t Within(int upper) const {
        if (index_ < 0 || index_ > upper) {
            RaiseOutside(kSubscriptOutOfRange, index_, 0, upper);
        }
        return static_cast<std::size_t>(index_);
    }
    constexpr int value() const { return index_; }

private:
    int index_;
};

// An array with the bounds 0..Upper.
template <typename Element, int Upper>
class BoundedArray {
public:
    Element& operator()(Subscript i) { return elements_[i.Within(Upper)]; }
    const Element& operator()(Subscript i) const { return elements_[i.Within(Upper)]; }

private:
    std::vector<Element> elements_ = std::vector<Element>(Upper + 1);
};

// A table with the bounds 0..UpperA and 0..UpperB.
template <typename Element, int UpperA, int UpperB>
class BoundedTable {
public:
    Element& operator()(Subscript a, Subscript b) { return elements_[Offset(a, b)]; }
    const Element& operator()(Subscript a, Subscript b) const { return elements_[Offset(a, b)]; }

private:
    static std::size_t Offset(Subscript a, Subscript b) {
        const std::size_t row = a.Within(UpperA);
        return row * (UpperB + 1) + b.Within(UpperB);
    }

    std::vector<Element> elements_ =
        std::vector<Element>(static_cast<std::size_t>(UpperA + 1) * static_cast<std::size_t>(UpperB + 1));
};

// A cube with the bounds 0..Upper in each direction. Only written cells take memory; a cell that was never
// written reads as `Element()`.
template <typename Element, int Upper>
class SparseCube {
public:
    Element operator()(Subscript a, Subscript b, Subscript c) const {
        const auto cell = cells_.find(Place(a, b, c));
        return cell == cells_.end() ? Element() : cell->second;
    }
    void Set(Subscript a, Subscript b, Subscript c, Element value) {
        cells_[Place(a, b, c)] = std::move(value);
    }

private:
    static std::tuple<std::size_t, std::size_t, std::size_t> Place(Subscript a, Subscript b, Subscript c) {
        return {a.Within(Upper), b.Within(Upper), c.Within(Upper)};
    }

    std::map<std::tuple<std::size_t, std::size_t, std::size_t>, Element> cells_;
};
