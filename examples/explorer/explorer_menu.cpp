// SPDX-License-Identifier: MIT
// The context menu of the chart window.
#include "explorer_menu.h"

#include "explorer_view.h"
#include "output.h"

#include "common/report.h"

#include <afxdlgs.h>

#include <cstring>
#include <stdexcept>

namespace {

constexpr char profileSection[] = "Copy";

struct Item {
    int id;           ///< 0: a separator
    const char* text; ///< ends with a tab and the key, if it has one
};
constexpr Item items[] = {{ID_COPY, "&Copy"},
                          {ID_COPY_METAFILE, "Copy as &metafile"},
                          {ID_COPY_SETUP, "Copy set&up..."},
                          {ID_EXPORT, "&Export as BMP/JPEG/PNG..."},
                          {ID_PRINT, "&Print..."},
                          {0, nullptr},
                          {ID_VIEW_3D, "3-&D view\tD"},
                          {ID_VIEW_FRONT, "&Front view\tF"},
                          {ID_VIEW_TOP, "&Top view\tT"},
                          {ID_VIEW_SIDE, "&Side view\tS"},
                          {0, nullptr},
                          {ID_SHOW_GRIDS, "&Grids\tG"},
                          {ID_SHOW_TIPS, "&Arrow tips\tA"},
                          {ID_SHOW_LABELS, "&Labels\tL"},
                          {ID_SHOW_PLANES, "Pla&nes\tP"},
                          {ID_SHOW_LIGHTING, "L&ighting\tI"},
                          {ID_SHOW_LEGEND, "Legen&d\tE"},
                          {ID_SHOW_TOOLBAR, "Tool&bar\tB"},
                          {ID_SHOW_SHEET, "Data s&heet\tR"},
                          {0, nullptr},
                          {ID_COPY_ROWS, "Copy r&ows\tCtrl+C"},
                          {ID_PASTE_ROWS, "Pa&ste rows\tCtrl+V"}};

/// The part of the axes that a command switches; 0 for other commands.
DWORD partOf(int command) {
    switch (command) {
    case ID_SHOW_GRIDS:
        return AXES_GRIDS;
    case ID_SHOW_TIPS:
        return AXES_TIPS;
    case ID_SHOW_LABELS:
        return ChartAxes::SHOW_LABELS;
    case ID_SHOW_PLANES:
        return ChartAxes::SHOW_PLANES;
    default:
        return 0;
    }
}

/// What a print dialog hands over: the printer's DC and the two blocks that chose it.
class ChosenPrinter {
public:
    explicit ChosenPrinter(const CPrintDialog& dialog)
        : m_mode(dialog.m_pd.hDevMode), m_names(dialog.m_pd.hDevNames) {
        dc.Attach(dialog.GetPrinterDC());
    }
    ~ChosenPrinter() {
        ::GlobalFree(m_mode);
        ::GlobalFree(m_names);
    }
    ChosenPrinter(const ChosenPrinter&) = delete;
    ChosenPrinter& operator=(const ChosenPrinter&) = delete;

    CDC dc;

private:
    HGLOBAL m_mode;
    HGLOBAL m_names;
};

void askAndSavePicture(CExplorerView& view) {
    CFileDialog dialog(FALSE, "png", "chart.png", OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT | OFN_NOCHANGEDIR,
                       "PNG (*.png)|*.png|JPEG (*.jpg)|*.jpg;*.jpeg|Bitmap (*.bmp)|*.bmp||", &view);
    if (dialog.DoModal() == IDOK)
        saveChartPicture(view, view.copySettings(), static_cast<const char*>(dialog.GetPathName()));
}

void askAndPrint(CExplorerView& view) {
    CPrintDialog dialog(
        FALSE, PD_ALLPAGES | PD_USEDEVMODECOPIES | PD_NOPAGENUMS | PD_HIDEPRINTTOFILE | PD_NOSELECTION,
        &view);
    const bool chosen = dialog.DoModal() == IDOK;
    ChosenPrinter printer(dialog);
    if (!chosen) return;
    if (printer.dc.GetSafeHdc() == nullptr) throw std::runtime_error("the printer cannot be reached");
    CString title;
    view.GetWindowText(title);
    CRect client;
    view.GetClientRect(client);
    printChart(view, printer.dc, title, client.Size());
}

} // namespace

bool createExplorerMenu(CMenu& menu) {
    if (!menu.CreatePopupMenu()) return false;
    for (const Item& item : items) {
        if (!menu.AppendMenu(item.id == 0 ? MF_SEPARATOR : MF_STRING, item.id, item.text)) return false;
    }
    return true;
}

int commandOfKey(UINT key) {
    for (const Item& item : items) {
        const char* const tab = item.text != nullptr ? std::strchr(item.text, '\t') : nullptr;
        if (tab != nullptr && static_cast<UINT>(tab[1]) == key && tab[2] == '\0') return item.id;
    }
    return 0;
}

int commandOfCtrlKey(UINT key) {
    return key == 'C' ? ID_COPY_ROWS : key == 'V' ? ID_PASTE_ROWS : 0;
}

void CExplorerView::loadCopySettings() {
    if (CWinApp* app = ::AfxGetApp()) m_copyInfo.Load(app, profileSection);
}

void CExplorerView::setUpCopies() {
    CWinApp* app = ::AfxGetApp();
    if (m_copyInfo.Setup(TRUE, "Chart") && app != nullptr) m_copyInfo.Save(app, profileSection);
}

void CExplorerView::OnShowMenu() {
    CMenu menu;
    if (createExplorerMenu(menu)) ShowMenu(&menu, -1);
}

void CExplorerView::OnUpdateMenuItem(int nID, CCmdUI& cmdUI) {
    if (const DWORD part = partOf(nID))
        cmdUI.SetCheck(m_axes.shows(part));
    else if (nID == ID_SHOW_LIGHTING)
        cmdUI.SetCheck(EFFECT(EFX_LIGHTING));
    else if (nID == ID_SHOW_LEGEND)
        cmdUI.SetCheck(m_legend.isShown());
    else if (nID == ID_SHOW_TOOLBAR)
        cmdUI.SetCheck(m_toolbar.isShown());
    else if (nID == ID_SHOW_SHEET)
        cmdUI.SetCheck(m_sheet.isShown());
}

void CExplorerView::OnMenuItem(int nID) {
    try {
        onCommand(nID);
    } catch (const std::exception& error) {
        examples::reportError("explorer", error.what(), true);
    }
}

void CExplorerView::onCommand(int command) {
    switch (command) {
    case ID_COPY:
        return copyChart(*this, m_copyInfo);
    case ID_COPY_METAFILE:
        return copyChartAsMetafile(*this, m_copyInfo);
    case ID_COPY_SETUP:
        return setUpCopies();
    case ID_EXPORT:
        return askAndSavePicture(*this);
    case ID_PRINT:
        return askAndPrint(*this);
    case ID_VIEW_3D:
        return lookFrom(ViewPoint::threeD);
    case ID_VIEW_FRONT:
        return lookFrom(ViewPoint::front);
    case ID_VIEW_TOP:
        return lookFrom(ViewPoint::top);
    case ID_VIEW_SIDE:
        return lookFrom(ViewPoint::side);
    case ID_SHOW_LIGHTING:
        m_dwEffectsEnabled ^= EFX_LIGHTING;
        return SetUpdate(UPD_EFFECTS, TRUE, TRUE);
    case ID_SHOW_LEGEND:
        m_legend.setShown(!m_legend.isShown());
        return SetUpdate(UPD_VIEW, TRUE, TRUE);
    case ID_SHOW_TOOLBAR:
        m_toolbar.setShown(!m_toolbar.isShown());
        return SetUpdate(UPD_VIEW, TRUE, TRUE);
    case ID_SHOW_SHEET:
        m_sheet.setShown(!m_sheet.isShown());
        return SetUpdate(UPD_FONTS, TRUE, TRUE);
    case ID_COPY_ROWS:
        return copyRows();
    case ID_PASTE_ROWS:
        return pasteRows();
    default:
        if (const DWORD part = partOf(command)) {
            m_axes.toggle(part);
            SetUpdate(UPD_BUILD, TRUE, TRUE);
        }
    }
}
