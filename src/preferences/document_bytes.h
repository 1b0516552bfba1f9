// A preference document as its file holds it.
#pragma once

#include <string>

#include "xml/xml_document.h"

namespace vela {

// The document with its declaration, in windows-1252, whatever it was read from. Characters that
// the code page lacks are written as references; a document that has one in a name, a comment or
// the like, which cannot hold references, is written in UTF-8.
std::string bytesOf(const XmlDocument& document);

}  // namespace vela
