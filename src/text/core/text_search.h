// Searches within a text. Positions count from 1, and 0 means not found. An empty text is found
// nowhere.
//
// `from` may be any number: a search onwards considers the positions that are not below it, a
// search backwards those that are not above it. Capital letters differ from small ones.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace vela {

// The last place of `what` that begins at `from` or before.
std::size_t findBackwards(std::wstring_view text, std::wstring_view what, long from);

// The first character that is one of `characters`. Throws std::bad_alloc.
std::size_t findFirstOf(std::wstring_view text, std::wstring_view characters, long from);

// How many times `what` occurs, none of them overlapping.
std::size_t occurrences(std::wstring_view text, std::wstring_view what);

// One of several texts that was found: its place among them, from 1, and its position.
struct FoundText {
    std::size_t place = 0;
    std::size_t position = 0;
};
// The one that begins first; of those that begin at one position, the first among `texts`.
FoundText findFirstText(std::wstring_view text, std::span<const std::wstring_view> texts,
                        long from);

// The positions of an opening mark and of the mark that closes it; both 0 when there are none.
struct MarkPair {
    std::size_t opened = 0;
    std::size_t closed = 0;
};
// The first opening mark, and the mark that closes it with pairs in between skipped; none when it
// is never closed. `marks` are the opening and the closing mark, as "()"; what follows them does
// not matter. Where both are the same, pairs do not nest. With fewer marks there is no pair.
MarkPair findPair(std::wstring_view text, std::wstring_view marks, long from = 1);

}  // namespace vela
