// SPDX-License-Identifier: MIT
#pragma once

/// Marks what the toolkit's DLL gives to applications.
#if defined(VORN_EXPORTS)
#define VORN_API __declspec(dllexport)
#else
#define VORN_API __declspec(dllimport)
#endif
