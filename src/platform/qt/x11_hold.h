// Keeping the jukebox's windows in front, and its keys, under a window manager.
#pragma once

#include <QRect>
#include <QSocketNotifier>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

// A window that is held.
struct HeldWindow {
    unsigned long id = 0;
    // Where it has to be, in pixels of the desktop; nothing for a window that may be anywhere.
    std::optional<QRect> place;
    bool isFullScreen = false;
};

// Only under a window manager: keeps the keyboard, brings windows back that were covered, hidden, moved or
// resized by anything but the jukebox itself. The window manager's own shortcuts do nothing meanwhile.
// Without a window manager it asks the X server whether there is one, then waits for one to start, and does
// nothing else.
//
// It acts when the X server reports a change, at most four times a second, and once a second after eight
// attempts in a row that have not helped. While a list of a dialog is unfolded, the toolkit has the keyboard.
class X11Hold {
public:
    // `windows` returns the visible windows of the jukebox, the topmost one last; that one gets the keys
    // while a window of another program has the focus. `log` gets a line when another window covers the
    // jukebox. Returns null when no X server answers.
    static std::unique_ptr<X11Hold> Begin(std::function<std::vector<HeldWindow>()> windows,
                                          std::function<void(const QString& line)> log);
    // Gives the keyboard back.
    ~X11Hold();
    X11Hold(const X11Hold&) = delete;
    X11Hold& operator=(const X11Hold&) = delete;

    // Looks at the windows soon: the jukebox has shown or hidden one.
    void LookSoon();

private:
    struct Server;
    X11Hold(std::unique_ptr<Server> server, std::function<std::vector<HeldWindow>()> windows,
            std::function<void(const QString& line)> log);

    void TakeEvents();
    void Look();
    // Returns whether nothing had to be done.
    bool KeepAll(const std::vector<HeldWindow>& windows);
    bool KeepInFront(const std::vector<HeldWindow>& windows);

    std::unique_ptr<Server> server_;
    std::function<std::vector<HeldWindow>()> windows_;
    std::function<void(const QString& line)> log_;
    QSocketNotifier notifier_;
    QTimer look_;
    int attempts_ = 0;
    // The window that covered the jukebox last.
    unsigned long coveredBy_ = 0;
};
