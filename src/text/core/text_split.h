// A text in parts. The parts are views of the text. Everything here throws std::bad_alloc.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace vela {

// What stands before, between and behind the separators, so that one or two of them side by side
// enclose an empty part. Without a separator one part; of the empty text none.
std::vector<std::wstring_view> splitAt(std::wstring_view text, std::wstring_view separator);

// Lines of `width` characters at most, which must not be 0. Lines end at the last spaces that keep
// them short enough, or within a word that is longer than a line. Line breaks (CR LF, CR or LF)
// stay such, and so do empty lines between them. Lines neither begin nor end with spaces; those
// within stay. Of the empty text there are none.
std::vector<std::wstring_view> wrapped(std::wstring_view text, std::size_t width);

}  // namespace vela
