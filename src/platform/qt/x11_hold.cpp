// Watching and correcting the windows through a connection of its own, and grabbing the keyboard.
#include "platform/qt/x11_hold.h"

#include "core/path_text.h"

// Before the headers of X11, whose macros have names that the toolkit uses.
#include <QApplication>

#include "platform/qt/x11_layout.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <span>
#include <utility>

namespace {

// After a change; a window manager often makes several at once.
constexpr std::chrono::milliseconds kSoon{50};
// After an attempt to put things right.
constexpr std::chrono::milliseconds kAgain{250};
constexpr std::chrono::milliseconds kLater{1000};
constexpr int kQuickAttempts = 8;

// In a request to the window manager: a state is added, and the request comes from a program that acts for
// the user.
constexpr long kAddState = 1;
constexpr long kForTheUser = 2;

using HeldWindows = std::vector<HeldWindow>;
using Longs = std::vector<unsigned long>;

struct WindowTree {
    Window parent = None;
    // The lowest one first.
    std::vector<Window> children;
};

bool Contains(const Longs& longs, unsigned long value) {
    return std::find(longs.begin(), longs.end(), value) != longs.end();
}

WindowTree TreeOf(Display* display, Window window) {
    WindowTree tree;
    Window root = None;
    Window* children = nullptr;
    unsigned count = 0;
    if (XQueryTree(display, window, &root, &tree.parent, &children, &count) != 0) {
        const std::unique_ptr<Window, X11Freed<XFree>> owned(children);
        tree.children.assign(children, children + count);
    }
    return tree;
}

// Nothing for a window that is gone or not visible.
std::optional<QRect> PlaceOf(Display* display, Window window) {
    XWindowAttributes attributes = {};
    Window child = None;
    int left = 0;
    int top = 0;
    if (XGetWindowAttributes(display, window, &attributes) == 0 || attributes.map_state != IsViewable ||
        attributes.c_class == InputOnly ||
        XTranslateCoordinates(display, window, attributes.root, 0, 0, &left, &top, &child) == False) {
        return std::nullopt;
    }
    return QRect(left, top, attributes.width, attributes.height);
}

} // namespace

// The connection. Windows of other programs can vanish at any time: the toolkit's error handler ignores
// the requests that fail for that reason.
struct X11Hold::Server {
    Server(Display* ownDisplay, const QNativeInterface::QX11Application& x11);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    Atom Named(const char* name) const { return XInternAtom(display, name, False); }
    Longs LongsOf(Window window, Atom property, Atom type) const;
    bool HasManager() const;
    // Begins or ends the watch on all top-level windows.
    void Watch(bool isManaged);

    void Send(Window window, const char* type, long first, long second) const;
    // The X server's clock. A request with an earlier time than the last change of the focus is ignored.
    Time TimeNow() const;
    // Asks for the focus and the front.
    void Activate(Window window) const {
        Send(window, "_NET_ACTIVE_WINDOW", kForTheUser, static_cast<long>(TimeNow()));
    }
    // A state that the window manager does not know counts as set.
    bool HasState(Window window, const char* state) const;
    // Each of these asks for what is missing. The first two return whether nothing was.
    bool KeepVisible(const HeldWindow& held) const;
    bool KeepPlace(const HeldWindow& held) const;
    void KeepState(const HeldWindow& held, const char* state) const;
    // On every virtual desktop, so that switching to another one does not hide it.
    void KeepOnDesktops(const HeldWindow& held) const;
    void KeepFocus(const HeldWindow& top) const;

    // The child of the root window that contains a window: the window manager's frame or the window itself.
    Window FrameOf(Window window) const;
    // Whether the toolkit made a window: each connection gets window ids from a range of its own.
    bool IsOfToolkit(Window window) const { return (window & ~idMask) == idBase; }
    // The highest window of another program above one of these; None if there is none.
    Window WindowAbove(const HeldWindows& windows) const;
    QString ClassOf(Window frame) const;
    // The window that the window manager has put into a frame, or the frame if it has none.
    Window ClientOf(Window frame) const;

    bool Grab(Window window);
    void Ungrab();

    Display* display;
    Window root;
    // Never shown; its properties tell the time.
    Window clock;
    // The toolkit's connection: a grab sends the keys to windows of its own connection only.
    Display* toolkit;
    unsigned long idBase;
    unsigned long idMask;
    Atom wmCheck;
    // What the window manager can do; empty until it has been read.
    Longs supported;
    bool isWatching = false;
    bool isGrabbed = false;
};

X11Hold::Server::Server(Display* ownDisplay, const QNativeInterface::QX11Application& x11)
    : display(ownDisplay), root(DefaultRootWindow(ownDisplay)),
      clock(XCreateWindow(ownDisplay, root, -1, -1, 1, 1, 0, 0, InputOnly, nullptr, 0, nullptr)),
      toolkit(x11.display()), idBase(xcb_get_setup(x11.connection())->resource_id_base),
      idMask(xcb_get_setup(x11.connection())->resource_id_mask), wmCheck(Named("_NET_SUPPORTING_WM_CHECK")) {
    XSelectInput(display, root, PropertyChangeMask);
    XSelectInput(display, clock, PropertyChangeMask);
}

X11Hold::Server::~Server() {
    Ungrab();
    XCloseDisplay(display);
}

Longs X11Hold::Server::LongsOf(Window window, Atom property, Atom type) const {
    constexpr long kMost = 1024;
    Atom actualType = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long rest = 0;
    unsigned char* data = nullptr;
    const int result = XGetWindowProperty(display, window, property, 0, kMost, False, type, &actualType,
                                          &format, &count, &rest, &data);
    const std::unique_ptr<unsigned char, X11Freed<XFree>> owned(data);
    Longs longs;
    // A property may name nothing: some window managers leave an empty state behind when they hide a window.
    if (result == Success && data != nullptr && format == 32 && count > 0) {
        longs.resize(count);
        std::memcpy(longs.data(), data, count * sizeof(unsigned long));
    }
    return longs;
}

// A window manager that has crashed leaves the root window's property behind, but not the window that it
// names.
bool X11Hold::Server::HasManager() const {
    const Longs named = LongsOf(root, wmCheck, XA_WINDOW);
    return !named.empty() && LongsOf(named.front(), wmCheck, XA_WINDOW) == named;
}

void X11Hold::Server::Watch(bool isManaged) {
    if (isManaged != isWatching) {
        isWatching = isManaged;
        XSelectInput(display, root, PropertyChangeMask | (isManaged ? SubstructureNotifyMask : NoEventMask));
        XFlush(display);
    }
    if (isManaged && supported.empty()) {
        supported = LongsOf(root, Named("_NET_SUPPORTED"), XA_ATOM);
    }
}

void X11Hold::Server::Send(Window window, const char* type, long first, long second) const {
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = Named(type);
    event.xclient.format = 32;
    event.xclient.data.l[0] = first;
    event.xclient.data.l[1] = second;
    XSendEvent(display, root, False, SubstructureNotifyMask | SubstructureRedirectMask, &event);
}

Time X11Hold::Server::TimeNow() const {
    XChangeProperty(display, clock, XA_WM_NAME, XA_STRING, 8, PropModeAppend, nullptr, 0);
    XEvent event = {};
    XWindowEvent(display, clock, PropertyChangeMask, &event);
    return event.xproperty.time;
}

bool X11Hold::Server::HasState(Window window, const char* state) const {
    const Atom atom = Named(state);
    return !Contains(supported, atom) || Contains(LongsOf(window, Named("_NET_WM_STATE"), XA_ATOM), atom);
}

bool X11Hold::Server::KeepVisible(const HeldWindow& held) const {
    XWindowAttributes attributes = {};
    if (XGetWindowAttributes(display, held.id, &attributes) == 0 || attributes.map_state == IsViewable) {
        return true;
    }
    XMapRaised(display, held.id);
    Activate(held.id);
    return false;
}

void X11Hold::Server::KeepState(const HeldWindow& held, const char* state) const {
    if (!HasState(held.id, state)) {
        Send(held.id, "_NET_WM_STATE", kAddState, static_cast<long>(Named(state)));
    }
}

void X11Hold::Server::KeepOnDesktops(const HeldWindow& held) const {
    constexpr unsigned long kAll = 0xffffffff;
    const Longs desktop = LongsOf(held.id, Named("_NET_WM_DESKTOP"), XA_CARDINAL);
    if (!desktop.empty() && (desktop.front() & kAll) != kAll) {
        Send(held.id, "_NET_WM_DESKTOP", static_cast<long>(kAll), kForTheUser);
    }
}

bool X11Hold::Server::KeepPlace(const HeldWindow& held) const {
    const std::optional<QRect> place = PlaceOf(display, held.id);
    if (!held.place || !place || *place == *held.place) {
        return true;
    }
    XMoveResizeWindow(display, held.id, held.place->left(), held.place->top(),
                      static_cast<unsigned>(held.place->width()),
                      static_cast<unsigned>(held.place->height()));
    return false;
}

void X11Hold::Server::KeepFocus(const HeldWindow& top) const {
    Window focus = None;
    int revert = 0;
    XGetInputFocus(display, &focus, &revert);
    if (!IsOfToolkit(focus)) {
        Activate(top.id);
    }
}

Window X11Hold::Server::FrameOf(Window window) const {
    Window frame = window;
    for (Window parent = window; parent != None && parent != root; parent = TreeOf(display, frame).parent) {
        frame = parent;
    }
    return frame;
}

Window X11Hold::Server::WindowAbove(const HeldWindows& windows) const {
    std::vector<std::pair<Window, QRect>> ours;
    for (const HeldWindow& held : windows) {
        if (const std::optional<QRect> place = PlaceOf(display, held.id)) {
            ours.emplace_back(FrameOf(held.id), *place);
        }
    }
    const auto isOurFrame = [&](Window window) {
        return std::any_of(ours.begin(), ours.end(), [&](const auto& our) { return our.first == window; });
    };
    const std::vector<Window> all = TreeOf(display, root).children;
    // The places of our windows below the one that is looked at.
    std::vector<QRect> below;
    Window highest = None;
    for (const Window window : all) {
        if (isOurFrame(window)) {
            for (const auto& [frame, place] : ours) {
                if (frame == window) {
                    below.push_back(place);
                }
            }
        } else if (!below.empty() && !IsOfToolkit(window)) {
            const QRect place = PlaceOf(display, window).value_or(QRect());
            const bool covers = std::any_of(below.begin(), below.end(),
                                            [&](const QRect& our) { return our.intersects(place); });
            highest = covers ? window : highest;
        }
    }
    return highest;
}

// The class that a program gives its windows, such as "XTerm"; empty if it gives none.
QString X11Hold::Server::ClassOf(Window frame) const {
    std::vector<Window> candidates = TreeOf(display, frame).children;
    candidates.push_back(frame);
    for (const Window window : candidates) {
        XClassHint hint = {};
        if (XGetClassHint(display, window, &hint) != 0) {
            const std::unique_ptr<char, X11Freed<XFree>> name(hint.res_name);
            const std::unique_ptr<char, X11Freed<XFree>> ofClass(hint.res_class);
            return TextOfPath(ofClass.get());
        }
    }
    return {};
}

Window X11Hold::Server::ClientOf(Window frame) const {
    const Atom state = Named("WM_STATE");
    for (const Window window : TreeOf(display, frame).children) {
        if (!LongsOf(window, state, state).empty()) {
            return window;
        }
    }
    return frame;
}

// Keys go to the window of ours that has the focus, and to `window` while none of them has it. It fails while
// another program holds the keyboard. A second grab of the same window changes nothing.
bool X11Hold::Server::Grab(Window window) {
    isGrabbed =
        XGrabKeyboard(toolkit, window, True, GrabModeAsync, GrabModeAsync, CurrentTime) == GrabSuccess;
    return isGrabbed;
}

void X11Hold::Server::Ungrab() {
    if (std::exchange(isGrabbed, false)) {
        XUngrabKeyboard(toolkit, CurrentTime);
        XFlush(toolkit);
    }
}

std::unique_ptr<X11Hold> X11Hold::Begin(std::function<HeldWindows()> windows,
                                        std::function<void(const QString& line)> log) {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    Display* display = x11 == nullptr || x11->display() == nullptr ? nullptr : XOpenDisplay(nullptr);
    if (display == nullptr) {
        return nullptr;
    }
    return std::unique_ptr<X11Hold>(
        new X11Hold(std::make_unique<Server>(display, *x11), std::move(windows), std::move(log)));
}

X11Hold::X11Hold(std::unique_ptr<Server> server, std::function<HeldWindows()> windows,
                 std::function<void(const QString& line)> log)
    : server_(std::move(server)), windows_(std::move(windows)), log_(std::move(log)),
      notifier_(ConnectionNumber(server_->display), QSocketNotifier::Read) {
    look_.setSingleShot(true);
    QObject::connect(&look_, &QTimer::timeout, [this] { Look(); });
    QObject::connect(&notifier_, &QSocketNotifier::activated, [this] { TakeEvents(); });
    Look();
}

X11Hold::~X11Hold() = default;

// Even while it waits between attempts that did not help: the keys have to go to another window now.
void X11Hold::LookSoon() {
    if (server_->isWatching) {
        attempts_ = 0;
        look_.start(kSoon);
    }
}

// Without a window manager only the start of one counts.
void X11Hold::TakeEvents() {
    bool changed = false;
    while (XPending(server_->display) > 0) {
        XEvent event = {};
        XNextEvent(server_->display, &event);
        const bool isOfManager = event.type == PropertyNotify && event.xproperty.atom == server_->wmCheck;
        if (isOfManager) {
            server_->supported.clear();
        }
        changed = changed || isOfManager || server_->isWatching;
    }
    if (changed && !look_.isActive()) {
        look_.start(kSoon);
    }
}

void X11Hold::Look() {
    const bool isManaged = server_->HasManager();
    const HeldWindows windows = isManaged ? windows_() : HeldWindows();
    server_->Watch(isManaged);
    if (windows.empty()) {
        server_->Ungrab();
        attempts_ = 0;
    } else if (KeepAll(windows)) {
        attempts_ = 0;
    } else {
        ++attempts_;
        look_.start(attempts_ > kQuickAttempts ? kLater : kAgain);
    }
    // Replies may have brought events along, for which the notifier does not wake.
    TakeEvents();
}

// A window manager may not grant a state. That alone is no reason to try again without another change.
bool X11Hold::KeepAll(const HeldWindows& windows) {
    bool isKept = true;
    for (const HeldWindow& held : windows) {
        isKept = server_->KeepVisible(held) && isKept;
        server_->KeepOnDesktops(held);
        server_->KeepState(held, "_NET_WM_STATE_ABOVE");
        if (held.isFullScreen) {
            server_->KeepState(held, "_NET_WM_STATE_FULLSCREEN");
        }
        isKept = server_->KeepPlace(held) && isKept;
    }
    isKept = KeepInFront(windows) && isKept;
    if (QApplication::activePopupWidget() == nullptr) {
        isKept = server_->Grab(windows.back().id) && isKept;
    }
    // The grab brings the keys in any case, so one request for the focus is enough.
    server_->KeepFocus(windows.back());
    XFlush(server_->display);
    return isKept;
}

bool X11Hold::KeepInFront(const HeldWindows& windows) {
    const Window above = server_->WindowAbove(windows);
    if (above == None) {
        return true;
    }
    if (std::exchange(coveredBy_, above) != above) {
        log_(QStringLiteral(" : Fenêtre couverte par %1, remise devant").arg(server_->ClassOf(above)));
    }
    if (attempts_ > 0) {
        for (const HeldWindow& held : windows) {
            XRaiseWindow(server_->display, held.id);
        }
    }
    // xfwm4 moves a full-screen window to the front when it gets the focus, and leaves it below another one
    // if it has the focus already. The keyboard is grabbed, so no key goes to the other window meanwhile.
    if (attempts_ > 1) {
        XSetInputFocus(server_->display, server_->ClientOf(above), RevertToParent, CurrentTime);
    }
    server_->Activate(windows.back().id);
    return false;
}
