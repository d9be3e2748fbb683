// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/image_codec.h"

#include "vorn/bitmaps/detail/image_encoder.h"
#include "vorn/bitmaps/detail/picture_check.h"
#include "vorn/bitmaps/detail/resample.h"
#include "vorn/bitmaps/detail/whole_file.h"

#include <algorithm>
#include <new>
#include <optional>

namespace {

using namespace vorn::detail;

using Pixels = std::vector<uint32_t>;

struct Picture {
    int width = 0;
    int height = 0;
    Pixels pixels;
};

BITMAPINFO topDownHeader(int width, int height) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    return info;
}

uint64_t pixelCount(IWICBitmapSource* source, UINT& width, UINT& height) {
    return SUCCEEDED(source->GetSize(&width, &height)) ? uint64_t{width} * height : 0;
}

/// The first frame, or the largest of an icon, whose frames are one picture in several sizes.
ComPtr<IWICBitmapFrameDecode> chooseFrame(IWICBitmapDecoder* decoder) {
    GUID container = {};
    UINT count = 0;
    decoder->GetContainerFormat(&container);
    if (FAILED(decoder->GetFrameCount(&count))) return {};
    if (container != GUID_ContainerFormatIco) count = std::min(count, 1u);
    ComPtr<IWICBitmapFrameDecode> chosen;
    uint64_t most = 0;
    for (UINT i = 0; i < count; ++i) {
        ComPtr<IWICBitmapFrameDecode> frame;
        UINT width = 0, height = 0;
        if (FAILED(decoder->GetFrame(i, frame.out()))) continue;
        uint64_t pixels = pixelCount(frame.get(), width, height);
        if (pixels > most && width <= maxPicturePixels && pixels <= maxPicturePixels) {
            most = pixels;
            chosen = std::move(frame);
        }
    }
    return chosen;
}

std::optional<Picture> decode(std::span<const BYTE> bytes) {
    if (bytes.empty() || checkPicture(bytes) == PictureState::broken) return {};
    ComScope com;
    ComPtr<IWICImagingFactory> factory = makeImagingFactory();
    ComPtr<IWICStream> stream;
    ComPtr<IWICBitmapDecoder> decoder;
    if (!factory || FAILED(factory->CreateStream(stream.out())) ||
        FAILED(stream->InitializeFromMemory(const_cast<BYTE*>(bytes.data()),
                                            static_cast<DWORD>(bytes.size()))) ||
        FAILED(factory->CreateDecoderFromStream(stream.get(), nullptr, WICDecodeMetadataCacheOnDemand,
                                                decoder.out()))) {
        return {};
    }
    ComPtr<IWICBitmapFrameDecode> frame = chooseFrame(decoder.get());
    ComPtr<IWICBitmapSource> source;
    UINT width = 0, height = 0;
    if (!frame || FAILED(::WICConvertBitmapSource(GUID_WICPixelFormat32bppBGRA, frame.get(), source.out())) ||
        pixelCount(source.get(), width, height) == 0) {
        return {};
    }
    Picture picture{static_cast<int>(width), static_cast<int>(height), Pixels(size_t{width} * height)};
    if (FAILED(source->CopyPixels(nullptr, width * 4, width * height * 4,
                                  reinterpret_cast<BYTE*>(picture.pixels.data())))) {
        return {};
    }
    return picture;
}

void premultiply(Pixels& pixels) {
    for (uint32_t& pixel : pixels) {
        uint32_t alpha = pixel >> 24;
        uint32_t result = alpha << 24;
        for (int shift = 0; shift < 24; shift += 8)
            result |= ((pixel >> shift & 0xFF) * alpha + 127) / 255 << shift;
        pixel = result;
    }
}

/// Whether scaling here pays: on printers and in metafiles the device does better with the picture as it is,
/// and a huge enlargement shows only in part.
bool shouldScale(HDC hdc, const SIZE& device, int width, int height) {
    if (device.cx == width && device.cy == height) return false;
    DWORD type = ::GetObjectType(hdc);
    if ((type != OBJ_DC && type != OBJ_MEMDC) || ::GetDeviceCaps(hdc, TECHNOLOGY) != DT_RASDISPLAY)
        return false;
    constexpr int64_t most = int64_t{1} << 25;
    return int64_t{device.cx} * device.cy <= most && int64_t{device.cx} * height <= most;
}

SIZE deviceSize(HDC hdc, int x, int y, int cx, int cy) {
    POINT corners[] = {{x, y}, {x + cx, y + cy}};
    ::LPtoDP(hdc, corners, 2);
    return {std::max(std::abs(corners[1].x - corners[0].x), 1L),
            std::max(std::abs(corners[1].y - corners[0].y), 1L)};
}

bool drawOpaque(HDC hdc, const RECT& to, int width, int height, const uint32_t* pixels) {
    BITMAPINFO info = topDownHeader(width, height);
    int oldMode = ::SetStretchBltMode(hdc, HALFTONE);
    POINT oldOrigin;
    ::SetBrushOrgEx(hdc, 0, 0, &oldOrigin);
    int rows = ::StretchDIBits(hdc, to.left, to.top, to.right - to.left, to.bottom - to.top, 0, 0, width,
                               height, pixels, &info, DIB_RGB_COLORS, SRCCOPY);
    ::SetStretchBltMode(hdc, oldMode);
    ::SetBrushOrgEx(hdc, oldOrigin.x, oldOrigin.y, nullptr);
    return rows > 0;
}

bool drawBlended(HDC hdc, const RECT& to, int width, int height, std::span<const uint32_t> pixels) {
    BITMAPINFO info = topDownHeader(width, height);
    void* bits = nullptr;
    UniqueMemoryDC memory(::CreateCompatibleDC(hdc));
    UniqueBitmap section(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!memory || !section) return false;
    std::ranges::copy(pixels, static_cast<uint32_t*>(bits));
    SelectedObject selected(memory.get(), section.get());
    BLENDFUNCTION blend = {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    return ::GdiAlphaBlend(hdc, to.left, to.top, to.right - to.left, to.bottom - to.top, memory.get(), 0, 0,
                           width, height, blend);
}

const GUID* containerOf(int format) {
    switch (format) {
    case CvornImageCodec::FORMAT_BMP:
        return &GUID_ContainerFormatBmp;
    case CvornImageCodec::FORMAT_JPEG:
        return &GUID_ContainerFormatJpeg;
    case CvornImageCodec::FORMAT_PNG:
        return &GUID_ContainerFormatPng;
    default:
        return nullptr;
    }
}

bool canEncode(const PixelRows& rows) {
    return (rows.top != nullptr || rows.bitmap != nullptr) && rows.width > 0 && rows.height > 0;
}

BOOL save(const char* file, int format, const PixelRows& rows) {
    const GUID* container = containerOf(format);
    if (file == nullptr || container == nullptr || !canEncode(rows)) return FALSE;
    try {
        return saveImage(file, *container, rows);
    } catch (const std::bad_alloc&) {
        return FALSE;
    }
}

BYTE* encode(int format, const PixelRows& rows, DWORD& size) {
    size = 0;
    const GUID* container = containerOf(format);
    if (container == nullptr || !canEncode(rows)) return nullptr;
    try {
        HeapBytes bytes = encodeImage(*container, rows);
        if (!bytes.data) return nullptr;
        size = static_cast<DWORD>(bytes.size);
        BYTE* block = bytes.data.release();
        void* trimmed = std::realloc(block, bytes.size);
        return trimmed != nullptr ? static_cast<BYTE*>(trimmed) : block;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

PixelRows rowsOf(const Pixels* pixels, int width, int height, bool hasAlpha) {
    const BYTE* top = pixels != nullptr ? reinterpret_cast<const BYTE*>(pixels->data()) : nullptr;
    return {top, ptrdiff_t{4} * width, width, height, 32, hasAlpha};
}

PixelRows rowsOfDib(const void* bits, int cx, int cy, int bitCount) {
    if (bits == nullptr || cx <= 0 || cy == 0 || cy == INT_MIN || (bitCount != 24 && bitCount != 32))
        return {};
    int height = std::abs(cy);
    if (int64_t{cx} * height > static_cast<int64_t>(maxPicturePixels)) return {};
    ptrdiff_t stride = (ptrdiff_t{cx} * bitCount + 31) / 32 * 4;
    auto first = static_cast<const BYTE*>(bits);
    bool bottomUp = cy > 0;
    return {bottomUp ? first + stride * (height - 1) : first,
            bottomUp ? -stride : stride,
            cx,
            height,
            bitCount,
            false};
}

} // namespace

BOOL CvornImageCodec::Load(const char* pszFile) {
    HeapBytes file;
    return pszFile != nullptr && readWholeFile(pszFile, file) && Load(file.data.get(), file.size);
}

BOOL CvornImageCodec::Load(const BYTE* pBytes, size_t nSize) {
    try {
        std::optional<Picture> picture = decode({pBytes, nSize});
        if (!picture) return FALSE;
        bool alpha = std::ranges::any_of(picture->pixels, [](uint32_t pixel) { return pixel >> 24 != 255; });
        m_pixels = std::make_shared<const Pixels>(std::move(picture->pixels));
        m_cx = picture->width;
        m_cy = picture->height;
        m_bAlpha = alpha;
        return TRUE;
    } catch (const std::bad_alloc&) {
        return FALSE;
    }
}

BOOL CvornImageCodec::CreateFromHBITMAP(HBITMAP hBitmap) {
    BITMAP bitmap = {};
    if (hBitmap == nullptr || ::GetObject(hBitmap, sizeof bitmap, &bitmap) == 0) return FALSE;
    if (uint64_t(bitmap.bmWidth) * uint64_t(bitmap.bmHeight) > maxPicturePixels) return FALSE;
    try {
        Pixels pixels(static_cast<size_t>(bitmap.bmWidth) * static_cast<size_t>(bitmap.bmHeight));
        BITMAPINFO info = topDownHeader(bitmap.bmWidth, bitmap.bmHeight);
        WindowDC screen;
        if (::GetDIBits(screen.get(), hBitmap, 0, static_cast<UINT>(bitmap.bmHeight), pixels.data(), &info,
                        DIB_RGB_COLORS) == 0) {
            return FALSE;
        }
        m_pixels = std::make_shared<const Pixels>(std::move(pixels));
        m_cx = bitmap.bmWidth;
        m_cy = bitmap.bmHeight;
        m_bAlpha = false;
        return TRUE;
    } catch (const std::bad_alloc&) {
        return FALSE;
    }
}

BOOL CvornImageCodec::Draw(HDC hdc, int x, int y, int cx, int cy) const {
    if (!m_pixels || hdc == nullptr || cx <= 0 || cy <= 0) return FALSE;
    RECT to = {x, y, x + cx, y + cy};
    SIZE device = deviceSize(hdc, x, y, cx, cy);
    bool scale = shouldScale(hdc, device, m_cx, m_cy);
    try {
        Pixels changed;
        if (m_bAlpha) premultiply(changed = *m_pixels);
        if (scale) changed = resampled(m_bAlpha ? changed : *m_pixels, m_cx, m_cy, device.cx, device.cy);
        const Pixels& pixels = changed.empty() ? *m_pixels : changed;
        int width = scale ? device.cx : m_cx;
        int height = scale ? device.cy : m_cy;
        return m_bAlpha ? drawBlended(hdc, to, width, height, pixels)
                        : drawOpaque(hdc, to, width, height, pixels.data());
    } catch (const std::bad_alloc&) {
        return FALSE;
    }
}

BOOL CvornImageCodec::Save(const char* pszFile, int nFormat) const {
    return save(pszFile, nFormat, rowsOf(m_pixels.get(), m_cx, m_cy, m_bAlpha));
}

BYTE* CvornImageCodec::Encode(int nFormat, DWORD& nSize) const {
    return encode(nFormat, rowsOf(m_pixels.get(), m_cx, m_cy, m_bAlpha), nSize);
}

BOOL CvornImageCodec::SaveBits(const char* pszFile, int nFormat, const void* pBits, int cx, int cy,
                               int nBitCount) {
    return save(pszFile, nFormat, rowsOfDib(pBits, cx, cy, nBitCount));
}

BOOL CvornImageCodec::SaveBitmap(const char* pszFile, int nFormat, HBITMAP hBitmap) {
    BITMAP bitmap = {};
    if (hBitmap == nullptr || ::GetObject(hBitmap, sizeof bitmap, &bitmap) == 0) return FALSE;
    if (uint64_t(bitmap.bmWidth) * uint64_t(bitmap.bmHeight) > maxPicturePixels) return FALSE;
    return save(pszFile, nFormat, {nullptr, 0, bitmap.bmWidth, bitmap.bmHeight, 32, false, hBitmap});
}

BYTE* CvornImageCodec::EncodeBits(int nFormat, DWORD& nSize, const void* pBits, int cx, int cy,
                                  int nBitCount) {
    return encode(nFormat, rowsOfDib(pBits, cx, cy, nBitCount), nSize);
}
