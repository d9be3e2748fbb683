// SPDX-License-Identifier: MIT
#include "bench/harness.h"
#include "vorn/bitmaps/dib.h"
#include "vorn/bitmaps/dib_palette.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <random>
#include <vector>

namespace {

using Bytes = std::vector<BYTE>;

void make(CvornDIB& dib, int width, int height, int bits, BYTE* pixels) {
    BITMAPINFO info = {};
    info.bmiHeader = {
        sizeof(BITMAPINFOHEADER), width, height, 1, static_cast<WORD>(bits), BI_RGB, 0, 0, 0, 0, 0};
    info.bmiHeader.biClrUsed = bits == 8 ? 1 : 0;
    dib.Create(&info, pixels, FALSE);
}

/// A 24-bit BMP file of 4096 x 4096 pixels in the temporary folder, removed at the end.
struct LargeFile {
    static constexpr int side = 4096;
    static constexpr DWORD size = 1078 + side * side * 3;

    explicit LargeFile(const char* name) : path((std::filesystem::temp_directory_path() / name).string()) {
        make(dib, side, side, 24, pixels.data());
    }
    ~LargeFile() { std::remove(path.c_str()); }

    std::string path;
    Bytes pixels = Bytes(size - 1078, 100);
    CvornDIB dib;
};

const bench::Registration load{{"dib: load of a 48 MB file", "one read of its bytes", 1.3, [] {
                                    const auto file = std::make_shared<LargeFile>("vorn_bench_load.bmp");
                                    file->dib.Save(file->path.c_str());
                                    return bench::Sides{[=] {
                                                            CvornDIB dib;
                                                            dib.Load(file->path.c_str());
                                                        },
                                                        [=] {
                                                            CFile plain(file->path.c_str(), CFile::modeRead);
                                                            const std::unique_ptr<BYTE[]> bytes(
                                                                new BYTE[LargeFile::size]);
                                                            plain.Read(bytes.get(), LargeFile::size);
                                                        }};
                                }}};

const bench::Registration save{{"dib: save of a 48 MB file", "one write of its bytes", 1.3, [] {
                                    const auto ours = std::make_shared<LargeFile>("vorn_bench_save.bmp");
                                    const auto plain = std::make_shared<LargeFile>("vorn_bench_write.bmp");
                                    plain->pixels.resize(LargeFile::size);
                                    return bench::Sides{[=] { ours->dib.Save(ours->path.c_str()); },
                                                        [=] {
                                                            CFile file(plain->path.c_str(),
                                                                       CFile::modeCreate | CFile::modeWrite);
                                                            file.Write(plain->pixels.data(), LargeFile::size);
                                                        }};
                                }}};

/// Two 8-bit images of 2048 x 2048; a third of the source pixels is of the key colour.
struct Pair {
    static constexpr int side = 2048;
    static constexpr DWORD key = 7;

    Pair() {
        std::minstd_rand random;
        for (BYTE& pixel : source)
            pixel = random() % 3 == 0 ? key : static_cast<BYTE>(random() >> 8);
        make(from, side, side, 8, source.data());
        make(to, side, side, 8, target.data());
    }
    void copyPlainly() { std::memcpy(target.data(), source.data(), target.size()); }

    Bytes source = Bytes(side * side), target = Bytes(side * side);
    CvornDIB from, to;
};

template <typename Operation>
auto against(Operation operation) {
    return [operation] {
        const auto pair = std::make_shared<Pair>();
        return bench::Sides{[=] { operation(pair->from, &pair->to); }, [=] { pair->copyPlainly(); }};
    };
}

constexpr int side = Pair::side;
const char* const copying = "memcpy of as many bytes";
const bench::Registration copy{{"dib: CopyBits", copying, 1.1, against([](CvornDIB& from, CvornDIB* to) {
                                    from.CopyBits(to, 0, 0, side, side, 0, 0);
                                })}};
const bench::Registration copyOpaque{
    {"dib: CopyBits, transparent", copying, 4,
     against([](CvornDIB& from, CvornDIB* to) { from.CopyBits(to, 0, 0, side, side, 0, 0, Pair::key); })}};
const bench::Registration stretch{{"dib: StretchBits", copying, 4, against([](CvornDIB& from, CvornDIB* to) {
                                       from.StretchBits(to, 0, 0, side, side, 0, 0, 1400, 1300);
                                   })}};
const bench::Registration stretchOpaque{
    {"dib: StretchBits, transparent", copying, 4, against([](CvornDIB& from, CvornDIB* to) {
         from.StretchBits(to, 0, 0, side, side, 0, 0, 1400, 1300, Pair::key);
     })}};
const bench::Registration twice{{"dib: DoubleBits", copying, 3, against([](CvornDIB& from, CvornDIB* to) {
                                     from.DoubleBits(to, 0, 0, 0, 0, side / 2, side / 2);
                                 })}};
const bench::Registration twiceOpaque{
    {"dib: DoubleBits, transparent", copying, 3, against([](CvornDIB& from, CvornDIB* to) {
         from.DoubleBits(to, 0, 0, 0, 0, side / 2, side / 2, Pair::key);
     })}};

/// A 24-bit picture with a photograph's shading and grain (sky, a lit ball, ground): 22 thousand colours.
struct Photograph {
    static constexpr int side = 1024;

    Photograph() {
        std::minstd_rand random;
        std::normal_distribution<double> grain(0, 1.5);
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                const double u = x / double(side), v = y / double(side);
                const double dx = (u - 0.6) / 0.25, dy = (v - 0.5) / 0.25, height = 1 - dx * dx - dy * dy;
                double red = 110 + 90 * v, green = 150 + 70 * v, blue = 235 - 20 * u;
                if (v < 0.4) {
                    const double light = 0.6 + 0.3 * std::sin(40 * u + 15 * v) * v;
                    red = 150 * light, green = 120 * light, blue = 70 * light;
                }
                if (height > 0) {
                    const double light =
                        0.2 + 0.8 * std::max(0.0, 0.5 * dy - 0.5 * dx + 0.7 * std::sqrt(height));
                    red = 220 * light, green = 60 * light + 20, blue = 50 * light + 15;
                }
                const double noise = grain(random);
                BYTE* pixel = &picture[static_cast<std::size_t>(y * side + x) * 3];
                pixel[0] = static_cast<BYTE>(std::clamp(blue + noise + grain(random) / 2, 0.0, 255.0));
                pixel[1] = static_cast<BYTE>(std::clamp(green + noise + grain(random) / 2, 0.0, 255.0));
                pixel[2] = static_cast<BYTE>(std::clamp(red + noise + grain(random) / 2, 0.0, 255.0));
            }
        }
        palette.CreateWash();
    }

    Bytes picture = Bytes(side * side * 3), target = picture;
    CvornDIBPal palette;
    CvornDIB dib;
};

const bench::Registration mapColours{
    {"dib: MapColorsToPalette, 1 M pixels", "one palette query for each pixel", 0.05, [] {
         const auto photograph = std::make_shared<Photograph>();
         return bench::Sides{[=] {
                                 photograph->target = photograph->picture;
                                 make(photograph->dib, Photograph::side, Photograph::side, 24,
                                      photograph->target.data());
                                 photograph->dib.MapColorsToPalette(&photograph->palette);
                             },
                             [=] {
                                 const Bytes& picture = photograph->picture;
                                 PALETTEENTRY entries[256];
                                 photograph->palette.GetPaletteEntries(0, 256, entries);
                                 for (std::size_t i = 0; i < picture.size(); i += 3) {
                                     const UINT nearest = photograph->palette.GetNearestPaletteIndex(
                                         RGB(picture[i + 2], picture[i + 1], picture[i]));
                                     photograph->target[i] = entries[nearest].peBlue;
                                     photograph->target[i + 1] = entries[nearest].peGreen;
                                     photograph->target[i + 2] = entries[nearest].peRed;
                                 }
                             }};
     }}};

} // namespace
