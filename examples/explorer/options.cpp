// SPDX-License-Identifier: MIT
#include "options.h"

#include "chart_axes.h"

#include "common/colour_ramp.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <utility>

namespace {

using examples::ColourRamp;

constexpr std::array<std::pair<std::string_view, ViewPoint>, 4> viewPoints = {{{"3d", ViewPoint::threeD},
                                                                               {"front", ViewPoint::front},
                                                                               {"top", ViewPoint::top},
                                                                               {"side", ViewPoint::side}}};

std::string rampNames() {
    std::string names;
    for (std::string_view name : ColourRamp::names()) {
        if (!names.empty()) names += ", ";
        names += name;
    }
    return names;
}

ViewPoint parseViewPoint(std::string_view text) {
    for (auto [name, viewPoint] : viewPoints) {
        if (name == text) return viewPoint;
    }
    throw OptionsError("--view takes one of 3d, front, top, side");
}

/// Reads "X,Y,Z"; a title may be left empty.
std::array<std::string, 3> parseTitles(std::string_view text) {
    std::array<std::string, 3> titles;
    for (std::size_t i = 0; i < titles.size(); ++i) {
        const std::size_t comma = i + 1 < titles.size() ? text.find(',') : text.size();
        if (comma == std::string_view::npos) throw OptionsError("--titles takes three texts: X,Y,Z");
        titles[i] = text.substr(0, comma);
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    return titles;
}

/// Reads "xy=FILE".
void parsePlane(std::string_view text, Options& options) {
    constexpr std::array<std::string_view, 3> planes = {"xy=", "xz=", "yz="};
    for (std::size_t i = 0; i < planes.size(); ++i) {
        if (!text.starts_with(planes[i])) continue;
        options.planeFiles[i] = text.substr(planes[i].size());
        return;
    }
    throw OptionsError("--plane takes xy=FILE, xz=FILE or yz=FILE");
}

struct NamedPlace {
    std::string_view name;
    LegendPlace place;
};
constexpr std::array<NamedPlace, 9> legendPlaces = {{{"top-left", {TPA_LEFT, TPA_TOP}},
                                                     {"top", {TPA_HCENTER, TPA_TOP}},
                                                     {"top-right", {TPA_RIGHT, TPA_TOP}},
                                                     {"left", {TPA_LEFT, TPA_VCENTER}},
                                                     {"centre", {TPA_HCENTER, TPA_VCENTER}},
                                                     {"right", {TPA_RIGHT, TPA_VCENTER}},
                                                     {"bottom-left", {TPA_LEFT, TPA_BOTTOM}},
                                                     {"bottom", {TPA_HCENTER, TPA_BOTTOM}},
                                                     {"bottom-right", {TPA_RIGHT, TPA_BOTTOM}}}};

std::optional<LegendPlace> parseLegendPlace(std::string_view text) {
    if (text == "none") return std::nullopt;
    for (const NamedPlace& known : legendPlaces) {
        if (known.name == text) return known.place;
    }
    throw OptionsError("--legend takes top-left, top, top-right, left, centre, right, bottom-left, bottom, "
                       "bottom-right or none");
}

double parseExaggeration(std::string_view text) {
    double factor = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, factor);
    if (read.ec != std::errc() || read.ptr != end || !(factor >= 0.1 && factor <= 10))
        throw OptionsError("--exaggeration takes a number from 0.1 to 10");
    return factor;
}

/// Reads the name of a part of the axes.
DWORD parsePart(std::string_view text) {
    if (text == "grids") return AXES_GRIDS;
    if (text == "tips") return AXES_TIPS;
    if (text == "labels") return ChartAxes::SHOW_LABELS;
    if (text == "planes") return ChartAxes::SHOW_PLANES;
    if (text == "axes") return ChartAxes::SHOW_AXES;
    throw OptionsError("--hide takes one of axes, grids, tips, labels, planes, legend, toolbar");
}

/// Reads the name of a part of the picture.
void parseHidden(std::string_view text, Options& options) {
    if (text == "legend")
        options.legend.reset();
    else if (text == "toolbar")
        options.toolbar = false;
    else
        options.hidden.push_back(parsePart(text));
}

} // namespace

Options parseOptions(int count, const char* const* arguments) {
    Options options;
    options.ramp = ColourRamp::names().front();
    for (int i = 0; i < count; ++i) {
        std::string_view argument = arguments[i];
        auto value = [&]() -> std::string_view {
            if (i + 1 == count) throw OptionsError(std::string(argument) + " needs a value");
            return arguments[++i];
        };
        if (argument == "--help" || argument == "-h") {
            options.help = true;
            return options;
        } else if (argument == "--export") {
            options.exportFile = value();
            options.format = examples::pictureFormatOf(options.exportFile);
        } else if (argument == "--copy") {
            options.copy = true;
        } else if (argument == "--metafile") {
            options.metafile = true;
        } else if (argument == "--print") {
            options.printer = value();
            if (options.printer.empty()) throw OptionsError("--print takes the name of a printer");
        } else if (argument == "--size") {
            const CSize size = examples::parsePictureSize(value());
            options.width = size.cx;
            options.height = size.cy;
            options.sized = true;
        } else if (argument == "--ramp") {
            options.ramp = value();
            if (!ColourRamp::named(options.ramp)) throw OptionsError("--ramp takes one of " + rampNames());
        } else if (argument == "--view") {
            options.viewPoint = parseViewPoint(value());
        } else if (argument == "--titles") {
            options.titles = parseTitles(value());
        } else if (argument == "--plane") {
            parsePlane(value(), options);
        } else if (argument == "--hide") {
            parseHidden(value(), options);
        } else if (argument == "--exaggeration") {
            options.exaggeration = parseExaggeration(value());
        } else if (argument == "--legend") {
            options.legend = parseLegendPlace(value());
        } else if (argument == "--sheet") {
            options.sheet = true;
        } else if (argument == "--save") {
            options.saveFile = value();
        } else if (argument == "--load") {
            options.loadFile = value();
        } else if (argument.starts_with("--")) {
            throw OptionsError("there is no option " + std::string(argument));
        } else if (options.file.empty()) {
            options.file = argument;
        } else {
            throw OptionsError("only one file can be shown, found " + std::string(argument) + " too");
        }
    }
    if (options.file.empty()) throw OptionsError("which file? (--help tells more)");
    if (options.copy && options.metafile)
        throw OptionsError("--copy and --metafile: the clipboard holds one of them");
    if (options.sized && !options.isOutput())
        throw OptionsError("--size goes with --export, --copy, --metafile or --print");
    return options;
}

std::string usageText() {
    return "explorer FILE [--export PICTURE] [--copy] [--metafile] [--print PRINTER] [OPTIONS]\n"
           "\n"
           "Shows a grid of numbers, a CSV or TSV file of up to 1000 x 1000, as a surface.\n"
           "\n"
           "  --export PICTURE  write a .png, .jpg or .bmp file and show no window\n"
           "  --copy            copy the chart to the clipboard, as Copy setup says\n"
           "  --metafile        copy it as a metafile\n"
           "  --print PRINTER   print it on a page; these three show no window either\n"
           "  --size WxH        its size in pixels, on a page its proportions (1200x900; else the window's)\n"
           "  --view NAME       3d, front, top or side (3d)\n"
           "  --ramp NAME       the colours: " +
           rampNames() +
           "\n"
           "  --titles X,Y,Z    what runs along the axes (from the file's headers)\n"
           "  --plane xy=FILE   a picture on that plane of the axes (also xz, yz)\n"
           "  --hide PART       without axes, grids, tips, labels, planes, legend or toolbar\n"
           "  --legend PLACE    top-left, top, top-right, left, centre, right, bottom-left, bottom,\n"
           "                    bottom-right or none (bottom-left)\n"
           "  --exaggeration F  how many times as high, 0.1 to 10 (1)\n"
           "  --sheet           with the data sheet: a row of the table with its statistics in each line\n"
           "  --save CHART      write the chart's ranges and parameters to a file\n"
           "  --load CHART      take them from such a file\n"
           "\n"
           "In the window: drag to turn, Ctrl+drag to move, wheel or up and down keys to zoom,\n"
           "right button while the left is held to come back; D, F, T and S for the 3-D, front,\n"
           "top and side views; G, A, L, P and I for grids, tips, labels, planes and\n"
           "lighting; E and B for legend and toolbar; right click for these and to copy, export and\n"
           "print, on a slider of the toolbar to put it back.\n"
           "R for the data sheet: its selected rows (Ctrl+click for several) are lines on the surface,\n"
           "in the colours of their cells; Ctrl+C and Ctrl+V copy and paste rows, wheel and page keys\n"
           "scroll it.\n";
}
