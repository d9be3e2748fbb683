// SPDX-License-Identifier: MIT
#include "vorn/copy/copy_setup_dialog.h"

#include "vorn/copy/copy_info.h"

#include <cmath>

namespace {

constexpr float cmPerInch = 2.54F;

// In single precision and through inches, so that a size keeps its described roundings.
float converted(float value, int from, int to, float dotsPerInch) {
    if (from == to) return value;
    if (from == CdlgCopySetup::UNITS_PIXELS) value = value / dotsPerInch;
    if (from == CdlgCopySetup::UNITS_CM) value = value / cmPerInch;
    if (to == CdlgCopySetup::UNITS_PIXELS) return value * dotsPerInch;
    if (to == CdlgCopySetup::UNITS_CM) return value * cmPerInch;
    return value;
}

} // namespace

BEGIN_MESSAGE_MAP(CdlgCopySetup, CDialog)
    ON_CBN_SELCHANGE(IDC_COPY_UNITS, &CdlgCopySetup::OnSelchangeUnits)
    ON_BN_CLICKED(IDC_COPY_FIXED_SIZE, &CdlgCopySetup::OnFixedSize)
END_MESSAGE_MAP()

CdlgCopySetup::CdlgCopySetup(const char* pszCaption, CWnd* pParent)
    : CDialog(IDD, pParent), m_pszCaption(pszCaption) {}

BOOL CdlgCopySetup::OnInitDialog() {
    CDialog::OnInitDialog();
    if (m_pszCaption != nullptr) {
        CString title;
        GetWindowText(title);
        SetWindowText(title + " - " + m_pszCaption);
    }
    {
        CClientDC dc(this);
        m_nLogPixelsX = dc.GetDeviceCaps(LOGPIXELSX);
        m_nLogPixelsY = dc.GetDeviceCaps(LOGPIXELSY);
    }
    if (!m_bAllowMetafile) GetDlgItem(IDC_COPY_METAFILE)->ShowWindow(SW_HIDE);
    UpdateControls();
    UpdateData(FALSE);
    return TRUE;
}

void CdlgCopySetup::DoDataExchange(CDataExchange* pDX) {
    CDialog::DoDataExchange(pDX);
    DDX_CBIndex(pDX, IDC_COPY_UNITS, m_nUnits);
    DDX_Radio(pDX, IDC_COPY_BITMAP, m_nType);
    DDX_Text(pDX, IDC_COPY_WIDTH, m_fWidth);
    DDX_Text(pDX, IDC_COPY_HEIGHT, m_fHeight);
    DDX_Check(pDX, IDC_COPY_FIXED_SIZE, m_bFixedSize);
    DDX_Check(pDX, IDC_COPY_BORDER, m_bBorder);
    DDV_MinMaxFloat(pDX, m_fWidth, 1, 100000);
    DDV_MinMaxFloat(pDX, m_fHeight, 1, 100000);
}

void CdlgCopySetup::UpdateControls() {
    const bool pixels = m_nUnits == UNITS_PIXELS;
    for (const int id : {IDC_COPY_WIDTH, IDC_COPY_HEIGHT}) {
        CWnd* edit = GetDlgItem(id);
        edit->ModifyStyle(pixels ? 0 : ES_NUMBER, pixels ? ES_NUMBER : 0);
        edit->EnableWindow(m_bFixedSize != 0);
    }
    CString text;
    if (text.LoadString(pixels ? IDS_COPY_SIZE : IDS_COPY_SIZE_APPROX))
        GetDlgItem(IDC_COPY_SIZE_GROUP)->SetWindowText(text);
}

void CdlgCopySetup::OnSelchangeUnits() {
    const int from = m_nUnits;
    if (!UpdateData(TRUE)) return;
    m_fWidth = converted(m_fWidth, from, m_nUnits, static_cast<float>(m_nLogPixelsX));
    m_fHeight = converted(m_fHeight, from, m_nUnits, static_cast<float>(m_nLogPixelsY));
    if (m_nUnits == UNITS_PIXELS) {
        m_fWidth = std::trunc(m_fWidth);
        m_fHeight = std::trunc(m_fHeight);
    }
    UpdateData(FALSE);
    UpdateControls();
}

void CdlgCopySetup::OnFixedSize() {
    if (UpdateData(TRUE)) UpdateControls();
}

int vornGetUserCopyInfo(const char* pszCaption, int bAllowMetafile, VORN_COPY_INFO& info) {
    AFX_MANAGE_STATE(AfxGetStaticModuleState())
    CdlgCopySetup dialog(pszCaption);
    if (!bAllowMetafile) dialog.m_bAllowMetafile = FALSE;
    if (info.nFormat == CF_METAFILEPICT && dialog.m_bAllowMetafile)
        dialog.m_nType = CdlgCopySetup::TYPE_METAFILE;
    dialog.m_nUnits = info.nUnits;
    dialog.m_fWidth = info.fWidth;
    dialog.m_fHeight = info.fHeight;
    dialog.m_bFixedSize = info.bFixedSize;
    dialog.m_bBorder = info.bBorder;
    if (dialog.DoModal() != IDOK) return 0;

    info = {dialog.m_nType == CdlgCopySetup::TYPE_METAFILE ? CF_METAFILEPICT : CF_BITMAP,
            dialog.m_nUnits,
            dialog.m_fWidth,
            dialog.m_fHeight,
            dialog.m_bFixedSize,
            dialog.m_bBorder};
    return 1;
}
