// Values of config.ini where they are used.
#include "settings/config_values.h"

#include "core/conversions.h"
#include "core/path_text.h"
#include "core/run_time_error.h"
#include "shell/form_main.h"

QString ConfigPlace(const Form_Main& form, QStringView section, QStringView key) {
    return QStringLiteral("%1, [%2] %3")
        .arg(PathIn(form.AppFolder, QStringLiteral("config.ini")), section, key);
}

double ConfigNumber(const Form_Main& form, QStringView key, const QString& value) {
    const auto where = [&] {
        return ConfigPlace(form, u"Main", key) + QStringLiteral(" (expected a number)");
    };
    return TellingWhere(where, [&] { return CDouble(value); });
}
