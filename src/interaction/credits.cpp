// Taking coins and refusing picks.
#include "interaction/credits.h"

#include "playback/engine.h"
#include "rendering/main_block.h"
#include "rendering/redraw_jukebox.h"
#include "state/form_main.h"
#include "state/pause.h"

void InsertCoin(Form_Main& form) {
    form.cursor.TrackNumberInput.clear();
    // Deliberate D-140: coin 32768 raises 6, which leaves InputBusy set. One would expect the counter to stay
    // at its highest value; it has 16 bits.
    form.coins.Credits += 1;
    form.frame.InfosTicks = 1;
    if (form.queue.PlaylistCount == 0) {
        form.frame.BlockMainInfos = QStringLiteral("selecttrack");
        PlaySound(form, ThemeSound::kInsertCoin);
    } else {
        // Deliberate D-10: no sound while the queue is not empty. One would expect each coin to make a sound;
        // it would play into the music.
        form.frame.BlockMainInfos = QStringLiteral("nowplaying");
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
    return form.settings.ManageCoin == u"true" && form.coins.Credits <= 0;
}
