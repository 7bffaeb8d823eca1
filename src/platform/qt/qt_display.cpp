// Reading the monitors and changing the mode.
#include "platform/qt/qt_display.h"

#include "platform/qt/screens.h"
#include "platform/qt/x11_screen.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

#include <algorithm>

namespace {

// The most milliseconds until the toolkit has noticed a new mode.
constexpr int kLongestNotice = 1000;

int TrueColourBits(int bits) {
    return bits == 24 ? 32 : bits;
}

void WaitForSize(QSize size) {
    QElapsedTimer time;
    time.start();
    while (ScreenPlaces().front().size() != size && time.elapsed() < kLongestNotice) {
        QCoreApplication::processEvents();
        QThread::msleep(1);
    }
}

} // namespace

std::vector<QRect> QtDisplay::EnumDisplayMonitors() {
    return ScreenPlaces();
}

DisplayMode QtDisplay::CurrentMode() {
    const QSize size = ScreenPlaces().front().size();
    const int bits = x11_ != nullptr ? x11_->BitsPerPixel() : TrueColourBits(ScreenDepth());
    return {size.width(), size.height(), bits};
}

DisplayChange QtDisplay::TestDisplaySettings(const DisplayMode& mode) {
    if (x11_ == nullptr) {
        log_(QStringLiteral(" : Changement de mode impossible avec la plate-forme ") + WindowSystem());
        return DisplayChange::kRefused;
    }
    const std::vector<X11Mode> modes = x11_->Modes();
    const bool listed = std::any_of(modes.begin(), modes.end(), [&](const X11Mode& known) {
        return known.width == mode.width && known.height == mode.height;
    });
    return listed && TrueColourBits(mode.bits) == x11_->BitsPerPixel() ? DisplayChange::kSuccessful
                                                                       : DisplayChange::kRefused;
}

DisplayChange QtDisplay::ChangeDisplaySettings(const DisplayMode& mode) {
    const DisplayChange possible = TestDisplaySettings(mode);
    if (possible != DisplayChange::kSuccessful) {
        return possible;
    }
    if (!x11_->SetMode({mode.width, mode.height})) {
        return DisplayChange::kRefused;
    }
    WaitForSize(QSize(mode.width, mode.height));
    return DisplayChange::kSuccessful;
}
