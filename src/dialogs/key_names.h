// The names of keys, as the dialogs show them.
#pragma once

#include "core/integer.h"

#include <QString>

// Returns the name of a virtual-key code: that of the list in core/virtual_keys.h, else the Unicode character
// of that number, and nothing for a negative code.
QString GetVirtKeyName(int KeyCode);
// The same for a text, which is named after its first character. Raises 5 for an empty text.
QString GetVirtKeyName(const QString& KeyCode);
QString KeyName(Integer16 KeyCode);

// Returns the name of a key as a file contains it: nothing for an empty value; a text that is not a number is
// named after its first character. Raises 6 for a number beyond 16 bits.
QString NameOfStoredKey(const QString& value);

// Returns the names of codes joined by "|", with " + " between two names. Empty codes are left out.
QString NameOfCombination(const QString& codes);
