// Fuzzer of the INI files: reads them, and changes a key without affecting anything else.
#include "run_files.h"
#include "settings/ini_file.h"

#include <cstdlib>

namespace {

void Expect(bool condition) {
    if (!condition) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QString section = QStringLiteral("Main");
    const QString key = QStringLiteral("Theme");
    const QString other = QStringLiteral("StartPath");
    const QString value = QStringLiteral("été");

    IniFile file(bytes);
    Expect(file.Bytes() == bytes);
    Expect(file.Value(section, key).size() <= 254);
    const QString kept = file.Value(section, other);
    file.SetValue(section, key, value);
    Expect(file.Value(section, key) == value);
    Expect(file.Value(section, other) == kept);

    // The written file reads the same, and writing the same value again changes nothing.
    IniFile again(file.Bytes());
    Expect(again.Value(section, key) == value);
    Expect(again.Value(section, other) == kept);
    again.SetValue(section, key, value);
    Expect(again.Bytes() == file.Bytes());
    return 0;
}
