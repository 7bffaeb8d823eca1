// The table of situations.
#include "app/workshop/situations.h"

#include "app/workshop/sample_music.h"

#include <initializer_list>

namespace {

// The key codes of the usual bindings.
constexpr int kDown = 40;
constexpr int kRight = 39;
constexpr int kLeft = 37;
constexpr int kConfirm = 13;
constexpr int kNextBlock = 9;
constexpr int kCoin = 45;

using Steps = std::vector<Step>;
using Settings = std::vector<std::pair<QString, QString>>;

Steps Keys(std::initializer_list<int> codes) {
    Steps steps;
    for (const int code : codes) {
        steps.push_back({Step::kKey, code});
        // A confirmed pick is shown until the next heartbeat.
        if (code == kConfirm) {
            steps.push_back({Step::kTick, 1});
        }
    }
    return steps;
}

Steps operator+(Steps first, const Steps& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

Steps Times(int count, const Steps& steps) {
    Steps all;
    for (int i = 0; i < count; ++i) {
        all = all + steps;
    }
    return all;
}

Steps Into(QStringView folder) {
    return {{Step::kEnter, 0, folder.toString()}};
}

Settings With(const char* key, const char* value) {
    return {{QString::fromLatin1(key), QString::fromLatin1(value)}};
}

Situation Of(const char* name, const char* words, Steps steps, Settings settings = {}) {
    return {QString::fromLatin1(name), QString::fromLatin1(words), std::move(steps), std::move(settings)};
}

Situation OfSamples(const char* name, const char* words, Steps steps, Settings settings = {}) {
    Situation situation = Of(name, words, std::move(steps), std::move(settings));
    situation.needsSamples = true;
    return situation;
}

std::vector<Situation> MakeSituations() {
    const Steps album = Into(kSampleAlbum);
    const Steps pick = Keys({kConfirm, kDown});
    // Four tracks are bought, and the first one plays.
    const Steps buy = Times(8, Keys({kCoin})) + album +
                      Keys({kConfirm, kDown, kDown, kConfirm, kRight, kConfirm, kDown, kConfirm});
    const Steps block = Keys({kNextBlock});
    const Steps save = Times(12, pick) + Times(2, block) + Keys({kLeft, kConfirm});
    const Settings coins = With("ManageCoin", "true");
    return {
        Of("first", "the first page", {}),
        OfSamples("page", "a page turns", Keys({kRight}) + Steps{{Step::kShootInKey, kRight}}),
        Of("covers", "tracks with covers", album),
        Of("coverless", "tracks without covers", album, With("ShowCover", "false")),
        Of("numberless", "neither covers nor numbers", album,
           {{QStringLiteral("ShowCover"), QStringLiteral("false")},
            {QStringLiteral("ShowTrackNum"), QStringLiteral("false")}}),
        OfSamples("longtitles", "long titles", Into(kSampleLongTitles), With("ShowCover", "false")),
        OfSamples("empty", "an empty folder", Into(kSampleEmpty)),
        Of("bought", "four tracks bought", buy, coins),
        Of("coming", "the message about the next track", buy + Steps{{Step::kTick, 34}}, coins),
        Of("main", "focus on the Main block", buy + block, coins),
        Of("queue", "focus on the queue", buy + Times(2, block), coins),
        Of("full", "a full queue", album + Times(14, pick) + Times(2, block)),
        Of("menu", "focus on the menu", buy + Times(3, block) + Keys({kDown}), coins),
        Of("menuend", "the last row of the menu", Times(3, block) + Times(6, Keys({kDown}))),
        Of("bigcover", "the big cover", album + Keys({kDown, kDown}), With("ShowBigCover", "true")),
        OfSamples("video", "a video plays", Into(kSampleVideos) + Keys({kDown, kConfirm})),
        OfSamples("videos", "tracks with the video mark", Into(kSampleVideos)),
        Of("refusal", "no credit", album + Steps{{Step::kShootInKey, kConfirm, QString(), 2}}, coins),
        Of("coin", "please insert a coin", {{Step::kTick, 2}}, coins),
        Of("touch", "touch mode", album, With("tactilemode", "true")),
        Of("keyboard", "naming a playlist", album + save + Keys({kRight, kConfirm, kDown, kConfirm})),
    };
}

} // namespace

const std::vector<Situation>& Situations() {
    static const std::vector<Situation> all = MakeSituations();
    return all;
}
