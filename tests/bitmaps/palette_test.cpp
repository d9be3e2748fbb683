// SPDX-License-Identifier: MIT
#include "tests/bitmaps/dib_samples.h"
#include "tests/support/canvas.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/handle_counts.h"
#include "tests/support/temp_folder.h"
#include "vorn/bitmaps/dib_palette.h"

#include <gtest/gtest.h>

namespace {

using support::Bytes;
using support::HandleCounts;

/// An entry's colour with its flags in the top byte.
DWORD entryOf(const CPalette& palette, UINT index) {
    PALETTEENTRY entry = {};
    palette.GetPaletteEntries(index, 1, &entry);
    return RGB(entry.peRed, entry.peGreen, entry.peBlue) | DWORD{entry.peFlags} << 24;
}

Bytes operator+(Bytes first, const Bytes& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

/// A chunk with its size, which may be claimed to be another one.
Bytes chunk(const char* id, const Bytes& contents, DWORD wrongSize = 0) {
    const DWORD size = wrongSize != 0 ? wrongSize : static_cast<DWORD>(contents.size());
    Bytes bytes(id, id + 4);
    for (int shift = 0; shift < 32; shift += 8)
        bytes.push_back(static_cast<BYTE>(size >> shift));
    return bytes + contents + Bytes(contents.size() % 2, 0);
}

Bytes riff(const char* form, const Bytes& chunks, DWORD wrongSize = 0) {
    return chunk("RIFF", Bytes(form, form + 4) + chunks, wrongSize);
}

const Bytes threeColours = {0, 3, 3, 0, 1, 2, 3, 0, 5, 6, 7, 0, 9, 10, 11, 4};
const Bytes data = chunk("data", threeColours), good = riff("PAL ", data);

bool load(CvornDIBPal& palette, Bytes bytes) {
    MMIOINFO info = {};
    info.pchBuffer = reinterpret_cast<HPSTR>(bytes.data());
    info.cchBuffer = static_cast<LONG>(bytes.size());
    info.fccIOProc = FOURCC_MEM;
    const HMMIO file = ::mmioOpen(nullptr, &info, MMIO_READ);
    const bool isLoaded = palette.Load(file);
    ::mmioClose(file, 0);
    return isLoaded;
}

TEST(Palette, WashIsACubeAndGreysBetweenTheSystemsColours) {
    CvornDIBPal palette, system;
    ASSERT_TRUE(palette.CreateWash() && system.CreateSystemColorPalette());
    constexpr DWORD fixed = DWORD{PC_NOCOLLAPSE} << 24;
    const int levels[] = {0, 42, 85, 127, 170, 212};
    const int greys[] = {0,   12,  25,  38,  51,  63,  76,  89,  102, 114,
                         127, 140, 153, 165, 178, 191, 204, 216, 229, 242};
    for (UINT i = 0; i < 256; ++i) {
        const bool isSystem = i < 10 || i >= 246;
        const UINT cube = i - 10;
        const DWORD wash = i >= 226 ? RGB(1, 1, 1) * greys[(i - 226) % 20]
                                    : RGB(levels[cube / 36 % 6], levels[cube / 6 % 6], levels[cube % 6]);
        EXPECT_EQ(entryOf(palette, i), isSystem ? entryOf(system, i) : wash | fixed) << i;
        EXPECT_TRUE(isSystem || entryOf(system, i) == 0) << i;
    }
    EXPECT_EQ(palette.GetNumColors(), 256);
}

TEST(Palette, ComesFromColoursAndImagesAndLeavesNoHandles) {
    support::HeaderBlock deep(1, 1, 24), shallow(1, 1, 4);
    shallow.header.biClrUsed = 7;
    BYTE pixel[4] = {};
    CvornDIB image;
    CvornDIBPal palette;
    ASSERT_TRUE(image.Create(shallow.info(), pixel, FALSE));
    ASSERT_TRUE(palette.CreateWash());
    const HandleCounts before = HandleCounts::now();
    for (int i = 0; i < 100; ++i)
        ASSERT_TRUE(palette.Create(deep.colours, 2) && palette.CreateWash() &&
                    palette.CreateSystemColorPalette());
    for (bool isImage : {true, false}) {
        ASSERT_TRUE(isImage ? palette.Create(&image) : palette.Create(shallow.info()));
        EXPECT_EQ(palette.GetNumColors(), 7);
        EXPECT_EQ(entryOf(palette, 6), static_cast<DWORD>(RGB(6, 249, 72)));
    }
    const HGDIOBJ held = palette.m_hObject;
    ASSERT_TRUE(image.Create(deep.info(), pixel, FALSE));
    for (int n : {0, -2, 65536})
        EXPECT_FALSE(palette.Create(deep.colours, n)) << n;
    EXPECT_FALSE(palette.Create(static_cast<RGBQUAD*>(nullptr), 2) ||
                 palette.Create(static_cast<CvornDIB*>(nullptr)) ||
                 palette.Create(static_cast<BITMAPINFO*>(nullptr)));
    EXPECT_FALSE(palette.Create(deep.info()) || palette.Create(&image));
    EXPECT_EQ(palette.m_hObject, held);
    EXPECT_EQ(HandleCounts::now(), before);
}

TEST(Palette, DrawsItselfAsAGrid) {
    support::HeaderBlock block(1, 1, 8);
    CvornDIBPal palette;
    ASSERT_TRUE(palette.Create(block.colours, 18));
    const support::Canvas canvas(200, 200);
    CRect place(10, 20, 170, 180);
    const HandleCounts before = HandleCounts::now();
    palette.Draw(canvas.dc(), &place, FALSE);
    palette.Draw(static_cast<CDC*>(nullptr), &place, FALSE);
    EXPECT_EQ(HandleCounts::now(), before);
    constexpr COLORREF white = RGB(255, 255, 255);
    for (int i = 0; i < 20; ++i) {
        const int x = 10 + 10 * (i % 16), y = 20 + 10 * (i / 16);
        EXPECT_EQ(canvas.at(x + 5, y + 5), i < 18 ? entryOf(palette, static_cast<UINT>(i)) : white) << i;
        EXPECT_EQ(canvas.at(x + 10, y + 5), i < 18 ? 0u : white) << i; // the shared border
    }
    EXPECT_EQ(canvas.at(9, 25) + canvas.at(15, 19) + canvas.at(15, 30), 0u);
    EXPECT_EQ(canvas.at(15, 31), entryOf(palette, 16)); // cells end a pixel later than their sixteenth
    EXPECT_EQ(canvas.at(171, 25), white);
}

TEST(PaletteFile, IsARiffFormWithOneChunk) {
    const support::TempFolder folder;
    const std::string path = folder.pathOf("colours.pal");
    CvornDIBPal palette, back;
    ASSERT_TRUE(load(palette, good));
    ASSERT_TRUE(palette.Save(path.c_str()) && back.Load(path.c_str()));
    EXPECT_EQ(folder.read("colours.pal"), good);
    EXPECT_EQ(entryOf(back, 2), 0x040B0A09u);
    ASSERT_TRUE(palette.CreateWash());
    {
        CFile file(path.c_str(), CFile::modeCreate | CFile::modeReadWrite);
        ASSERT_TRUE(palette.Save(&file));
        file.SeekToBegin(); // it is still open
        ASSERT_TRUE(back.Load(&file));
    }
    EXPECT_EQ(folder.read("colours.pal").size(), 24u + 4 * 256);
    for (UINT i = 0; i < 256; ++i)
        EXPECT_EQ(entryOf(back, i), entryOf(palette, i)) << i;
    EXPECT_FALSE(palette.Load(static_cast<CFile*>(nullptr)) || palette.Save(static_cast<CFile*>(nullptr)));
}

TEST(PaletteFile, OtherChunksArePassedOver) {
    const Bytes extra = chunk("junk", Bytes(7, 1));
    const Bytes files[] = {
        riff("PAL ", extra + data + extra), extra + riff("WAVE", data) + good + riff("PAL ", {}),
        riff("PAL ", chunk("data", threeColours + Bytes(1001, 3))), riff("PAL ", data + chunk("data", {})),
        riff("PAL ", data, 0xFFFFFFFF)}; // the form's own size is not needed
    for (const Bytes& file : files) {
        CvornDIBPal palette;
        EXPECT_TRUE(load(palette, file)) << &file - files;
        EXPECT_EQ(entryOf(palette, 1), 0x070605u) << &file - files;
    }
}

TEST(PaletteFile, BrokenFilesLeaveThePaletteAsItWas) {
    const struct {
        const char* name;
        Bytes bytes;
    } cases[] = {{"version 0x301",
                  riff("PAL ", chunk("data", Bytes{1} + Bytes(++threeColours.begin(), threeColours.end())))},
                 {"no entries", riff("PAL ", chunk("data", Bytes{0, 3, 0, 0} + threeColours))},
                 {"more entries than the chunk has",
                  riff("PAL ", chunk("data", Bytes{0, 3, 9, 0} + threeColours) + data)},
                 {"empty chunk", riff("PAL ", chunk("data", {}) + threeColours)},
                 {"odd chunk", riff("PAL ", chunk("data", {0, 3, 1}))},
                 {"another form", riff("WAVE", data)},
                 {"another chunk", riff("PAL ", chunk("date", threeColours))},
                 {"data outside the form", riff("PAL ", {}) + data},
                 {"form too small for its chunk", riff("PAL ", data, 1)},
                 {"huge data chunk", riff("PAL ", chunk("data", threeColours, 0xFFFFFFFF))},
                 {"data one byte longer than the file", riff("PAL ", chunk("data", threeColours, 17))},
                 {"a chunk that leads back to itself", riff("PAL ", chunk("junk", {}, 0xFFFFFFF8) + data)},
                 {"a chunk that leads back to the start", riff("PAL ", chunk("junk", {}, 0xFFFFFFEC) + data)},
                 {"a form that leads back to itself", riff("WAVE", data, 0xFFFFFFF8) + good},
                 {"a chunk of half the reach", riff("PAL ", chunk("junk", {}, 0x7FFFFFF0) + data)}};
    CvornDIBPal palette;
    ASSERT_TRUE(palette.CreateWash());
    const HGDIOBJ held = palette.m_hObject;
    const HandleCounts before = HandleCounts::now();
    for (const auto& [name, bytes] : cases)
        EXPECT_FALSE(load(palette, bytes)) << name;
    for (const BYTE* end = good.data() + 1; end != good.data() + good.size(); ++end)
        EXPECT_FALSE(load(palette, Bytes(good.data(), end))) << "cut to " << end - good.data();
    EXPECT_EQ(palette.m_hObject, held);
    EXPECT_EQ(HandleCounts::now(), before);
    ASSERT_TRUE(load(palette, good));
    EXPECT_TRUE(::DeleteObject(held)); // it was let go of, not deleted
}

TEST(PaletteFile, FailuresAreTold) {
    const support::TempFolder folder;
    const std::string broken = folder.write("broken.pal", riff("PAL ", chunk("data", {})));
    const std::string missing = folder.pathOf("none\\colours.pal");
    std::string messages;
    const auto note = [&](HWND box) {
        messages += support::textOf(box, 0xFFFF) + ". ";
        support::press(box, IDOK);
    };
    support::DialogDriver driver({note, note, note});
    CvornDIBPal palette;
    EXPECT_FALSE(palette.Load(missing.c_str()) || palette.Save(missing.c_str()) ||
                 palette.Load(broken.c_str()));
    EXPECT_TRUE(driver.finished());
    EXPECT_EQ(messages, "Failed to open file. Failed to open file. Failed to load file. ");
}

} // namespace
