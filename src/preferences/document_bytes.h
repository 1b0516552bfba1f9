// A preference document as its file holds it.
#pragma once

#include <string>

#include "xml/xml_document.h"

namespace vela {

// The document in windows-1252, whatever it was read from. Characters that the code page lacks are
// written as references; throws Error where one stands in a name or a comment, which cannot hold
// references.
std::string bytesOf(const XmlDocument& document);

}  // namespace vela
