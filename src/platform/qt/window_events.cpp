// Posting the events that all windows share.
#include "platform/qt/window_events.h"

#include "platform/input_event.h"
#include "platform/qt/key_table.h"
#include "platform/qt/qt_event_pump.h"

#include <QCloseEvent>
#include <QKeyEvent>

int ButtonNumber(Qt::MouseButtons buttons) {
    if (buttons.testFlag(Qt::LeftButton)) {
        return 1;
    }
    if (buttons.testFlag(Qt::RightButton)) {
        return 2;
    }
    return buttons.testFlag(Qt::MiddleButton) ? 4 : 0;
}

void PostClose(QtEventPump& pump, QCloseEvent& event) {
    event.ignore();
    pump.Post({.kind = InputKind::kClose});
}

bool PostKeyDown(QtEventPump& pump, const QKeyEvent& event) {
    const SystemKey pressed{event.key(), event.modifiers().testFlag(Qt::KeypadModifier),
                            event.nativeScanCode()};
    const std::optional<int> code = VirtualKeyOf(pressed);
    if (code) {
        pump.Post({.kind = InputKind::kKeyDown, .code = *code});
    }
    return code.has_value();
}
