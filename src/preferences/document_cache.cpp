#include "preferences/document_cache.h"

#include "automation/error.h"
#include "collections/core/keyed_collection.h"
#include "files/whole_file.h"
#include "preferences/document_names.h"
#include "preferences/preference_document.h"
#include "runtime/apartment.h"

namespace vela {

namespace {

struct DocumentCache : ApartmentCache {
    KeyedCollection<XmlDocument> documents;  // by file name
};

KeyedCollection<XmlDocument>& cache() { return apartmentLocal<DocumentCache>().documents; }

std::optional<XmlDocument> documentIn(const std::wstring& fileName) {
    Bytes content;
    const DWORD error = readWholeFile(documentName(fileName), content);
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) return std::nullopt;
    check(HRESULT_FROM_WIN32(error));
    auto document = parsed(content);
    if (!document) throw Error{E_FAIL, kLibraryName, L"The file is no XML document: " + fileName};
    return document;
}

}  // namespace

std::optional<XmlDocument> cachedDocument(const std::wstring& fileName) {
    if (const XmlDocument* cached = cache().find(fileName)) return *cached;
    const auto document = documentIn(fileName);
    if (document) cache().add(*document, std::wstring_view(fileName));
    return document;
}

void forgetDocuments() { cache().clear(); }

}  // namespace vela
