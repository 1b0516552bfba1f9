// The code page of the preference documents.
#pragma once

#include <string>
#include <string_view>

namespace vela {

// UTF-16 text as windows-1252 bytes. A character that the code page lacks becomes a decimal XML
// reference and makes `complete` false.
std::string toWindows1252(std::wstring_view text, bool& complete);

}  // namespace vela
