// Port: the file system. Tests record and fail every operation.
#pragma once

#include "core/integer.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

// Identifies one state of a file: two equal identities mean that the file has not been changed.
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

// A regular file that is open for reading, positioned at its start. The destructor closes it.
struct OpenFile {
    virtual ~OpenFile() = default;
    // The size in bytes at the time the file was opened.
    virtual std::int64_t Size() const = 0;
    // Reads the next bytes until `to` is full. Returns false when fewer are left or reading fails.
    virtual bool Read(std::span<std::uint8_t> to) = 0;
};

// Paths are text made by TextOfPath. No operation raises an error unless it says so; the result reports a
// failure. Event thread only.
struct Files {
    virtual ~Files() = default;

    // Reads a whole regular file. Returns nothing when it is missing, not a regular file, unreadable or
    // larger than `limit`.
    virtual std::optional<QByteArray> ReadWhole(const QString& path, std::int64_t limit) = 0;
    // Opens a regular file, following links. Returns null when it is missing, not a regular file or
    // unreadable.
    virtual std::unique_ptr<OpenFile> Open(const QString& path) = 0;
    // The identity of a regular file, following links; nothing when there is no such file.
    virtual std::optional<FileIdentity> Identity(const QString& path) = 0;
    // Whether the path names a folder, following links.
    virtual bool IsFolder(const QString& path) = 0;
    // The entries of a folder in no particular order, hidden ones included, without "." and "..". Entries
    // that are neither file nor folder (links followed) are left out. Returns nothing when the folder cannot
    // be read.
    virtual std::optional<std::vector<FolderEntry>> ListFolder(const QString& path) = 0;
    // The same for a folder on a medium that may not answer: calls `wait` repeatedly until the folder has
    // been read, and returns nothing when `wait` returns false.
    virtual std::optional<std::vector<FolderEntry>> ListSlowFolder(const QString& path,
                                                                   const std::function<bool()>& /*wait*/) {
        return ListFolder(path);
    }
    // The folders in which a person looks for files: "/", then the user's home and mounted media if there are
    // any.
    virtual QStringList Drives() { return {QStringLiteral("/")}; }

    // Creates or empties a file and writes `bytes`. With `synced` they are on the disk when this returns.
    virtual bool Write(const QString& path, const QByteArray& bytes, bool synced) = 0;
    // Opens a file for appending, creates it if it is missing, writes and closes it.
    virtual bool Append(const QString& path, const QByteArray& bytes) = 0;
    // Copies the access rights of `model` to `target` as far as possible.
    virtual void CopyRights(const QString& model, const QString& target) = 0;
    // Renames `from` to `to` and atomically replaces a regular file there. Returns false when `to` exists and
    // is not a regular file.
    virtual bool Rename(const QString& from, const QString& to) = 0;
    virtual bool Remove(const QString& path) = 0;
    // Removes a file, a link or a folder with everything in it. Links are removed, not followed. Returns true
    // when the path names nothing afterwards.
    virtual bool RemoveTree(const QString& /*path*/) { return false; }
    // Makes the content of a file survive a power cut.
    virtual bool SyncFile(const QString& /*path*/) { return false; }
    // Makes the entries of a folder survive a power cut.
    virtual bool SyncFolder(const QString& path) = 0;
    virtual bool MakeFolder(const QString& path) = 0;
    // The path with every link in it resolved; the path itself when it names nothing.
    virtual QString RealPath(const QString& path) = 0;
};
