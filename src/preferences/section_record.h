// What a program knows of a section in a document, since it last read or wrote it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "files/whole_file.h"
#include "preferences/core/item_merge.h"
#include "preferences/preference_document.h"

namespace vela {

// A document's place for one section.
struct SectionPlace {
    std::wstring fileName;
    UserPath user;
    std::wstring sectionId;

    bool operator==(const SectionPlace&) const = default;
};

struct SectionRecord {
    SectionPlace place;
    // The document as it was then; null when there was none, or it could not be read.
    std::shared_ptr<const Bytes> content;
    // Whether what it holds of the section is what the program has, item by item.
    bool same = false;
    // The items, where they are not those of `content`.
    std::optional<std::vector<KnownItem>> items;
};

}  // namespace vela
