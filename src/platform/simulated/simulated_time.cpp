// Moving the time and the positions in it, and processing events while it passes.
#include "platform/simulated/simulated_time.h"

#include "platform/simulated/calls.h"

#include <QJsonDocument>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kMicrosecondsPerMillisecond = 1000;
constexpr std::int64_t kEndOfTime = std::int64_t{10'000} * 366 * 24 * 3600 * 1'000'000;
constexpr std::int64_t kMillion = 1'000'000;

} // namespace

SimulatedClock::SimulatedClock(const QDateTime& start) : start_(start.date(), start.time(), Qt::UTC) {}

QDateTime SimulatedClock::LocalTime() {
    return start_.addMSecs(timeGetTime());
}

void SimulatedClock::Advance(double milliseconds) {
    if (!(milliseconds > 0)) {
        return;
    }
    const double step = std::min(milliseconds * kMicrosecondsPerMillisecond, static_cast<double>(kEndOfTime));
    microseconds_ = std::min(microseconds_ + std::int64_t{std::llround(step)}, kEndOfTime);
}

PlayHead::PlayHead(const SimulatedClock& clock, std::int64_t unitsPerSecond, std::int64_t length, AtEnd atEnd)
    : clock_(&clock), unitsPerSecond_(unitsPerSecond), length_(std::max<std::int64_t>(length, 1)),
      atEnd_(atEnd), since_(clock.Microseconds()) {}

std::int64_t PlayHead::Position() const {
    PlayHead now = *this;
    now.Settle();
    return now.base_;
}

void PlayHead::Run() {
    Settle();
    running_ = true;
}

void PlayHead::Halt() {
    Settle();
    running_ = false;
}

void PlayHead::MoveTo(std::int64_t position) {
    Settle();
    base_ = std::clamp<std::int64_t>(position, 0, atEnd_ == AtEnd::kStands ? length_ : length_ - 1);
    millionths_ = 0;
}

std::int64_t PlayHead::Bounded(std::int64_t position) const {
    return atEnd_ == AtEnd::kWraps ? position % length_ : std::min(position, length_);
}

// Adds the time since the last call to the position.
void PlayHead::Settle() {
    const std::int64_t now = clock_->Microseconds();
    const std::int64_t elapsed = running_ ? now - since_ : 0;
    since_ = now;
    const std::int64_t parts = (elapsed % kMillion) * unitsPerSecond_ + millionths_;
    base_ = Bounded(base_ + (elapsed / kMillion) * unitsPerSecond_ + parts / kMillion);
    millionths_ = parts % kMillion;
}

void SimulatedPump::DoEvents() {
    if (runPending && runPending()) {
        Stirred();
        return;
    }
    ++idlePoints_;
    if (idlePoints_ < kIdlePoints) {
        return;
    }
    QString text =
        QStringLiteral("pending events were let through %1 times, with nothing pending and nothing arriving")
            .arg(kIdlePoints);
    if (!record_.Last().isEmpty()) {
        text += QStringLiteral("; the last call was ") +
                QString::fromUtf8(QJsonDocument(record_.Last()).toJson(QJsonDocument::Compact));
    }
    throw SimulatedHang(text);
}

// A wait of a given time always ends, so an idle one neither counts towards a hang nor resets the count.
void SimulatedPump::Wait(double milliseconds) {
    clock_.Advance(milliseconds);
    if (runPending && runPending()) {
        Stirred();
    }
}
