// Messages that wait until a serial device accepts them.
#include "platform/serial/output_queue.h"

#include <cerrno>
#include <unistd.h>

bool OutputQueue::Add(const QByteArray& message, Time now) {
    if (size_ + message.size() > kMostBytes) {
        return false;
    }
    if (size_ == 0) {
        progress_ = now;
    }
    messages_.push_back(message);
    size_ += message.size();
    return true;
}

OutputQueue::Outcome OutputQueue::Send(int descriptor, Time now) {
    while (!messages_.empty()) {
        const QByteArray& first = messages_.front();
        const ssize_t taken = write(descriptor, first.constData() + written_,
                                    static_cast<std::size_t>(first.size() - written_));
        if (taken < 0 && errno == EINTR) {
            continue;
        }
        if (taken <= 0) {
            return taken == 0 || errno == EAGAIN ? Outcome::kWaiting : Outcome::kFailed;
        }
        progress_ = now;
        written_ += taken;
        size_ -= taken;
        if (written_ == first.size()) {
            messages_.pop_front();
            written_ = 0;
        }
    }
    return Outcome::kSent;
}

bool OutputQueue::DropStalled(Time now) {
    const std::size_t begun = written_ > 0 ? 1 : 0;
    if (!IsStalled(now) || messages_.size() <= begun) {
        return false;
    }
    while (messages_.size() > begun) {
        size_ -= messages_.back().size();
        messages_.pop_back();
    }
    return true;
}

void OutputQueue::Clear() {
    messages_.clear();
    written_ = 0;
    size_ = 0;
}
