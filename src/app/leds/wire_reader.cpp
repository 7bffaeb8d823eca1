// Cutting the bytes of the wire into lines.
#include "app/leds/wire_reader.h"

void WireReader::Take(std::string_view bytes) {
    for (const char c : bytes) {
        line_ += c;
        ++bytes_;
        if (c == '\n' || line_.size() == kLongestLine) {
            Deliver();
        }
    }
}

void WireReader::Close() {
    if (!line_.empty()) {
        Deliver();
    }
}

void WireReader::Deliver() {
    sink_(line_, bytes_ - line_.size());
    line_.clear();
}
