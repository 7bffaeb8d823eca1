// Titles, artists and track numbers from file names.
#include "rendering/titles.h"

#include "core/conversions.h"
#include "rendering/text.h"

const QStringList& TitleEndings() {
    static const QStringList endings = {
        QStringLiteral(".avi"),  QStringLiteral(".mpg"), QStringLiteral(".mp4"),  QStringLiteral(".mp3"),
        QStringLiteral(".flac"), QStringLiteral(".wma"), QStringLiteral(".vtxpl")};
    return endings;
}

QString CleanTitle(QString title, const QStringList& endings) {
    title.replace(u'_', u' ');
    title.replace(QStringLiteral("-"), QStringLiteral(" - "));
    title.replace(QStringLiteral("  "), QStringLiteral(" "));
    for (const QString& ending : endings) {
        title.remove(ending);
    }
    return title;
}

void SplitAtDash(TitleParts& parts) {
    const qsizetype dash = parts.Titre.indexOf(u'-');
    if (dash < 0) {
        return;
    }
    parts.Interprete = Trim(parts.Titre.left(dash));
    parts.Titre = Trim(parts.Titre.mid(dash + 1));
}

TitleParts BlockTitle(const QString& title, const QStringList& endings) {
    TitleParts parts{CleanTitle(StripAccents(title), endings), QString()};
    SplitAtDash(parts);
    // Deliberate D-15: here a number above 0 and below 1000 counts as a track number, for every entry. One
    // would expect the track zone's own test; the two differ, and files in the field are named for both.
    const double number = Val(parts.Interprete);
    if (number > 0 && number < 1000) {
        parts.Interprete.clear();
    }
    SplitAtDash(parts);
    return {parts.Titre.toUpper(), parts.Interprete.toUpper()};
}
