// The spectrum of a stretch of sound.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

// Frames, of two samples each, that one spectrum is made of.
constexpr std::size_t kSpectrumFrames = 1024;

// 512 magnitudes of 1024 stereo frames: left and right averaged, Hann window, FFT; index i stands for i *
// 44100 / 1024 Hz. A full-scale sine that falls on a bin gives 1.0 there. From any thread.
std::array<float, 512> SpectrumOf(std::span<const std::int16_t, kSpectrumFrames * 2> samples);
