// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/texture.h"

#include "tests/bitmaps/bitmap_test.h"
#include "tests/bitmaps/dib_samples.h"
#include "tests/bitmaps/sample_pictures.h"

#include <cmath>
#include <functional>

namespace {

using support::Bytes, support::quarterColours;

struct TestTexture : CvornDIBTexture {
    using CvornDIBTexture::CleanUp, CvornDIBTexture::m_bitmap, CvornDIBTexture::m_nFormat,
        CvornDIBTexture::m_nMethod;
    using CvornDIBTexture::Translate;

    COLORREF at(int x, int y) const {
        const BYTE* pixel = GetBitsPtr() + (y * GetWidth() + x) * 4;
        return RGB(pixel[0], pixel[1], pixel[2]);
    }
    CSize size() const { return CSize(GetWidth(), GetHeight()); }
};

class Texture : public BitmapTest {
protected:
    int load(const std::string& path, const CRect& rect) {
        return m_texture.LoadX(&m_dc, path.c_str(), rect, m_violet, CvornDIBTexture::TRANSLATE_BY_GDI);
    }

    const CvornColour m_violet{0.6F, 0.2F, 0.8F, 1};
    const COLORREF m_background = m_violet;
    TestTexture m_texture;
};

TEST_F(Texture, EveryMethodAndDepthGivesTheColours) {
    for (const int bits : {4, 8, 24}) {
        for (int method = 0; method < 4; method++) {
            SCOPED_TRACE(testing::Message() << bits << " bits, method " << method);
            CvornDIB dib = support::noiseDib(7, 4, bits);
            ASSERT_TRUE(m_texture.Translate(dib, static_cast<CvornDIBTexture::TRANSLATEMETHOD>(method)));
            EXPECT_EQ(m_texture.m_nMethod, method % 3);
            EXPECT_EQ(m_texture.m_nFormat, method % 3 == 0 ? GL_RGB : GL_RGBA);
            ASSERT_EQ(m_texture.size(), CSize(7, 4));
            for (int i = 0; i < 28; i++) {
                EXPECT_EQ(m_texture.at(i % 7, i / 7), support::colourAt(dib, i % 7, 3 - i / 7)) << i;
                EXPECT_TRUE(method == 1 || m_texture.GetBitsPtr()[i * 4 + 3] == 0) << i;
            }
        }
    }
}

TEST_F(Texture, LoadsFilesAndForgetsThePixelsFirst) {
    const std::string file = m_folder.pathOf("a.bmp"), none = m_folder.pathOf("none.bmp");
    CvornDIB dib = support::noiseDib(7, 4, 24);
    ASSERT_TRUE(dib.Save(file.c_str()));
    ASSERT_TRUE(m_texture.Load(file.c_str(), CvornDIBTexture::TRANSLATE_BY_YOURSELF));
    EXPECT_EQ(m_texture.at(0, 3), support::colourAt(dib, 0, 0));
    EXPECT_FALSE(m_texture.Load(none.c_str(), CvornDIBTexture::TRANSLATE_BY_YOURSELF) || m_texture.IsValid());
    EXPECT_EQ(m_texture.size(), CSize(7, 0)) << "the width stays";
    EXPECT_FALSE(m_texture.Load(static_cast<unsigned short>(54321), CvornDIBTexture::TRANSLATE_BY_GDI));
}

TEST_F(Texture, ImagesAreDrawnAtASizeOverTheBackground) {
    const std::string path = m_folder.write("a.png", support::samplePicture("png"));
    ASSERT_TRUE(load(path, CRect(0, 0, 80, 60)));
    EXPECT_EQ(m_texture.m_nMethod, CvornDIBTexture::TRANSLATE_BY_BOTH);
    EXPECT_STREQ(m_texture.GetSourceName(), "a.png");
    EXPECT_STREQ(m_texture.GetSourcePathName(), path.c_str());
    ASSERT_EQ(m_texture.size(), CSize(80, 60));
    EXPECT_TRUE(m_texture.at(40, 2) == m_background && m_texture.at(40, 57) == m_background);
    EXPECT_EQ(m_texture.at(20, 40), quarterColours[0]) << "the lowest row comes first";
    EXPECT_EQ(m_texture.at(60, 20), quarterColours[3]);
    EXPECT_EQ(m_texture.m_bitmap.m_hObject, nullptr);
    const struct {
        CSize size;
        int keepAspect, drawn;
    } sizes[] = {{{80, 60}, 0, 0}, {{40, 30}, 1, 0}, {{40, 30}, 0, 1},          {{40, 20}, 1, 1},
                 {{40, 0}, 0, 0},  {{-5, 40}, 0, 0}, {{INT_MAX, INT_MAX}, 0, 0}};
    for (const auto& [size, keepAspect, drawn] : sizes) {
        EXPECT_EQ(m_texture.Resize(&m_dc, CRect(CPoint(0, 0), size), keepAspect), drawn) << size.cx;
        EXPECT_TRUE(!drawn || m_texture.size() == size) << size.cx;
    }
    EXPECT_FALSE(m_texture.IsValid()) << "a size that cannot be drawn leaves no pixels";
    ASSERT_TRUE(m_texture.Resize(&m_dc, CRect(0, 0, 40, 20), 0));
    EXPECT_FALSE(load(m_folder.pathOf("none.png"), CRect(0, 0, 9, 9)));
    EXPECT_TRUE(m_texture.IsValid()) << "a file that does not load leaves the pixels";
    EXPECT_FALSE(m_texture.Resize(&m_dc, CRect(0, 0, 9, 9), 0)) << "no image is open";
    EXPECT_FALSE(m_texture.Load(static_cast<CDC*>(nullptr)));

    // The upper left quarter becomes transparent, in the colours and in the mask.
    Bytes icon = support::sampleIcon();
    for (int i = 0; i < 200; i++) {
        const int x = i % 20, y = 10 + i / 20;
        memset(&icon[support::iconPixels + (y * 40 + x) * 4], 0, 4);
        icon[support::iconMask + y * 8 + x / 8] |= 0x80 >> x % 8;
    }
    ASSERT_TRUE(load(m_folder.write("a.ico", icon), CRect(0, 0, 40, 20)));
    EXPECT_TRUE(m_texture.at(5, 15) == m_background && m_texture.at(35, 15) == quarterColours[1]);
}

TEST_F(Texture, CopiesKeepThePixelsAndHandlesComeBack) {
    const std::string path = m_folder.write("a.bmp", support::samplePicture("bmp"));
    expectHandlesKept([&] {
        EXPECT_TRUE(load(path, CRect(0, 0, 40, 20)));
        TestTexture copy;
        copy = TestTexture(m_texture);
        m_texture.Close();
        EXPECT_EQ(copy.at(1, 1), quarterColours[2]);
        EXPECT_TRUE(copy.Resize(&m_dc, CRect(0, 0, 20, 10), 0)) << "the image is shared too";
    });
}

TEST_F(Texture, SpecialCreateRefusesWhatItCannotHold) {
    Bytes bytes = support::noise(24);
    ASSERT_TRUE(m_texture.SpecialCreate(3, 2, bytes.data()));
    for (const auto& [w, h] :
         {CSize(0, 2), CSize(3, 0), CSize(-3, -2), CSize(0x10000, 0x10000), CSize(INT_MAX, 1)})
        EXPECT_FALSE(m_texture.SpecialCreate(w, h, bytes.data())) << w << " x " << h;
    EXPECT_FALSE(m_texture.SpecialCreate(3, 2, nullptr));
    EXPECT_EQ(memcmp(m_texture.GetBitsPtr(), bytes.data(), 24), 0);
    EXPECT_FALSE(m_texture.TexMapScalePow2()) << "there is no context";
}

TEST_F(Texture, ArchivesHoldAMarkOnly) {
    const auto load = [&](support::ByteWriter from) {
        CMemFile file(from.bytes.data(), static_cast<UINT>(from.bytes.size()));
        CArchive ar(&file, CArchive::load);
        m_texture.Serialize(ar);
    };
    ASSERT_TRUE(m_texture.SpecialCreate(2, 2, support::noise(16).data()));
    CMemFile stored;
    CArchive store(&stored, CArchive::store);
    m_texture.Serialize(store);
    store.Close();
    EXPECT_EQ(stored.GetLength(), 4u);
    load(support::ByteWriter().put(DWORD{0}));
    EXPECT_FALSE(m_texture.IsValid());
    const std::string path = m_folder.write("a.bmp", support::samplePicture("bmp"));
    load(
        support::ByteWriter().put(DWORD{3}, static_cast<BYTE>(path.size())).append(path.data(), path.size()));
    EXPECT_STREQ(m_texture.GetSourceName(), "a.bmp");
    EXPECT_FALSE(m_texture.IsValid()) << "opened, not drawn";
    load(support::ByteWriter().put(DWORD{1}, 77));
    EXPECT_TRUE(m_texture.GetID() == 77 && m_texture.GetSourceName().IsEmpty());
    for (const support::ByteWriter& broken :
         {support::ByteWriter().put(DWORD{1}, WORD{1}),
          support::ByteWriter().put(DWORD{2}, BYTE{255}, WORD{0xFFFF}, DWORD{0x7FFFFFFF}, 'a')}) {
        EXPECT_THROW(load(broken), CArchiveException*);
        EXPECT_EQ(m_texture.GetID(), 77);
    }
}

class TextureGl : public support::GlTest {
protected:
    TextureGl() {
        glGenTextures(1, &m_name);
        m_texture.SetTextureName(m_name);
        // A row length of the application's would send every transfer out of the buffers.
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 5000);
        glPixelStorei(GL_PACK_ROW_LENGTH, 5000);
    }
    ~TextureGl() override { glDeleteTextures(1, &m_name); }

    static GLint get(GLenum what) {
        GLint value = -1;
        glGetIntegerv(what, &value);
        return value;
    }
    /// The bound texture's texels, read or scaled with plain rows.
    static void plainly(const std::function<void()>& transfer) {
        glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
        glPixelStorei(GL_PACK_ROW_LENGTH, 0);
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        transfer();
        glPopClientAttrib();
    }
    static Bytes texels(int count) {
        Bytes back(count * 3);
        plainly([&] { glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, GL_UNSIGNED_BYTE, back.data()); });
        return back;
    }

    GLuint m_name = 0;
    TestTexture m_texture;
};

TEST_F(TextureGl, SidesBecomePowersOfTwoAsGluScalesThem) {
    const int largest = get(GL_MAX_TEXTURE_SIZE);
    const auto sideOf = [&](int side) {
        const double p = std::log(std::min({side, largest, 1028})) / std::log(2.0);
        return 1 << (p == std::trunc(p) ? static_cast<int>(p) : static_cast<int>(p) + 1);
    };
    for (const auto& [w, h] : {CSize(300, 200), {64, 128}, {1, 1}, {3, 1024}, {5, 1025}, {1500, 2}}) {
        SCOPED_TRACE(testing::Message() << w << " x " << h);
        Bytes source = support::noise(w * h * 4), expected(sideOf(w) * sideOf(h) * 4);
        ASSERT_TRUE(m_texture.SpecialCreate(w, h, source.data()) && m_texture.TexMapScalePow2());
        ASSERT_EQ(m_texture.size(), CSize(sideOf(w), sideOf(h)));
        plainly([&, w = w, h = h] {
            gluScaleImage(GL_RGBA, w, h, GL_UNSIGNED_BYTE, source.data(), sideOf(w), sideOf(h),
                          GL_UNSIGNED_BYTE, expected.data());
        });
        EXPECT_EQ(memcmp(m_texture.GetBitsPtr(), expected.data(), expected.size()), 0);
    }
    EXPECT_EQ(get(GL_PACK_ROW_LENGTH), 5000);
    EXPECT_TRUE(largest < 2048 || m_texture.GetWidth() == 2048);
}

TEST_F(TextureGl, TheFirstBindUploadsAndLaterOnesOnlyBind) {
    CvornDIB dib = support::noiseDib(7, 4, 24);
    ASSERT_TRUE(m_texture.Translate(dib, CvornDIBTexture::TRANSLATE_BY_BOTH));
    m_texture.Bind();
    EXPECT_TRUE(m_texture.IsScaled());
    EXPECT_EQ(static_cast<GLuint>(get(GL_TEXTURE_BINDING_2D)), m_name);
    EXPECT_EQ(get(GL_UNPACK_ALIGNMENT), 1);
    EXPECT_EQ(get(GL_UNPACK_ROW_LENGTH), 5000);
    GLint minFilter = 0, alphaBits = -1;
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, &minFilter);
    EXPECT_EQ(minFilter, GL_NEAREST) << "there are no smaller levels";
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_ALPHA_SIZE, &alphaBits);
    EXPECT_EQ(alphaBits, 0) << "what the bytes beside the colours hold must not show";
    const Bytes uploaded = texels(32);
    for (int i = 0; i < 32; i++)
        EXPECT_EQ(memcmp(&uploaded[i * 3], m_texture.GetBitsPtr() + i * 4, 3), 0) << i;
    // Changed pixels reach GL with the next ScaleAndBind, not with a Bind.
    m_texture.GetBitsPtr()[0] ^= 0x55;
    m_texture.Bind();
    EXPECT_EQ(texels(32), uploaded);
    m_texture.ScaleAndBind();
    EXPECT_EQ(texels(32)[0], m_texture.GetBitsPtr()[0]);
    m_texture.Unbind();
    EXPECT_EQ(get(GL_TEXTURE_BINDING_2D), 0);
    m_texture.CleanUp();
    m_texture.Bind();
    EXPECT_FALSE(m_texture.IsScaled()) << "there is nothing to scale";
}

TEST_F(TextureGl, DrawPixelsKeepsTheAlignment) {
    CvornDIB dib = support::noiseDib(7, 4, 24);
    ASSERT_TRUE(m_texture.Translate(dib, CvornDIBTexture::TRANSLATE_BY_GDI));
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    glClear(GL_COLOR_BUFFER_BIT);
    glMatrixMode(GL_PROJECTION);
    glOrtho(0, m_window.width(), 0, m_window.height(), -1, 1);
    glRasterPos2i(10, 20);
    m_texture.DrawPixels();
    EXPECT_EQ(get(GL_UNPACK_ALIGNMENT), 8);
    plainly([&] {
        for (int i = 0; i < 28; i++)
            EXPECT_EQ(support::pixelAt(10 + i % 7, 20 + i / 7), m_texture.at(i % 7, i / 7)) << i;
    });
    m_texture.CleanUp();
    m_texture.DrawPixels();
}

} // namespace
