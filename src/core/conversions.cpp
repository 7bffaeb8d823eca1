// Conversions between text and numbers that share one grammar: sign, digits, point, exponent.
#include "core/conversions.h"

#include "core/run_time_error.h"

#include <QByteArray>
#include <QLocale>

#include <cmath>
#include <limits>

namespace {

bool IsDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

qsizetype SkipDigits(const QString& text, qsizetype at) {
    while (at < text.size() && IsDigit(text[at])) {
        ++at;
    }
    return at;
}

qsizetype SkipSign(const QString& text, qsizetype at) {
    return at < text.size() && (text[at] == u'+' || text[at] == u'-') ? at + 1 : at;
}

// Returns the end of the exponent that starts at `at`, or `at` when there is none.
qsizetype SkipExponent(const QString& text, qsizetype at) {
    if (at >= text.size() || (text[at] != u'e' && text[at] != u'E')) {
        return at;
    }
    const qsizetype digits = SkipSign(text, at + 1);
    const qsizetype end = SkipDigits(text, digits);
    return end > digits ? end : at;
}

// Returns the length of the number at the start of the text, 0 when there is none.
qsizetype NumericPrefix(const QString& text) {
    const qsizetype start = SkipSign(text, 0);
    qsizetype at = SkipDigits(text, start);
    qsizetype digits = at - start;
    if (at < text.size() && text[at] == u'.') {
        const qsizetype end = SkipDigits(text, at + 1);
        digits += end - at - 1;
        at = end;
    }
    return digits > 0 ? SkipExponent(text, at) : 0;
}

double ToDouble(const QString& number) {
    bool ok = false;
    const double value = number.toLatin1().toDouble(&ok);
    return ok ? value : std::numeric_limits<double>::infinity();
}

double RoundHalfToEven(double value) {
    const double down = std::floor(value);
    const double rest = value - down;
    if (rest < 0.5) {
        return down;
    }
    if (rest > 0.5) {
        return down + 1;
    }
    return std::fmod(down, 2.0) == 0 ? down : down + 1;
}

// `detail` returns the value as text. It is called only for an error, because the light show rounds hundreds
// of numbers a second.
template <typename Integer, typename Detail>
Integer Rounded(double value, const Detail& detail) {
    const double rounded = RoundHalfToEven(value);
    if (!(std::abs(rounded) < 4e9)) {
        throw RunTimeError(kOverflow, QStringLiteral("%1 is too large").arg(detail()));
    }
    return Integer::From(static_cast<std::int64_t>(rounded));
}

} // namespace

QString Trim(const QString& text) {
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && text[begin] == u' ') {
        ++begin;
    }
    while (end > begin && text[end - 1] == u' ') {
        --end;
    }
    return text.mid(begin, end - begin);
}

double CDouble(const QString& text) {
    const QString number = Trim(text);
    if (number.isEmpty() || NumericPrefix(number) != number.size()) {
        throw RunTimeError(kTypeMismatch, QStringLiteral("\"%1\" is not a number").arg(text));
    }
    const double value = ToDouble(number);
    if (!std::isfinite(value)) {
        throw RunTimeError(kOverflow, QStringLiteral("%1 is too large").arg(text));
    }
    return value;
}

Integer16 CInt16(const QString& text) {
    return Rounded<Integer16>(CDouble(text), [&] { return text; });
}

Integer32 CInt32(const QString& text) {
    return Rounded<Integer32>(CDouble(text), [&] { return text; });
}

Integer16 CInt16(double value) {
    return Rounded<Integer16>(value, [&] { return QString::number(value); });
}

Integer32 CInt32(double value) {
    return Rounded<Integer32>(value, [&] { return QString::number(value); });
}

bool IsNumeric(const QString& text) {
    const QString number = Trim(text);
    return !number.isEmpty() && NumericPrefix(number) == number.size() && std::isfinite(ToDouble(number));
}

double Val(const QString& text) {
    const QString number = Trim(text);
    const qsizetype length = NumericPrefix(number);
    if (length == 0) {
        return 0;
    }
    const double value = ToDouble(number.left(length));
    return std::isfinite(value) ? value : std::numeric_limits<double>::max();
}

QString FormatZeros(double value, int digits) {
    const double whole = std::floor(std::abs(value) + 0.5);
    const QString number = QString::number(whole, 'f', 0).rightJustified(digits, u'0');
    return value < 0 && whole > 0 ? u'-' + number : number;
}

QString NumberText(double value) {
    if (value == std::floor(value) && std::abs(value) < 1e15) {
        return QString::number(value, 'f', 0);
    }
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}
