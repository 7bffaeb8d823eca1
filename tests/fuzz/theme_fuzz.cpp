// Fuzzer of theme.ini: the theme record and the slots. Loading ends after them, because there are no sounds.
#include "one_file.h"
#include "run_files.h"
#include "shell/load_theme.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    WithOneFile(QStringLiteral("themes/default/theme.ini"), data, size, [](Form_Main& form, const QString&) {
        form.settings.Theme = QStringLiteral("default");
        LoadTheme(form);
    });
    return 0;
}
