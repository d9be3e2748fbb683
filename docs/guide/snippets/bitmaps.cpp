// SPDX-License-Identifier: MIT
#include <vorn/vorn.h>

class CTexturedView : public CvornOGLWnd {
public:
    CTexturedView();

protected:
    void OnUpdateTextureInfo() override;

private:
    CvornAxisSet m_axes;
};

//! [plane]
CTexturedView::CTexturedView() {
    m_bTextures = 1;       // the view sets up the texture environment
    m_nTexturesWanted = 1; // and generates so many names
    CClientDC screen(nullptr);
    CRect size;
    m_axes.GetGridImageRect(size, PLANE_XY, 512);
    m_axes.m_imageXY.LoadX(&screen, "map.jpg", size, CvornColour(RGB(255, 255, 255), 1),
                           CvornDIBTexture::TRANSLATE_BY_BOTH);
}

void CTexturedView::OnUpdateTextureInfo() {
    m_axes.m_imageXY.SetTextureName(m_auTextures[0]);
    m_axes.m_imageXY.ScaleAndBind();
}
//! [plane]

//! [image]
int SaveSmaller(const char* source, const char* target) {
    CvornImageCodec image;
    if (!image.Load(source)) return 0;
    const int width = image.GetWidth() / 2, height = image.GetHeight() / 2;
    CvornDIBSurface surface;
    if (!surface.Create(width, height, static_cast<HPALETTE>(nullptr))) return 0;
    image.Draw(surface.GetHDC(), 0, 0, width, height);
    ::GdiFlush(); // GDI may still be drawing
    return CvornImageCodec::SaveBits(target, CvornImageCodec::FORMAT_PNG, surface.GetBitsAddress(), width,
                                     height, 24);
}
//! [image]
