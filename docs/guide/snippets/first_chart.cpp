// SPDX-License-Identifier: MIT
// The program of the guide's first page, as its last step leaves it.
#include <vorn/vorn.h>

#include <afxdlgs.h>

#include <cmath>

//! [class]
class CWaveView : public CvornOGLWnd {
public:
    CWaveView();

protected:
    void OnBuild() override;
    void OnOutputToDC(CDC* pDC, int x, int y) override;
    void OnUpdateTextMetrics(CDC* pDC, int bPrint) override;
    void OnShowMenu() override;
    void OnMenuItem(int nID) override;

private:
    enum { ListScene = 1, ListAxes, ListPanel, ListFont = 256 }; // to ListFont + 255
    enum { ID_PRINT = 1, ID_SAVE };

    void DrawNumbers(const CvornAxis& axis);

    CvornAxisSet m_axes{AXES_TIPS | AXES_GRIDS};
    CvornTextPanel m_panel;
    CFont m_font;
};
//! [class]

//! [height]
static float HeightAt(float x, float y) {
    const float r = std::hypot(x, y);
    return 0.3F * std::cos(14 * r) / (1 + 4 * r);
}

static void EmitPoint(float x, float y) {
    const float d = 0.01F, h = HeightAt(x, y);
    ::glNormal3f(HeightAt(x - d, y) - HeightAt(x + d, y), HeightAt(x, y - d) - HeightAt(x, y + d), 2 * d);
    ::glColor3f(0.35F + h, 0.6F, 0.75F - h);
    ::glVertex3f(x, y, h);
}
//! [height]

//! [build]
void CWaveView::OnBuild() {
    ::glNewList(ListScene, GL_COMPILE);
    for (int i = 0; i < 100; ++i) {
        ::glBegin(GL_TRIANGLE_STRIP);
        for (int j = 0; j <= 100; ++j) {
            EmitPoint(i * 0.01F - 0.5F, j * 0.01F - 0.5F);
            EmitPoint((i + 1) * 0.01F - 0.5F, j * 0.01F - 0.5F);
        }
        ::glEnd();
    }
    ::glEndList();
    m_axes.vornBuild(ListAxes, m_fLineWidth);
}
//! [build]

//! [constructor]
CWaveView::CWaveView() {
    m_clrBackground = RGB(250, 250, 248);
    m_lighting.SetPosition(0.5F, 0.8F, 1);
    m_userRot.m_afPreset3D[2] = -145; // degrees about the upright axis: their corner lies at the back
    m_userRot.Set3D();

    for (CvornAxis* axis : {&m_axes.m_axisX, &m_axes.m_axisY}) {
        axis->SetMin(-0.5F);
        axis->SetMax(0.5F);
        axis->SetTick(0.5F);
    }
    m_axes.m_axisZ.SetMin(-0.2F);
    m_axes.m_axisZ.SetMax(0.4F);
    m_axes.m_axisZ.SetTick(0.2F);
    m_axes.m_clrMinorGrid = CvornColour(RGB(225, 226, 230), 1);
    m_axes.m_clrGrid = CvornColour(RGB(180, 182, 190), 1);
    const float tip = m_axes.m_fTipLength;                // comes on top of the length that the ticks span
    m_axes.UpdateLength(1 + tip, 1 + tip, 0.6F + tip, 1); // in model units
    m_axes.UpdateOrigin(-0.5F, -0.5F, -0.2F);
}
//! [constructor]

//! [font]
void CWaveView::OnUpdateTextMetrics(CDC*, int) {
    CDC* const dc = m_oglDC.GetDC(); // what GL draws to: the window, or a surface while printing
    if (dc == nullptr) return;
    m_font.DeleteObject();
    m_font.CreateFont(-m_rcView.Height() / 40, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, OUT_DEFAULT_PRECIS,
                      CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, VARIABLE_PITCH | FF_SWISS, "Arial");
    CFont* const old = dc->SelectObject(&m_font);
    ::vornUseFontBitmaps(dc->m_hDC, ListFont);
    dc->SelectObject(old);
    //! [panel]
    m_panel.UpdateText("Wave\nLeast\t-0.16\nGreatest\t0.30");
    m_panel.SetAlignment(TPA_RIGHT, TPA_TOP);
    m_panel.SetZ(0.1F);
    m_panel.UpdateMetrics(ListFont, ListPanel, CvornColour(RGB(40, 42, 50), 1),
                          CvornColour(RGB(225, 228, 236), 1), dc, &m_font);
    //! [panel]
}
//! [font]

//! [numbers]
void CWaveView::DrawNumbers(const CvornAxis& axis) {
    ::glListBase(ListFont);
    for (int i = 0; i < axis.GetTickCount(); i += 5) { // every fifth tick mark is a major one
        float point[3];
        axis.vornVectorPos(point, axis.GetTickPos(i));
        CString text;
        text.Format("%g", axis.GetMin() + i * axis.m_fTick / 5);
        ::glRasterPos3fv(point);
        const float beside = m_rcView.Height() / 60.0F;
        ::glBitmap(0, 0, 0, 0, beside, beside / 2, nullptr); // moves the raster position, in pixels
        ::glCallLists(text.GetLength(), GL_UNSIGNED_BYTE, text.GetString());
    }
}
//! [numbers]

//! [output]
void CWaveView::OnOutputToDC(CDC*, int, int) {
    ::glCallList(ListScene);
    ::glDisable(GL_LIGHTING); // lines and texts have no lit side; the next cycle enables it again
    ::glCallList(ListAxes);
    ::glColor3ub(60, 62, 70);
    DrawNumbers(m_axes.m_axisX);
    DrawNumbers(m_axes.m_axisY);
    DrawNumbers(m_axes.m_axisZ);
    m_panel.glOutput(CRect(0, m_rcView.Height(), m_rcView.Width(), 0), &m_mapping, 0.01F, FALSE);
}
//! [output]

//! [menu]
void CWaveView::OnShowMenu() {
    CMenu menu;
    menu.CreatePopupMenu();
    menu.AppendMenu(MF_STRING, ID_PRINT, "Print...");
    menu.AppendMenu(MF_STRING, ID_SAVE, "Save as chart.png");
    ShowMenu(&menu, -1);
}

void CWaveView::OnMenuItem(int nID) {
    if (nID == ID_SAVE) {
        CvornCopyRender picture;
        if (picture.Setup(CSize(1200, 900), this)) {
            PrintScene(picture.GetDC(), CRect(0, 0, 1200, 900), 0);
            picture.ExportPNG("chart.png");
        }
        picture.Destroy(TRUE);
        return;
    }
    CPrintDialog dialog(FALSE);
    if (dialog.DoModal() != IDOK) return;
    CDC printer;
    printer.Attach(dialog.GetPrinterDC());
    ::GlobalFree(dialog.m_pd.hDevMode);
    ::GlobalFree(dialog.m_pd.hDevNames);
    const int width = printer.GetDeviceCaps(HORZRES);
    if (printer.StartDoc("Wave") > 0 && printer.StartPage() > 0) {
        PrintScene(&printer, CRect(0, 0, width, width * 3 / 4), 0);
        printer.EndPage();
        printer.EndDoc();
    }
}
//! [menu]

class CFirstApp : public CWinApp {
public:
    BOOL InitInstance() override {
        m_pMainWnd = &m_view;
        if (!m_view.CreateEx(0, ::AfxRegisterWndClass(CS_OWNDC, ::LoadCursor(nullptr, IDC_ARROW)),
                             "First chart", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT, 800, 600,
                             nullptr, nullptr))
            return FALSE;
        m_view.ShowWindow(m_nCmdShow);
        return TRUE;
    }

private:
    CWaveView m_view;
};

static CFirstApp theApp;
