// Broadcasts against a bare loop over the same subscribers, and a hub with many notifications
// against one with few.
#include <memory>
#include <vector>

#include "bench/client.h"
#include "bench/tables.h"
#include "examples/client.h"

namespace bench {

namespace {

// Counts its calls and looks which notification it is, as every subscriber does. It must outlive
// the notification that calls it.
class Subscriber : public Callback<_INotificationSubscriber> {
  public:
    virtual ~Subscriber() = default;

    long calls = 0;
    long heard = 0;
    ComPtr<_NotificationEventArgs> arguments;  // of the first call
};
// Two classes of them: with one, the compiler would make plain calls of the bare loop's.
template <int kind>
class SubscriberOf final : public Subscriber {
    HRESULT STDMETHODCALLTYPE Notify(_INotification**, _NotificationEventArgs** E) override {
        if (calls++ == 0) arguments = *E;
        return (*E)->get_NotificationID(&heard);
    }
};

Row broadcast() {
    constexpr std::size_t kSubscribers = 1'000;
    std::vector<std::unique_ptr<Subscriber>> subscribers;
    const auto notification = create<_INotification>(L"VelaUtil10.Notification");
    ComPtr<_Subscribers> list;
    require(notification->get_Subscribers(&list), "the subscribers");
    for (std::size_t i = 0; i < kSubscribers; ++i) {
        if (i == 0) subscribers.push_back(std::make_unique<SubscriberOf<0>>());
        else subscribers.push_back(std::make_unique<SubscriberOf<1>>());
        _INotificationSubscriber* added = subscribers.back().get();
        require(list->Add(&added), "adding a subscriber");
    }
    VARIANT_BOOL agreed = VARIANT_FALSE;
    require(notification->Notify(nullptr, nullptr, &agreed), "a broadcast");
    _INotification* sender = notification.Get();
    const ComPtr<_NotificationEventArgs> held = subscribers[0]->arguments;
    _NotificationEventArgs* shared = held.Get();
    const std::vector<_INotificationSubscriber*> bare = [&] {
        std::vector<_INotificationSubscriber*> pointers;
        for (const auto& subscriber : subscribers) pointers.push_back(subscriber.get());
        return pointers;
    }();
    const Row row{"broadcast to 1,000 subscribers",
                  nanoseconds([&](long) { notification->Notify(nullptr, nullptr, &agreed); }, 500),
                  nanoseconds(
                      [&](long) {
                          for (_INotificationSubscriber* subscriber : bare) {
                              subscriber->Notify(&sender, &shared);
                          }
                      },
                      500),
                  2};
    for (const auto& subscriber : subscribers) {
        if (subscriber->calls != subscribers[0]->calls) require(E_FAIL, "calling everybody");
    }
    return row;
}

// The shared hub, with published notifications of consecutive numbers.
class Hub {
  public:
    Hub() {
        const auto util = create<_MyUtil>(L"VelaUtil10.MyUtil");
        ComPtr<_SysUtil> system;
        require(util->get_MySys(&system), "the system object");
        require(system->get_Notifications(&hub_), "the hub");
    }
    static std::wstring tag(long number) { return L"MY:NOTIFICATION_" + std::to_wstring(number); }

    void publish(BSTR tag) {
        ComPtr<_INotification> published;
        require(hub_->Publish(tag, nullptr, &published), "publishing");
    }
    void publishUpTo(long count) {
        while (published_ < count) publish(Text(tag(published_++)));
    }
    void find(BSTR tag) {
        ComPtr<_INotification> found;
        require(hub_->get_ItemByTAG(tag, &found), "finding a tag");
        if (!found) require(E_FAIL, "finding a tag");
    }
    // What publishing one more takes, as the hub stands.
    double costOfPublishing() {
        std::vector<std::unique_ptr<Text>> tags;
        for (long i = 0; i < 500; ++i) tags.push_back(std::make_unique<Text>(tag(-1 - i)));
        const auto remove = [&] {
            for (const auto& text : tags) {
                VARIANT which{};
                which.vt = VT_BSTR;
                which.bstrVal = *text;
                require(hub_->Remove(which), "removing");
            }
        };
        const double cost =
            nanoseconds([&](long i) { publish(*tags[static_cast<std::size_t>(i)]); }, 500, remove);
        remove();
        return cost;
    }

  private:
    ComPtr<_Notifications> hub_;
    long published_ = 0;
};

std::vector<Row> manyNotifications() {
    constexpr long kMany = 10'000;
    Hub hub;
    const double few = hub.costOfPublishing();
    hub.publishUpTo(kMany);
    const double many = hub.costOfPublishing();

    std::vector<std::wstring> tags;
    for (long i = 0; i < kMany; ++i) tags.push_back(Hub::tag(i));
    const std::wstring sought = Hub::tag(kMany / 2);
    const Text argument(sought);
    const double ours = nanoseconds([&](long) { hub.find(argument); }, 50);
    const double theirs = nanoseconds(
        [&](long) {
            std::size_t found = 0;
            for (std::size_t i = 0; i < tags.size(); ++i) found = tags[i] == sought ? i : found;
            keep(found);
        },
        50);
    return {{"Publish among 10,000 (to among 6)", many, few, 1.5},
            {"ItemByTAG among 10,000 (to a scan)", ours, theirs, 3}};
}

}  // namespace

bool notifications() {
    std::vector<Row> rows = manyNotifications();
    rows.insert(rows.begin(), broadcast());
    return report("notifications (ours) to a bare loop (theirs)", rows);
}

}  // namespace bench
