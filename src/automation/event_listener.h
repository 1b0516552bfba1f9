// Hearing the events of any automation object, known by their names.
//
// The object says itself which interface its events belong to: by its class information, or by its
// connection points and the type library that it comes from. No class or interface id need be
// known.
#pragma once

#include <windows.h>

#include <ocidl.h>

#include <functional>
#include <span>

#include "automation/convert.h"

namespace vela {

class EventListener {
  public:
    // Told which of the names it is, and the event's arguments in declared order. What it throws is
    // lost. It may end the listener.
    using Handler = std::function<void(std::size_t event, std::span<VARIANT> arguments)>;

    // Connects to the interface that has the events `names`, of which the first `required` must be
    // there. Throws Error 13 when the object has no such interface.
    EventListener(IUnknown* source, std::span<const wchar_t* const> names, std::size_t required,
                  Handler handler);
    EventListener(const EventListener&) = delete;
    EventListener& operator=(const EventListener&) = delete;
    ~EventListener();

  private:
    class Sink;

    ComPtr<Sink> sink_;
    ComPtr<IConnectionPoint> point_;
    DWORD cookie_ = 0;
};

}  // namespace vela
