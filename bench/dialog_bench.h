// The time of the configuration dialog, compared with a bare dialog and with loading alone.
#pragma once

#include <QString>

// Prints rows for opening the dialog, showing the preview of a theme, and OK. `homeFolder` is the delivered
// home.
void BenchDialogs(const QString& homeFolder);
