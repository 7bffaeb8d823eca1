// Moving the neighbours of the primary monitor.
#include "core/monitor_layout.h"

#include <algorithm>
#include <array>

namespace {

std::vector<QRect> Moved(const std::vector<QRect>& monitors, QSize size, QSize by) {
    const QRect& primary = monitors.front();
    std::vector<QRect> moved = monitors;
    moved.front().setSize(size);
    for (std::size_t i = 1; i < moved.size(); ++i) {
        const QRect& before = monitors[i];
        moved[i].translate(before.left() > primary.right() ? by.width() : 0,
                           before.top() > primary.bottom() ? by.height() : 0);
    }
    return moved;
}

// Monitors that mirror each other overlap from the start.
bool OverlapsNewly(const std::vector<QRect>& before, const std::vector<QRect>& after) {
    for (std::size_t i = 0; i < after.size(); ++i) {
        for (std::size_t j = i + 1; j < after.size(); ++j) {
            if (after[i].intersects(after[j]) && !before[i].intersects(before[j])) {
                return true;
            }
        }
    }
    return false;
}

} // namespace

// A monitor that moves away never meets another one, because everything beyond it moves as far. A monitor
// that closes up can: one that is below the primary monitor and wider than it can meet one that is right of
// it. Then the gap in that direction stays.
std::vector<QRect> LayoutWithPrimary(const std::vector<QRect>& monitors, QSize size) {
    if (monitors.empty()) {
        return monitors;
    }
    const QSize by = size - monitors.front().size();
    const QSize away = by.expandedTo(QSize(0, 0));
    const std::array closer = {by, QSize(by.width(), away.height()), QSize(away.width(), by.height())};
    for (const QSize& step : closer) {
        std::vector<QRect> moved = Moved(monitors, size, step);
        if (!OverlapsNewly(monitors, moved)) {
            return moved;
        }
    }
    return Moved(monitors, size, away);
}
