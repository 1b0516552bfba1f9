// The machine, its user and services as SysUtil tells of them: checked against other sources.
#include <windows.h>

#include <sddl.h>

#include <algorithm>
#include <cstring>
#include <filesystem>

#include "frame/SysUtil.h"
#include "support/support.h"

namespace vela {
namespace {

using test::byReference;

class SystemSysUtil : public test::NoObjectsLeft {
  protected:
    // The result as text, or "error".
    std::wstring call(const wchar_t* name, std::vector<VARIANT> arguments = {}) {
        const test::Called called = test::call(sys_.Get(), name, std::move(arguments));
        return called.outcome == S_OK ? textOf(called.result) : L"error";
    }
    std::wstring ofService(const wchar_t* member, const wchar_t* service,
                           const wchar_t* computer = L"") {
        return call(member, {Variant(service), Variant(computer)});
    }
    ComPtr<_SysUtil> sys_ = make<SysUtil>();
};

TEST_F(SystemSysUtil, TellsWhoTheUserIs) {
    // The identifier leads back to the same account.
    PSID identifier = nullptr;
    ASSERT_TRUE(ConvertStringSidToSidW(call(L"IdentificadorDoUtilizador").c_str(), &identifier));
    wchar_t name[257];
    wchar_t nameDomain[257];
    DWORD size = ARRAYSIZE(name);
    DWORD domainSize = ARRAYSIZE(nameDomain);
    SID_NAME_USE kind;
    EXPECT_TRUE(
        LookupAccountSidW(nullptr, identifier, name, &size, nameDomain, &domainSize, &kind));
    LocalFree(identifier);
    EXPECT_EQ(name, call(L"LoginDoUtilizador"));
    EXPECT_EQ(nameDomain, call(L"DominioDoUtilizador"));
}

TEST_F(SystemSysUtil, TellsAboutTheMachine) {
    const std::wstring build = call(L"RegistryLerValorLocalMachine",
                                    {Variant(L"Software\\Microsoft\\Windows NT\\CurrentVersion"),
                                     Variant(L"CurrentBuildNumber")});
    EXPECT_TRUE(call(L"GetOSVersion").ends_with(L"." + build));
    SYSTEM_INFO info;
    GetNativeSystemInfo(&info);
    const bool is64Bit = info.wProcessorArchitecture != PROCESSOR_ARCHITECTURE_INTEL;
    EXPECT_EQ(call(L"Is64Bit"), is64Bit ? L"True" : L"False");
    const HDC screen = GetDC(nullptr);
    const int dots = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    EXPECT_NEAR(std::stod(call(L"TPPixelX")) * dots, 1440, dots / 2.0);
}

TEST_F(SystemSysUtil, GivesAnAddressThatOthersCanUse) {
    const std::wstring address = call(L"GetNetworkIP");
    EXPECT_FALSE(address.starts_with(L"127."));
    // Empty without a network.
    EXPECT_EQ(std::count(address.begin(), address.end(), L'.'), address.empty() ? 0 : 3);
}

// Wine's and Windows' print spooler runs on demand and stops when told to.
TEST_F(SystemSysUtil, StartsAndStopsServices) {
    const auto waitFor = [&](const wchar_t* state) {
        for (int i = 0; i < 100 && ofService(L"ServiceStatus", L"Spooler") != state; ++i)
            Sleep(100);
        return ofService(L"ServiceStatus", L"Spooler");
    };
    EXPECT_EQ(ofService(L"StartService", L"Spooler"), L"True");
    EXPECT_EQ(waitFor(L"4"), L"4");
    EXPECT_EQ(ofService(L"StartService", L"spooler", L"."), L"True");
    EXPECT_EQ(ofService(L"ServiceIsRunning", L"Spooler"), L"True");
    EXPECT_EQ(ofService(L"ServiceIsStopped", L"Spooler"), L"False");
    EXPECT_EQ(ofService(L"StopService", L"Spooler"), L"True");
    EXPECT_EQ(waitFor(L"1"), L"1");
    EXPECT_EQ(ofService(L"StopService", L"Spooler"), L"True");
    EXPECT_EQ(ofService(L"ServiceIsStopped", L"Spooler"), L"True");
}

TEST_F(SystemSysUtil, KnowsNothingOfServicesThatCannotBeReached) {
    for (const wchar_t* member :
         {L"StartService", L"StopService", L"ServiceIsRunning", L"ServiceIsStopped"}) {
        for (const wchar_t* service : {L"", L"a\\b"}) {
            EXPECT_EQ(ofService(member, service), L"False");
        }
    }
    const ULONGLONG start = GetTickCount64();
    EXPECT_EQ(ofService(L"ServiceStatus", L"Spooler", L"\\\\no-such-computer.invalid"), L"0");
    EXPECT_LT(GetTickCount64() - start, 20000u);
}

int ticks = 0;
void CALLBACK countTick(HWND, UINT, UINT_PTR, DWORD) { ++ticks; }

// Every message taken brings the next one, for as long as any patience lasts.
int taken = 0;
LRESULT CALLBACK bringNext(int code, WPARAM removed, LPARAM message) {
    if (code >= 0 && removed == PM_REMOVE && ++taken < 10000000) {
        PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
    }
    return CallNextHookEx(nullptr, code, removed, message);
}

ULONGLONG timeOf(_SysUtil* sys, LONG milliseconds) {
    const ULONGLONG start = GetTickCount64();
    EXPECT_EQ(sys->Esperar(milliseconds), S_OK);
    return GetTickCount64() - start;
}

TEST_F(SystemSysUtil, ServesTimersWhileItWaits) {
    ticks = 0;
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, countTick);
    const ULONGLONG waited = timeOf(sys_.Get(), 200);
    EXPECT_GE(waited + 16, 200u);
    EXPECT_LT(waited, 2000u);
    EXPECT_GE(ticks, 3);
    // Timers that are due are served by a wait of no time, too; it is over at once all the same.
    Sleep(30);
    ticks = 0;
    EXPECT_LT(timeOf(sys_.Get(), -5), 1000u);
    EXPECT_GE(ticks, 1);
    KillTimer(nullptr, timer);
}

TEST_F(SystemSysUtil, LeavesTheRequestToQuitToTheProgram) {
    PostQuitMessage(17);
    EXPECT_LT(timeOf(sys_.Get(), 60000), 10000u);
    MSG message{};
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 17u);
}

TEST_F(SystemSysUtil, EndsItsWaitAmongMessagesWithoutEnd) {
    const HHOOK hook = SetWindowsHookExW(WH_GETMESSAGE, bringNext, nullptr, GetCurrentThreadId());
    PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
    EXPECT_LT(timeOf(sys_.Get(), 50), 5000u);
    EXPECT_GT(taken, 1);
    UnhookWindowsHookEx(hook);
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
    }
}

constexpr wchar_t kNames[] = L"<names><n>Jo\u00e3o</n><n>Ana</n></names>";

std::wstring sheet(const std::wstring& content, const std::wstring& attributes = L"") {
    return L"<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform' " +
           attributes + L"><xsl:output method='html'/><xsl:template match='/'>" + content +
           L"</xsl:template></xsl:stylesheet>";
}

const std::wstring kList = sheet(
    L"<ul><xsl:for-each select='//n'><li><xsl:value-of select='.'/></li></xsl:for-each></ul>");

class SystemStyleSheets : public SystemSysUtil {
  protected:
    // Whether it was done; `target` is the caller's variable.
    bool transform(const std::wstring& xml, const std::wstring& xslt, Variant& target) {
        const std::wstring result =
            call(L"XsltTransform", {Variant(xml), Variant(xslt), byReference(target)});
        EXPECT_NE(result, L"error");
        return result == L"True";
    }
    static std::wstring content(const std::wstring& path) {
        const std::string bytes = test::readFile(path);
        std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
        std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
        return text;
    }
    test::TemporaryFolder folder_;
};

TEST_F(SystemStyleSheets, TransformTextsAndFiles) {
    test::writeFile(folder_.path(L"names.xml"),
                    "<?xml version='1.0' encoding='windows-1252'?>"
                    "<names><n>Jo\xe3o</n><n>Ana</n></names>");
    test::writeFile(folder_.path(L"list.xsl"), std::string(kList.begin(), kList.end()));
    Variant fromTexts(folder_.path(L"texts.html"));
    Variant fromFiles(folder_.path(L"files.html"));
    Variant named(L"");
    EXPECT_TRUE(transform(L" \r\n" + std::wstring(kNames), kList, fromTexts));
    EXPECT_TRUE(transform(folder_.path(L"names.xml"), folder_.path(L"list.xsl"), fromFiles));
    EXPECT_TRUE(transform(kNames, kList, named));
    const std::wstring html = content(textOf(fromTexts));
    EXPECT_EQ(html.find(L'\uFEFF'), 0u);
    EXPECT_NE(html.find(L"<li>Jo\u00e3o</li>"), std::wstring::npos);
    EXPECT_EQ(content(textOf(fromFiles)), html);
    EXPECT_EQ(content(textOf(named)), html);
    EXPECT_TRUE(textOf(named).ends_with(L".html"));
    EXPECT_TRUE(DeleteFileW(textOf(named).c_str()));
}

TEST_F(SystemStyleSheets, LeaveTheFileAloneWhenTheyCannotBeUsed) {
    const std::wstring path = folder_.path(L"kept.html");
    test::writeFile(path, "kept");
    std::wstring import = kList;
    import.insert(import.find(L"<xsl:output"), L"<xsl:import href='other.xsl'/>");
    const std::wstring script = L"xmlns:ms='urn:schemas-microsoft-com:xslt'";
    using Pair = std::pair<std::wstring, std::wstring>;
    for (const auto& [xml, xslt] : {
             Pair{L"", kList},
             {folder_.path(L"none.xml"), kList},
             {L"<!DOCTYPE names [<!ENTITY e 'x'>]><names>&e;</names>", kList},
             {kNames, L"<no-style-sheet/>"},
             {kNames, sheet(L"<xsl:value-of select='document( \"" + path + L"\")'/>")},
             {kNames, sheet(L"", L"xmlns:e='urn:e' extension-element-prefixes='e'")},
             {kNames, sheet(L"<ms:script/>", script)},
             {kNames, import},
             {kNames, sheet(L"<xsl:value-of select='//['/>")},
             {kNames, sheet(L"")},
         }) {
        Variant target(path);
        EXPECT_FALSE(transform(xml, xslt, target)) << std::filesystem::path(xml + L" " + xslt);
        EXPECT_EQ(textOf(target), path);
        EXPECT_EQ(test::readFile(path), "kept");
    }
    Variant impossible(folder_.path(L"no\\such\\folder.html"));
    EXPECT_FALSE(transform(kNames, kList, impossible));
}

}  // namespace
}  // namespace vela
