// SPDX-License-Identifier: MIT
#include "tests/framework/framework_test.h"
#include "tests/support/temp_folder.h"

#include <array>
#include <climits>

namespace {

using enum CFile::OpenFlags;

constexpr unsigned char digits[] = {'0', '1', '2', '3', '4', '5', '6', '7', '8', '9'};

/// The cause with which an operation on a file fails, -1 when it does not.
template <typename Operation>
int failure(Operation operation) {
    return causeOf<CFileException>(operation);
}

std::string readAll(CFile& file) {
    std::string bytes(static_cast<size_t>(file.GetLength()), '\0');
    file.SeekToBegin();
    bytes.resize(file.Read(bytes.data(), static_cast<UINT>(bytes.size())));
    return bytes;
}

/// What every file promises, on an empty one that grows.
void checkReadingAndWriting(CFile& file) {
    file.Write("0123456789", 10);
    EXPECT_EQ(file.GetPosition(), 10u);
    EXPECT_EQ(file.Seek(-4, CFile::end), 6u);
    std::array<char, 8> bytes{};
    EXPECT_EQ(file.Read(bytes.data(), 8), 4u) << "the rest, though more is asked for";
    EXPECT_EQ(std::string(bytes.data(), 4), "6789");
    EXPECT_EQ(file.Read(bytes.data(), 8), 0u);
    EXPECT_EQ(file.Seek(-8, CFile::current), 2u);
    file.Write("XY", 2);
    EXPECT_EQ(failure([&] { file.Seek(-5, CFile::current); }), CFileException::badSeek);
    EXPECT_EQ(file.GetPosition(), 4u) << "a refused seek moves nothing";
    EXPECT_TRUE(throws<CInvalidArgException>([&] { file.Seek(0, 7); }));
    file.Seek(12, CFile::begin);
    EXPECT_EQ(file.GetLength(), 10u) << "seeking past the end lengthens nothing";
    EXPECT_EQ(file.Read(bytes.data(), 1), 0u);
    file.Write("!", 1);
    EXPECT_EQ(readAll(file), std::string("01XY456789\0\0!", 13));
    file.SetLength(4);
    EXPECT_EQ(readAll(file), "01XY");
    file.SetLength(6);
    EXPECT_EQ(readAll(file), std::string("01XY\0\0", 6));
}

TEST(File, ReadsWritesAndSeeks) {
    const support::TempFolder folder;
    CFile file(folder.pathOf("new.bin").c_str(), modeCreate | modeReadWrite);
    checkReadingAndWriting(file);
    file.Close();
    EXPECT_EQ(folder.read("new.bin").size(), 6u);
    EXPECT_EQ(file.m_hFile, CFile::hFileNull);
    EXPECT_EQ(failure([&] { file.Write("x", 1); }), CFileException::invalidFile);
}

TEST(File, OpensAsTheFlagsSay) {
    const support::TempFolder folder;
    const struct {
        const char* what;
        UINT flags;
        bool exists;
        int cause; // of the failure; -1 opens
        size_t lengthAfter;
    } cases[] = {
        {"reading what is there", modeRead | shareDenyWrite, true, -1, 10},
        {"reading what is not", modeRead, false, CFileException::fileNotFound, 0},
        {"writing keeps the contents", modeWrite, true, -1, 10},
        {"creating empties", modeCreate | modeWrite, true, -1, 0},
        {"creating makes one", modeCreate | modeWrite, false, -1, 0},
        {"creating without emptying", modeCreate | modeNoTruncate | modeWrite, true, -1, 10},
        {"two modes at once", modeWrite | modeReadWrite, true, CFileException::genericException, 10},
        {"no known sharing", modeRead | 0x70, true, CFileException::genericException, 10},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        std::filesystem::remove(folder.pathOf("f"));
        if (c.exists) folder.write("f", digits);
        EXPECT_EQ(failure([&] { CFile file(folder.pathOf("f").c_str(), c.flags); }), c.cause);
        EXPECT_EQ(folder.read("f").size(), c.lengthAfter);
    }
    EXPECT_EQ(failure([&] { CFile file(folder.pathOf("no/where").c_str(), modeRead); }),
              CFileException::badPath);
    EXPECT_EQ(failure([&] { CFile file(nullptr, modeRead); }), CFileException::badPath);

    const std::string path = folder.write("f", digits);
    CFile readOnly(path.c_str(), modeRead | shareDenyWrite);
    EXPECT_EQ(failure([&] { readOnly.Write("x", 1); }), CFileException::accessDenied);
    EXPECT_EQ(failure([&] { CFile second(path.c_str(), modeRead | shareDenyWrite); }), -1);
    EXPECT_EQ(failure([&] { CFile second(path.c_str(), modeWrite | shareDenyNone); }),
              CFileException::sharingViolation);
}

TEST(File, ClosesWhatItOpenedAndNothingElse) {
    const support::TempFolder folder;
    const std::string path = folder.write("f", digits);
    const auto inUse = [&] {
        CFile probe;
        return !probe.Open(path.c_str(), modeReadWrite | shareExclusive);
    };
    {
        CFile file(path.c_str(), modeRead | shareDenyNone);
        EXPECT_TRUE(inUse());
        EXPECT_TRUE(file.Open(path.c_str(), modeRead | shareDenyNone)) << "lets the first handle go";
    }
    EXPECT_FALSE(inUse());
    CFile owner(path.c_str(), modeRead | shareDenyNone);
    { CFile guest(owner.m_hFile); }
    EXPECT_EQ(readAll(owner), "0123456789");
}

TEST(MemFile, ReadsWritesAndSeeks) {
    for (const UINT step : {1u, 7u, 1024u}) {
        SCOPED_TRACE(step);
        CMemFile file(step);
        checkReadingAndWriting(file);
        file.Seek(LLONG_MAX, CFile::begin);
        EXPECT_TRUE(throws<CMemoryException>([&] { file.Write("x", 1); }));
    }
}

TEST(MemFile, KeepsWithinTheCallersBlock) {
    unsigned char block[12];
    std::copy(std::begin(digits), std::end(digits), block);
    block[10] = block[11] = 0xEE;
    CMemFile file(block, 10);
    EXPECT_EQ(readAll(file), "0123456789");
    file.Seek(8, CFile::begin);
    EXPECT_TRUE(throws<CMemoryException>([&] { file.Write("abc", 3); }));
    EXPECT_EQ(readAll(file), "0123456789") << "nothing of a refused write";
    file.Seek(8, CFile::begin);
    file.Write("ab", 2);
    EXPECT_EQ(file.Detach(), block);
    EXPECT_EQ(std::string(block, block + 12), "01234567ab\xEE\xEE");
}

} // namespace
