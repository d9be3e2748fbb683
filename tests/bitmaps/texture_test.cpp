// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/texture.h"

#include "tests/bitmaps/sample_pictures.h"
#include "tests/support/canvas.h"
#include "tests/support/gl_test.h"
#include "tests/support/handle_counts.h"
#include "tests/support/temp_folder.h"
#include "vorn/bitmaps/dib.h"

#include <cmath>
#include <random>

namespace {

using Bytes = std::vector<BYTE>;
using support::Canvas;
using Method = CvornDIBTexture::TRANSLATEMETHOD;

class Texture : public CvornDIBTexture {
public:
    using CvornDIBTexture::CleanUp;
    using CvornDIBTexture::m_bitmap;
    using CvornDIBTexture::m_clrBack;
    using CvornDIBTexture::m_nFormat;
    using CvornDIBTexture::m_nMethod;
    using CvornDIBTexture::m_rect;
    using CvornDIBTexture::PrepareBitmapInfo32;
    using CvornDIBTexture::Translate;

    COLORREF at(int x, int y) const {
        const BYTE* pixel = GetBitsPtr() + (y * GetWidth() + x) * 4;
        return RGB(pixel[0], pixel[1], pixel[2]);
    }
    Bytes pixels() const { return Bytes(GetBitsPtr(), GetBitsPtr() + GetWidth() * GetHeight() * 4); }
};

Bytes noise(int width, int height) {
    std::mt19937 random(width + height);
    Bytes bytes(width * height * 4);
    for (BYTE& byte : bytes)
        byte = static_cast<BYTE>(random());
    return bytes;
}

/// A DIB of the sample picture: its quarters as indices 1 to 4 of the colour table, or as true colours.
void makeSample(CvornDIB& dib, int bits) {
    struct {
        BITMAPINFOHEADER header;
        RGBQUAD colours[256];
    } block = {{sizeof(BITMAPINFOHEADER), 7, 4, 1, static_cast<WORD>(bits), BI_RGB, 0, 0, 0, 0, 0}, {}};
    for (int i = 0; i < 4; i++) {
        const COLORREF colour = support::quarterColours[i];
        block.colours[i + 1] = {GetBValue(colour), GetGValue(colour), GetRValue(colour), 0};
    }
    const int stride = (7 * bits + 31) / 32 * 4;
    auto* rows = static_cast<BYTE*>(calloc(4, stride));
    for (int y = 0; y < 4; y++) {
        for (int x = 0; x < 7; x++) {
            BYTE* row = rows + (3 - y) * stride;
            const int quarter = support::quarterAt(x, y, 7, 4);
            if (bits == 4) row[x / 2] |= (quarter + 1) << (x % 2 ? 0 : 4);
            if (bits == 8) row[x] = static_cast<BYTE>(quarter + 1);
            if (bits == 24) memcpy(row + 3 * x, &block.colours[quarter + 1], 3);
        }
    }
    ASSERT_TRUE(dib.Create(reinterpret_cast<BITMAPINFO*>(&block), rows, TRUE));
}

TEST(Texture, EveryMethodAndDepthGivesTheColours) {
    for (int bits : {4, 8, 24}) {
        for (int method = 0; method < 4; method++) {
            SCOPED_TRACE(testing::Message() << bits << " bits, method " << method);
            CvornDIB dib;
            makeSample(dib, bits);
            Texture texture;
            ASSERT_TRUE(texture.Translate(dib, static_cast<Method>(method)));
            EXPECT_EQ(texture.m_nMethod, method % 3);
            EXPECT_EQ(texture.m_nFormat, method % 3 == 0 ? GL_RGB : GL_RGBA);
            ASSERT_EQ(CSize(texture.GetWidth(), texture.GetHeight()), CSize(7, 4));
            for (int i = 0; i < 28; i++) {
                const int x = i % 7, row = i / 7;
                EXPECT_EQ(texture.at(x, row), support::quarterColours[support::quarterAt(x, 3 - row, 7, 4)])
                    << i;
                if (method != 1) {
                    EXPECT_EQ(texture.GetBitsPtr()[i * 4 + 3], 0) << i;
                }
            }
        }
    }
}

TEST(Texture, LoadsFilesAndForgetsThePixelsFirst) {
    const support::TempFolder folder;
    CvornDIB dib;
    makeSample(dib, 24);
    ASSERT_TRUE(dib.Save(folder.pathOf("a.bmp").c_str()));
    Texture texture;
    ASSERT_TRUE(texture.Load(folder.pathOf("a.bmp").c_str(), CvornDIBTexture::TRANSLATE_BY_YOURSELF));
    EXPECT_EQ(texture.at(0, 3), support::quarterColours[0]);
    EXPECT_FALSE(texture.Load(folder.pathOf("none.bmp").c_str(), CvornDIBTexture::TRANSLATE_BY_YOURSELF));
    EXPECT_FALSE(texture.IsValid());
    EXPECT_EQ(texture.GetHeight(), 0);
    EXPECT_EQ(texture.GetWidth(), 7) << "the width stays";
    EXPECT_FALSE(texture.Load(static_cast<unsigned short>(54321), CvornDIBTexture::TRANSLATE_BY_GDI));
}

TEST(Texture, ImagesAreDrawnAtASizeOverTheBackground) {
    const support::TempFolder folder;
    Canvas screen(4, 4);
    CDC& dc = *CDC::FromHandle(screen.dc());
    const std::string path = folder.write("a.png", support::samplePicture("png"));
    const CvornColour violet(0.6F, 0.2F, 0.8F, 1);
    Texture texture;
    ASSERT_TRUE(
        texture.LoadX(&dc, path.c_str(), CRect(0, 0, 80, 60), violet, CvornDIBTexture::TRANSLATE_BY_GDI));
    EXPECT_EQ(texture.m_nMethod, CvornDIBTexture::TRANSLATE_BY_BOTH);
    EXPECT_STREQ(texture.GetSourceName(), "a.png");
    EXPECT_STREQ(texture.GetSourcePathName(), path.c_str());
    ASSERT_EQ(CSize(texture.GetWidth(), texture.GetHeight()), CSize(80, 60));
    EXPECT_EQ(texture.at(40, 2), static_cast<unsigned long>(violet));
    EXPECT_EQ(texture.at(40, 57), static_cast<unsigned long>(violet));
    EXPECT_EQ(texture.at(20, 40), support::quarterColours[0]) << "the lowest row comes first";
    EXPECT_EQ(texture.at(60, 20), support::quarterColours[3]);
    EXPECT_EQ(texture.m_bitmap.m_hObject, nullptr);

    const struct {
        CRect rect;
        int keepAspect, drawn;
    } sizes[] = {{{0, 0, 80, 60}, 0, 0},          {{0, 0, 40, 30}, 1, 0}, {{0, 0, 40, 30}, 0, 1},
                 {{0, 0, 40, 20}, 1, 1},          {{0, 0, 40, 0}, 0, 0},  {{0, 0, -5, 40}, 0, 0},
                 {{0, 0, INT_MAX, INT_MAX}, 0, 0}};
    for (const auto& [rect, keepAspect, drawn] : sizes) {
        EXPECT_EQ(texture.Resize(&dc, rect, keepAspect), drawn) << rect.right << " x " << rect.bottom;
        if (drawn) {
            EXPECT_EQ(CSize(texture.GetWidth(), texture.GetHeight()), rect.Size());
        }
    }
    EXPECT_FALSE(texture.IsValid()) << "a size that cannot be drawn leaves no pixels";
    ASSERT_TRUE(texture.Resize(&dc, CRect(0, 0, 40, 20), 0));
    EXPECT_FALSE(texture.LoadX(&dc, folder.pathOf("none.png").c_str(), CRect(0, 0, 9, 9), violet,
                               CvornDIBTexture::TRANSLATE_BY_BOTH));
    EXPECT_TRUE(texture.IsValid()) << "a file that does not load leaves the pixels";
    EXPECT_FALSE(texture.Resize(&dc, CRect(0, 0, 9, 9), 0)) << "no image is open";
    EXPECT_FALSE(texture.Load(static_cast<CDC*>(nullptr)));
}

TEST(Texture, TransparentImagesShowTheBackground) {
    const support::TempFolder folder;
    Bytes icon = support::samplePicture("ico");
    // The upper left quarter becomes transparent, in the colours and in the mask.
    for (int y = 10; y < 20; y++) {
        for (int x = 0; x < 20; x++) {
            memset(&icon[62 + (y * 40 + x) * 4], 0, 4);
            icon[62 + 40 * 20 * 4 + y * 8 + x / 8] |= 0x80 >> x % 8;
        }
    }
    Canvas screen(4, 4);
    Texture texture;
    ASSERT_TRUE(texture.LoadX(CDC::FromHandle(screen.dc()), folder.write("a.ico", icon).c_str(),
                              CRect(0, 0, 40, 20), CvornColour(1, 1, 0, 1),
                              CvornDIBTexture::TRANSLATE_BY_BOTH));
    EXPECT_EQ(texture.at(5, 15), RGB(255, 255, 0));
    EXPECT_EQ(texture.at(35, 15), support::quarterColours[1]);
}

TEST(Texture, CopiesKeepThePixelsAndHandlesComeBack) {
    const support::TempFolder folder;
    const std::string path = folder.write("a.bmp", support::samplePicture("bmp"));
    Canvas screen(4, 4);
    const auto useAll = [&] {
        Texture copy;
        {
            Texture first;
            EXPECT_TRUE(first.LoadX(CDC::FromHandle(screen.dc()), path.c_str(), CRect(0, 0, 40, 20),
                                    CvornColour(), CvornDIBTexture::TRANSLATE_BY_BOTH));
            copy = Texture(first);
            first.CleanUp();
            first.Close();
        }
        EXPECT_EQ(copy.at(1, 1), support::quarterColours[2]);
        EXPECT_TRUE(copy.Resize(CDC::FromHandle(screen.dc()), CRect(0, 0, 20, 10), 0))
            << "the image is shared too";
    };
    useAll();
    const auto before = support::HandleCounts::now();
    for (int i = 0; i < 3; i++)
        useAll();
    EXPECT_EQ(support::HandleCounts::now(), before);
}

TEST(Texture, SpecialCreateRefusesWhatItCannotHold) {
    Bytes bytes = noise(3, 2);
    Texture texture;
    ASSERT_TRUE(texture.SpecialCreate(3, 2, bytes.data()));
    for (const auto& [w, h] :
         {CSize(0, 2), CSize(3, 0), CSize(-3, -2), CSize(0x10000, 0x10000), CSize(INT_MAX, 1)})
        EXPECT_FALSE(texture.SpecialCreate(w, h, bytes.data())) << w << " x " << h;
    EXPECT_FALSE(texture.SpecialCreate(3, 2, nullptr));
    EXPECT_EQ(texture.pixels(), bytes);
    EXPECT_FALSE(texture.TexMapScalePow2()) << "there is no context";
}

TEST(Texture, ArchivesHoldAMarkOnly) {
    const support::TempFolder folder;
    const std::string path = folder.write("a.bmp", support::samplePicture("bmp"));
    const auto load = [&](support::ByteWriter& from, Texture& texture) {
        CMemFile file(from.bytes.data(), static_cast<UINT>(from.bytes.size()));
        CArchive ar(&file, CArchive::load);
        texture.Serialize(ar);
    };
    Bytes pixels = noise(2, 2);
    Texture texture;
    ASSERT_TRUE(texture.SpecialCreate(2, 2, pixels.data()));
    CMemFile stored;
    CArchive store(&stored, CArchive::store);
    texture.Serialize(store);
    store.Close();
    EXPECT_EQ(stored.GetLength(), 4u);

    support::ByteWriter empty, named, numbered, cutOff, hostile;
    load(empty.put(DWORD{0}), texture);
    EXPECT_FALSE(texture.IsValid());
    named.put(DWORD{3}, static_cast<BYTE>(path.size())).append(path.data(), path.size());
    load(named, texture);
    EXPECT_STREQ(texture.GetSourceName(), "a.bmp");
    EXPECT_FALSE(texture.IsValid()) << "opened, not drawn";
    load(numbered.put(DWORD{1}, 77), texture);
    EXPECT_EQ(texture.GetID(), 77);
    EXPECT_TRUE(texture.GetSourceName().IsEmpty());
    cutOff.put(DWORD{1}, WORD{1});
    hostile.put(DWORD{2}, BYTE{0xFF}, WORD{0xFFFF}, DWORD{0x7FFFFFFF}, 'a');
    for (support::ByteWriter* broken : {&cutOff, &hostile}) {
        try {
            load(*broken, texture);
            ADD_FAILURE() << "the archive must say that it ended";
        } catch (CArchiveException* end) {
            end->Delete();
        }
        EXPECT_EQ(texture.GetID(), 77);
    }
}

TEST(Texture, PreparesAHeaderForThePixelsOfABitmap) {
    const Canvas canvas(30, 20);
    BITMAPINFO info = {};
    info.bmiHeader.biCompression = BI_BITFIELDS;
    Texture texture;
    EXPECT_EQ(texture.PrepareBitmapInfo32(info, canvas.bitmap()), 20);
    const BITMAPINFOHEADER expected = {sizeof expected, 30, -20, 1, 32, BI_BITFIELDS, 2400, 0, 0, 0, 0};
    EXPECT_EQ(memcmp(&info.bmiHeader, &expected, sizeof expected), 0);
    EXPECT_EQ(texture.PrepareBitmapInfo32(info, nullptr), 0);
}

class TextureGl : public support::GlTest {
protected:
    TextureGl() {
        glGenTextures(1, &m_name);
        m_texture.SetTextureName(m_name);
    }
    ~TextureGl() override { glDeleteTextures(1, &m_name); }

    static GLint level(GLenum what) {
        GLint value = -1;
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, what, &value);
        return value;
    }
    static GLint get(GLenum what) {
        GLint value = -1;
        glGetIntegerv(what, &value);
        return value;
    }

    GLuint m_name = 0;
    Texture m_texture;
};

TEST_F(TextureGl, SidesBecomePowersOfTwoAsGluScalesThem) {
    const int largest = get(GL_MAX_TEXTURE_SIZE);
    const auto sideOf = [&](int side) {
        const double exponent = std::log(std::min({side, largest, 1028})) / std::log(2.0);
        const int whole = static_cast<int>(exponent);
        return 1 << (whole == exponent ? whole : whole + 1);
    };
    // A row length that the application has set would send scaling out of both buffers.
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 5000);
    glPixelStorei(GL_PACK_ROW_LENGTH, 5000);
    for (const auto& [w, h] :
         {CSize(300, 200), CSize(64, 128), CSize(1, 1), CSize(3, 1024), CSize(5, 1025), CSize(1500, 2)}) {
        SCOPED_TRACE(testing::Message() << w << " x " << h);
        Bytes source = noise(w, h);
        ASSERT_TRUE(m_texture.SpecialCreate(w, h, source.data()));
        ASSERT_TRUE(m_texture.TexMapScalePow2());
        ASSERT_EQ(CSize(m_texture.GetWidth(), m_texture.GetHeight()), CSize(sideOf(w), sideOf(h)));
        Bytes expected(sideOf(w) * sideOf(h) * 4);
        glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
        glPixelStorei(GL_PACK_ROW_LENGTH, 0);
        gluScaleImage(GL_RGBA, w, h, GL_UNSIGNED_BYTE, source.data(), sideOf(w), sideOf(h), GL_UNSIGNED_BYTE,
                      expected.data());
        glPopClientAttrib();
        EXPECT_TRUE(m_texture.pixels() == expected);
    }
    EXPECT_EQ(get(GL_UNPACK_ROW_LENGTH), 5000);
    if (largest >= 2048) {
        EXPECT_EQ(m_texture.GetWidth(), 2048);
    }
}

TEST_F(TextureGl, TheFirstBindUploadsAndLaterOnesOnlyBind) {
    CvornDIB dib;
    makeSample(dib, 24);
    ASSERT_TRUE(m_texture.Translate(dib, CvornDIBTexture::TRANSLATE_BY_BOTH));
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 5000);
    m_texture.Bind();
    EXPECT_TRUE(m_texture.IsScaled());
    EXPECT_EQ(static_cast<GLuint>(get(GL_TEXTURE_BINDING_2D)), m_name);
    EXPECT_EQ(CSize(level(GL_TEXTURE_WIDTH), level(GL_TEXTURE_HEIGHT)), CSize(8, 4));
    EXPECT_EQ(level(GL_TEXTURE_ALPHA_SIZE), 0);
    EXPECT_EQ(get(GL_UNPACK_ALIGNMENT), 1);
    EXPECT_EQ(get(GL_UNPACK_ROW_LENGTH), 5000);
    for (const auto& [name, expected] :
         {std::pair(GL_TEXTURE_WRAP_S, GL_REPEAT), std::pair(GL_TEXTURE_WRAP_T, GL_REPEAT),
          std::pair(GL_TEXTURE_MAG_FILTER, GL_NEAREST), std::pair(GL_TEXTURE_MIN_FILTER, GL_NEAREST)}) {
        GLint value = 0;
        glGetTexParameteriv(GL_TEXTURE_2D, static_cast<GLenum>(name), &value);
        EXPECT_EQ(value, expected) << name;
    }
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    Bytes back(8 * 4 * 3);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, GL_UNSIGNED_BYTE, back.data());
    for (int i = 0; i < 32; i++)
        EXPECT_EQ(RGB(back[i * 3], back[i * 3 + 1], back[i * 3 + 2]), m_texture.at(i % 8, i / 8)) << i;

    // Changed pixels reach GL with the next ScaleAndBind, not with a Bind.
    const auto firstTexel = [&] {
        glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, GL_UNSIGNED_BYTE, back.data());
        return RGB(back[0], back[1], back[2]);
    };
    const COLORREF before = firstTexel();
    memset(m_texture.GetBitsPtr(), 99, 4);
    m_texture.Bind();
    EXPECT_EQ(firstTexel(), before);
    m_texture.ScaleAndBind();
    EXPECT_EQ(firstTexel(), RGB(99, 99, 99));
    m_texture.Unbind();
    EXPECT_EQ(get(GL_TEXTURE_BINDING_2D), 0);
    m_texture.CleanUp();
    EXPECT_FALSE(m_texture.IsScaled());
    m_texture.Bind();
    EXPECT_FALSE(m_texture.IsScaled()) << "there is nothing to scale";
}

TEST_F(TextureGl, DrawPixelsKeepsTheAlignment) {
    CvornDIB dib;
    makeSample(dib, 24);
    ASSERT_TRUE(m_texture.Translate(dib, CvornDIBTexture::TRANSLATE_BY_GDI));
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 5000);
    glClear(GL_COLOR_BUFFER_BIT);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, m_window.width(), 0, m_window.height(), -1, 1);
    glRasterPos2i(10, 20);
    m_texture.DrawPixels();
    EXPECT_EQ(get(GL_UNPACK_ALIGNMENT), 8);
    for (int i = 0; i < 28; i++)
        EXPECT_EQ(support::pixelAt(10 + i % 7, 20 + i / 7), m_texture.at(i % 7, i / 7)) << i;
    EXPECT_EQ(support::pixelAt(17, 20), RGB(0, 0, 0));
    m_texture.CleanUp();
    m_texture.DrawPixels();
}

} // namespace
