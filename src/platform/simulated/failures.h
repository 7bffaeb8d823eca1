// The platform operations that fail on demand.
#pragma once

#include <QSet>
#include <QString>

// The set of operations that fail whenever they are called. What failing means is what the port's header says
// of the operation; one whose header knows no failure cannot fail.
class Failures {
public:
    // Every operation that can fail, by its own name.
    static bool IsOperation(const QString& operation);

    void Add(const QString& operation) { failing_.insert(operation); }
    void Remove(const QString& operation) { failing_.remove(operation); }
    bool Has(const char* operation) const { return failing_.contains(QString::fromLatin1(operation)); }

private:
    QSet<QString> failing_;
};
