// Changing the document of a file, as many of its sections at once as there are to change.
//
//     DocumentUpdate update(fileName);
//     if (change(update.document())) update.commit();
#pragma once

#include <memory>
#include <string>

#include "files/whole_file.h"
#include "xml/xml_document.h"

namespace vela {

// From its construction to its commit or end, others who change the same document wait: what it
// holds is still true when it is replaced. Without a commit the file stays as it is.
class DocumentUpdate {
  public:
    // Reads the file itself, whatever is cached of it. Waits for others up to `patience` ms. Throws
    // Error when its name is not that of a document, or when it cannot be read or replaced.
    DocumentUpdate(const std::wstring& fileName, DWORD patience);

    // An empty one where the file is missing, empty or unreadable.
    const XmlDocument& document() const { return document_; }
    // Whether the document is that of the file.
    bool existed() const { return existed_; }
    // The bytes of the file, as they were found or, from the commit on, are now.
    const std::shared_ptr<const Bytes>& content() const { return content_; }

    // Puts the document in the file's place, hidden where there was no file; a file that holds just
    // that is left alone. What was unreadable is kept aside. Throws Error.
    void commit();

  private:
    std::wstring fileName_;
    FileReplacement replacement_;
    std::shared_ptr<const Bytes> content_;
    XmlDocument document_;
    bool existed_ = false;
};

// Puts an empty document in the file's place, hidden where there was no file. Throws Error.
void createDocument(const std::wstring& fileName);

}  // namespace vela
