// Answers as JSON text.
#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QString>

#include <utility>
#include <vector>

// A JSON object (RFC 8259) that keeps the order in which its members were added. An unpaired surrogate, which
// the name of a file with invalid UTF-8 contains, is written as \uXXXX.
class JsonObject {
public:
    JsonObject& Add(const QString& name, const QJsonValue& value);
    JsonObject& Add(const QString& name, const JsonObject& object);
    // Inserts a member after the first one.
    JsonObject& AddSecond(const QString& name, const QJsonValue& value);
    // Whether there is a member of that name.
    bool Has(const QString& name) const;
    // The object as UTF-8 on one line, without a line end.
    QByteArray Text() const;

private:
    // Names and values as JSON text.
    std::vector<std::pair<QByteArray, QByteArray>> members_;
};

// A value as JSON text. Infinite and undefined numbers become null.
QByteArray JsonText(const QJsonValue& value);
