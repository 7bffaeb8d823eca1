// Asking the service manager for the state of the system.
#include "app/cabinet/system_end.h"

#include <QFileInfo>
#include <QProcess>

namespace {

constexpr int kPatience = 1'000; // milliseconds

} // namespace

bool SystemIsEnding() {
    // The folder that systemd documents as the sign of its presence, in sd_booted(3).
    if (!QFileInfo(QStringLiteral("/run/systemd/system")).isDir()) {
        return true;
    }
    QProcess asked;
    asked.start(QStringLiteral("systemctl"), {QStringLiteral("is-system-running")});
    if (!asked.waitForFinished(kPatience)) {
        asked.kill();
        asked.waitForFinished(kPatience);
        return false;
    }
    return asked.readAllStandardOutput().trimmed() == "stopping";
}
