// The simulated controller: reads the wire, answers, judges, records and keeps the strip.
#include "app/leds/simulator.h"

#include <array>
#include <cstdarg>
#include <cstdio>

namespace {

constexpr std::size_t kMostAtOnce = 4096;
constexpr std::chrono::seconds kUnplugged{1};
// While the wire is closed it cannot be polled, and while it is paced it must not be.
constexpr std::chrono::milliseconds kClosedRest{10};
constexpr std::chrono::milliseconds kPacedRest{2};
constexpr std::chrono::milliseconds kLongestRest{20};
constexpr int kFaultCode = 1;

Time After(Time now, double seconds) {
    return now + std::chrono::duration_cast<Time::duration>(std::chrono::duration<double>(seconds));
}

[[gnu::format(printf, 1, 2)]] std::string Format(const char* format, ...) {
    std::array<char, 300> text = {};
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text.data(), text.size(), format, arguments);
    va_end(arguments);
    return text.data();
}

} // namespace

Simulator::Simulator(const LedsOptions& options, Time now)
    : options_(options), start_(now), now_(now), pacer_(options.pace), controller_(options.manners),
      judge_(options.device.empty()),
      reader_([this](std::string_view line, std::uint64_t first) { TakeLine(line, first); }) {
    if (!options_.replay.empty()) {
        recording_ = ReadRecording(options_.replay);
    } else if (!options_.device.empty()) {
        wire_.emplace(Wire::OfDevice(options_.device));
    } else {
        wire_.emplace(Wire::NewTerminal(options_.link));
    }
    if (!options_.record.empty()) {
        recorder_ = std::make_unique<Recorder>(options_.record);
    }
    nextPlug_ = After(now, options_.unplug);
}

std::string Simulator::Introduction() const {
    if (!wire_) {
        return "Recording: " + options_.replay + "\n";
    }
    const std::string port = std::to_string(options_.port);
    return "Wire: " + wire_->Name() + (options_.link.empty() ? "" : " (" + options_.link + ")") +
           "\nIn config.ini, section [RGBLeds]:\nActive=true\nCommport=" + port +
           "\nThen start: vantorix --serial " + port + "=" +
           (options_.link.empty() ? wire_->Name() : options_.link) + "\n";
}

std::string Simulator::Status(Time now) const {
    return Format("mode %s, %.1f frames/s, %zu LEDs, %llu bytes, %llu refused", NameOf(strip_.Mode()),
                  strip_.Rate(now), judge_.FrameSize(), static_cast<unsigned long long>(reader_.Bytes()),
                  static_cast<unsigned long long>(refusedBytes_));
}

std::string Simulator::Summary() const {
    return Format(
        "frames %llu, messages %llu, bytes %llu, refused %llu, faults %llu, longest gap %.0f ms",
        static_cast<unsigned long long>(judge_.Frames()), static_cast<unsigned long long>(messages_),
        static_cast<unsigned long long>(reader_.Bytes()), static_cast<unsigned long long>(refusedBytes_),
        static_cast<unsigned long long>(faults_), strip_.LongestGap());
}

int Simulator::Descriptor() const {
    return wire_ && isOpen_ && !isPaced_ ? wire_->Descriptor() : -1;
}

std::chrono::milliseconds Simulator::Rest() const {
    return isPaced_ ? kPacedRest : isOpen_ ? kLongestRest : kClosedRest;
}

void Simulator::Step(Time now) {
    now_ = now;
    if (over_) {
        return;
    }
    if (!wire_) {
        return Replay(now);
    }
    if (options_.unplug > 0) {
        FollowPlug(now);
    }
    if (wire_->Descriptor() < 0) {
        return;
    }
    ReadWire(now);
    if (const std::string answer = controller_.Due(now); !answer.empty() && wire_->Descriptor() >= 0) {
        wire_->Write(answer);
    }
}

void Simulator::ReadWire(Time now) {
    const std::size_t most = pacer_.Take(kMostAtOnce, now);
    isPaced_ = most < kMostAtOnce;
    if (most == 0) {
        return;
    }
    std::string bytes;
    const Wire::Outcome outcome = wire_->Read(bytes, most);
    if (options_.pace > 0) {
        pacer_.Return(most - bytes.size());
    }
    switch (outcome) {
    case Wire::Outcome::kRead:
        isOpen_ = true;
        return Take(bytes, now);
    case Wire::Outcome::kNothing:
        isOpen_ = true;
        isPaced_ = false;
        return;
    case Wire::Outcome::kClosed:
        return Closed();
    case Wire::Outcome::kGone:
        events_ += options_.device + ": the device has gone\n";
        return End(kFaultCode);
    }
}

void Simulator::Closed() {
    if (!isOpen_) {
        return;
    }
    isOpen_ = isPaced_ = false;
    reader_.Close();
    if (const auto fault = judge_.Close()) {
        Fault(*fault, reader_.Bytes(), "");
    }
    events_ += "the wire was closed\n";
}

void Simulator::FollowPlug(Time now) {
    if (now < nextPlug_) {
        return;
    }
    if (wire_->Descriptor() >= 0) {
        wire_->Unplug();
        // What the jukebox was sending is torn by the unplugging, not by the jukebox.
        reader_.Close();
        judge_.Close();
        isOpen_ = isPaced_ = false;
        events_ += "unplugged\n";
        nextPlug_ = now + kUnplugged;
    } else {
        wire_->Plug();
        events_ += "plugged in again: " + wire_->Name() + "\n";
        nextPlug_ = After(now, options_.unplug);
    }
}

// With --check the recording is not shown, so it is processed at once, each piece at its own time.
void Simulator::Replay(Time now) {
    while (nextPiece_ < recording_.size() && !over_) {
        const RecordedPiece& piece = recording_[nextPiece_];
        const Time due = start_ + piece.since;
        if (due > now && !options_.check) {
            return;
        }
        ++nextPiece_;
        now_ = due;
        Take(piece.bytes, due);
    }
    if (!over_) {
        reader_.Close();
        End(exitCode_);
    }
}

void Simulator::Take(std::string_view bytes, Time now) {
    if (recorder_) {
        recorder_->Take(bytes, std::chrono::duration_cast<std::chrono::microseconds>(now - start_));
    }
    reader_.Take(bytes);
}

void Simulator::TakeLine(std::string_view line, std::uint64_t first) {
    const Message message = ReadMessage(line);
    ++messages_;
    if (std::holds_alternative<Refusal>(message)) {
        refusedBytes_ += line.size();
    }
    if (const auto fault = judge_.Take(message)) {
        Fault(*fault, first, Escaped(line));
    }
    strip_.Take(message, now_);
    controller_.Take(message, now_);
    if (strip_.Mode() != reportedMode_) {
        reportedMode_ = strip_.Mode();
        events_ += std::string("mode ") + NameOf(reportedMode_) + "\n";
    }
}

void Simulator::Fault(const std::string& reason, std::uint64_t first, const std::string& line) {
    ++faults_;
    if (!options_.check || over_) {
        return;
    }
    events_ += "fault at byte " + std::to_string(first) + ": " + reason;
    events_ += line.empty() ? "\n" : ": \"" + line + "\"\n";
    End(kFaultCode);
}

void Simulator::End(int code) {
    over_ = true;
    exitCode_ = code;
}
