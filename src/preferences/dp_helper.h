// Default paths, for file dialogs and kinds of files.
#pragma once

#include <optional>

#include "preferences/DPItem.h"
#include "preferences/section_manager.h"

namespace vela {

struct DefaultPath {
    std::wstring path;
    std::wstring file;
    std::wstring ext;
};

using DPManager = SectionManager<DPItem>;

class DPHelper {
  public:
    explicit DPHelper(const ComPtr<UPManager>& manager) : section_(manager, kDPSection) {}

    // Nothing when none is stored.
    std::optional<DefaultPath> path(std::wstring_view reference, std::wstring_view group) const;
    void savePath(std::wstring_view reference, std::wstring_view group,
                  const DefaultPath& value) const;

  private:
    DPManager section_;
};

}  // namespace vela
