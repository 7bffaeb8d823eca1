// Tests of display modes on an X server that this test may change; see on_a_screen.py.
#include "platform/qt/x11_screen.h"

// Before the headers of X11, which define names like None.
#include <gtest/gtest.h>

#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>

#include <algorithm>
#include <string>

namespace {

// The server's side of the test. The server has only one mode at first; this adds others.
class Server {
public:
    Server() : display_(XOpenDisplay(nullptr)) {}
    ~Server() { XCloseDisplay(display_); }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    QSize Root() {
        XSync(display_, False);
        XWindowAttributes attributes = {};
        XGetWindowAttributes(display_, DefaultRootWindow(display_), &attributes);
        return {attributes.width, attributes.height};
    }
    void AddMode(QSize size) {
        XRRScreenResources* resources = XRRGetScreenResourcesCurrent(display_, DefaultRootWindow(display_));
        std::string name = std::to_string(size.width()) + "x" + std::to_string(size.height());
        XRRModeInfo mode = {};
        mode.width = static_cast<unsigned>(size.width());
        mode.height = static_cast<unsigned>(size.height());
        mode.hTotal = mode.width + 100;
        mode.vTotal = mode.height + 20;
        mode.dotClock = 60UL * mode.hTotal * mode.vTotal;
        mode.name = name.data();
        mode.nameLength = static_cast<unsigned>(name.size());
        const RRMode id = XRRCreateMode(display_, DefaultRootWindow(display_), &mode);
        XRRAddOutputMode(display_, resources->outputs[0], id);
        XRRFreeScreenResources(resources);
        XSync(display_, False);
    }

private:
    Display* display_;
};

bool Lists(const X11Screen& screen, QSize size) {
    const auto modes = screen.Modes();
    return std::find(modes.begin(), modes.end(), size) != modes.end();
}

} // namespace

TEST(X11Screen, ChangesTheModeAndGoesBack) {
    Server server;
    const auto screen = X11Screen::Open();
    ASSERT_TRUE(screen);
    const QSize first = server.Root();
    EXPECT_TRUE(Lists(*screen, first));
    for (const QSize size : {QSize(800, 600), QSize(640, 480)}) {
        EXPECT_FALSE(Lists(*screen, size));
        EXPECT_FALSE(screen->SetMode(size));
        EXPECT_EQ(server.Root(), first) << "a mode that is not listed changes nothing";
        server.AddMode(size);
        EXPECT_TRUE(Lists(*screen, size));
        EXPECT_TRUE(screen->SetMode(size));
        EXPECT_EQ(server.Root(), size);
        EXPECT_TRUE(screen->SetMode(first));
        EXPECT_EQ(server.Root(), first);
    }
}

TEST(X11Screen, RefusesAModeLargerThanTheServerCanShow) {
    Server server;
    const auto screen = X11Screen::Open();
    ASSERT_TRUE(screen);
    const QSize first = server.Root();
    server.AddMode({16'000, 12'000});
    EXPECT_FALSE(screen->SetMode({16'000, 12'000}));
    EXPECT_EQ(server.Root(), first);
}

TEST(X11Screen, TellsThePixelsAndHoldsOffTheSaver) {
    const auto screen = X11Screen::Open();
    ASSERT_TRUE(screen);
    EXPECT_EQ(screen->BitsPerPixel(), 32);
    screen->ResetScreenSaver();
}

// Unknown modes and the like are protocol errors. In the jukebox the toolkit ignores them.
int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
    return RUN_ALL_TESTS();
}
