// SPDX-License-Identifier: MIT
#include "tests/framework/framework_test.h"

#include <climits>
#include <cstring>

namespace {

using std::string;

TEST(String, IsBuiltFromEverySource) {
    const struct {
        CString made;
        string expected;
    } cases[] = {
        {CString(), ""},
        {CString(static_cast<LPCTSTR>(nullptr)), ""},
        {CString(L"wide \x00E9"), "wide \xE9"},
        {CString(L"wide cut", 4), "wide"},
        {CString("nu\0ll", 5), string("nu\0ll", 5)},
        {CString("negative", -3), ""},
        {CString('x', 3), "xxx"},
        {CString("one ") + "two" + ' ' + CString("three"), "one two three"},
        {"1" + CString("2") + CString("3\0", 2) + '4', string("123\0004", 5)},
    };
    for (const auto& [made, expected] : cases) {
        EXPECT_EQ(text(made), expected);
        EXPECT_EQ(made.GetString()[made.GetLength()], '\0');
    }
}

TEST(String, CopiesAreIndependentAndMovesLeaveAnEmptyString) {
    CString first("first");
    CString copy(first);
    copy.SetAt(0, 'F');
    EXPECT_EQ(text(first), "first");
    EXPECT_EQ(text(copy), "First");
    CString moved(std::move(copy));
    EXPECT_EQ(text(moved), "First");
    EXPECT_TRUE(copy.IsEmpty());
    // What a string takes may be a part of itself.
    first = first.GetString() + 2;
    EXPECT_EQ(text(first), "rst");
    first += first;
    first += first.GetString() + 3;
    EXPECT_EQ(text(first), "rstrstrst");
    CString digits("0123456789");
    digits.Insert(2, digits.GetString() + 5);
    EXPECT_EQ(text(digits), "015678923456789");
}

TEST(String, TakesPartsWithinItsBounds) {
    const CString s("abcdef");
    const struct {
        CString part;
        string expected;
    } cases[] = {
        {s.Mid(2, 2), "cd"}, {s.Mid(-5, 2), "ab"}, {s.Mid(4, INT_MAX), "ef"},
        {s.Mid(9, 1), ""},   {s.Mid(1, -1), ""},   {s.Left(99), "abcdef"},
        {s.Left(-1), ""},    {s.Right(2), "ef"},   {s.Right(99), "abcdef"},
    };
    for (const auto& [part, expected] : cases)
        EXPECT_EQ(text(part), expected);
}

TEST(String, FindsAndCompares) {
    const CString s("one two one");
    EXPECT_EQ(s.Find('o', 1), 6);
    EXPECT_EQ(s.Find("one", 1), 8);
    EXPECT_EQ(s.Find("one", 99), -1);
    EXPECT_EQ(s.Find('o', -1), -1);
    EXPECT_EQ(s.ReverseFind('o'), 8);

    const CString a("apple"), b("Banana"), high("\xE9");
    EXPECT_GT(a.Compare(b), 0);
    EXPECT_LT(a.CompareNoCase(b), 0);
    EXPECT_EQ(CString("\xC9t\xC9").CompareNoCase("\xE9t\xE9"), 0);
    EXPECT_TRUE(high > a && a < high && a <= high && !(a >= high)) << "characters count as unsigned";
    EXPECT_TRUE(a == "apple" && a != b && "Apple" != a);
    EXPECT_TRUE(CString("a\0b", 3) != CString("a\0c", 3) && CString("a\0b", 3) != "a") << "nulls end nothing";
}

TEST(String, ChangesInPlace) {
    const auto changed = [](LPCTSTR start, auto change) {
        CString s(start);
        change(s);
        return text(s);
    };
    EXPECT_EQ(changed("aBc\xE9", [](CString& s) { s.MakeUpper(); }), "ABC\xC9");
    EXPECT_EQ(changed(" \t x y \r\n", [](CString& s) { s.Trim(); }), "x y");
    EXPECT_EQ(changed("   ", [](CString& s) { s.Trim(); }), "");
    EXPECT_EQ(changed("aaa", [](CString& s) { EXPECT_EQ(s.Replace("aa", "b"), 1); }), "ba");
    EXPECT_EQ(changed("xyx", [](CString& s) { EXPECT_EQ(s.Replace("x", "long"), 2); }), "longylong");
    EXPECT_EQ(changed("x", [](CString& s) { EXPECT_EQ(s.Replace("", "y"), 0); }), "x");
    EXPECT_EQ(changed("ab", [](CString& s) { EXPECT_EQ(s.Insert(99, 'c'), 3); }), "abc");
    EXPECT_EQ(changed("abcd", [](CString& s) { EXPECT_EQ(s.Delete(1, 2), 2); }), "ad");
    EXPECT_EQ(changed("abcd", [](CString& s) { EXPECT_EQ(s.Delete(2, INT_MAX), 2); }), "ab");
}

TEST(String, FormatsNumbersStringsAndItself) {
    CString s("self");
    s.Format("%s|%5.2f|%lu|%I64d|%c|%x", s, 3.14159, 0xFFFFFFFFul, -5000000000ll, 'c', 255);
    EXPECT_EQ(text(s), "self| 3.14|4294967295|-5000000000|c|ff");
    s.AppendFormat("%S", L"wide");
    EXPECT_EQ(text(s).substr(s.GetLength() - 4), "wide");
    const CString huge('h', 100000);
    s.Format("<%s>", huge);
    EXPECT_EQ(s.GetLength(), 100002);
    EXPECT_EQ(s[100001], '>');
    static_assert(sizeof(CString) == sizeof(void*),
                  "passes for its characters where a C function is variadic");
}

TEST(String, BuffersAreTheCallersUntilReleased) {
    CString s("short");
    std::strcpy(s.GetBuffer(64), "written by hand");
    s.ReleaseBuffer();
    EXPECT_EQ(text(s), "written by hand");
    std::memcpy(s.GetBufferSetLength(4), "a\0b", 4);
    EXPECT_EQ(text(s), string("a\0b\0", 4));
    s.ReleaseBuffer(3);
    EXPECT_EQ(text(s), string("a\0b", 3));
    s.GetBuffer(8);
    s.ReleaseBuffer(INT_MAX);
    EXPECT_LE(s.GetLength(), s.GetAllocLength());
    CString empty;
    empty.GetBuffer(0)[0] = '\0'; // not the buffer that all empty strings share
    EXPECT_NE(empty.GetString(), CString().GetString());
    EXPECT_TRUE(throws<CMemoryException>([] { CString().GetBuffer(INT_MAX); }));
}

} // namespace
