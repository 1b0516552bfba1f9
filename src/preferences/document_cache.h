// The documents read so far: all sections of a document come from one reading of its file.
#pragma once

#include <optional>
#include <string>

#include "xml/xml_document.h"

namespace vela {

// The document of a file, as it was when it was first asked for; none when there is no such file.
// Not to be changed. Throws Error when the file cannot be read, or is no document.
std::optional<XmlDocument> cachedDocument(const std::wstring& fileName);

// From now on every file is read anew.
void forgetDocuments();

}  // namespace vela
