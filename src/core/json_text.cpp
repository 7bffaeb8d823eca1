// Writing JSON.
#include "core/json_text.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QLocale>

#include <algorithm>
#include <cmath>

namespace {

// Every whole number up to this has an exact double.
constexpr double kLargestExactWhole = 9007199254740992.0;

QByteArray NumberJson(double value) {
    if (!std::isfinite(value)) {
        return "null";
    }
    if (value == std::floor(value) && std::abs(value) < kLargestExactWhole) {
        return QByteArray::number(static_cast<qlonglong>(value));
    }
    return QByteArray::number(value, 'g', QLocale::FloatingPointShortest);
}

QByteArray Escaped(QChar unit) {
    return "\\u" + QByteArray::number(unit.unicode(), 16).rightJustified(4, '0');
}

QByteArray CharacterJson(QChar unit) {
    switch (unit.unicode()) {
    case u'"':
        return "\\\"";
    case u'\\':
        return "\\\\";
    case u'\n':
        return "\\n";
    case u'\r':
        return "\\r";
    case u'\t':
        return "\\t";
    default:
        return unit.unicode() < 0x20 || unit.isSurrogate() ? Escaped(unit) : QString(unit).toUtf8();
    }
}

QByteArray StringJson(const QString& text) {
    QByteArray result = "\"";
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            result += QStringView(text).mid(i, 2).toUtf8();
            ++i;
        } else {
            result += CharacterJson(text[i]);
        }
    }
    return result + '"';
}

QByteArray ArrayJson(const QJsonArray& array) {
    QByteArray result = "[";
    for (const auto& element : array) {
        result += (result.size() > 1 ? "," : "") + JsonText(element);
    }
    return result + ']';
}

QByteArray ObjectJson(const QJsonObject& object) {
    JsonObject result;
    for (auto member = object.begin(); member != object.end(); ++member) {
        result.Add(member.key(), member.value());
    }
    return result.Text();
}

} // namespace

JsonObject& JsonObject::Add(const QString& name, const QJsonValue& value) {
    members_.emplace_back(StringJson(name), JsonText(value));
    return *this;
}

JsonObject& JsonObject::Add(const QString& name, const JsonObject& object) {
    members_.emplace_back(StringJson(name), object.Text());
    return *this;
}

JsonObject& JsonObject::AddSecond(const QString& name, const QJsonValue& value) {
    members_.emplace(members_.empty() ? members_.end() : members_.begin() + 1, StringJson(name),
                     JsonText(value));
    return *this;
}

bool JsonObject::Has(const QString& name) const {
    const QByteArray text = StringJson(name);
    return std::any_of(members_.begin(), members_.end(),
                       [&](const auto& member) { return member.first == text; });
}

QByteArray JsonObject::Text() const {
    QByteArray result = "{";
    for (const auto& [name, value] : members_) {
        result += (result.size() > 1 ? "," : "") + name + ':' + value;
    }
    return result + '}';
}

QByteArray JsonText(const QJsonValue& value) {
    switch (value.type()) {
    case QJsonValue::Bool:
        return value.toBool() ? "true" : "false";
    case QJsonValue::Double:
        return NumberJson(value.toDouble());
    case QJsonValue::String:
        return StringJson(value.toString());
    case QJsonValue::Array:
        return ArrayJson(value.toArray());
    case QJsonValue::Object:
        return ObjectJson(value.toObject());
    default:
        return "null";
    }
}
