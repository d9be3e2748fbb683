// SPDX-License-Identifier: MIT
#include <vorn/vorn.h>

class COverlaidView : public CvornOGLWnd {
protected:
    void OnUpdateTextMetrics(CDC* pDC, int bPrint) override;
    void OnOutputToDC(CDC* pDC, int x, int y) override;
    afx_msg void OnLButtonDown(UINT nFlags, CPoint pt);
    DECLARE_MESSAGE_MAP()

private:
    enum { ListBar = 1, ListSheet, ListFont = 256, ID_PLAY = 1 };
    void SetUp();

    CvornToolBar m_bar;
    CvornToolBarButton m_play{ID_PLAY, 0, 0, 1, 1};
    CvornSpread m_sheet;
    CFont m_font;
};

BEGIN_MESSAGE_MAP(COverlaidView, CvornOGLWnd)
    ON_WM_LBUTTONDOWN()
END_MESSAGE_MAP()

//! [set up]
void COverlaidView::SetUp() { // once; from the constructor
    m_play.m_strText = "Play";
    m_bar.Init(1, 4);
    m_bar.AddButton(&m_play);
    m_sheet.SetParam(SPP_VISIBLE | SPP_ROWSEL | SPP_LEFT | SPP_TOP);
    m_sheet.SetMaxSize(1, 2);
    m_sheet.SetText(0, 0, "Sand");
    m_sheet.SetColour(0, 1, RGB(240, 200, 90));
}
//! [set up]

//! [measure]
void COverlaidView::OnUpdateTextMetrics(CDC*, int) {
    CDC* const dc = m_oglDC.GetDC();
    if (dc == nullptr) return;
    m_font.DeleteObject();
    m_font.CreatePointFont(90, "Arial", dc);
    CFont* const old = dc->SelectObject(&m_font);
    ::vornUseFontBitmaps(dc->m_hDC, ListFont);
    dc->SelectObject(old);
    m_bar.UpdateMetrics(dc, &m_font, 0);
    m_sheet.UpdateMetrics(dc, &m_font, m_fLineWidth);
}
//! [measure]

//! [draw]
void COverlaidView::OnOutputToDC(CDC*, int, int) {
    // The scene comes first.
    const CRect client(CPoint(0, 0), m_rcView.Size());
    m_bar.UpdatePosition(client);
    m_sheet.UpdatePosition(client);
    ::glDisable(GL_LIGHTING);
    m_bar.oglOutput(&m_mapping, client.Height(), 0.1F, 0.01F, m_fLineWidth, ListBar, ListFont);
    m_sheet.oglOutput(&m_mapping, client.Height(), 0.1F, 0.01F, m_fLineWidth, ListSheet, ListFont);
    if (EFFECT(EFX_LIGHTING)) ::glEnable(GL_LIGHTING);
}
//! [draw]

//! [mouse]
void COverlaidView::OnLButtonDown(UINT nFlags, CPoint pt) {
    if (m_bar.OnLeftMouseButtonDown(pt, nFlags) == ID_PLAY)
        ::MessageBeep(0);
    else if (m_sheet.OnLeftMouseButton(pt, nFlags, TRUE))
        Invalidate(FALSE); // the selection changed
    else if (!m_sheet.HitTest(pt))
        CvornOGLWnd::OnLButtonDown(nFlags, pt); // nobody's: turn the model
}
//! [mouse]
