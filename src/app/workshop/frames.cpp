// Writing pictures of all situations, and the sheet of all pictures.
#include "app/workshop/frames.h"

#include "app/workshop/stage.h"
#include "core/path_text.h"
#include "platform/posix/termination_signals.h"

#include <QDir>
#include <QPainter>

#include <algorithm>

namespace {

const std::vector<QSize>& UsualSizes() {
    static const std::vector<QSize> sizes = {{1920, 1080}, {1366, 768}, {1280, 1024}, {1080, 1920}};
    return sizes;
}

struct Thumbnail {
    QString words;
    QImage picture;
};

constexpr QSize kCell(320, 200);
constexpr int kGap = 12;
constexpr int kLine = 18;
constexpr int kColumns = 4;

QString NameOfSize(const QSize& size) {
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

void PaintCell(QPainter& painter, const QPoint& corner, const Thumbnail& thumbnail) {
    const QPoint middle((kCell.width() - thumbnail.picture.width()) / 2, 0);
    painter.drawImage(corner + middle, thumbnail.picture);
    painter.drawText(QRect(corner.x(), corner.y() + kCell.height(), kCell.width(), kLine), Qt::AlignCenter,
                     thumbnail.words);
}

QImage MakeSheet(const std::vector<Thumbnail>& all) {
    const int rows = (static_cast<int>(all.size()) + kColumns - 1) / kColumns;
    QImage sheet(kColumns * (kCell.width() + kGap) + kGap, rows * (kCell.height() + kLine + kGap) + kGap,
                 QImage::Format_RGB32);
    sheet.fill(QColor(38, 40, 44));
    QPainter painter(&sheet);
    QFont font = painter.font();
    font.setPixelSize(13);
    painter.setFont(font);
    painter.setPen(QColor(230, 230, 230));
    for (int i = 0; i < static_cast<int>(all.size()); ++i) {
        PaintCell(painter,
                  QPoint(kGap + i % kColumns * (kCell.width() + kGap),
                         kGap + i / kColumns * (kCell.height() + kLine + kGap)),
                  all[static_cast<std::size_t>(i)]);
    }
    return sheet;
}

void Tell(FramesResult& result, Subject subject, const QString& path, const QString& text,
          const QString& advice) {
    result.findings.push_back({Level::kError, subject, path, text, advice});
}

// Returns false when the picture cannot be written, which ends the whole task.
bool Save(FramesResult& result, const QImage& picture, const QString& path) {
    if (picture.save(path, "PNG")) {
        ++result.pictures;
        return true;
    }
    Tell(result, Subject::kMachine, path, QStringLiteral("The picture cannot be written."),
         QStringLiteral("Check the rights of the folder and the free space."));
    return false;
}

// Plays one situation. Returns false when pictures cannot be written.
bool WriteFrame(FramesResult& result, Stage& stage, const FramesOrder& order, const Situation& situation,
                const QSize& size, std::vector<Thumbnail>& sheet) {
    const StagePicture shown = stage.Play(situation, size);
    const QString words = NameOfSize(size) + QStringLiteral(": ") + situation.words;
    if (!shown.fault.isEmpty()) {
        Tell(result, Subject::kTheme, order.themeFolder, QStringLiteral("%1: %2").arg(words, shown.fault),
             QStringLiteral("Correct what the error names, and write the pictures again."));
    }
    if (shown.picture.isNull()) {
        return true;
    }
    sheet.push_back({words, shown.picture.scaled(kCell, Qt::KeepAspectRatio, Qt::SmoothTransformation)});
    return Save(result, shown.picture,
                PathIn(order.target, NameOfSize(size) + u'-' + situation.name + QStringLiteral(".png")));
}

} // namespace

FramesResult WriteFrames(const FramesOrder& order) {
    FramesResult result;
    Stage stage(order.themeFolder, order.music);
    if (!stage.Fault().isEmpty() || !QDir().mkpath(order.target)) {
        Tell(result, Subject::kMachine, order.target,
             stage.Fault().isEmpty() ? QStringLiteral("The folder cannot be made.") : stage.Fault(),
             QStringLiteral("Give a folder that can be written."));
        return result;
    }
    std::vector<Thumbnail> sheet;
    for (const QSize& size : order.sizes.empty() ? UsualSizes() : order.sizes) {
        for (const Situation& situation : Situations()) {
            const bool isWritten = WriteFrame(result, stage, order, situation, size, sheet);
            result.isInterrupted = TerminationSignal() != 0;
            if (!isWritten || result.isInterrupted) {
                return result;
            }
        }
    }
    if (!sheet.empty()) {
        Save(result, MakeSheet(sheet), PathIn(order.target, QStringLiteral("index.png")));
    }
    return result;
}
