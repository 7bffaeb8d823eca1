// The console's commands for the controls of dialogs.
#pragma once

#include "app/console/commands.h"

#include <QString>

// get CONTROL, set CONTROL VALUE, click CONTROL, doubleclick CONTROL. `rest` is the text after the command's
// word and one blank. While no dialog is open, click takes the main form's Command1 and Command2.
ParsedCommand ParseGet(const QString& rest);
ParsedCommand ParseSet(const QString& rest);
ParsedCommand ParseClick(const QString& rest);
ParsedCommand ParseDoubleclick(const QString& rest);
