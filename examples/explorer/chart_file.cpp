// SPDX-License-Identifier: MIT
#include "chart_file.h"

#include <stdexcept>

namespace {

constexpr DWORD mark = 0x6E726F76; // "vorn", so that no other file is taken for a chart

void transfer(ChartAxes& axes, const std::string& name, UINT openFlags, UINT mode, const char* failure) {
    try {
        CFile file(name.c_str(), openFlags);
        CArchive archive(&file, mode);
        DWORD found = mark;
        if (archive.IsStoring())
            archive << found;
        else
            archive >> found;
        if (found != mark) throw std::runtime_error(name + ": is not a chart file");
        axes.serialize(archive);
        archive.Close();
    } catch (CException* exception) {
        exception->Delete();
        throw std::runtime_error(name + failure);
    }
}

} // namespace

void loadChart(ChartAxes& axes, const Options& options) {
    if (options.loadFile.empty()) return;
    transfer(axes, options.loadFile, CFile::modeRead | CFile::shareDenyWrite, CArchive::load,
             ": cannot be read as a chart file");
}

void saveChart(ChartAxes& axes, const Options& options) {
    if (options.saveFile.empty()) return;
    transfer(axes, options.saveFile, CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive,
             CArchive::store, ": cannot be written");
}
