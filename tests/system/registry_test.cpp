// The registry as callers meet it: the bytes that are stored, the codes that come back, and what is
// left alone.
#include "system/registry.h"
#include "support/support.h"
#include "system/RegistryUtil.h"

namespace vela {
namespace {

// A key of its own for one test, removed with everything below it.
class SystemRegistry : public test::NoObjectsLeft {
  protected:
    SystemRegistry() { EXPECT_EQ(RegCreateKeyW(HKEY_CURRENT_USER, name_.c_str(), &key_), 0); }
    ~SystemRegistry() override {
        RegCloseKey(key_);
        RegDeleteTreeW(HKEY_CURRENT_USER, name_.c_str());
    }

    void addKey(const wchar_t* below) {
        HKEY added = nullptr;
        EXPECT_EQ(RegCreateKeyW(key_, below, &added), 0);
        RegCloseKey(added);
    }
    void storeRaw(const wchar_t* name, DWORD type, std::string_view bytes) {
        EXPECT_EQ(RegSetValueExW(key_, name, 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                                 static_cast<DWORD>(bytes.size())),
                  0);
    }
    // The text that is stored, with any terminator.
    std::wstring storedText(const wchar_t* name) {
        std::wstring content(1024, L'.');
        DWORD size = 2048;
        DWORD type = REG_NONE;
        EXPECT_EQ(RegQueryValueExW(key_, name, nullptr, &type,
                                   reinterpret_cast<BYTE*>(content.data()), &size),
                  0);
        EXPECT_EQ(type, DWORD{REG_SZ});
        return content.substr(0, size / sizeof(wchar_t));
    }

    // Calls late-bound with a script's variable in the place of Conteudo; the code must be the last
    // system error, too.
    LONG call(const wchar_t* member, const std::wstring& below, const wchar_t* name,
              Variant* content = nullptr, long root = HKCU) {
        const Bstr path(name_ + below);
        const Bstr entry(name ? name : L"");
        std::vector<VARIANT> arguments{test::arg(root), test::arg(path)};
        if (name) arguments.push_back(test::arg(entry));
        if (content) arguments.push_back(test::byReference(*content));
        SetLastError(12345);
        const test::Called called = test::call(registry_.Get(), member, std::move(arguments));
        const DWORD lastError = GetLastError();
        EXPECT_EQ(called.outcome, S_OK);
        EXPECT_EQ(lastError, static_cast<DWORD>(called.result.lVal));
        return called.result.lVal;
    }
    LONG write(const wchar_t* name, Variant content) {
        return call(L"SetRegistryValue", L"", name, &content);
    }
    // The text, or the code where that is not 0.
    std::wstring read(const wchar_t* member, const std::wstring& below, const wchar_t* name) {
        Variant variable(7L);
        const LONG code = call(member, below, name, &variable);
        EXPECT_EQ(variable.vt, code == 0 ? VT_BSTR : VT_I4);
        return code == 0 ? textOf(variable) : std::to_wstring(code);
    }
    std::wstring read(const wchar_t* name) { return read(L"GetRegistryValue", L"", name); }
    std::wstring enumerate(const wchar_t* member, const std::wstring& below = L"") {
        return read(member, below, nullptr);
    }

    const std::wstring name_ = L"Software\\VelaUtilTest" + std::to_wstring(GetCurrentProcessId());
    HKEY key_ = nullptr;
    ComPtr<_RegistryUtil> registry_ = make<RegistryUtil>();
};

TEST_F(SystemRegistry, KeepsTextAsAnsiBytesWithoutTerminator) {
    const std::wstring zeros(L" \0a\0 b\0", 7);
    const std::wstring longest(512, L'x');
    const struct {
        std::wstring written;
        std::wstring stored;
        std::wstring read;
    } cases[] = {
        {L"", L"", L""},
        {L"A\u00e7\u00e3o \u20ac", L"A\u00e7\u00e3o \u20ac", L"A\u00e7\u00e3o \u20ac"},
        {L"a\u65e5b\u0416", L"a?b?", L"a?b?"},
        {L"  two  \t ", L"  two  \t ", L"two  \t"},
        {zeros, zeros, L"a b"},
        {longest.substr(1), longest.substr(1), longest.substr(1)},
        {longest, longest, longest},
        {longest + L"x", longest + L"x", L"234"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(write(L"Descri\u00e7\u00e3o", Variant(c.written)), 0);
        EXPECT_EQ(storedText(L"Descri\u00e7\u00e3o"), c.stored);
        EXPECT_EQ(read(L"Descri\u00e7\u00e3o"), c.read);
    }
    // A value without a name is one like any other; a variable of another type is converted.
    EXPECT_EQ(write(L"", Variant(42L)), 0);
    EXPECT_EQ(read(L""), L"42");
}

TEST_F(SystemRegistry, ReadsValuesOfEveryTypeAsTheirBytes) {
    storeRaw(L"number", REG_DWORD, std::string_view("B\0C\xe1", 4));
    storeRaw(L"bytes", REG_BINARY, std::string(513, '\xe7'));
    storeRaw(L"list", REG_MULTI_SZ, std::string_view("a\0\0\0b\0\0\0", 8));
    storeRaw(L"odd", REG_SZ,
             std::string_view("\x16\x04"
                              "a\0b",
                              5));
    EXPECT_EQ(read(L"number"), L"BC\u00e1");
    EXPECT_EQ(read(L"bytes"), L"234");
    EXPECT_EQ(read(L"list"), L"ab");
    EXPECT_EQ(read(L"odd"),
              L"\u0416"
              L"a");
}

TEST_F(SystemRegistry, AnswersWithTheSystemsCodesAndMakesNoKeys) {
    addKey(L"full\\inner");
    storeRaw(L"value", REG_SZ, "");
    const struct {
        const wchar_t* member;
        const wchar_t* below;
        const wchar_t* name;
        LONG code;
        long root = HKCU;
    } cases[] = {
        {L"GetRegistryValue", L"", L"none", ERROR_FILE_NOT_FOUND},
        {L"GetRegistryValue", L"\\none", L"value", ERROR_FILE_NOT_FOUND},
        {L"GetRegistryValue", L"", L"value", ERROR_FILE_NOT_FOUND, HKCC},
        {L"GetRegistryValue", L"", L"value", ERROR_INVALID_HANDLE, 0},
        {L"SetRegistryValue", L"\\none", L"value", ERROR_FILE_NOT_FOUND},
        {L"GetNextKey", L"\\full\\inner", nullptr, ERROR_NO_MORE_ITEMS},
        {L"DeleteKey", L"", L"none", ERROR_FILE_NOT_FOUND},
        {L"DeleteKey", L"", L"full", ERROR_ACCESS_DENIED},
        {L"DeleteKey", L"\\full\\inner", L"", ERROR_FILE_NOT_FOUND},
        {L"DeleteKey", L"\\full", L"inner", ERROR_SUCCESS},
        {L"DeleteValue", L"\\none", L"value", ERROR_FILE_NOT_FOUND},
        {L"DeleteValue", L"", L"value", ERROR_SUCCESS},
        {L"DeleteValue", L"", L"value", ERROR_FILE_NOT_FOUND},
    };
    for (const auto& c : cases) {
        Variant content(L"as it was");
        const bool deletes = std::wstring_view(c.member).starts_with(L"Delete");
        EXPECT_EQ(call(c.member, c.below, c.name, deletes ? nullptr : &content, c.root), c.code)
            << testing::PrintToString(c.member) << testing::PrintToString(c.below);
        EXPECT_EQ(textOf(content), L"as it was");
    }
    EXPECT_EQ(enumerate(L"GetFirstKey"), L"full");
}

TEST_F(SystemRegistry, EnumeratesWithOneIndexForAllKeys) {
    for (const wchar_t* name : {L"a\u00e7\u0416o", L"b\\x", L"b\\y", L"b\\z", L"c"}) addKey(name);
    EXPECT_EQ(enumerate(L"GetNextKey"), L"a\u00e7\u0416o");
    EXPECT_EQ(enumerate(L"GetNextKey", L"\\b"), L"y");
    EXPECT_EQ(enumerate(L"GetNextKey", L"\\none"), L"2");
    EXPECT_EQ(enumerate(L"GetNextKey"), L"c");
    EXPECT_EQ(enumerate(L"GetNextKey"), L"259");
    addKey(L"d");
    EXPECT_EQ(enumerate(L"GetNextKey"), L"d");
    // A start that fails is a start all the same.
    EXPECT_EQ(enumerate(L"GetFirstKey", L"\\none"), L"2");
    EXPECT_EQ(enumerate(L"GetNextKey"), L"a\u00e7\u0416o");
    // What follows a deleted key moves up into its place, and is passed over.
    EXPECT_EQ(call(L"DeleteKey", L"", L"a\u00e7\u0416o"), ERROR_SUCCESS);
    EXPECT_EQ(enumerate(L"GetNextKey"), L"c");
    for (const wchar_t* name : {L"x", L"y", L"z"}) {
        EXPECT_EQ(enumerate(L"GetFirstKey", L"\\b"), name);
        EXPECT_EQ(call(L"DeleteKey", L"\\b", name), ERROR_SUCCESS);
    }
    EXPECT_EQ(enumerate(L"GetFirstKey", L"\\b"), L"259");
}

TEST_F(SystemRegistry, TakesNullTextsAndPointers) {
    LONG code = 0;
    BSTR nothing = nullptr;
    EXPECT_EQ(registry_->SetRegistryValue(HKCU, Bstr(name_).get(), nullptr, &nothing, &code), S_OK);
    EXPECT_EQ(code, ERROR_SUCCESS);
    EXPECT_EQ(storedText(L""), L"");
    EXPECT_EQ(registry_->GetNextKey(HKCU, nullptr, nullptr, &code), S_OK);
    EXPECT_EQ(code, ERROR_INVALID_PARAMETER);
    EXPECT_EQ(registry_->GetNextKey(HKCU, nullptr, nullptr, nullptr), E_POINTER);
}

}  // namespace
}  // namespace vela
