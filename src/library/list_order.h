// The order of a folder's names and of the list's lines.
#pragma once

#include <QStringList>

#include <vector>

struct ListLine;

// Both orders use the system's collation, ascending, without case.

// Names that differ only in case are ordered by the codes of their characters.
void SortNames(QStringList& names);

// Sorts by the whole text of the lines. Equal lines keep the order in which they were found.
void SortLines(std::vector<ListLine>& lines);
