// The registry as callers meet it: the bytes that are stored, the codes that come back, and what is
// left alone.
#include "system/registry.h"
#include "frame/SysUtil.h"
#include "support/support.h"
#include "system/RegistryUtil.h"

namespace vela {
namespace {

using test::arg;
using test::byReference;

// A key of its own for one test, removed with everything below it.
class SystemRegistry : public test::NoObjectsLeft {
  protected:
    void SetUp() override { addKey(L""); }
    void TearDown() override { RegDeleteTreeW(HKEY_CURRENT_USER, kKey); }

    static HKEY openKey(const std::wstring& below) {
        HKEY key = nullptr;
        EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, (kKey + below).c_str(), 0, nullptr, 0,
                                  KEY_ALL_ACCESS, nullptr, &key, nullptr),
                  ERROR_SUCCESS);
        return key;
    }
    static void addKey(const std::wstring& below) { RegCloseKey(openKey(below)); }
    static void storeRaw(const wchar_t* name, DWORD type, std::string_view bytes) {
        EXPECT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kKey, name, type, bytes.data(),
                                  static_cast<DWORD>(bytes.size())),
                  ERROR_SUCCESS);
    }
    // What is stored, as it stands in the registry.
    static std::wstring storedText(const wchar_t* name) {
        wchar_t content[1024];
        DWORD size = sizeof content;
        DWORD type = REG_NONE;
        const HKEY key = openKey(L"");
        EXPECT_EQ(
            RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(content), &size),
            ERROR_SUCCESS);
        RegCloseKey(key);
        EXPECT_EQ(type, DWORD{REG_SZ});
        return std::wstring(content, size / sizeof(wchar_t));
    }

    // Calls late-bound with a script's variable in the place of Conteudo; the code must be the last
    // system error, too.
    LONG call(const wchar_t* member, const std::wstring& key, const wchar_t* name,
              Variant* content = nullptr, long root = HKCU) {
        const Bstr path(key);
        const Bstr entry(name ? name : L"");
        std::vector<VARIANT> arguments{arg(root), arg(path)};
        if (name) arguments.push_back(arg(entry));
        if (content) arguments.push_back(byReference(*content));
        SetLastError(12345);
        const test::Called called = test::call(registry_.Get(), member, std::move(arguments));
        const DWORD lastError = GetLastError();
        EXPECT_EQ(called.outcome, S_OK);
        EXPECT_EQ(lastError, static_cast<DWORD>(called.result.lVal));
        return called.result.lVal;
    }
    LONG write(const wchar_t* name, std::wstring_view content) {
        Variant variable(content);
        return call(L"SetRegistryValue", kKey, name, &variable);
    }
    // The text, or the code where that is not 0.
    std::wstring read(const wchar_t* name) {
        Variant variable(7L);
        const LONG code = call(L"GetRegistryValue", kKey, name, &variable);
        EXPECT_EQ(variable.vt, code == 0 ? VT_BSTR : VT_I4);
        return code == 0 ? textOf(variable) : std::to_wstring(code);
    }
    std::wstring enumerate(const wchar_t* member, const std::wstring& below = L"") {
        Variant variable(std::wstring_view(L"as it was"));
        const LONG code = call(member, kKey + below, nullptr, &variable);
        EXPECT_EQ(code == 0, textOf(variable) != L"as it was");
        return code == 0 ? textOf(variable) : std::to_wstring(code);
    }

    static inline const wchar_t* const kKey = [] {
        static const std::wstring name =
            L"Software\\VelaUtilTest" + std::to_wstring(GetCurrentProcessId());
        return name.c_str();
    }();
    ComPtr<_RegistryUtil> registry_ = make<RegistryUtil>();
};

TEST_F(SystemRegistry, KeepsTextAsAnsiBytesWithoutTerminator) {
    struct Case {
        std::wstring written;
        std::wstring stored;
        std::wstring read;
    };
    const auto many = [](int count) { return std::wstring(count, L'x'); };
    for (const Case& each : {
             Case{L"", L"", L""},
             {L"a", L"a", L"a"},
             {L"Aç\u00e3o \u20ac", L"Aç\u00e3o \u20ac", L"Aç\u00e3o \u20ac"},
             {L"a\u65e5b\u0416", L"a?b?", L"a?b?"},
             {L"  two  \t ", L"  two  \t ", L"two  \t"},
             {L"   ", L"   ", L""},
             {std::wstring(L" \0a\0 b\0", 7), std::wstring(L" \0a\0 b\0", 7), L"a b"},
             {many(511), many(511), many(511)},
             {many(512), many(512), many(512)},
             {many(513), many(513), L"234"},
         }) {
        EXPECT_EQ(write(L"Descri\u00e7\u00e3o", each.written), ERROR_SUCCESS);
        EXPECT_EQ(storedText(L"Descri\u00e7\u00e3o"), each.stored);
        EXPECT_EQ(read(L"Descri\u00e7\u00e3o"), each.read);
    }
    // A value without a name is one like any other; a variable of another type is converted.
    Variant number(42L);
    EXPECT_EQ(call(L"SetRegistryValue", kKey, L"", &number), ERROR_SUCCESS);
    EXPECT_EQ(read(L""), L"42");
}

TEST_F(SystemRegistry, ReadsValuesOfEveryTypeAsTheirBytes) {
    const std::string most(512, '\xe7');
    storeRaw(L"number", REG_DWORD, std::string_view("B\0C\xe1", 4));
    storeRaw(L"bytes", REG_BINARY, most);
    storeRaw(L"more", REG_BINARY, most + "x");
    storeRaw(L"nothing", REG_NONE, "");
    EXPECT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kKey, L"list", REG_MULTI_SZ, L"a\0b\0", 10),
              ERROR_SUCCESS);
    EXPECT_EQ(read(L"number"), L"BC\u00e1");
    EXPECT_EQ(read(L"bytes"), std::wstring(512, L'\u00e7'));
    EXPECT_EQ(read(L"more"), L"234");
    EXPECT_EQ(read(L"nothing"), L"");
    EXPECT_EQ(read(L"list"), L"ab");
}

TEST_F(SystemRegistry, AnswersWithTheSystemsCodesAndMakesNoKeys) {
    addKey(L"\\full\\inner");
    storeRaw(L"value", REG_SZ, "");
    struct Case {
        const wchar_t* member;
        std::wstring below;
        const wchar_t* name;
        LONG code;
        long root = HKCU;
    };
    for (const Case& each : {
             Case{L"GetRegistryValue", L"", L"none", ERROR_FILE_NOT_FOUND},
             {L"GetRegistryValue", L"\\none", L"value", ERROR_FILE_NOT_FOUND},
             {L"GetRegistryValue", L"", L"value", ERROR_FILE_NOT_FOUND, HKCC},
             {L"GetRegistryValue", L"", L"value", ERROR_INVALID_HANDLE, 0},
             {L"SetRegistryValue", L"\\none", L"value", ERROR_FILE_NOT_FOUND},
             {L"GetFirstKey", L"\\none", nullptr, ERROR_FILE_NOT_FOUND},
             {L"GetNextKey", L"\\full\\inner", nullptr, ERROR_NO_MORE_ITEMS},
             {L"DeleteKey", L"", L"none", ERROR_FILE_NOT_FOUND},
             {L"DeleteKey", L"\\none", L"none", ERROR_FILE_NOT_FOUND},
             {L"DeleteKey", L"", L"full", ERROR_ACCESS_DENIED},
             {L"DeleteKey", L"\\full\\inner", L"", ERROR_FILE_NOT_FOUND},
             {L"DeleteKey", L"\\full", L"inner", ERROR_SUCCESS},
             {L"DeleteValue", L"\\none", L"value", ERROR_FILE_NOT_FOUND},
             {L"DeleteValue", L"", L"value", ERROR_SUCCESS},
             {L"DeleteValue", L"", L"value", ERROR_FILE_NOT_FOUND},
         }) {
        const std::wstring key = kKey + each.below;
        Variant content(std::wstring_view(L"as it was"));
        const bool deletes = std::wstring_view(each.member).starts_with(L"Delete");
        EXPECT_EQ(call(each.member, key, each.name, deletes ? nullptr : &content, each.root),
                  each.code)
            << each.member << std::string(key.begin(), key.end());
        EXPECT_EQ(textOf(content), L"as it was") << each.member;
    }
    EXPECT_EQ(enumerate(L"GetFirstKey"), L"full");
}

TEST_F(SystemRegistry, EnumeratesWithOneIndexForAllKeys) {
    for (const wchar_t* name : {L"\\a\u00e7\u00e3o", L"\\b\\x", L"\\b\\y", L"\\b\\z", L"\\c"}) {
        addKey(name);
    }
    EXPECT_EQ(enumerate(L"GetNextKey"), L"a\u00e7\u00e3o");
    EXPECT_EQ(enumerate(L"GetNextKey", L"\\b"), L"y");
    EXPECT_EQ(enumerate(L"GetNextKey", L"\\none"), L"2");
    EXPECT_EQ(enumerate(L"GetNextKey"), L"c");
    EXPECT_EQ(enumerate(L"GetNextKey"), L"259");
    EXPECT_EQ(enumerate(L"GetNextKey"), L"259");
    addKey(L"\\d");
    EXPECT_EQ(enumerate(L"GetNextKey"), L"d");
    // A start that fails is a start all the same.
    EXPECT_EQ(enumerate(L"GetFirstKey", L"\\none"), L"2");
    EXPECT_EQ(enumerate(L"GetNextKey"), L"a\u00e7\u00e3o");
    // What follows a deleted key moves up into its place, and is passed over.
    EXPECT_EQ(call(L"DeleteKey", kKey, L"a\u00e7\u00e3o"), ERROR_SUCCESS);
    EXPECT_EQ(enumerate(L"GetNextKey"), L"c");
    for (const wchar_t* name : {L"x", L"y", L"z"}) {
        EXPECT_EQ(enumerate(L"GetFirstKey", L"\\b"), name);
        EXPECT_EQ(call(L"DeleteKey", kKey + std::wstring(L"\\b"), name), ERROR_SUCCESS);
    }
    EXPECT_EQ(enumerate(L"GetFirstKey", L"\\b"), L"259");
}

TEST_F(SystemRegistry, TakesNullTextsAndPointers) {
    LONG code = 0;
    BSTR nothing = nullptr;
    EXPECT_EQ(registry_->SetRegistryValue(HKCU, Bstr(kKey).get(), nullptr, &nothing, &code), S_OK);
    EXPECT_EQ(code, ERROR_SUCCESS);
    EXPECT_EQ(storedText(L""), L"");
    EXPECT_EQ(registry_->GetFirstKey(HKCU, nullptr, &nothing, &code), S_OK);
    EXPECT_EQ(code, ERROR_SUCCESS);  // the root itself
    Bstr::owning(nothing);
    EXPECT_EQ(registry_->GetRegistryValue(HKCU, nullptr, nullptr, nullptr, &code), S_OK);
    EXPECT_EQ(code, ERROR_INVALID_PARAMETER);
    EXPECT_EQ(registry_->GetNextKey(HKCU, nullptr, nullptr, &code), S_OK);
    EXPECT_EQ(code, ERROR_INVALID_PARAMETER);
    EXPECT_EQ(registry_->GetNextKey(HKCU, nullptr, nullptr, nullptr), E_POINTER);
}

TEST_F(SystemRegistry, IsReadThroughSysUtil) {
    const auto sys = make<SysUtil>();
    const auto read = [&](const wchar_t* member, const wchar_t* key, const wchar_t* name) {
        const Bstr path(key);
        const Bstr entry(name);
        return textOf(test::call(sys.Get(), member, {arg(path), arg(entry)}).result);
    };
    EXPECT_EQ(write(L"value", L" S\u00e3o Jo\u00e3o "), ERROR_SUCCESS);
    EXPECT_EQ(read(L"RegistryLerValorLocalUser", kKey, L"value"), L"S\u00e3o Jo\u00e3o");
    EXPECT_EQ(read(L"RegistryLerValorLocalMachine", kKey, L"value"), L"");
    EXPECT_EQ(
        read(L"RegistryLerValorLocalMachine", L"Software\\Classes\\VelaUtil10.SysUtil\\CLSID", L""),
        L"{95788B3C-A6E0-4E2E-8C73-90595B728B98}");
    EXPECT_EQ(write(L"value", std::wstring(513, L'x')), ERROR_SUCCESS);
    EXPECT_EQ(read(L"RegistryLerValorLocalUser", kKey, L"value"), L"");
}

}  // namespace
}  // namespace vela
