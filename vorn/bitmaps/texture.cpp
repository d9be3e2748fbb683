// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/texture.h"

#include "vorn/bitmaps/detail/texture_bits.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace {

using namespace vorn::detail;

/// Pixel rows without gaps for the length of a scope, whatever the application has set: the buffers here are
/// as large as that.
class PlainRows {
public:
    PlainRows() {
        for (size_t i = 0; i < names.size(); ++i) {
            ::glGetIntegerv(names[i], &m_old[i]);
            ::glPixelStorei(names[i], 0);
        }
    }
    ~PlainRows() {
        for (size_t i = 0; i < names.size(); ++i)
            ::glPixelStorei(names[i], m_old[i]);
    }
    PlainRows(const PlainRows&) = delete;
    PlainRows& operator=(const PlainRows&) = delete;

private:
    static constexpr std::array<GLenum, 6> names = {GL_UNPACK_ROW_LENGTH,  GL_UNPACK_SKIP_ROWS,
                                                    GL_UNPACK_SKIP_PIXELS, GL_PACK_ROW_LENGTH,
                                                    GL_PACK_SKIP_ROWS,     GL_PACK_SKIP_PIXELS};
    std::array<GLint, names.size()> m_old = {};
};

/// The next power of two. The limit of 1028 is meant: a side that it cuts becomes 2048, not 1024.
int scaledSide(int side, int largest) {
    constexpr int limit = 1028;
    return static_cast<int>(std::bit_ceil(static_cast<unsigned>(std::min({side, largest, limit}))));
}

} // namespace

CvornDIBTexture::CvornDIBTexture() = default;

CvornDIBTexture::CvornDIBTexture(const CvornDIBTexture& other) {
    *this = other;
}

CvornDIBTexture& CvornDIBTexture::operator=(const CvornDIBTexture& other) {
    m_nID = other.m_nID;
    m_nTexture = other.m_nTexture;
    m_nHeight = other.m_nHeight;
    m_nWidth = other.m_nWidth;
    m_pBits = other.m_pBits;
    m_nFormat = other.m_nFormat;
    m_nMethod = other.m_nMethod;
    // The bitmap serves only while an image is drawn.
    m_image = other.m_image;
    m_clrBack = other.m_clrBack;
    m_rect = other.m_rect;
    m_bScaled = other.m_bScaled;
    return *this;
}

CvornDIBTexture::~CvornDIBTexture() = default;

void CvornDIBTexture::CleanUp() {
    m_pBits.reset();
    m_nHeight = 0;
    m_bScaled = 0;
}

void CvornDIBTexture::Close() {
    if (m_image.IsOpen()) m_image.Close();
    CleanUp();
}

int CvornDIBTexture::SpecialCreate(int w, int h, void* src) {
    std::shared_ptr<unsigned char> bits = src != nullptr ? newTextureBits(w, h) : nullptr;
    if (!bits) return 0;
    std::memcpy(bits.get(), src, textureBytes(w, h));
    m_pBits = std::move(bits);
    m_nWidth = w;
    m_nHeight = h;
    m_nFormat = GL_RGB;
    return 1;
}

int CvornDIBTexture::TexMapScalePow2() {
    GLint largest = 0;
    ::glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    if (!m_pBits || m_nWidth <= 0 || m_nHeight <= 0 || largest <= 0) return 0;
    int width = scaledSide(m_nWidth, largest), height = scaledSide(m_nHeight, largest);
    // Scaling to the same size would give the same bytes, slowly.
    if (width != m_nWidth || height != m_nHeight) {
        std::shared_ptr<unsigned char> bits = newTextureBits(width, height);
        if (!bits) return 0;
        PlainRows plain;
        ::gluScaleImage(GL_RGBA, m_nWidth, m_nHeight, GL_UNSIGNED_BYTE, m_pBits.get(), width, height,
                        GL_UNSIGNED_BYTE, bits.get());
        m_pBits = std::move(bits);
        m_nWidth = width;
        m_nHeight = height;
    }
    m_bScaled = 1;
    return 1;
}

void CvornDIBTexture::TexImage2D() {
    ::glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    ::glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    ::glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    ::glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    ::glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    PlainRows plain;
    ::glTexImage2D(GL_TEXTURE_2D, 0, 3, m_nWidth, m_nHeight, 0, static_cast<GLenum>(m_nFormat),
                   GL_UNSIGNED_BYTE, m_pBits.get());
}

void CvornDIBTexture::Bind() {
    if (m_bScaled) {
        ::glBindTexture(GL_TEXTURE_2D, m_nTexture);
    } else {
        ScaleAndBind();
    }
}

void CvornDIBTexture::ScaleAndBind() {
    TexMapScalePow2();
    ::glBindTexture(GL_TEXTURE_2D, m_nTexture);
    TexImage2D();
}

void CvornDIBTexture::Unbind() {
    ::glBindTexture(GL_TEXTURE_2D, 0);
}

void CvornDIBTexture::DrawPixels() {
    if (!m_pBits) return;
    PlainRows plain;
    GLint alignment = 4;
    ::glGetIntegerv(GL_UNPACK_ALIGNMENT, &alignment);
    ::glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    ::glDrawPixels(m_nWidth, m_nHeight, static_cast<GLenum>(m_nFormat), GL_UNSIGNED_BYTE, m_pBits.get());
    ::glPixelStorei(GL_UNPACK_ALIGNMENT, alignment);
}

void CvornDIBTexture::Serialize(CArchive& ar) {
    if (ar.IsStoring()) {
        ar << DWORD{0};
        return;
    }
    Close();
    constexpr DWORD hasPath = 0x2;
    DWORD flags = 0;
    ar >> flags;
    if (flags == 0) return;
    if ((flags & hasPath) != 0) {
        CString path;
        ar >> path;
        m_image.Load(path);
    } else {
        ar >> m_nID;
    }
}
