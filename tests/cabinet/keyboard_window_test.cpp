// Tests of the on-screen keyboard's window: what it shows, how it handles keys and pointer, when it closes.
#include "platform/qt/keyboard_window.h"

#include "core/run_time_error.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/qt_windows.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include <gtest/gtest.h>

#include <vector>

namespace {

constexpr QRgb kBlack = 0xFF000000;
constexpr QRgb kRed = 0xFFC00000;
constexpr QRgb kBlue = 0xFF0000C0;

QImage Filled(int width, int height, QRgb color) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

class KeyboardWindowTest : public testing::Test {
protected:
    KeyboardWindowTest() : window(pump) {
        pump.SetSink([this](const InputEvent& event) { events.push_back(event); });
        window.setGeometry(0, 0, 320, 240);
        window.SetPicture(Filled(100, 50, kRed), {110, 95});
    }

    QRgb Shown(int x, int y) { return window.grab().toImage().pixel(x, y) | 0xFF000000U; }
    void Mouse(QEvent::Type type, double x, double y, Qt::MouseButton button) {
        QMouseEvent event(type, QPointF(x, y), QPointF(x, y), button, button, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &event);
    }
    const std::vector<InputEvent>& Handed() {
        pump.DoEvents();
        return events;
    }

    QtEventPump pump;
    KeyboardWindow window;
    std::vector<InputEvent> events;
};

TEST_F(KeyboardWindowTest, ShowsThePictureOverTheGroundAndBlackBeyondIt) {
    window.SetGround(Filled(320, 120, kBlue));
    EXPECT_EQ(Shown(110, 95), kRed);
    EXPECT_EQ(Shown(209, 144), kRed);
    EXPECT_EQ(Shown(109, 95), kBlue);
    EXPECT_EQ(Shown(210, 119), kBlue);
    EXPECT_EQ(Shown(10, 120), kBlack);
}

TEST_F(KeyboardWindowTest, ThePictureStaysTheCallers) {
    QImage picture = Filled(100, 50, kBlue);
    window.SetPicture(picture, {0, 0});
    uchar* const pixels = picture.bits();
    std::fill(pixels, pixels + picture.sizeInBytes(), uchar{0});
    EXPECT_EQ(Shown(5, 5), kBlue);
}

TEST_F(KeyboardWindowTest, PressesCountFromThePictureAndAroundItTheyAreBeside) {
    Mouse(QEvent::MouseButtonPress, 110, 95, Qt::LeftButton);
    Mouse(QEvent::MouseButtonPress, 109, 95, Qt::LeftButton);
    Mouse(QEvent::MouseButtonPress, 210, 144, Qt::RightButton);
    Mouse(QEvent::MouseButtonRelease, 115, 100, Qt::LeftButton);
    Mouse(QEvent::MouseButtonPress, 110, 95, Qt::BackButton);
    ASSERT_EQ(Handed().size(), 4U);
    EXPECT_EQ(events[0].kind, InputKind::kMouseDown);
    EXPECT_EQ(events[0].x, 0);
    EXPECT_EQ(events[0].y, 0);
    EXPECT_EQ(events[1].kind, InputKind::kMouseBeside);
    EXPECT_EQ(events[2].kind, InputKind::kMouseBeside);
    EXPECT_EQ(events[2].button, 2);
    EXPECT_EQ(events[3].kind, InputKind::kMouseUp);
    EXPECT_EQ(events[3].x, 5);
}

TEST_F(KeyboardWindowTest, TheSecondPressOfADoubleClickIsAPress) {
    Mouse(QEvent::MouseButtonDblClick, 120, 100, Qt::LeftButton);
    ASSERT_EQ(Handed().size(), 1U);
    EXPECT_EQ(events[0].kind, InputKind::kMouseDown);
    EXPECT_EQ(events[0].x, 10);
}

TEST_F(KeyboardWindowTest, KeysBecomeVirtualKeyCodesAndTabIsOneOfThem) {
    for (const int key : {Qt::Key_Return, Qt::Key_Tab, Qt::Key_Left}) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &event);
    }
    ASSERT_EQ(Handed().size(), 3U);
    EXPECT_EQ(events[0].code, 13);
    EXPECT_EQ(events[1].code, 9);
    EXPECT_EQ(events[2].code, 37);
}

TEST_F(KeyboardWindowTest, ACloseRequestIsAWishAndTheWindowStays) {
    window.show();
    window.close();
    EXPECT_TRUE(window.isVisible());
    ASSERT_EQ(Handed().size(), 1U);
    EXPECT_EQ(events[0].kind, InputKind::kClose);
}

class QtDialogsTest : public testing::Test {
protected:
    static QWidget* Keyboard() {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->windowModality() == Qt::ApplicationModal) {
                return widget;
            }
        }
        return nullptr;
    }

    QtEventPump pump;
    QtWindows windows{pump, nullptr};
    bool open = false;
    int loads = 0;
    QtDialogs dialogs{windows,
                      pump,
                      {{QStringLiteral("Form_KeyBoard"),
                        {.load =
                             [this] {
                                 open = true;
                                 ++loads;
                             },
                         .isOpen = [this] { return open; }}}}};
};

TEST_F(QtDialogsTest, TheKeyboardTakesEventsUntilItIsClosed) {
    int taken = 0;
    pump.SetSink([&](const InputEvent& event) {
        EXPECT_TRUE(Keyboard()->isVisible());
        if (event.kind == InputKind::kKeyDown) {
            ++taken;
            open = event.code != 27;
        }
    });
    for (const int code : {37, 39, 27}) {
        pump.Post({.kind = InputKind::kKeyDown, .code = code});
    }
    dialogs.ShowModal(QStringLiteral("Form_KeyBoard"));
    EXPECT_EQ(taken, 3);
    EXPECT_EQ(loads, 1);
    EXPECT_FALSE(Keyboard()->isVisible());
}

TEST_F(QtDialogsTest, TheKeyboardIsGoneWhenTheProgramStopsUnderIt) {
    pump.SetSink([](const InputEvent& /*event*/) {
        throw ProgramStop(RunTimeError(kTypeMismatch, QString()), QStringLiteral("here"));
    });
    pump.Post({.kind = InputKind::kKeyDown, .code = 1});
    EXPECT_THROW(dialogs.ShowModal(QStringLiteral("Form_KeyBoard")), ProgramStop);
    EXPECT_FALSE(Keyboard()->isVisible());
}

TEST_F(QtDialogsTest, ADialogWithoutAWindowClosesAtOnce) {
    dialogs.ShowModal(QStringLiteral("Form_Config"));
    EXPECT_EQ(loads, 0);
}

} // namespace
