// Where the monitors of a desktop are after the primary one has changed its size.
#pragma once

#include <QRect>
#include <QSize>

#include <vector>

// Takes the rectangles of all monitors in desktop pixels, primary monitor first, and returns them in the same
// order with the primary monitor in its new size. Its corner stays. Monitors right of it and below it move by
// the difference. Monitors that did not overlap before do not overlap afterwards.
std::vector<QRect> LayoutWithPrimary(const std::vector<QRect>& monitors, QSize size);
