// The window of the video on a second screen.
#pragma once

#include "platform/qt/shown_video.h"

#include <QWidget>

#include <optional>

class QtEventPump;

// Black until a picture comes. Never takes the keyboard focus from the main window. A close request goes to
// the jukebox.
class VideoWindow : public QWidget {
public:
    explicit VideoWindow(QtEventPump& pump);

    // Shows a video's picture; nothing removes it.
    void SetVideo(const std::optional<ShownVideo>& video);

protected:
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    QtEventPump& pump_;
    std::optional<ShownVideo> video_;
};
