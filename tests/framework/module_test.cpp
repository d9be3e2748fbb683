// SPDX-License-Identifier: MIT
#include "tests/framework/framework_test.h"
#include "tests/framework/module_probe.h"

#include <afxwin.h>

#include <thread>
#include <vector>

namespace {

/// module_probe.dll, loaded for a scope.
class LoadedProbe {
public:
    LoadedProbe() : m_module(::LoadLibraryA("module_probe.dll")) {
        using Entry = ModuleProbe (*)();
        const auto entry =
            reinterpret_cast<Entry>(reinterpret_cast<void*>(::GetProcAddress(m_module, "moduleProbe")));
        m_probe = entry();
    }
    ~LoadedProbe() { ::FreeLibrary(m_module); }
    LoadedProbe(const LoadedProbe&) = delete;
    LoadedProbe& operator=(const LoadedProbe&) = delete;
    const ModuleProbe* operator->() const { return &m_probe; }
    HINSTANCE module() const { return m_module; }
    std::string string(unsigned id) const {
        char buffer[64];
        m_probe.loadString(id, buffer, sizeof buffer);
        return buffer;
    }

private:
    HMODULE m_module;
    ModuleProbe m_probe;
};

/// Answers message boxes and remembers them.
class AnsweringApp : public CWinApp {
public:
    using CWinApp::CWinApp;
    int DoMessageBox(LPCTSTR lpszPrompt, UINT nType, UINT nIDPrompt) override {
        m_boxes.push_back(std::string(lpszPrompt) + "/" + std::to_string(nType) + "/" +
                          std::to_string(nIDPrompt));
        return IDNO;
    }
    std::vector<std::string> m_boxes;
};

TEST(Module, FindsTheResourcesOfTheModuleThatIsAtWork) {
    const LoadedProbe probe;
    CString s;
    EXPECT_TRUE(s.LoadString(probeStringId));
    EXPECT_EQ(text(s), "of the program");
    EXPECT_FALSE(s.LoadString(probeOnlyStringId));
    EXPECT_EQ(text(s), "of the program") << "unchanged when there is none";
    s.Format(102u, 3, CString("four"));
    EXPECT_EQ(text(s), "3 of four");

    EXPECT_EQ(probe.string(probeStringId), "of the probe");
    EXPECT_EQ(probe.string(probeOnlyStringId), "only the probe's");
    EXPECT_EQ(probe.string(102), "%d of %s") << "the program's, where the module has none";
    EXPECT_EQ(probe.string(4000), "");
    char tiny[4] = "###";
    EXPECT_EQ(probe->loadString(probeStringId, tiny, sizeof tiny), 3);
    EXPECT_STREQ(tiny, "of ");
    EXPECT_EQ(AfxGetResourceHandle(), ::GetModuleHandleA(nullptr)) << "the program's again";
}

TEST(Module, StateBelongsToTheThreadAndTheScope) {
    const LoadedProbe probe;
    AFX_MODULE_STATE other(probe.module());
    {
        AFX_MANAGE_STATE(&other);
        EXPECT_EQ(AfxGetInstanceHandle(), probe.module());
        HINSTANCE elsewhere = nullptr;
        std::thread([&] { elsewhere = AfxGetInstanceHandle(); }).join();
        EXPECT_EQ(elsewhere, ::GetModuleHandleA(nullptr));
    }
    EXPECT_EQ(AfxGetModuleState(), AfxGetAppModuleState());
    EXPECT_EQ(AfxGetStaticModuleState(), AfxGetAppModuleState()) << "the program's own";
    EXPECT_TRUE(throws<CUserException>([&] { probe->throwInside(); }));
    EXPECT_EQ(AfxGetModuleState(), AfxGetAppModuleState()) << "though an exception left the scope";
}

TEST(Module, ApplicationObjectOfADllIsItsOwn) {
    EXPECT_EQ(AfxGetApp(), nullptr);
    {
        const LoadedProbe probe;
        EXPECT_EQ(AfxGetApp(), nullptr);
        AnsweringApp program("The program");
        EXPECT_EQ(AfxGetApp(), &program);
        EXPECT_EQ(probe->appOutside(), &program);
        CWinApp* const inside = probe->appInside();
        ASSERT_TRUE(inside != nullptr && inside != &program);
        EXPECT_STREQ(inside->m_pszAppName, "The probe");
        EXPECT_STREQ(inside->m_pszExeName, "module_probe");
        EXPECT_EQ(inside->m_hInstance, probe.module());
        EXPECT_STREQ(AfxGetAppName(), "The program");

        EXPECT_EQ(probe->messageBox("asked by the DLL"), IDNO);
        EXPECT_EQ(AfxMessageBox("asked"), IDNO);
        EXPECT_EQ(AfxMessageBox(probeStringId, MB_OKCANCEL), IDNO);
        EXPECT_EQ(CFileException(CFileException::diskFull, -1, "a").ReportError(MB_ICONSTOP), IDNO);
        EXPECT_EQ(program.m_boxes,
                  (std::vector<std::string>{"asked by the DLL/4/0", "asked/0/0", "of the program/1/100",
                                            "The disk is full while accessing a./16/0"}));
    }
    EXPECT_EQ(AfxGetApp(), nullptr);
}

TEST(Module, LeavesNothingOfAnUnloadedDll) {
    for (int round = 0; round < 3; ++round) {
        const LoadedProbe probe;
        ASSERT_NE(CRuntimeClass::FromName("Probed"), nullptr);
        EXPECT_EQ(probe.string(probeStringId), "of the probe") << round;
        EXPECT_NE(probe->appInside(), nullptr);
    }
    EXPECT_EQ(CRuntimeClass::FromName("Probed"), nullptr);
}

/// Remembers what its loop does; ends on WM_APP.
class LoopApp : public CWinApp {
public:
    BOOL PreTranslateMessage(MSG* pMsg) override {
        m_trace += "pre" + std::to_string(pMsg->message - WM_APP) + " ";
        if (pMsg->message == WM_APP) AfxPostQuitMessage(5);
        return CWinApp::PreTranslateMessage(pMsg);
    }
    BOOL OnIdle(LONG lCount) override {
        m_trace += "idle" + std::to_string(lCount) + " ";
        if (lCount == 1) ::PostThreadMessageA(m_nThreadID, WM_APP, 0, 0);
        return lCount < 1;
    }
    std::string m_trace;
};

TEST(MessageLoop, IdlesOnceTheQueueIsEmpty) {
    LoopApp app;
    MSG waiting;
    while (::PeekMessageA(&waiting, nullptr, 0, 0, PM_REMOVE)) {
    }
    ::PostThreadMessageA(app.m_nThreadID, WM_APP + 1, 0, 0);
    ::PostThreadMessageA(app.m_nThreadID, WM_APP + 2, 0, 0);
    EXPECT_EQ(app.CWinThread::Run(), 5);
    EXPECT_EQ(app.m_trace, "pre1 pre2 idle0 idle1 pre0 ");
}

} // namespace
