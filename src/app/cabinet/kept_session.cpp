// Reading, writing and restoring credits and queue.
#include "app/cabinet/kept_session.h"

#include "core/path_text.h"
#include "playback/engine.h"
#include "playback/play_time.h"
#include "playback/queue.h"
#include "rendering/main_block.h"
#include "rendering/playlist_block.h"
#include "rendering/redraw_jukebox.h"
#include "state/form_main.h"
#include "state/paths.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <limits>

namespace {

constexpr int kMostEntries = 1000;
// An entry that has stopped the program this often is left out.
constexpr int kMostStops = 2;

// Names on disk may hold bytes that are not valid UTF-8, which JSON has no way to write.
QString PercentEncoded(const QString& text) {
    return QString::fromLatin1(BytesOfPath(text).toPercentEncoding("/ !'()*,"));
}

QString PercentDecoded(const QJsonValue& value) {
    return TextOfPath(QByteArray::fromPercentEncoding(value.toString().toLatin1()));
}

Integer16 NumberOf(const QJsonValue& value) {
    return static_cast<std::int16_t>(
        std::clamp(value.toInt(0), 0, int{std::numeric_limits<std::int16_t>::max()}));
}

QJsonObject JsonOf(const KeptEntry& entry, int stops) {
    return {{QStringLiteral("path"), PercentEncoded(entry.path)},
            {QStringLiteral("title"), PercentEncoded(entry.title)},
            {QStringLiteral("paid"), entry.paid.value()},
            {QStringLiteral("played"), entry.played.value()},
            {QStringLiteral("stops"), stops}};
}

KeptEntry EntryOf(const Form_Main& form, int number) {
    return {.path = form.queue.PlaylistPath(number),
            .title = form.queue.PlaylistTitre(number),
            .paid = form.queue.PlaylistCredits(number),
            .played = form.queue.PlaylistPlayed(number)};
}

bool IsPaid(const KeptEntry& entry) {
    return entry.paid > entry.played;
}

void FillQueue(Form_Main& form, const KeptSession& session) {
    for (const KeptEntry& entry : session.entries) {
        AddEntry(form);
        FillLastEntry(form, entry.path, entry.title);
        form.queue.PlaylistCredits(form.queue.PlaylistCount) = entry.paid;
        form.queue.PlaylistPlayed(form.queue.PlaylistCount) = entry.played;
    }
}

// The number of the entry to start; 0 when none may start.
int EntryToStart(Form_Main& form, const KeptSession& session) {
    for (std::size_t i = 0; i < session.entries.size(); ++i) {
        if (FileExists(form.files, session.entries[i].path)) {
            return (i == 0 && session.firstPlays) || IsPaid(session.entries[i]) ? static_cast<int>(i) + 1 : 0;
        }
    }
    return 0;
}

void StartEntry(Form_Main& form, int number) {
    MakeCurrent(form, number);
    SelectCurrent(form);
    ForgetRemain(form);
    BassPlayFile(form, form.queue.PlaylistPath(number));
    NameAfterEntry(form, number);
    CountStart(form, number);
    SetInfos(form, QStringLiteral("nowplaying"));
}

} // namespace

// An entry that was announced and has never started is the first one too: its start may have failed.
KeptSession SessionOf(const Form_Main& form) {
    const int count = std::clamp(int{form.queue.PlaylistCount.value()}, 0, kMostEntries);
    const int current = std::clamp(int{form.queue.PlaylistCurrent.value()}, 0, count);
    const bool plays = form.player.IsPlaying == -1;
    KeptSession session{.credits = form.coins.Credits, .entries = {}, .firstPlays = false, .stops = {}};
    if (current > 0) {
        KeptEntry entry = EntryOf(form, current);
        session.firstPlays = plays || IsPaid(entry) || entry.played == 0;
        if (plays && entry.played > 0) {
            entry.played -= 1;
        }
        if (session.firstPlays) {
            session.entries.push_back(entry);
        }
    }
    for (int number = current + 1; number <= count; ++number) {
        session.entries.push_back(EntryOf(form, number));
    }
    for (int number = 1; number < current; ++number) {
        if (const KeptEntry entry = EntryOf(form, number); IsPaid(entry)) {
            session.entries.push_back(entry);
        }
    }
    return session;
}

QByteArray BytesOf(const KeptSession& session) {
    QJsonArray entries;
    for (const KeptEntry& entry : session.entries) {
        entries.append(JsonOf(entry, session.stops.value(entry.path)));
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("version"), 1},
                                     {QStringLiteral("credits"), session.credits.value()},
                                     {QStringLiteral("firstPlays"), session.firstPlays},
                                     {QStringLiteral("entries"), entries}})
        .toJson();
}

std::optional<KeptSession> KeptSessionOf(const QByteArray& bytes) {
    const QJsonObject object = QJsonDocument::fromJson(bytes).object();
    if (object.value(u"version").toInt() != 1) {
        return std::nullopt;
    }
    KeptSession session{.credits = NumberOf(object.value(u"credits")),
                        .entries = {},
                        .firstPlays = object.value(u"firstPlays").toBool(),
                        .stops = {}};
    const QJsonArray entries = object.value(u"entries").toArray();
    for (const QJsonValue value : entries) {
        const QString path = PercentDecoded(value[u"path"]);
        if (path.isEmpty() || session.entries.size() == kMostEntries) {
            continue;
        }
        session.entries.push_back({.path = path,
                                   .title = PercentDecoded(value[u"title"]),
                                   .paid = NumberOf(value[u"paid"]),
                                   .played = NumberOf(value[u"played"])});
        if (value[u"stops"].toInt() > 0) {
            session.stops[path] = std::max(session.stops.value(path), value[u"stops"].toInt());
        }
    }
    return session;
}

void Blame(KeptSession& session, const QString& path) {
    if (std::any_of(session.entries.begin(), session.entries.end(),
                    [&](const KeptEntry& entry) { return entry.path == path; })) {
        session.stops[path] += 1;
    }
}

std::vector<QString> TakeOutBlamed(KeptSession& session) {
    std::vector<QString> taken;
    const auto isBlamed = [&](const KeptEntry& entry) {
        return session.stops.value(entry.path) >= kMostStops;
    };
    session.firstPlays = session.firstPlays && !session.entries.empty() && !isBlamed(session.entries.front());
    std::erase_if(session.entries, [&](const KeptEntry& entry) {
        if (isBlamed(entry)) {
            taken.push_back(entry.path);
        }
        return isBlamed(entry);
    });
    for (const QString& path : taken) {
        session.stops.remove(path);
    }
    return taken;
}

void RestoreSession(Form_Main& form, const KeptSession& session) {
    form.shell.InputBusy = 1;
    form.coins.Credits = session.credits;
    FillQueue(form, session);
    if (const int number = EntryToStart(form, session)) {
        StartEntry(form, number);
    }
    DrawPlaylist(form);
    if (form.settings.TactileMode == u"true") {
        CopyPlaylistForTouch(form);
    }
    RedrawJukebox(form);
    RefreshMain(form);
    form.shell.InputBusy = 0;
}
