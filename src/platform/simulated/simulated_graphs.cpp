// The simulated media graphs.
#include "platform/simulated/simulated_graphs.h"

#include "core/run_time_error.h"
#include "platform/gstreamer/probe_media.h"
#include "platform/simulated/call_record.h"
#include "platform/simulated/failures.h"
#include "platform/simulated/play_head.h"

#include <QSize>

#include <algorithm>
#include <cmath>

namespace {

constexpr std::int64_t kMicrosecondsPerSecond = 1'000'000;

std::int64_t Microseconds(double seconds) {
    constexpr double kMostSeconds = 1e9;
    return std::llround(std::clamp(seconds, 0.0, kMostSeconds) * kMicrosecondsPerSecond);
}

class SimulatedGraph : public MediaGraph {
public:
    SimulatedGraph(QString name, const SimulatedClock& clock, CallRecord& record, const Failures& failures)
        : name_(std::move(name)), clock_(clock), record_(record), failures_(failures),
          head_(clock, kMicrosecondsPerSecond, 0, AtEnd::kStands) {}

    void RenderFile(const QString& path) override {
        record_.Add({name_, QStringLiteral("RenderFile"), path});
        const std::optional<MediaFacts> facts = failures_.Has("RenderFile") ? std::nullopt : ProbeMedia(path);
        if (!facts) {
            throw RunTimeError(kInvalidProcedureCall,
                               path + QStringLiteral(": missing, or no sound or video"));
        }
        duration_ = facts->seconds;
        picture_ = QSize(facts->pictureWidth, facts->pictureHeight);
        head_ = PlayHead(clock_, kMicrosecondsPerSecond, Microseconds(facts->seconds), AtEnd::kStands);
    }
    void Run() override {
        record_.Add({name_, QStringLiteral("Run")});
        head_.Run();
    }
    void Pause() override {
        record_.Add({name_, QStringLiteral("Pause")});
        head_.Halt();
    }
    void Stop() override {
        record_.Add({name_, QStringLiteral("Stop")});
        head_.Halt();
    }
    double Duration() override { return duration_; }
    double CurrentPosition() override {
        return std::min(static_cast<double>(head_.Position()) / kMicrosecondsPerSecond, duration_);
    }
    void SetCurrentPosition(double seconds) override {
        record_.Add({name_, QStringLiteral("CurrentPosition"), seconds});
        head_.MoveTo(Microseconds(seconds));
    }
    void Place(const QString& owner, int left, int top, int width, int height) override {
        record_.Add({name_, QStringLiteral("Place"), owner, left, top, width, height});
        place_ = QSize(width, height);
    }
    // The picture fills the rectangle as far as its aspect lets it.
    int Height() override {
        return picture_.isEmpty() ? place_.height() : picture_.scaled(place_, Qt::KeepAspectRatio).height();
    }

private:
    QString name_;
    const SimulatedClock& clock_;
    CallRecord& record_;
    const Failures& failures_;
    PlayHead head_;
    double duration_ = 0;
    QSize picture_;
    QSize place_;
};

} // namespace

std::shared_ptr<MediaGraph> SimulatedGraphs::CreateGraph(const QString& name) {
    return std::make_shared<SimulatedGraph>(name, clock_, record_, failures_);
}
