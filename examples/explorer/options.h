// SPDX-License-Identifier: MIT
#pragma once

#include "common/command_line.h"

#include <vorn/vorn.h>

#include <array>
#include <optional>
#include <string>
#include <vector>

using examples::OptionsError;

/// Where the first picture looks from.
enum class ViewPoint { threeD, front, top, side };

/// Where the legend stands: the text panel's alignments.
struct LegendPlace {
    int horizontal = TPA_LEFT;
    int vertical = TPA_BOTTOM;
};

/// What the command line asks for.
struct Options {
    std::string file;                                             ///< the grid to show
    std::string exportFile;                                       ///< the picture to write
    bool copy = false;                                            ///< put a picture on the clipboard
    bool metafile = false;                                        ///< put a metafile there
    std::string printer;                                          ///< where to print a page
    CvornImageCodec::Format format = CvornImageCodec::FORMAT_PNG; ///< by the picture's name
    int width = 1200;                                             ///< of the picture, in pixels
    int height = 900;
    bool sized = false; ///< the command line gave the size
    std::string ramp;
    ViewPoint viewPoint = ViewPoint::threeD;
    std::array<std::string, 3> titles;     ///< of the axes; empty: from the grid's headers
    std::array<std::string, 3> planeFiles; ///< pictures on the planes xy, xz and yz
    std::vector<DWORD> hidden;             ///< parts of the axes not to be shown
    std::optional<LegendPlace> legend = LegendPlace();
    bool toolbar = true;
    double exaggeration = 1; ///< from 0.1 to 10
    bool sheet = false;      ///< the data sheet is shown
    std::string saveFile;    ///< where to save the chart's ranges and parameters
    std::string loadFile;    ///< where to load them from
    bool help = false;

    /// The chart goes somewhere else, and no window is shown.
    bool isOutput() const { return !exportFile.empty() || needsWindow(); }
    /// The output needs the window's device, and its size.
    bool needsWindow() const { return copy || metafile || !printer.empty(); }
};

/// Reads the arguments after the program's name. @throws OptionsError
Options parseOptions(int count, const char* const* arguments);

/// The text that --help prints.
std::string usageText();
