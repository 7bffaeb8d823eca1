// The cabinet's main window: the frame, the running video over it, or a page of words in their place.
#pragma once

#include "platform/qt/notice.h"

#include <QImage>
#include <QWidget>

#include <optional>

class QtEventPump;

// It never closes by itself: a close request only becomes an event. Keys and pointer go to the pump and
// nowhere else.
class MainWindow : public QWidget {
public:
    explicit MainWindow(QtEventPump& pump);

    // Makes a frame of 32-bit pixels visible at (left, top), black around it, before it returns. Rows that
    // have not changed cost neither a copy nor a transfer to the screen.
    void Refresh(const QImage& frame, int left, int top);
    // A video's picture over the frame, keeping its proportions, black around it. `place` counts from the
    // frame's top left corner. A null picture takes it away.
    void SetVideo(const QImage& picture, const QRect& place);
    // A page of words that hides frame and video until it is taken away.
    void SetNotice(const std::optional<Notice>& notice);
    // The frame as the window shows it, black around it, without video and notice.
    const QImage& Shown() const { return canvas_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    // Tab is a key like any other here.
    bool focusNextPrevChild(bool /*next*/) override { return false; }

private:
    void FitCanvas();
    QRect CopyChangedRows(const QImage& frame);
    QRect VideoOnWindow() const { return videoPlace_.translated(framePlace_.topLeft()); }
    QPointF OnFrame(const QMouseEvent& event) const;
    bool HitsFrame(const QMouseEvent& event) const;

    QtEventPump& pump_;
    // What the window shows apart from video and notice, in the window's size.
    QImage canvas_;
    QRect framePlace_;
    QImage video_;
    // Counted from the frame's top left corner.
    QRect videoPlace_;
    std::optional<Notice> notice_;
};

// Draws a picture as large as it fits into the place, in its middle, black around it.
void PaintFitted(QPainter& painter, const QImage& picture, const QRect& place);
