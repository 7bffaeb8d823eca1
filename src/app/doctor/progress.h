// A line on the terminal that says how far a long task is.
#pragma once

#include <QString>

#include <chrono>

// Writes to standard error, and only when that is a terminal.
class Progress {
public:
    Progress();

    // Replaces the line, at most ten times a second.
    void Show(const QString& text);
    void Clear();
    bool IsShown() const { return isTerminal_; }

private:
    bool isTerminal_;
    bool isWritten_ = false;
    std::chrono::steady_clock::time_point last_;
};

// The time that is left after `done` of `all` equal parts have taken `elapsed`, as "1:02:03" or "2:03". Empty
// before the first part is done.
QString TimeLeft(std::chrono::milliseconds elapsed, std::int64_t done, std::int64_t all);
