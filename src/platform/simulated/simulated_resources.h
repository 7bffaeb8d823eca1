// The real files, fonts, picture loader and compression library, able to fail on demand.
#pragma once

#include "platform/files.h"
#include "platform/font_files/registered_fonts.h"
#include "platform/fonts.h"
#include "platform/system_pictures.h"
#include "platform/zlib_library.h"

#include <QByteArray>

#include <functional>
#include <utility>

class CallRecord;
class Failures;

// Forwards every operation. A failing one does nothing and returns what its port defines for failure.
class SimulatedFiles : public Files {
public:
    // `fails` is called with the name of each operation that can fail. The real files outlive this object.
    SimulatedFiles(Files& real, std::function<bool(const char* operation)> fails)
        : real_(real), fails_(std::move(fails)) {}

    std::optional<QByteArray> ReadWhole(const QString& path, std::int64_t limit) override;
    std::unique_ptr<OpenFile> Open(const QString& path) override;
    std::optional<FileIdentity> Identity(const QString& path) override;
    bool IsFolder(const QString& path) override;
    std::optional<std::vector<FolderEntry>> ListFolder(const QString& path) override;
    bool Write(const QString& path, const QByteArray& bytes, bool synced) override;
    bool Append(const QString& path, const QByteArray& bytes) override;
    void CopyRights(const QString& model, const QString& target) override { real_.CopyRights(model, target); }
    bool Rename(const QString& from, const QString& to) override;
    bool Remove(const QString& path) override;
    bool RemoveTree(const QString& path) override { return real_.RemoveTree(path); }
    bool SyncFile(const QString& path) override { return real_.SyncFile(path); }
    bool SyncFolder(const QString& path) override;
    bool MakeFolder(const QString& path) override;
    QString RealPath(const QString& path) override { return real_.RealPath(path); }

private:
    Files& real_;
    std::function<bool(const char* operation)> fails_;
};

// Really registers the theme's fonts, so that text is drawn with them.
class SimulatedFonts : public Fonts {
public:
    // Files, record and failures outlive the fonts.
    SimulatedFonts(Files& files, CallRecord& record, const Failures& failures)
        : files_(files), record_(record), failures_(failures) {}

    // Needs the toolkit's application object. The same content is registered only once.
    int AddFontResource(const QString& path) override;

private:
    Files& files_;
    CallRecord& record_;
    const Failures& failures_;
    RegisteredFonts registered_;
};

// Forwards every picture to the real loader.
class SimulatedPictures : public SystemPictures {
public:
    // The real loader and the failures outlive this object.
    SimulatedPictures(SystemPictures& real, const Failures& failures) : real_(real), failures_(failures) {}

    std::unique_ptr<SystemPicture> OleLoadPicture(std::span<const std::uint8_t> bytes) override;

private:
    SystemPictures& real_;
    const Failures& failures_;
};

// A failing routine is missing. Callers test Has before they call a routine.
class SimulatedZlib : public ZlibLibrary {
public:
    // The real library and the failures outlive this object.
    SimulatedZlib(ZlibLibrary& real, const Failures& failures) : real_(real), failures_(failures) {}

    bool Has(const char* routine) override;
    int Uncompress(std::span<std::uint8_t> target, std::size_t& written,
                   std::span<const std::uint8_t> source) override {
        return real_.Uncompress(target, written, source);
    }
    std::uint32_t Crc32(std::uint32_t start, std::span<const std::uint8_t> bytes) override {
        return real_.Crc32(start, bytes);
    }

private:
    ZlibLibrary& real_;
    const Failures& failures_;
};

// A machine without the library.
class NoZlib : public ZlibLibrary {
public:
    bool Has(const char* /*routine*/) override { return false; }
    int Uncompress(std::span<std::uint8_t> target, std::size_t& written,
                   std::span<const std::uint8_t> source) override;
    std::uint32_t Crc32(std::uint32_t start, std::span<const std::uint8_t> bytes) override;
};
