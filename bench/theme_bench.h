// The CPU time of the first frame, a whole frame and a page turn with every delivered theme.
#pragma once

#include <QString>
#include <QStringList>

// The names of the themes in `homeFolder`, sorted.
QStringList ThemesOf(const QString& homeFolder);

// Prints a row for each theme of `homeFolder` and each of three sizes of the screen.
void BenchThemes(const QString& homeFolder);
