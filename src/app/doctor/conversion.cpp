// The endings of media files that are not listed, and conversions with ffmpeg.
#include "app/doctor/conversion.h"

#include "library/file_pattern.h"

#include <array>

namespace {

const QString kVideos = QStringLiteral("*.mp4;*.m4v;*.mkv;*.webm;*.mov;*.qt;*.wmv;*.asf;*.mpeg;*.mpe;*.m1v;*."
                                       "m2v;*.mpv;*.vob;*.ts;*.mts;*.m2ts;*.flv;*.f4v;"
                                       "*.3gp;*.3g2;*.ogv;*.divx;*.rm;*.rmvb;*.mjpg;*.dv;*.mxf");
const QString kLossless =
    QStringLiteral("*.ape;*.wv;*.tta;*.tak;*.aif;*.aiff;*.aifc;*.au;*.snd;*.alac;*.dsf;*.dff;*.w64;*.caf");
const QString kLossy = QStringLiteral(
    "*.m4a;*.m4b;*.m4p;*.aac;*.ogg;*.oga;*.opus;*.mpc;*.mp+;*.mpp;*.mp2;*.mp1;*.mpa;*.mka;*.ac3;*.dts;"
    "*.ra;*.ram;*.amr;*.spx;*.weba;*.mid;*.midi;*.mod;*.xm;*.s3m;*.it");
const QString kPlaylists = QStringLiteral("*.m3u;*.m3u8;*.pls;*.xspf;*.wpl;*.asx;*.cue;*.zpl");

struct Pattern {
    FilePattern pattern;
    UnlistedKind kind;
};

const std::array<Pattern, 4>& Patterns() {
    static const std::array<Pattern, 4> patterns = {
        Pattern{FilePattern(kLossy), UnlistedKind::kLossySound},
        Pattern{FilePattern(kVideos), UnlistedKind::kVideo},
        Pattern{FilePattern(kLossless), UnlistedKind::kLosslessSound},
        Pattern{FilePattern(kPlaylists), UnlistedKind::kPlaylist}};
    return patterns;
}

QString WithEnding(const QString& path, const QString& ending) {
    return path.left(path.lastIndexOf(u'.')) + ending;
}

} // namespace

std::optional<UnlistedKind> UnlistedKindOf(const QString& name) {
    for (const Pattern& row : Patterns()) {
        if (row.pattern.Matches(name)) {
            return row.kind;
        }
    }
    return std::nullopt;
}

QString CommandToConvert(UnlistedKind kind, const QString& path) {
    const auto command = [&](const QString& options, const QString& ending) {
        return QStringLiteral("ffmpeg -n -i %1 %2 %3")
            .arg(ShellQuoted(path), options, ShellQuoted(WithEnding(path, ending)));
    };
    switch (kind) {
    case UnlistedKind::kLossySound:
        return command(QStringLiteral("-vn -c:a libmp3lame -q:a 2 -id3v2_version 3"), QStringLiteral(".mp3"));
    case UnlistedKind::kLosslessSound:
        return command(QStringLiteral("-vn -c:a flac"), QStringLiteral(".flac"));
    case UnlistedKind::kVideo:
        return command(QStringLiteral("-c:v mpeg4 -vtag xvid -q:v 4 -c:a libmp3lame -q:a 3"),
                       QStringLiteral(".avi"));
    default:
        return QString();
    }
}

QString ShellQuoted(const QString& text) {
    return u'\'' + QString(text).replace(u'\'', QStringLiteral("'\\''")) + u'\'';
}
