// Setting the display mode.
#include "shell/display_mode.h"

#include "shell/form_main.h"

// The mode change comes with the display's own change; until then the screen keeps its mode.
void ChangeRes(Form_Main& /*form*/, Integer32 /*width*/, Integer32 /*height*/, Integer32 /*bits*/) {}
