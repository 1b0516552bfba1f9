// The documents read so far: all sections of a document come from one reading of its file.
#pragma once

#include <memory>
#include <string>

#include "files/whole_file.h"
#include "xml/xml_document.h"

namespace vela {

struct ReadDocument {
    XmlDocument document;  // not to be changed; none when there is no such file
    std::shared_ptr<const Bytes> content;
};

// The document of a file, as it was when it was first asked for. A file that another program has
// locked is waited for, about a second. Throws Error when the file cannot be read, or is no
// document.
ReadDocument cachedDocument(const std::wstring& fileName);

// From now on every file is read anew.
void forgetDocuments();

}  // namespace vela
