// The simulated controller: reads the wire, answers, judges, records and keeps the strip.
#pragma once

#include "app/leds/controller.h"
#include "app/leds/judge.h"
#include "app/leds/options.h"
#include "app/leds/pacer.h"
#include "app/leds/recording.h"
#include "app/leds/strip.h"
#include "app/leds/wire.h"
#include "app/leds/wire_reader.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

// Never waits. Step is called again and again; it may be called at any time.
class Simulator {
public:
    // Raises WireError and RecordingError.
    Simulator(const LedsOptions& options, Time now);

    void Step(Time now);
    // How long nothing has to be done, at most, unless bytes arrive on the descriptor.
    std::chrono::milliseconds Rest() const;
    // What to poll for bytes; -1 when there is nothing to poll.
    int Descriptor() const;

    // The recording has ended, or --check has found a fault, or the device has gone.
    bool IsOver() const { return over_; }
    int ExitCode() const { return exitCode_; }
    // The events since the last call, one line each, for a person.
    std::string TakeEvents() { return std::exchange(events_, std::string()); }

    const Strip& Lamps() const { return strip_; }
    // The device's name and the lines of config.ini, or the name of the recording.
    std::string Introduction() const;
    // One line: mode, frames a second, LEDs, bytes, refused bytes.
    std::string Status(Time now) const;
    // One line with the counts of the whole run.
    std::string Summary() const;

private:
    void ReadWire(Time now);
    void Replay(Time now);
    void FollowPlug(Time now);
    void Take(std::string_view bytes, Time now);
    void TakeLine(std::string_view line, std::uint64_t first);
    void Closed();
    void Fault(const std::string& reason, std::uint64_t first, const std::string& line);
    void End(int code);

    LedsOptions options_;
    Time start_;
    Time now_;
    std::optional<Wire> wire_;
    std::vector<RecordedPiece> recording_;
    std::size_t nextPiece_ = 0;
    std::unique_ptr<Recorder> recorder_;
    Pacer pacer_;
    Controller controller_;
    Judge judge_;
    Strip strip_;
    WireReader reader_;
    StripMode reportedMode_ = StripMode::kUnknown;
    Time nextPlug_;
    bool isOpen_ = false;
    bool isPaced_ = false;
    bool over_ = false;
    int exitCode_ = 0;
    std::uint64_t messages_ = 0;
    std::uint64_t refusedBytes_ = 0;
    std::uint64_t faults_ = 0;
    std::string events_;
};
