// The real picture loader, able to fail on demand.
#pragma once

#include "platform/system_pictures.h"

class Failures;

class SimulatedPictures : public SystemPictures {
public:
    // The real loader and the failures outlive this object.
    SimulatedPictures(SystemPictures& real, const Failures& failures) : real_(real), failures_(failures) {}

    std::unique_ptr<SystemPicture> OleLoadPicture(std::span<const std::uint8_t> bytes) override;

private:
    SystemPictures& real_;
    const Failures& failures_;
};
