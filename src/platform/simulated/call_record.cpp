// Keeping what the platform has been asked to do.
#include "platform/simulated/call_record.h"

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
