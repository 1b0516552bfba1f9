// The subscribers of one notification, in the order of addition.
#pragma once

#include <vector>

#include "collections/core/keyed_collection.h"
#include "contract.h"

namespace vela {

// The subscriber that a caller passed by reference. Throws Error 5 for none, 13 for an object
// without a member Notify.
ComPtr<_INotificationSubscriber> subscriberIn(_INotificationSubscriber** passed);

class Subscribers final : public Object<Subscribers, _Subscribers> {
  public:
    HRESULT STDMETHODCALLTYPE get_NewEnum(IUnknown** result) override;
    HRESULT STDMETHODCALLTYPE get_Count(SHORT* result) override;
    HRESULT STDMETHODCALLTYPE get_Item(SHORT index, _INotificationSubscriber** result) override;
    HRESULT STDMETHODCALLTYPE Add(_INotificationSubscriber** subscriber) override;
    HRESULT STDMETHODCALLTYPE Remove(VARIANT* indexOrSubscriber) override;

    std::size_t size() const { return list_.size(); }
    // Removes the first entry that is the very same object, if there is one.
    void remove(IUnknown* subscriber);

    // Calls `visit` on each subscriber, over the live list: those added meanwhile are met, those
    // removed before their turn are not. A subscriber stays alive to the end of the visit, also
    // when it is removed from within its own turn.
    template <class Visit>
    void forEach(Visit&& visit) {
        const Walk walk(*this);
        List::Cursor cursor(list_);
        while (const Entry* entry = cursor.next()) visit(entry->subscriber.Get());
    }

  private:
    struct Entry {
        ComPtr<_INotificationSubscriber> subscriber;
        IUnknown* identity;  // borrowed from `subscriber`
    };
    using List = KeyedCollection<Entry>;

    // Keeps what is removed while it lives; the outermost one lets go of it.
    class Walk {
      public:
        explicit Walk(Subscribers& list) : list_(list) { ++list_.walks_; }
        Walk(const Walk&) = delete;
        Walk& operator=(const Walk&) = delete;
        ~Walk();

      private:
        Subscribers& list_;
    };

    void removeAt(std::size_t position);

    List list_;
    int walks_ = 0;
    std::vector<ComPtr<_INotificationSubscriber>> departed_;
};

}  // namespace vela
