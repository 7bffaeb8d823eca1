// The monitors of an X server: reading and arranging them.
#pragma once

#include <QRect>

#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>

#include <memory>
#include <optional>
#include <vector>

// Frees what XRandR returns.
template <auto Free>
struct X11Freed {
    template <typename T>
    void operator()(T* what) const {
        Free(what);
    }
};
using X11Resources = std::unique_ptr<XRRScreenResources, X11Freed<XRRFreeScreenResources>>;
using X11Output = std::unique_ptr<XRROutputInfo, X11Freed<XRRFreeOutputInfo>>;

// What one controller of the graphics card shows, at its place in desktop pixels. The place has the size of
// the picture after the rotation.
struct X11Head {
    RRCrtc crtc = 0;
    RRMode mode = 0;
    Rotation rotation = RR_Rotate_0;
    std::vector<RROutput> outputs;
    QRect place;
    bool operator==(const X11Head&) const = default;
};

// Whether the server has XRandR 1.5, which knows logical monitors.
bool HasRandr(Display* display);

// The rectangles of all logical monitors, primary monitor first, as the toolkit sees them.
std::vector<QRect> MonitorPlaces(Display* display);

// The output of the primary monitor; of the first one if none is primary. Null if that monitor has no output.
X11Output PrimaryOutput(Display* display, XRRScreenResources& resources);

// All heads that are on, that of `primary` first. Empty if that one is off.
std::vector<X11Head> ReadHeads(Display* display, XRRScreenResources& resources, RRCrtc primary);

// The size of a mode's picture after the rotation.
QSize SizeOf(const XRRModeInfo& mode, Rotation rotation);

const XRRModeInfo* ModeById(const XRRScreenResources& resources, RRMode id);

// The first mode of that size, after the rotation, that the output lists. An output lists its best modes
// first.
std::optional<RRMode> ModeOfSize(const XRRScreenResources& resources, const XRROutputInfo& output,
                                 Rotation rotation, QSize size);

// Changes the server from the heads `before` to the heads `after`, which are the same ones in the same order,
// and gives the desktop the size that contains them. Returns false, with everything as before, if the server
// refuses.
bool Arrange(Display* display, XRRScreenResources& resources, const std::vector<X11Head>& before,
             const std::vector<X11Head>& after);
