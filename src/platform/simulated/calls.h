// The calls to the simulated machine: a record of them, and the operations that fail.
#pragma once

#include <QJsonArray>
#include <QSet>
#include <QString>

#include <cstdint>
#include <deque>
#include <initializer_list>
#include <mutex>

// Records the calls that have an effect, oldest first; reads are not recorded. Each entry is a list that
// begins with the operation or its object.
class CallRecord {
public:
    // The most entries that are kept; the oldest are dropped first.
    static constexpr std::size_t kLimit = 100'000;

    void Add(std::initializer_list<QJsonValue> entry);

    const std::deque<QJsonArray>& Entries() const { return entries_; }
    // The number of entries dropped since the last Clear.
    std::int64_t Dropped() const { return dropped_; }
    void Clear();
    // The newest entry, empty when there is none. Clear keeps it.
    const QJsonArray& Last() const { return last_; }

private:
    std::deque<QJsonArray> entries_;
    QJsonArray last_;
    std::int64_t dropped_ = 0;
};

// A 64-bit number of a call; a double holds it exactly.
inline QJsonValue CallNumber(std::int64_t value) {
    return QJsonValue(static_cast<qint64>(value));
}

// The operations that fail whenever they are called. The port's header says what failure means; an operation
// whose header names no failure cannot fail. May be used from any thread, because some ports are.
class Failures {
public:
    // Whether an operation of this name can fail.
    static bool IsOperation(const QString& operation);

    void Add(const QString& operation) {
        const std::lock_guard lock(mutex_);
        failing_.insert(operation);
    }
    void Remove(const QString& operation) {
        const std::lock_guard lock(mutex_);
        failing_.remove(operation);
    }
    bool Has(const char* operation) const {
        const std::lock_guard lock(mutex_);
        return failing_.contains(QString::fromLatin1(operation));
    }

private:
    mutable std::mutex mutex_;
    QSet<QString> failing_;
};
