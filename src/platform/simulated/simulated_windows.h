// The simulated windows: they note what they are told.
#pragma once

#include "platform/windows.h"

#include <QSize>

#include <cstdint>

class CallRecord;

class SimulatedWindows : public Windows {
public:
    // The record outlives the windows.
    explicit SimulatedWindows(CallRecord& record) : record_(record) {}

    void ShowMainWindow(const QRect& place) override { mainPlace = place; }
    void Refresh(const QImage& frame, int left, int top) override;
    void RefreshKeyboard(const QImage& picture, int left, int top) override;
    void MousePointer(const QString& object, int number) override;
    void ShowVideoWindow(bool visible, const QRect& place) override;

    QRect mainPlace;
    QRect videoPlace;
    bool videoVisible = false;
    // Where the last frame was made visible, its size, and how many frames there were.
    QSize shownSize;
    int shownLeft = 0;
    int shownTop = 0;
    std::int64_t refreshes = 0;
    // The same of the on-screen keyboard.
    QRect keyboardPlace;
    std::int64_t keyboardRefreshes = 0;

private:
    CallRecord& record_;
};
