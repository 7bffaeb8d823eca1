// The controls of the dialogs: which dialog an event reaches, and the entries of the lists.
#include "dialogs/controls.h"

#include "core/run_time_error.h"
#include "support/dialog_box.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class ControlsTest : public DialogBox {
protected:
    void Send(const InputEvent& event) { EXPECT_FALSE(HandleEvent(form, event)); }
};

TEST_F(ControlsTest, AnEventOfAClosedDialogHasNoEffect) {
    Open();
    const InputEvent typing =
        Event(InputKind::kControlSet, u"Form_Config"_s, u"Text_PositionLeft"_s, -1, u"5"_s);
    const InputEvent ok = Event(InputKind::kControlClick, u"Form_Config"_s, u"Command_OK"_s);
    Click(u"Command_Cancel"_s);
    const int writes = files.Calls("Write");
    Send(typing);
    Send(ok);
    EXPECT_EQ(form.config.Text_PositionLeft, QString());
    EXPECT_EQ(files.Calls("Write"), writes);
    EXPECT_FALSE(box.Log().contains(u" : Modification config"_s));
}

TEST_F(ControlsTest, AnEventOfAnotherDialogHasNoEffect) {
    Open();
    // The buttons of these dialogs have the same names.
    Send(Event(InputKind::kControlClick, u"Form_SelectDirectory"_s, u"Command_Cancel"_s));
    Send(Event(InputKind::kControlClick, u"Form_KeyAssign"_s, u"Command_Cancel"_s));
    Send(Event(InputKind::kControlClick, QString(), u"Command_Cancel"_s));
    EXPECT_TRUE(form.config.Visible);
    inDialog = [&] {
        Send(Event(InputKind::kControlClick, u"Form_Config"_s, u"Command_Cancel"_s));
        Send(Event(InputKind::kControlClick, u"Form_Config"_s, u"Command_KeyAssign"_s, 1));
        EXPECT_TRUE(form.config.Visible);
        EXPECT_EQ(form.keyAssign.KeyAssignIndex, 0);
    };
    Click(u"Command_KeyAssign"_s, 0);
    EXPECT_TRUE(form.config.Visible);
}

TEST_F(ControlsTest, APressOnThePictureHasNoEffectBehindADialog) {
    box.Track(u"a.mp3"_s);
    Open();
    form.shell.IdleTicks = 50;
    form.shell.InputBusy = 0;
    const auto press = [&] {
        for (const InputKind kind : {InputKind::kMouseDown, InputKind::kMouseBeside, InputKind::kMouseMove,
                                     InputKind::kMouseUp, InputKind::kDblClick}) {
            InputEvent event;
            event.kind = kind;
            event.button = 1;
            event.x = 20;
            event.y = 20;
            Send(event);
        }
    };
    press();
    inDialog = press;
    Click(u"Command_KeyAssign"_s, 0);
    Click(u"Command_Select"_s);
    EXPECT_EQ(form.shell.IdleTicks, 50);
    EXPECT_EQ(form.queue.PlaylistCount, 0);
    EXPECT_EQ(form.touch.TouchLastX, 0);
    EXPECT_EQ(form.keyAssign.KeyAssignCode, -1);
    EXPECT_TRUE(form.config.Visible);
}

TEST_F(ControlsTest, ARequestToCloseEndsTheProgramFromADialog) {
    Open();
    InputEvent event;
    event.kind = InputKind::kClose;
    EXPECT_THROW(HandleEvent(form, event), ProgramEnd);
}

TEST_F(ControlsTest, TheThemesAreListedInNameOrder) {
    for (const QString& name : {u"Zebra"_s, u"apple"_s, u".hidden"_s, u"Émile"_s}) {
        QDir().mkpath(box.Home(u"themes/"_s + name));
    }
    QFile(box.Home(u"themes/readme.txt"_s)).open(QIODevice::WriteOnly);
    Open();
    const ControlLook look = Look(u"Combo_Theme"_s);
    EXPECT_EQ(look.entries, (QStringList{u"apple"_s, u"default"_s, u"Émile"_s, u"Zebra"_s}));
    EXPECT_EQ(look.value, u"default"_s);
}

TEST_F(ControlsTest, TheOrdersAreListed) {
    Open();
    EXPECT_EQ(Look(u"Combo_DefaultOrder"_s).entries, (QStringList{u"Alpha"_s, u"Playing Count"_s}));
}

TEST_F(ControlsTest, AYesOrNoControlIsASwitch) {
    Open();
    for (const QString& control : {u"Option_ManageCoin"_s, u"Check_Tactile"_s}) {
        EXPECT_TRUE(Look(control).isSwitch);
    }
    EXPECT_TRUE(Look(u"Option_Orientation"_s, 1).isSwitch);
    EXPECT_FALSE(Look(u"Text_PositionLeft"_s).isSwitch);
}

TEST_F(ControlsTest, TwoOfThreeDialogsIgnoreKeys) {
    Open();
    form.shell.InputBusy = 0;
    const auto row = form.cursor.SelY;
    const auto keys = [&] {
        for (const int code : {13, 27, 40, 120}) {
            Key(code);
        }
    };
    keys();
    EXPECT_TRUE(form.config.Visible);
    EXPECT_EQ(LogSinceOpening(), QStringList{u" : Fenetre de Config"_s});
    inDialog = [&] {
        keys();
        EXPECT_TRUE(form.folderDialog.Visible);
    };
    Click(u"Command_Select"_s);
    EXPECT_EQ(form.cursor.SelY, row);
}

} // namespace
