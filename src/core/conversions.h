// Conversions between text and numbers, independent of the locale.
#pragma once

#include "core/integer.h"

#include <QString>

// Removes blanks (code 32 only) from both ends.
QString Trim(const QString& text);

// Converts text to a 16-bit or 32-bit integer: blanks are trimmed, a sign and an exponent are allowed,
// decimals are rounded half to even. Raises 13 when the text is empty or not a number, 6 when the value does
// not fit the width.
Integer16 CInt16(const QString& text);
Integer32 CInt32(const QString& text);

// Converts text to a double by the same rules. Raises 13 when the text is empty or not a number, 6 when the
// value is too large.
double CDouble(const QString& text);

// Rounds a double half to even. Raises 6 when the result does not fit the width, and for NaN.
Integer16 CInt16(double value);
Integer32 CInt32(double value);

// Whether CDouble converts the text without an error.
bool IsNumeric(const QString& text);

// Returns the longest numeric prefix of the text as a double, 0 when there is none. Never fails: a value that
// is too large becomes the largest double.
double Val(const QString& text);

// Returns the value as a whole number of at least `digits` digits, padded with zeros, with "-" before a
// negative one. Decimals are rounded half away from zero.
QString FormatZeros(double value, int digits);

// Returns the fewest digits that read back as the same value. Whole numbers below 1e15 are written without an
// exponent.
QString NumberText(double value);
