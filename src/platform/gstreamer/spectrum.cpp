// The FFT of the light show.
#include "platform/gstreamer/spectrum.h"

#include <gst/fft/gstfftf32.h>

#include <cmath>
#include <memory>
#include <numbers>

namespace {

struct FreePlan {
    void operator()(GstFFTF32* plan) const { gst_fft_f32_free(plan); }
};

// Making a plan costs as much as using it, so each thread keeps one.
GstFFTF32* Plan() {
    thread_local const std::unique_ptr<GstFFTF32, FreePlan> plan(
        gst_fft_f32_new(static_cast<gint>(kSpectrumFrames), FALSE));
    return plan.get();
}

// The factors of a Hann window. Computing them takes longer than the FFT, so they are kept.
const std::array<double, kSpectrumFrames>& HannWindow() {
    static const std::array<double, kSpectrumFrames> window = [] {
        std::array<double, kSpectrumFrames> factors{};
        for (std::size_t i = 0; i < factors.size(); ++i) {
            const double turn = static_cast<double>(i) / static_cast<double>(factors.size());
            factors[i] = 0.5 - 0.5 * std::cos(2.0 * std::numbers::pi * turn);
        }
        return factors;
    }();
    return window;
}

} // namespace

std::array<float, 512> SpectrumOf(std::span<const std::int16_t, kSpectrumFrames * 2> samples) {
    std::array<float, kSpectrumFrames> mono{};
    const std::array<double, kSpectrumFrames>& window = HannWindow();
    for (std::size_t i = 0; i < mono.size(); ++i) {
        const float sample = static_cast<float>(samples[2 * i] + samples[2 * i + 1]) / 65536.0F;
        mono[i] = static_cast<float>(sample * window[i]);
    }
    std::array<GstFFTF32Complex, kSpectrumFrames / 2 + 1> bins{};
    gst_fft_f32_fft(Plan(), mono.data(), bins.data());

    // Half of a sine's energy is in the mirrored half, and the window halves the rest.
    constexpr float kScale = 4.0F / static_cast<float>(kSpectrumFrames);
    std::array<float, 512> magnitudes{};
    for (std::size_t i = 0; i < magnitudes.size(); ++i) {
        magnitudes[i] = std::sqrt(bins[i].r * bins[i].r + bins[i].i * bins[i].i) * kScale;
    }
    return magnitudes;
}
