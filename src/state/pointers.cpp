// The mouse pointer of the main form.
#include "state/pointers.h"

#include "platform/windows.h"
#include "state/form_main.h"

void SetModePointers(Form_Main& form) {
    const int pointer = form.settings.TactileMode == u"false" ? kPointerCustom : kPointerDefault;
    for (const char* object : {"Form_Main", "Picture_Main", "Picture_MainVideo"}) {
        form.windows.MousePointer(QString::fromLatin1(object), pointer);
    }
}
