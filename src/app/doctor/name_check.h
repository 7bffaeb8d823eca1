// Checking the titles that names become.
#pragma once

#include <QSet>
#include <QString>

struct CheckedFolder;

// The characters that were looked up so far, so that each is looked up and reported once.
struct SeenCharacters {
    QSet<char32_t> seen;
};

// Reports titles that stop the program with the theme that is loaded, names whose bytes are not UTF-8, and
// characters that no font has. Requires a loaded theme.
void CheckNames(const CheckedFolder& checked, SeenCharacters& characters);
