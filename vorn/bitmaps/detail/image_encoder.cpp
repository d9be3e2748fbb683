// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/detail/image_encoder.h"

#include "vorn/bitmaps/detail/whole_file.h"

#include <algorithm>
#include <cstring>
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

/// Puts a row of pixels as blue, green and red at `target`.
void putRow(const PixelRows& rows, int y, BYTE* target) {
    const BYTE* row = rows.top + y * rows.step;
    if (rows.bits == 24) {
        std::memcpy(target, row, static_cast<size_t>(rows.width) * 3);
    } else {
        (rows.hasAlpha ? flattenRow : packRow)(row, target, rows.width);
    }
}

bool writeRows(IWICBitmapFrameEncode* frame, const PixelRows& rows, bool keepAlpha) {
    auto rowBytes = static_cast<UINT>(rows.width * (keepAlpha ? 4 : 3));
    bool asTheyAre = rows.bits == 24 || keepAlpha;
    std::vector<BYTE> packed(asTheyAre ? 0 : rowBytes);
    for (int y = 0; y < rows.height; ++y) {
        if (!asTheyAre) putRow(rows, y, packed.data());
        const BYTE* row = asTheyAre ? rows.top + y * rows.step : packed.data();
        if (FAILED(frame->WritePixels(1, rowBytes, rowBytes, const_cast<BYTE*>(row)))) return false;
    }
    return true;
}

bool writeAll(IStream* stream, const void* data, size_t size) {
    ULONG written = 0;
    return SUCCEEDED(stream->Write(data, static_cast<ULONG>(size), &written)) && written == size;
}

/// A BMP file is the rows as they lie in a DIB, behind two headers: here the imaging component would only
/// copy.
bool writeBmp(IStream* stream, const PixelRows& rows) {
    size_t stride = (static_cast<size_t>(rows.width) * 3 + 3) / 4 * 4;
    BITMAPFILEHEADER file = {};
    BITMAPINFOHEADER info = {};
    file.bfType = 0x4D42;
    file.bfOffBits = sizeof file + sizeof info;
    file.bfSize = static_cast<DWORD>(file.bfOffBits + stride * static_cast<size_t>(rows.height));
    info.biSize = sizeof info;
    info.biWidth = rows.width;
    info.biHeight = rows.height;
    info.biPlanes = 1;
    info.biBitCount = 24;
    info.biSizeImage = file.bfSize - file.bfOffBits;
    if (!writeAll(stream, &file, sizeof file) || !writeAll(stream, &info, sizeof info)) return false;
    if (rows.bits == 24 && rows.step == -static_cast<ptrdiff_t>(stride)) {
        return writeAll(stream, rows.top + (rows.height - 1) * rows.step, info.biSizeImage);
    }
    constexpr size_t bandBytes = 1 << 18;
    int bandRows = static_cast<int>(std::max<size_t>(bandBytes / stride, 1));
    std::vector<BYTE> band(stride * static_cast<size_t>(std::min(bandRows, rows.height)));
    for (int bottom = rows.height; bottom > 0;) {
        int count = std::min(bandRows, bottom);
        for (int i = 0; i < count; ++i)
            putRow(rows, --bottom, &band[static_cast<size_t>(i) * stride]);
        if (!writeAll(stream, band.data(), static_cast<size_t>(count) * stride)) return false;
    }
    return true;
}

bool encodeInto(IWICImagingFactory* factory, IStream* stream, REFGUID container, const PixelRows& rows) {
    if (container == GUID_ContainerFormatBmp) return writeBmp(stream, rows);
    ComPtr<IWICBitmapEncoder> encoder;
    ComPtr<IWICBitmapFrameEncode> frame;
    if (FAILED(factory->CreateEncoder(container, nullptr, encoder.out())) ||
        FAILED(encoder->Initialize(stream, WICBitmapEncoderNoCache)) ||
        FAILED(encoder->CreateNewFrame(frame.out(), nullptr)) || FAILED(frame->Initialize(nullptr)) ||
        FAILED(frame->SetSize(static_cast<UINT>(rows.width), static_cast<UINT>(rows.height)))) {
        return false;
    }
    bool keepAlpha = rows.hasAlpha && container == GUID_ContainerFormatPng;
    const WICPixelFormatGUID wanted = keepAlpha ? GUID_WICPixelFormat32bppBGRA : GUID_WICPixelFormat24bppBGR;
    WICPixelFormatGUID format = wanted;
    return SUCCEEDED(frame->SetPixelFormat(&format)) && format == wanted &&
           writeRows(frame.get(), rows, keepAlpha) && SUCCEEDED(frame->Commit()) &&
           SUCCEEDED(encoder->Commit());
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
    if (!factory || !encodeInto(factory.get(), stream.get(), container, rows)) return {};
    return stream->detach();
}

bool saveImage(const char* file, REFGUID container, const PixelRows& rows) {
    ReplacedFile replaced(file);
    if (replaced.temporary().empty()) return false;
    ComScope com;
    ComPtr<IWICImagingFactory> factory = makeImagingFactory();
    {
        ComPtr<IWICStream> stream;
        if (!factory || FAILED(factory->CreateStream(stream.out())) ||
            FAILED(stream->InitializeFromFilename(replaced.temporary().c_str(), GENERIC_WRITE)) ||
            !encodeInto(factory.get(), stream.get(), container, rows)) {
            return false;
        }
    }
    return replaced.commit();
}

} // namespace vorn::detail
