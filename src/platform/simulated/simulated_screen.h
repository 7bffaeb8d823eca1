// The simulated monitors and what they show: windows, message boxes, dialogs.
#pragma once

#include "platform/dialogs.h"
#include "platform/display.h"
#include "platform/message_box.h"
#include "platform/windows.h"

#include <QSize>

#include <cstdint>
#include <functional>

class CallRecord;
class Failures;

// Monitors with given rectangles, primary monitor first, that accept every mode of a positive size and depth.
// The neighbours of the primary monitor move with its edges.
class SimulatedDisplay : public Display {
public:
    // Record and failures outlive the display. At least one monitor.
    SimulatedDisplay(std::vector<QRect> monitors, CallRecord& record, const Failures& failures);

    std::vector<QRect> EnumDisplayMonitors() override;
    DisplayMode CurrentMode() override;
    DisplayChange TestDisplaySettings(const DisplayMode& mode) override;
    DisplayChange ChangeDisplaySettings(const DisplayMode& mode) override;

private:
    // The monitors at the start and now.
    std::vector<QRect> home_;
    std::vector<QRect> monitors_;
    int bits_ = 32;
    CallRecord& record_;
    const Failures& failures_;
};

// Windows that record what they show.
class SimulatedWindows : public Windows {
public:
    // The record outlives the windows.
    explicit SimulatedWindows(CallRecord& record) : record_(record) {}

    void ShowMainWindow(const QRect& place) override { mainPlace = place; }
    void Refresh(const QImage& frame, int left, int top) override;
    void RefreshKeyboard(const QImage& picture, int left, int top) override;
    void MousePointer(const QString& object, int number) override;
    void PlaceVideoSurface(const QRect& /*place*/) override {}
    void ShowVideoWindow(bool visible, const QRect& place) override;

    QRect mainPlace;
    QRect videoPlace;
    bool videoVisible = false;
    // The position and size of the last frame, and the number of frames.
    QSize shownSize;
    int shownLeft = 0;
    int shownTop = 0;
    std::int64_t refreshes = 0;
    // The same for the on-screen keyboard.
    QRect keyboardPlace;
    std::int64_t keyboardRefreshes = 0;

private:
    CallRecord& record_;
};

// Message boxes that close by themselves.
class SimulatedMessageBox : public MessageBox {
public:
    // The record outlives the boxes.
    explicit SimulatedMessageBox(CallRecord& record) : record_(record) {}

    void Show(const QString& title, const QString& text) override;
    // Always no, the answer of a box that is closed without one.
    bool AskYesNo(const QString& title, const QString& text) override;

private:
    CallRecord& record_;
};

// Modal dialogs, shown by the code that drives the simulation.
class SimulatedDialogs : public Dialogs {
public:
    void ShowModal(const QString& dialog) override {
        if (showModal) {
            showModal(dialog);
        }
    }

    // Shows a dialog and returns when it is closed. When this is empty, a dialog is cancelled at once.
    std::function<void(const QString&)> showModal;
};
