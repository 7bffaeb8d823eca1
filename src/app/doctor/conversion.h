// Media files that the jukebox does not list, and the commands that convert them.
#pragma once

#include <QString>

#include <optional>

enum class UnlistedKind { kLossySound, kLosslessSound, kVideo, kPlaylist };

// Returns the kind of a file by its ending; nothing for a file that is no sound, video or playlist, or that
// the jukebox lists.
std::optional<UnlistedKind> UnlistedKindOf(const QString& name);

// Returns the command that converts a file to a format that is listed, for a shell. Empty for a playlist.
QString CommandToConvert(UnlistedKind kind, const QString& path);

// Returns a text in quotes for a shell.
QString ShellQuoted(const QString& text);
