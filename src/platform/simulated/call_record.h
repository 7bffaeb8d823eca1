// What the platform has been asked to do, oldest first.
#pragma once

#include <QJsonArray>
#include <QString>

#include <cstdint>
#include <deque>
#include <initializer_list>

// Each entry is a list, the operation (or the object it was asked of) first. Only what has an effect is
// entered; reads are not.
class CallRecord {
public:
    // More entries than this are not kept: the oldest go.
    static constexpr std::size_t kLimit = 100'000;

    void Add(std::initializer_list<QJsonValue> entry);

    const std::deque<QJsonArray>& Entries() const { return entries_; }
    // How many entries had to go since the last Clear.
    std::int64_t Dropped() const { return dropped_; }
    void Clear();
    // The newest entry, empty when there is none. It outlives Clear.
    const QJsonArray& Last() const { return last_; }

private:
    std::deque<QJsonArray> entries_;
    QJsonArray last_;
    std::int64_t dropped_ = 0;
};

// A number of a call: 64-bit values that a double holds exactly.
inline QJsonValue CallNumber(std::int64_t value) {
    return QJsonValue(static_cast<qint64>(value));
}
