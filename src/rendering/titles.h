// Titles, artists and track numbers out of file names.
#pragma once

#include <QString>
#include <QStringList>

// What a file's name tells.
struct TitleParts {
    QString Titre;
    QString Interprete;
};

// The endings that a title loses.
// Deliberate D-16: ".wav" is not among them, and an ending in capitals stays as well. One expects every
// ending to go; titles in the field are named by it.
const QStringList& TitleEndings();

// "_" to " ", "-" to " - ", two blanks to one, then each ending of `endings` to nothing: in this order,
// case-sensitive.
QString CleanTitle(QString title, const QStringList& endings);

// Splits the title at its first "-": what stands before it, trimmed, replaces the artist, what stands behind
// it the title. Without "-" nothing changes.
void SplitAtDash(TitleParts& parts);

// A title as the Main block and the queue show it: without accents, cleaned, split twice, a track number from
// 1 to 999 dropped, in capitals.
TitleParts BlockTitle(const QString& title, const QStringList& endings);
