// Reading the monitors on a thread that may block.
#include "platform/qt/x11_query.h"

#include "core/errand.h"
#include "platform/qt/x11_screen.h"

#include <X11/Xlib.h>

#include <memory>
#include <unistd.h>

namespace {

// By default both kinds of error end the process.
void SurviveErrors() {
    XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
    // The process ends if this handler returns.
    XSetIOErrorHandler([](Display*) -> int {
        for (;;) {
            pause();
        }
    });
}

std::optional<X11Monitors> Read() {
    const std::unique_ptr<X11Screen> screen = X11Screen::Open();
    if (!screen) {
        return std::nullopt;
    }
    return X11Monitors{screen->Monitors(), screen->Modes(), screen->BitsPerPixel()};
}

} // namespace

std::optional<X11Monitors> ReadMonitors(std::chrono::milliseconds patience) {
    SurviveErrors();
    const auto answer = std::make_shared<std::optional<X11Monitors>>();
    const std::optional<Errand> errand = Errand::Begin([answer] { *answer = Read(); });
    return errand && errand->WaitFor(patience) ? *answer : std::nullopt;
}
