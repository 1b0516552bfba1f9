#include "preferences/uip_helper.h"

#include "preferences/core/window_placement.h"
#include "runtime/screen.h"

namespace vela {

namespace {

constexpr long kNormal = 0;

std::wstring screenResolution() {
    return std::to_wstring(GetSystemMetrics(SM_CXSCREEN)) + L"x" +
           std::to_wstring(GetSystemMetrics(SM_CYSCREEN));
}

// Between pixels and twips.
class Scale {
  public:
    RECT toPixels(const WindowRect& twips) const {
        return {MulDiv(twips.left, dots_.x, kTwipsPerInch),
                MulDiv(twips.top, dots_.y, kTwipsPerInch),
                MulDiv(twips.left + twips.width, dots_.x, kTwipsPerInch),
                MulDiv(twips.top + twips.height, dots_.y, kTwipsPerInch)};
    }
    WindowRect toTwips(const RECT& pixels) const {
        return {MulDiv(pixels.left, kTwipsPerInch, dots_.x),
                MulDiv(pixels.top, kTwipsPerInch, dots_.y),
                MulDiv(pixels.right - pixels.left, kTwipsPerInch, dots_.x),
                MulDiv(pixels.bottom - pixels.top, kTwipsPerInch, dots_.y)};
    }

  private:
    const DotsPerInch dots_ = screenDotsPerInch();
};

WindowRect placeForToday(const WindowRect& stored, const std::wstring& resolution) {
    const Scale scale;
    const RECT pixels = scale.toPixels(stored);
    const bool visible = MonitorFromRect(&pixels, MONITOR_DEFAULTTONULL) != nullptr;
    if (visible && resolution == screenResolution()) return stored;
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (!GetMonitorInfoW(MonitorFromRect(&pixels, MONITOR_DEFAULTTONEAREST), &monitor))
        return stored;
    return broughtIntoView(stored, scale.toTwips(monitor.rcWork));
}

long number(IDispatch* window, const wchar_t* name) {
    return converted(getProperty(window, name), VT_I4).lVal;
}

void put(IDispatch* window, const wchar_t* name, long value) {
    quietly([&] { putProperty(window, name, Variant(value)); });
}

std::wstring identityOf(IDispatch* window, std::wstring_view id) {
    return id.empty() ? textOf(getProperty(window, L"Name")) : std::wstring(id);
}

WindowRect rectOf(_UIItem* item) {
    WindowRect rect{};
    check(item->get_Left(&rect.left));
    check(item->get_Top(&rect.top));
    check(item->get_Width(&rect.width));
    check(item->get_Height(&rect.height));
    return rect;
}

WindowRect rectOf(IDispatch* window) {
    return {number(window, L"Left"), number(window, L"Top"), number(window, L"Width"),
            number(window, L"Height")};
}

void setRect(_UIItem* item, const WindowRect& rect) {
    check(item->put_Left(rect.left));
    check(item->put_Top(rect.top));
    check(item->put_Width(rect.width));
    check(item->put_Height(rect.height));
    check(item->put_ScreenWxH(Bstr(screenResolution()).get()));
}

}  // namespace

bool UIPHelper::loadPosition(IDispatch* window, std::wstring_view id,
                             std::wstring_view group) const {
    const auto item = section_.getItem(identityOf(window, id), group);
    if (!item) return false;
    long state = kNormal;
    check(item->get_WindowState(&state));
    const WindowRect rect = placeForToday(
        rectOf(item.Get()), textProperty<_UIItem>(item.Get(), &_UIItem::get_ScreenWxH));
    // A window cannot be moved while it is minimised or maximised.
    put(window, L"WindowState", kNormal);
    put(window, L"Left", rect.left);
    put(window, L"Top", rect.top);
    put(window, L"Width", rect.width);
    put(window, L"Height", rect.height);
    if (state != kNormal) put(window, L"WindowState", state);
    return true;
}

void UIPHelper::savePosition(IDispatch* window, std::wstring_view id,
                             std::wstring_view group) const {
    const std::wstring identity = identityOf(window, id);
    // Everything is read before anything is changed: the window may refuse.
    const long state = number(window, L"WindowState");
    const WindowRect rect = rectOf(window);
    const bool isNew = !section_.getItem(identity, group);
    const auto item = section_.itemFor(identity, group);
    if (state == kNormal || isNew) setRect(item.Get(), rect);
    check(item->put_WindowState(state));
    section_.addItem(item);
}

}  // namespace vela
