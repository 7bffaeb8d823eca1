// Showing the windows and their pointers.
#include "platform/qt/qt_windows.h"

#include "platform/qt/dialog_window.h"
#include "platform/qt/qt_event_pump.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QScreen>
#include <QThread>
#include <QWindow>

#include <chrono>
#include <utility>

namespace {

// The most milliseconds that a window may take to appear.
constexpr int kLongestAppearance = 2000;
// Shorter than the shortest delay after which a screen is blanked.
constexpr std::chrono::seconds kSaverInterval{50};
// How often changes of the monitors are looked for.
constexpr std::chrono::seconds kMonitorInterval{1};
// The first frame is shown before the screen is held.
constexpr std::chrono::milliseconds kHoldDelay{300};

Qt::CursorShape CursorOf(int number) {
    switch (number) {
    case kPointerHourglass:
        return Qt::WaitCursor;
    case kPointerCustom:
        return Qt::BlankCursor;
    default:
        return Qt::ArrowCursor;
    }
}

} // namespace

QtWindows::QtWindows(QtEventPump& pump, X11Screen* x11)
    : pump_(pump), main_(pump), video_(pump), keyboard_(pump), x11_(x11) {
    if (x11_ != nullptr) {
        QObject::connect(&saver_, &QTimer::timeout, [this] { x11_->ResetScreenSaver(); });
        saver_.start(kSaverInterval);
        QObject::connect(&watch_, &QTimer::timeout, [this] { WatchMonitors(); });
        watch_.start(kMonitorInterval);
    }
    main_.setGeometry(PrimaryPlace());
    for (QScreen* screen : QGuiApplication::screens()) {
        FollowScreen(screen);
    }
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &main_, [this](QScreen* screen) {
        FollowScreen(screen);
        CoverScreen();
    });
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &main_, [this] { CoverScreen(); });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &main_, [this] { CoverScreen(); });
}

// Without a window manager nothing else resizes a window when its screen changes.
void QtWindows::FollowScreen(QScreen* screen) {
    QObject::connect(screen, &QScreen::geometryChanged, &main_, [this] { CoverScreen(); });
}

void QtWindows::CoverScreen() {
    const QRect screen = PrimaryPlace();
    if (covers_ && main_.geometry() != screen) {
        main_.setGeometry(screen);
    }
    if (video_.isVisible() && video_.geometry() != VideoOnDesktop()) {
        video_.setGeometry(VideoOnDesktop());
    }
}

void QtWindows::WatchMonitors() {
    std::vector<QRect> monitors = x11_->Monitors();
    if (monitors != monitors_) {
        monitors_ = std::move(monitors);
        CoverScreen();
    }
}

// The toolkit does not notice every move of a monitor: one that moves because another was switched off keeps
// its old place in the toolkit's list.
QRect QtWindows::PrimaryPlace() const {
    const std::vector<QRect> monitors = x11_ != nullptr ? x11_->Monitors() : std::vector<QRect>();
    return monitors.empty() ? QGuiApplication::primaryScreen()->geometry() : monitors.front();
}

// A window much larger than the desktop would cost its pixels without showing more of them.
QRect QtWindows::VideoOnDesktop() const {
    const QRect desktop = QGuiApplication::primaryScreen()->virtualGeometry();
    QRect place = videoPlace_;
    place.setSize(place.size().boundedTo(desktop.size() * 2).expandedTo(QSize(1, 1)));
    return place;
}

void QtWindows::HoldScreen(std::function<void(const QString& line)> log) {
    if (x11_ != nullptr) {
        QObject::connect(&holdStart_, &QTimer::timeout, [this, log = std::move(log)] {
            hold_ = X11Hold::Begin([this] { return VisibleWindows(); }, log);
        });
        holdStart_.setSingleShot(true);
        holdStart_.start(kHoldDelay);
    }
}

// Dialogs are centred by their own size; everything else has a place that the jukebox knows.
std::vector<HeldWindow> QtWindows::VisibleWindows() const {
    std::vector<HeldWindow> windows;
    const QRect screen = PrimaryPlace();
    if (video_.isVisible()) {
        windows.push_back({video_.winId(), VideoOnDesktop(), false});
    }
    if (main_.isVisible()) {
        const bool isFullScreen = covers_ || !shown_;
        windows.push_back({main_.winId(), isFullScreen ? screen : main_.geometry(), isFullScreen});
    }
    for (const DialogWindow* dialog : dialogs_) {
        windows.push_back({dialog->winId(), std::nullopt, false});
    }
    if (keyboard_.isVisible()) {
        windows.push_back({keyboard_.winId(), screen, true});
    }
    return windows;
}

void QtWindows::HoldAgain() {
    if (hold_) {
        hold_->LookSoon();
    }
}

void QtWindows::PressGamepadKey(int code, bool isRepeat) {
    if (!dialogs_.empty()) {
        dialogs_.back()->TakeGamepadKey(code, isRepeat);
    } else {
        pump_.Post({.kind = InputKind::kKeyDown, .code = code});
    }
}

void QtWindows::ShowMainWindow(const QRect& place) {
    const QRect screen = PrimaryPlace();
    shown_ = true;
    const QRect onDesktop = place.translated(screen.topLeft());
    covers_ = onDesktop.contains(screen);
    main_.setGeometry(covers_ ? screen : onDesktop);
    if (covers_) {
        main_.showFullScreen();
    } else {
        main_.show();
    }
    WaitUntilExposed(main_);
}

// The toolkit reports the first exposure only through its event loop; a frame drawn before that would stay
// invisible.
void QtWindows::WaitUntilExposed(QWidget& window) {
    window.raise();
    window.activateWindow();
    QElapsedTimer time;
    time.start();
    while (!window.windowHandle()->isExposed() && time.elapsed() < kLongestAppearance) {
        QCoreApplication::processEvents();
        QThread::usleep(500);
    }
}

void QtWindows::Refresh(const QImage& frame, int left, int top) {
    main_.Refresh(frame, left, top);
    if (refreshed_) {
        refreshed_();
    }
}

void QtWindows::RefreshKeyboard(const QImage& picture, int left, int top) {
    keyboard_.SetPicture(picture, {left, top});
}

void QtWindows::MousePointer(const QString& object, int number) {
    // Form_Main and its pictures are one window here and always get the same pointer.
    (object == u"Screen" ? screenPointer_ : formPointer_) = number;
    SetPointer();
}

void QtWindows::SetPointer() {
    const bool isOfForm = showsNotice_ || screenPointer_ == kPointerDefault;
    const Qt::CursorShape shape = CursorOf(isOfForm ? formPointer_ : screenPointer_);
    // A window without a pointer of its own has that of the desktop.
    if (!main_.testAttribute(Qt::WA_SetCursor) || main_.cursor().shape() != shape) {
        main_.setCursor(shape);
    }
}

void QtWindows::ShowVideoWindow(bool visible, const QRect& place) {
    videoPlace_ = place;
    if (visible) {
        video_.setGeometry(VideoOnDesktop());
    }
    video_.setVisible(visible);
}

void QtWindows::ShowVideo(const QString& owner, const QRect& place, const VideoPicture& picture) {
    const bool onSecondWindow = owner == u"Picture_Video";
    const bool isSmall = owner == u"Picture_Main";
    const ShownVideo video{.picture = picture,
                           .place = onSecondWindow || isSmall ? place : place.translated(surface_.topLeft()),
                           .look = isSmall ? ShownVideo::Look::kSmall : ShownVideo::Look::kFull};
    main_.SetVideo(onSecondWindow ? std::nullopt : std::optional(video));
    video_.SetVideo(onSecondWindow ? std::optional(video) : std::nullopt);
}

void QtWindows::HideVideo() {
    main_.SetVideo(std::nullopt);
    video_.SetVideo(std::nullopt);
}

void QtWindows::ShowKeyboard() {
    const QRect screen = PrimaryPlace();
    const QRect part = screen.translated(-main_.geometry().topLeft());
    keyboard_.SetGround(main_.Shown().copy(part));
    keyboard_.setCursor(CursorOf(formPointer_));
    keyboard_.setGeometry(screen);
    keyboard_.showFullScreen();
    WaitUntilExposed(keyboard_);
    HoldAgain();
}

void QtWindows::HideKeyboard() {
    keyboard_.hide();
    main_.activateWindow();
    HoldAgain();
}

// A window manager keeps a window above the one that it belongs to, full-screen windows included.
void QtWindows::ShowDialog(DialogWindow& dialog) {
    const QWidget& below = dialogs_.empty() ? static_cast<QWidget&>(main_) : *dialogs_.back();
    dialog.winId(); // makes the window's handle
    dialog.windowHandle()->setTransientParent(below.windowHandle());
    dialogs_.push_back(&dialog);
    dialog.show();
    WaitUntilExposed(dialog);
    HoldAgain();
}

void QtWindows::HideDialog(DialogWindow& dialog) {
    dialog.hide();
    std::erase(dialogs_, &dialog);
    QWidget& below = dialogs_.empty() ? static_cast<QWidget&>(main_) : *dialogs_.back();
    if (below.isVisible()) {
        below.activateWindow();
    }
    HoldAgain();
}

void QtWindows::ShowNotice(const Notice& notice) {
    showsNotice_ = true;
    SetPointer();
    main_.SetNotice(notice);
    if (!main_.isVisible()) {
        main_.setGeometry(PrimaryPlace());
        main_.showFullScreen();
        WaitUntilExposed(main_);
    }
}

void QtWindows::HideNotice() {
    showsNotice_ = false;
    SetPointer();
    main_.SetNotice(std::nullopt);
    if (!shown_) {
        main_.hide();
    }
}
