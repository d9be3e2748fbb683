// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/detail/image_encoder.h"

#include <vector>

namespace vorn::detail {

namespace {

/// Blue, green, red of a row of 32-bit pixels.
void packRow(const BYTE* source, BYTE* target, int width) {
    for (int x = 0; x < width; ++x, source += 4, target += 3) {
        target[0] = source[0];
        target[1] = source[1];
        target[2] = source[2];
    }
}

/// The same of a row with alpha, over white.
void flattenRow(const BYTE* source, BYTE* target, int width) {
    for (int x = 0; x < width; ++x, source += 4, target += 3) {
        unsigned alpha = source[3];
        for (int c = 0; c < 3; ++c) {
            target[c] = static_cast<BYTE>((source[c] * alpha + 255 * (255 - alpha) + 127) / 255);
        }
    }
}

bool writeRows(IWICBitmapFrameEncode* frame, const PixelRows& rows, bool keepAlpha) {
    int bytesPerPixel = keepAlpha ? 4 : 3;
    auto rowBytes = static_cast<UINT>(rows.width * bytesPerPixel);
    bool pack = rows.bits == 32 && !keepAlpha;
    std::vector<BYTE> packed(pack ? rowBytes : 0);
    for (int y = 0; y < rows.height; ++y) {
        const BYTE* row = rows.top + y * rows.step;
        if (pack) {
            (rows.hasAlpha ? flattenRow : packRow)(row, packed.data(), rows.width);
            row = packed.data();
        }
        if (FAILED(frame->WritePixels(1, rowBytes, rowBytes, const_cast<BYTE*>(row)))) return false;
    }
    return true;
}

} // namespace

ComPtr<IWICImagingFactory> makeImagingFactory() {
    ComPtr<IWICImagingFactory> factory;
    ::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                       reinterpret_cast<void**>(factory.out()));
    return factory;
}

HeapBytes encodeImage(REFGUID container, const PixelRows& rows) {
    ComScope com;
    ComPtr<IWICImagingFactory> factory = makeImagingFactory();
    ComPtr<MemoryStream> stream(new MemoryStream);
    ComPtr<IWICBitmapEncoder> encoder;
    ComPtr<IWICBitmapFrameEncode> frame;
    if (!factory || FAILED(factory->CreateEncoder(container, nullptr, encoder.out())) ||
        FAILED(encoder->Initialize(stream.get(), WICBitmapEncoderNoCache)) ||
        FAILED(encoder->CreateNewFrame(frame.out(), nullptr)) || FAILED(frame->Initialize(nullptr)) ||
        FAILED(frame->SetSize(static_cast<UINT>(rows.width), static_cast<UINT>(rows.height)))) {
        return {};
    }
    bool keepAlpha = rows.hasAlpha && container == GUID_ContainerFormatPng;
    const WICPixelFormatGUID wanted = keepAlpha ? GUID_WICPixelFormat32bppBGRA : GUID_WICPixelFormat24bppBGR;
    WICPixelFormatGUID format = wanted;
    if (FAILED(frame->SetPixelFormat(&format)) || format != wanted ||
        !writeRows(frame.get(), rows, keepAlpha) || FAILED(frame->Commit()) || FAILED(encoder->Commit())) {
        return {};
    }
    return stream->detach();
}

} // namespace vorn::detail
