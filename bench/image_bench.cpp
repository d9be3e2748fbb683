// SPDX-License-Identifier: MIT
#include "bench/harness.h"
#include "vorn/bitmaps/image_codec.h"

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <vector>
#include <wincodec.h>

namespace {

constexpr int width = 2048, height = 1536, stride = width * 3;

/// A picture with the shades, lines and bare ground of a chart, as the rows of a 24-bit DIB.
std::vector<BYTE> chartBits() {
    std::vector<BYTE> bits(static_cast<size_t>(stride) * height, 255);
    for (int y = 200; y < height - 200; y++) {
        for (int x = 300; x < width - 300; x++) {
            BYTE* pixel = &bits[static_cast<size_t>(y) * stride + x * 3];
            const bool line = x % 128 == 0 || y % 50 == 0;
            pixel[0] = static_cast<BYTE>(line ? 0 : x * 255 / width);
            pixel[1] = static_cast<BYTE>(line ? 0 : y * 255 / height);
            pixel[2] = static_cast<BYTE>(line ? 0 : 128 + 100 * std::sin(x * 0.01) * std::cos(y * 0.013));
        }
    }
    return bits;
}

/// The imaging component called with nothing in between; COM and the factory are there already.
class PlainEncoder {
public:
    PlainEncoder() {
        ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        ::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                           reinterpret_cast<void**>(&m_factory));
    }
    ~PlainEncoder() {
        m_factory->Release();
        ::CoUninitialize();
    }

    void save(const wchar_t* file, REFGUID container, std::vector<BYTE>& bits) const {
        IWICStream* stream = nullptr;
        IWICBitmapEncoder* encoder = nullptr;
        IWICBitmapFrameEncode* frame = nullptr;
        m_factory->CreateStream(&stream);
        stream->InitializeFromFilename(file, GENERIC_WRITE);
        m_factory->CreateEncoder(container, nullptr, &encoder);
        encoder->Initialize(stream, WICBitmapEncoderNoCache);
        encoder->CreateNewFrame(&frame, nullptr);
        frame->Initialize(nullptr);
        frame->SetSize(width, height);
        WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
        frame->SetPixelFormat(&format);
        frame->WritePixels(height, stride, static_cast<UINT>(bits.size()), bits.data());
        frame->Commit();
        encoder->Commit();
        frame->Release();
        encoder->Release();
        stream->Release();
    }

private:
    IWICImagingFactory* m_factory = nullptr;
};

/// Two files in the temporary folder, deleted at the end.
struct Files {
    std::filesystem::path ours = std::filesystem::temp_directory_path() / "vorn-bench-ours.tmp";
    std::filesystem::path plain = std::filesystem::temp_directory_path() / "vorn-bench-plain.tmp";

    ~Files() {
        std::error_code ignored;
        std::filesystem::remove(ours, ignored);
        std::filesystem::remove(plain, ignored);
    }
};

bench::Sides saves(int format, const GUID& container) {
    auto bits = std::make_shared<std::vector<BYTE>>(chartBits());
    auto plain = std::make_shared<PlainEncoder>();
    auto files = std::make_shared<Files>();
    return {[=, name = files->ours.string()] {
                CvornImageCodec::SaveBits(name.c_str(), format, bits->data(), width, height, 24);
            },
            [=] { plain->save(files->plain.c_str(), container, *bits); }};
}

const bench::Registration png{{"image: save PNG, 2048 x 1536", "WIC called directly", 1.05,
                               [] { return saves(CvornImageCodec::FORMAT_PNG, GUID_ContainerFormatPng); }}};
const bench::Registration jpeg{{"image: save JPEG, 2048 x 1536", "WIC called directly", 1.05, [] {
                                    return saves(CvornImageCodec::FORMAT_JPEG, GUID_ContainerFormatJpeg);
                                }}};
const bench::Registration bmp{{"image: save BMP, 2048 x 1536", "WIC called directly", 1.05,
                               [] { return saves(CvornImageCodec::FORMAT_BMP, GUID_ContainerFormatBmp); }}};

} // namespace
