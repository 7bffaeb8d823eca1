// Credits and queue on the disk: what a patron has paid survives any end of the program.
#pragma once

#include "core/integer.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <optional>
#include <vector>

struct Form_Main;

struct KeptEntry {
    QString path;
    QString title;
    // Number of starts paid for, and of starts so far. A start that was cut off does not count.
    Integer16 paid;
    Integer16 played;

    bool operator==(const KeptEntry&) const = default;
};

struct KeptSession {
    Integer16 credits;
    // The entry that plays, if one does, then the rest of the queue, then entries before them that were paid
    // for and not started.
    std::vector<KeptEntry> entries;
    bool firstPlays = false;
    // How often each of the paths has stopped the program.
    QHash<QString, int> stops;

    bool operator==(const KeptSession&) const = default;
    bool IsEmpty() const { return credits == 0 && entries.empty(); }
};

// What there is to keep now; `stops` is empty.
KeptSession SessionOf(const Form_Main& form);

// Converts a session to the bytes of its file, and back. Returns nothing when the bytes are not such a file;
// an entry that makes no sense is left out.
QByteArray BytesOf(const KeptSession& session);
std::optional<KeptSession> KeptSessionOf(const QByteArray& bytes);

// Counts one more stop of the program for an entry of the session.
void Blame(KeptSession& session, const QString& path);

// Takes the entries that have stopped the program twice out of the session, and returns their paths.
std::vector<QString> TakeOutBlamed(KeptSession& session);

// Puts the credits and the queue into a form that has just started, and starts the first entry whose file is
// there if it played or was paid for. Raises what starting a track raises, with InputBusy set.
void RestoreSession(Form_Main& form, const KeptSession& session);
