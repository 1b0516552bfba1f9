#include "notifications/Notification.h"

#include "text/core/text_normalisation.h"

namespace vela {

namespace {

// A reference that travels from one subscriber to the next. What one of them puts there is not what
// the next one gets.
template <class Interface>
class Lent {
  public:
    explicit Lent(Interface* original) : passed_(original) {}
    Interface** pass() { return passed_.GetAddressOf(); }
    void restore(Interface* original) {
        if (passed_.Get() != original) passed_ = original;
    }

  private:
    ComPtr<Interface> passed_;
};

}  // namespace

HRESULT Notification::get_Id(LONG* result) { return give(result, id_); }

HRESULT Notification::put_Id(LONG newValue) { return take(id_, newValue); }

HRESULT Notification::put_Tag(BSTR newValue) {
    return guard([&] { tag_ = normalisedIdentity(text(newValue)); });
}

HRESULT Notification::get_Tag(BSTR* result) { return give(result, tag_); }

HRESULT Notification::get_Subscribers(_Subscribers** result) {
    return answer(result, [&] { return subscribers_; });
}

HRESULT Notification::Notify(VARIANT* notificationParameter,
                             _INotificationSubscriber** toThisSubscriber, VARIANT_BOOL* result) {
    return answer(result, [&] {
        const ComPtr<_INotification> self = this;
        const auto arguments = make<NotificationEventArgs>(id_, tag_, notificationParameter);
        Lent<_INotification> sender(this);
        Lent<_NotificationEventArgs> eventArgs(arguments.Get());
        const auto tell = [&](_INotificationSubscriber* subscriber) {
            const HRESULT outcome = subscriber->Notify(sender.pass(), eventArgs.pass());
            if (FAILED(outcome)) checkRecorded(outcome);
            sender.restore(this);
            eventArgs.restore(arguments.Get());
        };
        if (toThisSubscriber && *toThisSubscriber) {
            const auto target = subscriberIn(toThisSubscriber);
            tell(target.Get());
            return true;
        }
        bool cancelled = false;
        subscribers_->forEach([&](_INotificationSubscriber* subscriber) {
            arguments->resetCancel();
            tell(subscriber);
            cancelled |= arguments->cancelled();
        });
        return !cancelled;
    });
}

HRESULT ClassOf<_Notification>::create(REFIID id, void** result) {
    return createObject<Notification>(id, result);
}

}  // namespace vela
