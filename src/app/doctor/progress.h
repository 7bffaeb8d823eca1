// A line on the terminal that says how far a long task is.
#pragma once

#include <QString>
#include <QStringList>

#include <chrono>
#include <mutex>

// Writes to standard error, and only when that is a terminal. Any thread may call it.
class Progress {
public:
    Progress();

    // Says how much of the present step is done. Replaces the line, at most ten times a second; `rest` is
    // only for the line.
    void Show(const QString& done, const QString& rest = {});
    // Ends the present step and erases the line.
    void Clear();
    // Ends a step that has no line.
    void Add(const QString& done);
    // Erases the line for good.
    void Close();
    // All steps so far, with what is done of the present one.
    QString Done() const;

private:
    void Erase();

    mutable std::mutex mutex_;
    QStringList steps_;
    QString present_;
    bool isClosed_ = false;
    bool isTerminal_;
    bool isWritten_ = false;
    std::chrono::steady_clock::time_point last_;
};

// The time that is left after `done` of `all` equal parts have taken `elapsed`, as "1:02:03" or "2:03". Empty
// before the first part is done.
QString TimeLeft(std::chrono::milliseconds elapsed, std::int64_t done, std::int64_t all);
