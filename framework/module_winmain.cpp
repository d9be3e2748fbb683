// SPDX-License-Identifier: MIT
// The start of a program that has neither `main` nor `WinMain`: its application object runs.

#include "afxapp_.h"

int WINAPI WinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPSTR lpCmdLine, int nCmdShow) {
    return AfxWinMain(hInstance, hPrevInstance, lpCmdLine, nCmdShow);
}
