// Decoding the sounds of a theme as the jukebox does, and comparing their loudness.
#include "app/workshop/sound_check.h"

#include "app/workshop/checked_theme.h"
#include "platform/gstreamer/decode_file.h"
#include "state/paths.h"
#include "theme/load_assets.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

// Sounds are short; a longer one is compared by its beginning.
constexpr double kMostSeconds = 30;
// 400 ms at 44100 Hz.
constexpr std::int64_t kWindow = 17640;
// A sound that is this much louder than the middle one of all sounds is noticed.
constexpr double kLouder = 6;

struct Loudness {
    QString name;
    double decibels = 0;
};

// The mean power of the loudest 400 ms, in decibels of full scale.
double LoudestPart(const DecodedSound& sound) {
    double power = 0;
    double most = 0;
    const auto square = [&](std::int64_t frame) {
        const double left = sound.samples[static_cast<std::size_t>(2 * frame)] / 32768.0;
        const double right = sound.samples[static_cast<std::size_t>(2 * frame + 1)] / 32768.0;
        return (left * left + right * right) / 2;
    };
    for (std::int64_t frame = 0; frame < sound.Frames(); ++frame) {
        power += square(frame) - (frame >= kWindow ? square(frame - kWindow) : 0);
        most = std::max(most, power);
    }
    return 10 * std::log10(std::max(most / kWindow, 1e-10));
}

// Returns the middle value.
double Median(std::vector<Loudness> sounds) {
    std::sort(sounds.begin(), sounds.end(),
              [](const Loudness& a, const Loudness& b) { return a.decibels < b.decibels; });
    return sounds[sounds.size() / 2].decibels;
}

void CheckLoudness(CheckedTheme& theme, const std::vector<Loudness>& sounds) {
    if (sounds.size() < 3) {
        return;
    }
    const double middle = Median(sounds);
    for (const Loudness& sound : sounds) {
        if (sound.decibels > middle + kLouder) {
            TellFile(theme, Level::kWarning, sound.name,
                     QStringLiteral("The sound is %1 dB louder than most sounds of the theme.")
                         .arg(std::lround(sound.decibels - middle)),
                     QStringLiteral("Make all sounds equally loud."));
        }
    }
}

} // namespace

void CheckSounds(CheckedTheme& theme) {
    std::vector<Loudness> sounds;
    for (const QString& name : ThemeSounds()) {
        const QString path = FindFile(theme.form.files, theme.folder, name);
        QString reason = QStringLiteral("the file is missing");
        const std::optional<DecodedSound> sound =
            path.isEmpty() ? std::nullopt : DecodeFile(path, kMostSeconds, &reason);
        if (!sound) {
            TellFile(
                theme, Level::kError, name,
                QStringLiteral("The sound cannot be played (%1), and the theme does not load.").arg(reason),
                QStringLiteral("Save it as an MP3 file; a silent one will do."));
        } else if (sound->Frames() > 0) {
            sounds.push_back({name, LoudestPart(*sound)});
        }
    }
    CheckLoudness(theme, sounds);
}
