// Arrays of texts, as callers pass them.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "automation/convert.h"

namespace vela {

// The elements of an array of texts, which can neither change its size nor go as long as this
// lives.
class TextElements {
  public:
    // No elements where there is no array. Throws Error 13 unless it has one dimension and texts.
    explicit TextElements(SAFEARRAY* array);
    ~TextElements();
    TextElements(const TextElements&) = delete;
    TextElements& operator=(const TextElements&) = delete;

    // Ascending, by the codes of their characters.
    void sort();
    std::vector<std::wstring_view> texts() const;

  private:
    SAFEARRAY* array_;
    std::span<BSTR> elements_;
};

// The elements of an array of variants as text, those that have none as the empty text; no elements
// where there is no array of one dimension.
struct VariantTexts {
    LONG lowerBound = 0;
    std::vector<std::wstring> texts;
};
VariantTexts variantTexts(SAFEARRAY* array);

// Puts an array of these texts, from 0 on, in the place of a caller's; nothing where he passed
// none. They may be texts of the array replaced. Throws Error 10 where that is locked or of fixed
// size.
void rewrite(SAFEARRAY** target, const std::vector<std::wstring_view>& texts);

}  // namespace vela
