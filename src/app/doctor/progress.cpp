// Writing the progress line.
#include "app/doctor/progress.h"

#include "core/path_text.h"

#include <cstdio>

#include <unistd.h>

Progress::Progress() : isTerminal_(::isatty(STDERR_FILENO) != 0) {}

void Progress::Show(const QString& done, const QString& rest) {
    const std::lock_guard lock(mutex_);
    present_ = done;
    const auto now = std::chrono::steady_clock::now();
    if (!isTerminal_ || isClosed_ || (isWritten_ && now - last_ < std::chrono::milliseconds(100))) {
        return;
    }
    last_ = now;
    isWritten_ = true;
    // Returns to the start of the line and erases it.
    std::fprintf(stderr, "\r\x1B[K%s", BytesOfPath(done + rest).constData());
    std::fflush(stderr);
}

void Progress::Clear() {
    const std::lock_guard lock(mutex_);
    if (!present_.isEmpty()) {
        steps_ += present_;
        present_.clear();
    }
    Erase();
}

void Progress::Add(const QString& done) {
    const std::lock_guard lock(mutex_);
    steps_ += done;
}

void Progress::Close() {
    const std::lock_guard lock(mutex_);
    isClosed_ = true;
    Erase();
}

QString Progress::Done() const {
    const std::lock_guard lock(mutex_);
    const QStringList all = present_.isEmpty() ? steps_ : steps_ + QStringList{present_};
    return all.isEmpty() ? QStringLiteral("nothing") : all.join(QStringLiteral(", "));
}

void Progress::Erase() {
    if (isWritten_) {
        std::fputs("\r\x1B[K", stderr);
        std::fflush(stderr);
    }
    isWritten_ = false;
}

QString TimeLeft(std::chrono::milliseconds elapsed, std::int64_t done, std::int64_t all) {
    if (done <= 0 || all < done) {
        return QString();
    }
    const std::int64_t seconds = elapsed.count() * (all - done) / done / 1000;
    const QString rest = QStringLiteral("%1:%2")
                             .arg(seconds / 60 % 60, seconds >= 3600 ? 2 : 1, 10, QLatin1Char('0'))
                             .arg(seconds % 60, 2, 10, QLatin1Char('0'));
    return seconds >= 3600 ? QStringLiteral("%1:%2").arg(seconds / 3600).arg(rest) : rest;
}
