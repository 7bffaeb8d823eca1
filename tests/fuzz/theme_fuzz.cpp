// Fuzzer of theme.ini: the record and the slots. The sounds are missing, so that loading ends behind them.
#include "one_file.h"
#include "run_files.h"
#include "theme/load_theme.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    WithOneFile(QStringLiteral("themes/default/theme.ini"), data, size, [](Form_Main& form, const QString&) {
        form.Theme = QStringLiteral("default");
        LoadTheme(form);
    });
    return 0;
}
