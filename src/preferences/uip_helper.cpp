#include "preferences/uip_helper.h"

#include <optional>

#include "preferences/core/window_placement.h"
#include "runtime/screen.h"

namespace vela {

namespace {

constexpr wchar_t kWindowState[] = L"WindowState";

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

// What the window says of its state; normal when it says nothing, or no number.
double stateOf(IDispatch* window) {
    if (!hasMember(window, kWindowState)) return kNormal;
    return numberIn(getProperty(window, kWindowState)).value_or(kNormal);
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

// None when no place was ever stored.
std::optional<WindowRect> placeOf(_UIItem* item) {
    const std::wstring resolution = textProperty<_UIItem>(item, &_UIItem::get_ScreenWxH);
    const WindowRect rect = rectOf(item);
    if (resolution.empty() && rect.width == 0 && rect.height == 0) return std::nullopt;
    return placeForToday(rect, resolution);
}

// From the top left corner of the screen to that of the monitor's work area: the platform tells
// places of most windows that are no children from there.
POINT workAreaOffset(HWND window) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    const bool isPlain = !(GetWindowLongW(window, GWL_STYLE) & WS_CHILD) &&
                         !(GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOOLWINDOW);
    if (!isPlain ||
        !GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor)) {
        return {};
    }
    return {monitor.rcWork.left - monitor.rcMonitor.left,
            monitor.rcWork.top - monitor.rcMonitor.top};
}

HWND handleOf(IDispatch* window) {
    const auto number = converted(getProperty(window, L"hWnd"), VT_I8).llVal;
    return reinterpret_cast<HWND>(static_cast<INT_PTR>(number));
}

// Where a minimised or maximised window would be restored to; none when it does not tell.
std::optional<WindowRect> restoredRect(IDispatch* window) {
    HWND handle = nullptr;
    quietly([&] { handle = handleOf(window); });
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    if (!IsWindow(handle) || !GetWindowPlacement(handle, &placement)) return std::nullopt;
    RECT& pixels = placement.rcNormalPosition;
    if (IsRectEmpty(&pixels)) return std::nullopt;
    const POINT offset = workAreaOffset(handle);
    OffsetRect(&pixels, offset.x, offset.y);
    return Scale().toTwips(pixels);
}

void setRect(_UIItem* item, const WindowRect& rect) {
    check(item->put_Left(rect.left));
    check(item->put_Top(rect.top));
    check(item->put_Width(rect.width));
    check(item->put_Height(rect.height));
    check(item->put_ScreenWxH(Bstr(screenResolution()).get()));
}

void move(IDispatch* window, const WindowRect& rect) {
    put(window, L"Left", rect.left);
    put(window, L"Top", rect.top);
    put(window, L"Width", rect.width);
    put(window, L"Height", rect.height);
}

}  // namespace

bool UIPHelper::loadPosition(IDispatch* window, std::wstring_view id,
                             std::wstring_view group) const {
    const auto item = section_.getItem(identityOf(window, id), group);
    if (!item) return false;
    long stored = kNormal;
    check(item->get_WindowState(&stored));
    const long state = windowState(stored);
    const auto place = placeOf(item.Get());
    // A window cannot be moved while it is minimised or maximised. One whose state is another
    // number counts in a way of its own, in which 0 may mean anything.
    double now = kNormal;
    quietly([&] { now = stateOf(window); });
    const bool isKnown = now == windowState(now);
    if (isKnown && (place || state == kNormal)) put(window, kWindowState, kNormal);
    if (place) move(window, *place);
    if (state != kNormal) put(window, kWindowState, state);
    return true;
}

void UIPHelper::savePosition(IDispatch* window, std::wstring_view id,
                             std::wstring_view group) const {
    const std::wstring identity = identityOf(window, id);
    // Everything is read before anything is changed: the window may refuse.
    const long state = windowState(stateOf(window));
    const auto rect = state == kNormal ? std::optional(rectOf(window)) : restoredRect(window);
    const auto item = section_.itemFor(identity, group);
    if (rect && (state == kNormal || !placeOf(item.Get()))) setRect(item.Get(), *rect);
    check(item->put_WindowState(state));
    section_.addItem(item);
}

}  // namespace vela
