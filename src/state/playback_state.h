// State of the queue and the players.
#pragma once

#include "core/bounded_array.h"
#include "core/integer.h"
#include "platform/media_graph.h"

#include <QString>

#include <cstdint>
#include <memory>

struct QueueState {
    // The entries, from 1: path, title, number of starts so far, number of starts paid for.
    BoundedArray<QString, 1000> PlaylistPath;
    BoundedArray<QString, 1000> PlaylistTitre;
    BoundedArray<Integer16, 1000> PlaylistPlayed;
    BoundedArray<Integer16, 1000> PlaylistCredits;
    Integer16 PlaylistCount;
    // The 1-based cursor in the queue block. 0 at start, and after a playlist that was not started.
    Integer16 PlaylistSelected;
    // The 1-based number of the current entry.
    Integer16 PlaylistCurrent;
};

struct PlayerState {
    // -1 from BassPlayFile to BassStopFile, else 0. The buttons "stop" and "pause" leave it at -1.
    Integer16 IsPlaying;
    QString NowPlayingPath;
    QString NowPlayingTitre;
    // The remaining time as "mm:ss", or empty.
    QString Remain;
    // 1 from the last four seconds of a track until the next one starts.
    Integer16 TrackChanging;

    // The running stream, its length and its last read position in seconds.
    std::uint32_t BassChannel = 0;
    double TrackLengthSeconds = 0;
    double TrackPositionSeconds = 0;

    // Four references to the graph of the running video, empty when none runs.
    std::shared_ptr<MediaGraph> VideoControl;
    std::shared_ptr<MediaGraph> VideoPosition;
    std::shared_ptr<MediaGraph> VideoAudio;
    std::shared_ptr<MediaGraph> VideoWindow;
    // Set and cleared in many places; nothing depends on it.
    Integer16 VideoRunning;
};
