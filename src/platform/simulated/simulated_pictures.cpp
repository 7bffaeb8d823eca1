// The picture loader of the simulated machine.
#include "platform/simulated/simulated_pictures.h"

#include "platform/simulated/failures.h"

std::unique_ptr<SystemPicture> SimulatedPictures::OleLoadPicture(std::span<const std::uint8_t> bytes) {
    return failures_.Has("OleLoadPicture") ? nullptr : real_.OleLoadPicture(bytes);
}
