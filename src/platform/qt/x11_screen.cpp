// Display modes through XRandR 1.3 and later, the screen saver through the core protocol.
#include "platform/qt/x11_screen.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/Xrandr.h>

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

struct X11Screen::Connection {
    Display* display = nullptr;

    ~Connection() { XCloseDisplay(display); }
    Window Root() const { return DefaultRootWindow(display); }
};

namespace {

// Frees what XRandR returns.
template <auto Free>
struct Freed {
    template <typename T>
    void operator()(T* what) const {
        Free(what);
    }
};
using Resources = std::unique_ptr<XRRScreenResources, Freed<XRRFreeScreenResources>>;
using Output = std::unique_ptr<XRROutputInfo, Freed<XRRFreeOutputInfo>>;
using Crtc = std::unique_ptr<XRRCrtcInfo, Freed<XRRFreeCrtcInfo>>;

struct Size {
    int width = 0;
    int height = 0;
    bool operator==(const Size&) const = default;
};

bool HasRandr(Display* display) {
    int events = 0;
    int errors = 0;
    int major = 1;
    int minor = 3;
    return XRRQueryExtension(display, &events, &errors) != 0 &&
           XRRQueryVersion(display, &major, &minor) != 0 && (major > 1 || minor >= 3);
}

std::span<const RROutput> Outputs(const XRRScreenResources& resources) {
    return {resources.outputs, static_cast<std::size_t>(std::max(resources.noutput, 0))};
}

// The primary output if it is on, otherwise the first one that is.
Output PrimaryOutput(Display* display, XRRScreenResources& resources) {
    const RROutput primary = XRRGetOutputPrimary(display, DefaultRootWindow(display));
    Output first;
    for (const RROutput id : Outputs(resources)) {
        Output output(XRRGetOutputInfo(display, &resources, id));
        if (output && output->connection == RR_Connected && output->crtc != 0) {
            if (id == primary) {
                return output;
            }
            first = first ? std::move(first) : std::move(output);
        }
    }
    return first;
}

const XRRModeInfo* ModeById(const XRRScreenResources& resources, RRMode id) {
    const std::span modes(resources.modes, static_cast<std::size_t>(std::max(resources.nmode, 0)));
    const auto found =
        std::find_if(modes.begin(), modes.end(), [&](const XRRModeInfo& mode) { return mode.id == id; });
    return found == modes.end() ? nullptr : &*found;
}

// An output lists its best modes first.
std::optional<RRMode> ModeOfSize(const XRRScreenResources& resources, const XRROutputInfo& output,
                                 Size size) {
    const std::span ids(output.modes, static_cast<std::size_t>(std::max(output.nmode, 0)));
    for (const RRMode id : ids) {
        const XRRModeInfo* mode = ModeById(resources, id);
        if (mode != nullptr && Size{static_cast<int>(mode->width), static_cast<int>(mode->height)} == size) {
            return id;
        }
    }
    return std::nullopt;
}

Size RootSize(Display* display) {
    XWindowAttributes attributes = {};
    XGetWindowAttributes(display, DefaultRootWindow(display), &attributes);
    return {attributes.width, attributes.height};
}

void SetRootSize(Display* display, Size size) {
    constexpr double kMillimetresPerPixel = 25.4 / 96;
    XRRSetScreenSize(display, DefaultRootWindow(display), size.width, size.height,
                     static_cast<int>(size.width * kMillimetresPerPixel),
                     static_cast<int>(size.height * kMillimetresPerPixel));
}

// The root size that contains all monitors once the one of `changed` has the new size.
Size NeededRoot(Display* display, XRRScreenResources& resources, RRCrtc changed, Size size) {
    Size needed;
    const std::span crtcs(resources.crtcs, static_cast<std::size_t>(std::max(resources.ncrtc, 0)));
    for (const RRCrtc id : crtcs) {
        const Crtc crtc(XRRGetCrtcInfo(display, &resources, id));
        if (!crtc || (id != changed && crtc->mode == 0)) {
            continue;
        }
        const Size own =
            id == changed ? size : Size{static_cast<int>(crtc->width), static_cast<int>(crtc->height)};
        needed = {std::max(needed.width, crtc->x + own.width), std::max(needed.height, crtc->y + own.height)};
    }
    return needed;
}

bool FitsServer(Display* display, Size size) {
    Size least;
    Size most;
    return XRRGetScreenSizeRange(display, DefaultRootWindow(display), &least.width, &least.height,
                                 &most.width, &most.height) != 0 &&
           size.width >= least.width && size.height >= least.height && size.width <= most.width &&
           size.height <= most.height;
}

bool SetCrtc(Display* display, XRRScreenResources& resources, RRCrtc id, XRRCrtcInfo& crtc, RRMode mode) {
    return XRRSetCrtcConfig(display, &resources, id, CurrentTime, crtc.x, crtc.y, mode, crtc.rotation,
                            crtc.outputs, crtc.noutput) == RRSetConfigSuccess;
}

// The root must contain every monitor: it shrinks after a monitor has, and grows before one does.
bool ChangeMode(Display* display, XRRScreenResources& resources, const XRROutputInfo& output, Size size,
                RRMode mode) {
    const Crtc crtc(XRRGetCrtcInfo(display, &resources, output.crtc));
    const Size needed = NeededRoot(display, resources, output.crtc, size);
    const Size before = RootSize(display);
    if (!crtc || !FitsServer(display, needed)) {
        return false;
    }
    const Size both = {std::max(before.width, needed.width), std::max(before.height, needed.height)};
    if (both != before) {
        SetRootSize(display, both);
    }
    const bool done = SetCrtc(display, resources, output.crtc, *crtc, mode);
    if (!done) {
        SetCrtc(display, resources, output.crtc, *crtc, crtc->mode);
    }
    const Size wanted = done ? needed : before;
    if (RootSize(display) != wanted) {
        SetRootSize(display, wanted);
    }
    XSync(display, False);
    return done;
}

} // namespace

X11Screen::X11Screen(std::unique_ptr<Connection> connection) : connection_(std::move(connection)) {}

X11Screen::~X11Screen() = default;

std::unique_ptr<X11Screen> X11Screen::Open() {
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        return nullptr;
    }
    auto connection = std::make_unique<Connection>();
    connection->display = display;
    return std::unique_ptr<X11Screen>(new X11Screen(std::move(connection)));
}

void X11Screen::ResetScreenSaver() {
    XResetScreenSaver(connection_->display);
    XFlush(connection_->display);
}

int X11Screen::BitsPerPixel() const {
    Display* display = connection_->display;
    const int depth = DefaultDepth(display, DefaultScreen(display));
    int count = 0;
    const std::unique_ptr<XPixmapFormatValues, Freed<XFree>> formats(XListPixmapFormats(display, &count));
    const std::span all(formats.get(), formats ? static_cast<std::size_t>(count) : 0);
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const auto& format) { return format.depth == depth; });
    return found == all.end() ? depth : found->bits_per_pixel;
}

std::vector<X11Mode> X11Screen::Modes() const {
    Display* display = connection_->display;
    std::vector<X11Mode> modes;
    if (!HasRandr(display)) {
        return modes;
    }
    const Resources resources(XRRGetScreenResourcesCurrent(display, connection_->Root()));
    const Output output = resources ? PrimaryOutput(display, *resources) : nullptr;
    for (int i = 0; output && i < output->nmode; ++i) {
        if (const XRRModeInfo* mode = ModeById(*resources, output->modes[i])) {
            modes.push_back({static_cast<int>(mode->width), static_cast<int>(mode->height)});
        }
    }
    return modes;
}

bool X11Screen::SetMode(const X11Mode& mode) {
    Display* display = connection_->display;
    if (!HasRandr(display)) {
        return false;
    }
    const Resources resources(XRRGetScreenResourcesCurrent(display, connection_->Root()));
    const Output output = resources ? PrimaryOutput(display, *resources) : nullptr;
    const Size size = {mode.width, mode.height};
    const std::optional<RRMode> id = output ? ModeOfSize(*resources, *output, size) : std::nullopt;
    return id && ChangeMode(display, *resources, *output, size, *id);
}
