#include "text/codecs/md5.h"

#include <windows.h>

#include <bcrypt.h>

#include "automation/error.h"
#include "runtime/handles.h"

namespace vela {

namespace {

struct AlgorithmTraits : NullIsNone<BCRYPT_ALG_HANDLE> {
    static void close(BCRYPT_ALG_HANDLE algorithm) { BCryptCloseAlgorithmProvider(algorithm, 0); }
};
struct HashTraits : NullIsNone<BCRYPT_HASH_HANDLE> {
    static void close(BCRYPT_HASH_HANDLE hash) { BCryptDestroyHash(hash); }
};

void checkStatus(NTSTATUS status) { check(HRESULT_FROM_NT(status)); }

}  // namespace

std::array<std::uint8_t, 16> md5(std::span<const std::byte> bytes) {
    Owner<AlgorithmTraits> algorithm;  // outlives its hash
    Owner<HashTraits> hash;
    checkStatus(BCryptOpenAlgorithmProvider(algorithm.put(), BCRYPT_MD5_ALGORITHM, nullptr, 0));
    checkStatus(BCryptCreateHash(algorithm.get(), hash.put(), nullptr, 0, nullptr, 0, 0));
    auto* content = reinterpret_cast<UCHAR*>(const_cast<std::byte*>(bytes.data()));
    checkStatus(BCryptHashData(hash.get(), content, static_cast<ULONG>(bytes.size()), 0));
    std::array<std::uint8_t, 16> digest;
    checkStatus(BCryptFinishHash(hash.get(), digest.data(), static_cast<ULONG>(digest.size()), 0));
    return digest;
}

}  // namespace vela
