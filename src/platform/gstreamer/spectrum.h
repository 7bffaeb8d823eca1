// The spectrum of a piece of sound.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

// Frames of two samples each in one spectrum.
constexpr std::size_t kSpectrumFrames = 1024;

// 512 magnitudes of 1024 stereo frames: left and right averaged, Hann window, FFT. Index i is the frequency i
// * 44100 / 1024 Hz. A full-scale sine exactly on a bin gives 1.0 there. From any thread.
std::array<float, 512> SpectrumOf(std::span<const std::int16_t, kSpectrumFrames * 2> samples);
