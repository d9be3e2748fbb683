// SPDX-License-Identifier: MIT
#include "export.h"

#include "chart_file.h"
#include "explorer_view.h"

#include <stdexcept>
#include <utility>

void exportPicture(examples::Grid grid, const Options& options) {
    CvornDIBSurface picture;
    if (!picture.Create(options.width, options.height, static_cast<HPALETTE>(nullptr)))
        throw std::runtime_error("there is no memory for a picture of that size");
    {
        CExplorerView view(std::move(grid), options);
        loadChart(view.axes(), options);
        view.lookFrom(options.viewPoint);
        if (!view.drawPicture(picture)) throw std::runtime_error("OpenGL cannot draw here");
        saveChart(view.axes(), options);
    }
    if (!CvornImageCodec::SaveBits(options.exportFile.c_str(), options.format, picture.GetBitsAddress(),
                                   options.width, options.height, 24))
        throw std::runtime_error(options.exportFile + ": cannot be written");
}
