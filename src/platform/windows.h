// Port: the windows that show the frame and the video.
#pragma once

#include <QRect>
#include <QString>

class QImage;

// Pointer numbers.
enum Pointer : int { kPointerDefault = 0, kPointerArrow = 1, kPointerHourglass = 11, kPointerCustom = 99 };

// Event thread only.
struct Windows {
    virtual ~Windows() = default;

    // Shows the main window over the rectangle, in pixels of the desktop.
    virtual void ShowMainWindow(const QRect& place) = 0;
    // Makes a frame visible at once at (left, top) of the main window, black around it. The picture stays the
    // caller's.
    virtual void Refresh(const QImage& frame, int left, int top) = 0;
    // Takes the on-screen keyboard's picture, which stands at (left, top) of its full-screen window, and
    // makes it visible at once while that window is open. The picture stays the caller's.
    virtual void RefreshKeyboard(const QImage& picture, int left, int top) = 0;
    // Sets the pointer of an object ("Screen", "Form_Main", "Picture_Main", "Picture_MainVideo"): 0 default,
    // 1 arrow, 11 hourglass, 99 the form's own, which is invisible.
    virtual void MousePointer(const QString& object, int number) = 0;
    // Shows or hides the second window of the video.
    virtual void ShowVideoWindow(bool visible, const QRect& place) = 0;
};
