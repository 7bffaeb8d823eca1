// Recording calls, and the names of the operations that can fail.
#include "platform/simulated/calls.h"

#include <algorithm>
#include <iterator>

namespace {

// clang-format off
constexpr const char* kOperations[] = {
    "BASS_GetVersion",
    "BASS_Init",
    "BASS_StreamCreateFile",
    "BASS_StreamFree",
    "BASS_MusicFree",
    "BASS_ChannelPlay",
    "BASS_ChannelPause",
    "BASS_ChannelStop",
    "BASS_ChannelGetLength",
    "BASS_ChannelGetPosition",
    "BASS_ChannelSetPosition",
    "BASS_ChannelGetData",
    "RenderFile",
    "Run",
    "Pause",
    "Stop",
    "CurrentPosition",
    "Place",
    "PortOpen",
    "Output",
    "Input",
    "EnumDisplayMonitors",
    "TestDisplaySettings",
    "ChangeDisplaySettings",
    "AddFontResource",
    "uncompress",
    "crc32",
    "OleLoadPicture",
    "ReadWhole",
    "Open",
    "Identity",
    "IsFolder",
    "ListFolder",
    "Write",
    "Append",
    "Rename",
    "Remove",
    "SyncFolder",
    "MakeFolder",
};
// clang-format on

} // namespace

void CallRecord::Add(std::initializer_list<QJsonValue> entry) {
    last_ = QJsonArray(entry);
    entries_.push_back(last_);
    if (entries_.size() > kLimit) {
        entries_.pop_front();
        ++dropped_;
    }
}

void CallRecord::Clear() {
    entries_.clear();
    dropped_ = 0;
}

bool Failures::IsOperation(const QString& operation) {
    return std::any_of(std::begin(kOperations), std::end(kOperations),
                       [&](const char* name) { return operation == QLatin1String(name); });
}
