// Wildcards that file names are matched with.
#pragma once

#include <QString>

#include <vector>

// Wildcards joined by ";": "*" stands for any characters, "?" for one. Case plays no part; "*.*", and no
// wildcard at all, match every name.
class FilePattern {
public:
    explicit FilePattern(const QString& pattern);

    bool Matches(QStringView name) const;

private:
    struct Wildcard {
        QString text;
        // "*" and characters behind it that are no wildcards, as nearly all are: only the end is compared.
        bool isEnding = false;
    };

    std::vector<Wildcard> wildcards_;
};
