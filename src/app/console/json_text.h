// Answers as JSON text.
#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QString>

#include <utility>
#include <vector>

// One JSON object (RFC 8259) whose members stand in the order in which they were added. A half of a surrogate
// pair that stands alone, as the name of a file that is no valid UTF-8 has them, is written as \uXXXX.
class JsonObject {
public:
    JsonObject& Add(const QString& name, const QJsonValue& value);
    JsonObject& Add(const QString& name, const JsonObject& object);
    // Puts a member behind the first one.
    JsonObject& AddSecond(const QString& name, const QJsonValue& value);
    // There is a member of that name.
    bool Has(const QString& name) const;
    // The object as UTF-8 on one line, without a line end.
    QByteArray Text() const;

private:
    // Names and values as JSON text.
    std::vector<std::pair<QByteArray, QByteArray>> members_;
};

// A value as JSON text. A number that is none (infinite, undefined) is null.
QByteArray JsonText(const QJsonValue& value);
