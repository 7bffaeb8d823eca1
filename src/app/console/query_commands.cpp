// Answering queries about the jukebox's state, calls, pictures and tags.
#include "app/console/query_commands.h"

#include "app/console/state_names.h"
#include "imaging/picture/c32bppdib.h"
#include "imaging/tags/tagged_images.h"
#include "platform/event_pump.h"
#include "platform/simulated/simulated_platform.h"
#include "rendering/tag_covers.h"
#include "state/form_main.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QHash>
#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace {

JsonObject Ok() {
    return JsonObject().Add(QStringLiteral("ok"), true);
}

ParsedCommand Bad(const QString& reason) {
    return {Command(), reason};
}

// Every name, in the order of the listed state.
const std::vector<StateName>& StateNames() {
    static const std::vector<StateName> names = [] {
        std::vector<StateName> all;
        for (const auto& part : {VariableNames(), ThemeNames(), ObjectNames()}) {
            all.insert(all.end(), part.begin(), part.end());
        }
        return all;
    }();
    return names;
}

// Returns the row of a name, case-sensitive; null when there is none.
const StateName* FindStateName(const QString& name) {
    static const QHash<QString, const StateName*> index = [] {
        QHash<QString, const StateName*> rows;
        for (const StateName& row : StateNames()) {
            rows.insert(QString::fromLatin1(row.name), &row);
        }
        return rows;
    }();
    return index.value(name);
}

// Ignores events: loading a picture for a query must not process any.
class IdlePump : public EventPump {
public:
    void DoEvents() override {}
    void Wait(double /*milliseconds*/) override {}
};

QImage PictureOf(const Surface& surface) {
    return surface.picture;
}

struct SurfaceRow {
    const char* name;
    QImage (*read)(const Form_Main& form);
};

#define SURFACE(owner, name)                                                                                 \
    {                                                                                                        \
#name, [](const Form_Main& form) { return PictureOf(form.owner.name); }                              \
    }

// clang-format off
constexpr SurfaceRow kSurfaces[] = {
    SURFACE(frame, Picture_Main),
    SURFACE(frame, Picture_Video),
    SURFACE(frame, Picture_Cache),
    SURFACE(frame, Picture_CacheHilight),
    SURFACE(frame, Picture_CacheTmp),
    SURFACE(frame, Picture_CacheTmp2),
    SURFACE(frame, Picture_Playlist),
    SURFACE(frame, Picture_PlaylistHilight),
    SURFACE(frame, Picture_PlaylistTmp),
    SURFACE(frame, Picture_Command),
    SURFACE(frame, Picture_CommandHilight),
    SURFACE(frame, Picture_TmpCover),
    SURFACE(keyboard, Picture_Keyboard),
};
// clang-format on

#undef SURFACE

const SurfaceRow* FindSurface(const QString& name) {
    for (const SurfaceRow& row : kSurfaces) {
        if (name == QLatin1String(row.name)) {
            return &row;
        }
    }
    return nullptr;
}

JsonObject WritePng(Console& console, const QImage& picture, const QString& file) {
    if (picture.isNull()) {
        return RefusalObject(QStringLiteral("the picture is empty"));
    }
    QBuffer png;
    png.open(QIODevice::WriteOnly);
    const bool written =
        picture.save(&png, "PNG") && console.platform.realFiles.Write(file, png.data(), false);
    return written ? Ok() : RefusalObject(QStringLiteral("cannot be written: ") + file);
}

ParsedCommand WriteSurface(const SurfaceRow* surface, const QString& file) {
    const auto run = [surface, file](Console& console) {
        SettleTmpCover(console.form);
        return WritePng(console, surface->read(console.form), file);
    };
    return {run, QString()};
}

JsonObject ShowImage(Console& console, const QString& file, bool withZlib) {
    IdlePump pump;
    NoZlib noZlib;
    ZlibLibrary& realZlib = console.platform.zlib;
    const PicturePorts ports{console.platform.files, withZlib ? realZlib : noZlib, pump,
                             console.platform.pictures};
    c32bppDIB picture;
    const bool loaded = picture.LoadPicture_File(ports, file);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (picture.Handle() != 0) {
        hash.addData(QByteArrayView(picture.BitsPointer(), static_cast<qsizetype>(picture.ByteCount())));
    }
    return Ok()
        .Add(QStringLiteral("loaded"), loaded)
        .Add(QStringLiteral("Width"), picture.Width())
        .Add(QStringLiteral("Height"), picture.Height())
        .Add(QStringLiteral("alpha"), picture.alpha())
        .Add(QStringLiteral("ImageType"), picture.ImageType())
        .Add(QStringLiteral("sha256"), QString::fromLatin1(hash.result().toHex()));
}

QString Sha256Of(std::span<const std::uint8_t> bytes) {
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
    return QString::fromLatin1(hash.result().toHex());
}

// A picture of a tag: what the reader reports of it, and the bytes it returns; no bytes when it returns
// nothing.
QJsonObject TagPicture(const cTaggedImages& tag, int index) {
    const auto data = tag.ExtractImageData(index);
    const auto bytes = data.value_or(std::span<const std::uint8_t>());
    return {{QStringLiteral("ImageType"), tag.ImageType(index)},
            {QStringLiteral("ImageCategory"), tag.ImageCategory(index)},
            {QStringLiteral("length"), static_cast<qint64>(bytes.size())},
            {QStringLiteral("sha256"), Sha256Of(bytes)},
            {QStringLiteral("extracted"), data.has_value()}};
}

// A broken tag ends the program, as in the cabinet.
JsonObject ShowTags(Console& console, const QString& file) {
    cTaggedImages tag;
    tag.LoadTagged_Images(console.platform.files, file);
    QJsonArray images;
    for (int i = 1; i <= tag.ImageCount(); ++i) {
        images.append(TagPicture(tag, i));
    }
    return Ok().Add(QStringLiteral("ImageCount"), tag.ImageCount()).Add(QStringLiteral("images"), images);
}

} // namespace

ParsedCommand ParseState(const QStringList& words) {
    std::vector<const StateName*> rows;
    for (const QString& name : words.mid(1)) {
        const StateName* row = FindStateName(name);
        if (row == nullptr) {
            return Bad(QStringLiteral("unknown name: ") + name);
        }
        // A name that is requested twice appears once, because the members of an object have different names.
        if (std::find(rows.begin(), rows.end(), row) == rows.end()) {
            rows.push_back(row);
        }
    }
    if (rows.empty()) {
        for (const StateName& row : StateNames()) {
            rows.push_back(&row);
        }
    }
    const auto run = [rows](Console& console) {
        SettleTmpCover(console.form);
        JsonObject state;
        for (const StateName* row : rows) {
            state.Add(QString::fromLatin1(row->name), row->read(console.form));
        }
        return Ok().Add(QStringLiteral("state"), state);
    };
    return {run, QString()};
}

ParsedCommand ParseCalls(const QStringList& words) {
    if (words.size() != 1) {
        return Bad(QStringLiteral("calls takes nothing"));
    }
    const auto run = [](Console& console) {
        CallRecord& record = console.platform.calls;
        QJsonArray calls;
        for (const QJsonArray& entry : record.Entries()) {
            calls.append(entry);
        }
        JsonObject answer = Ok().Add(QStringLiteral("calls"), calls);
        if (record.Dropped() > 0) {
            answer.Add(QStringLiteral("dropped"), CallNumber(record.Dropped()));
        }
        record.Clear();
        return answer;
    };
    return {run, QString()};
}

ParsedCommand ParseFrame(const QString& rest) {
    const QString file = rest.trimmed();
    return file.isEmpty() ? Bad(QStringLiteral("frame takes a file"))
                          : WriteSurface(FindSurface(QStringLiteral("Picture_Main")), file);
}

ParsedCommand ParseSurface(const QString& rest) {
    const QString words = rest.trimmed();
    const qsizetype blank = words.indexOf(u' ');
    const QString name = words.left(blank);
    const QString file = blank < 0 ? QString() : words.mid(blank).trimmed();
    const SurfaceRow* surface = FindSurface(name);
    if (file.isEmpty()) {
        return Bad(QStringLiteral("surface takes a name and a file"));
    }
    return surface == nullptr ? Bad(QStringLiteral("unknown surface: ") + name) : WriteSurface(surface, file);
}

ParsedCommand ParseImage(const QString& rest) {
    const QString words = rest.trimmed();
    const bool withZlib = !words.endsWith(QStringLiteral(" no-zlib"));
    const QString file = withZlib ? words : words.chopped(8).trimmed();
    if (file.isEmpty()) {
        return Bad(QStringLiteral("image takes a file, and no-zlib or nothing"));
    }
    return {[file, withZlib](Console& console) { return ShowImage(console, file, withZlib); }, QString()};
}

ParsedCommand ParseTags(const QString& rest) {
    const QString file = rest.trimmed();
    if (file.isEmpty()) {
        return Bad(QStringLiteral("tags takes a file"));
    }
    return {[file](Console& console) { return ShowTags(console, file); }, QString()};
}

JsonObject RefusalObject(const QString& reason) {
    return JsonObject().Add(QStringLiteral("ok"), false).Add(QStringLiteral("reason"), reason);
}
