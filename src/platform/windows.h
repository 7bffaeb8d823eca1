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

    // Shows the main window at the rectangle, in pixels from the corner of the primary screen. A window that
    // covers this screen follows it.
    virtual void ShowMainWindow(const QRect& place) = 0;
    // Makes a frame visible at once at (left, top) of the main window, with black around it. The caller keeps
    // the picture.
    virtual void Refresh(const QImage& frame, int left, int top) = 0;
    // Sets the picture of the on-screen keyboard, at (left, top) of its full-screen window, and shows it at
    // once while that window is open. The caller keeps the picture.
    virtual void RefreshKeyboard(const QImage& picture, int left, int top) = 0;
    // Sets the pointer of an object ("Screen", "Form_Main", "Picture_Main", "Picture_MainVideo"): 0 default,
    // 1 arrow, 11 hourglass, 99 the form's own, which is invisible.
    virtual void MousePointer(const QString& object, int number) = 0;
    // Sets the place of the surface "Picture_MainVideo" in the main window.
    virtual void PlaceVideoSurface(const QRect& place) = 0;
    // Shows or hides the second window, which shows the video, at the rectangle, in pixels of the desktop. It
    // returns there when its monitor is connected again.
    virtual void ShowVideoWindow(bool visible, const QRect& place) = 0;
};
