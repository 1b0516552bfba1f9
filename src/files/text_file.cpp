#include "files/text_file.h"

#include <algorithm>
#include <vector>

#include "automation/error.h"
#include "files/whole_file.h"
#include "text/ansi_bytes.h"
#include "text/text_transforms.h"

namespace vela {

namespace {

// Read or written at a time: small enough that the bytes stay in the processor's cache between the
// file and the text.
constexpr std::size_t kPart = 256 << 10;

void checkFile(DWORD error) { check(HRESULT_FROM_WIN32(error)); }

Bstr roomFor(std::size_t units) {
    Bstr room = Bstr::owning(SysAllocStringLen(nullptr, static_cast<UINT>(units)));
    if (!room.get()) throw std::bad_alloc();
    return room;
}

}  // namespace

Bstr readText(const std::wstring& path) {
    FileReading file(path);
    checkFile(file.error());
    Bstr text = roomFor(file.size());
    std::vector<char> part((std::min)(kPart, file.size()));
    std::size_t done = 0;
    while (done < file.size()) {
        const std::size_t wanted = (std::min)(part.size(), file.size() - done);
        const std::size_t read = file.read(part.data(), wanted);
        ansiText({part.data(), read}, text.data() + done);
        done += read;
        if (read < wanted) break;
    }
    checkFile(file.error());
    return done == file.size() ? std::move(text) : Bstr(text.view().substr(0, done));
}

void writeText(const std::wstring& path, std::wstring_view text) {
    FileReplacement file(path);
    std::vector<char> part((std::min)(kPart, text.size()));
    while (!text.empty()) {
        const std::wstring_view units = text.substr(0, kPart);
        ansiBytes(units, part.data());
        checkFile(file.append(part.data(), units.size()));
        text.remove_prefix(units.size());
    }
    checkFile(file.commit(FILE_ATTRIBUTE_NORMAL));
}

Bstr readEncrypted(const std::wstring& path, std::wstring_view key) {
    return Bstr(decryptedText(readText(path).view(), key));
}

void writeEncrypted(const std::wstring& path, std::wstring_view text, std::wstring_view key) {
    writeText(path, encryptedText(text, key));
}

void encryptFile(const std::wstring& from, const std::wstring& to, std::wstring_view key) {
    writeEncrypted(to, readText(from).view(), key);
}

void decryptFile(const std::wstring& from, const std::wstring& to, std::wstring_view key) {
    writeText(to, readEncrypted(from, key).view());
}

}  // namespace vela
