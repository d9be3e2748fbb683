// SPDX-License-Identifier: MIT
// The explorer as a whole process, from its start to the picture file, against the bare program that does the
// same.
#include "bench/harness.h"
#include "tests/support/temp_folder.h"
#include "vorn/bitmaps/dib_surface.h"
#include "vorn/bitmaps/image_codec.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <windows.h>

#include <psapi.h>

namespace {

std::string programPath(const char* name) {
    char path[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    return std::string(path).substr(0, std::string(path).find_last_of('\\') + 1) + name;
}

/// Runs a program to its end. With `peakMemory`, watches the most bytes that it has at a time.
void runProgram(const std::string& commandLine, std::size_t* peakMemory = nullptr) {
    STARTUPINFOA start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    std::string line = commandLine;
    if (!::CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                          &process))
        throw std::runtime_error("cannot run " + commandLine);
    PROCESS_MEMORY_COUNTERS memory = {};
    // The counter only grows, and is gone with the process.
    while (::WaitForSingleObject(process.hProcess, peakMemory != nullptr ? 2 : INFINITE) == WAIT_TIMEOUT) {
        if (::GetProcessMemoryInfo(process.hProcess, &memory, sizeof memory))
            *peakMemory = std::max<std::size_t>(*peakMemory, memory.PeakWorkingSetSize);
    }
    DWORD status = 1;
    ::GetExitCodeProcess(process.hProcess, &status);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    if (status != 0) throw std::runtime_error("failed: " + commandLine);
}

/// A folder with a square grid file in it, and the command lines of the two programs.
struct Job {
    explicit Job(int side) {
        std::string text;
        for (int row = 0; row < side; ++row) {
            for (int column = 0; column < side; ++column) {
                double x = static_cast<double>(column) / side, y = static_cast<double>(row) / side;
                char number[32];
                std::snprintf(number, sizeof number, column > 0 ? ",%.6f" : "%.6f",
                              40 * std::sin(12 * x) * std::cos(9 * y) + 100 * std::exp(-8 * (x * x + y * y)));
                text += number;
            }
            text += '\n';
        }
        grid = folder.write("grid.csv", {reinterpret_cast<const unsigned char*>(text.data()), text.size()});
    }
    std::string explorer() const {
        return programPath("explorer.exe") + " " + grid +
               " --hide axes --hide legend --hide toolbar --export " + folder.pathOf("ours.png") +
               " --size 1200x900";
    }
    std::string bare() const {
        return programPath("bare_gl.exe") + " " + grid + " " + folder.pathOf("bare.png") + " 1200 900";
    }

    support::TempFolder folder;
    std::string grid;
};

void load(CvornDIBSurface& surface, const std::string& file) {
    CvornImageCodec image;
    if (!image.Load(file.c_str()) ||
        !surface.Create(image.GetWidth(), image.GetHeight(), static_cast<HPALETTE>(nullptr)) ||
        !image.Draw(surface.GetHDC(), 0, 0, image.GetWidth(), image.GetHeight()))
        throw std::runtime_error("cannot read " + file);
    ::GdiFlush();
}

/// Programs that draw different things cannot be compared. Matrices of float and of double let a few edges
/// differ.
void requireSamePicture(const std::string& a, const std::string& b) {
    CvornDIBSurface first, second;
    load(first, a);
    load(second, b);
    bool sameSize = first.GetWidth() == second.GetWidth() && first.GetHeight() == second.GetHeight();
    std::size_t bytes = sameSize ? static_cast<std::size_t>(first.GetStorageWidth()) * first.GetHeight() : 0;
    std::size_t different = 0;
    for (std::size_t i = 0; i < bytes; ++i)
        different += std::abs(first.GetBitsAddress()[i] - second.GetBitsAddress()[i]) > 2;
    if (!sameSize || different > bytes / 1000)
        throw std::runtime_error("the explorer and the bare program draw different pictures");
}

bench::Sides sidesOf(int side) {
    auto job = std::make_shared<Job>(side);
    runProgram(job->explorer());
    runProgram(job->bare());
    requireSamePicture(job->folder.pathOf("ours.png"), job->folder.pathOf("bare.png"));
    return {[job] { runProgram(job->explorer()); }, [job] { runProgram(job->bare()); }};
}

const bench::Registration small{{"explorer: 200 x 200 CSV to PNG", "a bare GL program, as a process too", 1.2,
                                 [] { return sidesOf(200); }, 31}};
const bench::Registration large{{"explorer: 1000 x 1000 CSV to PNG", "a bare GL program, as a process too",
                                 1.1, [] { return sidesOf(1000); }, 15}};
const bench::Registration memory{bench::Figure{"explorer: peak memory at 1000 x 1000", "MB", 300, [] {
                                                   Job job(1000);
                                                   std::size_t bytes = 0;
                                                   runProgram(job.explorer(), &bytes);
                                                   return static_cast<double>(bytes) / 1e6;
                                               }}};

} // namespace
