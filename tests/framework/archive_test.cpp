// SPDX-License-Identifier: MIT
#include "tests/framework/framework_test.h"

#include <afxcoll.h>
#include <afxpriv.h>
#include <afxwin.h>

#include <algorithm>
#include <memory>
#include <set>
#include <tuple>
#include <vector>

namespace {

using Bytes = std::vector<BYTE>;

/// Part of a picture of linked objects. Owns none of what it points to; all that live are on a list.
class Link : public CObject {
    DECLARE_SERIAL(Link)
public:
    Link() { s_living.insert(this); }
    ~Link() override { s_living.erase(this); }
    void Serialize(CArchive& ar) override {
        if (ar.IsStoring()) {
            ar << m_strName << m_pNext;
        } else {
            ar >> m_strName >> m_pNext;
        }
    }
    static void deleteAll() {
        while (!s_living.empty())
            delete *s_living.begin();
    }

    CString m_strName;
    CObject* m_pNext = nullptr;
    static inline std::set<Link*> s_living;
};
IMPLEMENT_SERIAL(Link, CObject, 3)

/// Reads older versions of itself.
class Versioned : public CObject {
    DECLARE_SERIAL(Versioned)
public:
    void Serialize(CArchive& ar) override { m_nSeen = ar.GetObjectSchema(); }
    UINT m_nSeen = 0;
};
IMPLEMENT_SERIAL(Versioned, CObject, VERSIONABLE_SCHEMA | 5)

template <typename Store>
Bytes stored(Store store, int bufferSize = 4096) {
    CMemFile file;
    CArchive ar(&file, CArchive::store, bufferSize);
    store(ar);
    ar.Close();
    Bytes bytes(static_cast<size_t>(file.GetLength()));
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

template <typename Load>
void loaded(Bytes bytes, Load load, int bufferSize = 4096) {
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive ar(&file, CArchive::load, bufferSize);
    load(ar);
}

/// The cause with which loading is refused, -1 when it is not.
template <typename Load>
int refusal(const Bytes& bytes, Load load) {
    return causeOf<CArchiveException>([&] { loaded(bytes, load); });
}

/// Bytes that repeat in no round number.
Bytes pattern(size_t length) {
    Bytes bytes(length);
    for (size_t i = 0; i < length; ++i)
        bytes[i] = static_cast<BYTE>(i % 251);
    return bytes;
}

template <typename T>
T read(CArchive& ar) {
    T value{};
    ar >> value;
    return value;
}

TEST(Archive, StoresNumbersLittleEndianInTheirWidth) {
    auto values = std::make_tuple(BYTE{1}, WORD{0x0203}, DWORD{0x04050607}, short{-2}, 1.0f, true, 'c', -1ll,
                                  -3l, 4u, 5, 6ull, L'w', 2.0, CPoint(1, -1), CSize(2, 3), CRect(4, 5, 6, 7));
    const Bytes bytes =
        stored([&](CArchive& ar) { std::apply([&](auto... v) { (ar << ... << v); }, values); });
    const Bytes start = {1, 3, 2, 7, 6, 5, 4, 0xFE, 0xFF, 0, 0, 0x80, 0x3F, 1, 'c', 0xFF};
    ASSERT_EQ(bytes.size(), 15u + 8 + 4 + 4 + 4 + 8 + 2 + 8 + 8 + 8 + 16);
    EXPECT_TRUE(std::equal(start.begin(), start.end(), bytes.begin()));
    loaded(bytes, [&](CArchive& ar) {
        decltype(values) found;
        std::apply([&](auto&... v) { (ar >> ... >> v); }, found);
        EXPECT_TRUE(found == values);
    });
}

TEST(Archive, StoresStringsWithTheShortestLength) {
    const struct {
        size_t length;
        Bytes prefix;
    } cases[] = {
        {0, {0}},
        {254, {254}},
        {255, {0xFF, 255, 0}},
        {0xFFFD, {0xFF, 0xFD, 0xFF}},
        {0xFFFE, {0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0, 0}},
        {200000, {0xFF, 0xFF, 0xFF, 0x40, 0x0D, 0x03, 0}},
    };
    for (const auto& [length, prefix] : cases) {
        const CString s('s', static_cast<int>(length));
        const Bytes bytes = stored([&](CArchive& ar) { ar << s << "end"; });
        ASSERT_EQ(bytes.size(), prefix.size() + length + 4);
        EXPECT_TRUE(std::equal(prefix.begin(), prefix.end(), bytes.begin())) << length;
        loaded(bytes, [&](CArchive& ar) {
            EXPECT_TRUE(read<CString>(ar) == s && read<CString>(ar) == "end") << length;
        });
    }
    const CString nulls("a\0b", 3);
    loaded(stored([&](CArchive& ar) { ar << nulls; }),
           [&](CArchive& ar) { EXPECT_EQ(read<CString>(ar), nulls); });
    loaded({0xFF, 0xFE, 0xFF, 2, 'h', 0, 0xE9, 0},
           [](CArchive& ar) { EXPECT_EQ(read<CString>(ar), "h\xE9"); });
}

TEST(Archive, WorksWithEveryBufferSize) {
    const Bytes block = pattern(1000);
    for (const int size : {0, 1, 128, 129, 1000, 4096}) {
        SCOPED_TRACE(size);
        const auto write = [&](CArchive& ar) {
            for (UINT piece = 1; piece < block.size(); piece += 97)
                ar.Write(block.data(), piece);
        };
        const auto check = [&](CArchive& ar) {
            Bytes found(block.size());
            for (UINT piece = 1; piece < block.size(); piece += 97) {
                EXPECT_EQ(ar.Read(found.data(), piece), piece);
                EXPECT_TRUE(std::equal(found.begin(), found.begin() + piece, block.begin()));
            }
            EXPECT_EQ(ar.Read(found.data(), 10), 0u);
        };
        loaded(stored(write, size), check, size);
    }
}

TEST(Archive, RefusesTheWrongDirection) {
    EXPECT_EQ(causeOf<CArchiveException>([] { stored([](CArchive& ar) { read<int>(ar); }); }),
              CArchiveException::writeOnly);
    EXPECT_EQ(refusal({1, 2, 3, 4}, [](CArchive& ar) { ar << 1; }), CArchiveException::readOnly);
}

/// Remembers the largest piece that anyone wanted to have read.
class WatchedFile : public CMemFile {
public:
    using CMemFile::CMemFile;
    UINT Read(void* lpBuf, UINT nCount) override {
        m_nLargest = std::max(m_nLargest, nCount);
        return CMemFile::Read(lpBuf, nCount);
    }
    UINT m_nLargest = 0;
};

TEST(Archive, BelievesNoLength) {
    const Bytes strings[] = {
        {200, 'a', 'b'},
        {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 'a'},
        {0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 'a'},
        {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 'a'},
        {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 'a', 'b'},
        {0xFF, 0xFF},
    };
    for (Bytes bytes : strings) {
        WatchedFile file(bytes.data(), static_cast<UINT>(bytes.size()));
        CArchive ar(&file, CArchive::load);
        CString s("kept");
        EXPECT_EQ(causeOf<CArchiveException>([&] { ar >> s; }), CArchiveException::endOfFile);
        EXPECT_EQ(text(s), "kept");
        EXPECT_LE(file.m_nLargest, 0x10000u);
    }
    EXPECT_EQ(refusal({0xFF, 0xFE, 0xFF, 0xFF, 0xFE, 0xFF, 1, 'a'}, read<CString>),
              CArchiveException::badIndex);
    CStringArray names;
    CList<double> numbers;
    names.Add("kept");
    const Bytes count = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 1, 0, 0, 0, 0};
    EXPECT_EQ(refusal(count, [&](CArchive& ar) { names.Serialize(ar); }), CArchiveException::endOfFile);
    EXPECT_EQ(refusal(count, [&](CArchive& ar) { numbers.Serialize(ar); }), CArchiveException::endOfFile);
    EXPECT_EQ(text(names[0]), "kept");
}

TEST(Archive, StoresCollections) {
    CArray<double> array, readArray;
    array.SetAtGrow(69999, 1.5);
    const Bytes numbers = stored([&](CArchive& ar) { array.Serialize(ar); });
    EXPECT_EQ(numbers.size(), 6 + 70000 * sizeof(double)) << "a count beyond 65534 takes six bytes";
    loaded(numbers, [&](CArchive& ar) { readArray.Serialize(ar); });
    ASSERT_EQ(readArray.GetSize(), 70000);
    EXPECT_EQ(readArray[69999], 1.5);

    CList<CString, LPCTSTR> list, readList;
    list.AddTail("b");
    list.AddHead("a");
    const Bytes letters = stored([&](CArchive& ar) { list.Serialize(ar); });
    EXPECT_EQ(letters, (Bytes{2, 0, 1, 'a', 1, 'b'}));
    loaded(letters, [&](CArchive& ar) { readList.Serialize(ar); });
    EXPECT_EQ(text(readList.GetHead() + readList.GetTail()), "ab");
}

/// Two links that point at each other, a null, and both again.
Bytes storedRing() {
    Link first, second;
    first.m_strName = "first";
    second.m_strName = "second";
    first.m_pNext = &second;
    second.m_pNext = &first;
    return stored([&](CArchive& ar) { ar << &first << static_cast<Link*>(nullptr) << &second << 77; });
}

void loadRing(CArchive& ar) {
    for (int i = 0; i < 3; ++i)
        read<Link*>(ar);
    read<int>(ar);
}

TEST(Archive, StoresEachObjectAndClassOnce) {
    const Bytes ring = storedRing();
    const Bytes expected = {0xFF, 0xFF, 3,   0,   4, 0,    'L', 'i', 'n', 'k', 5,   'f',
                            'i',  'r',  's', 't', 1, 0x80, 6,   's', 'e', 'c', 'o', 'n',
                            'd',  2,    0,   0,   0, 3,    0,   77,  0,   0,   0};
    EXPECT_EQ(ring, expected);
    loaded(ring, [](CArchive& ar) {
        const auto *first = read<Link*>(ar), *none = read<Link*>(ar), *second = read<Link*>(ar);
        ASSERT_TRUE(first != nullptr && second != nullptr);
        EXPECT_EQ(first->m_pNext, second);
        EXPECT_EQ(second->m_pNext, first);
        EXPECT_EQ(none, nullptr);
        EXPECT_EQ(ar.GetObjectSchema(), static_cast<UINT>(-1)) << "no object is being read";
        EXPECT_EQ(text(second->m_strName), "second");
    });
    EXPECT_EQ(Link::s_living.size(), 2u);
    Link::deleteAll();
}

TEST(Archive, RefusesBrokenObjectsAndLeavesNothingBehind) {
    const Bytes ring = storedRing();
    for (size_t length = 0; length < ring.size(); ++length) {
        const Bytes cut(ring.begin(), ring.begin() + static_cast<ptrdiff_t>(length));
        EXPECT_EQ(refusal(cut, loadRing), CArchiveException::endOfFile) << length;
        // Of two objects read, the inner one was whole from byte 27 on, and is held by nobody once the outer
        // fails.
        EXPECT_LE(Link::s_living.size(), length < 27 ? 0u : 2u) << length;
        Link::deleteAll();
    }
    for (size_t at = 0; at < ring.size(); ++at) {
        for (const int change : {0x01, 0x02, 0x80, 0xFF}) {
            Bytes broken(ring);
            broken[at] ^= static_cast<BYTE>(change);
            refusal(broken, loadRing); // whatever comes out of it, it is an archive's answer
            Link::deleteAll();
        }
    }
    const struct {
        const char* what;
        Bytes bytes;
        int cause;
    } cases[] = {
        {"an object not yet read", {9, 0}, CArchiveException::badIndex},
        {"a class not yet read", {9, 0x80}, CArchiveException::badIndex},
        {"the null class", {0, 0x80}, CArchiveException::badIndex},
        {"a far object", {0xFF, 0x7F, 0xFF, 0xFF, 0xFF, 0x7F}, CArchiveException::badIndex},
        {"a far class", {0xFF, 0x7F, 0xFF, 0xFF, 0xFF, 0xFF}, CArchiveException::badIndex},
        {"a class unknown here", {0xFF, 0xFF, 3, 0, 4, 0, 'L', 'i', 'm', 'b'}, CArchiveException::badClass},
        {"a class name without end", {0xFF, 0xFF, 3, 0, 0xFF, 0xFF, 'L'}, CArchiveException::badClass},
        {"another version",
         {0xFF, 0xFF, 4, 0, 4, 0, 'L', 'i', 'n', 'k', 0, 0, 0},
         CArchiveException::badSchema},
        {"another class",
         {0xFF, 0xFF, 9, 0, 9, 0, 'V', 'e', 'r', 's', 'i', 'o', 'n', 'e', 'd'},
         CArchiveException::badClass},
        {"its own class as its neighbour",
         {0xFF, 0xFF, 3, 0, 4, 0, 'L', 'i', 'n', 'k', 0, 1, 0},
         CArchiveException::badIndex},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(refusal(c.bytes, read<Link*>), c.cause) << c.what;
        EXPECT_TRUE(Link::s_living.empty()) << c.what;
    }
}

TEST(Archive, EndsAChainBeforeItEndsTheStack) {
    Bytes chain = {0xFF, 0xFF, 3, 0, 4, 0, 'L', 'i', 'n', 'k', 0};
    for (int i = 0; i < 100000; ++i)
        chain.insert(chain.end(), {1, 0x80, 0});
    EXPECT_EQ(refusal(chain, read<Link*>), CArchiveException::genericException);
    EXPECT_TRUE(Link::s_living.empty());
}

TEST(Archive, TellsAnObjectTheVersionItWasStoredWith) {
    Bytes bytes = stored([](CArchive& ar) { ar << std::make_unique<Versioned>().get(); });
    for (const BYTE schema : {5, 2}) {
        bytes[2] = schema;
        loaded(bytes, [&](CArchive& ar) {
            const std::unique_ptr<Versioned> object(read<Versioned*>(ar));
            EXPECT_EQ(object->m_nSeen, schema);
        });
    }
}

TEST(ArchiveStream, IsAStreamForOle) {
    Bytes bytes = pattern(10000);
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive ar(&file, CArchive::load);
    CArchiveStream stream(&ar);
    STATSTG stat{};
    EXPECT_EQ(stream.Stat(&stat, STATFLAG_NONAME), S_OK);
    EXPECT_EQ(stat.cbSize.QuadPart, 10000u);
    BYTE read[4] = {};
    ULONG count = 0;
    ULARGE_INTEGER position{};
    EXPECT_EQ(stream.Read(read, 4, &count), S_OK);
    EXPECT_EQ(stream.Seek({.QuadPart = 0}, STREAM_SEEK_CUR, &position), S_OK);
    EXPECT_EQ(position.QuadPart, 4u) << "the reader's position, not that of the read-ahead";
    EXPECT_EQ(stream.Seek({.QuadPart = -2}, STREAM_SEEK_END, nullptr), S_OK);
    EXPECT_EQ(stream.Read(read, 4, &count), S_FALSE);
    EXPECT_TRUE(count == 2 && read[1] == bytes.back());
    EXPECT_EQ(stream.Seek({.QuadPart = -2}, STREAM_SEEK_SET, nullptr), STG_E_SEEKERROR);
    EXPECT_EQ(stream.Write(read, 1, &count), STG_E_WRITEFAULT);
}

} // namespace
