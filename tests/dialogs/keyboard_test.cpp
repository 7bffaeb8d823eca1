// The on-screen keyboard where the console cannot observe it: the log, the frames shown, odd themes.
#include "dialogs/keyboard.h"

#include "shell/handle_event.h"
#include "support/error_of.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kEscape = 27;
constexpr int kEnter = 13;
constexpr int kLeft = 37;
constexpr int kUp = 38;
constexpr int kRight = 39;

class KeyboardTest : public testing::Test {
protected:
    void Open() {
        box.Start();
        form.keyboard.KeyboardTitle = u"Title"_s;
        form.keyboard.KeyboardText = u"ab"_s;
        form.keyboard.KeyboardButton = u"go"_s;
        before = box.Log().size();
        Form_KeyBoard_Load(form);
    }
    void Press(int code) { Form_KeyBoard_KeyDown(form, code, 0); }
    QStringList LogSinceOpening() const { return box.Log().mid(before); }

    Jukebox box;
    Form_Main& form = box.form;
    qsizetype before = 0;
};

TEST_F(KeyboardTest, TheLogTellsOpeningTextAndEndAndNoDrawing) {
    Open();
    Press(kLeft);
    Press(kEnter);
    EXPECT_EQ(LogSinceOpening(),
              (QStringList{u" : Fenetre Clavier"_s, u" : Saisie ab"_s, u" : Quitter fenetre clavier"_s}));
    EXPECT_EQ(form.keyboard.KeyboardResult, 1);
}

TEST_F(KeyboardTest, LeavingItTellsNoText) {
    Open();
    Press(kEscape);
    EXPECT_EQ(LogSinceOpening(), (QStringList{u" : Fenetre Clavier"_s, u" : Quitter fenetre clavier"_s}));
    EXPECT_EQ(form.keyboard.KeyboardResult, 0);
    EXPECT_EQ(form.keyboard.KeyboardText, u"ab"_s);
}

TEST_F(KeyboardTest, APressBesideTellsTheEnd) {
    Open();
    Form_KeyBoard_MouseDown(form);
    EXPECT_EQ(LogSinceOpening().last(), u" : Quitter fenetre clavier"_s);
    EXPECT_FALSE(form.shell.Form_KeyBoard.Visible);
}

TEST_F(KeyboardTest, OpeningForgetsTheLastResultAndSelection) {
    Open();
    Press(kLeft);
    Press(kEnter);
    Form_KeyBoard_Load(form);
    EXPECT_EQ(form.keyboard.KeyboardResult, 0);
    EXPECT_EQ(form.keyboard.KeyboardSelLine, 1);
    EXPECT_EQ(form.keyboard.KeyboardSelCol, 1);
}

TEST_F(KeyboardTest, EachChangeIsShownAndAKeyWithoutAMeaningIsNot) {
    Open();
    EXPECT_EQ(box.platform.windows.keyboardRefreshes, 1);
    EXPECT_EQ(box.platform.windows.keyboardPlace, QRect(140, 70, 360, 220));
    Press(kRight);
    EXPECT_EQ(box.platform.windows.keyboardRefreshes, 2);
    Press('Z');
    EXPECT_EQ(box.platform.windows.keyboardRefreshes, 2);
    Picture_Keyboard_MouseDown(form, 1, 0, 20, 60);
    Picture_Keyboard_MouseUp(form, 1, 0, 20, 60);
    EXPECT_EQ(box.platform.windows.keyboardRefreshes, 4);
}

TEST_F(KeyboardTest, AKeysLeftAndTopEdgesBelongToIt) {
    Open();
    form.keyboard.KeyboardText.clear();
    Picture_Keyboard_MouseDown(form, 1, 0, 12, 54);
    Picture_Keyboard_MouseDown(form, 1, 0, 41.5, 81.5);
    EXPECT_EQ(form.keyboard.KeyboardText, u"00"_s);
    Picture_Keyboard_MouseDown(form, 1, 0, 42, 60);
    Picture_Keyboard_MouseDown(form, 1, 0, 20, 82);
    EXPECT_EQ(form.keyboard.KeyboardText, u"00"_s);
}

TEST_F(KeyboardTest, OfTwoKeysThatOverlapTheFirstIsHit) {
    box.SetTheme(u"keyboard"_s, u"KeyX1-2"_s, u"12"_s);
    Open();
    Picture_Keyboard_MouseDown(form, 1, 0, 20, 60);
    EXPECT_EQ(form.keyboard.KeyboardText, u"ab0"_s);
}

TEST_F(KeyboardTest, WhileItIsOpenNoKeyOrPressReachesTheMainForm) {
    box.Track(u"a.mp3"_s);
    box.Track(u"b.mp3"_s);
    Open();
    form.shell.IdleTicks = 50;
    for (const InputKind kind : {InputKind::kKeyDown, InputKind::kMouseDown, InputKind::kMouseMove,
                                 InputKind::kMouseUp, InputKind::kDblClick}) {
        InputEvent event;
        event.kind = kind;
        event.code = kRight;
        event.x = 1;
        event.y = 1;
        EXPECT_FALSE(HandleEvent(form, event));
    }
    EXPECT_EQ(form.shell.IdleTicks, 50);
    EXPECT_EQ(form.cursor.SelX, 1);
    EXPECT_EQ(form.touch.TouchLastX, 0);
    EXPECT_EQ(form.keyboard.KeyboardSelCol, 2);
}

TEST_F(KeyboardTest, ABoardWithoutLinesIsHarmless) {
    box.SetTheme(u"keyboard"_s, u"KeyNbLines"_s, u"0"_s);
    Open();
    for (const int code : {kLeft, kRight, kUp, 40, kLeft, kUp}) {
        Press(code);
    }
    Picture_Keyboard_MouseDown(form, 1, 0, 20, 60);
    EXPECT_TRUE(form.shell.Form_KeyBoard.Visible);
    Press(kEscape);
    EXPECT_FALSE(form.shell.Form_KeyBoard.Visible);
}

TEST_F(KeyboardTest, ALineWithoutKeysSelectsNone) {
    box.SetTheme(u"keyboard"_s, u"KeyNbCols5"_s, u"-5"_s);
    Open();
    Press(kUp);
    EXPECT_EQ(form.keyboard.KeyboardSelCol, -5);
    EXPECT_EQ(ErrorOf([&] { Press(kEnter); }), kSubscriptOutOfRange);
    EXPECT_TRUE(form.shell.Form_KeyBoard.Visible);
}

TEST_F(KeyboardTest, ABoxWithoutRoomForThreeDotsEndsTheProgram) {
    box.SetTheme(u"keyboard"_s, u"TexteW"_s, u"3"_s);
    const std::optional<ProgramStop> stop = StopOf([&] { Open(); });
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->error.number, kInvalidProcedureCall);
}

TEST_F(KeyboardTest, AFaultOfItsThemeIsTheKeyboards) {
    box.RemoveTheme(u"keyboard"_s, u"KeyNbCols3"_s);
    const std::optional<ProgramStop> stop = StopOf([&] { Open(); });
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->routine, u"Form_KeyBoard"_s);
    EXPECT_EQ(stop->error.number, kTypeMismatch);
    EXPECT_FALSE(form.shell.Form_KeyBoard.Visible);
}

TEST_F(KeyboardTest, ALogThatCannotBeWrittenEndsTheProgramAtItsOpening) {
    box.Start();
    box.platform.failures.Add(u"Append"_s);
    const std::optional<ProgramStop> stop = StopOf([&] { Form_KeyBoard_Load(form); });
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->error.number, kPathFileAccess);
}

} // namespace
