#include "preferences/document_cache.h"

#include "automation/error.h"
#include "collections/core/keyed_collection.h"
#include "preferences/document_names.h"
#include "preferences/preference_document.h"
#include "runtime/apartment.h"

namespace vela {

namespace {

struct DocumentCache : ApartmentCache {
    KeyedCollection<ReadDocument> documents;  // by file name
    // What was last waited for in vain, and until when: the sections of one document do not wait
    // one after the other.
    std::wstring locked;
    ULONGLONG waited = 0;
};

DocumentCache& cache() { return apartmentLocal<DocumentCache>(); }

DWORD read(const std::wstring& fileName, Bytes& content) {
    const bool waited = cache().locked == fileName && GetTickCount64() - cache().waited < kMoment;
    const DWORD error =
        waited ? readWholeFile(fileName, content, 0) : readWholeFile(fileName, content);
    if (error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION) {
        cache().locked = fileName;
        cache().waited = GetTickCount64();
    }
    return error;
}

ReadDocument documentIn(const std::wstring& fileName) {
    auto content = std::make_shared<Bytes>();
    const DWORD error = read(documentName(fileName), *content);
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) return {};
    check(HRESULT_FROM_WIN32(error));
    const auto document = parsed(*content);
    if (!document) throw Error{E_FAIL, kLibraryName, L"The file is no XML document: " + fileName};
    return {*document, std::move(content)};
}

}  // namespace

ReadDocument cachedDocument(const std::wstring& fileName) {
    if (const ReadDocument* cached = cache().documents.find(fileName)) return *cached;
    const ReadDocument read = documentIn(fileName);
    if (read.document) cache().documents.add(read, std::wstring_view(fileName));
    return read;
}

void forgetDocuments() { cache().documents.clear(); }

}  // namespace vela
