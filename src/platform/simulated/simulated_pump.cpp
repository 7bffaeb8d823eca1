// Running pending events, and telling a wait that can never end.
#include "platform/simulated/simulated_pump.h"

#include "platform/simulated/call_record.h"
#include "platform/simulated/simulated_clock.h"

#include <QJsonDocument>

void SimulatedPump::DoEvents() {
    if (runPending && runPending()) {
        Stirred();
        return;
    }
    ++idlePoints_;
    if (idlePoints_ < kIdlePoints) {
        return;
    }
    QString text =
        QStringLiteral("pending events were let through %1 times, with nothing pending and nothing arriving")
            .arg(kIdlePoints);
    if (!record_.Last().isEmpty()) {
        text += QStringLiteral("; the last call was ") +
                QString::fromUtf8(QJsonDocument(record_.Last()).toJson(QJsonDocument::Compact));
    }
    throw SimulatedHang(text);
}

// A wait of a given time always ends: its own point is no sign of a hang, nor of life.
void SimulatedPump::Wait(double milliseconds) {
    clock_.Advance(milliseconds);
    if (runPending && runPending()) {
        Stirred();
    }
}
