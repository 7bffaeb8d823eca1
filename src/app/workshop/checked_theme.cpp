// Looking up the values of a theme that is being checked, and adding findings.
#include "app/workshop/checked_theme.h"

#include "app/workshop/theme_key_list.h"
#include "core/path_text.h"
#include "core/run_time_error.h"
#include "rendering/text.h"

#include <QFontMetricsF>

#include <algorithm>

namespace {

const QString kBoard = QStringLiteral("keyboard");

int BoardCount(const CheckedTheme& theme, const QString& key) {
    return std::clamp(NumberOf(theme, kBoard, key).value_or(0), 0, kMostBoardKeys);
}

} // namespace

QString NameOfKey(const QString& section, const QString& key) {
    return section.toCaseFolded() + u'\n' + key.toCaseFolded();
}

void TellKey(CheckedTheme& theme, Level level, const ThemePlace& place, const QString& text,
             const QString& advice) {
    const QString where = place.prefix.isEmpty() ? QStringLiteral("[%1]").arg(place.section)
                                                 : QStringLiteral("[%1] %2").arg(place.section, place.prefix);
    theme.findings.push_back(
        {level, Subject::kTheme, theme.file, QStringLiteral("%1: %2").arg(where, text), advice});
}

void TellFile(CheckedTheme& theme, Level level, const QString& name, const QString& text,
              const QString& advice) {
    theme.findings.push_back({level, Subject::kTheme, PathIn(theme.folder, name), text, advice});
}

std::optional<int> NumberOf(const CheckedTheme& theme, const QString& section, const QString& key) {
    const auto found = theme.numbers.constFind(NameOfKey(section, key));
    return found == theme.numbers.cend() ? std::nullopt : std::optional(*found);
}

QString TextOf(const CheckedTheme& theme, const QString& section, const QString& key) {
    return theme.texts.value(NameOfKey(section, key));
}

std::optional<QRect> BoxAt(const CheckedTheme& theme, const ThemePlace& place, const BoxEndings& endings) {
    const auto number = [&](const char* ending) {
        return NumberOf(theme, place.section, place.prefix + QLatin1StringView(ending));
    };
    const auto x = number(endings.x);
    const auto y = number(endings.y);
    const auto width = number(endings.width);
    const auto height = number(endings.height);
    return x && y && width && height ? std::optional(QRect(*x, *y, *width, *height)) : std::nullopt;
}

std::optional<ThemeStyle> StyleAt(const CheckedTheme& theme, const ThemePlace& place, bool isSelected) {
    const QString ending = isSelected ? QStringLiteral("Hilight") : QString();
    const auto points = NumberOf(theme, place.section, place.prefix + QStringLiteral("FontSize") + ending);
    if (!points) {
        return std::nullopt;
    }
    try {
        return ThemeStyle{
            TextOf(theme, place.section, place.prefix + QStringLiteral("Font") + ending), *points,
            ColourOf(TextOf(theme, place.section, place.prefix + QStringLiteral("FontColor") + ending))};
    } catch (const RunTimeError&) {
        return std::nullopt;
    }
}

double CapitalHeight(const ThemeStyle& style) {
    constexpr int kLargest = 4096;
    QFont font(style.font);
    font.setPixelSize(std::clamp(qRound(style.points * 96 / 72.0), 1, kLargest));
    return QFontMetricsF(font).tightBoundingRect(QStringLiteral("H")).height();
}

QImage PictureOf(const CheckedTheme& theme, const QString& name) {
    const auto found = theme.pictures.find(name);
    return found == theme.pictures.end() ? QImage() : found->second;
}

std::vector<SlotNumber> ShownSlots(const CheckedTheme& theme) {
    const int rows =
        NumberOf(theme, QStringLiteral("zonelist"), QStringLiteral("ZoneListNbTracksParColonne")).value_or(0);
    std::vector<SlotNumber> slots;
    for (int column = 1; column <= 2; ++column) {
        for (int row = 1; row <= std::min(rows, kSlotRows); ++row) {
            slots.push_back({column, row});
        }
    }
    return slots;
}

ThemePlace SlotPart(const SlotNumber& slot, const char* part) {
    return {SlotSection(slot.column, slot.row), QStringLiteral("ZoneListPiste") + QLatin1StringView(part)};
}

std::vector<BoardKey> BoardKeys(const CheckedTheme& theme) {
    std::vector<BoardKey> keys;
    const int lines = BoardCount(theme, QStringLiteral("KeyNbLines"));
    for (int line = 1; line <= lines; ++line) {
        const int columns = BoardCount(theme, QStringLiteral("KeyNbCols%1").arg(line));
        for (int column = 1; column <= columns; ++column) {
            const auto number = [&](const char* field) {
                return NumberOf(theme, kBoard, BoardKeyName(field, line, column));
            };
            const auto x = number("KeyX");
            const auto y = number("KeyY");
            const auto width = number("KeyW");
            const auto height = number("KeyH");
            const auto code = number("KeyKey");
            if (x && y && width && height && code) {
                keys.push_back({line, column, QRect(*x, *y, *width, *height), *code});
            }
        }
    }
    return keys;
}

QString BoardKeyName(const char* field, int line, int column) {
    return QStringLiteral("%1%2-%3").arg(QLatin1StringView(field)).arg(line).arg(column);
}

QString WordsOfBox(const QRect& box) {
    return QStringLiteral("%1,%2 %3x%4").arg(box.x()).arg(box.y()).arg(box.width()).arg(box.height());
}
