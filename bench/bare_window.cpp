// A bare full-screen window with one picture: the reference for the start time of the jukebox.
#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QScreen>
#include <QWidget>

namespace {

class Window : public QWidget {
public:
    explicit Window(QImage picture) : picture_(std::move(picture)) {}

protected:
    void paintEvent(QPaintEvent* /*event*/) override { QPainter(this).drawImage(rect(), picture_); }

private:
    QImage picture_;
};

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    Window window(QImage(QString::fromLocal8Bit(argc > 1 ? argv[1] : "")));
    window.setGeometry(QApplication::primaryScreen()->geometry());
    window.showFullScreen();
    return QApplication::exec();
}
