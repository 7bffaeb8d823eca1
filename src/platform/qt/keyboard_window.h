// The full-screen window of the on-screen keyboard.
#pragma once

#include <QImage>
#include <QPoint>
#include <QWidget>

class QtEventPump;

// Modal: while it is shown, keys and pointer reach no other window of the program. Around the keyboard's
// picture stands what the screen showed before. It never closes by itself: a close request is one to the
// jukebox.
class KeyboardWindow : public QWidget {
public:
    explicit KeyboardWindow(QtEventPump& pump);

    // What lies behind the keyboard, from the window's corner on; black where it does not reach.
    void SetGround(const QImage& ground);
    // The keyboard's picture and where it stands on the window; visible before it returns. The pixels are
    // copied.
    void SetPicture(const QImage& picture, const QPoint& place);

protected:
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    // Tab is a key like any other here.
    bool focusNextPrevChild(bool /*next*/) override { return false; }

private:
    QtEventPump& pump_;
    QImage ground_;
    QImage picture_;
    QPoint place_;
};
