// Signed integers of a fixed width with checked arithmetic: a result out of range raises run-time error 6.
#pragma once

#include "core/run_time_error.h"

#include <QString>

#include <compare>
#include <cstdint>
#include <limits>

// A checked signed integer. Both operands of an operation have the width of the type; a plain int converts to
// that width. Results never wrap and are never truncated.
template <typename Rep>
class CheckedInteger {
public:
    constexpr CheckedInteger() = default;
    // Raises 6 when `value` does not fit the width.
    constexpr CheckedInteger(int value) : value_(Checked(value)) {} // NOLINT(google-explicit-constructor)

    // Raises 6 when `value` does not fit the width.
    static constexpr CheckedInteger From(std::int64_t value) {
        CheckedInteger result;
        result.value_ = Checked(value);
        return result;
    }

    constexpr int value() const { return value_; }
    constexpr explicit operator double() const { return value_; }

    constexpr CheckedInteger& operator+=(CheckedInteger other) { return *this = *this + other; }
    constexpr CheckedInteger& operator-=(CheckedInteger other) { return *this = *this - other; }
    constexpr CheckedInteger operator-() const { return From(-std::int64_t{value_}); }

    friend constexpr CheckedInteger operator+(CheckedInteger a, CheckedInteger b) {
        return From(std::int64_t{a.value_} + b.value_);
    }
    friend constexpr CheckedInteger operator-(CheckedInteger a, CheckedInteger b) {
        return From(std::int64_t{a.value_} - b.value_);
    }
    friend constexpr CheckedInteger operator*(CheckedInteger a, CheckedInteger b) {
        return From(std::int64_t{a.value_} * b.value_);
    }
    friend constexpr bool operator==(CheckedInteger a, CheckedInteger b) { return a.value_ == b.value_; }
    friend constexpr auto operator<=>(CheckedInteger a, CheckedInteger b) { return a.value_ <=> b.value_; }

private:
    static constexpr Rep Checked(std::int64_t value) {
        if (value < std::numeric_limits<Rep>::min() || value > std::numeric_limits<Rep>::max()) {
            RaiseOutside(kOverflow, value, std::numeric_limits<Rep>::min(), std::numeric_limits<Rep>::max());
        }
        return static_cast<Rep>(value);
    }

    Rep value_ = 0;
};

using Integer16 = CheckedInteger<std::int16_t>;
using Integer32 = CheckedInteger<std::int32_t>;

// Integer division that truncates towards zero. Raises 11 when `b` is 0.
template <typename Rep>
constexpr CheckedInteger<Rep> IntegerDivide(CheckedInteger<Rep> a, CheckedInteger<Rep> b) {
    if (b.value() == 0) {
        throw RunTimeError(kDivisionByZero, QStringLiteral("%1 divided by 0").arg(a.value()));
    }
    return CheckedInteger<Rep>::From(std::int64_t{a.value()} / b.value());
}
