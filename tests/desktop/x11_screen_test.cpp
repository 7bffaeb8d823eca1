// Tests of display modes on an X server that this test may change; see on_a_screen.py. Those of X11Layout
// need two monitors; displays_desktop_test.py runs them.
#include "platform/qt/x11_screen.h"

// Before the headers of X11, which define names like None.
#include <gtest/gtest.h>

#include "platform/qt/x11_layout.h"

#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>

#include <algorithm>
#include <array>
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
    std::vector<X11Head> Heads() {
        const X11Resources resources = Resources();
        const X11Output primary = PrimaryOutput(display_, *resources);
        return ReadHeads(display_, *resources, primary->crtc);
    }
    std::vector<QRect> Places() { return MonitorPlaces(display_); }
    bool Change(const std::vector<X11Head>& before, const std::vector<X11Head>& after) {
        const X11Resources resources = Resources();
        return Arrange(display_, *resources, before, after);
    }

private:
    X11Resources Resources() {
        return X11Resources(XRRGetScreenResourcesCurrent(display_, DefaultRootWindow(display_)));
    }

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

// The modes of one output, as XRandR lists them.
class ListedModes {
public:
    ListedModes() {
        resources.nmode = static_cast<int>(modes_.size());
        resources.modes = modes_.data();
        output.nmode = static_cast<int>(ids_.size());
        output.modes = ids_.data();
    }

    XRRScreenResources resources = {};
    XRROutputInfo output = {};

private:
    static XRRModeInfo Mode(RRMode id, unsigned width, unsigned height) {
        XRRModeInfo mode = {};
        mode.id = id;
        mode.width = width;
        mode.height = height;
        return mode;
    }

    std::array<XRRModeInfo, 4> modes_ = {Mode(7, 1920, 1080), Mode(8, 1280, 720), Mode(9, 1280, 720),
                                         Mode(10, 720, 1280)};
    // The output does not have mode 10.
    std::array<RRMode, 3> ids_ = {7, 9, 8};
};

TEST(X11Modes, TheFirstListedOneOfASizeIsTaken) {
    ListedModes listed;
    EXPECT_EQ(ModeOfSize(listed.resources, listed.output, RR_Rotate_0, {1280, 720}), RRMode{9});
    EXPECT_EQ(ModeOfSize(listed.resources, listed.output, RR_Rotate_180, {1280, 720}), RRMode{9});
    EXPECT_FALSE(ModeOfSize(listed.resources, listed.output, RR_Rotate_0, {720, 1280}));
}

TEST(X11Modes, OfARotatedMonitorHaveTheirSizeAsSeen) {
    ListedModes listed;
    for (const Rotation rotation :
         {Rotation{RR_Rotate_90}, Rotation{RR_Rotate_270}, Rotation{RR_Rotate_90 | RR_Reflect_X}}) {
        EXPECT_EQ(ModeOfSize(listed.resources, listed.output, rotation, {1080, 1920}), RRMode{7});
        EXPECT_FALSE(ModeOfSize(listed.resources, listed.output, rotation, {1920, 1080}));
        EXPECT_EQ(SizeOf(listed.resources.modes[0], rotation), QSize(1080, 1920));
    }
}

TEST(X11Layout, AFailureBringsEverythingBack) {
    Server server;
    const QSize root = server.Root();
    const std::vector<X11Head> before = server.Heads();
    ASSERT_EQ(before.size(), 2U);
    const std::vector<QRect> places = server.Places();
    std::vector<X11Head> after = before;
    // The desktop grows and the first monitor moves before the second one fails.
    after[0].place.translate(100, 50);
    after[1].place.translate(300, 0);
    after[1].mode = 1;
    EXPECT_FALSE(server.Change(before, after));
    EXPECT_EQ(server.Heads(), before);
    EXPECT_EQ(server.Places(), places);
    EXPECT_EQ(server.Root(), root);
}

TEST(X11Layout, AllMonitorsMoveAtOnce) {
    Server server;
    const QSize root = server.Root();
    const std::vector<X11Head> before = server.Heads();
    ASSERT_EQ(before.size(), 2U);
    std::vector<X11Head> after = before;
    after[1].place.translate(300, 20);
    EXPECT_TRUE(server.Change(before, after));
    EXPECT_EQ(server.Heads(), after);
    EXPECT_EQ(server.Places(), (std::vector<QRect>{after[0].place, after[1].place}));
    EXPECT_NE(server.Root(), root);
    EXPECT_TRUE(server.Change(after, before));
    EXPECT_EQ(server.Heads(), before);
    EXPECT_EQ(server.Root(), root);
}

TEST(X11Layout, AMirrorIsAMonitorOfItsOwn) {
    Server server;
    const std::vector<X11Head> before = server.Heads();
    ASSERT_EQ(before.size(), 2U);
    std::vector<X11Head> after = before;
    after[1].place.moveTopLeft(after[0].place.topLeft());
    EXPECT_TRUE(server.Change(before, after));
    EXPECT_EQ(server.Places(), (std::vector<QRect>{after[0].place, after[1].place}));
    EXPECT_TRUE(server.Change(after, before));
}

// Unknown modes and the like are protocol errors. In the jukebox the toolkit ignores them.
int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
    return RUN_ALL_TESTS();
}
