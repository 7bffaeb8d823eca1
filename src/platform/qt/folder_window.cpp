// Building the window of Form_SelectDirectory.
#include "platform/qt/folder_window.h"

#include "platform/qt/dialog_style.h"
#include "platform/qt/dialog_widgets.h"
#include "platform/qt/folder_view.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr QSize kSize(820, 680);
constexpr int kPathLines = 2;

const ControlName kDrive = {QStringLiteral("Drive1")};
const ControlName kFolders = {QStringLiteral("Dir1")};

} // namespace

FolderWindow::FolderWindow(QtEventPump& pump, ControlLooks looks, const QRect& screen)
    : DialogWindow(pump, std::move(looks), QStringLiteral("Form_SelectDirectory"), screen, kSize) {
    setWindowTitle(QStringLiteral("Vantorix Jukebox - folder"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(20, 16, 20, 16);
    column->setSpacing(10);
    auto* title = new WrapLabel(QStringLiteral("Choose the music folder"));
    SetRole(title, "title");
    column->addWidget(title);

    auto* drives = new QHBoxLayout;
    auto* caption = new QLabel(QStringLiteral("Drive"));
    SetRole(caption, "caption");
    drives->addWidget(caption);
    drives->addWidget(AddChoice(kDrive), 1);
    column->addLayout(drives);

    auto* folders = new FolderView;
    AddOther(kFolders, folders,
             [folders](const ControlLook& look) { folders->SetFolders(look.entries, look.value); });
    folders->onHighlight = [this](const QString& path) { PostSet(kFolders, path); };
    folders->onOpen = [this](const QString& path) { PostDoubleClick(kFolders, path); };
    column->addWidget(folders, 1);

    auto* chosen = new WrapLabel;
    chosen->setObjectName(QStringLiteral("chosen"));
    Watch(kFolders, [chosen](const ControlLook& look) {
        if (chosen->text() != look.value) {
            chosen->setText(look.value);
        }
    });
    SetRole(chosen, "caption");
    column->addWidget(NewScrolled(chosen, kPathLines));
    auto* note = new WrapLabel(QStringLiteral("A double click, the right arrow or Open shows what is in a "
                                              "folder. OK takes the highlighted folder."));
    SetRole(note, "explanation");
    column->addWidget(note);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(12);
    auto* open = new QPushButton(QStringLiteral("Open"));
    open->setObjectName(QStringLiteral("open"));
    connect(open, &QPushButton::clicked, folders, [folders] {
        if (!folders->Highlighted().isEmpty()) {
            folders->onOpen(folders->Highlighted());
        }
    });
    QPushButton* cancel = AddButton({QStringLiteral("Command_Cancel")}, QStringLiteral("Cancel"));
    QPushButton* ok = AddButton({QStringLiteral("Command_OK")}, QStringLiteral("OK"));
    SetRole(ok, "main");
    for (QPushButton* button : {open, cancel, ok}) {
        button->setMinimumWidth(120);
    }
    buttons->addWidget(open);
    buttons->addStretch();
    buttons->addWidget(cancel);
    buttons->addWidget(ok);
    column->addLayout(buttons);
    folders->setFocus();
}
