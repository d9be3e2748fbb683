// SPDX-License-Identifier: MIT
#pragma once

/// Metafile device contexts.

#include <afxwin.h>

/// A DC that records into a metafile. Questions about a device need an attribute DC: SetAttribDC with one
/// that lives as long as this; until then there is none. Ended without Close, the metafile is thrown away.
class VORNAFX_API CMetaFileDC : public CDC {
    DECLARE_DYNAMIC(CMetaFileDC)
public:
    CMetaFileDC() = default;
    ~CMetaFileDC() override;

    /// A Windows metafile, in memory or in a file.
    BOOL Create(LPCTSTR lpszFilename = nullptr);
    /// An enhanced metafile; lpBounds in HIMETRIC. lpszDescription is two zero-ended strings and one more
    /// zero.
    BOOL CreateEnhanced(CDC* pDCRef, LPCTSTR lpszFileName, LPCRECT lpBounds, LPCTSTR lpszDescription);
    /// Ends the recording; the metafile belongs to the caller. Null on failure.
    HMETAFILE Close();
    HENHMETAFILE CloseEnhanced();
};
