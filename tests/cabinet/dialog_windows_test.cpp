// Tests of the dialogs' windows: what they show and which events they post.
#include "platform/qt/config_window.h"
#include "platform/qt/folder_view.h"
#include "platform/qt/folder_window.h"
#include "platform/qt/key_window.h"

#include "core/run_time_error.h"
#include "dialog_model.h"
#include "platform/qt/dialog_style.h"
#include "platform/qt/dialog_widgets.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/qt_windows.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

constexpr QRect kScreen(0, 0, 1280, 720);

void Press(QWidget& widget, int key, const QString& text = {}, bool repeated = false) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text, repeated);
    QCoreApplication::sendEvent(&widget, &event);
}

void DoubleClick(QWidget& widget, const QPointF& at) {
    QMouseEvent event(QEvent::MouseButtonDblClick, at, widget.mapToGlobal(at), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

template <typename Window>
class DialogTest : public testing::Test {
protected:
    explicit DialogTest(DialogModel shown)
        : model(std::move(shown)),
          window(
              pump, [this](const ControlName& name) { return model.Look(name); }, kScreen) {
        pump.SetSink([this](const InputEvent& event) { events.push_back(event); });
        window.Refresh();
        window.show();
        window.activateWindow();
        QCoreApplication::processEvents();
    }

    template <typename Widget = QWidget>
    Widget& At(const char* name) {
        auto* widget = window.template findChild<Widget*>(QLatin1String(name));
        if (widget == nullptr) {
            throw std::runtime_error(name);
        }
        return *widget;
    }
    // What has been posted since the last call, as "set NAME VALUE", "click NAME", "double NAME", "key CODE".
    QStringList Posted() {
        events.clear();
        pump.DoEvents();
        QStringList words;
        for (const InputEvent& event : events) {
            words.append(WordsOf(event));
        }
        return words;
    }
    static QString WordsOf(const InputEvent& event) {
        const QString name = TextOfControl(event.control);
        switch (event.kind) {
        case InputKind::kControlSet:
            return QStringLiteral("set %1 %2").arg(name, event.value);
        case InputKind::kControlClick:
            return QStringLiteral("click %1").arg(name);
        case InputKind::kControlDoubleClick:
            return QStringLiteral("double %1").arg(name);
        case InputKind::kKeyDown:
            return QStringLiteral("key %1").arg(event.code);
        default:
            return QStringLiteral("other");
        }
    }
    static QStringList Only(const char* words) { return {QLatin1String(words)}; }

    DialogModel model;
    QtEventPump pump;
    std::vector<InputEvent> events;
    Window window;
};

class ConfigWindowTest : public DialogTest<ConfigWindow> {
protected:
    ConfigWindowTest() : DialogTest(ConfigModel(10)) {}

    void ShowPage(int page) {
        At<QListWidget>("pages").setCurrentRow(page);
        QCoreApplication::processEvents();
    }
};

class KeyWindowTest : public DialogTest<KeyWindow> {
protected:
    KeyWindowTest() : DialogTest(KeyModel()) {}
};

class FolderWindowTest : public DialogTest<FolderWindow> {
protected:
    FolderWindowTest() : DialogTest(FolderModel(3)) {}
};

} // namespace

TEST_F(ConfigWindowTest, EveryControlHasAWidgetOfItsName) {
    EXPECT_EQ(window.objectName(), u"Form_Config");
    EXPECT_EQ(window.windowTitle(), u"Vantorix Jukebox - configuration");
    EXPECT_EQ(model.looks.size(), 139U);
    for (const auto& [name, look] : model.looks) {
        EXPECT_EQ(window.findChildren<QWidget*>(name).size(), 1) << name.toStdString();
    }
}

TEST_F(ConfigWindowTest, ShowsValues) {
    EXPECT_EQ(At<QLabel>("Label_StartPath").text(), model["Label_StartPath"].value);
    EXPECT_EQ(At<QLineEdit>("Text_VideoPositionLeft").text(), u"1921");
    EXPECT_EQ(At<QComboBox>("Combo_Theme").currentText(), u"default");
    EXPECT_EQ(At<QComboBox>("Combo_Theme").count(), 2);
    EXPECT_TRUE(At<QCheckBox>("Option_ShowCover").isChecked());
    EXPECT_FALSE(At<QCheckBox>("Check_Tactile").isChecked());
    EXPECT_TRUE(At<QRadioButton>("Option_Orientation(0)").isChecked());
    EXPECT_EQ(At<QLabel>("Label_Key(7)").text(), u"Next zone :");
    EXPECT_EQ(At<QLabel>("Label_ZoneListDroite(9)").text(), u"[AP] + 10");
}

TEST_F(ConfigWindowTest, RefreshShowsWhatHasChangedAndPostsNothing) {
    model["Label_KeyValue(0)"].value = QStringLiteral("F12");
    model["Text_PositionTop"].value = QStringLiteral("7");
    model["Combo_Theme"].entries.append(QStringLiteral("new"));
    model["Combo_Theme"].value = QStringLiteral("new");
    model["Option_ManageCoin"].value = QStringLiteral("true");
    model["Option_Orientation(0)"].value = QStringLiteral("false");
    model["Option_Orientation(1)"].value = QStringLiteral("true");
    window.Refresh();
    EXPECT_EQ(At<QLabel>("Label_KeyValue(0)").text(), u"F12");
    EXPECT_EQ(At<QLineEdit>("Text_PositionTop").text(), u"7");
    EXPECT_EQ(At<QComboBox>("Combo_Theme").currentText(), u"new");
    EXPECT_TRUE(At<QCheckBox>("Option_ManageCoin").isChecked());
    EXPECT_FALSE(At<QRadioButton>("Option_Orientation(0)").isChecked());
    EXPECT_TRUE(At<QRadioButton>("Option_Orientation(1)").isChecked());
    EXPECT_EQ(Posted(), QStringList());
}

TEST_F(ConfigWindowTest, AnEmptyValueOfAListIsNoSelection) {
    model["Combo_Theme"].value.clear();
    window.Refresh();
    EXPECT_EQ(At<QComboBox>("Combo_Theme").currentIndex(), -1);
}

TEST_F(ConfigWindowTest, AMissingFolderIsRedAndOkIsDisabledWithAReason) {
    EXPECT_FALSE(At("missing").isVisible());
    const QColor normal = At("Label12").palette().color(QPalette::WindowText);
    EXPECT_EQ(normal.rgb(), DialogColors::kText);
    model["Label12"].warns = true;
    model["Command_OK"].enabled = false;
    window.Refresh();
    EXPECT_EQ(At("Label12").palette().color(QPalette::WindowText), QColor(255, 0, 0));
    EXPECT_FALSE(At("Command_OK").isEnabled());
    EXPECT_TRUE(At("missing").isVisible());
    model["Label12"].warns = false;
    model["Command_OK"].enabled = true;
    window.Refresh();
    EXPECT_EQ(At("Label12").palette().color(QPalette::WindowText), normal);
    EXPECT_TRUE(At("Command_OK").isEnabled());
    EXPECT_FALSE(At("missing").isVisible());
}

TEST_F(ConfigWindowTest, RowsBeyondThoseOfTheThemeAreHidden) {
    ShowPage(5);
    EXPECT_TRUE(At("Text_ZoneListGauche(9)").isVisible());
    for (const char* kind : {"Text", "Label", "Command"}) {
        const QString name = QLatin1String(kind) + QStringLiteral("_ZoneListGauche(9)");
        model.looks[name].visible = false;
    }
    window.Refresh();
    EXPECT_FALSE(At("Text_ZoneListGauche(9)").isVisible());
    EXPECT_FALSE(At("Label_ZoneListGauche(9)").isVisible());
    EXPECT_FALSE(At("Command_ZoneListGauche(9)").isVisible());
    EXPECT_TRUE(At("Text_ZoneListGauche(8)").isVisible());
}

TEST_F(ConfigWindowTest, ANewPictureIsShown) {
    QWidget& view = At("Image_Theme");
    const auto color = [&] { return view.grab().toImage().pixel(view.width() / 2, view.height() / 2); };
    EXPECT_EQ(color(), 0xFF402010);
    QImage blue(1000, 900, QImage::Format_RGB32);
    blue.fill(Qt::blue);
    model["Image_Theme"].picture = std::make_shared<const QImage>(blue);
    window.Refresh();
    EXPECT_EQ(color(), 0xFF0000FF);
    model["Image_Theme"].picture.reset();
    window.Refresh();
    EXPECT_NE(color(), 0xFF0000FF);
}

TEST_F(ConfigWindowTest, EachKindOfControlPostsWhatIsDoneWithIt) {
    Press(At("Text_PositionLeft"), Qt::Key_4, QStringLiteral("4"));
    EXPECT_EQ(Posted(), Only("set Text_PositionLeft 4"));
    At<QPushButton>("Command_Select").click();
    EXPECT_EQ(Posted(), Only("click Command_Select"));
    At<QPushButton>("Command_KeyAssign(14)").click();
    EXPECT_EQ(Posted(), Only("click Command_KeyAssign(14)"));
    At<QCheckBox>("Option_ShowCover").click();
    EXPECT_EQ(Posted(), Only("set Option_ShowCover false"));
    At<QCheckBox>("Check_Tactile").click();
    EXPECT_EQ(Posted(), Only("set Check_Tactile true"));
    At<QRadioButton>("Option_Orientation(1)").click();
    EXPECT_EQ(Posted(), Only("set Option_Orientation(1) true"));
    Press(At("Combo_Theme"), Qt::Key_Down);
    EXPECT_EQ(Posted(), Only("set Combo_Theme touch"));
    DoubleClick(At("Label_ZoneListGauche(3)"), {5, 5});
    EXPECT_EQ(Posted(), Only("double Label_ZoneListGauche(3)"));
    Press(At("Label_ZoneListDroite(0)"), Qt::Key_Delete);
    EXPECT_EQ(Posted(), Only("double Label_ZoneListDroite(0)"));
    At<QPushButton>("Command_ZoneListDroite(0)").click();
    EXPECT_EQ(Posted(), Only("click Command_ZoneListDroite(0)"));
}

TEST_F(ConfigWindowTest, AFieldWithTheFocusKeepsWhatIsTyped) {
    ShowPage(1);
    auto& field = At<QLineEdit>("Text_PositionLeft");
    field.setFocus();
    ASSERT_TRUE(field.hasFocus());
    Press(field, Qt::Key_4, QStringLiteral("4"));
    window.Refresh();
    EXPECT_EQ(field.text(), u"4");
    At("Text_PositionTop").setFocus();
    window.Refresh();
    EXPECT_EQ(field.text(), QString()) << "without the focus it shows what the dialog holds";
}

TEST_F(ConfigWindowTest, EnterPressesTheFocusedButtonAndOtherwiseOk) {
    At("Command_Select").setFocus();
    Press(At("Command_Select"), Qt::Key_Return);
    EXPECT_EQ(Posted(), Only("click Command_Select"));
    At("pages").setFocus();
    Press(At("pages"), Qt::Key_Enter);
    EXPECT_EQ(Posted(), Only("click Command_OK"));
    ShowPage(1);
    for (const char* name : {"Text_PositionLeft", "Check_Tactile", "Option_Orientation(0)"}) {
        At(name).setFocus();
        Press(At(name), Qt::Key_Return);
        EXPECT_EQ(Posted(), Only("click Command_OK")) << name;
    }
    ShowPage(0);
    At("Combo_Theme").setFocus();
    Press(At("Combo_Theme"), Qt::Key_Return);
    EXPECT_EQ(Posted(), Only("click Command_OK"));
    model["Command_OK"].enabled = false;
    window.Refresh();
    Press(At("Combo_Theme"), Qt::Key_Return);
    EXPECT_EQ(Posted(), QStringList());
}

TEST_F(ConfigWindowTest, EscapeAndTheCloseButtonAreCancel) {
    for (const char* name : {"pages", "Combo_Theme", "Command_OK", "Command_Select"}) {
        At(name).setFocus();
        Press(At(name), Qt::Key_Escape);
        EXPECT_EQ(Posted(), Only("click Command_Cancel")) << name;
    }
    window.close();
    EXPECT_EQ(Posted(), Only("click Command_Cancel"));
    EXPECT_TRUE(window.isVisible());
}

TEST_F(ConfigWindowTest, AHeldKeyOfAnotherWindowDoesNothing) {
    At("Command_OK").setFocus();
    Press(At("Command_OK"), Qt::Key_Return, {}, true);
    Press(window, Qt::Key_Return, {}, true);
    Press(window, Qt::Key_Escape, {}, true);
    EXPECT_EQ(Posted(), QStringList());
}

TEST_F(ConfigWindowTest, APageIsDraggedByItsWords) {
    ShowPage(5);
    QWidget* label = At("Label_ZoneListGauche(0)").parentWidget()->findChild<QLabel*>(QString());
    const auto& place = *qobject_cast<QScrollArea*>(label->parentWidget()->parentWidget()->parentWidget());
    const auto mouse = [&](QEvent::Type type, const QPointF& at) {
        QMouseEvent event(type, at, label->mapToGlobal(QPointF()) + at, Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(label, &event);
    };
    ASSERT_GT(place.verticalScrollBar()->maximum(), 20);
    mouse(QEvent::MouseButtonPress, {5, 30});
    mouse(QEvent::MouseMove, {5, 10});
    EXPECT_EQ(place.verticalScrollBar()->value(), 20);
    mouse(QEvent::MouseMove, {5, 10 + 15 + 20});
    EXPECT_EQ(place.verticalScrollBar()->value(), 5) << "counted from where the label is now";
}

TEST_F(ConfigWindowTest, NothingHasAContextMenu) {
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, {1, 1}, widget->mapToGlobal(QPoint(1, 1)));
        QCoreApplication::sendEvent(widget, &event);
        ASSERT_EQ(QApplication::activePopupWidget(), nullptr) << widget->objectName().toStdString();
    }
}

TEST_F(ConfigWindowTest, TabLeadsThroughTheFieldsOfTheSlotsInTheirOrder) {
    ShowPage(5);
    At("Text_ZoneListGauche(0)").setFocus();
    for (int row = 1; row < 10; ++row) {
        Press(*QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget()->objectName(),
                  QStringLiteral("Text_ZoneListGauche(%1)").arg(row));
    }
    Press(*QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), u"Text_ZoneListDroite(0)");
}

TEST_F(KeyWindowTest, TakesTheFirstFreshPressOfAKeyThatHasACode) {
    EXPECT_EQ(At<QLabel>("Label1").text(), u"Press any Key");
    EXPECT_EQ(At<QLabel>("Label_Key").text(), u"Configuration");
    Press(window, Qt::Key_Return, {}, true);
    Press(window, Qt::Key_MediaPlay);
    EXPECT_EQ(Posted(), QStringList());
    Press(window, Qt::Key_F9);
    Press(window, Qt::Key_F10);
    EXPECT_EQ(Posted(), Only("key 120"));
}

TEST_F(KeyWindowTest, TakesTheFirstFreshPressOfAGamepad) {
    window.TakeGamepadKey(195, true);
    EXPECT_EQ(Posted(), QStringList());
    window.TakeGamepadKey(196, false);
    window.TakeGamepadKey(197, false);
    EXPECT_EQ(Posted(), Only("key 196"));
}

TEST(KeyWindowKeysTest, EveryKeyIsTaken) {
    const DialogModel model = KeyModel();
    const std::vector<std::pair<int, int>> keys = {
        {Qt::Key_Tab, 9},     {Qt::Key_Shift, 16},  {Qt::Key_Escape, 27},
        {Qt::Key_Return, 13}, {Qt::Key_Space, 32},  {Qt::Key_Alt, 18},
        {Qt::Key_Down, 40},   {Qt::Key_Backtab, 9}, {Qt::Key_Menu, -1}};
    for (const auto& [key, code] : keys) {
        QtEventPump pump;
        std::vector<int> codes;
        pump.SetSink([&](const InputEvent& event) {
            codes.push_back(event.kind == InputKind::kKeyDown ? event.code : 1000);
        });
        KeyWindow window(
            pump, [&](const ControlName& name) { return model.Look(name); }, kScreen);
        window.Refresh();
        window.show();
        Press(window, key);
        pump.DoEvents();
        EXPECT_EQ(codes, code < 0 ? std::vector<int>() : std::vector{code}) << key;
    }
}

TEST_F(KeyWindowTest, CancelIsReachedByPointerOnly) {
    auto& cancel = At<QPushButton>("Command_Cancel");
    EXPECT_EQ(cancel.focusPolicy(), Qt::NoFocus);
    EXPECT_TRUE(window.hasFocus());
    cancel.click();
    EXPECT_EQ(Posted(), Only("click Command_Cancel"));
    window.close();
    EXPECT_EQ(Posted(), Only("click Command_Cancel"));
}

TEST_F(FolderWindowTest, ShowsTheFoldersAndTheHighlight) {
    auto& folders = At<FolderView>("Dir1");
    EXPECT_EQ(folders.model()->rowCount(), 6);
    EXPECT_EQ(folders.model()->index(0, 0).data().toString(), u"/");
    EXPECT_EQ(folders.model()->index(5, 0).data().toString(), u"Folder 2");
    EXPECT_EQ(folders.Highlighted(), u"/media/jukebox");
    EXPECT_EQ(At<QLabel>("chosen").text(), u"/media/jukebox");
    model["Dir1"].value = QStringLiteral("/media/jukebox/Folder 1");
    window.Refresh();
    EXPECT_EQ(folders.Highlighted(), u"/media/jukebox/Folder 1");
    EXPECT_EQ(Posted(), QStringList());
}

TEST_F(FolderWindowTest, HighlightingAndOpeningAFolderArePosted) {
    auto& folders = At<FolderView>("Dir1");
    Press(folders, Qt::Key_Down);
    EXPECT_EQ(Posted(), Only("set Dir1 /media/jukebox/Folder 0"));
    Press(folders, Qt::Key_Right);
    EXPECT_EQ(Posted(), Only("double Dir1"));
    At<QPushButton>("open").click();
    EXPECT_EQ(Posted(), Only("double Dir1"));
    const QRect row = folders.visualRect(folders.currentIndex());
    DoubleClick(*folders.viewport(), row.center());
    EXPECT_EQ(Posted(), Only("double Dir1"));
    EXPECT_EQ(events.back().value, u"/media/jukebox/Folder 0");
    Press(folders, Qt::Key_Left);
    EXPECT_EQ(Posted(),
              (QStringList{QStringLiteral("set Dir1 /media/jukebox"), QStringLiteral("double Dir1")}));
}

TEST_F(FolderWindowTest, EnterIsOkAndEscapeIsCancel) {
    Press(At("Dir1"), Qt::Key_Return);
    EXPECT_EQ(Posted(), Only("click Command_OK"));
    Press(At("Dir1"), Qt::Key_Escape);
    EXPECT_EQ(Posted(), Only("click Command_Cancel"));
    Press(At("Drive1"), Qt::Key_Down);
    EXPECT_EQ(Posted(), Only("set Drive1 /home/jukebox"));
}

TEST_F(FolderWindowTest, ManyFoldersAreSharedAndNotReadAgain) {
    model = FolderModel(30'000);
    window.Refresh();
    auto& folders = At<FolderView>("Dir1");
    EXPECT_EQ(folders.model()->rowCount(), 30'003);
    int resets = 0;
    QObject::connect(folders.model(), &QAbstractItemModel::modelReset, &window, [&] { ++resets; });
    model["Dir1"].value = QStringLiteral("/media/jukebox/Folder 29999");
    window.Refresh();
    EXPECT_EQ(resets, 0);
    EXPECT_EQ(folders.Highlighted(), u"/media/jukebox/Folder 29999");
    EXPECT_TRUE(folders.viewport()->rect().intersects(folders.visualRect(folders.currentIndex())));
}

TEST_F(FolderWindowTest, StrangePathsAreShown) {
    model["Dir1"].entries = QStringList{QString(), QStringLiteral("no slash"), QStringLiteral("//"),
                                        QStringLiteral("/a\nb/c"), QString(60'000, u'/')};
    for (const QString& path : QStringList(model["Dir1"].entries)) {
        model["Dir1"].value = path;
        window.Refresh();
        window.grab();
        Press(At("Dir1"), Qt::Key_Left);
    }
    EXPECT_EQ(At<FolderView>("Dir1").model()->rowCount(), 5);
}

namespace {

class ModalDialogsTest : public testing::Test {
protected:
    DialogParts Parts(const QString& name, const DialogModel& model) {
        return {.load = [this, name] { open[name] = true; },
                .isOpen = [this, name] { return open[name]; },
                .look = [&model](const ControlName& control) { return model.Look(control); }};
    }
    static QWidget* Shown(const QString& name) {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == name && widget->isVisible()) {
                return widget;
            }
        }
        return nullptr;
    }

    const QString config = QStringLiteral("Form_Config");
    const QString key = QStringLiteral("Form_KeyAssign");
    const DialogModel configModel = ConfigModel(10);
    const DialogModel keyModel = KeyModel();
    std::map<QString, bool> open;
    QtEventPump pump;
    QtWindows windows{pump, nullptr};
    QtDialogs dialogs{windows, pump, {{config, Parts(config, configModel)}, {key, Parts(key, keyModel)}}};
};

} // namespace

TEST_F(ModalDialogsTest, ADialogOpensAboveAnotherAndGivesTheFocusBack) {
    QStringList steps;
    pump.SetSink([&](const InputEvent& event) {
        if (event.kind == InputKind::kControlClick && event.control.name == u"Command_KeyAssign") {
            pump.Post({.kind = InputKind::kKeyDown, .code = 65});
            dialogs.ShowModal(key);
            EXPECT_EQ(Shown(key), nullptr);
            QCoreApplication::processEvents();
            EXPECT_TRUE(Shown(config)->isActiveWindow());
            pump.Post({.kind = InputKind::kControlClick, .control = {QStringLiteral("Command_OK")}});
            steps.append(QStringLiteral("back"));
        } else if (event.kind == InputKind::kKeyDown) {
            EXPECT_NE(Shown(key), nullptr);
            EXPECT_NE(Shown(config), nullptr);
            EXPECT_EQ(QApplication::activeModalWidget(), Shown(key));
            open[key] = false;
            steps.append(QStringLiteral("key"));
        } else {
            open[config] = false;
            steps.append(QStringLiteral("ok"));
        }
    });
    pump.Post({.kind = InputKind::kControlClick, .control = {QStringLiteral("Command_KeyAssign"), 3}});
    dialogs.ShowModal(config);
    EXPECT_EQ(steps, (QStringList{QStringLiteral("key"), QStringLiteral("back"), QStringLiteral("ok")}));
    EXPECT_EQ(Shown(config), nullptr);
}

TEST_F(ModalDialogsTest, TheWindowIsGoneWhenTheProgramStopsUnderIt) {
    pump.SetSink([](const InputEvent& /*event*/) {
        throw ProgramStop(RunTimeError(kTypeMismatch, QString()), QStringLiteral("here"));
    });
    pump.Post({.kind = InputKind::kControlClick, .control = {QStringLiteral("Command_OK")}});
    EXPECT_THROW(dialogs.ShowModal(config), ProgramStop);
    EXPECT_EQ(Shown(config), nullptr);
}

TEST_F(ModalDialogsTest, WhatALookThrowsLeavesTheDialog) {
    QtDialogs failing(windows, pump,
                      {{config,
                        {.load = [this] { open[config] = true; },
                         .isOpen = [this] { return open[config]; },
                         .look = [](const ControlName& /*name*/) -> ControlLook {
                             throw RunTimeError(kTypeMismatch, QString());
                         }}}});
    EXPECT_THROW(failing.ShowModal(config), RunTimeError);
    EXPECT_EQ(Shown(config), nullptr);
}
