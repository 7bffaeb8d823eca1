// The light show's tick: what it sends for made spectra, in which order, and where events run.
#include "lightshow/spectrum.h"

#include "platform/event_pump.h"
#include "platform/serial_port.h"
#include "shell/handle_event.h"
#include "support/jukebox.h"

#include <QCryptographicHash>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace {

using ::testing::ElementsAre;
using Magnitudes = std::array<float, 512>;

// A library that gives a spectrum, or none.
class GivenAudio : public SimulatedAudio {
public:
    using SimulatedAudio::SimulatedAudio;
    bool BASS_ChannelGetData(std::uint32_t, std::array<float, 512>& fft) override {
        if (given) {
            fft = *given;
        }
        return given.has_value();
    }
    std::optional<Magnitudes> given;
};

// A line that collects what is sent.
class NotedLine : public SerialPort {
public:
    void Open(const SerialSettings&) override {}
    void Close() override {}
    bool IsOpen() const override { return true; }
    void Output(const QByteArray& bytes) override {
        if (closed) {
            throw RunTimeError(kPortNotOpen, QStringLiteral("closed"));
        }
        ++messages;
        all += bytes;
        steps += bytes.trimmed();
    }
    bool IsBehind() override { return behind; }
    void AwaitInput() override {}
    QByteArray Input() override { return {}; }

    bool closed = false;
    bool behind = false;
    int messages = 0;
    QByteArray all;
    QByteArrayList steps;
};

// A pump that notes each event point in the line's steps.
class NotedPump : public EventPump {
public:
    explicit NotedPump(NotedLine& line) : line_(line) {}
    void DoEvents() override {
        line_.steps += QByteArrayLiteral("events");
        if (next) {
            const auto event = std::exchange(next, nullptr);
            event();
        }
    }
    void Wait(double) override {}

    std::function<void()> next;

private:
    NotedLine& line_;
};

class Spectrum : public ::testing::Test {
protected:
    Spectrum() : form(PortsWithLine(), HandDown()) {
        form.lights.SpectrumWidth = 100;
        form.lights.SpectrumHeight = 256;
        form.settings.RGBLedsStereo = QStringLiteral("false");
        audio.given.emplace();
        audio.given->fill(0);
    }
    Ports PortsWithLine() {
        Ports all = jukebox.platform.ports();
        return {audio, all.graphs,  line,           all.display, all.windows, all.fonts,   all.clock,
                pump,  all.dialogs, all.messageBox, all.files,   all.zlib,    all.pictures};
    }
    void Strip(const QString& count, const QString& stereo = QStringLiteral("false")) {
        form.settings.RGBLedsNbLeds = count;
        form.settings.RGBLedsStereo = stereo;
    }
    // The error with which the tick ends the program, or 0.
    int Tick() {
        const auto stop = StopOf([this] { UpdateSpectrum(form); });
        return stop ? stop->error.number : 0;
    }
    // The messages' text after "AT+B-".
    QByteArrayList Messages() {
        QByteArrayList texts;
        Tick();
        for (const QByteArray& message : line.all.split('\n')) {
            if (!message.isEmpty()) {
                texts += message.mid(5).trimmed();
            }
        }
        return texts;
    }

    Jukebox jukebox;
    GivenAudio audio{jukebox.platform.clock, jukebox.platform.calls, jukebox.platform.failures};
    NotedLine line;
    NotedPump pump{line};
    Form_Main form;
};

// The spectra of make_spectra_ledger.py.
float ThirdOf(int i, int from, int to) {
    return i >= from && i < to ? 21845.0F / 65536.0F : 0.0F;
}

// A number of 65536ths in the first bin of the 28th band of thirty, and 2 to the power of -25 of it in the
// others.
float TailOf(int i, float whole) {
    return i < 407 ? 0.0F : i == 407 ? whole / 65536.0F : whole / 65536.0F / 33554432.0F;
}

std::uint32_t Next(std::uint32_t state) {
    return (1103515245U * state + 12345U) & 0x7FFFFFFFU;
}

Magnitudes Made(const QStringList& words) {
    Magnitudes made{};
    std::uint32_t state = words.value(1).toUInt();
    for (int i = 0; i < 512; ++i) {
        state = Next(state);
        const QString& kind = words[0];
        made.at(static_cast<std::size_t>(i)) =
            kind == u"ones"    ? 1.0F
            : kind == u"huge"  ? 1000.0F
            : kind == u"low"   ? ThirdOf(i, 0, 170)
            : kind == u"mid"   ? ThirdOf(i, 170, 340)
            : kind == u"high"  ? ThirdOf(i, 340, 512)
            : kind == u"ramp"  ? static_cast<float>(i * 7) / 65536.0F
            : kind == u"fall"  ? static_cast<float>((512 - i) * 40) / 65536.0F
            : kind == u"bin"   ? (i == words[1].toInt() ? 1.0F : 0.0F)
            : kind == u"tail"  ? TailOf(i, words[1].toFloat())
            : kind == u"noise" ? static_cast<float>((state >> 15) >> words[2].toUInt()) / 65536.0F
                               : 0.0F;
    }
    return made;
}

QString Plain(const QString& word) {
    return word == u"-" ? QString() : QString(word).replace(u'_', u' ');
}

} // namespace

// Deliberate: D-146, D-147, D-148, D-149, D-150 are all in the ledger, and each has a test of its own below.
TEST_F(Spectrum, SendsWhatTheLedgerSays) {
    QFile file(QStringLiteral(TESTS_FOLDER "/lightshow/spectra.txt"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    int cases = 0;
    for (const QString& row : QString::fromLatin1(file.readAll()).split(u'\n')) {
        const QStringList words = row.split(u' ');
        if (words.size() != 6 || row.startsWith(u'#')) {
            continue;
        }
        ++cases;
        audio.given = Made(words[0].split(u':'));
        Strip(Plain(words[1]), Plain(words[2]));
        line.all.clear();
        line.messages = 0;
        EXPECT_EQ(Tick(), words[3].toInt()) << qPrintable(row);
        EXPECT_EQ(line.messages, words[4].toInt()) << qPrintable(row);
        const QByteArray digest = QCryptographicHash::hash(line.all, QCryptographicHash::Sha256).toHex();
        EXPECT_EQ(digest.left(16), words[5].toLatin1()) << qPrintable(row);
    }
    EXPECT_GT(cases, 1300);
}

TEST_F(Spectrum, ATickWithoutStereoLetsEventsRunThreeTimesAfterEachMessageAndOnceMore) {
    Strip(QStringLiteral("2"));
    Tick();
    EXPECT_THAT(line.steps, ElementsAre("AT+B-00000000FF", "events", "events", "events", "AT+B-0100000000",
                                        "events", "events", "events", "events"));
}

TEST_F(Spectrum, ATickInStereoLetsEventsRunThreeTimesAndOnceForEachBandAndOnceMore) {
    Strip(QStringLiteral("4"), QStringLiteral("true"));
    Tick();
    EXPECT_THAT(line.steps, ElementsAre("AT+B-00000000FF", "events", "events", "events", "AT+B-02000000FF",
                                        "events", "AT+B-01000000FF", "events", "events", "events",
                                        "AT+B-0300000000", "events", "events"));
}

TEST_F(Spectrum, AStripWithoutABandStillLetsEventsRunOnce) {
    Strip(QStringLiteral("-4"));
    EXPECT_EQ(Tick(), 0) << "D-148";
    EXPECT_THAT(line.steps, ElementsAre("events"));
}

TEST_F(Spectrum, SilenceIsBlackAndFullScaleLeaves254) {
    Strip(QStringLiteral("3"));
    EXPECT_THAT(Messages(), ElementsAre("00000000FF", "01000000FF", "0200000000"));
    line.all.clear();
    audio.given->fill(1000.0F);
    EXPECT_THAT(Messages(), ElementsAre("0000FE00FF", "01BF3E00FF", "027D008000"));
}

TEST_F(Spectrum, WithoutDataTheStripIsBlack) {
    Strip(QStringLiteral("1"));
    audio.given.reset();
    EXPECT_THAT(Messages(), ElementsAre("0000000000"));
}

// D-147
TEST_F(Spectrum, TheLastTwoOfThirtyAreAlwaysDark) {
    Strip(QStringLiteral("30"));
    audio.given->fill(1.0F);
    const QByteArrayList messages = Messages();
    ASSERT_EQ(messages.size(), 30);
    EXPECT_NE(messages[27], QByteArray("1B000000FF"));
    EXPECT_EQ(messages[28], QByteArray("1C000000FF"));
    EXPECT_EQ(messages[29], QByteArray("1D00000000"));
}

// D-149
TEST_F(Spectrum, AQuietBandKeepsItsStrongestColourOnly) {
    Strip(QStringLiteral("10"));
    const auto second = [this](float magnitude) {
        audio.given->at(2) = magnitude;
        line.all.clear();
        return Messages()[1];
    };
    EXPECT_EQ(second(0.3F), QByteArray("012A9F00FF"));
    EXPECT_EQ(second(0.1F), QByteArray("01003C00FF")) << "the weaker red has gone";
}

// D-150
TEST_F(Spectrum, Led256IsLedZeroAgain) {
    Strip(QStringLiteral("258"));
    const QByteArrayList messages = Messages();
    ASSERT_EQ(messages.size(), 258);
    EXPECT_EQ(messages[255].left(2), QByteArray("FF"));
    EXPECT_EQ(messages[256].left(2), QByteArray("00"));
    EXPECT_EQ(messages[257].right(2), QByteArray("00"));
}

// D-146
TEST_F(Spectrum, TheLastOfAnOddStripInStereoGetsNothing) {
    Strip(QStringLiteral("31"), QStringLiteral("true"));
    const QByteArrayList messages = Messages();
    EXPECT_EQ(messages.size(), 30);
    EXPECT_EQ(messages.last(), QByteArray("1D00000000"));
    EXPECT_EQ(messages[28].left(2), QByteArray("0E"));
}

TEST_F(Spectrum, TheHueOffsetTurnsTheWheelAndComesBackTo0) {
    Strip(QStringLiteral("1"));
    audio.given->fill(1000.0F);
    form.lights.SpectrumHueOffset = 128;
    EXPECT_THAT(Messages(), ElementsAre("007D008000"));
    form.lights.SpectrumHueOffset = 256;
    line.all.clear();
    EXPECT_THAT(Messages(), ElementsAre("0000FE0000"));
    EXPECT_EQ(form.lights.SpectrumHueOffset.value(), 0);
}

TEST_F(Spectrum, ErrorsNameTheFileTheSectionTheKeyAndTheValue) {
    for (const char* count : {"0", "ten", "", "1024", "70000"}) {
        Strip(QString::fromLatin1(count));
        const auto stop = StopOf([this] { UpdateSpectrum(form); });
        ASSERT_TRUE(stop) << count;
        EXPECT_EQ(stop->routine, QStringLiteral("UpdateSpectrum"));
        EXPECT_TRUE(stop->error.detail.contains(
            QStringLiteral("config.ini, [RGBLeds] NbLeds \"%1\"").arg(QString::fromLatin1(count))))
            << qPrintable(stop->error.detail);
    }
}

TEST_F(Spectrum, AClosedPortEndsTheProgram) {
    Strip(QStringLiteral("1"));
    line.closed = true;
    EXPECT_EQ(Tick(), 8018);
}

// Deliberate D-153
TEST(LightShow, LedsThatAreSwitchedOnLaterFindNoPort) {
    Jukebox jukebox;
    jukebox.Start();
    jukebox.form.settings.RGBLedsActive = QStringLiteral("true");
    jukebox.form.settings.RGBLedsNbLeds = QStringLiteral("1");
    const auto stop = StopOf([&] { UpdateSpectrum(jukebox.form); });
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->error.number, 8018);
    EXPECT_TRUE(stop->error.detail.contains(QStringLiteral("[RGBLeds] Commport \"1\"")))
        << qPrintable(stop->error.detail);
}

TEST_F(Spectrum, ATickDuringATickIsDropped) {
    Strip(QStringLiteral("1"));
    form.shell.tmrSpectrum.Enabled = true;
    const InputEvent tick{.kind = InputKind::kTmrSpectrum};
    pump.next = [&] { HandleEvent(form, tick); };
    HandleEvent(form, tick);
    EXPECT_EQ(line.messages, 1);
    HandleEvent(form, tick);
    EXPECT_EQ(line.messages, 2);
}

TEST_F(Spectrum, ATickIsDroppedWhileTheLineIsBehind) {
    Strip(QStringLiteral("1"));
    form.shell.tmrSpectrum.Enabled = true;
    line.behind = true;
    HandleEvent(form, {.kind = InputKind::kTmrSpectrum});
    EXPECT_EQ(line.messages, 0);
}

TEST_F(Spectrum, ATickThatIsSwitchedOffHalfWayStillSendsItsRest) {
    Strip(QStringLiteral("3"));
    form.shell.tmrSpectrum.Enabled = true;
    pump.next = [&] { form.shell.tmrSpectrum.Enabled = false; };
    HandleEvent(form, {.kind = InputKind::kTmrSpectrum});
    EXPECT_EQ(line.messages, 3);
}

TEST_F(Spectrum, TheCountIsReadOnEveryTick) {
    Strip(QStringLiteral("3"));
    Tick();
    Strip(QStringLiteral("5"));
    Tick();
    EXPECT_EQ(line.messages, 8);
}
