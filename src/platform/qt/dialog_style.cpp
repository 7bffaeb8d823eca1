// Writing the style sheet of the dialogs.
#include "platform/qt/dialog_style.h"

#include <QSize>

#include <algorithm>
#include <utility>

namespace {

constexpr int kSmallestText = 14;
constexpr int kLargestText = 20;
// Lines of text on the height of a screen.
constexpr int kLines = 60;

// Words that begin with "@" are colours and sizes. A border keeps its width when it becomes the focus ring,
// so that nothing moves.
constexpr auto kSheet = R"(
QWidget { font-family: "Roboto", "DejaVu Sans"; font-size: @sizepx; color: @text; }
QWidget[role="window"] { background: @ground; border: 1px solid @edge; }
QLabel { background: transparent; }
QLabel[role="title"] { font-size: @titlepx; font-weight: 500; color: @amber; }
QLabel[role="heading"] { font-size: @headingpx; font-weight: 500; color: @amber; padding-top: 10px; }
QLabel[role="caption"] { font-weight: 500; }
QLabel[role="explanation"] { color: @soft; }
QLabel[role="value"] { background: @field; border: 2px solid @line; border-radius: 6px; padding: 6px 10px; }
QLabel[role="value"]:focus { border-color: @amber; }
QLabel[role="action"] { font-size: @headingpx; font-weight: 500; }
QLabel[role="prompt"] { font-size: @promptpx; font-weight: 500; color: @amber; }
QLabel[warns="true"] { color: @warning; }
QLabel:disabled { color: @disabled; }
QFrame[role="row"] { border: none; border-bottom: 1px solid @line; }
QFrame[role="bar"] { background: @bar; border: none; }
QLineEdit { background: @field; border: 2px solid @edge; border-radius: 6px; padding: 4px 6px; min-height: 28px;
    selection-background-color: @amber; selection-color: @onamber; }
QLineEdit:focus { border-color: @amber; }
QLineEdit:disabled { color: @disabled; border-color: @line; }
QPushButton { background: @field; border: 2px solid @edge; border-radius: 6px; padding: 4px 14px; min-height: 32px; }
QPushButton:hover { background: @hover; }
QPushButton:focus { border-color: @amber; }
QPushButton:pressed { background: @chosen; }
QPushButton:disabled { color: @disabled; border-color: @line; }
QPushButton[role="main"] { background: @amber; color: @onamber; border-color: @amber; font-weight: 500; }
QPushButton[role="main"]:hover, QPushButton[role="main"]:pressed { background: @amber; border-color: @edge; }
QPushButton[role="main"]:focus { border-color: @text; }
QPushButton[role="main"]:disabled { background: @field; color: @disabled; border-color: @line; }
QComboBox { combobox-popup: 0; }
QListView { background: @field; border: 2px solid @edge; border-radius: 6px; outline: none; }
QListView:focus { border-color: @amber; }
QListView::item { min-height: @targetpx; padding-left: 8px; padding-right: 8px; color: @text;
    background: transparent; border: 2px solid transparent; border-radius: 6px; }
QListView::item:hover { background: @hover; }
QListView::item:selected { background: @chosen; color: @amber; }
QListView#pages { background: transparent; border: none; }
QListView#pages::item { padding-left: 6px; }
QListView#pages::item:selected:focus { border-color: @amber; }
QComboBox QListView { border-radius: 0; border-color: @amber; }
QScrollArea { background: transparent; border: none; }
QWidget[role="page"] { background: transparent; }
QAbstractScrollArea::corner { background: transparent; border: none; }
QScrollBar:vertical { background: transparent; width: @targetpx; margin: 0; }
QScrollBar:horizontal { background: transparent; height: @targetpx; margin: 0; }
QScrollBar::handle:vertical { background: @edge; border-radius: 6px; min-height: @targetpx; margin: 2px 16px; }
QScrollBar::handle:horizontal { background: @edge; border-radius: 6px; min-width: @targetpx; margin: 16px 2px; }
QScrollBar::handle:pressed { background: @amber; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
)";

QString Pixels(double size) {
    return QString::number(qRound(size));
}

} // namespace

int DialogTextSize(const QSize& screen) {
    return std::clamp(screen.height() / kLines, kSmallestText, kLargestText);
}

QString DialogStyleSheet(int textSize) {
    using Colors = DialogColors;
    // A word that begins with another one comes before it.
    const std::array<std::pair<const char*, QString>, 18> words = {{
        {"@ground", QColor(Colors::kGround).name()},
        {"@bar", QColor(Colors::kBar).name()},
        {"@field", QColor(Colors::kField).name()},
        {"@hover", QColor(Colors::kHover).name()},
        {"@chosen", QColor(Colors::kChosen).name()},
        {"@line", QColor(Colors::kLine).name()},
        {"@edge", QColor(Colors::kEdge).name()},
        {"@text", QColor(Colors::kText).name()},
        {"@soft", QColor(Colors::kSoft).name()},
        {"@disabled", QColor(Colors::kDisabled).name()},
        {"@amber", QColor(Colors::kAmber).name()},
        {"@onamber", QColor(Colors::kOnAmber).name()},
        {"@warning", QColor(Colors::kWarning).name()},
        {"@size", Pixels(textSize)},
        {"@title", Pixels(textSize * 1.5)},
        {"@heading", Pixels(textSize * 1.2)},
        {"@prompt", Pixels(textSize * 2.0)},
        {"@target", Pixels(kFingerTarget)},
    }};
    QString sheet = QString::fromLatin1(kSheet);
    for (const auto& [word, value] : words) {
        sheet.replace(QLatin1String(word), value);
    }
    return sheet;
}
