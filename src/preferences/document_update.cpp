#include "preferences/document_update.h"

#include <algorithm>
#include <span>

#include "automation/error.h"
#include "preferences/document_bytes.h"
#include "preferences/document_names.h"
#include "preferences/kept_aside.h"
#include "preferences/preference_document.h"

namespace vela {

namespace {

constexpr DWORD kNewFileAttributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE;

Bytes contentOf(const std::wstring& fileName, DWORD patience) {
    Bytes content;
    const DWORD error = readWholeFile(fileName, content, (std::min)(patience, kMoment));
    if (error != ERROR_FILE_NOT_FOUND) check(HRESULT_FROM_WIN32(error));
    return content;
}

void replace(FileReplacement& file, const std::string& content) {
    check(HRESULT_FROM_WIN32(file.commit(content.data(), content.size(), kNewFileAttributes)));
}

}  // namespace

DocumentUpdate::DocumentUpdate(const std::wstring& fileName, DWORD patience)
    : fileName_(documentName(fileName)), replacement_(fileName, patience) {
    check(HRESULT_FROM_WIN32(replacement_.error()));
    content_ = std::make_shared<const Bytes>(contentOf(fileName, patience));
    std::optional<XmlDocument> found;
    if (!content_->empty()) found = parsed(*content_);
    existed_ = found.has_value();
    document_ = existed_ ? *found : emptyDocument();
}

void DocumentUpdate::commit() {
    const std::string written = bytesOf(document_);
    const auto bytes = std::as_bytes(std::span(written));
    auto content = std::make_shared<const Bytes>(bytes.begin(), bytes.end());
    if (existed_ && *content == *content_) return;
    if (!existed_ && !content_->empty()) keepAside(fileName_, *content_);
    replace(replacement_, written);
    content_ = std::move(content);
}

void createDocument(const std::wstring& fileName) {
    FileReplacement replacement(documentName(fileName));
    replace(replacement, bytesOf(emptyDocument()));
}

}  // namespace vela
