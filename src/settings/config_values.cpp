// Values of config.ini where they are used.
#include "settings/config_values.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "shell/form_main.h"

QString ConfigPlace(const Form_Main& form, QStringView section, QStringView key) {
    return QStringLiteral("%1/config.ini, [%2] %3").arg(form.AppFolder, section, key);
}

double ConfigNumber(const Form_Main& form, QStringView key, const QString& value) {
    return TellingWhere([&] { return ConfigPlace(form, u"Main", key); }, [&] { return CDouble(value); });
}
