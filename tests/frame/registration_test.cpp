// What registering writes, and that unregistering takes all of it away again.
#include <set>

#include "frame/built_library.h"

namespace vela {
namespace {

using test::Described;
using test::eachDescription;
using Keys = std::set<std::wstring>;

std::wstring braced(const GUID& id) {
    wchar_t buffer[40] = {};
    StringFromGUID2(id, buffer, 40);
    return buffer;
}

GUID libraryId() {
    const auto library = test::builtTypeLibrary();
    TLIBATTR* attributes = nullptr;
    EXPECT_EQ(library->GetLibAttr(&attributes), S_OK);
    const GUID id = attributes->guid;
    library->ReleaseTLibAttr(attributes);
    return id;
}

// Every key below Software\Classes that could be ours, whether it is offered or not.
Keys keysOfOurs() {
    Keys keys{L"TypeLib\\" + braced(libraryId())};
    eachDescription([&](const Described& described) {
        const std::wstring id = braced(described.attributes.guid);
        if (described.isClass()) {
            keys.insert(L"CLSID\\" + id);
            keys.insert(L"VelaUtil10." + described.name);
        } else if (described.attributes.typekind != TKIND_ENUM) {
            keys.insert(L"Interface\\" + id);
        }
    });
    return keys;
}

// Those of them that are there. `root` HKEY_LOCAL_MACHINE or HKEY_CURRENT_USER.
Keys present(HKEY root) {
    Keys found;
    for (const std::wstring& key : keysOfOurs()) {
        HKEY opened = nullptr;
        if (RegOpenKeyExW(root, (L"Software\\Classes\\" + key).c_str(), 0, KEY_READ, &opened) ==
            0) {
            RegCloseKey(opened);
            found.insert(key);
        }
    }
    return found;
}

std::wstring valueOf(HKEY root, const std::wstring& key, const wchar_t* name = nullptr) {
    wchar_t buffer[512] = {};
    DWORD size = sizeof buffer;
    const LSTATUS status = RegGetValueW(root, (L"Software\\Classes\\" + key).c_str(), name,
                                        RRF_RT_REG_SZ, nullptr, buffer, &size);
    return status == 0 ? buffer : L"(none)";
}

void expectClassesIn(HKEY root) {
    Keys expected;
    eachDescription([&](const Described& described) {
        if (!described.isClass()) return;
        const std::wstring progId = L"VelaUtil10." + described.name;
        const std::wstring id = braced(described.attributes.guid);
        const std::wstring key = L"CLSID\\" + id;
        if (!described.isOffered()) return;
        expected.insert({key, progId});
        EXPECT_EQ(valueOf(root, key + L"\\InprocServer32"), test::modulePath());
        EXPECT_EQ(valueOf(root, key + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
        EXPECT_EQ(valueOf(root, key + L"\\ProgID"), progId);
        EXPECT_EQ(valueOf(root, key + L"\\TypeLib"), braced(libraryId()));
        EXPECT_EQ(valueOf(root, key + L"\\Version"), L"1.0");
        EXPECT_EQ(valueOf(root, progId + L"\\CLSID"), id);
    });
    Keys classes;
    for (const std::wstring& key : present(root)) {
        if (key.starts_with(L"CLSID") || key.starts_with(L"VelaUtil10")) classes.insert(key);
    }
    EXPECT_EQ(classes, expected);
    const std::wstring library = L"TypeLib\\" + braced(libraryId()) + L"\\1.0";
    const wchar_t* platform = sizeof(void*) == 8 ? L"\\0\\win64" : L"\\0\\win32";
    EXPECT_EQ(valueOf(root, library + platform), test::modulePath());
    const std::wstring collection = L"Interface\\" + braced(__uuidof(_Collection));
    EXPECT_EQ(valueOf(root, collection), L"_Collection");
    EXPECT_EQ(valueOf(root, collection + L"\\TypeLib"), braced(libraryId()));
}

// Starts without any registration, and leaves the machine's behind, whatever happens.
class FrameRegistration : public testing::Test {
  protected:
    void SetUp() override {
        module_.call("DllUnregisterServer");
        install(FALSE, L"user");
        ASSERT_EQ(present(HKEY_LOCAL_MACHINE), Keys{});
        ASSERT_EQ(present(HKEY_CURRENT_USER), Keys{});
    }
    void TearDown() override {
        install(FALSE, L"user");
        EXPECT_EQ(module_.call("DllRegisterServer"), S_OK);
    }
    HRESULT install(BOOL on, const wchar_t* scope) {
        return module_.call<BOOL, PCWSTR>("DllInstall", on, scope);
    }
    const test::Module module_{test::modulePath()};
};

TEST_F(FrameRegistration, WritesWhereToldAndTakesEverythingAway) {
    const auto machine = [&] { return module_.call("DllRegisterServer"); };
    const auto noMachine = [&] { return module_.call("DllUnregisterServer"); };
    const struct {
        std::function<HRESULT()> on;
        std::function<HRESULT()> off;
        HKEY root;
        HKEY other;
    } cases[] = {
        {machine, noMachine, HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER},
        {[&] { return install(TRUE, L"User"); }, [&] { return install(FALSE, L"user"); },
         HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE},
        {[&] { return install(TRUE, nullptr); }, [&] { return install(FALSE, L""); },
         HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER},
    };
    for (const auto& [on, off, root, other] : cases) {
        for (int round = 0; round < 2; ++round) {  // registering again is no different
            EXPECT_EQ(on(), S_OK);
            expectClassesIn(root);
            EXPECT_EQ(present(other), Keys{});
        }
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(off(), S_OK);
            EXPECT_EQ(present(root), Keys{});
        }
    }
}

}  // namespace
}  // namespace vela
