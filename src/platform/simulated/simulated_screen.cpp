// The simulated monitors, windows and message boxes.
#include "platform/simulated/simulated_screen.h"

#include "core/monitor_layout.h"
#include "platform/simulated/calls.h"

#include <QImage>

#include <utility>

SimulatedDisplay::SimulatedDisplay(std::vector<QRect> monitors, CallRecord& record, const Failures& failures)
    : home_(std::move(monitors)), monitors_(home_), record_(record), failures_(failures) {}

std::vector<QRect> SimulatedDisplay::EnumDisplayMonitors() {
    return failures_.Has("EnumDisplayMonitors") ? std::vector<QRect>() : monitors_;
}

DisplayMode SimulatedDisplay::CurrentMode() {
    return {monitors_.front().width(), monitors_.front().height(), bits_};
}

// Testing a mode and setting it are one system operation with a flag, so they fail together.
DisplayChange SimulatedDisplay::TestDisplaySettings(const DisplayMode& mode) {
    const bool failing = failures_.Has("ChangeDisplaySettings") || failures_.Has("TestDisplaySettings");
    const bool possible = mode.width > 0 && mode.height > 0 && mode.bits > 0;
    return possible && !failing ? DisplayChange::kSuccessful : DisplayChange::kRefused;
}

DisplayChange SimulatedDisplay::ChangeDisplaySettings(const DisplayMode& mode) {
    record_.Add({QStringLiteral("ChangeDisplaySettings"), mode.width, mode.height, mode.bits});
    const DisplayChange result = TestDisplaySettings(mode);
    if (result == DisplayChange::kSuccessful) {
        monitors_ = LayoutWithPrimary(home_, QSize(mode.width, mode.height));
        bits_ = mode.bits;
    }
    return result;
}

void SimulatedWindows::Refresh(const QImage& frame, int left, int top) {
    shownSize = frame.size();
    shownLeft = left;
    shownTop = top;
    ++refreshes;
}

void SimulatedWindows::RefreshKeyboard(const QImage& picture, int left, int top) {
    keyboardPlace = QRect(QPoint(left, top), picture.size());
    ++keyboardRefreshes;
}

void SimulatedWindows::MousePointer(const QString& object, int number) {
    record_.Add({QStringLiteral("MousePointer"), object, number});
}

void SimulatedWindows::ShowVideoWindow(bool visible, const QRect& place) {
    videoVisible = visible;
    videoPlace = place;
}

void SimulatedMessageBox::Show(const QString& title, const QString& text) {
    record_.Add({QStringLiteral("MsgBox"), title, text});
}

bool SimulatedMessageBox::AskYesNo(const QString& title, const QString& text) {
    Show(title, text);
    return false;
}
