#include "text/codecs/md5.h"

#include <windows.h>

#include <bcrypt.h>

#include <array>
#include <cstdint>

#include "automation/error.h"
#include "text/ansi_bytes.h"
#include "text/numbers/core/number_bases.h"

namespace vela {

namespace {

using Digest = std::array<std::uint8_t, 16>;

void checkStatus(NTSTATUS status) { check(HRESULT_FROM_NT(status)); }

// One run of the platform's algorithm.
class Md5 {
  public:
    Md5() {
        checkStatus(BCryptOpenAlgorithmProvider(&algorithm_, BCRYPT_MD5_ALGORITHM, nullptr, 0));
        const NTSTATUS status = BCryptCreateHash(algorithm_, &hash_, nullptr, 0, nullptr, 0, 0);
        if (status < 0) BCryptCloseAlgorithmProvider(algorithm_, 0);
        checkStatus(status);
    }
    ~Md5() {
        BCryptDestroyHash(hash_);
        BCryptCloseAlgorithmProvider(algorithm_, 0);
    }
    Md5(const Md5&) = delete;
    Md5& operator=(const Md5&) = delete;

    Digest of(const void* data, std::size_t size) {
        Digest digest;
        auto* bytes = static_cast<UCHAR*>(const_cast<void*>(data));
        checkStatus(BCryptHashData(hash_, bytes, static_cast<ULONG>(size), 0));
        checkStatus(BCryptFinishHash(hash_, digest.data(), static_cast<ULONG>(digest.size()), 0));
        return digest;
    }

  private:
    BCRYPT_ALG_HANDLE algorithm_ = nullptr;
    BCRYPT_HASH_HANDLE hash_ = nullptr;
};

std::wstring digestText(const void* data, std::size_t size) {
    return hexText(Md5().of(data, size), L"0123456789abcdef");
}

}  // namespace

std::wstring md5OfAnsi(std::wstring_view text) {
    const std::string bytes = ansiBytes(text);
    return digestText(bytes.data(), bytes.size());
}

std::wstring md5OfUtf16(std::wstring_view text) {
    return digestText(text.data(), text.size() * sizeof(wchar_t));
}

}  // namespace vela
