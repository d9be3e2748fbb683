// SPDX-License-Identifier: MIT
#include "points.h"
#include "scatter_view.h"

#include "common/chart_app.h"
#include "common/text_file.h"

#include <stdexcept>
#include <utility>

namespace {

constexpr int ownPoints = 1; ///< the program's resource

class CScatterApp : public examples::CChartApp {
public:
    CScatterApp()
        : CChartApp("scatter",
                    "Shows points in space: a CSV or TSV file of up to 5000 rows of name, class, x, y, z and "
                    "value,\n"
                    "with titles in the first row. Without a file: stars round the sun.\n"
                    "\n"
                    "  --point NAME  point at this one\n",
                    {"--point"}) {}

protected:
    std::unique_ptr<CvornOGLWnd> makeView(const examples::CommandLine& line) override {
        Points data = line.file.empty() ? Points::parse(examples::embeddedText(ownPoints), "scatter")
                                        : Points::parse(examples::readTextFile(line.file), line.file);
        auto view = std::make_unique<CScatterView>(std::move(data));
        if (const auto name = line.values.find("--point"); name != line.values.end()) {
            if (!view->pointAt(name->second)) throw std::runtime_error("there is no point " + name->second);
        }
        return view;
    }
};

CScatterApp theApp;

} // namespace
