// SPDX-License-Identifier: MIT
#include "bench/harness.h"
#include "tests/support/gl_window.h"
#include "vorn/overlays/font_lists.h"
#include "vorn/overlays/spread.h"
#include "vorn/overlays/text_panel.h"
#include "vorn/overlays/toolbar.h"
#include "vorn/view/mapping.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr int viewWidth = 1200, viewHeight = 900;

/// A view with a perspective camera, a font and its display lists.
struct Scene {
    Scene() {
        ::glViewport(0, 0, viewWidth, viewHeight);
        ::glMatrixMode(GL_PROJECTION);
        ::gluPerspective(40, double{viewWidth} / viewHeight, 1, 20);
        ::glMatrixMode(GL_MODELVIEW);
        ::gluLookAt(2, 3, 6, 0, 0, 0, 0, 1, 0);
        map.Update(1);
        dc.Attach(window.dc());
        font.CreatePointFont(60, "Arial", &dc);
        dc.SelectObject(&font);
        ::vornUseFontBitmaps(dc, fontLists);
    }
    ~Scene() { dc.Detach(); }

    support::GlWindow window{viewWidth, viewHeight};
    CDC dc;
    CFont font;
    CvornOGLMapping map;
    int fontLists = ::glGenLists(256);
    int list = ::glGenLists(1);
    CRect client{0, 0, viewWidth, viewHeight};
};

// ---- the plain way: the same points given to GLU and GL

struct PlainPainter {
    const CvornOGLMapping& map;

    void vertex(double x, double y, double depth) const {
        double point[3];
        ::gluUnProject(x, y, depth, map.m_adModel, map.m_adProj, map.m_anViewport, &point[0], &point[1],
                       &point[2]);
        ::glVertex3dv(point);
    }
    void box(GLenum kind, const CvornColour& colour, const CRect& rc, double depth) const {
        ::glBegin(kind);
        ::glColor4f(colour.m_fRed, colour.m_fGreen, colour.m_fBlue, colour.m_fAlpha);
        ::glNormal3f(0, 0, -1);
        vertex(rc.left, viewHeight - rc.bottom, depth);
        vertex(rc.left, viewHeight - rc.top, depth);
        vertex(rc.right, viewHeight - rc.top, depth);
        vertex(rc.right, viewHeight - rc.bottom, depth);
        ::glEnd();
    }
    void text(double x, double y, double depth, std::string_view characters) const {
        double point[3];
        ::gluUnProject(x, y, depth, map.m_adModel, map.m_adProj, map.m_anViewport, &point[0], &point[1],
                       &point[2]);
        ::glRasterPos3dv(point);
        ::glCallLists(static_cast<GLsizei>(characters.size()), GL_UNSIGNED_BYTE, characters.data());
    }
};

/// What a drawing consists of, worked out beforehand.
struct PlainDrawing {
    struct Box {
        GLenum kind;
        CvornColour colour;
        CRect rc;
        double depth;
    };
    struct Text {
        double x, y, depth;
        std::string characters;
    };
    std::vector<Box> boxes;
    std::vector<Text> texts;
    float lineWidth = 1;

    void draw(const Scene& scene) const {
        const PlainPainter painter{scene.map};
        ::glLineWidth(lineWidth);
        ::glNewList(scene.list, GL_COMPILE_AND_EXECUTE);
        for (const Box& box : boxes)
            painter.box(box.kind, box.colour, box.rc, box.depth);
        ::glEndList();
        ::glListBase(scene.fontLists);
        ::glColor4f(1, 1, 1, 1);
        for (const Text& text : texts)
            painter.text(text.x, text.y, text.depth, text.characters);
    }
};

/// 100 rows of 20 columns, with colour cells from a column on; ten rows are selected.
struct Sheet : Scene {
    explicit Sheet(int firstColour) : firstColour(firstColour) {
        spread.SetParam(SPP_VISIBLE | SPP_ROWSEL);
        spread.SetMaxSize(100, 20);
        for (int row = 0; row < 100; ++row) {
            for (int col = 0; col < 20; ++col) {
                if (col >= firstColour)
                    spread.SetColour(row, col, RGB(row, col * 10, 99));
                else
                    spread.SetText(row, col, std::to_string(row * 31.7 + col).substr(0, 5).c_str());
            }
            if (row % 10 == 0) spread.m_pRowHeaders[row].SetParam(SHP_SELECTED);
        }
        spread.UpdateMetrics(&dc, &font, 0);
        spread.UpdatePosition(client);
        takeApart();
    }

    CRect cellRect(int row, int col) const {
        return {CPoint(spread.m_pColHeaders[col].m_nLayout, spread.m_pRowHeaders[row].m_nLayout),
                CSize(spread.m_pColHeaders[col].m_nSize, spread.m_pRowHeaders[row].m_nSize)};
    }
    void takeApart() {
        const CRect& pad = spread.m_rcPad;
        plain.boxes.push_back({GL_QUADS, spread.m_colBack, spread.m_rcPos, 0.5});
        for (int row = 0; row < 100; row += 10) {
            const CRect cell = cellRect(row, 0);
            plain.boxes.push_back({GL_QUADS,
                                   spread.m_colMark,
                                   {pad.left, cell.top, spread.m_rcPos.right - pad.right, cell.bottom},
                                   0.4});
        }
        for (const GLenum kind : {GL_QUADS, GL_LINE_LOOP}) {
            for (int row = 0; row < 100; ++row) {
                for (int col = firstColour; col < 20; ++col) {
                    CRect swatch = cellRect(row, col);
                    swatch.DeflateRect(pad.left, pad.bottom, pad.right, pad.bottom);
                    plain.boxes.push_back({kind, spread.GetColour(row, col), swatch, 0.1});
                }
            }
        }
        for (int row = 0; row < 100; ++row)
            for (int col = 0; col < 20; ++col)
                if (col < firstColour)
                    plain.texts.push_back(
                        {static_cast<double>(cellRect(row, col).left + pad.left),
                         static_cast<double>(viewHeight - cellRect(row, col).bottom + pad.bottom), 0.1,
                         spread.GetText(row, col).GetString()});
    }

    CvornSpread spread;
    int firstColour;
    PlainDrawing plain;
};

bench::Comparison drawnSheet(const std::string& what, int firstColour) {
    return {"overlays: spread of 100 x 20 " + what, "the same by GLU and raw GL", 0.5, [=] {
                const auto sheet = std::make_shared<Sheet>(firstColour);
                return bench::Sides{[=] {
                                        sheet->spread.oglOutput(&sheet->map, viewHeight, 0.1F, 0.1F, 1,
                                                                sheet->list, sheet->fontLists);
                                    },
                                    [=] { sheet->plain.draw(*sheet); }};
            }};
}

const bench::Registration drawColours{drawnSheet("colour cells", 0)};
// GL's own work on the characters, the same for both sides, leaves little to win here.
const bench::Registration drawTexts{drawnSheet("text cells", 20)};

struct Bar : Scene {
    Bar() {
        bar.Init(2, 10);
        for (int i = 0; i < 20; ++i) {
            buttons.push_back(std::make_unique<CvornToolBarButton>(i + 1, i / 10, i % 10, 1, 1));
            buttons[i]->SetParam(TBB_RAISED);
            if (i % 2 == 0) buttons[i]->m_strText = "Go";
            bar.AddButton(buttons[i].get());
        }
        bar.UpdateMetrics(&dc, &font, 0);
        bar.UpdatePosition(client);
        takeApart();
    }
    void takeApart() {
        plain.lineWidth = 2; // as the bar's
        CRect lower = bar.m_rcBar, upper = bar.m_rcBar;
        lower.top = upper.bottom = lower.bottom - lower.Height() * 3 / 4;
        plain.boxes.push_back({GL_QUADS, bar.m_colBar, lower, 0.3});
        plain.boxes.push_back({GL_QUADS, bar.m_colBar, upper, 0.3});
        for (const auto& button : buttons) {
            CRect inner = button->m_rcButton;
            inner.DeflateRect(button->m_szInset);
            plain.boxes.push_back({GL_LINE_LOOP, button->m_colBack, button->m_rcButton, 0.2});
            plain.boxes.push_back({GL_QUADS, button->m_colBack, button->m_rcButton, 0.2});
            if (button->m_strText.IsEmpty())
                plain.boxes.push_back({GL_QUADS, button->m_colShape, inner, 0.2});
            else
                plain.texts.push_back({inner.left + 2.0, viewHeight - inner.bottom + 2.0, 0.1, "Go"});
        }
    }

    CvornToolBar bar;
    std::vector<std::unique_ptr<CvornToolBarButton>> buttons;
    PlainDrawing plain;
};

const bench::Registration drawBar{
    {"overlays: toolbar of 20 buttons drawn", "the same by GLU and raw GL", 1 / 1.5, [] {
         const auto bar = std::make_shared<Bar>();
         return bench::Sides{
             [=] { bar->bar.oglOutput(&bar->map, viewHeight, 0.1F, 0.1F, 1, bar->list, bar->fontLists); },
             [=] { bar->plain.draw(*bar); }};
     }}};

struct Panel : Scene {
    Panel() {
        std::string text;
        for (int i = 0; i < 40; ++i)
            text += "12.34" + std::string(i == 39 ? "" : i % 4 == 3 ? "\n" : "\t");
        panel.UpdateText(text.c_str());
        panel.UpdateMetrics(fontLists, list, CvornColour(0xFFFFFF, 1), CvornColour(), &dc, &font);
        const CRect box(0, viewHeight - static_cast<int>(panel.m_fHeight), static_cast<int>(panel.m_fWidth),
                        viewHeight);
        plain.boxes.push_back({GL_QUADS, panel.m_colBack, box, 0.9});
        for (int i = 0; i < 40; ++i)
            plain.texts.push_back({10 + i % 4 * static_cast<double>(panel.m_pfColWidth[0]),
                                   10 + (9 - i / 4) * static_cast<double>(panel.m_pfRowHeight[0]), 0.9,
                                   "12.34"});
    }

    CvornTextPanel panel;
    PlainDrawing plain;
};

const bench::Registration drawPanel{
    {"overlays: panel of 10 x 4 cells drawn", "the same by GLU and raw GL", 1 / 1.5, [] {
         const auto panel = std::make_shared<Panel>();
         return bench::Sides{[=] {
                                 panel->panel.glOutput({0, 500, 500, 0}, &panel->map, 0, 0);
                             },
                             [=] { panel->plain.draw(*panel); }};
     }}};

/// 10,000 lines of ten cells.
std::string tableText() {
    std::string text;
    for (int i = 0; i < 100'000; ++i)
        text += std::to_string(i * 0.37) + (i % 10 == 9 ? '\n' : '\t');
    return text;
}

/// Ends where the first of two characters is, or at the end of the text.
const char* findEither(const char* at, const char* end, char first, char second) {
    const auto* tab = static_cast<const char*>(std::memchr(at, first, end - at));
    const auto* line = static_cast<const char*>(std::memchr(at, second, (tab == nullptr ? end : tab) - at));
    return line != nullptr ? line : tab != nullptr ? tab : end;
}

const bench::Registration paste{
    {"overlays: paste of 10,000 x 10 cells", "memchr and the same variants", 1.5, [] {
         const auto spread = std::make_shared<CvornSpread>();
         const auto values = std::make_shared<std::vector<COleVariant>>(100'000);
         const auto text = std::make_shared<std::string>(tableText());
         spread->SetMaxSize(10'000, 10);
         return bench::Sides{[=, string = CString(text->c_str())] { spread->Paste(string, 1); },
                             [=] {
                                 const char* at = text->data();
                                 const char* const end = at + text->size();
                                 for (COleVariant& value : *values) {
                                     const char* const stop = findEither(at, end, '\t', '\n');
                                     wchar_t wide[32];
                                     const int length = ::MultiByteToWideChar(
                                         CP_ACP, 0, at, static_cast<int>(stop - at), wide, 32);
                                     ::VariantClear(&value);
                                     value.vt = VT_BSTR;
                                     value.bstrVal = ::SysAllocStringLen(wide, length);
                                     at = stop + 1;
                                 }
                             }};
     }}};

const bench::Registration measure{
    {"overlays: UpdateMetrics of 1000 x 20 cells", "GetTextExtentPoint32", 1.1, [] {
         struct State : Scene {
             CvornSpread spread;
             std::vector<std::string> texts;
         };
         const auto state = std::make_shared<State>();
         state->spread.SetMaxSize(1000, 20);
         for (int i = 0; i < 20'000; ++i) {
             state->texts.push_back(std::to_string(i * 0.37));
             state->spread.SetText(i / 20, i % 20, state->texts.back().c_str());
         }
         return bench::Sides{[=] { state->spread.UpdateMetrics(&state->dc, &state->font, 1); },
                             [=] {
                                 for (const std::string& text : state->texts) {
                                     SIZE extent;
                                     ::GetTextExtentPoint32A(state->dc, text.data(),
                                                             static_cast<int>(text.size()), &extent);
                                     bench::keep(extent);
                                 }
                             }};
     }}};

} // namespace
