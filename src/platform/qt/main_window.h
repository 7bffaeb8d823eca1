// The cabinet's main window: the frame, the running video over it, or a notice page instead of both.
#pragma once

#include "platform/qt/notice.h"
#include "platform/qt/shown_video.h"

#include <QImage>
#include <QWidget>

#include <optional>

class QtEventPump;

// Never closes by itself: a close request only becomes an event. Keys and pointer go only to the pump.
class MainWindow : public QWidget {
public:
    explicit MainWindow(QtEventPump& pump);

    // Makes a frame of 32-bit pixels visible at (left, top), with black around it, before it returns.
    // Unchanged rows are neither copied nor sent to the screen.
    void Refresh(const QImage& frame, int left, int top);
    // Shows a video's picture over the frame; nothing removes it. A picture in the place of the last one is
    // visible before this returns, another place with the next frame. The place of a small video is relative
    // to the frame's top left corner, that of a full one to the window's.
    void SetVideo(const std::optional<ShownVideo>& video);
    // Shows a notice page, which hides frame and video until it is removed.
    void SetNotice(const std::optional<Notice>& notice);
    // The frame as the window shows it, with black around it, without video and notice page.
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
    // Tab is an ordinary key here.
    bool focusNextPrevChild(bool /*next*/) override { return false; }

private:
    void FitCanvas();
    QRect CopyChangedRows(const QImage& frame);
    std::optional<ShownVideo> VideoOnWindow() const;
    QPointF OnFrame(const QMouseEvent& event) const;
    bool HitsFrame(const QMouseEvent& event) const;

    QtEventPump& pump_;
    // The window's contents without video and notice page, in the window's size.
    QImage canvas_;
    QRect framePlace_;
    std::optional<ShownVideo> video_;
    std::optional<Notice> notice_;
};
