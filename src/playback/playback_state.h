// State of the queue, the credits and the players.
#pragma once

#include "core/bounded_array.h"
#include "core/integer.h"
#include "platform/media_graph.h"

#include <QString>

#include <cstdint>
#include <memory>

struct PlaybackState {
    // The queue, from entry 1: path, title, starts so far, starts paid.
    BoundedArray<QString, 1000> PlaylistPath;
    BoundedArray<QString, 1000> PlaylistTitre;
    BoundedArray<Integer16, 1000> PlaylistPlayed;
    BoundedArray<Integer16, 1000> PlaylistCredits;
    Integer16 PlaylistCount;
    // 1-based cursor in the queue block; 0 while the queue has never held anything.
    Integer16 PlaylistSelected;
    // 1-based entry now playing.
    Integer16 PlaylistCurrent;

    Integer16 Credits;

    // -1 from a start to the next stop, else 0. Pause leaves it at -1.
    Integer16 IsPlaying;
    QString NowPlayingPath;
    QString NowPlayingTitre;
    // Remaining time "mm:ss", empty when nothing runs.
    QString Remain;
    // 1 from the last four seconds of a track until the next one starts.
    Integer16 TrackChanging;

    // The running stream; seconds of its length and of the position last read.
    std::uint32_t BassChannel = 0;
    double TrackLengthSeconds = 0;
    double TrackPositionSeconds = 0;

    // Four references to the graph of the running video, empty when none runs.
    std::shared_ptr<MediaGraph> VideoControl;
    std::shared_ptr<MediaGraph> VideoPosition;
    std::shared_ptr<MediaGraph> VideoAudio;
    std::shared_ptr<MediaGraph> VideoWindow;
    // Set and cleared in many places; nothing acts on it.
    Integer16 VideoRunning;
};
