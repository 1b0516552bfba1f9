// What registering writes, and that unregistering takes all of it away again.
#include <set>

#include "frame/built_library.h"

namespace vela {
namespace {

using test::Described;
using test::eachDescription;
using Keys = std::set<std::wstring>;

const std::wstring kLibrary = L"{4ECB9996-FB8D-4212-9D6E-2232B9BA3FF9}";

std::wstring braced(const GUID& id) {
    wchar_t buffer[40] = {};
    StringFromGUID2(id, buffer, 40);
    return buffer;
}

// Every key below Software\Classes that could be ours, whether it is offered or not.
Keys keysOfOurs() {
    Keys keys{L"TypeLib\\" + kLibrary};
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

// The text of a value below Software\Classes.
std::wstring valueOf(HKEY root, const std::wstring& key, const wchar_t* name = nullptr) {
    wchar_t buffer[512] = {};
    DWORD size = sizeof buffer;
    const LSTATUS status = RegGetValueW(root, (L"Software\\Classes\\" + key).c_str(), name,
                                        RRF_RT_REG_SZ, nullptr, buffer, &size);
    return status == 0 ? buffer : L"(none)";
}

// The keys of ours that are there. `root` HKEY_LOCAL_MACHINE or HKEY_CURRENT_USER.
Keys present(HKEY root) {
    Keys found = keysOfOurs();
    std::erase_if(found, [&](const std::wstring& key) {
        HKEY opened = nullptr;
        RegOpenKeyW(root, (L"Software\\Classes\\" + key).c_str(), &opened);
        RegCloseKey(opened);
        return opened == nullptr;
    });
    return found;
}

void expectClassesIn(HKEY root) {
    Keys expected;
    eachDescription([&](const Described& described) {
        if (!described.isClass() || !described.isOffered()) return;
        const std::wstring progId = L"VelaUtil10." + described.name;
        const std::wstring id = braced(described.attributes.guid);
        const std::wstring key = L"CLSID\\" + id;
        expected.insert({key, progId});
        EXPECT_EQ(valueOf(root, key + L"\\InprocServer32"), test::modulePath());
        EXPECT_EQ(valueOf(root, key + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
        EXPECT_EQ(valueOf(root, key + L"\\ProgID"), progId);
        EXPECT_EQ(valueOf(root, key + L"\\TypeLib"), kLibrary);
        EXPECT_EQ(valueOf(root, key + L"\\Version"), L"1.0");
        EXPECT_EQ(valueOf(root, progId + L"\\CLSID"), id);
    });
    Keys classes = present(root);
    std::erase_if(classes, [](const std::wstring& key) {
        return key.starts_with(L"TypeLib") || key.starts_with(L"Interface");
    });
    EXPECT_EQ(classes, expected);
    const std::wstring library = L"TypeLib\\" + kLibrary + L"\\1.0";
    const wchar_t* platform = sizeof(void*) == 8 ? L"\\0\\win64" : L"\\0\\win32";
    EXPECT_EQ(valueOf(root, library + platform), test::modulePath());
    const std::wstring collection = L"Interface\\" + braced(__uuidof(_Collection));
    EXPECT_EQ(valueOf(root, collection), L"_Collection");
    EXPECT_EQ(valueOf(root, collection + L"\\TypeLib"), kLibrary);
}

// Starts without any registration, and leaves the machine's behind, whatever happens.
class FrameRegistration : public testing::Test {
  protected:
    FrameRegistration() {
        module_.call("DllUnregisterServer");
        install(FALSE, L"user");
    }
    ~FrameRegistration() override {
        install(FALSE, L"user");
        EXPECT_EQ(module_.call("DllRegisterServer"), S_OK);
    }
    HRESULT install(BOOL on, const wchar_t* scope) {
        return module_.call<BOOL, PCWSTR>("DllInstall", on, scope);
    }
    const test::Module module_{test::modulePath()};
};

TEST_F(FrameRegistration, WritesWhereToldAndTakesEverythingAway) {
    const struct {
        std::function<HRESULT(bool)> apply;
        HKEY root;
        HKEY other;
    } cases[] = {
        {[&](bool on) { return module_.call(on ? "DllRegisterServer" : "DllUnregisterServer"); },
         HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER},
        {[&](bool on) { return install(on, L"User"); }, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE},
        {[&](bool on) { return install(on, nullptr); }, HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER},
    };
    for (const auto& [apply, root, other] : cases) {
        for (const bool on : {true, true, false, false}) {  // again is no different
            EXPECT_EQ(apply(on), S_OK);
            EXPECT_EQ(present(other), Keys{});
            if (on) expectClassesIn(root);
            else EXPECT_EQ(present(root), Keys{});
        }
    }
}

}  // namespace
}  // namespace vela
