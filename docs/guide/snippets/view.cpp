// SPDX-License-Identifier: MIT
#include <vorn/vorn.h>

#include <utility>
#include <vector>

class CDataView : public CvornOGLWnd {
public:
    void SetData(std::vector<float> data);
    void DeleteLists();

protected:
    void OnSetEffects() override;
    void OnOutputUpdateView(int nUnused) override;
    void OnLButtonDown(UINT nFlags, CPoint pt);
    int OnCreate(LPCREATESTRUCT lpCreateStruct);
    DECLARE_MESSAGE_MAP()

private:
    std::vector<float> m_data;
    GLuint m_nList = 1;
};

BEGIN_MESSAGE_MAP(CDataView, CvornOGLWnd)
    ON_WM_CREATE()
    ON_WM_LBUTTONDOWN()
END_MESSAGE_MAP()

//! [update]
void CDataView::SetData(std::vector<float> data) {
    m_data = std::move(data);
    SetUpdate(UPD_BUILD, TRUE, FALSE); // OnBuild in the next paint, which is asked for
}
//! [update]

//! [current]
void CDataView::DeleteLists() {
    CClientDC client(this);
    if (!m_oglDC.MakeCurrentContext(&client)) return;
    ::glDeleteLists(m_nList, 1);
    ::wglMakeCurrent(nullptr, nullptr);
}
//! [current]

//! [effects]
void CDataView::OnSetEffects() {
    CvornOGLWnd::OnSetEffects(); // first the base's state, then what is different here
    ::glDisable(GL_POINT_SMOOTH);
}
//! [effects]

//! [camera]
void CDataView::OnOutputUpdateView(int nUnused) {
    CvornOGLWnd::OnOutputUpdateView(nUnused);
    ::glScalef(1, 1, 0.5F); // flatter
    m_mapping.Update(TRUE); // the mapping shall know
}
//! [camera]

//! [pick]
void CDataView::OnLButtonDown(UINT nFlags, CPoint pt) {
    m_mapping.gluProject(0.0, 0.0, 0.0); // where is the model's origin?
    const CPoint origin = m_mapping.GetPosPt();
    const CPoint mouse(pt.x, m_rcView.Height() - pt.y); // window points count upwards
    if (CRect(origin, CSize(0, 0)).PtInRect(mouse)) ::MessageBeep(0);
    CvornOGLWnd::OnLButtonDown(nFlags, pt);
}
//! [pick]

//! [surface]
int CDataView::OnCreate(LPCREATESTRUCT lpCreateStruct) {
    m_oglDC.SetRenderToDIB(1);
    return CWnd::OnCreate(lpCreateStruct); // in place of the base's
}
//! [surface]
