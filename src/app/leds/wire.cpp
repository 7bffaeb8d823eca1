// The controller's end of the wire: a pseudo-terminal or a serial device.
#include "app/leds/wire.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace {

[[noreturn]] void Fail(const std::string& what) {
    throw WireError(what + ": " + std::strerror(errno)); // NOLINT(concurrency-mt-unsafe)
}

void SetRaw(int descriptor) {
    termios settings = {};
    if (tcgetattr(descriptor, &settings) != 0) {
        return;
    }
    cfmakeraw(&settings);
    settings.c_cflag |= CLOCAL | CREAD;
    cfsetspeed(&settings, B115200);
    tcsetattr(descriptor, TCSANOW, &settings);
}

} // namespace

Wire Wire::NewTerminal(const std::string& link) {
    Wire wire;
    wire.isTerminal_ = true;
    wire.link_ = link;
    wire.Plug();
    return wire;
}

Wire Wire::OfDevice(const std::string& device) {
    Wire wire;
    wire.name_ = device;
    wire.descriptor_ = open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (wire.descriptor_ < 0) {
        Fail(device);
    }
    if (isatty(wire.descriptor_) == 0) {
        throw WireError(device + ": this is not a serial device");
    }
    SetRaw(wire.descriptor_);
    return wire;
}

Wire::Wire(Wire&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), isTerminal_(other.isTerminal_),
      name_(std::move(other.name_)), link_(std::exchange(other.link_, std::string())) {}

Wire::~Wire() {
    Unplug();
    if (!link_.empty()) {
        unlink(link_.c_str());
    }
}

void Wire::Unplug() {
    if (descriptor_ >= 0) {
        close(descriptor_);
        descriptor_ = -1;
        name_.clear();
    }
}

// The jukebox's end is made raw once, so that nothing is echoed before the jukebox sets it up.
void Wire::Plug() {
    descriptor_ = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    std::array<char, 256> name = {};
    if (descriptor_ < 0 || grantpt(descriptor_) != 0 || unlockpt(descriptor_) != 0 ||
        ptsname_r(descriptor_, name.data(), name.size()) != 0 ||
        fcntl(descriptor_, F_SETFL, O_NONBLOCK) != 0) {
        Fail("a pseudo-terminal cannot be made");
    }
    SetRaw(descriptor_);
    name_ = name.data();
    Link();
}

void Wire::Link() {
    if (link_.empty()) {
        return;
    }
    struct stat status = {};
    if (lstat(link_.c_str(), &status) == 0 && !S_ISLNK(status.st_mode)) {
        const std::string link = std::exchange(link_, std::string());
        throw WireError(link + ": there is a file of this name that is not a link");
    }
    // Renamed over the old link, so that there is always one.
    const std::string fresh = link_ + ".new";
    unlink(fresh.c_str());
    if (symlink(name_.c_str(), fresh.c_str()) != 0 || rename(fresh.c_str(), link_.c_str()) != 0) {
        Fail(std::exchange(link_, std::string()));
    }
}

Wire::Outcome Wire::Read(std::string& bytes, std::size_t most) const {
    bytes.resize(most);
    const ssize_t count = read(descriptor_, bytes.data(), most);
    bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    if (count > 0) {
        return Outcome::kRead;
    }
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
        return Outcome::kNothing;
    }
    return isTerminal_ ? Outcome::kClosed : Outcome::kGone;
}

void Wire::Write(std::string_view bytes) const {
    if (write(descriptor_, bytes.data(), bytes.size()) < 0 && errno == EINTR) {
        Write(bytes);
    }
}
