// Taking coins and refusing picks.
#include "playback/credits.h"

#include "playback/engine.h"
#include "rendering/main_block.h"
#include "rendering/redraw_jukebox.h"
#include "shell/form_main.h"
#include "shell/pause.h"

void InsertCoin(Form_Main& form) {
    form.TrackNumberInput.clear();
    // Deliberate D-140: coin 32768 raises 6, which leaves InputBusy set. One expects the counter to stay. It
    // has 16 bits.
    form.Credits += 1;
    form.InfosTicks = 1;
    if (form.PlaylistCount == 0) {
        form.BlockMainInfos = QStringLiteral("selecttrack");
        PlaySound(form, ThemeSound::kInsertCoin);
    } else {
        // Deliberate D-10: no sound while the queue holds something. One expects each coin to sound; the coin
        // sound would play into the music.
        form.BlockMainInfos = QStringLiteral("nowplaying");
    }
    RedrawJukebox(form);
}

void RefuseForCredit(Form_Main& form) {
    constexpr int kRounds = 3;
    PlaySound(form, ThemeSound::kNoCredit);
    for (int round = 0; round < kRounds; ++round) {
        RepaintCreditBox(form);
        RefreshMain(form);
        Pause(form, 6000);
        RepaintCreditBox(form);
        WriteCredits(form);
        RefreshMain(form);
        Pause(form, 6000);
    }
}

bool OutOfCredit(const Form_Main& form) {
    return form.ManageCoin == u"true" && form.Credits <= 0;
}
