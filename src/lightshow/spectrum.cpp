// The spectrum of the running track as colours of the LED strip.
#include "lightshow/spectrum.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "lightshow/colour_message.h"
#include "lightshow/led_link.h"
#include "platform/audio_library.h"
#include "platform/event_pump.h"
#include "platform/serial_port.h"
#include "settings/config.h"
#include "state/form_main.h"

#include <array>
#include <cmath>

namespace {

using Magnitudes = std::array<float, 512>;

// The bands share 1024 bins, ten octaves.
constexpr double kOctaves = 10.0;
constexpr int kLastEdge = 1023;
// The last bin that a band may read. The FFT fills those below 512.
constexpr int kLastBin = 1024;
// Loudness of a band to brightness.
constexpr double kGain = 1.7;
constexpr double kFloor = 4.0;
// Full circle of the colour wheel, and what brings a larger hue back.
constexpr int kFullHue = 256;
constexpr int kHueStep = 255;

double Sqrt(double x) {
    return std::pow(x, 0.5);
}

double Log10(double x) {
    return std::log(x) / std::log(10.0);
}

QString WhereNbLeds(const Form_Main& form) {
    return ConfigPlace(form, u"RGBLeds", u"NbLeds") +
           QStringLiteral(" \"%1\" (expected the number of LEDs, 1 to 1023, with Stereo=true 2 to 2047)")
               .arg(form.settings.RGBLedsNbLeds);
}

// One more than the number of bands that are shown.
// Deliberate D-146: with Stereo=true the strip is cut into two halves that show the same bands in the same
// direction, and the last LED of an odd number stays as it was. One would expect the left and the right
// channel, or a mirror image; strips in the field are mounted for two equal halves.
Integer16 BandCountOf(const Form_Main& form) {
    const QString& count = form.settings.RGBLedsNbLeds;
    return TellingWhere([&] { return WhereNbLeds(form); },
                        [&] {
                            if (form.settings.RGBLedsStereo == u"true") {
                                return Integer16((IntegerDivide(CInt32(count), Integer32(2)) + 1).value());
                            }
                            return CInt16(CDouble(count) + 1.0);
                        });
}

// Deliberate D-147: bins from 512 on are always 0, because the FFT has 512 magnitudes and the bands share
// 1024. So the last LEDs of a strip are always dark, two of thirty. One would expect the bands to share what
// there is; it decides which LED a tone lights, and strips are arranged for it.
// Deliberate D-151: a strip of more than 1023 LEDs ends the program with error 9 in the middle of a tick,
// after 1024 LEDs have got their messages. One would expect it to be refused at the start; each band needs a
// bin.
float MagnitudeOf(const Magnitudes& fft, int bin) {
    if (bin > kLastBin) {
        RaiseOutside(kSubscriptOutOfRange, bin, 0, kLastBin);
    }
    const auto index = static_cast<std::size_t>(bin);
    return index < fft.size() ? fft.at(index) : 0.0F;
}

// The first bin after a band, if the band has room: 1023 at the end of the tenth octave.
// Deliberate D-148: a strip without an LED, or in stereo with fewer than two, ends the program with error 6
// at the first tick, a number below 0 shows nothing and is no error. One would expect both to be refused at
// the start; the number is only read by the tick.
Integer32 UpperEdge(int band, Integer16 bandCount) {
    const int shown = (bandCount - 1).value();
    if (shown == 0) {
        throw RunTimeError(kOverflow, QStringLiteral("there is no band to share the octaves"));
    }
    const Integer32 edge = CInt32(std::pow(2.0, band * kOctaves / shown));
    return edge > kLastEdge ? Integer32(kLastEdge) : edge;
}

// Adds up the bins of a band, moves `bin` past them and returns the brightness, 1 to 255.
int LedLevel(const Form_Main& form, const Magnitudes& fft, int band, Integer16 bandCount, int& bin) {
    int end = UpperEdge(band, bandCount).value();
    if (end <= bin) {
        end = bin + 1;
    }
    const double bins = 10 + end - bin;
    float sum = 0;
    do {
        sum += MagnitudeOf(fft, 1 + bin);
        ++bin;
    } while (bin < end);
    const Integer32 height = form.lights.SpectrumHeight;
    Integer32 y = CInt32(Sqrt(sum / Log10(bins)) * kGain * static_cast<double>(height) - kFloor);
    if (y > height) {
        y = height;
    }
    y -= 1;
    return y < 1 ? 1 : y.value();
}

Integer32 HueOf(Form_Main& form, int band, Integer16 bandCount) {
    Integer16& offset = form.lights.SpectrumHueOffset;
    if (offset == kFullHue) {
        offset = 0;
    }
    const double turn = band * double{kFullHue} / static_cast<double>(bandCount);
    Integer32 hue = CInt32(turn + static_cast<double>(offset));
    while (hue > kFullHue) {
        hue -= kHueStep;
    }
    return hue;
}

// The wheel is never turned, so each LED keeps its colour.
LedColour ColorWheel(Integer32 hue) {
    if (hue < 85) {
        return {(hue * 3).value(), (255 - hue * 3).value(), 0};
    }
    if (hue < 170) {
        const Integer32 h = hue - 85;
        return {(255 - h * 3).value(), 0, (h * 3).value()};
    }
    const Integer32 h = hue - 170;
    return {0, (h * 3).value(), (255 - h * 3).value()};
}

// Deliberate D-149: the same amount is taken from red, green and blue, so a quiet band keeps only its
// strongest colour. One would expect the colour to stay and its brightness to fall; strips have always looked
// like this.
LedColour Dimmed(LedColour colour, int level) {
    for (Integer16* channel : {&colour.red, &colour.green, &colour.blue}) {
        *channel -= kFullHue - level;
        if (*channel < 0) {
            *channel = 0;
        }
    }
    return colour;
}

void LetEventsRun(Form_Main& form, int turns) {
    for (int turn = 0; turn < turns; ++turn) {
        form.pump.DoEvents();
    }
}

// Sends a band's colour to its LED, in stereo to one of each half. The last message of a tick is marked.
void SendColour(Form_Main& form, QByteArray& message, int band, Integer16 bandCount,
                const LedColour& colour) {
    const int shown = (bandCount - 1).value();
    const auto mark = band == shown - 1 ? LedMark::kLast : LedMark::kMore;
    const bool stereo = form.settings.RGBLedsStereo == u"true";
    WriteColourMessage(message, band, colour, stereo ? LedMark::kMore : mark);
    SendMessage(form, message);
    LetEventsRun(form, 3);
    if (stereo) {
        WriteColourMessage(message, band + shown, colour, mark);
        SendMessage(form, message);
        LetEventsRun(form, 1);
    }
}

// The last band uses up its bins and is not shown.
void ShowBands(Form_Main& form, const Magnitudes& fft) {
    const Integer16 bandCount = BandCountOf(form);
    QByteArray message = NewColourMessage();
    int bin = 0;
    for (int band = 0; band < bandCount.value(); ++band) {
        const int level = TellingWhere([&] { return WhereNbLeds(form); },
                                       [&] { return LedLevel(form, fft, band, bandCount, bin); });
        if (band == bandCount.value() - 1) {
            break;
        }
        const LedColour colour = Dimmed(ColorWheel(HueOf(form, band, bandCount)), level);
        SendColour(form, message, band, bandCount, colour);
    }
    LetEventsRun(form, 1);
}

} // namespace

void UpdateSpectrum(Form_Main& form) {
    EndsProgram("UpdateSpectrum", [&] {
        Magnitudes fft{};
        form.audio.BASS_ChannelGetData(form.player.BassChannel, fft);
        ShowBands(form, fft);
    });
}

void tmrSpectrum_Timer(Form_Main& form) {
    if (form.lights.tickRuns || form.MSComm1.IsBehind()) {
        return;
    }
    form.lights.tickRuns = true;
    UpdateSpectrum(form);
    form.lights.tickRuns = false;
}
