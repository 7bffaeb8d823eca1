// The light show: its tick next to an FFT, on a line, and what it costs a patron's key.
#include "led_bench.h"

#include "bench.h"
#include "lightshow/spectrum.h"
#include "platform/gstreamer/spectrum.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/serial/qserialport_line.h"
#include "platform/simulated/simulated_platform.h"
#include "settings/ini_file.h"
#include "shell/hand_down.h"
#include "shell/handle_event.h"
#include "shell/start_up.h"
#include "state/form_main.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gst/fft/gstfftf32.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <numbers>
#include <pty.h>
#include <random>
#include <termios.h>
#include <thread>
#include <unistd.h>
#include <vector>

#ifdef VANTORIX_PEER_FFTW
#include <fftw3.h>
#endif

namespace {

using Clock = std::chrono::steady_clock;
using Samples = std::array<std::int16_t, kSpectrumFrames * 2>;

constexpr int kRepeats = 1000;
constexpr int kKeyDown = 40;
constexpr int kKeyUp = 38;

void Require(bool isDone, const char* what) {
    if (!isDone) {
        std::fprintf(stderr, "%s\n", what);
        std::exit(1);
    }
}

// A chord with noise.
Samples Music() {
    Samples samples{};
    std::minstd_rand dice(7);
    for (std::size_t i = 0; i < kSpectrumFrames; ++i) {
        double sum = static_cast<double>(dice() % 2000) - 1000;
        for (const double hertz : {110.0, 440.0, 1000.0, 5000.0}) {
            sum += 4000 * std::sin(2 * std::numbers::pi * hertz * static_cast<double>(i) / 44100);
        }
        samples[2 * i] = samples[2 * i + 1] = static_cast<std::int16_t>(sum);
    }
    return samples;
}

// A library whose spectrum is always that of the same piece.
class PieceOfMusic : public SimulatedAudio {
public:
    using SimulatedAudio::SimulatedAudio;
    bool BASS_ChannelGetData(std::uint32_t, std::array<float, 512>& fft) override {
        fft = SpectrumOf(samples_);
        return true;
    }

private:
    Samples samples_ = Music();
};

class NoLine : public SerialPort {
public:
    void Open(const SerialSettings&) override {}
    void Close() override {}
    bool IsOpen() const override { return true; }
    void Output(const QByteArray& bytes) override { sent += bytes.size(); }
    bool IsBehind() override { return false; }
    void AwaitInput() override {}
    QByteArray Input() override { return {}; }
    qsizetype sent = 0;
};

class NoPump : public EventPump {
public:
    void DoEvents() override {}
    void Wait(double) override {}
};

// A jukebox on a simulated machine of 1920x1080, with the given line and pump.
class LedJukebox {
public:
    LedJukebox(const QString& delivered, SerialPort& line, EventPump& pump)
        : platform(OneScreen()), audio(platform.clock, platform.calls, platform.failures),
          form(PortsWith(line, pump), HandDown()) {
        MakeHome(delivered);
        form.shell.AppFolder = folder_.path();
        Form_Load(form);
    }
    void Strip(const char* count) { form.settings.RGBLedsNbLeds = QString::fromLatin1(count); }

private:
    static SimulationOptions OneScreen() {
        SimulationOptions options;
        options.screens = {QRect(0, 0, 1920, 1080)};
        return options;
    }
    Ports PortsWith(SerialPort& line, EventPump& pump) {
        Ports all = platform.ports();
        return {audio, all.graphs,  line,           all.display, all.windows, all.fonts,   all.clock,
                pump,  all.dialogs, all.messageBox, all.files,   all.zlib,    all.pictures};
    }
    void MakeHome(const QString& delivered) {
        const QString theme = QStringLiteral("/themes/default");
        QDir().mkpath(folder_.path() + theme);
        QDir().mkpath(folder_.filePath(QStringLiteral("music")));
        for (const QFileInfo& file : QDir(delivered + theme).entryInfoList(QDir::Files)) {
            QFile::copy(file.filePath(), folder_.path() + theme + u'/' + file.fileName());
        }
        for (int i = 1; i <= 20; ++i) {
            QFile track(folder_.filePath(QStringLiteral("music/%1 - A Song.mp3").arg(i, 2, 10, QChar(u'0'))));
            Require(track.open(QIODevice::WriteOnly), "a track cannot be written");
        }
        QFile delivery(delivered + QStringLiteral("/config.ini"));
        Require(delivery.open(QIODevice::ReadOnly), "config.ini is missing");
        IniFile config(delivery.readAll());
        config.SetValue(QStringLiteral("Main"), QStringLiteral("StartPath"),
                        folder_.filePath(QStringLiteral("music")));
        QFile file(folder_.filePath(QStringLiteral("config.ini")));
        Require(file.open(QIODevice::WriteOnly) && file.write(config.Bytes()) > 0,
                "config.ini cannot be written");
    }

    QTemporaryDir folder_;

public:
    SimulatedPlatform platform;
    PieceOfMusic audio;
    Form_Main form;
};

// The other end of a line: a thread that reads it, at most at `bytesPerSecond` if that is above 0.
class ReadPty {
public:
    explicit ReadPty(double bytesPerSecond) {
        int slave = -1;
        std::array<char, 256> name{};
        Require(openpty(&master_, &slave, name.data(), nullptr, nullptr) == 0, "there is no pseudo-terminal");
        termios raw{};
        tcgetattr(slave, &raw);
        cfmakeraw(&raw);
        tcsetattr(slave, TCSANOW, &raw);
        device = QString::fromLatin1(name.data());
        slave_ = slave;
        reader_ = std::thread([this, bytesPerSecond] { Read(bytesPerSecond); });
    }
    ReadPty(const ReadPty&) = delete;
    ReadPty& operator=(const ReadPty&) = delete;
    ~ReadPty() {
        ended_ = true;
        Require(write(slave_, "x", 1) == 1, "the line is full");
        reader_.join();
        close(master_);
        close(slave_);
    }
    QString device;

private:
    void Read(double bytesPerSecond) {
        std::array<char, 4096> bytes{};
        const auto step = std::chrono::milliseconds(5);
        const auto most =
            bytesPerSecond > 0 ? static_cast<std::size_t>(bytesPerSecond * 0.005) : bytes.size();
        auto next = Clock::now();
        while (!ended_ && read(master_, bytes.data(), most) > 0) {
            next = std::max(next + step, Clock::now() - step);
            if (bytesPerSecond > 0) {
                std::this_thread::sleep_until(next);
            }
        }
    }

    int master_ = -1;
    int slave_ = -1;
    std::atomic<bool> ended_ = false;
    std::thread reader_;
};

void NoLog(const QString& /*text*/) {}

// --- A tick next to an FFT ---------------------------------------------------------------------------------

class GstPeer {
public:
    void Run() {
        for (int i = 0; i < kRepeats; ++i) {
            gst_fft_f32_fft(plan_, samples_.data(), bins_.data());
        }
    }
    GstPeer() = default;
    GstPeer(const GstPeer&) = delete;
    GstPeer& operator=(const GstPeer&) = delete;
    ~GstPeer() { gst_fft_f32_free(plan_); }

private:
    GstFFTF32* plan_ = gst_fft_f32_new(static_cast<gint>(kSpectrumFrames), FALSE);
    std::array<float, kSpectrumFrames> samples_ = [] {
        const Samples music = Music();
        std::array<float, kSpectrumFrames> mono{};
        for (std::size_t i = 0; i < mono.size(); ++i) {
            mono[i] = static_cast<float>(music[2 * i]) / 32768.0F;
        }
        return mono;
    }();
    std::array<GstFFTF32Complex, kSpectrumFrames / 2 + 1> bins_{};
};

#ifdef VANTORIX_PEER_FFTW
class FftwPeer {
public:
    FftwPeer() {
        const Samples music = Music();
        for (std::size_t i = 0; i < kSpectrumFrames; ++i) {
            samples_[i] = static_cast<float>(music[2 * i]) / 32768.0F;
        }
    }
    FftwPeer(const FftwPeer&) = delete;
    FftwPeer& operator=(const FftwPeer&) = delete;
    ~FftwPeer() {
        fftwf_destroy_plan(plan_);
        fftwf_free(samples_);
        fftwf_free(bins_);
    }
    void Run() const {
        for (int i = 0; i < kRepeats; ++i) {
            fftwf_execute(plan_);
        }
    }

private:
    float* samples_ = fftwf_alloc_real(kSpectrumFrames);
    fftwf_complex* bins_ = fftwf_alloc_complex(kSpectrumFrames / 2 + 1);
    fftwf_plan plan_ =
        fftwf_plan_dft_r2c_1d(static_cast<int>(kSpectrumFrames), samples_, bins_, FFTW_MEASURE);
};
#endif

void BenchTick(const QString& delivered) {
    NoLine line;
    NoPump pump;
    LedJukebox box(delivered, line, pump);
    GstPeer gst;
    const auto tick = [&box](const char* count) {
        return [&box, count] {
            box.Strip(count);
            for (int i = 0; i < kRepeats; ++i) {
                UpdateSpectrum(box.form);
            }
        };
    };
    std::vector<Contender> subjects = {
        {QStringLiteral("an FFT of 1024 points, GStreamer"), [&] { gst.Run(); }},
        {QStringLiteral("a tick of 30 LEDs, without a line"), tick("30")},
        {QStringLiteral("a tick of 258 LEDs, without a line"), tick("258")}};
#ifdef VANTORIX_PEER_FFTW
    FftwPeer fftw;
    subjects.push_back(
        {QStringLiteral("an FFT of 1024 points, FFTW in single precision"), [&] { fftw.Run(); }});
#endif
    PrintRow(QStringLiteral("light show, 1000 times"), RunInTurn(subjects, 51));
    Require(line.sent > 0, "the ticks sent nothing");
}

// --- A tick on a line --------------------------------------------------------------------------------------

double ThreadMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

void BenchLine(const QString& delivered) {
    ReadPty pty(0);
    QtEventPump pump;
    pump.SetSink([](const InputEvent&) {});
    QSerialPortLine line({{1, pty.device}}, QStringLiteral("/"), NoLog);
    LedJukebox box(delivered, line, pump);
    line.Open({.commPort = 1, .baudRate = 115200, .rtsEnable = true, .dtrEnable = false});
    box.Strip("30");
    const auto millisecond = [] {
        for (const auto end = Clock::now() + std::chrono::milliseconds(1); Clock::now() < end;) {
        }
    };
    double cpu = 0;
    int ticks = 0;
    const auto tick = [&] {
        const double start = ThreadMilliseconds();
        UpdateSpectrum(box.form);
        cpu += ThreadMilliseconds() - start;
        ++ticks;
    };
    PrintRow(QStringLiteral("light show, a line that is read"),
             RunInTurn({{QStringLiteral("a millisecond"), millisecond},
                        {QStringLiteral("a tick of 30 LEDs"), tick}},
                       201));
    std::printf("  %-44s %10.3f ms\n", "processor time of the event thread", cpu / ticks);
}

// --- From a key to its frame -------------------------------------------------------------------------------

// Presses keys at random moments, with and without the light show, and measures until the frame is shown.
class KeyBench {
public:
    explicit KeyBench(const QString& delivered)
        : pty_(11520), line_({{1, pty_.device}}, QStringLiteral("/"), NoLog), box_(delivered, line_, pump_) {
        line_.Open({.commPort = 1, .baudRate = 115200, .rtsEnable = true, .dtrEnable = false});
        box_.Strip("258");
        pump_.SetIntervals(box_.form.shell.Timer1.Interval, box_.form.shell.tmrSpectrum.Interval);
        pump_.SetSpectrumWanted([this] { return box_.form.shell.tmrSpectrum.Enabled; });
        pump_.SetSink([this](const InputEvent& event) {
            HandleEvent(box_.form, event);
            isShown_ = isShown_ || event.kind == InputKind::kKeyDown;
            ticks_ += event.kind == InputKind::kTmrSpectrum ? 1 : 0;
        });
    }

    void Run() {
        constexpr int kKeys = 150;
        std::array<std::vector<double>, 2> times;
        std::minstd_rand dice(3);
        for (int key = 0; key < 2 * kKeys; ++key) {
            // Ten keys in a row, so that the line is as full as it becomes.
            const bool isOn = key / 10 % 2 == 1;
            box_.form.shell.tmrSpectrum.Enabled = isOn;
            RunFor(key % 10 == 0 ? 1000 : 20 + static_cast<int>(dice() % 100));
            times.at(isOn ? 1 : 0).push_back(Press(key % 2 == 0 ? kKeyDown : kKeyUp));
        }
        Print(times);
    }

private:
    void RunFor(int milliseconds) {
        const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
        while (Clock::now() < end) {
            pump_.Wait(1);
        }
    }
    double Press(int code) {
        isShown_ = false;
        const auto start = Clock::now();
        pump_.Post({.kind = InputKind::kKeyDown, .code = code});
        while (!isShown_) {
            pump_.DoEvents();
        }
        return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
    }
    void Print(std::array<std::vector<double>, 2>& times) const {
        for (std::vector<double>& part : times) {
            std::sort(part.begin(), part.end());
        }
        const auto at = [&](int part, double share) {
            const std::vector<double>& sorted = times.at(static_cast<std::size_t>(part));
            return sorted[static_cast<std::size_t>(share * static_cast<double>(sorted.size() - 1))];
        };
        PrintRow(QStringLiteral("from a key to its frame, 258 LEDs at 115200 (%1 ticks)").arg(ticks_),
                 {{QStringLiteral("without LEDs, median"), at(0, 0.5), 1},
                  {QStringLiteral("with LEDs, median"), at(1, 0.5), at(1, 0.5) / at(0, 0.5)},
                  {QStringLiteral("without LEDs, 95 of 100"), at(0, 0.95), at(0, 0.95) / at(0, 0.5)},
                  {QStringLiteral("with LEDs, 95 of 100"), at(1, 0.95), at(1, 0.95) / at(0, 0.5)}});
    }

    ReadPty pty_;
    QtEventPump pump_;
    QSerialPortLine line_;
    LedJukebox box_;
    bool isShown_ = false;
    int ticks_ = 0;
};

} // namespace

void BenchLeds(const QString& homeFolder) {
    BenchTick(homeFolder);
    BenchLine(homeFolder);
    KeyBench(homeFolder).Run();
}
