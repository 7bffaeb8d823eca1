// Values of the shared variables as JSON: numbers are numbers, text is text, arrays are lists.
#pragma once

#include "core/bounded_array.h"
#include "core/integer.h"

#include <QJsonArray>
#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <cstdint>
#include <memory>

template <typename Rep>
QJsonValue StateValue(CheckedInteger<Rep> value) {
    return QJsonValue(value.value());
}
inline QJsonValue StateValue(int value) {
    return QJsonValue(value);
}
inline QJsonValue StateValue(std::uint32_t value) {
    return QJsonValue(static_cast<qint64>(value));
}
inline QJsonValue StateValue(double value) {
    return QJsonValue(value);
}
inline QJsonValue StateValue(float value) {
    return QJsonValue(static_cast<double>(value));
}
inline QJsonValue StateValue(bool value) {
    return QJsonValue(value);
}
inline QJsonValue StateValue(const QString& value) {
    return QJsonValue(value);
}
inline QJsonValue StateValue(const QStringList& values) {
    return QJsonArray::fromStringList(values);
}
// A reference is shown as whether it holds an object.
template <typename Object>
QJsonValue StateValue(const std::shared_ptr<Object>& reference) {
    return QJsonValue(reference != nullptr);
}

// The elements `first` to `last` of an array, without those outside its bounds.
template <typename Element, int Upper>
QJsonValue ElementsOf(const BoundedArray<Element, Upper>& array, int first, int last) {
    QJsonArray list;
    for (int i = std::max(first, 0); i <= std::min(last, Upper); ++i) {
        list.append(StateValue(array(i)));
    }
    return list;
}

// The elements `first` to `last` of row `row` of a table, without those outside its bounds.
template <typename Element, int UpperA, int UpperB>
QJsonValue RowOf(const BoundedTable<Element, UpperA, UpperB>& table, int row, int first, int last) {
    QJsonArray list;
    for (int i = std::max(first, 0); i <= std::min(last, UpperB); ++i) {
        list.append(StateValue(table(row, i)));
    }
    return list;
}
