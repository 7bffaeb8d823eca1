// The key bindings of the configuration dialog.
#pragma once

#include "core/integer.h"

#include <QString>

class IniFile;
struct Form_Main;

// Reads the bindings of config.ini into their variables, and from these into the dialog. Raises 6 for a code
// beyond 16 bits.
void ShowBindings(Form_Main& form);

// Sets the bindings of the dialog in config.ini.
void SetBindings(const Form_Main& form, IniFile& file);

// Returns the caption of Label_Key(Index), which ends in " :". Raises 9 outside 0 to 14.
QString CaptionOfBinding(Integer16 Index);
