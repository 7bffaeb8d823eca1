// State of the application shell: the running program, its window, its display, its timers.
#pragma once

#include "core/bounded_array.h"
#include "core/integer.h"

#include <QString>

// A repeating timer of the main form. The event source ticks at the interval; a tick of a timer that is not
// enabled does nothing.
struct Timer {
    int Interval = 0;
    bool Enabled = false;
};

// A place on the desktop, in pixels.
struct WindowPlace {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
    bool Visible = false;
};

struct ShellState {
    // The folder that holds config.ini, "themes", "playlists", the log and the counts; no separator at its
    // end.
    QString AppFolder;

    // Non-zero while start-up, an input event or a heartbeat tick runs: other events are dropped meanwhile.
    Integer16 InputBusy;
    // Ticks since the last key or touch.
    Integer16 IdleTicks;

    // The desktop's mode at start, to which the exit returns.
    Integer16 ScreenWidth;
    Integer16 ScreenHeight;
    Integer16 ScreenBits;
    // The monitors at start; nothing reads them.
    Integer16 MonitorCount;
    BoundedArray<Integer16, 10> MonitorWidth;
    BoundedArray<Integer16, 10> MonitorHeight;

    // The heartbeat and the tick of the light show.
    Timer Timer1{399, false};
    Timer tmrSpectrum{99, false};

    // The main window, the window of the video, the on-screen keyboard.
    WindowPlace MainWindow;
    WindowPlace Form_Video;
    WindowPlace Form_KeyBoard;
};
