// Reading and arranging the monitors of an X server through XRandR.
#include "platform/qt/x11_layout.h"

#include <algorithm>
#include <span>
#include <utility>

namespace {

using Crtc = std::unique_ptr<XRRCrtcInfo, X11Freed<XRRFreeCrtcInfo>>;

template <typename T>
std::span<T> Counted(T* items, int count) {
    return {items, items == nullptr ? 0 : static_cast<std::size_t>(std::max(count, 0))};
}

// Calls `use` with all logical monitors that are on and the index of the primary one.
template <typename Use>
void WithMonitors(Display* display, Use&& use) {
    int count = 0;
    const std::unique_ptr<XRRMonitorInfo, X11Freed<XRRFreeMonitors>> list(
        XRRGetMonitors(display, DefaultRootWindow(display), True, &count));
    const std::span<XRRMonitorInfo> monitors = Counted(list.get(), count);
    const auto primary = std::find_if(monitors.begin(), monitors.end(),
                                      [](const XRRMonitorInfo& monitor) { return monitor.primary != 0; });
    if (!monitors.empty()) {
        use(monitors, primary == monitors.end() ? monitors.front() : *primary);
    }
}

QRect PlaceOf(const XRRMonitorInfo& monitor) {
    return {monitor.x, monitor.y, monitor.width, monitor.height};
}

bool SetHead(Display* display, XRRScreenResources& resources, const X11Head& head) {
    std::vector<RROutput> outputs = head.outputs;
    return XRRSetCrtcConfig(display, &resources, head.crtc, CurrentTime, head.place.left(), head.place.top(),
                            head.mode, head.rotation, outputs.data(),
                            static_cast<int>(outputs.size())) == RRSetConfigSuccess;
}

QSize RootSize(Display* display) {
    XWindowAttributes attributes = {};
    XGetWindowAttributes(display, DefaultRootWindow(display), &attributes);
    return {attributes.width, attributes.height};
}

// Keeps the dots per inch that the server had when the connection was opened.
bool SetRootSize(Display* display, QSize size) {
    if (RootSize(display) == size) {
        return true;
    }
    const int screen = DefaultScreen(display);
    const double across =
        static_cast<double>(DisplayWidthMM(display, screen)) / DisplayWidth(display, screen);
    const double down =
        static_cast<double>(DisplayHeightMM(display, screen)) / DisplayHeight(display, screen);
    XRRSetScreenSize(display, DefaultRootWindow(display), size.width(), size.height(),
                     std::max(qRound(size.width() * across), 1), std::max(qRound(size.height() * down), 1));
    return RootSize(display) == size;
}

QSize SizeAround(const std::vector<X11Head>& heads) {
    QRect all(0, 0, 1, 1);
    for (const X11Head& head : heads) {
        all |= head.place;
    }
    return all.size();
}

bool FitsServer(Display* display, QSize size) {
    int leastWidth = 0;
    int leastHeight = 0;
    int mostWidth = 0;
    int mostHeight = 0;
    return XRRGetScreenSizeRange(display, DefaultRootWindow(display), &leastWidth, &leastHeight, &mostWidth,
                                 &mostHeight) != 0 &&
           size.width() >= leastWidth && size.height() >= leastHeight && size.width() <= mostWidth &&
           size.height() <= mostHeight;
}

// The server accepts a head only inside the desktop, and a desktop only around all heads. So the desktop
// grows before the heads change, and shrinks after that.
bool SetHeads(Display* display, XRRScreenResources& resources, const std::vector<X11Head>& before,
              const std::vector<X11Head>& after) {
    const QSize wanted = SizeAround(after);
    const QSize both = wanted.expandedTo(RootSize(display));
    if (!FitsServer(display, wanted) || !FitsServer(display, both) || !SetRootSize(display, both)) {
        return false;
    }
    for (std::size_t i = 0; i < after.size(); ++i) {
        if (after[i] != before[i] && !SetHead(display, resources, after[i])) {
            return false;
        }
    }
    return SetRootSize(display, wanted);
}

} // namespace

bool HasRandr(Display* display) {
    int events = 0;
    int errors = 0;
    int major = 1;
    int minor = 5;
    return XRRQueryExtension(display, &events, &errors) != 0 &&
           XRRQueryVersion(display, &major, &minor) != 0 && (major > 1 || minor >= 5);
}

std::vector<QRect> MonitorPlaces(Display* display) {
    std::vector<QRect> places;
    WithMonitors(display, [&](std::span<XRRMonitorInfo> monitors, const XRRMonitorInfo& primary) {
        places.push_back(PlaceOf(primary));
        for (const XRRMonitorInfo& monitor : monitors) {
            if (&monitor != &primary) {
                places.push_back(PlaceOf(monitor));
            }
        }
    });
    return places;
}

X11Output PrimaryOutput(Display* display, XRRScreenResources& resources) {
    X11Output output;
    WithMonitors(display, [&](std::span<XRRMonitorInfo> /*monitors*/, const XRRMonitorInfo& primary) {
        if (primary.noutput > 0) {
            output.reset(XRRGetOutputInfo(display, &resources, primary.outputs[0]));
        }
    });
    return output && output->crtc != 0 ? std::move(output) : nullptr;
}

std::vector<X11Head> ReadHeads(Display* display, XRRScreenResources& resources, RRCrtc primary) {
    std::vector<X11Head> heads;
    for (const RRCrtc id : Counted(resources.crtcs, resources.ncrtc)) {
        const Crtc crtc(XRRGetCrtcInfo(display, &resources, id));
        if (crtc && crtc->mode != 0) {
            const auto outputs = Counted(crtc->outputs, crtc->noutput);
            heads.push_back(
                {id,
                 crtc->mode,
                 crtc->rotation,
                 {outputs.begin(), outputs.end()},
                 {crtc->x, crtc->y, static_cast<int>(crtc->width), static_cast<int>(crtc->height)}});
        }
    }
    const auto first =
        std::find_if(heads.begin(), heads.end(), [&](const X11Head& head) { return head.crtc == primary; });
    if (first == heads.end()) {
        return {};
    }
    std::rotate(heads.begin(), first, std::next(first));
    return heads;
}

QSize SizeOf(const XRRModeInfo& mode, Rotation rotation) {
    const QSize size(static_cast<int>(mode.width), static_cast<int>(mode.height));
    return (rotation & (RR_Rotate_90 | RR_Rotate_270)) != 0 ? size.transposed() : size;
}

const XRRModeInfo* ModeById(const XRRScreenResources& resources, RRMode id) {
    const auto modes = Counted(resources.modes, resources.nmode);
    const auto found =
        std::find_if(modes.begin(), modes.end(), [&](const XRRModeInfo& mode) { return mode.id == id; });
    return found == modes.end() ? nullptr : &*found;
}

std::optional<RRMode> ModeOfSize(const XRRScreenResources& resources, const XRROutputInfo& output,
                                 Rotation rotation, QSize size) {
    for (const RRMode id : Counted(output.modes, output.nmode)) {
        const XRRModeInfo* mode = ModeById(resources, id);
        if (mode != nullptr && SizeOf(*mode, rotation) == size) {
            return id;
        }
    }
    return std::nullopt;
}

// Other programs see the monitors only before or after the change.
bool Arrange(Display* display, XRRScreenResources& resources, const std::vector<X11Head>& before,
             const std::vector<X11Head>& after) {
    const QSize root = RootSize(display);
    XGrabServer(display);
    const bool done = SetHeads(display, resources, before, after);
    if (!done) {
        for (const X11Head& head : before) {
            SetHead(display, resources, head);
        }
        SetRootSize(display, root);
    }
    XUngrabServer(display);
    XSync(display, False);
    return done;
}
