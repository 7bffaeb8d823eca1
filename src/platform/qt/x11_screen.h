// X server functions that the toolkit does not cover: display modes and the screen saver.
#pragma once

#include <memory>
#include <vector>

// A mode of a monitor, in pixels.
struct X11Mode {
    int width = 0;
    int height = 0;
};

// Our own connection to the X server that DISPLAY names.
class X11Screen {
public:
    // Returns null when no X server answers.
    static std::unique_ptr<X11Screen> Open();
    ~X11Screen();
    X11Screen(const X11Screen&) = delete;
    X11Screen& operator=(const X11Screen&) = delete;

    // Restarts the delay of the screen saver and of the monitor's energy saving.
    void ResetScreenSaver();
    // Bits of a pixel in memory: 32 for a depth of 24.
    int BitsPerPixel() const;

    // The modes of the primary monitor (the first connected one when none is primary), preferred ones first.
    std::vector<X11Mode> Modes() const;
    // Sets the primary monitor to its best mode of that size; its neighbours keep their positions. Returns
    // false, and keeps or restores the old mode, when there is no such mode or the server refuses it.
    bool SetMode(const X11Mode& mode);

private:
    struct Connection;
    explicit X11Screen(std::unique_ptr<Connection> connection);

    std::unique_ptr<Connection> connection_;
};
