#include "system/registry.h"

#include <algorithm>
#include <array>

#include "runtime/handles.h"
#include "text/ansi_bytes.h"
#include "text/core/text_normalisation.h"

namespace vela {

namespace {

using Buffer = std::array<char, 512>;

// The code of opening a key for one purpose, or else of what `use` does with it.
template <class Use>
LONG withKey(HKEY root, std::wstring_view path, REGSAM access, Use use) {
    RegistryKey key;
    const LONG code = RegOpenKeyExA(root, ansiBytes(path).c_str(), 0, access, key.put());
    return code == ERROR_SUCCESS ? use(key.get()) : code;
}

std::wstring textIn(const Buffer& buffer, DWORD size) {
    std::string bytes(buffer.data(), (std::min<std::size_t>)(size, buffer.size()));
    std::erase(bytes, '\0');
    return std::wstring(trimmed(ansiText(bytes)));
}

}  // namespace

HKEY rootKey(long number) {
    // The predefined handles are sign-extended where handles are wider.
    return reinterpret_cast<HKEY>(static_cast<LONG_PTR>(number));
}

LONG readRegistryText(HKEY root, std::wstring_view key, std::wstring_view value,
                      std::wstring& content) {
    return withKey(root, key, KEY_READ, [&](HKEY open) {
        Buffer buffer;
        DWORD size = buffer.size();
        const LONG code = RegQueryValueExA(open, ansiBytes(value).c_str(), nullptr, nullptr,
                                           reinterpret_cast<BYTE*>(buffer.data()), &size);
        if (code == ERROR_SUCCESS) content = textIn(buffer, size);
        return code;
    });
}

LONG writeRegistryText(HKEY root, std::wstring_view key, std::wstring_view value,
                       std::wstring_view content) {
    return withKey(root, key, KEY_WRITE, [&](HKEY open) {
        // The system counts a NUL behind the data in, so something else must stand there.
        const std::string bytes = ansiBytes(content) + ' ';
        return RegSetValueExA(open, ansiBytes(value).c_str(), 0, REG_SZ,
                              reinterpret_cast<const BYTE*>(bytes.data()),
                              static_cast<DWORD>(content.size()));
    });
}

LONG registrySubkey(HKEY root, std::wstring_view key, DWORD index, std::wstring& name) {
    return withKey(root, key, KEY_READ, [&](HKEY open) {
        Buffer buffer;
        Buffer className;
        DWORD size = buffer.size();
        DWORD classSize = className.size();
        const LONG code = RegEnumKeyExA(open, index, buffer.data(), &size, nullptr,
                                        className.data(), &classSize, nullptr);
        if (code == ERROR_SUCCESS) name = textIn(buffer, size);
        return code;
    });
}

LONG deleteRegistryKey(HKEY root, std::wstring_view key, std::wstring_view child) {
    return withKey(root, key, KEY_CREATE_SUB_KEY, [&](HKEY open) -> LONG {
        const std::string name = ansiBytes(child);
        // The system would delete the parent.
        if (*name.c_str() == '\0') return ERROR_FILE_NOT_FOUND;
        return RegDeleteKeyA(open, name.c_str());
    });
}

LONG deleteRegistryValue(HKEY root, std::wstring_view key, std::wstring_view value) {
    return withKey(root, key, KEY_SET_VALUE,
                   [&](HKEY open) { return RegDeleteValueA(open, ansiBytes(value).c_str()); });
}

}  // namespace vela
