// Display modes through XRandR, the screen saver through the core protocol.
#include "platform/qt/x11_screen.h"

#include "core/monitor_layout.h"
#include "platform/qt/x11_layout.h"

#include <X11/Xutil.h>

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

struct X11Screen::Connection {
    Display* display = nullptr;
    // The mode of the primary monitor at the start; 0 if there was none.
    RRMode firstMode = 0;
    // The monitors before the first change of mode, and after the last one.
    std::vector<X11Head> home;
    std::vector<X11Head> last;

    explicit Connection(Display* opened) : display(opened) {
        if (HasRandr(display)) {
            const X11Resources resources = Resources();
            const X11Output output = resources ? PrimaryOutput(display, *resources) : nullptr;
            const auto heads = output ? ReadHeads(display, *resources, output->crtc) : std::vector<X11Head>();
            firstMode = heads.empty() ? 0 : heads.front().mode;
        }
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() { XCloseDisplay(display); }

    X11Resources Resources() const {
        return X11Resources(XRRGetScreenResourcesCurrent(display, DefaultRootWindow(display)));
    }
    std::optional<RRMode> ModeFor(const XRRScreenResources& resources, const XRROutputInfo& output,
                                  Rotation rotation, QSize size) const;
};

namespace {

bool Lists(const XRROutputInfo& output, RRMode id) {
    const std::span modes(output.modes, static_cast<std::size_t>(std::max(output.nmode, 0)));
    return std::find(modes.begin(), modes.end(), id) != modes.end();
}

// The heads after their primary one has got a mode of that size.
std::vector<X11Head> Changed(std::vector<X11Head> heads, RRMode mode, QSize size) {
    std::vector<QRect> places;
    std::transform(heads.begin(), heads.end(), std::back_inserter(places),
                   [](const X11Head& head) { return head.place; });
    places = LayoutWithPrimary(places, size);
    for (std::size_t i = 0; i < heads.size(); ++i) {
        heads[i].place = places[i];
    }
    heads.front().mode = mode;
    return heads;
}

} // namespace

// The mode of the start comes back as it was, with its refresh rate. Any other size gets the first mode that
// the monitor lists for it.
std::optional<RRMode> X11Screen::Connection::ModeFor(const XRRScreenResources& resources,
                                                     const XRROutputInfo& output, Rotation rotation,
                                                     QSize size) const {
    const XRRModeInfo* first = ModeById(resources, firstMode);
    if (first != nullptr && Lists(output, firstMode) && SizeOf(*first, rotation) == size) {
        return firstMode;
    }
    return ModeOfSize(resources, output, rotation, size);
}

X11Screen::X11Screen(std::unique_ptr<Connection> connection) : connection_(std::move(connection)) {}

X11Screen::~X11Screen() = default;

std::unique_ptr<X11Screen> X11Screen::Open() {
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        return nullptr;
    }
    return std::unique_ptr<X11Screen>(new X11Screen(std::make_unique<Connection>(display)));
}

void X11Screen::ResetScreenSaver() {
    XResetScreenSaver(connection_->display);
    XFlush(connection_->display);
}

int X11Screen::BitsPerPixel() const {
    Display* display = connection_->display;
    const int depth = DefaultDepth(display, DefaultScreen(display));
    int count = 0;
    const std::unique_ptr<XPixmapFormatValues, X11Freed<XFree>> formats(XListPixmapFormats(display, &count));
    const std::span all(formats.get(), formats ? static_cast<std::size_t>(count) : 0);
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const auto& format) { return format.depth == depth; });
    return found == all.end() ? depth : found->bits_per_pixel;
}

std::vector<QRect> X11Screen::Monitors() const {
    return HasRandr(connection_->display) ? MonitorPlaces(connection_->display) : std::vector<QRect>();
}

std::vector<QSize> X11Screen::Modes() const {
    Display* display = connection_->display;
    std::vector<QSize> modes;
    if (!HasRandr(display)) {
        return modes;
    }
    const X11Resources resources = connection_->Resources();
    const X11Output output = resources ? PrimaryOutput(display, *resources) : nullptr;
    const auto heads = output ? ReadHeads(display, *resources, output->crtc) : std::vector<X11Head>();
    for (int i = 0; !heads.empty() && i < output->nmode; ++i) {
        if (const XRRModeInfo* mode = ModeById(*resources, output->modes[i])) {
            modes.push_back(SizeOf(*mode, heads.front().rotation));
        }
    }
    return modes;
}

// Every layout is made from the one before the first change, so that going back moves each neighbour to where
// it was. If somebody else has changed the monitors since then, the present layout is the first one again.
bool X11Screen::SetMode(QSize size) {
    Display* display = connection_->display;
    if (!HasRandr(display)) {
        return false;
    }
    const X11Resources resources = connection_->Resources();
    const X11Output output = resources ? PrimaryOutput(display, *resources) : nullptr;
    const auto now = output ? ReadHeads(display, *resources, output->crtc) : std::vector<X11Head>();
    if (now.empty()) {
        return false;
    }
    const auto mode = connection_->ModeFor(*resources, *output, now.front().rotation, size);
    if (!mode) {
        return false;
    }
    if (connection_->home.empty() || now != connection_->last) {
        connection_->home = now;
    }
    const std::vector<X11Head> after = Changed(connection_->home, *mode, size);
    const bool done = Arrange(display, *resources, now, after);
    connection_->last = done ? after : now;
    return done;
}
