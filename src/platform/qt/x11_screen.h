// What the toolkit leaves to the X server itself: display modes and the screen saver.
#pragma once

#include <memory>
#include <vector>

// A mode of a monitor, in pixels.
struct X11Mode {
    int width = 0;
    int height = 0;
};

// A connection of our own to the X server that DISPLAY names.
class X11Screen {
public:
    // Nothing when no X server answers.
    static std::unique_ptr<X11Screen> Open();
    ~X11Screen();
    X11Screen(const X11Screen&) = delete;
    X11Screen& operator=(const X11Screen&) = delete;

    // Starts the waiting time of the screen saver, and of the monitor's energy saving, anew.
    void ResetScreenSaver();
    // Bits of a pixel in memory, 32 for a depth of 24.
    int BitsPerPixel() const;

    // The modes of the primary monitor (the first connected one where none is primary), preferred ones first.
    std::vector<X11Mode> Modes() const;
    // Sets the primary monitor to the best mode of that size, its neighbours stay where they are. False, and
    // the old mode kept or put back, when there is no such mode or the server refuses it.
    bool SetMode(const X11Mode& mode);

private:
    struct Connection;
    explicit X11Screen(std::unique_ptr<Connection> connection);

    std::unique_ptr<Connection> connection_;
};
