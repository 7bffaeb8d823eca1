// config.ini: reading it, and its values where they are used.
#pragma once

#include <QString>

#include <vector>

struct Form_Main;

// A key that LoadConfig reads.
struct KnownKey {
    QString section;
    QString key;
};
// Returns all of them, StartPath first.
std::vector<KnownKey> KnownConfigKeys();

// Returns the music folder; empty when none has been chosen.
QString ReadStartPath(Form_Main& form);

// Read the keys of config.ini in the order in which the configuration is loaded: first the theme and the
// display mode; then the places of the picture and the video, and the switches listed with them; then what is
// shown, the keys and the LEDs.
void ReadScreenKeys(Form_Main& form);
void ReadPlacementKeys(Form_Main& form);
void ReadOtherKeys(Form_Main& form);

// Read the key bindings, or the touch mode, alone.
void ReadKeyBindings(Form_Main& form);
void ReadTactileMode(Form_Main& form);

// Returns the place of a key in config.ini for the detail of an error: file, section, key.
QString ConfigPlace(const Form_Main& form, QStringView section, QStringView key);

// Converts a setting of the section "Main" to a number. Raises 13 or 6; the detail names the setting's place.
double ConfigNumber(const Form_Main& form, QStringView key, const QString& value);

// The same as whole pixels, halves rounded to even.
int ConfigPixels(const Form_Main& form, QStringView key, const QString& value);
