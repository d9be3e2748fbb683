// SPDX-License-Identifier: MIT
// The three overlays over a cube. The sheet selects faces (with Ctrl several) and edits their colours, by a
// click on a swatch of the selected row; the slider of the toolbar pulls the selected faces out; the panel
// tells the state. The rest of the window turns the cube.
#include <vorn/vorn.h>

namespace {

constexpr UINT WM_COLOUR_EDITED = WM_APP + 1;

enum { ID_RESET = 1, ID_PULL };

/// The view's display lists. All numbers are the view's own to give, since it is alone in its context.
enum { ListCube = 1, ListPanel, ListBar, ListSheet, ListFont = 256 };

/// A face of the cube: its normal, and the two directions in which it extends.
struct Face {
    const char* name;
    COLORREF colour;
    float normal[3], right[3], up[3];
};

const Face faces[] = {
    {"Front", RGB(224, 92, 70), {0, -1, 0}, {1, 0, 0}, {0, 0, 1}},
    {"Back", RGB(242, 169, 59), {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}},
    {"Left", RGB(120, 178, 92), {-1, 0, 0}, {0, -1, 0}, {0, 0, 1}},
    {"Right", RGB(67, 147, 186), {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
    {"Top", RGB(236, 222, 178), {0, 0, 1}, {1, 0, 0}, {0, 1, 0}},
    {"Bottom", RGB(140, 110, 160), {0, 0, -1}, {1, 0, 0}, {0, -1, 0}},
};
constexpr int faceCount = static_cast<int>(std::size(faces));

/// A button that shows its horizontal marker: filled up to where it was dragged.
class CSlider : public CvornToolBarButton {
public:
    using CvornToolBarButton::CvornToolBarButton;

protected:
    void oglOutputShape(CvornOGLMapping* map, CRect& rc, float z) override {
        const float middle = rc.left + rc.Width() * GetHMarkerPos();
        const CvornColour filled(RGB(67, 147, 186), 1), empty(RGB(90, 90, 90), 1);
        ::glBegin(GL_QUADS);
        ::glNormal3f(0, 0, -1);
        Fill(*map, filled, rc.left, middle, rc, z);
        Fill(*map, empty, middle, rc.right, rc, z);
        ::glEnd();
    }

private:
    static void Fill(CvornOGLMapping& map, const CvornColour& colour, double left, double right,
                     const CRect& rc, float z) {
        const CPoint corners[] = {{0, rc.bottom}, {0, rc.top}, {1, rc.top}, {1, rc.bottom}};
        colour.glColor();
        for (const CPoint& corner : corners) {
            map.gluUnProject(corner.x == 0 ? left : right, corner.y, z);
            map.glVertex3d();
        }
    }
};

/// The chart view, with its overlays as members.
class COverlaysView : public CvornOGLWnd {
public:
    COverlaysView();

protected:
    void OnUpdateTextMetrics(CDC* pDC, int bPrint) override;
    void OnBuild() override;
    void OnOutputToDC(CDC* pDC, int x, int y) override;

    afx_msg void OnLButtonDown(UINT nFlags, CPoint pt);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint pt);
    afx_msg void OnMouseMove(UINT nFlags, CPoint pt);
    afx_msg LRESULT OnColourEdited(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

private:
    void BuildFace(const Face& face, int row);
    void ShowChange();

    CvornTextPanel m_panel;
    CvornToolBar m_bar;
    CvornToolBarButton m_reset{ID_RESET, 0, 0, 1, 1};
    CSlider m_pull{ID_PULL, 0, 1, 1, 4};
    CvornSpread m_sheet;
    CFont m_font;
    bool m_bHot = false; // the mouse is over the panel
};

BEGIN_MESSAGE_MAP(COverlaysView, CvornOGLWnd)
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_MOUSEMOVE()
    ON_MESSAGE(WM_COLOUR_EDITED, &COverlaysView::OnColourEdited)
END_MESSAGE_MAP()

COverlaysView::COverlaysView() {
    m_clrBackground = RGB(32, 36, 44);

    m_reset.m_strText = "Reset";
    m_reset.SetParam(TBB_RAISED);
    m_pull.SetParam(TBB_RAISED | TBB_TRACK);
    m_bar.Init(1, 5);
    m_bar.AddButton(&m_reset);
    m_bar.AddButton(&m_pull);

    m_sheet.m_strTitle = "Faces";
    m_sheet.m_colBack = CvornColour(RGB(60, 66, 78), 0.7F);
    m_sheet.m_colMark = CvornColour(RGB(110, 122, 145), 0.9F);
    m_sheet.m_colText = CvornColour(RGB(255, 255, 255), 1);
    m_sheet.SetParam(SPP_VISIBLE | SPP_FRAME | SPP_ROWSEL | SPP_LEFT | SPP_TOP | SPP_DESELECTLAST);
    m_sheet.SetMaxSize(faceCount, 2);
    for (int row = 0; row < faceCount; ++row) {
        m_sheet.SetText(row, 0, faces[row].name);
        m_sheet.SetColour(row, 1, faces[row].colour);
    }
    m_sheet.SetParent(this);
    m_sheet.SetMsgWnd(this, WM_COLOUR_EDITED);
    m_sheet.SetSel(0);

    m_panel.SetAlignment(TPA_RIGHT, TPA_TOP);
}

/// Makes font and lists for the device, and lays the overlays out in it.
void COverlaysView::OnUpdateTextMetrics(CDC* pDC, int) {
    m_font.DeleteObject();
    m_font.CreatePointFont(90, "Arial", pDC);
    CFont* const old = pDC->SelectObject(&m_font);
    ::vornUseFontBitmaps(pDC->m_hDC, ListFont);
    pDC->SelectObject(old);

    CString text;
    text.Format("Selected\t%d of %d\nPulled out\t%.0f %%", m_sheet.GetSelCount(), faceCount,
                100.0 * m_pull.GetHMarkerPos());
    m_panel.UpdateText(text);
    m_panel.UpdateMetrics(ListFont, ListPanel, CvornColour(RGB(255, 255, 255), 1),
                          CvornColour(RGB(60, 66, 78), 1), pDC, &m_font);
    m_bar.UpdateMetrics(pDC, &m_font, 0);
    m_sheet.UpdateMetrics(pDC, &m_font, m_fLineWidth);
}

void COverlaysView::OnBuild() {
    ::glNewList(ListCube, GL_COMPILE);
    ::glBegin(GL_QUADS);
    for (int row = 0; row < faceCount; ++row)
        BuildFace(faces[row], row);
    ::glEnd();
    ::glEndList();
}

void COverlaysView::BuildFace(const Face& face, int row) {
    constexpr float size = 0.3F, reach = 0.2F;
    const float distance = size + (m_sheet.IsRowSelected(row) ? reach * m_pull.GetHMarkerPos() : 0);
    const float corners[][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
    m_sheet.GetColour(row, 1).glColor();
    ::glNormal3fv(face.normal);
    for (const auto& [across, upwards] : corners) {
        float point[3];
        for (int i = 0; i < 3; ++i)
            point[i] = face.normal[i] * distance + (face.right[i] * across + face.up[i] * upwards) * size;
        ::glVertex3fv(point);
    }
}

void COverlaysView::OnOutputToDC(CDC*, int, int) {
    // The outsides first: where they meet hidden insides, at the edges, the first one drawn stays.
    ::glEnable(GL_CULL_FACE);
    for (const GLenum side : {GL_BACK, GL_FRONT}) {
        ::glCullFace(side);
        ::glCallList(ListCube);
    }
    ::glDisable(GL_CULL_FACE);

    const CRect client(CPoint(0, 0), m_rcView.Size());
    const int height = client.Height();
    m_bar.UpdatePosition(client);
    m_sheet.UpdatePosition(client);
    ::glDisable(GL_LIGHTING);
    m_panel.SetZ(0.1F);
    m_panel.glOutput(CRect(0, height, client.right, 0), &m_mapping, 0.01F, m_bHot);
    m_bar.oglOutput(&m_mapping, height, 0.1F, 0.01F, m_fLineWidth, ListBar, ListFont);
    m_sheet.oglOutput(&m_mapping, height, 0.1F, 0.01F, m_fLineWidth, ListSheet, ListFont);
    if (EFFECT(EFX_LIGHTING)) ::glEnable(GL_LIGHTING);
}

/// The selection, a colour or the slider changed: cube and panel follow.
void COverlaysView::ShowChange() {
    SetUpdate(UPD_BUILD | UPD_FONTS, TRUE, FALSE);
}

void COverlaysView::OnLButtonDown(UINT nFlags, CPoint pt) {
    const int button = m_bar.OnLeftMouseButtonDown(pt, nFlags);
    if (button == ID_RESET) {
        m_bar.SetButtonHMarkerPos(ID_PULL, 0);
        for (int row = 0; row < faceCount; ++row)
            m_sheet.SetColour(row, 1, faces[row].colour);
    }
    if (button != 0) SetCapture(); // for the slider
    if (button != 0 || m_sheet.OnLeftMouseButton(pt, nFlags, TRUE)) {
        ShowChange();
        return;
    }
    if (!m_sheet.HitTest(pt)) CvornOGLWnd::OnLButtonDown(nFlags, pt);
}

void COverlaysView::OnLButtonUp(UINT nFlags, CPoint pt) {
    if (m_bar.IsButtonActive()) {
        m_bar.OnLeftMouseButtonUp(pt, nFlags);
        ::ReleaseCapture();
    } else {
        CvornOGLWnd::OnLButtonUp(nFlags, pt);
    }
}

void COverlaysView::OnMouseMove(UINT nFlags, CPoint pt) {
    if (m_bar.IsButtonActive()) {
        if (m_bar.OnMouseMove(pt, nFlags)) ShowChange();
        return;
    }
    const bool hot = m_panel.HitTest(m_rcView, pt);
    if (hot != m_bHot) Invalidate(FALSE);
    m_bHot = hot;
    CvornOGLWnd::OnMouseMove(nFlags, pt);
}

LRESULT COverlaysView::OnColourEdited(WPARAM, LPARAM) {
    ShowChange();
    return 0;
}

class COverlaysApp : public CWinApp {
public:
    BOOL InitInstance() override {
        m_pMainWnd = &m_view;
        if (!m_view.CreateEx(0, ::AfxRegisterWndClass(CS_OWNDC, ::LoadCursor(nullptr, IDC_ARROW)), "Overlays",
                             WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT, 800, 600, nullptr, nullptr))
            return FALSE;
        m_view.ShowWindow(m_nCmdShow);
        return TRUE;
    }

private:
    COverlaysView m_view;
};

COverlaysApp theApp;

} // namespace
