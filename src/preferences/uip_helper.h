// Window positions. A window is any automation object with Left, Top, Width, Height (in twips),
// WindowState (0 normal, 1 minimised, 2 maximised) and Name.
#pragma once

#include "preferences/UIItem.h"
#include "preferences/section_manager.h"

namespace vela {

using UIManager = SectionManager<UIItem>;

class UIPHelper {
  public:
    explicit UIPHelper(const ComPtr<UPManager>& manager) : section_(manager, kUISection) {}

    // Moves the window to its stored place; false when none is stored. A place taken at another
    // screen resolution, or off every monitor, is brought into view. An empty `id` stands for the
    // window's Name. What the window refuses to have set stays as it is.
    bool loadPosition(IDispatch* window, std::wstring_view id, std::wstring_view group) const;
    // Stores the window's place and state. A minimised or maximised window has no place of its own,
    // so the one stored before stays.
    void savePosition(IDispatch* window, std::wstring_view id, std::wstring_view group) const;

  private:
    UIManager section_;
};

}  // namespace vela
