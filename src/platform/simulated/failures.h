// The platform operations that fail on demand.
#pragma once

#include <QSet>
#include <QString>

#include <mutex>

// The set of operations that fail whenever they are called. What failing means is what the port's header says
// of the operation; one whose header knows no failure cannot fail. May be used from any thread, as some ports
// are.
class Failures {
public:
    // Every operation that can fail, by its own name.
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
