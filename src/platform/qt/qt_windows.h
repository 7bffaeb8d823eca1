// The windows of the cabinet.
#pragma once

#include "platform/qt/keyboard_window.h"
#include "platform/qt/main_window.h"
#include "platform/qt/video_window.h"
#include "platform/qt/x11_screen.h"
#include "platform/windows.h"

#include <QTimer>

class QScreen;

class QtWindows : public Windows {
public:
    // `x11` is null where the windows are not on X11; otherwise its screen saver is held off.
    QtWindows(QtEventPump& pump, X11Screen* x11);

    void ShowMainWindow(const QRect& place) override;
    void Refresh(const QImage& frame, int left, int top) override;
    void RefreshKeyboard(const QImage& picture, int left, int top) override;
    void MousePointer(const QString& object, int number) override;
    void ShowVideoWindow(bool visible, const QRect& place) override;

    // Shows a video's picture on its owner ("Picture_Main", "Picture_MainVideo", "Picture_Video") at a place
    // counted from the owner's top left corner. The picture is shared, not copied. A null picture takes it
    // away.
    void ShowVideo(const QString& owner, const QRect& place, const QImage& picture);

    // Shows the on-screen keyboard over the primary screen, before the frame as it stands; takes it away and
    // gives the keys back to the main window.
    void ShowKeyboard();
    void HideKeyboard();

    // Shows a page of words over everything, on the primary screen when the main window is not up yet.
    void ShowNotice(const Notice& notice);
    void HideNotice();

private:
    void SetPointer();
    void CoverScreen();
    static void WaitUntilExposed(QWidget& window);
    void FollowScreen(QScreen* screen);

    MainWindow main_;
    VideoWindow video_;
    KeyboardWindow keyboard_;
    X11Screen* x11_;
    QTimer saver_;
    // Whether the jukebox has asked for the main window, and whether that window covers its whole screen.
    bool shown_ = false;
    bool covers_ = false;
    int screenPointer_ = 0;
    int formPointer_ = 0;
};
