// The queue's entries and places.
#include "playback/queue.h"

#include "core/run_time_error.h"
#include "state/form_main.h"

#include <utility>

namespace {

void SwapEntries(QueueState& queue, Integer16 a, Integer16 b) {
    std::swap(queue.PlaylistPath(a), queue.PlaylistPath(b));
    std::swap(queue.PlaylistTitre(a), queue.PlaylistTitre(b));
    std::swap(queue.PlaylistPlayed(a), queue.PlaylistPlayed(b));
    std::swap(queue.PlaylistCredits(a), queue.PlaylistCredits(b));
}

void CopyEntry(QueueState& queue, Integer16 from, Integer16 to) {
    queue.PlaylistPath(to) = queue.PlaylistPath(from);
    queue.PlaylistTitre(to) = queue.PlaylistTitre(from);
    queue.PlaylistPlayed(to) = queue.PlaylistPlayed(from);
    queue.PlaylistCredits(to) = queue.PlaylistCredits(from);
}

} // namespace

void AddEntry(Form_Main& form) {
    form.queue.PlaylistCount += 1;
    if (form.queue.PlaylistSelected == 0) {
        form.queue.PlaylistSelected = 1;
    }
}

void FillLastEntry(Form_Main& form, const QString& path, const QString& title) {
    const Integer16 last = form.queue.PlaylistCount;
    const auto where = [&] {
        return path + QStringLiteral(" for the queue (expected at most 1000 entries)");
    };
    TellingWhere(where, [&] { form.queue.PlaylistPath(last) = path; });
    form.queue.PlaylistTitre(last) = title;
    form.queue.PlaylistCredits(last) = 1;
    form.queue.PlaylistPlayed(last) = 0;
}

// Deliberate D-21: PlaylistCurrent does not change when entries are swapped or removed, so another track can
// become the current one. One would expect it to follow its entry; operators are used to this behaviour.
void MoveSelectedEntry(Form_Main& form, Integer16 step) {
    SwapEntries(form.queue, form.queue.PlaylistSelected, form.queue.PlaylistSelected + step);
    form.queue.PlaylistSelected += step;
}

void RemoveSelectedEntry(Form_Main& form) {
    for (Integer16 i = form.queue.PlaylistSelected; i < form.queue.PlaylistCount; i += 1) {
        CopyEntry(form.queue, i + 1, i);
    }
    form.queue.PlaylistCount -= 1;
    if (form.queue.PlaylistSelected > form.queue.PlaylistCount) {
        form.queue.PlaylistSelected = form.queue.PlaylistCount;
    }
}

bool IsUncovered(const Form_Main& form, Integer16 entry) {
    return form.queue.PlaylistPlayed(entry) >= form.queue.PlaylistCredits(entry);
}

void GoToPreviousEntry(Form_Main& form) {
    form.queue.PlaylistCurrent -= 1;
    if (form.queue.PlaylistCurrent < 1) {
        form.queue.PlaylistCurrent = form.queue.PlaylistCount;
    }
}

void GoToNextEntry(Form_Main& form) {
    form.queue.PlaylistCurrent += 1;
    if (form.queue.PlaylistCurrent > form.queue.PlaylistCount) {
        form.queue.PlaylistCurrent = 1;
    }
}

void MakeCurrent(Form_Main& form, Integer16 entry) {
    form.queue.PlaylistCurrent = entry;
}

void SelectCurrent(Form_Main& form) {
    form.queue.PlaylistSelected = form.queue.PlaylistCurrent;
}

void CountStart(Form_Main& form, Integer16 entry) {
    form.queue.PlaylistPlayed(entry) += 1;
}

void CountPayment(Form_Main& form, Integer16 entry) {
    form.queue.PlaylistCredits(entry) += 1;
}

void NameAfterEntry(Form_Main& form, Integer16 entry) {
    form.player.NowPlayingPath = form.queue.PlaylistPath(entry);
    form.player.NowPlayingTitre = form.queue.PlaylistTitre(entry);
}

void NameAfterSlot(Form_Main& form, Integer16 slot) {
    form.player.NowPlayingPath = form.library.InfoPath(slot);
    form.player.NowPlayingTitre = form.library.InfoTitre(slot);
}

void NameNothing(Form_Main& form) {
    form.player.NowPlayingPath.clear();
    form.player.NowPlayingTitre.clear();
}

void NameAfterSlotUnderCursor(Form_Main& form) {
    NameAfterSlot(form, form.library.NumTrack);
}
