// Wildcard patterns for file names.
#pragma once

#include <QString>

#include <vector>

// Wildcards joined by ";": "*" matches any characters, "?" matches one. Case is ignored. "*.*" and an empty
// pattern match every name.
class FilePattern {
public:
    explicit FilePattern(const QString& pattern);

    bool Matches(QStringView name) const;

private:
    struct Wildcard {
        QString text;
        // "*" followed by characters that are not wildcards, the most common form: only the end is compared.
        bool isEnding = false;
    };

    std::vector<Wildcard> wildcards_;
};
