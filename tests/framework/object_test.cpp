// SPDX-License-Identifier: MIT
#include "tests/framework/framework_test.h"

#include <afxdisp.h>
#include <afxwin.h>

#include <memory>

namespace {

class Plain : public CObject {
    DECLARE_DYNAMIC(Plain)
};
IMPLEMENT_DYNAMIC(Plain, CObject)

class Creatable : public Plain {
    DECLARE_DYNCREATE(Creatable)
};
IMPLEMENT_DYNCREATE(Creatable, Plain)

class Storable : public Creatable {
    DECLARE_SERIAL(Storable)
};
IMPLEMENT_SERIAL(Storable, Creatable, 1)

TEST(Object, KnowsItsClassAndItsBases) {
    const std::unique_ptr<CObject> object(RUNTIME_CLASS(Creatable)->CreateObject());
    ASSERT_NE(object, nullptr);
    EXPECT_STREQ(object->GetRuntimeClass()->m_lpszClassName, "Creatable");
    EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(Plain)) && object->IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(object->IsKindOf(RUNTIME_CLASS(Storable)));
    EXPECT_EQ(DYNAMIC_DOWNCAST(Storable, object.get()), nullptr);
    EXPECT_EQ(DYNAMIC_DOWNCAST(Plain, object.get()), object.get());
    EXPECT_FALSE(object->IsSerializable());
    EXPECT_TRUE(Storable().IsSerializable());
    EXPECT_EQ(RUNTIME_CLASS(Plain)->CreateObject(), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName("Storable"), RUNTIME_CLASS(Storable));
    EXPECT_EQ(CRuntimeClass::CreateObject("Nobody"), nullptr);
}

/// Counts its kind, to see who deletes what.
class CountedException : public CException {
    DECLARE_DYNAMIC(CountedException)
public:
    explicit CountedException(BOOL bAutoDelete = TRUE) : CException(bAutoDelete) { ++s_living; }
    ~CountedException() override { --s_living; }
    static inline int s_living = 0;
};
IMPLEMENT_DYNAMIC(CountedException, CException)

// The macros open and close braces that the formatter does not see.
// clang-format off
std::string caught(bool throwOn) {
    std::string trace;
    TRY {
        TRY {
            THROW(new CountedException);
        } CATCH(CFileException, e) {
            trace += "file ";
        } AND_CATCH(CountedException, e) {
            trace += "counted ";
            if (throwOn) THROW_LAST();
        } END_CATCH
    } CATCH_ALL(e) {
        trace += e->GetRuntimeClass()->m_lpszClassName;
        EXPECT_EQ(CountedException::s_living, 1) << "still there for the outer block";
    } END_CATCH_ALL
    return trace;
}
// clang-format on

TEST(Exception, IsDeletedOnceByTheBlockThatEndsIt) {
    EXPECT_EQ(caught(false), "counted ");
    EXPECT_EQ(caught(true), "counted CountedException");
    EXPECT_EQ(CountedException::s_living, 0);
    CountedException fixed(FALSE);
    fixed.Delete();
    EXPECT_EQ(CountedException::s_living, 1);
}

TEST(Exception, SaysWhatHappened) {
    const auto message = [](auto raise) {
        char buffer[256] = "unset";
        try {
            raise();
        } catch (CException* e) {
            e->GetErrorMessage(buffer, sizeof buffer);
            e->Delete();
        }
        return std::string(buffer);
    };
    EXPECT_NE(
        message([] { AfxThrowFileException(CFileException::diskFull, -1, "c:\\a.bin"); }).find("c:\\a.bin"),
        std::string::npos);
    EXPECT_NE(message([] { AfxThrowMemoryException(); }).find("memory"), std::string::npos);
    EXPECT_EQ(message([] { AfxThrowUserException(); }), "") << "the user knows already";
    EXPECT_GT(message([] { AfxThrowOleException(E_ACCESSDENIED); }).size(), 5u);
    char tiny[4] = "###";
    EXPECT_TRUE(CArchiveException(CArchiveException::endOfFile).GetErrorMessage(tiny, sizeof tiny));
    EXPECT_STREQ(tiny, "The");
}

TEST(Variant, ConvertsAndOwnsItsStrings) {
    COleVariant value("42");
    value.ChangeType(VT_I4);
    EXPECT_EQ(value, COleVariant(42L));
    EXPECT_FALSE(value == COleVariant(short{42}));
    EXPECT_EQ(text(CString(value)), "42");
    value = "no number";
    EXPECT_TRUE(throws<COleException>([&] { value.ChangeType(VT_I4); }));
    EXPECT_EQ(text(CString(value)), "no number") << "unchanged by a failure";

    const COleVariant first(CString("a\0b", 3));
    EXPECT_EQ(::SysStringLen(first.bstrVal), 3u);
    COleVariant copy(first);
    EXPECT_NE(copy.bstrVal, first.bstrVal);
    copy = *&copy;
    EXPECT_EQ(copy, first);
}

} // namespace
