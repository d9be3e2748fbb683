// SPDX-License-Identifier: MIT
#include "bench/picture_files.h"

#include <cmath>

namespace bench {

namespace {

constexpr int stride = pictureWidth * 3;

} // namespace

std::vector<BYTE> chartPicture() {
    std::vector<BYTE> bits(static_cast<size_t>(stride) * pictureHeight, 255);
    for (int y = 200; y < pictureHeight - 200; y++) {
        for (int x = 300; x < pictureWidth - 300; x++) {
            BYTE* pixel = &bits[static_cast<size_t>(y) * stride + x * 3];
            const bool line = x % 128 == 0 || y % 50 == 0;
            pixel[0] = static_cast<BYTE>(line ? 0 : x * 255 / pictureWidth);
            pixel[1] = static_cast<BYTE>(line ? 0 : y * 255 / pictureHeight);
            pixel[2] = static_cast<BYTE>(line ? 0 : 128 + 100 * std::sin(x * 0.01) * std::cos(y * 0.013));
        }
    }
    return bits;
}

PlainEncoder::PlainEncoder() {
    ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    ::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                       reinterpret_cast<void**>(&m_factory));
}

PlainEncoder::~PlainEncoder() {
    m_factory->Release();
    ::CoUninitialize();
}

void PlainEncoder::save(const wchar_t* file, REFGUID container, std::vector<BYTE>& bits) const {
    IWICStream* stream = nullptr;
    IWICBitmapEncoder* encoder = nullptr;
    IWICBitmapFrameEncode* frame = nullptr;
    m_factory->CreateStream(&stream);
    stream->InitializeFromFilename(file, GENERIC_WRITE);
    m_factory->CreateEncoder(container, nullptr, &encoder);
    encoder->Initialize(stream, WICBitmapEncoderNoCache);
    encoder->CreateNewFrame(&frame, nullptr);
    frame->Initialize(nullptr);
    frame->SetSize(pictureWidth, pictureHeight);
    WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
    frame->SetPixelFormat(&format);
    frame->WritePixels(pictureHeight, stride, static_cast<UINT>(bits.size()), bits.data());
    frame->Commit();
    encoder->Commit();
    frame->Release();
    encoder->Release();
    stream->Release();
}

} // namespace bench
