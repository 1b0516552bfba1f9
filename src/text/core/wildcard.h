// Patterns of the automation Like operator, compared unit by unit.
//
//     *    any run of units, also an empty one    [abc]   one of these units
//     ?    any one unit                           [a-f]   one unit from a to f
//     #    one of 0 to 9                          [!a-f]  one unit that is not from a to f
//
// Everything else stands for itself, also ] and ! outside brackets, and * ? # [ between them. A
// hyphen between brackets makes a range of the units on either side of it; one that has none on a
// side, or follows a range, stands for itself. "[]" stands for the empty text, "[!]" for "!".
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace vela {

// A pattern made ready for many texts; a text may well be a single unit. Immutable.
class Wildcard {
  public:
    // Nothing when the pattern is broken, whatever it would be compared with: a [ without a ], or a
    // range that descends. Throws std::bad_alloc.
    static std::optional<Wildcard> compile(std::wstring_view pattern);

    // Whether the whole text matches. Takes time proportional to text times pattern at worst.
    bool matches(std::wstring_view text) const;

  private:
    struct Range {
        wchar_t first;
        wchar_t last;
    };
    // What stands at one place of the pattern: a run, or one unit that is in (or not in) any of
    // ranges_[from] to ranges_[to - 1].
    struct Place {
        enum Kind { kRun, kIn, kNotIn } kind;
        std::size_t from;
        std::size_t to;
    };

    Wildcard() = default;
    void addUnit(Range range);
    // Adds what stands between brackets; false when it is broken.
    bool addList(std::wstring_view content);
    // Ends a place whose ranges have been added from `from` on.
    void addPlace(Place::Kind kind, std::size_t from);
    bool isRun(std::size_t place) const;
    bool fits(std::size_t place, wchar_t unit) const;

    std::vector<Place> places_;
    std::vector<Range> ranges_;
};

}  // namespace vela
