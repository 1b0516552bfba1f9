#include "system/registry.h"

#include <array>

#include "runtime/handles.h"
#include "text/ansi_bytes.h"
#include "text/core/text_normalisation.h"

namespace vela {

namespace {

constexpr DWORD kLongest = 512;  // bytes of the ANSI code page

// Up to its first NUL.
std::wstring name(std::wstring_view text) { return std::wstring(text.substr(0, text.find(L'\0'))); }

// The code of opening a key for one purpose, or else of what `use` does with it.
template <class Use>
LONG withKey(HKEY root, std::wstring_view path, REGSAM access, Use use) {
    RegistryKey key;
    const LONG code = RegOpenKeyExW(root, name(path).c_str(), 0, access, key.put());
    return code == ERROR_SUCCESS ? use(key.get()) : code;
}

std::wstring shown(std::wstring text) {
    std::erase(text, L'\0');
    return std::wstring(trimmed(text));
}

bool isText(DWORD type) { return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ; }

}  // namespace

HKEY rootKey(long number) {
    // The predefined handles are sign-extended where handles are wider.
    return reinterpret_cast<HKEY>(static_cast<LONG_PTR>(number));
}

LONG readRegistryText(HKEY root, std::wstring_view key, std::wstring_view value,
                      std::wstring& content) {
    return withKey(root, key, KEY_READ, [&](HKEY open) -> LONG {
        std::array<wchar_t, kLongest> buffer;
        auto* const bytes = reinterpret_cast<char*>(buffer.data());
        DWORD size = sizeof buffer, type = REG_NONE;
        const LONG code = RegQueryValueExW(open, name(value).c_str(), nullptr, &type,
                                           reinterpret_cast<BYTE*>(bytes), &size);
        if (code != ERROR_SUCCESS) return code;
        if (!isText(type) && size > kLongest) return ERROR_MORE_DATA;
        content = shown(isText(type) ? std::wstring(buffer.data(), size / sizeof(wchar_t))
                                     : ansiText({bytes, size}));
        return code;
    });
}

LONG writeRegistryText(HKEY root, std::wstring_view key, std::wstring_view value,
                       std::wstring_view content) {
    return withKey(root, key, KEY_WRITE, [&](HKEY open) {
        // The system counts a NUL behind the data in, so something else must stand there.
        const std::wstring stored = ansiText(ansiBytes(content)) + L' ';
        return RegSetValueExW(open, name(value).c_str(), 0, REG_SZ,
                              reinterpret_cast<const BYTE*>(stored.data()),
                              static_cast<DWORD>(content.size() * sizeof(wchar_t)));
    });
}

LONG registrySubkey(HKEY root, std::wstring_view key, DWORD index, std::wstring& found) {
    return withKey(root, key, KEY_READ, [&](HKEY open) {
        std::array<wchar_t, kLongest> buffer;
        DWORD size = buffer.size();
        const LONG code =
            RegEnumKeyExW(open, index, buffer.data(), &size, nullptr, nullptr, nullptr, nullptr);
        if (code == ERROR_SUCCESS) found = shown({buffer.data(), size});
        return code;
    });
}

LONG deleteRegistryKey(HKEY root, std::wstring_view key, std::wstring_view child) {
    return withKey(root, key, KEY_CREATE_SUB_KEY, [&](HKEY open) -> LONG {
        const std::wstring deleted = name(child);
        // The system would delete the parent.
        if (deleted.empty()) return ERROR_FILE_NOT_FOUND;
        return RegDeleteKeyW(open, deleted.c_str());
    });
}

LONG deleteRegistryValue(HKEY root, std::wstring_view key, std::wstring_view value) {
    return withKey(root, key, KEY_SET_VALUE,
                   [&](HKEY open) { return RegDeleteValueW(open, name(value).c_str()); });
}

}  // namespace vela
