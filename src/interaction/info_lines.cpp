// Setting what the information lines show.
#include "interaction/info_lines.h"

#include "shell/form_main.h"

void SetInfos(Form_Main& form, const QString& infos) {
    form.BlockMainInfos = infos;
    form.InfosBlink = 0;
    form.InfosTicks = 1;
}

void SetButtonInfos(Form_Main& form) {
    SetInfos(form, QStringLiteral("btn") + form.ActiveBtn);
}
