// Showing a theme in a window: loading it, choosing a situation, painting picture and words.
#include "app/workshop/watch_window.h"

#include "app/cabinet/environment.h"
#include "app/findings/finding_report.h"
#include "app/start/standard_error.h"
#include "app/workshop/theme_check.h"
#include "core/path_text.h"
#include "platform/posix/termination_signals.h"

#include <QApplication>
#include <QFileInfo>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <array>

namespace {

constexpr std::array kSizes = {QSize(1920, 1080), QSize(1366, 768), QSize(1280, 1024), QSize(1080, 1920)};
constexpr int kBarHeight = 26;
constexpr int kMargin = 24;
constexpr int kMostWords = 30;

int Wrapped(int index, int count) {
    return (index + count) % count;
}

std::int64_t Count(const std::vector<Finding>& findings, Level level) {
    return std::count_if(findings.begin(), findings.end(),
                         [=](const Finding& finding) { return finding.level == level; });
}

// Where a finding is: the name of its file, and what happens there.
QString Line(const Finding& finding) {
    return QStringLiteral("%1: %2").arg(NameOfPath(finding.path), finding.text);
}

} // namespace

WatchWindow::WatchWindow(const QString& themeFolder, const QString& music)
    : folder_(themeFolder), stage_(themeFolder, music), watch_(themeFolder, [this] { Load(); }) {
    resize(1280, 720 + kBarHeight);
    QPalette black = palette();
    black.setColor(QPalette::Window, Qt::black);
    setPalette(black);
    Load();
}

void WatchWindow::Load() {
    // Fonts that were replaced must not stay installed under the same name.
    QFontDatabase::removeAllApplicationFonts();
    findings_ = CheckTheme(folder_);
    Show();
}

// A theme with errors is not shown: they may end the jukebox, or keep it from ever drawing a picture.
void WatchWindow::Show() {
    fault_.clear();
    if (Count(findings_, Level::kError) == 0) {
        const auto& situation = Situations()[static_cast<std::size_t>(situation_)];
        StagePicture shown = stage_.Play(situation, kSizes[static_cast<std::size_t>(size_)]);
        fault_ = shown.fault;
        picture_ = shown.picture.isNull() || !fault_.isEmpty() ? picture_ : std::move(shown.picture);
    }
    setWindowTitle(Place());
    update();
}

void WatchWindow::Choose(int situation, int size) {
    situation_ = Wrapped(situation, static_cast<int>(Situations().size()));
    size_ = Wrapped(size, static_cast<int>(kSizes.size()));
    Show();
}

QString WatchWindow::Place() const {
    const QSize& size = kSizes[static_cast<std::size_t>(size_)];
    return QStringLiteral("%1 - %2x%3").arg(NameOfPath(folder_)).arg(size.width()).arg(size.height());
}

QString WatchWindow::Bar() const {
    const Situation& situation = Situations()[static_cast<std::size_t>(situation_)];
    return QStringLiteral("%1 - %2/%3 %4   |   %5   |   Left/Right or 1-9: situation"
                          "   Up/Down: size   W: warnings   Esc: end")
        .arg(Place())
        .arg(situation_ + 1)
        .arg(Situations().size())
        .arg(situation.words)
        .arg(SummaryOf({Count(findings_, Level::kNote), Count(findings_, Level::kWarning),
                        Count(findings_, Level::kError)}));
}

// What has to be said over the picture; empty when nothing has.
QStringList WatchWindow::Words() const {
    QStringList words;
    if (!fault_.isEmpty()) {
        words += fault_;
    }
    const bool hasErrors = Count(findings_, Level::kError) > 0;
    for (const Finding& finding : findings_) {
        if (finding.level == Level::kError || showsWarnings_) {
            words += Line(finding);
        }
    }
    if (hasErrors) {
        words.prepend(QStringLiteral("The jukebox cannot use this theme:"));
    } else if (showsWarnings_ && words.isEmpty()) {
        words += QStringLiteral("There is nothing to complain about.");
    }
    if (words.size() > kMostWords) {
        const qsizetype more = words.size() - kMostWords;
        words = words.first(kMostWords) + QStringList{QStringLiteral("... and %1 more").arg(more)};
    }
    return words;
}

void WatchWindow::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QRect area(0, 0, width(), std::max(height() - kBarHeight, 1));
    const QSize scaled = picture_.size().scaled(area.size(), Qt::KeepAspectRatio);
    if (!picture_.isNull()) {
        painter.drawImage(QPoint((area.width() - scaled.width()) / 2, (area.height() - scaled.height()) / 2),
                          picture_.scaled(scaled, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
    const QStringList words = Words();
    QFont font = painter.font();
    font.setPixelSize(15);
    painter.setFont(font);
    if (!words.isEmpty()) {
        painter.fillRect(area, QColor(0, 0, 0, 205));
        painter.setPen(QColor(255, 220, 120));
        painter.drawText(area.adjusted(kMargin, kMargin, -kMargin, -kMargin), Qt::TextWordWrap,
                         words.join(QStringLiteral("\n\n")));
    }
    font.setPixelSize(13);
    painter.setFont(font);
    painter.fillRect(0, area.height(), width(), kBarHeight, QColor(38, 40, 44));
    painter.setPen(QColor(230, 230, 230));
    painter.drawText(QRect(8, area.height(), width() - 16, kBarHeight), Qt::AlignVCenter | Qt::TextSingleLine,
                     Bar());
}

void WatchWindow::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key >= Qt::Key_1 && key <= Qt::Key_9) {
        return Choose(key - Qt::Key_1, size_);
    }
    switch (key) {
    case Qt::Key_Left:
        return Choose(situation_ - 1, size_);
    case Qt::Key_Right:
        return Choose(situation_ + 1, size_);
    case Qt::Key_Up:
        return Choose(situation_, size_ - 1);
    case Qt::Key_Down:
        return Choose(situation_, size_ + 1);
    case Qt::Key_W:
        showsWarnings_ = !showsWarnings_;
        return update();
    case Qt::Key_Escape:
        close();
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

int WatchTheme(const QString& themeFolder, const QString& music, char** argv) {
    constexpr int kCannotWatch = 2;
    const QString display = MissingDisplay();
    if (!display.isEmpty() || !QFileInfo(themeFolder).isDir()) {
        TellStandardError(display.isEmpty() ? QStringLiteral("there is no folder \"%1\"").arg(themeFolder)
                                            : display);
        return kCannotWatch;
    }
    PinEnvironment();
    PinLocale(argv);
    return RunWithToolkit(argv, [&] {
        QApplication::setQuitOnLastWindowClosed(true);
        WatchWindow window(themeFolder, music);
        // Without it a signal would leave the temporary folder of the window's stage.
        const TerminationWish wish([] { QApplication::quit(); });
        window.show();
        return QApplication::exec();
    });
}
