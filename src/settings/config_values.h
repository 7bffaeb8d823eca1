// Values of config.ini where they are used.
#pragma once

#include <QString>

struct Form_Main;

// Where a key of config.ini stands, for the detail of an error: file, section, key.
QString ConfigPlace(const Form_Main& form, QStringView section, QStringView key);

// A setting of the section "Main" as a number. Raises 13 or 6, telling where it stands.
double ConfigNumber(const Form_Main& form, QStringView key, const QString& value);
