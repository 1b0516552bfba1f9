// Reading the elements and attributes of an XML text, without a document model.
//
//     XmlScanner scanner(text);
//     for (auto event = scanner.next(); event != XmlScanner::Event::Done; event = scanner.next())
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vela {

// Reads UTF-16 text, also where wchar_t is wider, that a parser has accepted or written. Of any
// other text it tells what stands before the first place that is not well-formed; it does not find
// names that XML does not allow, end tags of another name, an attribute given twice, or a second
// root. References in attribute values are resolved: the five predefined entities, and characters
// by number. Blanks and line ends in them stay as they stand. A document type ends the reading.
class XmlScanner {
  public:
    // The text must outlive the scanner.
    explicit XmlScanner(std::wstring_view text) : text_(text) {}

    enum class Event { Start, End, Done };
    // The next start or end of an element; an empty element gives both. Done, and then for ever, at
    // the end of the text and from the first place on that is not well-formed.
    Event next();

    struct Attribute {
        std::wstring_view name;  // within the text
        std::wstring value;
    };
    // Those of the element that Start told of, in order; good until next().
    std::span<const Attribute> attributes() const { return {attributes_.data(), count_}; }
    // How many elements are open, the one just started included.
    std::size_t depth() const { return depth_; }

  private:
    bool take(std::wstring_view expected);
    bool takeBlanks();
    std::wstring_view takeName();
    bool takeNoElement();
    bool takeStart();
    bool takeEnd();
    bool takeAttribute();
    bool takeValue(std::wstring& value);
    bool takeReference(std::wstring& value);

    std::wstring_view text_;
    std::size_t at_ = 0;
    std::size_t depth_ = 0;
    bool isEmpty_ = false;               // the element just started, which therefore ends next
    std::vector<Attribute> attributes_;  // `count_` of them; the others keep their memory for later
    std::size_t count_ = 0;
};

}  // namespace vela
