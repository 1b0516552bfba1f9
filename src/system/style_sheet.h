// XML made into other text by an XSLT style sheet, through the platform's document model.
#pragma once

#include <string>
#include <string_view>

namespace vela {

// `xml` and `styleSheet` are the text itself, where it begins with "<", or else the name of a file.
// The result is written to `target` as UTF-16 with a byte order mark, in the place of a file that
// is there; nothing is written on failure. False when a source cannot be read, when the result is
// empty, and for a style sheet that is not self-contained: one that imports, runs script, opens
// documents or writes them. Throws Error where the platform's parser or transformation fails.
bool transformToFile(std::wstring_view xml, std::wstring_view styleSheet,
                     const std::wstring& target);

// A file name in the folder for temporary files that no file has; empty on failure.
std::wstring temporaryHtmlName();

}  // namespace vela
