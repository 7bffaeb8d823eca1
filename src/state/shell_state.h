// State of the application shell: the running program, its window, its display, its timers.
#pragma once

#include "core/bounded_array.h"
#include "core/integer.h"
#include "state/box.h"

#include <QString>

// A repeating timer of the main form, with its interval in milliseconds. The event source ticks at the
// interval; a tick has no effect while the timer is disabled.
struct Timer {
    int Interval = 0;
    bool Enabled = false;
};

struct ShellState {
    // The folder that contains config.ini, "themes", "playlists", the log and the counts, without a trailing
    // separator.
    QString AppFolder;
    // The folder of the delivered files, whose themes are used when the application folder has none of that
    // name. Empty when there is none.
    QString shareFolder;

    // Non-zero while start-up, an input event or a heartbeat tick runs. Other events are dropped then.
    Integer16 InputBusy;
    // Ticks since the last key or touch.
    Integer16 IdleTicks;

    // The desktop's mode at start. The quit key restores it in full-screen mode.
    Integer16 ScreenWidth;
    Integer16 ScreenHeight;
    Integer16 ScreenBits;
    // The monitors at start; only the console reads them.
    Integer16 MonitorCount;
    BoundedArray<Integer16, 10> MonitorWidth;
    BoundedArray<Integer16, 10> MonitorHeight;

    // The heartbeat and the tick of the light show.
    Timer Timer1{399, false};
    Timer tmrSpectrum{99, false};

    // The main window, the video window and the on-screen keyboard.
    WindowPlace MainWindow;
    WindowPlace Form_Video;
    // Whether the video window has its place; see LoadVideoForm.
    bool videoFormLoaded = false;
    WindowPlace Form_KeyBoard;
};
