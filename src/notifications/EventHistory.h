// A register of events, found by key or by type and source.
#pragma once

#include "collections/core/keyed_collection.h"
#include "contract.h"

namespace vela {

class EventHistory final : public Object<EventHistory, _EventHistory> {
  public:
    HRESULT STDMETHODCALLTYPE get_NewEnum(IUnknown** result) override;
    HRESULT STDMETHODCALLTYPE Add(_IEventHistoryItem** eventItem) override;
    HRESULT STDMETHODCALLTYPE Remove(_IEventHistoryItem** eventItem) override;
    HRESULT STDMETHODCALLTYPE RemoveAll() override;
    HRESULT STDMETHODCALLTYPE FindItem(_IEventHistoryItem** eventItem,
                                       _IEventHistoryItem** result) override;
    HRESULT STDMETHODCALLTYPE FindItems(LONG eventType, LONG eventSourceID,
                                        _Collection** result) override;
    HRESULT STDMETHODCALLTYPE get_Count(SHORT* result) override;

  private:
    using List = KeyedCollection<ComPtr<_IEventHistoryItem>>;

    List list_;
};

}  // namespace vela
