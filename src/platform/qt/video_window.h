// The window of the video on a second screen.
#pragma once

#include <QImage>
#include <QWidget>

class QtEventPump;

// Black until a picture comes. It never takes the keyboard away from the main window, and a close request to
// it is one to the jukebox.
class VideoWindow : public QWidget {
public:
    explicit VideoWindow(QtEventPump& pump);

    // A video's picture at a place of the window; a null picture takes it away.
    void SetVideo(const QImage& picture, const QRect& place);

protected:
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    QtEventPump& pump_;
    QImage video_;
    QRect videoPlace_;
};
