// SPDX-License-Identifier: MIT
#include "explorer_view.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace {

constexpr COLORREF background = RGB(250, 250, 248);

/// A picture as high as the one in the window has lines of one pixel.
constexpr float windowHeight = 760;

/// Display lists 1000 to 1255 hold the font, those after it the overlays; glGenLists hands out low numbers.
constexpr int fontLists = 1000;
constexpr int overlayLists = 1300;

/// The planes that can have a picture, in the order of the options.
constexpr std::array<DWORD, 3> planes = {PLANE_XY, PLANE_XZ, PLANE_YZ};

std::array<CvornDIBTexture*, 3> imagesOf(CvornAxisSet& set) {
    return {&set.m_imageXY, &set.m_imageXZ, &set.m_imageYZ};
}

/// Rows and columns of a picture from one end to the other and back.
void mirror(CvornDIBTexture& image, bool rows) {
    auto* pixels = reinterpret_cast<std::uint32_t*>(image.GetBitsPtr());
    if (pixels == nullptr) return;
    const int width = image.GetWidth(), height = image.GetHeight();
    for (int y = 0; y < (rows ? height / 2 : height); ++y) {
        std::uint32_t* row = pixels + static_cast<std::size_t>(y) * width;
        if (rows)
            std::swap_ranges(row, row + width, pixels + static_cast<std::size_t>(height - 1 - y) * width);
        else
            std::reverse(row, row + width);
    }
}

/// The y axis runs towards the eye, so the pictures that lie along it would be seen in a mirror.
void turnToTheEye(CvornAxisSet& set) {
    mirror(set.m_imageXY, true);
    mirror(set.m_imageYZ, false);
}

/// Degrees about the x axis, after a turn about the upright one.
void setPreset(float (&preset)[3], float aboutX, float aboutZ) {
    preset[0] = aboutX;
    preset[1] = 0;
    preset[2] = aboutZ;
}

/// Of a colour ramp's name, among them all.
std::size_t indexOf(const std::string& ramp) {
    const auto names = examples::ColourRamp::names();
    return static_cast<std::size_t>(std::find(names.begin(), names.end(), ramp) - names.begin());
}

/// A file's name without its folder and ending.
std::string nameOf(const std::string& file) {
    const std::size_t slash = file.find_last_of("\\/:");
    const std::string name = slash == std::string::npos ? file : file.substr(slash + 1);
    return name.substr(0, name.find_last_of('.'));
}

} // namespace

CExplorerView::CExplorerView(examples::Grid grid, const Options& options)
    : m_grid(std::move(grid)), m_ramp(*examples::ColourRamp::named(options.ramp)),
      m_axes(m_grid, options.titles), m_rampIndex(indexOf(options.ramp)),
      m_toolbar({[this](int command) { OnMenuItem(command); },
                 [this](double exaggeration) { setExaggeration(exaggeration); },
                 [this](std::size_t ramp) { setRamp(ramp); }}),
      m_legend(nameOf(options.file), m_grid, m_ramp), m_sheet(m_grid),
      m_overlays({&m_toolbar, &m_legend, &m_sheet}, overlayLists),
      m_hasPlanes(loadPlanes(options.planeFiles)) {
    for (DWORD bits : options.hidden)
        m_axes.toggle(bits);
    m_legend.setPlace(options.legend);
    m_sheet.setShown(options.sheet);
    m_sheet.setWindow(this);
    m_toolbar.setShown(options.toolbar);
    m_axes.setExaggeration(options.exaggeration);
    m_clrBackground = background;
    m_nFontListBase = fontLists;
    m_nTexturesWanted = 3;
    m_bTextures = 1;                             // the pictures keep their own colours
    m_lighting.SetPosition(-0.85f, -0.2f, 1.0f); // from the left, where the eye expects it on relief
    // A little steeper than the base's, to see into valleys. The base's side view is its top view until the
    // application says which side it means: here the right one.
    // Turned so that the corner where the axes meet lies at the back.
    setPreset(m_userRot.m_afPreset3D, -62, -38);
    setPreset(m_userRot.m_afPresetSide, -90, -90);
    m_userRot.Set3D();
}

bool CExplorerView::createWindow(const CString& title) {
    CString windowClass = ::AfxRegisterWndClass(CS_HREDRAW | CS_VREDRAW | CS_OWNDC,
                                                ::LoadCursorA(nullptr, IDC_ARROW), nullptr, nullptr);
    return CreateEx(0, windowClass, title, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_CLIPSIBLINGS,
                    CW_USEDEFAULT, CW_USEDEFAULT, 1000, 780, nullptr, nullptr);
}

void CExplorerView::lookFrom(ViewPoint viewPoint) {
    switch (viewPoint) {
    case ViewPoint::threeD:
        m_userRot.Set3D();
        break;
    case ViewPoint::front:
        m_userRot.SetFront();
        break;
    case ViewPoint::top:
        m_userRot.SetTop();
        break;
    case ViewPoint::side:
        m_userRot.SetSide();
        break;
    }
    SetUpdate(UPD_VIEW, TRUE, TRUE);
}

/// The toolbar asks the chart itself, so that keys, menu and mouse need not tell it.
ChartState CExplorerView::state() const {
    ChartState state = {std::nullopt,
                        m_axes.shows(AXES_GRIDS),
                        m_axes.shows(AXES_TIPS),
                        EFFECT(EFX_LIGHTING),
                        m_axes.shows(ChartAxes::SHOW_PLANES),
                        m_axes.exaggeration(),
                        m_rampIndex};
    CvornUserRot here = m_userRot, preset = m_userRot;
    const auto isAt = [&](void (CvornUserRot::*set)()) {
        (preset.*set)();
        return std::equal(std::begin(here.GetMatrix()->m_afElement), std::end(here.GetMatrix()->m_afElement),
                          preset.GetMatrix()->m_afElement);
    };
    if (isAt(&CvornUserRot::Set3D)) state.viewPoint = ViewPoint::threeD;
    if (isAt(&CvornUserRot::SetFront)) state.viewPoint = ViewPoint::front;
    if (isAt(&CvornUserRot::SetTop)) state.viewPoint = ViewPoint::top;
    if (isAt(&CvornUserRot::SetSide)) state.viewPoint = ViewPoint::side;
    return state;
}

void CExplorerView::setExaggeration(double exaggeration) {
    if (exaggeration == m_axes.exaggeration()) return;
    m_axes.setExaggeration(exaggeration);
    SetUpdate(UPD_BUILD, TRUE, TRUE);
}

void CExplorerView::setRamp(std::size_t ramp) {
    if (ramp == m_rampIndex) return;
    m_rampIndex = ramp;
    m_ramp = *examples::ColourRamp::named(examples::ColourRamp::names()[ramp]);
    m_legend.change();
    SetUpdate(UPD_BUILD, TRUE, TRUE);
}

bool CExplorerView::drawTo(CDC& dc, const CRect& rc) {
    m_drawn = false;
    PrintScene(&dc, rc, 0);
    ::GdiFlush();
    return m_drawn;
}

bool CExplorerView::drawMetafile(CSize size) {
    m_drawn = false;
    OutputToMetafile(nullptr, CRect(CPoint(0, 0), size), 0);
    return m_drawn;
}

bool CExplorerView::drawPicture(CvornDIBSurface& picture) {
    return drawTo(*picture.GetDC(), CRect(0, 0, picture.GetWidth(), picture.GetHeight()));
}

/// Opens the pictures for the planes. False when there are none. @throws std::runtime_error
bool CExplorerView::loadPlanes(const std::array<std::string, 3>& files) {
    CClientDC screen(nullptr);
    bool any = false;
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (files[i].empty()) continue;
        CRect size;
        m_axes.set().GetGridImageRect(size, planes[i], m_planePixels);
        if (!imagesOf(m_axes.set())[i]->LoadX(&screen, files[i].c_str(), size, CvornColour(background, 1),
                                              CvornDIBTexture::TRANSLATE_BY_BOTH))
            throw std::runtime_error(files[i] + ": cannot be loaded as a picture");
        any = true;
    }
    m_axes.set().ResizeImages(&screen, m_planePixels); // they have that size, and are valid now
    turnToTheEye(m_axes.set());
    return any;
}

/// The side of the picture that its font is made for, in steps of one pixel of the font.
int CExplorerView::fontSide() const {
    return std::min<int>(m_rcView.Height(), m_rcView.Width() * 4 / 5) / 46 * 46;
}

// A picture on a plane is as large as the view asks for, in steps, so that most new sizes need no new
// picture.
void CExplorerView::OnSetViewportSize(int) {
    m_laidOut = false;
    if (fontSide() != m_fontSide) SetUpdate(UPD_FONTS, FALSE, FALSE);
    float pixels = 256;
    while (pixels < std::max(m_rcView.Width(), m_rcView.Height()) && pixels < 1024)
        pixels *= 2;
    if (!m_hasPlanes || pixels == m_planePixels) return;
    m_planePixels = pixels;
    m_axes.set().InvalidateImages();
    SetUpdate(UPD_BUILD, FALSE, FALSE);
}

void CExplorerView::OnUpdateTextureInfo() {
    const auto images = imagesOf(m_axes.set());
    for (std::size_t i = 0; i < images.size(); ++i) {
        if (!images[i]->IsValid()) continue;
        images[i]->SetTextureName(m_auTextures[i]);
        images[i]->ScaleAndBind();
    }
}

// Lines of a picture are as thick as the window's, in proportion; on paper they have a thickness of their
// own.
void CExplorerView::OnUpdateMetrics(CDC* pDC, int bPrint) {
    CvornOGLWnd::OnUpdateMetrics(pDC, bPrint);
    if (!bPrint || pDC == nullptr || pDC->GetDeviceCaps(TECHNOLOGY) == DT_RASPRINTER) return;
    m_fLineWidth = std::max(1.0F, std::round(static_cast<float>(fontSide()) / windowHeight));
    ::glLineWidth(m_fLineWidth);
    ::glPointSize(m_fLineWidth);
}

void CExplorerView::OnUpdateTextMetrics(CDC*, int) {
    CDC* dc = m_oglDC.GetDC(); // the one that GL draws to
    if (dc == nullptr) return;
    m_fontSide = fontSide();
    CFont& font = m_axes.makeFont(*dc, m_fontSide, m_nFontListBase);
    m_overlays.updateMetrics(*dc, font, m_nFontListBase);
}

void CExplorerView::OnSetEffects() {
    CvornOGLWnd::OnSetEffects();
    ::glDepthRange(ChartOverlay::sceneDepth, 1);
}

void CExplorerView::OnBuild() {
    m_surface.build({m_grid, m_ramp, m_axes.extents()});
    m_rowLines.clear();
    if (!m_axes.set().IsImageSizesValid()) {
        CClientDC screen(nullptr);
        m_axes.set().ResizeImages(&screen, m_planePixels);
        turnToTheEye(m_axes.set());
    }
    m_axes.build(m_fLineWidth);
}

void CExplorerView::OnOutputToDC(CDC*, int, int) {
    m_toolbar.show(state());
    m_overlays.prepare(m_mapping, m_rcView.Size());
    m_laidOut = true;
    m_axes.draw(m_fLineWidth);
    m_surface.draw();
    drawRowLines();
    m_axes.drawLabels(m_mapping, m_overlays.bounds());
    m_overlays.draw();
    // Without a context the cycle runs all the same, and draws nothing.
    m_drawn = ::wglGetCurrentContext() != nullptr;
}
