// SPDX-License-Identifier: MIT
#pragma once

#include "command_line.h"

#include <vorn/vorn.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace examples {

/// The application of an example that shows one chart: in a window or, with --export, in a picture file.
class CChartApp : public CWinApp {
public:
    /// The name of the program, what --help says below the usage, and options of its own, which take a value.
    CChartApp(std::string name, std::string help, std::vector<std::string> options = {});

    BOOL InitInstance() override;
    int ExitInstance() override;

protected:
    /// Makes the chart of a file or, without one, of the example's own data.
    /// Throws an exception with a message for the user when there is none.
    virtual std::unique_ptr<CvornOGLWnd> makeView(const CommandLine& line) = 0;

private:
    void run(const CommandLine& line);
    void createWindow(CSize size);

    std::string m_name;
    std::string m_help;
    std::vector<std::string> m_options;
    std::unique_ptr<CvornOGLWnd> m_view;
    int m_status = 0;
};

/// Draws a view off-screen, without any window, and writes the picture.
/// @throws std::runtime_error when it cannot be drawn or written
void exportPicture(CvornOGLWnd& view, const std::string& file, CSize size);

/// A text that is part of the program, as RCDATA of that number.
std::string_view embeddedText(int resource);

} // namespace examples
