// Reading the monitors and changing the mode.
#include "platform/qt/qt_display.h"

#include "platform/qt/screens.h"
#include "platform/qt/x11_screen.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

#include <algorithm>
#include <tuple>

namespace {

// The most milliseconds until the toolkit has noticed a new mode.
constexpr int kLongestNotice = 1000;

int TrueColourBits(int bits) {
    return bits == 24 ? 32 : bits;
}

void WaitForMonitors(std::vector<QRect> expected) {
    const auto inOrder = [](const QRect& a, const QRect& b) {
        return std::tuple(a.left(), a.top(), a.width(), a.height()) <
               std::tuple(b.left(), b.top(), b.width(), b.height());
    };
    std::sort(expected.begin() + 1, expected.end(), inOrder);
    const auto noticed = [&] {
        std::vector<QRect> places = ScreenPlaces();
        std::sort(places.begin() + 1, places.end(), inOrder);
        return places == expected;
    };
    QElapsedTimer time;
    time.start();
    while (!noticed() && time.elapsed() < kLongestNotice) {
        QCoreApplication::processEvents();
        QThread::msleep(1);
    }
}

} // namespace

// The toolkit does not notice every change of a monitor, so the X server is asked first.
std::vector<QRect> QtDisplay::EnumDisplayMonitors() {
    std::vector<QRect> monitors = x11_ != nullptr ? x11_->Monitors() : std::vector<QRect>();
    return monitors.empty() ? ScreenPlaces() : monitors;
}

DisplayMode QtDisplay::CurrentMode() {
    const QSize size = EnumDisplayMonitors().front().size();
    const int bits = x11_ != nullptr ? x11_->BitsPerPixel() : TrueColourBits(ScreenDepth());
    return {size.width(), size.height(), bits};
}

bool QtDisplay::IsCurrent(const DisplayMode& mode) {
    const DisplayMode now = CurrentMode();
    return now.width == mode.width && now.height == mode.height && now.bits == TrueColourBits(mode.bits);
}

DisplayChange QtDisplay::TestDisplaySettings(const DisplayMode& mode) {
    if (x11_ == nullptr) {
        log_(QStringLiteral(" : Changement de mode impossible avec la plate-forme ") + WindowSystem());
        return DisplayChange::kNoModes;
    }
    if (IsCurrent(mode)) {
        return DisplayChange::kSuccessful;
    }
    const std::vector<QSize> modes = x11_->Modes();
    const bool listed = std::find(modes.begin(), modes.end(), QSize(mode.width, mode.height)) != modes.end();
    return listed && TrueColourBits(mode.bits) == x11_->BitsPerPixel() ? DisplayChange::kSuccessful
                                                                       : DisplayChange::kRefused;
}

DisplayChange QtDisplay::ChangeDisplaySettings(const DisplayMode& mode) {
    const DisplayChange possible = TestDisplaySettings(mode);
    if (possible != DisplayChange::kSuccessful || IsCurrent(mode)) {
        return possible;
    }
    if (!x11_->SetMode(QSize(mode.width, mode.height))) {
        log_(QStringLiteral(" : Mode %1 x %2 refusé par le serveur X").arg(mode.width).arg(mode.height));
        return DisplayChange::kRefused;
    }
    WaitForMonitors(EnumDisplayMonitors());
    return DisplayChange::kSuccessful;
}
