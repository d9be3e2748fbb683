// SPDX-License-Identifier: MIT
#include "tests/framework/framework_test.h"
#include "tests/support/temp_folder.h"

#include <afxwin.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <vector>

namespace {

using Bytes = std::vector<BYTE>;

constexpr char company[] = "Vorn framework tests";
constexpr char product[] = "Profile";
constexpr char sectionPath[] = "Software\\Vorn framework tests\\Profile\\Section";

/// An application whose profile is an INI file of its own, until it goes to the registry.
class Profile : public testing::Test {
protected:
    Profile() {
        std::free(const_cast<char*>(m_app.m_pszProfileName));
        m_app.m_pszProfileName = ::_strdup(m_folder.pathOf("profile.ini").c_str());
    }
    ~Profile() override {
        ::RegDeleteTreeA(HKEY_CURRENT_USER, (std::string("Software\\") + company).c_str());
    }
    void useRegistry() { m_app.SetRegistryKey(company); }

    std::optional<Bytes> binary(LPCTSTR entry) {
        LPBYTE data = reinterpret_cast<LPBYTE>(1);
        UINT size = 1;
        if (!m_app.GetProfileBinary("Section", entry, &data, &size)) {
            EXPECT_TRUE(data == nullptr && size == 0);
            return std::nullopt;
        }
        const std::unique_ptr<BYTE[]> owner(data);
        return Bytes(data, data + size);
    }

    void checkRoundTrips(const char* where);

    support::TempFolder m_folder;
    CWinApp m_app{product};
};

void Profile::checkRoundTrips(const char* where) {
    SCOPED_TRACE(where);
    EXPECT_EQ(m_app.GetProfileInt("Section", "Number", 7), 7u);
    EXPECT_TRUE(m_app.WriteProfileInt("Section", "Number", -5));
    EXPECT_EQ(static_cast<int>(m_app.GetProfileInt("Section", "Number", 7)), -5);

    EXPECT_EQ(text(m_app.GetProfileString("Section", "Text", "default")), "default");
    const CString longText('t', 3000);
    for (LPCTSTR written : {"plain", "", longText.GetString()}) {
        EXPECT_TRUE(m_app.WriteProfileString("Section", "Text", written));
        EXPECT_EQ(text(m_app.GetProfileString("Section", "Text", "default")), written);
    }
    EXPECT_TRUE(m_app.WriteProfileString("Section", "Text", nullptr));
    EXPECT_EQ(text(m_app.GetProfileString("Section", "Text")), "");

    EXPECT_EQ(binary("Bytes"), std::nullopt);
    Bytes all(256 * 5);
    for (size_t i = 0; i < all.size(); ++i)
        all[i] = static_cast<BYTE>(i);
    for (Bytes written : {Bytes{}, Bytes{0}, Bytes{1, 0xF2, 0}, all}) {
        EXPECT_TRUE(
            m_app.WriteProfileBinary("Section", "Bytes", written.data(), static_cast<UINT>(written.size())));
        EXPECT_EQ(binary("Bytes"), written);
    }
    EXPECT_TRUE(m_app.WriteProfileString("Section", nullptr, nullptr)) << "removes the section";
    EXPECT_EQ(binary("Bytes"), std::nullopt);
    EXPECT_EQ(m_app.GetProfileInt("Section", "Number", 7), 7u);
}

TEST_F(Profile, GivesBackWhatWasWritten) {
    checkRoundTrips("INI file");
    useRegistry();
    checkRoundTrips("registry");
}

TEST_F(Profile, RegistryTakesNoValueOfAnotherKind) {
    useRegistry();
    HKEY key = m_app.GetSectionKey("Section");
    ASSERT_NE(key, nullptr);
    const auto set = [&](LPCSTR name, DWORD type, std::string_view bytes) {
        ::RegSetValueExA(key, name, 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                         static_cast<DWORD>(bytes.size()));
    };
    set("unterminated", REG_SZ, "text");
    set("early", REG_SZ, std::string_view("te\0xt", 6));
    set("short", REG_DWORD, "12");
    ::RegCloseKey(key);
    EXPECT_EQ(text(m_app.GetProfileString("Section", "unterminated")), "text");
    EXPECT_EQ(text(m_app.GetProfileString("Section", "early")), "te");
    EXPECT_EQ(text(m_app.GetProfileString("Section", "short", "default")), "default");
    EXPECT_EQ(m_app.GetProfileInt("Section", "short", 9), 9u);
    EXPECT_EQ(m_app.GetProfileInt("Section", "early", 9), 9u);
    EXPECT_EQ(binary("unterminated"), std::nullopt);
    EXPECT_EQ(::RegOpenKeyA(HKEY_CURRENT_USER, sectionPath, &key), ERROR_SUCCESS)
        << "where programs look for it";
    ::RegCloseKey(key);
}

TEST_F(Profile, IniFileTakesNoBrokenBytes) {
    for (LPCTSTR broken : {"ABC", "AZ", "A ", "ab", "A1"}) {
        m_app.WriteProfileString("Section", "Bytes", broken);
        EXPECT_EQ(binary("Bytes"), std::nullopt) << broken;
    }
    BYTE byte = 0xF2;
    m_app.WriteProfileBinary("Section", "Bytes", &byte, 1);
    EXPECT_EQ(text(m_app.GetProfileString("Section", "Bytes")), "CP") << "the low half first";
}

} // namespace
