// Measuring titles in the theme's font, and looking their characters up.
#include "app/doctor/name_check.h"

#include "app/doctor/checked_folder.h"
#include "app/doctor/conversion.h"
#include "app/doctor/library_walk.h"
#include "app/findings/finding_report.h"
#include "core/path_text.h"
#include "core/run_time_error.h"
#include "rendering/slot_title.h"
#include "rendering/track_slot.h"
#include "state/form_main.h"

#include <algorithm>
#include <array>

namespace {

// A lone half of a surrogate pair, which represents a byte.
bool IsByte(QChar c) {
    return c.unicode() >= 0xDC80 && c.unicode() <= 0xDCFF;
}

bool HasBrokenBytes(const QString& name) {
    for (qsizetype i = 0; i < name.size(); ++i) {
        if (IsByte(name[i]) && (i == 0 || !name[i - 1].isHighSurrogate())) {
            return true;
        }
    }
    return false;
}

// The narrowest box for titles of the slots that the theme shows. Entries move from slot to slot when files
// are added.
Integer16 NarrowestTitle(Form_Main& form) {
    const int rows = form.theme.ZoneListNbTracksParColonne.value();
    Integer16 narrowest = form.slots.ZoneListPisteTitre(1, 1).W;
    for (int column = 1; column <= 2; ++column) {
        for (int row = 1; row <= rows; ++row) {
            narrowest = std::min(narrowest, form.slots.ZoneListPisteTitre(column, row).W);
        }
    }
    return narrowest;
}

SlotWords WordsOf(const CheckedFolder& checked, const ListLine& line) {
    SlotWords words = WordsOfSlot(line.type, line.title);
    if (words.parts.Interprete.isEmpty() && line.type == u"dir") {
        // A folder that vanishes meanwhile has no second line.
        PassOver([&] { words.parts.Interprete = FolderSummary(checked.form, line.path, words.parts.Titre); });
    }
    return words;
}

void CheckWidth(const CheckedFolder& checked, const ListLine& line, const SlotWords& words, Integer16 width) {
    if (!StopsAtTitle(checked.form, words.parts, width)) {
        return;
    }
    checked.report.Add(
        {Level::kError, Subject::kMusic, line.path,
         QStringLiteral(
             "The program stops when this title is shown: the first word of \"%1\" is wider than the "
             "narrowest box of the theme \"%2\" (%3 pixels), and a title with a second line is broken "
             "only at blanks.")
             .arg(words.parts.Titre, checked.form.settings.Theme)
             .arg(width.value()),
         QStringLiteral("Rename it with a blank within the long word, or shorten the word: mv -i %1 ...")
             .arg(ShellQuoted(line.path)),
         QStringLiteral("title too wide")});
}

void CheckGlyphs(const CheckedFolder& checked, const ListLine& line, const QString& text,
                 SeenCharacters& characters) {
    QString missing;
    for (const char32_t character : text.toUcs4()) {
        const bool isByte = character >= 0xDC80 && character <= 0xDCFF;
        if (character < 0x80 || isByte || characters.seen.contains(character)) {
            continue;
        }
        characters.seen.insert(character);
        if (QChar::isPrint(character) && !HasGlyph(checked.form.frame.Picture_Cache, character)) {
            missing += QStringLiteral("%1 (U+%2) ")
                           .arg(QString::fromUcs4(&character, 1))
                           .arg(static_cast<uint>(character), 4, 16, QLatin1Char('0'));
        }
    }
    if (!missing.isEmpty()) {
        checked.report.Add(
            {Level::kWarning, Subject::kMusic, line.path,
             QStringLiteral("The screen shows boxes in place of characters that no installed font has: %1")
                 .arg(missing.trimmed()),
             QStringLiteral(
                 "Install a font that has them, for instance the package fonts-noto, or rename the file."),
             QStringLiteral("missing glyph")});
    }
}

void CheckBytes(const CheckedFolder& checked, const ListLine& line) {
    if (HasBrokenBytes(line.title)) {
        checked.report.Add(
            {Level::kWarning, Subject::kMusic, line.path,
             QStringLiteral(
                 "The title has wrong characters, because the bytes of the name are not UTF-8. The entry is "
                 "listed and plays."),
             QStringLiteral("Convert the name: convmv -f latin1 -t utf8 --notest %1")
                 .arg(ShellQuoted(line.path)),
             QStringLiteral("broken bytes")});
    }
}

} // namespace

void CheckNames(const CheckedFolder& checked, SeenCharacters& characters) {
    const Integer16 width = NarrowestTitle(checked.form);
    for (const ListLine& line : checked.form.library.List_List) {
        CheckBytes(checked, line);
        const SlotWords words = WordsOf(checked, line);
        CheckWidth(checked, line, words, width);
        CheckGlyphs(checked, line, words.parts.Titre + words.parts.Interprete, characters);
    }
}
