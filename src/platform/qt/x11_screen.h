// X server functions that the toolkit does not cover: display modes and the screen saver.
#pragma once

#include <QRect>
#include <QSize>

#include <memory>
#include <vector>

// Our own connection to the X server that DISPLAY names.
class X11Screen {
public:
    // Remembers the mode of the primary monitor. Returns null when no X server answers.
    static std::unique_ptr<X11Screen> Open();
    ~X11Screen();
    X11Screen(const X11Screen&) = delete;
    X11Screen& operator=(const X11Screen&) = delete;

    // Restarts the delay of the screen saver and of the monitor's energy saving.
    void ResetScreenSaver();
    // Bits of a pixel in memory: 32 for a depth of 24.
    int BitsPerPixel() const;

    // The rectangles of all monitors in desktop pixels, primary monitor first (the server's first one when
    // none is primary).
    std::vector<QRect> Monitors() const;
    // The sizes of the primary monitor's modes, preferred ones first. On a rotated monitor they are rotated.
    std::vector<QSize> Modes() const;
    // Sets the primary monitor to a mode of that size: the remembered mode if it has that size, otherwise the
    // monitor's best one. Its neighbours move with its edges (see LayoutWithPrimary). Returns false, with
    // everything as before, when there is no such mode or the server refuses it.
    bool SetMode(QSize size);

private:
    struct Connection;
    explicit X11Screen(std::unique_ptr<Connection> connection);

    std::unique_ptr<Connection> connection_;
};
