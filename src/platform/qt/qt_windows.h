// The windows of the cabinet.
#pragma once

#include "platform/qt/keyboard_window.h"
#include "platform/qt/main_window.h"
#include "platform/qt/video_window.h"
#include "platform/qt/x11_hold.h"
#include "platform/qt/x11_screen.h"
#include "platform/windows.h"

#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

class DialogWindow;
class QScreen;

class QtWindows : public Windows {
public:
    // `x11` is null when the windows are not on X11; otherwise its screen saver is kept off.
    QtWindows(QtEventPump& pump, X11Screen* x11);

    // Sets a routine that is called after each frame.
    void SetRefreshed(std::function<void()> refreshed) { refreshed_ = std::move(refreshed); }

    // On X11 under a window manager: keeps the keyboard and the windows' places until this object is
    // destroyed (see X11Hold). Begins after the first frame.
    void HoldScreen(std::function<void(const QString& line)> log);

    void ShowMainWindow(const QRect& place) override;
    void Refresh(const QImage& frame, int left, int top) override;
    void RefreshKeyboard(const QImage& picture, int left, int top) override;
    void MousePointer(const QString& object, int number) override;
    void PlaceVideoSurface(const QRect& place) override { surface_ = place; }
    void ShowVideoWindow(bool visible, const QRect& place) override;

    // Shows a video's picture on its owner ("Picture_Main", "Picture_MainVideo", "Picture_Video") at a place
    // relative to the owner's top left corner, or on none. The picture is shared, not copied.
    void ShowVideo(const QString& owner, const QRect& place, const VideoPicture& picture);
    void HideVideo();

    // Shows the on-screen keyboard on the primary screen, with the current frame as its background; hides it
    // and returns the keyboard focus to the main window.
    void ShowKeyboard();
    void HideKeyboard();

    // Shows a dialog's window above all others and waits until it is visible; hides it and returns the focus
    // to the dialog below it, or to the main window.
    void ShowDialog(DialogWindow& dialog);
    void HideDialog(DialogWindow& dialog);

    // Shows a notice page over everything, on the primary screen while the main window is not shown yet. The
    // pointer is that of Form_Main, even while the jukebox is busy: the page can be answered.
    void ShowNotice(const Notice& notice);
    void HideNotice();

    // Passes a key of a gamepad to the topmost dialog, or to the jukebox.
    void PressGamepadKey(int code, bool isRepeat);

private:
    // The visible windows, the topmost one last.
    std::vector<HeldWindow> VisibleWindows() const;
    // The topmost window is another one than before.
    void HoldAgain();
    void SetPointer();
    void CoverScreen();
    void WatchMonitors();
    QRect PrimaryPlace() const;
    QRect VideoOnDesktop() const;
    static void WaitUntilExposed(QWidget& window);
    void FollowScreen(QScreen* screen);

    QtEventPump& pump_;
    MainWindow main_;
    VideoWindow video_;
    // In pixels of the desktop.
    QRect videoPlace_;
    KeyboardWindow keyboard_;
    // Picture_MainVideo in the main window.
    QRect surface_;
    // The dialogs that are open, the topmost one last.
    std::vector<DialogWindow*> dialogs_;
    X11Screen* x11_;
    QTimer saver_;
    QTimer watch_;
    // The monitors when they were last looked at.
    std::vector<QRect> monitors_;
    std::function<void()> refreshed_;
    // Whether the jukebox has shown the main window, and whether that window covers its whole screen.
    bool shown_ = false;
    bool covers_ = false;
    bool showsNotice_ = false;
    int screenPointer_ = 0;
    int formPointer_ = 0;
    QTimer holdStart_;
    std::unique_ptr<X11Hold> hold_;
};
