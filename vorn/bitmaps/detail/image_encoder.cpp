// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/detail/image_encoder.h"

#include "vorn/bitmaps/detail/whole_file.h"
#include "vorn/detail/handles.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace vorn::detail {

namespace {

constexpr size_t bandBytes = 1 << 18;

int bandRowsOf(size_t stride) {
    return static_cast<int>(std::max<size_t>(bandBytes / stride, 1));
}

/// Gives the rows one by one, those of a bitmap from a band that fits the processor's cache.
class RowReader {
public:
    explicit RowReader(const PixelRows& rows) : m_rows(rows), m_stride(static_cast<size_t>(rows.width) * 4) {
        if (rows.bitmap == nullptr) return;
        m_info.bmiHeader = {sizeof m_info.bmiHeader, rows.width, rows.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        m_bandRows = std::min(bandRowsOf(m_stride), rows.height);
        m_band.resize(m_stride * static_cast<size_t>(m_bandRows));
    }

    /// A row counted from the top, valid until the next call; null when GDI does not give it.
    const BYTE* row(int y) {
        if (m_rows.bitmap == nullptr) return m_rows.top + y * m_rows.step;
        if (y < m_first || y >= m_first + m_count) read(y / m_bandRows * m_bandRows);
        return m_count > 0 ? &m_band[m_stride * static_cast<size_t>(m_first + m_count - 1 - y)] : nullptr;
    }

private:
    void read(int first) {
        const int count = std::min(m_bandRows, m_rows.height - first);
        // Scan lines are counted from the bottom, and come from there.
        const int got =
            ::GetDIBits(m_screen.get(), m_rows.bitmap, static_cast<UINT>(m_rows.height - first - count),
                        static_cast<UINT>(count), m_band.data(), &m_info, DIB_RGB_COLORS);
        m_first = first;
        m_count = got == count ? count : 0;
    }

    const PixelRows& m_rows;
    size_t m_stride;
    WindowDC m_screen;
    BITMAPINFO m_info = {};
    std::vector<BYTE> m_band;
    int m_bandRows = 0;
    int m_first = 0;
    int m_count = 0;
};

/// Blue, green, red of a row of 32-bit pixels: four bytes at once, the last of which the next pixel replaces.
void packRow(const BYTE* source, BYTE* target, int width) {
    for (int x = 0; x + 1 < width; ++x, source += 4, target += 3)
        std::memcpy(target, source, 4);
    std::memcpy(target, source, 3);
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
bool putRow(const PixelRows& rows, const BYTE* row, BYTE* target) {
    if (row == nullptr) return false;
    if (rows.bits == 24) {
        std::memcpy(target, row, static_cast<size_t>(rows.width) * 3);
    } else {
        (rows.hasAlpha ? flattenRow : packRow)(row, target, rows.width);
    }
    return true;
}

bool writeRows(IWICBitmapFrameEncode* frame, const PixelRows& rows, bool keepAlpha) {
    auto rowBytes = static_cast<UINT>(rows.width * (keepAlpha ? 4 : 3));
    bool asTheyAre = rows.bits == 24 || keepAlpha;
    std::vector<BYTE> packed(asTheyAre ? 0 : rowBytes);
    RowReader reader(rows);
    for (int y = 0; y < rows.height; ++y) {
        const BYTE* row = reader.row(y);
        if (!asTheyAre && !putRow(rows, row, packed.data())) return false;
        BYTE* written = asTheyAre ? const_cast<BYTE*>(row) : packed.data();
        if (FAILED(frame->WritePixels(1, rowBytes, rowBytes, written))) return false;
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
    int bandRows = bandRowsOf(stride);
    RowReader reader(rows);
    std::vector<BYTE> band(stride * static_cast<size_t>(std::min(bandRows, rows.height)));
    for (int bottom = rows.height; bottom > 0;) {
        int count = std::min(bandRows, bottom);
        for (int i = 0; i < count; ++i) {
            if (!putRow(rows, reader.row(--bottom), &band[static_cast<size_t>(i) * stride])) return false;
        }
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
