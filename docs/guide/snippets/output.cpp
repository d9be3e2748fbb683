// SPDX-License-Identifier: MIT
#include <vorn/vorn.h>

class COutputView : public CvornOGLWnd {
public:
    int SavePicture(const char* file, int width, int height);
    void CopyAsUserWants();
};

//! [file]
int COutputView::SavePicture(const char* file, int width, int height) {
    CvornDIBSurface picture;
    if (!picture.Create(width, height, static_cast<HPALETTE>(nullptr))) return 0;
    PrintScene(picture.GetDC(), CRect(0, 0, width, height), 0);
    ::GdiFlush();
    return CvornImageCodec::SaveBits(file, CvornImageCodec::FORMAT_PNG, picture.GetBitsAddress(), width,
                                     height, 24);
}
//! [file]

//! [copy]
void COutputView::CopyAsUserWants() {
    CvornCopyInfo info;
    info.Load(::AfxGetApp(), "Chart");
    if (!info.Setup(TRUE, "Chart")) return; // the dialog; 0 for Cancel
    info.Save(::AfxGetApp(), "Chart");
    CvornCopyRender render;
    if (render.Setup(&info, this)) {
        const CRect rc(CPoint(0, 0), render.GetDPSize());
        if (info.nFormat == CF_METAFILEPICT) {
            OutputToMetafile(nullptr, rc, 0); // goes to the clipboard by itself
        } else {
            PrintScene(render.GetDC(), rc, 0);
            render.Copy();
        }
    }
    render.Destroy(TRUE);
}
//! [copy]
