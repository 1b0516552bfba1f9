// A set of characters that is asked often.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace vela {

// Immutable. Each question takes time by the logarithm of the set's size.
class CharacterSet {
  public:
    // The characters of a text, in any order, any number of times. Throws std::bad_alloc.
    explicit CharacterSet(std::wstring_view characters) : sorted_(characters) {
        std::ranges::sort(sorted_);
        sorted_.erase(std::unique(sorted_.begin(), sorted_.end()), sorted_.end());
    }

    bool contains(wchar_t unit) const { return std::ranges::binary_search(sorted_, unit); }

  private:
    std::wstring sorted_;
};

}  // namespace vela
