// The controller's end of the wire: a pseudo-terminal or a serial device.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

// A wire that cannot be opened or linked, in words.
class WireError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class Wire {
public:
    // A new pseudo-terminal; with a link to it unless `link` is empty. An existing link is replaced, any
    // other file is not.
    static Wire NewTerminal(const std::string& link);
    // An existing device, at 115200 bits a second, 8 data bits, no parity, one stop bit.
    static Wire OfDevice(const std::string& device);

    Wire(Wire&& other) noexcept;
    Wire& operator=(Wire&&) = delete;
    Wire(const Wire&) = delete;
    Wire& operator=(const Wire&) = delete;
    ~Wire();

    // The device that the jukebox opens; empty while unplugged.
    const std::string& Name() const { return name_; }
    // For poll; -1 while unplugged.
    int Descriptor() const { return descriptor_; }

    enum class Outcome {
        kRead,
        kNothing,
        kClosed, // the jukebox has closed a pseudo-terminal; it may open it again
        kGone,   // a device has gone
    };
    // Reads `most` bytes at most, without waiting.
    Outcome Read(std::string& bytes, std::size_t most) const;
    // Writes without waiting. Bytes that are not accepted at once are lost.
    void Write(std::string_view bytes) const;

    // Closes the pseudo-terminal; the jukebox sees a device that has gone. The link stays.
    void Unplug();
    // Makes a new one, and points the link at it.
    void Plug();

private:
    Wire() = default;
    void Link();

    int descriptor_ = -1;
    bool isTerminal_ = false;
    std::string name_;
    std::string link_;
};
