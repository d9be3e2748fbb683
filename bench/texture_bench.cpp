// SPDX-License-Identifier: MIT
#include "bench/harness.h"
#include "tests/support/gl_window.h"
#include "vorn/bitmaps/texture.h"

#include <cstdlib>
#include <memory>
#include <vector>

namespace {

/// A context with a texture of noise, and the same done by GLU and GL alone.
class Uploads {
public:
    Uploads(int width, int height, int scaledWidth, int scaledHeight)
        : m_width(width), m_height(height), m_scaledWidth(scaledWidth), m_scaledHeight(scaledHeight),
          m_pixels(static_cast<size_t>(width) * height * 4) {
        for (unsigned char& byte : m_pixels)
            byte = static_cast<unsigned char>(std::rand());
        glGenTextures(2, m_names);
        m_texture.SetTextureName(m_names[0]);
        m_texture.SpecialCreate(width, height, m_pixels.data());
    }

    /// A copy shares the pixels and has not been bound yet.
    void bindFirst() const {
        CvornDIBTexture texture(m_texture);
        texture.Bind();
        glFinish();
    }

    void bindPlain() const {
        std::unique_ptr<unsigned char, decltype(&std::free)> scaled(
            static_cast<unsigned char*>(std::malloc(static_cast<size_t>(m_scaledWidth) * m_scaledHeight * 4)),
            std::free);
        gluScaleImage(GL_RGBA, m_width, m_height, GL_UNSIGNED_BYTE, m_pixels.data(), m_scaledWidth,
                      m_scaledHeight, GL_UNSIGNED_BYTE, scaled.get());
        glBindTexture(GL_TEXTURE_2D, m_names[1]);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        for (GLenum wrap : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T})
            glTexParameteri(GL_TEXTURE_2D, wrap, GL_REPEAT);
        for (GLenum filter : {GL_TEXTURE_MAG_FILTER, GL_TEXTURE_MIN_FILTER})
            glTexParameteri(GL_TEXTURE_2D, filter, GL_NEAREST);
        glTexImage2D(GL_TEXTURE_2D, 0, 3, m_scaledWidth, m_scaledHeight, 0, GL_RGB, GL_UNSIGNED_BYTE,
                     scaled.get());
        glFinish();
    }

private:
    support::GlWindow m_window;
    int m_width, m_height, m_scaledWidth, m_scaledHeight;
    std::vector<unsigned char> m_pixels;
    GLuint m_names[2] = {};
    CvornDIBTexture m_texture;
};

bench::Sides uploads(int width, int height, int scaledWidth, int scaledHeight) {
    auto shared = std::make_shared<Uploads>(width, height, scaledWidth, scaledHeight);
    return {[=] { shared->bindFirst(); }, [=] { shared->bindPlain(); }};
}

const bench::Registration scaled{{"texture: first Bind, 300 x 200", "gluScaleImage and glTexImage2D", 1.05,
                                  [] { return uploads(300, 200, 512, 256); }}};
const bench::Registration unscaled{{"texture: first Bind, 1024 x 1024", "gluScaleImage and glTexImage2D", 0.2,
                                    [] { return uploads(1024, 1024, 1024, 1024); }}};

} // namespace
