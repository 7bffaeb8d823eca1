// Building the window of Form_Config from its pages.
#include "platform/qt/config_window.h"

#include "platform/qt/config_pages.h"
#include "platform/qt/dialog_style.h"
#include "platform/qt/dialog_widgets.h"
#include "platform/qt/page_rows.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int kWidth = 1100;
constexpr int kHeight = 760;
// The widest title in characters of average width.
constexpr int kTitleWidth = 11;

// A portrait screen has room for a higher window.
QSize WindowSize(const QSize& screen) {
    return {kWidth, std::max(kHeight, screen.height() * 3 / 5)};
}

} // namespace

ConfigWindow::ConfigWindow(QtEventPump& pump, ControlLooks looks, const QRect& screen)
    : DialogWindow(pump, std::move(looks), QStringLiteral("Form_Config"), screen, WindowSize(screen.size())),
      titles_(new QListWidget), pages_(new QStackedWidget) {
    setWindowTitle(QStringLiteral("Vantorix Jukebox - configuration"));
    const int text = DialogTextSize(screen.size());
    const int titles = text * kTitleWidth;

    auto* side = new QFrame;
    SetRole(side, "bar");
    side->setFixedWidth(titles + 12);
    auto* sideColumn = new QVBoxLayout(side);
    sideColumn->setContentsMargins(6, 16, 6, 6);
    auto* title = new WrapLabel(QStringLiteral("Configuration"));
    SetRole(title, "title");
    title->setContentsMargins(8, 0, 0, 8);
    sideColumn->addWidget(title);
    sideColumn->addWidget(titles_, 1);
    titles_->setObjectName(QStringLiteral("pages"));

    const int pageWidth = width() - side->width() - kFingerTarget;
    AddPage(QStringLiteral("Music and theme"), MusicPage(*this));
    AddPage(QStringLiteral("Screen and video"), ScreenPage(*this));
    AddPage(QStringLiteral("Zones and covers"), ZonesPage(*this));
    AddPage(QStringLiteral("Coins and sounds"), CoinsPage(*this));
    AddPage(QStringLiteral("Keys"), KeysPage(*this, pageWidth / text));
    AddPage(QStringLiteral("Slots"), SlotsPage(*this));
    connect(titles_, &QListWidget::currentRowChanged, pages_, &QStackedWidget::setCurrentIndex);
    titles_->setCurrentRow(0);

    auto* right = new QVBoxLayout;
    right->setSpacing(0);
    right->addWidget(pages_, 1);
    right->addWidget(ButtonBar());
    auto* all = new QHBoxLayout(this);
    all->setContentsMargins(1, 1, 1, 1);
    all->setSpacing(0);
    all->addWidget(side);
    all->addLayout(right, 1);
    titles_->setFocus();
}

void ConfigWindow::AddPage(const QString& title, QWidget* page) {
    titles_->addItem(title);
    // Not the layout's alignment: that would cut rows whose text needs more lines than their size hint has.
    ColumnOf(page)->addStretch();
    SetRole(page, "page");
    pages_->addWidget(new ScrollPlace(page));
}

QWidget* ConfigWindow::ButtonBar() {
    auto* bar = new QFrame;
    SetRole(bar, "bar");
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(16, 10, 16, 10);
    row->setSpacing(12);
    auto* missing = new WrapLabel(QStringLiteral("Choose a music folder first."));
    missing->setObjectName(QStringLiteral("missing"));
    SetRole(missing, "explanation");
    Watch({QStringLiteral("Command_OK")}, [missing](const ControlLook& look) {
        if (missing->isHidden() != look.enabled) {
            missing->setVisible(!look.enabled);
        }
    });
    QPushButton* cancel = AddButton({QStringLiteral("Command_Cancel")}, QStringLiteral("Cancel"));
    QPushButton* ok = AddButton({QStringLiteral("Command_OK")}, QStringLiteral("OK"));
    SetRole(ok, "main");
    for (QPushButton* button : {cancel, ok}) {
        button->setMinimumWidth(130);
    }
    row->addWidget(missing, 1);
    row->addStretch();
    row->addWidget(cancel);
    row->addWidget(ok);
    return bar;
}
