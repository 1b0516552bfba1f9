// The report parameters of one manager.
#pragma once

#include <optional>

#include "preferences/RPItem.h"
#include "preferences/section_manager.h"

namespace vela {

class RPManager final : public Object<RPManager, _RPManager> {
  public:
    HRESULT STDMETHODCALLTYPE get_Items(_Collection** result) override;
    HRESULT STDMETHODCALLTYPE Load(_UPManager** manager, VARIANT* dataSource,
                                   VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE GetItem(BSTR id, BSTR group, _RPItem** result) override;
    HRESULT STDMETHODCALLTYPE AddItem(_RPItem* item) override;
    HRESULT STDMETHODCALLTYPE Clear() override;

  private:
    // The registered section; throws Error 5 before Load.
    const SectionManager<RPItem>& section() const;

    std::optional<SectionManager<RPItem>> section_;
};

}  // namespace vela
