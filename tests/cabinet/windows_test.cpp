// Tests of the windows: what they show, how they handle keys and pointer, how they refuse to close.
#include "platform/qt/qt_windows.h"

#include "platform/qt/qt_event_pump.h"
#include "platform/qt/qt_message_box.h"

#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

QImage Frame(int width, int height, QRgb color) {
    QImage frame(width, height, QImage::Format_ARGB32_Premultiplied);
    frame.fill(color);
    return frame;
}

ShownVideo Video(const QImage& picture, const QRect& place, ShownVideo::Look look) {
    const auto owned = std::make_shared<QImage>(picture);
    return {.picture = {.pixels = {owned, owned->constBits()},
                        .size = picture.size(),
                        .bytesPerRow = static_cast<int>(picture.bytesPerLine()),
                        .shape = picture.size()},
            .place = place,
            .look = look};
}

// Counts how often a window is painted, and how much of it.
class Paints : public QObject {
public:
    explicit Paints(QWidget& window) { window.installEventFilter(this); }
    bool eventFilter(QObject* /*window*/, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            areas.push_back(static_cast<QPaintEvent*>(event)->rect());
        }
        return false;
    }

    std::vector<QRect> areas;
};

class MainWindowTest : public testing::Test {
protected:
    MainWindowTest() : window(pump) {
        pump.SetSink([this](const InputEvent& event) { events.push_back(event); });
        window.setGeometry(0, 0, 320, 240);
        window.show();
        while (!window.windowHandle()->isExposed()) {
            QCoreApplication::processEvents();
        }
    }

    QRgb Shown(int x, int y) { return window.grab().toImage().pixel(x, y) | 0xFF000000U; }
    void Key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, bool repeated = false) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, QString(), repeated);
        QCoreApplication::sendEvent(&window, &event);
    }
    void Mouse(QEvent::Type type, double x, double y, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent event(type, QPointF(x, y), QPointF(x, y), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &event);
    }
    const std::vector<InputEvent>& Handed() {
        pump.DoEvents();
        return events;
    }

    QtEventPump pump;
    MainWindow window;
    std::vector<InputEvent> events;
};

constexpr QRgb kBlack = 0xFF000000;
constexpr QRgb kRed = 0xFFC00000;
constexpr QRgb kBlue = 0xFF0000C0;

} // namespace

TEST_F(MainWindowTest, ShowsTheFrameAtItsPlaceWithBlackAround) {
    window.Refresh(Frame(100, 80, kRed), 60, 40);
    EXPECT_EQ(Shown(60, 40), kRed);
    EXPECT_EQ(Shown(159, 119), kRed);
    EXPECT_EQ(Shown(59, 40), kBlack);
    EXPECT_EQ(Shown(160, 119), kBlack);
    window.Refresh(Frame(100, 80, kBlue), 0, 0);
    EXPECT_EQ(Shown(0, 0), kBlue);
    EXPECT_EQ(Shown(120, 100), kBlack) << "nothing of the old place stays";
}

TEST_F(MainWindowTest, AFrameLargerThanTheWindowIsCut) {
    window.Refresh(Frame(1000, 900, kRed), -50, -60);
    EXPECT_EQ(Shown(0, 0), kRed);
    EXPECT_EQ(Shown(319, 239), kRed);
    window.Refresh(Frame(10, 10, kBlue), 5000, 5000);
    EXPECT_EQ(Shown(10, 10), kBlack);
    window.Refresh(QImage(), 0, 0);
    EXPECT_EQ(Shown(0, 0), kBlack);
}

TEST_F(MainWindowTest, PaintsChangedRowsBeforeItReturnsAndNothingElse) {
    QImage frame = Frame(320, 240, kRed);
    window.Refresh(frame, 0, 0);
    const Paints paints(window);
    window.Refresh(frame, 0, 0);
    EXPECT_TRUE(paints.areas.empty());
    frame.setPixel(5, 20, kBlue);
    frame.setPixel(300, 30, kBlue);
    window.Refresh(frame, 0, 0);
    ASSERT_EQ(paints.areas.size(), 1U);
    EXPECT_EQ(paints.areas[0], QRect(0, 20, 320, 11));
    EXPECT_EQ(Shown(300, 30), kBlue);
}

TEST_F(MainWindowTest, TheFrameStaysTheCallers) {
    QImage frame = Frame(320, 240, kRed);
    const uchar* pixels = frame.constBits();
    window.Refresh(frame, 0, 0);
    frame.setPixel(0, 0, kBlue);
    EXPECT_EQ(frame.constBits(), pixels) << "drawing on it again makes no copy";
    EXPECT_EQ(Shown(0, 0), kRed);
}

TEST_F(MainWindowTest, AFrameRefreshedBeforeTheWindowShowsIsThereWhenItDoes) {
    MainWindow hidden(pump);
    hidden.setGeometry(0, 0, 200, 100);
    hidden.Refresh(Frame(200, 100, kRed), 0, 0);
    hidden.show();
    EXPECT_EQ(hidden.grab().toImage().pixel(199, 99) | kBlack, kRed);
}

TEST_F(MainWindowTest, ASmallVideoKeepsItsProportionsAndLeavesTheFrameAroundIt) {
    window.Refresh(Frame(300, 200, kRed), 10, 20);
    window.SetVideo(Video(Frame(20, 10, kBlue), QRect(50, 50, 100, 100), ShownVideo::Look::kSmall));
    EXPECT_EQ(Shown(60, 69), kRed);
    EXPECT_EQ(Shown(60, 70), kBlue) << "the picture begins at the top of its place";
    EXPECT_EQ(Shown(159, 119), kBlue);
    EXPECT_EQ(Shown(59, 96), kRed);
    EXPECT_EQ(Shown(110, 120), kRed) << "the place below the picture";
    window.SetVideo(std::nullopt);
    EXPECT_EQ(Shown(60, 96), kRed);
}

TEST_F(MainWindowTest, ASmallVideoThatIsHighIsCentredAcrossWithBlackBesideIt) {
    window.Refresh(Frame(320, 240, kRed), 0, 0);
    window.SetVideo(Video(Frame(10, 20, kBlue), QRect(100, 40, 100, 80), ShownVideo::Look::kSmall));
    EXPECT_EQ(Shown(99, 60), kRed);
    EXPECT_EQ(Shown(100, 60), kBlack);
    EXPECT_EQ(Shown(129, 60), kBlack);
    EXPECT_EQ(Shown(130, 60), kBlue);
    EXPECT_EQ(Shown(169, 119), kBlue);
    EXPECT_EQ(Shown(199, 60), kBlack);
    EXPECT_EQ(Shown(200, 60), kRed);
}

TEST_F(MainWindowTest, AFullVideoHasBlackAround) {
    window.Refresh(Frame(320, 240, kRed), 0, 0);
    window.SetVideo(Video(Frame(20, 10, kBlue), QRect(50, 50, 100, 100), ShownVideo::Look::kFull));
    EXPECT_EQ(Shown(50, 74), kBlack) << "the bar above the picture";
    EXPECT_EQ(Shown(50, 75), kBlue);
    EXPECT_EQ(Shown(149, 124), kBlue);
    EXPECT_EQ(Shown(49, 96), kRed);
    EXPECT_EQ(Shown(100, 149), kBlack);
    EXPECT_EQ(Shown(100, 150), kRed);
}

TEST_F(MainWindowTest, AVideoWithoutAPictureIsBlack) {
    window.Refresh(Frame(320, 240, kRed), 0, 0);
    window.SetVideo(ShownVideo{.picture = {}, .place = QRect(10, 10, 50, 50)});
    EXPECT_EQ(Shown(10, 10), kBlack);
    EXPECT_EQ(Shown(59, 59), kBlack);
    EXPECT_EQ(Shown(60, 60), kRed);
}

TEST_F(MainWindowTest, PixelsOfAnotherShapeChangeTheProportions) {
    window.Refresh(Frame(320, 240, kRed), 0, 0);
    ShownVideo video = Video(Frame(10, 10, kBlue), QRect(0, 0, 100, 100), ShownVideo::Look::kSmall);
    video.picture.shape = QSize(20, 10);
    window.SetVideo(video);
    EXPECT_EQ(Shown(99, 49), kBlue);
    EXPECT_EQ(Shown(50, 50), kRed);
}

TEST_F(MainWindowTest, TheNextPictureOfAVideoPaintsItsOwnPixelsAtOnce) {
    window.Refresh(Frame(320, 240, kRed), 0, 0);
    window.SetVideo(Video(Frame(20, 10, kBlue), QRect(50, 50, 100, 100), ShownVideo::Look::kFull));
    pump.DoEvents();
    const Paints paints(window);
    window.SetVideo(Video(Frame(20, 10, kRed), QRect(50, 50, 100, 100), ShownVideo::Look::kFull));
    ASSERT_EQ(paints.areas.size(), 1U);
    EXPECT_EQ(paints.areas[0], QRect(50, 75, 100, 50));
}

// A place that is corrected at once, as each frame does with the small video's, is not seen.
TEST_F(MainWindowTest, ANewPlaceOfAVideoIsPaintedWithTheNextFrame) {
    QImage frame = Frame(320, 240, kRed);
    window.Refresh(frame, 0, 0);
    const QImage picture = Frame(20, 10, kBlue);
    window.SetVideo(Video(picture, QRect(0, 0, 100, 50), ShownVideo::Look::kSmall));
    pump.DoEvents();
    const Paints paints(window);
    window.SetVideo(Video(picture, QRect(0, 20, 100, 50), ShownVideo::Look::kSmall));
    window.SetVideo(Video(picture, QRect(200, 20, 100, 50), ShownVideo::Look::kSmall));
    EXPECT_TRUE(paints.areas.empty());
    frame.setPixel(319, 239, kBlue);
    window.Refresh(frame, 0, 0);
    QRegion painted;
    for (const QRect& area : paints.areas) {
        painted += area;
    }
    EXPECT_TRUE(painted.contains(QRect(200, 20, 100, 50)));
    EXPECT_TRUE(painted.contains(QPoint(0, 0)));
    EXPECT_EQ(Shown(0, 25), kRed);
    EXPECT_EQ(Shown(200, 20), kBlue);
}

TEST_F(MainWindowTest, AFrameIsNotPaintedOverAVideo) {
    window.Refresh(Frame(320, 240, kRed), 0, 0);
    window.SetVideo(Video(Frame(20, 10, kBlue), QRect(0, 0, 100, 50), ShownVideo::Look::kSmall));
    window.Refresh(Frame(320, 240, kBlack), 0, 0);
    EXPECT_EQ(Shown(50, 25), kBlue);
    EXPECT_EQ(Shown(50, 51), kBlack);
}

TEST_F(MainWindowTest, APictureOfItsPlacesSizeIsShownPixelByPixel) {
    QImage picture = Frame(32, 24, kBlue);
    picture.setPixel(3, 4, kRed);
    window.Refresh(Frame(320, 240, kBlack), 0, 0);
    window.SetVideo(Video(picture, QRect(10, 10, 32, 24), ShownVideo::Look::kFull));
    EXPECT_EQ(Shown(13, 14), kRed);
    EXPECT_EQ(Shown(12, 14), kBlue);
    EXPECT_EQ(Shown(14, 14), kBlue);
    EXPECT_EQ(Shown(13, 13), kBlue);
}

TEST_F(MainWindowTest, ANoticeHidesEverythingUntilItGoes) {
    window.Refresh(Frame(320, 240, kRed), 0, 0);
    window.SetNotice(Notice{.title = QStringLiteral("Title"),
                            .lines = {QString(5000, u'W'), QString()},
                            .hint = QStringLiteral("hint"),
                            .choices = {QStringLiteral("Yes"), QStringLiteral("No")}});
    EXPECT_NE(Shown(0, 0), kRed);
    EXPECT_NE(Shown(0, 0),
              Shown(ChoicePlaces(window.rect(), 2)[0].left(), ChoicePlaces(window.rect(), 2)[0].top()));
    window.SetNotice(std::nullopt);
    EXPECT_EQ(Shown(0, 0), kRed);
}

TEST_F(MainWindowTest, KeysBecomeVirtualKeyCodes) {
    Key(Qt::Key_Up);
    Key(Qt::Key_Up, Qt::NoModifier, true);
    Key(Qt::Key_Tab);
    Key(Qt::Key_8, Qt::KeypadModifier);
    Key(Qt::Key_MediaPlay);
    ASSERT_EQ(Handed().size(), 4U);
    EXPECT_EQ(events[0].code, 38);
    EXPECT_EQ(events[1].code, 38) << "a repeated key counts as a key";
    EXPECT_EQ(events[2].code, 9);
    EXPECT_EQ(events[3].code, 104);
}

TEST_F(MainWindowTest, PointerPositionsCountFromTheFrame) {
    window.Refresh(Frame(200, 100, kRed), 60, 40);
    Mouse(QEvent::MouseButtonPress, 70, 45, Qt::LeftButton, Qt::LeftButton);
    Mouse(QEvent::MouseMove, 20, 30, Qt::NoButton, Qt::LeftButton);
    Mouse(QEvent::MouseButtonRelease, 20, 30, Qt::LeftButton, Qt::NoButton);
    Mouse(QEvent::MouseButtonDblClick, 70, 45, Qt::LeftButton, Qt::LeftButton);
    Mouse(QEvent::MouseButtonPress, 71, 45, Qt::RightButton, Qt::RightButton);
    ASSERT_EQ(Handed().size(), 5U);
    EXPECT_EQ(events[0].kind, InputKind::kMouseDown);
    EXPECT_EQ(events[0].button, 1);
    EXPECT_EQ(events[0].x, 10);
    EXPECT_EQ(events[0].y, 5);
    EXPECT_EQ(events[1].x, -40) << "with a button held the pointer may leave the frame";
    EXPECT_EQ(events[1].button, 1);
    EXPECT_EQ(events[2].kind, InputKind::kMouseUp);
    EXPECT_EQ(events[3].kind, InputKind::kDblClick);
    EXPECT_EQ(events[4].button, 2);
}

TEST_F(MainWindowTest, ThePointerBesideTheFrameDoesNothing) {
    window.Refresh(Frame(100, 100, kRed), 100, 100);
    Mouse(QEvent::MouseButtonPress, 50, 50, Qt::LeftButton, Qt::LeftButton);
    Mouse(QEvent::MouseMove, 60, 60, Qt::NoButton, Qt::NoButton);
    Mouse(QEvent::MouseButtonDblClick, 60, 60, Qt::LeftButton, Qt::LeftButton);
    EXPECT_TRUE(Handed().empty());
}

TEST_F(MainWindowTest, ACloseRequestIsAWishAndTheWindowStays) {
    window.close();
    EXPECT_TRUE(window.isVisible());
    ASSERT_EQ(Handed().size(), 1U);
    EXPECT_EQ(events[0].kind, InputKind::kClose);
}

namespace {

class QtWindowsTest : public testing::Test {
protected:
    QtWindowsTest() {
        pump.SetSink([](const InputEvent&) {});
    }
    static QWidget* Main() {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (dynamic_cast<MainWindow*>(window) != nullptr) {
                return window;
            }
        }
        return nullptr;
    }

    static QWidget* Video() {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (dynamic_cast<VideoWindow*>(window) != nullptr) {
                return window;
            }
        }
        return nullptr;
    }

    QtEventPump pump;
    QtWindows windows{pump, nullptr};
};

} // namespace

TEST_F(QtWindowsTest, ThePointerOfTheScreenGoesBeforeThatOfTheForm) {
    windows.MousePointer(QStringLiteral("Form_Main"), kPointerCustom);
    EXPECT_EQ(Main()->cursor().shape(), Qt::BlankCursor);
    windows.MousePointer(QStringLiteral("Screen"), kPointerHourglass);
    EXPECT_EQ(Main()->cursor().shape(), Qt::WaitCursor);
    windows.MousePointer(QStringLiteral("Screen"), kPointerDefault);
    EXPECT_EQ(Main()->cursor().shape(), Qt::BlankCursor);
    windows.MousePointer(QStringLiteral("Form_Main"), kPointerDefault);
    EXPECT_EQ(Main()->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(QtWindowsTest, TheMainWindowCoversTheScreenAndIsFrameless) {
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    windows.ShowMainWindow(screen);
    EXPECT_TRUE(Main()->isVisible());
    EXPECT_EQ(Main()->geometry(), screen);
    EXPECT_TRUE(Main()->windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_TRUE(Main()->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST_F(QtWindowsTest, TheVideoWindowIsPlacedOnTheDesktop) {
    const auto shown = [&](const QRect& place) {
        windows.ShowVideoWindow(true, place);
        EXPECT_TRUE(Video()->isVisible());
        return Video()->geometry();
    };
    EXPECT_EQ(shown(QRect(30, 40, 320, 240)), QRect(30, 40, 320, 240));
    EXPECT_EQ(shown(QRect(-30, -40, 320, 240)), QRect(-30, -40, 320, 240));
    EXPECT_EQ(shown(QRect(30, 40, 0, 0)).topLeft(), QPoint(30, 40));
    windows.ShowVideoWindow(false, QRect());
    EXPECT_FALSE(Video()->isVisible());
}

// The pixels of a window take memory even where no monitor shows them.
TEST_F(QtWindowsTest, TheVideoWindowIsAtMostTwiceAsLargeAsTheDesktop) {
    const QSize desktop = QGuiApplication::primaryScreen()->virtualSize();
    windows.ShowVideoWindow(true, QRect(10, 10, 1'000'000, 2'000'000));
    EXPECT_EQ(Video()->size(), desktop * 2);
}

TEST_F(QtWindowsTest, APageHasThePointerOfTheFormEvenWhileTheJukeboxIsBusy) {
    const Notice page{.title = QStringLiteral("A"), .lines = {}, .hint = {}, .choices = {}};
    windows.MousePointer(QStringLiteral("Screen"), kPointerHourglass);
    windows.ShowNotice(page);
    EXPECT_EQ(Main()->cursor().shape(), Qt::ArrowCursor);
    windows.MousePointer(QStringLiteral("Form_Main"), kPointerCustom);
    EXPECT_EQ(Main()->cursor().shape(), Qt::BlankCursor);
    windows.HideNotice();
    EXPECT_EQ(Main()->cursor().shape(), Qt::WaitCursor);
}

TEST_F(QtWindowsTest, APageBeforeTheMainWindowIsShownGoesAgain) {
    windows.ShowNotice({.title = QStringLiteral("A"), .lines = {}, .hint = {}, .choices = {}});
    EXPECT_TRUE(Main()->isVisible());
    windows.HideNotice();
    EXPECT_FALSE(Main()->isVisible());
}

TEST_F(QtWindowsTest, AQuestionIsAnsweredByKeys) {
    QtMessageBox box(windows, pump, 0);
    const auto ask = [&](std::initializer_list<int> codes) {
        for (const int code : codes) {
            pump.Post({.kind = InputKind::kKeyDown, .code = code});
        }
        return box.AskYesNo(QStringLiteral("Screen Resolution"), QStringLiteral("Restart?"));
    };
    EXPECT_FALSE(ask({13})) << "no is the first choice";
    EXPECT_TRUE(ask({37, 13}));
    EXPECT_FALSE(ask({37, 38, 13}));
    EXPECT_TRUE(ask({'Y'}));
    EXPECT_FALSE(ask({37, 'N'}));
    EXPECT_FALSE(ask({37, 27}));
}

TEST_F(QtWindowsTest, AQuestionIsAnsweredByTouchAndByTheWishToClose) {
    QtMessageBox box(windows, pump, 0);
    const QRect yes = ChoicePlaces(QRect(QPoint(0, 0), QGuiApplication::primaryScreen()->size()), 2)[0];
    const QPointF middle = yes.center();
    pump.Post({.kind = InputKind::kMouseDown, .button = 1, .x = 1, .y = 1});
    pump.Post({.kind = InputKind::kMouseDown, .button = 1, .x = middle.x(), .y = middle.y()});
    EXPECT_TRUE(box.AskYesNo(QStringLiteral("Title"), QStringLiteral("Text")));
    pump.Post({.kind = InputKind::kClose});
    EXPECT_FALSE(box.AskYesNo(QStringLiteral("Title"), QStringLiteral("Text")));
}

TEST_F(QtWindowsTest, KeysThatWereMeantForSomethingElseCloseNothing) {
    QtMessageBox box(windows, pump, 200);
    QElapsedTimer time;
    time.start();
    pump.Post({.kind = InputKind::kKeyDown, .code = 13});
    box.ShowPage(QStringLiteral("Title"), {}, QString(), 300);
    EXPECT_GE(time.elapsed(), 299);
}

TEST_F(QtWindowsTest, APageGoesByItsTime) {
    QtMessageBox box(windows, pump, 0);
    QElapsedTimer time;
    time.start();
    box.ShowPage(QStringLiteral("Title"), {}, QString(), 100);
    EXPECT_GE(time.elapsed(), 99);
    EXPECT_LT(time.elapsed(), 30'000);
}
