// The strip in a window, as a row or a ring of lamps.
#include "app/leds/window_view.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kStepMilliseconds = 2;
constexpr int kDrawMilliseconds = 20;
constexpr int kStatusHeight = 36;

Time Now() {
    return std::chrono::steady_clock::now();
}

void PaintLamp(QPainter& painter, QPointF centre, double radius, Colour colour) {
    const QColor light(colour.red, colour.green, colour.blue);
    QRadialGradient glow(centre, radius * 1.6);
    glow.setColorAt(0, QColor(colour.red, colour.green, colour.blue, 120));
    glow.setColorAt(1, Qt::transparent);
    painter.setPen(Qt::NoPen);
    painter.setBrush(glow);
    painter.drawEllipse(centre, radius * 1.6, radius * 1.6);
    painter.setPen(QPen(QColor(60, 60, 64), 1));
    painter.setBrush(light);
    painter.drawEllipse(centre, radius, radius);
}

class StripWindow : public QWidget {
public:
    StripWindow(const Simulator& simulator, bool ring) : simulator_(simulator), ring_(ring) {
        setWindowTitle(QStringLiteral("Vantorix LEDs"));
        resize(ring ? QSize(560, 600) : QSize(960, 140));
        setMinimumSize(240, 100);
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.fillRect(rect(), QColor(16, 16, 18));
        painter.setRenderHint(QPainter::Antialiasing);
        const std::vector<Colour> lamps = simulator_.Lamps().Shown(Now());
        const QRectF place = QRectF(rect()).adjusted(12, 12, -12, -kStatusHeight);
        for (std::size_t i = 0; i < lamps.size(); ++i) {
            const auto paint = ring_ ? PaintInRing : PaintInRow;
            paint(painter, place, i, lamps);
        }
        painter.setPen(QColor(200, 200, 205));
        const QRect words = rect().adjusted(12, height() - kStatusHeight, -12, -4);
        const QString status = QString::fromStdString(simulator_.Status(Now()));
        painter.drawText(words, Qt::AlignLeft | Qt::AlignVCenter,
                         painter.fontMetrics().elidedText(status, Qt::ElideRight, words.width()));
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Q) {
            close();
        }
    }

private:
    // A long strip continues in the next row.
    static void PaintInRow(QPainter& painter, const QRectF& place, std::size_t at,
                           const std::vector<Colour>& lamps) {
        const auto count = static_cast<double>(lamps.size());
        const double perRow = std::ceil(std::sqrt(count * std::max(1.0, place.width() / place.height())));
        const double columns = std::min(count, perRow);
        const double rows = std::ceil(count / columns);
        const double step = std::min(place.width() / columns, place.height() / rows);
        const double column = std::fmod(static_cast<double>(at), columns);
        const double row = std::floor(static_cast<double>(at) / columns);
        const double top = place.center().y() + (row - (rows - 1) / 2) * step;
        PaintLamp(painter, {place.left() + (column + 0.5) * place.width() / columns, top}, step * 0.32,
                  lamps[at]);
    }
    static void PaintInRing(QPainter& painter, const QRectF& place, std::size_t at,
                            const std::vector<Colour>& lamps) {
        const double outer = std::min(place.width(), place.height()) / 2;
        const double turn = 2 * M_PI * static_cast<double>(at) / static_cast<double>(lamps.size());
        const double lamp = std::min(outer * 0.2, M_PI * outer / static_cast<double>(lamps.size()) * 0.7);
        const double radius = outer - lamp * 1.6;
        const QPointF offset(radius * std::sin(turn), -radius * std::cos(turn));
        PaintLamp(painter, place.center() + offset, lamp, lamps[at]);
    }

    const Simulator& simulator_;
    bool ring_;
};

bool HasDisplay() {
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

} // namespace

bool RunWindow(int argc, char** argv, Simulator& simulator, bool ring, const std::function<bool()>& isEnded,
               const std::function<void()>& afterStep) {
    if (!HasDisplay()) {
        return false;
    }
    QApplication application(argc, argv);
    StripWindow window(simulator, ring);
    window.show();
    QTimer step;
    step.setTimerType(Qt::PreciseTimer);
    QObject::connect(&step, &QTimer::timeout, [&] {
        simulator.Step(Now());
        afterStep();
        if (simulator.IsOver() || isEnded()) {
            QApplication::quit();
        }
    });
    QTimer draw;
    QObject::connect(&draw, &QTimer::timeout, [&] { window.update(); });
    step.start(kStepMilliseconds);
    draw.start(kDrawMilliseconds);
    QApplication::exec();
    return true;
}
