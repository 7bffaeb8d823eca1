// Naming keys after their codes.
#include "dialogs/key_names.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "core/virtual_keys.h"

#include <QStringList>

QString GetVirtKeyName(int KeyCode) {
    for (const VirtualKeyName& row : kVirtualKeyNames) {
        if (row.code == KeyCode) {
            return QString::fromLatin1(row.name);
        }
    }
    return KeyCode < 0 ? QString() : QString(QChar(static_cast<char16_t>(KeyCode)));
}

QString GetVirtKeyName(const QString& KeyCode) {
    if (KeyCode.isEmpty()) {
        throw RunTimeError(kInvalidProcedureCall, QStringLiteral("a key code is empty"));
    }
    return GetVirtKeyName(KeyCode.front().unicode());
}

QString KeyName(Integer16 KeyCode) {
    return GetVirtKeyName(KeyCode.value());
}

QString NameOfStoredKey(const QString& value) {
    if (value.isEmpty()) {
        return QString();
    }
    return IsNumeric(value) ? KeyName(CInt16(value)) : GetVirtKeyName(value);
}

QString NameOfCombination(const QString& codes) {
    QStringList names;
    for (const QString& code : codes.split(u'|', Qt::SkipEmptyParts)) {
        names += NameOfStoredKey(code);
    }
    return names.join(QStringLiteral(" + "));
}
