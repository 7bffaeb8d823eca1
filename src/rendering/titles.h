// Titles, artists and track numbers from file names.
#pragma once

#include <QString>
#include <QStringList>

// The parts of a file's name.
struct TitleParts {
    QString Titre;
    QString Interprete;
};

// Returns the endings that are removed from titles.
// Deliberate D-16: ".wav" is not among them, and an ending in capitals is kept as well. One would expect
// every ending to be removed; files in the field are named for this.
const QStringList& TitleEndings();

// Replaces "_" with " ", "-" with " - " and two blanks with one, then removes each of `endings` wherever it
// occurs: in this order, case-sensitive.
QString CleanTitle(QString title, const QStringList& endings);

// Splits the title at its first "-": the text before it, trimmed, becomes the artist, the text after it the
// title. Does nothing without a "-".
void SplitAtDash(TitleParts& parts);

// Returns a title as the Main block and the queue show it: without accents, cleaned, split twice, without a
// track number from 1 to 999, in capitals.
TitleParts BlockTitle(const QString& title, const QStringList& endings);
