// Named conversions between text and numbers. The locale never plays a part.
#pragma once

#include "core/integer.h"

#include <QString>

// Blanks (code 32 only) cut from both ends.
QString Trim(const QString& text);

// Text as a 16-bit or 32-bit integer: blanks trimmed, sign, decimals rounded half to even, exponent allowed.
// Raises 13 when the text is empty or no number, 6 when it lies outside the width.
Integer16 CInt16(const QString& text);
Integer32 CInt32(const QString& text);

// Text as a double, by the same rule. Raises 13 when the text is empty or no number, 6 when it is too large.
double CDouble(const QString& text);

// A double rounded half to even. Raises 6 outside the width, and for a value that is no number.
Integer16 CInt16(double value);
Integer32 CInt32(double value);

// The whole text would be taken by CDouble.
bool IsNumeric(const QString& text);

// The longest numeric prefix of the text as a double, 0 when there is none. Never fails.
double Val(const QString& text);

// A whole number with at least `digits` digits, zeros in front, "-" before a negative one. Decimals are
// rounded half away from zero.
QString FormatZeros(double value, int digits);

// A double with the fewest digits that read back as the same value, without exponent for whole numbers below
// 1e15.
QString NumberText(double value);
