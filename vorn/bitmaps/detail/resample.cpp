// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/detail/resample.h"

#include <algorithm>
#include <cmath>

namespace vorn::detail {

namespace {

constexpr int weightBits = 14;

/// The source pixels that make up one pixel of the result, and where their weights stand.
struct Taps {
    int first;
    int count;
    size_t weights;
};

struct Kernel {
    std::vector<Taps> taps;
    std::vector<int> weights; ///< of each result pixel they add up to 1 << weightBits
};

Kernel triangleKernel(int length, int newLength) {
    Kernel kernel;
    double scale = static_cast<double>(length) / newLength;
    double radius = std::max(scale, 1.0);
    for (int i = 0; i < newLength; ++i) {
        double centre = (i + 0.5) * scale - 0.5;
        int first = std::max(static_cast<int>(std::floor(centre - radius)) + 1, 0);
        int last = std::min(static_cast<int>(std::ceil(centre + radius)) - 1, length - 1);
        double sum = 0;
        for (int j = first; j <= last; ++j)
            sum += 1 - std::abs(j - centre) / radius;
        kernel.taps.push_back({first, last - first + 1, kernel.weights.size()});
        int left = 1 << weightBits;
        for (int j = first; j <= last; ++j) {
            double share = (1 - std::abs(j - centre) / radius) / sum;
            int weight = std::min(static_cast<int>(std::lround(share * (1 << weightBits))), left);
            kernel.weights.push_back(weight);
            left -= weight;
        }
        // What rounding left over goes to the middle, where it shows least.
        kernel.weights[kernel.weights.size() - static_cast<size_t>(last - first + 1) / 2 - 1] += left;
    }
    return kernel;
}

constexpr uint32_t half = 1 << (weightBits - 1);

void scaleRow(const uint32_t* source, uint32_t* target, const Kernel& kernel) {
    for (const Taps& taps : kernel.taps) {
        uint32_t sums[4] = {half, half, half, half};
        for (int k = 0; k < taps.count; ++k) {
            auto weight = static_cast<uint32_t>(kernel.weights[taps.weights + k]);
            uint32_t pixel = source[taps.first + k];
            for (int c = 0; c < 4; ++c)
                sums[c] += (pixel >> 8 * c & 0xFF) * weight;
        }
        uint32_t value = 0;
        for (int c = 0; c < 4; ++c)
            value |= sums[c] >> weightBits << 8 * c;
        *target++ = value;
    }
}

/// Scales the height of bytes that lie in rows of `rowBytes`: what a byte means does not matter here.
void scaleHeight(const uint8_t* source, uint8_t* target, size_t rowBytes, const Kernel& kernel) {
    std::vector<uint32_t> sums(rowBytes);
    for (const Taps& taps : kernel.taps) {
        std::ranges::fill(sums, half);
        for (int k = 0; k < taps.count; ++k) {
            auto weight = static_cast<uint32_t>(kernel.weights[taps.weights + k]);
            const uint8_t* row = source + (taps.first + k) * rowBytes;
            for (size_t i = 0; i < rowBytes; ++i)
                sums[i] += row[i] * weight;
        }
        for (size_t i = 0; i < rowBytes; ++i)
            *target++ = static_cast<uint8_t>(sums[i] >> weightBits);
    }
}

} // namespace

std::vector<uint32_t> resampled(std::span<const uint32_t> pixels, int width, int height, int newWidth,
                                int newHeight) {
    auto row = static_cast<size_t>(newWidth);
    std::vector<uint32_t> narrow(row * static_cast<size_t>(height));
    Kernel across = triangleKernel(width, newWidth);
    for (int y = 0; y < height; ++y) {
        scaleRow(&pixels[static_cast<size_t>(y) * static_cast<size_t>(width)],
                 &narrow[row * static_cast<size_t>(y)], across);
    }
    std::vector<uint32_t> result(row * static_cast<size_t>(newHeight));
    scaleHeight(reinterpret_cast<const uint8_t*>(narrow.data()), reinterpret_cast<uint8_t*>(result.data()),
                row * sizeof(uint32_t), triangleKernel(height, newHeight));
    return result;
}

} // namespace vorn::detail
