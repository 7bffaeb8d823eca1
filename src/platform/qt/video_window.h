// The window of the video on a second screen.
#pragma once

#include <QImage>
#include <QWidget>

class QtEventPump;

// Black until a picture comes. Never takes the keyboard focus from the main window. A close request goes to
// the jukebox.
class VideoWindow : public QWidget {
public:
    explicit VideoWindow(QtEventPump& pump);

    // Shows a video's picture at a place of the window; a null picture removes it.
    void SetVideo(const QImage& picture, const QRect& place);

protected:
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    QtEventPump& pump_;
    QImage video_;
    QRect videoPlace_;
};
