// SPDX-License-Identifier: MIT
#include "vorn/copy/copy_info.h"

#include "vorn/copy/copy_setup_dialog.h"
#include "vorn/detail/truncate.h"

#include <memory>

namespace {

constexpr const char* profileEntry = "Copy Info";

CSize deviceSize(CDC* dc, double width, double height) {
    CSize size(vorn::detail::truncateToInt(width), vorn::detail::truncateToInt(height));
    if (dc == nullptr) return {0, 0};
    dc->HIMETRICtoDP(&size);
    return size;
}

} // namespace

CvornCopyInfo::CvornCopyInfo() : VORN_COPY_INFO{CF_BITMAP, CdlgCopySetup::UNITS_CM, 15, 15, FALSE, FALSE} {}

void CvornCopyInfo::Load(CWinApp* pApp, const char* pszSection) {
    BYTE* data = nullptr;
    UINT bytes = 0;
    if (!pApp->GetProfileBinary(pszSection, profileEntry, &data, &bytes)) return;
    const std::unique_ptr<BYTE[]> owned(data);
    VORN_COPY_INFO* record = this;
    if (bytes == sizeof(VORN_COPY_INFO)) memcpy(record, data, sizeof(VORN_COPY_INFO));
}

void CvornCopyInfo::Save(CWinApp* pApp, const char* pszSection) {
    VORN_COPY_INFO* record = this;
    pApp->WriteProfileBinary(pszSection, profileEntry, reinterpret_cast<BYTE*>(record),
                             sizeof(VORN_COPY_INFO));
}

int CvornCopyInfo::Setup(int bAllowMetafile, const char* pszCaption) {
    AFX_MANAGE_STATE(AfxGetStaticModuleState())
    return vornGetUserCopyInfo(pszCaption, bAllowMetafile, *this);
}

CSize CvornCopyInfo::GetDPSize(CDC* pDC, CWnd* pWnd) const {
    if (!bFixedSize && pWnd != nullptr) {
        CRect client;
        pWnd->GetClientRect(&client);
        return client.Size();
    }
    switch (nUnits) {
    case CdlgCopySetup::UNITS_PIXELS:
        return {vorn::detail::truncateToInt(fWidth), vorn::detail::truncateToInt(fHeight)};
    case CdlgCopySetup::UNITS_CM:
        return deviceSize(pDC, fWidth * 1000.0F + 0.5, fHeight * 1000.0F + 0.5);
    case CdlgCopySetup::UNITS_INCHES:
        return deviceSize(pDC, fWidth * 2.54 * 1000 + 0.5, fHeight * 2.54 * 1000 + 0.5);
    default:
        return {0, 0};
    }
}
