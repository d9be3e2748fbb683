// SPDX-License-Identifier: MIT
#include "dlgdata.h"
#include <cstdio>

// Checking exchanged values, and what the user is told about wrong ones.

namespace vornafx {

namespace {

struct PromptText {
    UINT id;
    LPCTSTR text;
};

PromptText promptText(Prompt prompt) {
    switch (prompt) {
    case Prompt::integer:
        return {AFX_IDP_PARSE_INT, "Please enter an integer."};
    case Prompt::positiveInteger:
        return {AFX_IDP_PARSE_UINT, "Please enter a positive integer."};
    case Prompt::byte:
        return {AFX_IDP_PARSE_BYTE, "Please enter an integer between 0 and 255."};
    case Prompt::number:
        return {AFX_IDP_PARSE_REAL, "Please enter a number."};
    case Prompt::integerRange:
        return {AFX_IDP_PARSE_INT_RANGE, "Please enter an integer between %1 and %2."};
    case Prompt::numberRange:
        return {AFX_IDP_PARSE_REAL_RANGE, "Please enter a number between %1 and %2."};
    case Prompt::length:
        break;
    }
    return {AFX_IDP_PARSE_STRING_SIZE, "Please enter no more than %1 characters."};
}

} // namespace

void refuse(CDataExchange& exchange, Prompt prompt, std::initializer_list<CString> insertions) {
    // The application's string table may have the text in the user's language.
    const PromptText standard = promptText(prompt);
    CString text;
    if (!text.LoadString(standard.id)) text = standard.text;
    char mark[] = "%1";
    for (const CString& insertion : insertions) {
        text.Replace(mark, insertion);
        ++mark[1];
    }
    AfxMessageBox(text, MB_ICONEXCLAMATION, standard.id);
    exchange.Fail();
}

CString numberText(long long value) {
    char text[32];
    std::snprintf(text, sizeof(text), "%lld", value);
    return CString(text);
}

CString numberText(double value, int digits) {
    char text[64];
    std::snprintf(text, sizeof(text), "%.*g", digits, value);
    return CString(text);
}

} // namespace vornafx

namespace {

template <typename Number>
void checkRange(CDataExchange* pDX, Number value, Number least, Number most, vornafx::Prompt prompt) {
    // What the program itself puts into the dialog is not the user's fault. Undefined numbers are in no
    // range.
    if (!pDX->m_bSaveAndValidate || (value >= least && value <= most)) return;
    vornafx::refuse(*pDX, prompt, {vornafx::numberText(least), vornafx::numberText(most)});
}

} // namespace

void AFXAPI DDV_MinMaxByte(CDataExchange* pDX, BYTE value, BYTE minVal, BYTE maxVal) {
    checkRange(pDX, value, minVal, maxVal, vornafx::Prompt::integerRange);
}
void AFXAPI DDV_MinMaxShort(CDataExchange* pDX, short value, short minVal, short maxVal) {
    checkRange(pDX, value, minVal, maxVal, vornafx::Prompt::integerRange);
}
void AFXAPI DDV_MinMaxInt(CDataExchange* pDX, int value, int minVal, int maxVal) {
    checkRange(pDX, value, minVal, maxVal, vornafx::Prompt::integerRange);
}
void AFXAPI DDV_MinMaxLong(CDataExchange* pDX, long value, long minVal, long maxVal) {
    checkRange(pDX, value, minVal, maxVal, vornafx::Prompt::integerRange);
}
void AFXAPI DDV_MinMaxUInt(CDataExchange* pDX, UINT value, UINT minVal, UINT maxVal) {
    checkRange(pDX, value, minVal, maxVal, vornafx::Prompt::integerRange);
}
void AFXAPI DDV_MinMaxDWord(CDataExchange* pDX, DWORD value, DWORD minVal, DWORD maxVal) {
    checkRange(pDX, value, minVal, maxVal, vornafx::Prompt::integerRange);
}
void AFXAPI DDV_MinMaxFloat(CDataExchange* pDX, float const& value, float minVal, float maxVal) {
    checkRange(pDX, value, minVal, maxVal, vornafx::Prompt::numberRange);
}
void AFXAPI DDV_MinMaxDouble(CDataExchange* pDX, double const& value, double minVal, double maxVal) {
    checkRange(pDX, value, minVal, maxVal, vornafx::Prompt::numberRange);
}

void AFXAPI DDV_MaxChars(CDataExchange* pDX, CString const& value, int nChars) {
    if (pDX->m_bSaveAndValidate) {
        if (value.GetLength() > nChars)
            vornafx::refuse(*pDX, vornafx::Prompt::length, {vornafx::numberText(nChars)});
    } else if (pDX->m_idLastControl != 0 && pDX->m_bEditLastControl) {
        pDX->m_pDlgWnd->SendDlgItemMessage(static_cast<int>(pDX->m_idLastControl), EM_LIMITTEXT,
                                           static_cast<WPARAM>(nChars));
    }
}
