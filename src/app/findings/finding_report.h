// Writing findings for a person or for a program, and the exit code that sums them up.
#pragma once

#include "app/findings/finding.h"

#include <QHash>

#include <array>
#include <cstdint>
#include <cstdio>
#include <mutex>
#include <vector>

// How many findings there are of each level, by the level's number.
using FindingCounts = std::array<std::int64_t, 3>;

// Returns for instance "1 error, 2 warnings, 0 notes".
QString SummaryOf(const FindingCounts& counts);

// Collects findings for a person: errors first, then warnings and notes, with many findings of one kind in
// one paragraph. Writes findings for a program at once. Any thread may call it.
class FindingReport {
public:
    // As JSON: one object a line with the members level, subject, path, text and advice, and nothing else.
    FindingReport(std::FILE* output, bool asJson) : output_(output), asJson_(asJson) {}

    void Add(const Finding& finding);
    // Ends the report; for a person with the findings and their number. `subject` is what was checked.
    void Finish(const QString& subject);
    // Ends the report of a check that was interrupted, with a line that says what has been looked at. As JSON
    // the line goes to standard error. Findings that are added later are dropped.
    void FinishIncomplete(const QString& subject, const QString& done);
    bool IsIncomplete() const;
    // 0 for nothing but notes, 1 with warnings, 2 with errors.
    int ExitCode() const;

private:
    // Findings of one kind: the first ones, and how many there are.
    struct Group {
        std::vector<Finding> first;
        std::int64_t count = 0;
    };

    void AddToGroup(const Finding& finding);
    void WriteGroups(Level level);
    void WriteAll(const QString& subject);

    std::FILE* output_;
    bool asJson_;
    mutable std::mutex mutex_;
    bool isFinished_ = false;
    bool isIncomplete_ = false;
    FindingCounts counts_ = {};
    std::vector<Group> groups_;
    // The place of each kind in `groups_`.
    QHash<QString, std::size_t> places_;
};
