// The controls of a modal dialog, as its window shows them. What a person does with them are events, see
// platform/input_event.h.
#pragma once

#include <QRect>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class QImage;

// A control by its given name, and the dialog that it belongs to. An element of a control array has an index
// from 0, any other control -1.
struct ControlName {
    QString name;
    int index = -1;
    QString dialog = {};

    bool operator==(const ControlName&) const = default;
};

// What a control shows.
struct ControlLook {
    // Its text, caption or selected entry; "true" or "false" for a switch, that is a box or an option.
    QString value;
    bool isSwitch = false;
    // The entries of a list.
    QStringList entries;
    bool enabled = true;
    bool visible = true;
    // Its text tells the operator that something is missing.
    bool warns = false;
    // The picture of a picture control; null when it is empty. A new picture is a new object.
    std::shared_ptr<const QImage> picture;
    // The place of a field over the preview of a theme, in pixels of the preview.
    QRect place;
};

// The jukebox's part in showing a dialog.
struct DialogParts {
    // Prepares the dialog; it is open afterwards.
    std::function<void()> load;
    // Whether the dialog is still open.
    std::function<bool()> isOpen;
    // Called once the dialog is on the screen.
    std::function<void()> shown = {};
    // What a control of the dialog shows now.
    std::function<ControlLook(const ControlName&)> look = {};
};
