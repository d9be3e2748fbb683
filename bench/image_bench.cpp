// SPDX-License-Identifier: MIT
#include "bench/harness.h"
#include "bench/picture_files.h"
#include "vorn/bitmaps/image_codec.h"

#include <memory>

namespace {

bench::Sides saves(int format, const GUID& container) {
    auto bits = std::make_shared<std::vector<BYTE>>(bench::chartPicture());
    auto plain = std::make_shared<bench::PlainEncoder>();
    auto files = std::make_shared<bench::PictureFiles>();
    return {[=, name = files->ours.string()] {
                CvornImageCodec::SaveBits(name.c_str(), format, bits->data(), bench::pictureWidth,
                                          bench::pictureHeight, 24);
            },
            [=] { plain->save(files->plain.c_str(), container, *bits); }};
}

const bench::Registration png{{"image: save PNG, 2048 x 1536", "WIC called directly", 1.05,
                               [] { return saves(CvornImageCodec::FORMAT_PNG, GUID_ContainerFormatPng); }}};
const bench::Registration jpeg{{"image: save JPEG, 2048 x 1536", "WIC called directly", 1.05, [] {
                                    return saves(CvornImageCodec::FORMAT_JPEG, GUID_ContainerFormatJpeg);
                                }}};
const bench::Registration bmp{{"image: save BMP, 2048 x 1536", "WIC called directly", 1.05,
                               [] { return saves(CvornImageCodec::FORMAT_BMP, GUID_ContainerFormatBmp); }}};

} // namespace
