// Port: the file system, so that a test can see and fail every operation.
#pragma once

#include "core/integer.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

// What tells one state of a file from another: two equal identities mean that the file has not been changed.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    std::int64_t modifiedNanoseconds = 0;
    std::int64_t changedNanoseconds = 0;

    bool operator==(const FileIdentity&) const = default;
};

struct FolderEntry {
    QString name;
    bool isFolder = false;
};

// A regular file that is open for reading, at its start; closed at the end of its life.
struct OpenFile {
    virtual ~OpenFile() = default;
    // The bytes that the file had when it was opened.
    virtual std::int64_t Size() const = 0;
    // Reads the next bytes until `to` is full. False when there are fewer or reading fails.
    virtual bool Read(std::span<std::uint8_t> to) = 0;
};

// Paths are text made by TextOfPath. No operation raises an error unless it says so; the result reports a
// failure. Called on the event thread alone.
struct Files {
    virtual ~Files() = default;

    // The whole of a regular file. Nothing when it is missing, no regular file, unreadable or larger than
    // `limit`.
    virtual std::optional<QByteArray> ReadWhole(const QString& path, std::int64_t limit) = 0;
    // Opens a regular file, links followed. Null when it is missing, no regular file or unreadable.
    virtual std::unique_ptr<OpenFile> Open(const QString& path) = 0;
    // The identity of a regular file, links followed. Nothing when there is none.
    virtual std::optional<FileIdentity> Identity(const QString& path) = 0;
    // A folder, links followed.
    virtual bool IsFolder(const QString& path) = 0;
    // The entries of a folder in no particular order, hidden ones included, "." and ".." not. An entry that
    // is neither file nor folder (links followed) is left out. Nothing when the folder cannot be read.
    virtual std::optional<std::vector<FolderEntry>> ListFolder(const QString& path) = 0;

    // Creates or empties a file and writes `bytes`; with `synced` they are on the disk when this returns.
    virtual bool Write(const QString& path, const QByteArray& bytes, bool synced) = 0;
    // Opens a file for appending, creating it when missing, writes and closes it.
    virtual bool Append(const QString& path, const QByteArray& bytes) = 0;
    // Gives `target` the access rights of `model`, as far as that is possible.
    virtual void CopyRights(const QString& model, const QString& target) = 0;
    // Puts `from` in the place of `to` in one step. False for a `to` that exists and is no regular file.
    virtual bool Rename(const QString& from, const QString& to) = 0;
    virtual bool Remove(const QString& path) = 0;
    // Makes the names in a folder last through a power cut.
    virtual bool SyncFolder(const QString& path) = 0;
    virtual bool MakeFolder(const QString& path) = 0;
    // The path with every link in it followed; the path itself when it names nothing.
    virtual QString RealPath(const QString& path) = 0;
};
