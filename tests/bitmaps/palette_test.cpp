// SPDX-License-Identifier: MIT
#include "tests/bitmaps/dib_samples.h"
#include "tests/support/canvas.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/handle_counts.h"
#include "tests/support/temp_folder.h"
#include "vorn/bitmaps/dib_palette.h"

#include <gtest/gtest.h>
#include <mmsystem.h>

namespace {

using support::Bytes;
using support::Canvas;
using support::HandleCounts;

DWORD entryOf(const CPalette& palette, UINT index) {
    PALETTEENTRY entry = {};
    palette.GetPaletteEntries(index, 1, &entry);
    return RGB(entry.peRed, entry.peGreen, entry.peBlue) | DWORD{entry.peFlags} << 24;
}

Bytes chunk(const char* id, const Bytes& contents) {
    Bytes bytes(id, id + 4);
    for (int shift = 0; shift < 32; shift += 8)
        bytes.push_back(static_cast<BYTE>(contents.size() >> shift));
    bytes.insert(bytes.end(), contents.begin(), contents.end());
    if (contents.size() % 2 != 0) bytes.push_back(0);
    return bytes;
}

Bytes operator+(Bytes first, const Bytes& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

Bytes riff(const char* form, const Bytes& chunks) {
    return chunk("RIFF", Bytes(form, form + 4) + chunks);
}

/// Version, count and colours 1 to 12 with flags.
const Bytes threeColours = {0, 3, 3, 0, 1, 2, 3, 0, 5, 6, 7, 0, 9, 10, 11, 4};

Bytes withSize(Bytes bytes, std::size_t offset, DWORD size) {
    std::memcpy(bytes.data() + offset, &size, sizeof(size));
    return bytes;
}

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
    ASSERT_TRUE(palette.CreateWash());
    ASSERT_TRUE(system.CreateSystemColorPalette());
    EXPECT_EQ(palette.GetNumColors(), 256);
    EXPECT_EQ(system.GetNumColors(), 256);
    constexpr DWORD fixed = DWORD{PC_NOCOLLAPSE} << 24;
    const int levels[] = {0, 42, 85, 127, 170, 212};
    const int greys[] = {0,   12,  25,  38,  51,  63,  76,  89,  102, 114,
                         127, 140, 153, 165, 178, 191, 204, 216, 229, 242};
    for (UINT i = 0; i < 216; ++i)
        EXPECT_EQ(entryOf(palette, 10 + i), (RGB(levels[i / 36], levels[i / 6 % 6], levels[i % 6]) | fixed))
            << i;
    for (UINT i = 0; i < 20; ++i)
        EXPECT_EQ(entryOf(palette, 226 + i), (RGB(greys[i], greys[i], greys[i]) | fixed)) << i;
    for (UINT i = 0; i < 10; ++i) {
        EXPECT_EQ(entryOf(palette, i), entryOf(system, i)) << i;
        EXPECT_EQ(entryOf(palette, 246 + i), entryOf(system, 246 + i)) << i;
    }
    EXPECT_EQ(entryOf(system, 10) + entryOf(system, 245), 0u);
}

TEST(Palette, ComesFromColoursAndImages) {
    RGBQUAD colours[] = {{1, 2, 3, 9}, {4, 5, 6, 9}};
    CvornDIBPal palette;
    const HandleCounts before = HandleCounts::now();
    for (int i = 0; i < 100; ++i) {
        ASSERT_TRUE(palette.Create(colours, 2));
        ASSERT_TRUE(palette.CreateWash());
        ASSERT_TRUE(palette.CreateSystemColorPalette());
    }
    ASSERT_TRUE(palette.Create(colours, 2));
    EXPECT_EQ(HandleCounts::now().gdi, before.gdi + 1);
    const HGDIOBJ held = palette.m_hObject;
    support::HeaderBlock deep = support::headerOf(1, 1, 24);
    CvornDIB image;
    BYTE pixel[4] = {};
    ASSERT_TRUE(image.Create(deep.info(), pixel, FALSE));
    EXPECT_FALSE(palette.Create(colours, 0));
    EXPECT_FALSE(palette.Create(colours, -2));
    EXPECT_FALSE(palette.Create(colours, 65536));
    EXPECT_FALSE(palette.Create(static_cast<RGBQUAD*>(nullptr), 2));
    EXPECT_FALSE(palette.Create(static_cast<CvornDIB*>(nullptr)));
    EXPECT_FALSE(palette.Create(static_cast<BITMAPINFO*>(nullptr)));
    EXPECT_FALSE(palette.Create(deep.info()));
    EXPECT_FALSE(palette.Create(&image));
    EXPECT_FALSE(palette.SetSysPalColors());
    EXPECT_EQ(palette.m_hObject, held);
    EXPECT_EQ(palette.GetNumColors(), 2);
    EXPECT_EQ(entryOf(palette, 1), static_cast<DWORD>(RGB(6, 5, 4)));

    support::HeaderBlock shallow = support::headerOf(1, 1, 4);
    shallow.header.biClrUsed = 7;
    ASSERT_TRUE(image.Create(shallow.info(), pixel, FALSE));
    for (bool isImage : {true, false}) {
        ASSERT_TRUE(isImage ? palette.Create(&image) : palette.Create(shallow.info()));
        EXPECT_EQ(palette.GetNumColors(), 7);
        EXPECT_EQ(entryOf(palette, 6), static_cast<DWORD>(RGB(6, 249, 72)));
    }
}

TEST(Palette, DrawsItselfAsAGrid) {
    RGBQUAD colours[18];
    for (BYTE i = 0; i < 18; ++i)
        colours[i] = {BYTE(i * 14), BYTE(255 - i), 100, 0};
    CvornDIBPal palette;
    ASSERT_TRUE(palette.Create(colours, 18));
    Canvas canvas(200, 200);
    CRect place(10, 20, 170, 180);
    const HandleCounts before = HandleCounts::now();
    palette.Draw(canvas.dc(), &place, FALSE);
    palette.Draw(static_cast<CDC*>(nullptr), &place, FALSE);
    EXPECT_EQ(HandleCounts::now(), before);
    for (int i = 0; i < 20; ++i) {
        const int x = 10 + 10 * (i % 16), y = 20 + 10 * (i / 16);
        const bool isDrawn = i < 18;
        EXPECT_EQ(canvas.at(x + 5, y + 5), isDrawn ? RGB(100, 255 - i, i * 14) : RGB(255, 255, 255)) << i;
        EXPECT_EQ(canvas.at(x + 10, y + 5), isDrawn ? 0u : RGB(255, 255, 255)) << i; // the shared border
    }
    EXPECT_EQ(canvas.at(9, 25), 0u);
    EXPECT_EQ(canvas.at(15, 19), 0u);
    EXPECT_EQ(canvas.at(15, 31), RGB(100, 239, 224)); // cells end a pixel later than their tenth
    EXPECT_EQ(canvas.at(171, 25), RGB(255, 255, 255));
}

TEST(PaletteFile, IsARiffFormWithOneChunk) {
    const support::TempFolder folder;
    const std::string path = folder.pathOf("colours.pal");
    CvornDIBPal palette, back;
    ASSERT_TRUE(load(palette, riff("PAL ", chunk("data", threeColours))));
    ASSERT_TRUE(palette.Save(path.c_str()));
    EXPECT_EQ(folder.read("colours.pal"), riff("PAL ", chunk("data", threeColours)));
    EXPECT_EQ(folder.read("colours.pal").size(), 36u);
    ASSERT_TRUE(back.Load(path.c_str()));
    EXPECT_EQ(back.GetNumColors(), 3);
    EXPECT_EQ(entryOf(back, 2), 0x040B0A09u);

    ASSERT_TRUE(palette.CreateWash());
    const HandleCounts before = HandleCounts::now();
    {
        CFile file(folder.pathOf("wash.pal").c_str(), CFile::modeCreate | CFile::modeReadWrite);
        ASSERT_TRUE(palette.Save(&file));
        file.SeekToBegin(); // the file is still open
        ASSERT_TRUE(back.Load(&file));
    }
    EXPECT_EQ(folder.read("wash.pal").size(), 24u + 4 * 256);
    for (UINT i = 0; i < 256; ++i)
        EXPECT_EQ(entryOf(back, i), entryOf(palette, i)) << i;
    EXPECT_FALSE(palette.Load(static_cast<CFile*>(nullptr)));
    EXPECT_FALSE(palette.Save(static_cast<CFile*>(nullptr)));
    EXPECT_FALSE(palette.Save(0xFFFFFFFFu));
    EXPECT_EQ(HandleCounts::now().user, before.user);
}

TEST(PaletteFile, OtherChunksArePassedOver) {
    const Bytes data = chunk("data", threeColours), extra = chunk("junk", Bytes(7, 1));
    const struct {
        const char* name;
        Bytes bytes;
    } cases[] = {
        {"chunks around the data", riff("PAL ", extra + data + extra)},
        {"forms around the palette", riff("WAVE", data) + riff("PAL ", data) + riff("PAL ", {})},
        {"chunks before the form", extra + riff("PAL ", data)},
        {"more in the chunk than colours", riff("PAL ", chunk("data", threeColours + Bytes(1001, 3)))},
        {"a second palette", riff("PAL ", data + chunk("data", {}))},
    };
    for (const auto& [name, bytes] : cases) {
        CvornDIBPal palette;
        EXPECT_TRUE(load(palette, bytes)) << name;
        EXPECT_EQ(palette.GetNumColors(), 3) << name;
        EXPECT_EQ(entryOf(palette, 1), 0x070605u) << name;
    }
}

TEST(PaletteFile, BrokenFilesLeaveThePaletteAsItWas) {
    const Bytes data = chunk("data", threeColours), good = riff("PAL ", data);
    Bytes later = threeColours, none = threeColours, more = threeColours;
    later[0] = 1;
    none[2] = 0;
    more[2] = 4;
    const struct {
        const char* name;
        Bytes bytes;
    } cases[] = {
        {"version 0x301", riff("PAL ", chunk("data", later))},
        {"no entries", riff("PAL ", chunk("data", none))},
        {"more entries than the chunk has", riff("PAL ", chunk("data", more) + Bytes(20, 1))},
        {"empty chunk", riff("PAL ", chunk("data", {}) + threeColours)},
        {"odd chunk", riff("PAL ", chunk("data", {0, 3, 1}))},
        {"another form", riff("WAVE", data)},
        {"another chunk", riff("PAL ", chunk("date", threeColours))},
        {"data outside the form", riff("PAL ", {}) + data},
        {"form of size 0", withSize(good, 4, 0)},
        {"huge data chunk", withSize(good, 16, 0xFFFFFFFF)},
        {"data one byte longer than the file", withSize(good, 16, 17)},
        {"a chunk that leads back to itself",
         riff("PAL ", withSize(chunk("junk", {}), 4, 0xFFFFFFF8) + data)},
        {"a chunk that leads back to the start",
         riff("PAL ", withSize(chunk("junk", {}), 4, 0xFFFFFFEC) + data)},
        {"a form that leads back to itself", withSize(riff("WAVE", data), 4, 0xFFFFFFF8)},
        {"a chunk of half the file's reach", riff("PAL ", withSize(chunk("junk", {}), 4, 0x7FFFFFF0) + data)},
    };
    CvornDIBPal palette;
    ASSERT_TRUE(palette.CreateWash());
    const HGDIOBJ held = palette.m_hObject;
    const HandleCounts before = HandleCounts::now();
    for (const auto& [name, bytes] : cases)
        EXPECT_FALSE(load(palette, bytes)) << name;
    for (std::size_t length = 1; length < good.size(); ++length)
        EXPECT_FALSE(load(palette, Bytes(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(length))))
            << length;
    EXPECT_EQ(palette.m_hObject, held);
    EXPECT_EQ(HandleCounts::now(), before);
    EXPECT_TRUE(load(palette, withSize(good, 4, 0xFFFFFFFF)));     // the form's own size is not needed
    EXPECT_EQ(::GetObjectType(held), static_cast<DWORD>(OBJ_PAL)); // let go of, not deleted
    ::DeleteObject(held);
}

TEST(PaletteFile, FailuresAreTold) {
    const support::TempFolder folder;
    const std::string broken = folder.write("broken.pal", riff("PAL ", chunk("data", {})));
    const std::string missing = folder.pathOf("none\\colours.pal");
    CvornDIBPal palette;
    ASSERT_TRUE(palette.CreateWash());
    std::vector<std::string> messages;
    const auto note = [&](HWND box) {
        messages.push_back(support::textOf(box, 0xFFFF));
        support::press(box, IDOK);
    };
    const auto cancel = [](HWND dialog) { support::press(dialog, IDCANCEL); };
    support::DialogDriver driver({note, note, note, cancel, cancel});
    EXPECT_FALSE(palette.Load(missing.c_str()));
    EXPECT_FALSE(palette.Save(missing.c_str()));
    EXPECT_FALSE(palette.Load(broken.c_str()));
    EXPECT_FALSE(palette.Load(""));
    EXPECT_FALSE(palette.Save(static_cast<const char*>(nullptr)));
    EXPECT_TRUE(driver.finished());
    EXPECT_EQ(messages, (std::vector<std::string>{"Failed to open file", "Failed to open file",
                                                  "Failed to load file"}));
    EXPECT_EQ(palette.GetNumColors(), 256);
}

} // namespace
