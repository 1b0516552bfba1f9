// Window positions. A window is any automation object with Left, Top, Width and Height (in twips)
// and Name. Of its WindowState, which may be missing, only 1 (minimised) and 2 (maximised) mean
// something; any other is normal.
#pragma once

#include "preferences/UIItem.h"
#include "preferences/section_manager.h"

namespace vela {

using UIManager = SectionManager<UIItem>;

class UIPHelper {
  public:
    explicit UIPHelper(const ComPtr<UPManager>& manager) : section_(manager, kUISection) {}

    // Moves the window to its stored place, and gives it its stored state; false when nothing is
    // stored. Without a stored place the window stays where it is. A place taken at another screen
    // resolution, or off every monitor, is brought into view. An empty `id` stands for the window's
    // Name. What the window refuses to have set stays as it is.
    bool loadPosition(IDispatch* window, std::wstring_view id, std::wstring_view group) const;
    // Stores the window's place and state. A minimised or maximised window has no place of its own:
    // the one stored before stays, or else the one that it would be restored to is stored, if it
    // has an hWnd to tell it.
    void savePosition(IDispatch* window, std::wstring_view id, std::wstring_view group) const;

  private:
    UIManager section_;
};

}  // namespace vela
