// The simulated windows.
#include "platform/simulated/simulated_windows.h"

#include "platform/simulated/call_record.h"

#include <QImage>

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
