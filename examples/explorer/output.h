// SPDX-License-Identifier: MIT
#pragma once

#include "options.h"

#include <vorn/vorn.h>

#include <string>

class CExplorerView;

/// The ways in which a chart leaves its window. All need the window, which may be hidden, and leave the chart
/// in it as it was. All throw std::runtime_error, with a message for the user, when it cannot be done.

/// To the clipboard, in the format and the size that the settings say.
void copyChart(CExplorerView& view, CvornCopyInfo settings);
/// To the clipboard as a metafile, whatever format the settings say.
void copyChartAsMetafile(CExplorerView& view, CvornCopyInfo settings);
/// To a .bmp, .jpg or .png file, in the size that the settings say. A file that cannot be written stays as it
/// was.
void saveChartPicture(CExplorerView& view, CvornCopyInfo settings, const std::string& file);
/// On one page of a printer, as large as its margins allow, in the given proportions.
void printChart(CExplorerView& view, CDC& printer, const CString& title, CSize proportions);

/// All of that which the command line asks for, except its picture file.
void outputChart(CExplorerView& view, const Options& options);

/// The largest rectangle of these proportions inside a page, in its middle. Nothing may be empty.
CRect centredOn(CSize page, CSize margin, CSize proportions);
