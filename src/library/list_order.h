// The order of a folder's names and of the list's lines.
#pragma once

#include <QStringList>

#include <vector>

struct ListLine;

// Both orders are the system's collation, ascending, without case.

// Names that are equal but for their case stand in the order of their characters' numbers.
void SortNames(QStringList& names);

// By the whole text of the lines; equal lines stay in the order in which they were found.
void SortLines(std::vector<ListLine>& lines);
