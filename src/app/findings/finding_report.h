// Writing findings for a person or for a program, and the exit code that sums them up.
#pragma once

#include "app/findings/finding.h"

#include <array>
#include <cstdio>

// Writes each finding at once.
class FindingReport {
public:
    // As JSON: one object a line with the members level, subject, path, text and advice, and nothing else.
    FindingReport(std::FILE* output, bool asJson) : output_(output), asJson_(asJson) {}

    void Add(const Finding& finding);
    // Ends the report; for a person with the number of findings. `subject` is what was checked.
    void Finish(const QString& subject);
    // 0 for nothing but notes, 1 with warnings, 2 with errors.
    int ExitCode() const;

private:
    std::FILE* output_;
    bool asJson_;
    // How many there are of each level.
    std::array<int, 3> counts_ = {};
};
