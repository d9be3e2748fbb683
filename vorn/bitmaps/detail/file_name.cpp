// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/detail/file_name.h"

#include <afxdlgs.h>

namespace vorn::detail {

CString givenOrChosenName(const char* name, FileDialog kind, const char* filter) {
    if (name != nullptr && *name != '\0') return name;
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    const bool isOpening = kind == FileDialog::Open;
    CFileDialog dialog(isOpening, nullptr, nullptr,
                       OFN_HIDEREADONLY | (isOpening ? OFN_FILEMUSTEXIST : OFN_OVERWRITEPROMPT), filter);
    if (dialog.DoModal() != IDOK) return CString();
    return dialog.GetPathName();
}

} // namespace vorn::detail
