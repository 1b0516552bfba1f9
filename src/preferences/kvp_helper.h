// Key/value preferences.
#pragma once

#include "preferences/KVItem.h"
#include "preferences/section_manager.h"

namespace vela {

using KVManager = SectionManager<KVItem>;

class KVPHelper {
  public:
    explicit KVPHelper(const ComPtr<UPManager>& manager) : section_(manager, kKVSection) {}

    // `defaultValue` when nothing is stored.
    std::wstring value(std::wstring_view reference, std::wstring_view group,
                       std::wstring_view defaultValue) const;
    void saveValue(std::wstring_view reference, std::wstring_view group,
                   std::wstring_view value) const;

  private:
    KVManager section_;
};

}  // namespace vela
