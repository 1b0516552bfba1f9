// Sorts a caller's own list in place.
#pragma once

#include "contract.h"

namespace vela {

class BubbleSort final : public Object<BubbleSort, _BubbleSort> {
  public:
    HRESULT STDMETHODCALLTYPE Sort(_IBubbleSort** list) override;
};

}  // namespace vela
