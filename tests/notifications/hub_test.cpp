// The hub: what is found and removed by what, and who is told when somebody comes or goes.
#include "automation/late_bound.h"
#include "notifications/notifications_support.h"
#include "notifications/shared.h"
#include "support/leaks.h"

namespace vela {
namespace {

using test::arg;
using test::byReference;
using test::Listener;
using test::publish;
using test::tagOf;

class NotificationsHub : public test::NoObjectsLeft {
  protected:
    static void SetUpTestSuite() {
        sharedPulsar();
        sharedNotifications();
    }
    short count() {
        short count = -1;
        EXPECT_EQ(hub_->get_Count(&count), S_OK);
        return count;
    }
    ComPtr<_INotification> byTag(const wchar_t* tag) {
        ComPtr<_INotification> found;
        EXPECT_EQ(hub_->get_ItemByTAG(Bstr(tag).get(), &found), S_OK);
        return found;
    }
    ComPtr<_INotification> byId(LONG id) {
        ComPtr<_INotification> found;
        EXPECT_EQ(hub_->get_ItemByID(id, &found), S_OK);
        return found;
    }
    HRESULT welcome(_INotificationSubscriber* subscriber) { return hub_->Welcome(&subscriber); }
    HRESULT goodbye(_INotificationSubscriber* subscriber) { return hub_->Goodbye(&subscriber); }
    static bool pulsing() {
        VARIANT_BOOL stopped = VARIANT_FALSE;
        EXPECT_EQ(sharedPulsar()->get_Stopped(&stopped), S_OK);
        return !stopped;
    }

    ComPtr<Notifications> hub_ = make<Notifications>();
};

LONG idOf(_INotification* notification) {
    LONG id = 0;
    EXPECT_EQ(notification->get_Id(&id), S_OK);
    return id;
}

TEST_F(NotificationsHub, HoldsTheSystemNotificationsAtTheirPositions) {
    using Getter = HRESULT (STDMETHODCALLTYPE _Notifications::*)(_INotification**);
    const std::pair<Getter, const wchar_t*> expected[] = {
        {&_Notifications::get_OnWelcome, L"SYS:ON_WELCOME"},
        {&_Notifications::get_OnGoodbye, L"SYS:ON_GOODBYE"},
        {&_Notifications::get_OnClosingApplication, L"SYS:ON_CLOSING_APPLICATION"},
        {&_Notifications::get_OnApplicationResize, L"SYS:ON_APPLICATION_RESIZE"},
        {&_Notifications::get_OnOpeningDatabase, L"SYS:ON_OPENINGDATABASE"},
        {&_Notifications::get_OnPulse, L"SYS:ON_PULSE"}};
    EXPECT_EQ(count(), 6);
    ComPtr<_INotification> found;
    for (LONG id = 1; id <= 6; ++id) {
        const auto& [get, tag] = expected[id - 1];
        EXPECT_EQ((hub_.Get()->*get)(&found), S_OK);
        EXPECT_EQ(idOf(found.Get()), id);
        EXPECT_EQ(tagOf(found.Get()), tag);
        for (const auto& same : {hub_->at(id), byId(id), byTag(tag)}) EXPECT_EQ(same, found);
    }
    for (const int position : {0, 7, -1, 32767}) {
        EXPECT_EQ(hub_->get_Item(static_cast<short>(position), &found), S_OK);
        EXPECT_FALSE(found) << position;
    }
    hub_->Remove(arg(1L));
    EXPECT_EQ(hub_->get_OnWelcome(&found), S_OK);
    EXPECT_EQ(tagOf(found.Get()), L"SYS:ON_GOODBYE");
}

TEST_F(NotificationsHub, NumbersEveryPublication) {
    const auto alpha = publish(hub_.Get(), L"  my:Alpha ");
    const LONG first = idOf(alpha.Get());
    EXPECT_GE(first, 1001);
    EXPECT_EQ(tagOf(alpha.Get()), L"MY:ALPHA");
    EXPECT_EQ(byTag(L" my:alpha"), alpha);
    EXPECT_FALSE(byId(first));
    for (const wchar_t* refused : {L"ALPHA", L"SYS:ON_PULSE", L"", L"   ", L"M Y:X"}) {
        const test::Called called = test::call(hub_.Get(), L"Publish", {arg(Bstr(refused))});
        EXPECT_EQ(called.error, -1) << refused;
        EXPECT_EQ(called.source, L"Notifications");
        EXPECT_EQ(called.description,
                  L"User defined notifications must have a Tag property started with 'MY:' (Ex: "
                  L"MY:NOTIFICATION_01).");
    }
    // The caller's own is left with the identity that it was given, and replaced by the one held.
    const ComPtr<_INotification> own = make<Notification>();
    _INotification* given = ComPtr(own).Detach();
    ComPtr<_INotification> published;
    EXPECT_EQ(hub_->Publish(Bstr(L"my:ALPHA").get(), &given, &published), S_OK);
    EXPECT_EQ(adopted(given), alpha);
    EXPECT_EQ(published, alpha);
    EXPECT_EQ(idOf(own.Get()), first + 6);
    EXPECT_EQ(count(), 7);
    const std::wstring large = L"MY:" + std::wstring(1'000'000, L'x');
    EXPECT_EQ(byTag(large.c_str()), publish(hub_.Get(), large.c_str()));
}

Variant asUnknown(IUnknown* object) {
    Variant value = objectVariant(object);
    value.vt = VT_UNKNOWN;
    return value;
}

TEST_F(NotificationsHub, RemovesByPositionTagAndSystemObjectOnly) {
    const auto mine = publish(hub_.Get(), L"MY:B");
    const std::wstring resize = L"SYS:ON_APPLICATION_RESIZE";
    const struct {
        const char* what;
        Variant which;
        std::wstring gone;  // the tag that is no longer found
    } cases[] = {{"text of a tag", Variant(L" my:b"), L"MY:B"},
                 {"identifier", Variant(idOf(mine.Get())), L""},
                 {"published object", objectVariant(mine.Get()), L""},
                 {"system object", objectVariant(byId(4).Get()), resize},
                 {"system object, as IUnknown", asUnknown(byId(4).Get()), resize},
                 {"system tag", Variant(L"SYS:ON_PULSE"), L""},
                 {"position", Variant(7L), L"MY:B"},
                 {"position as text", Variant(L"5"), L"SYS:ON_OPENINGDATABASE"},
                 {"half a position, to even", Variant(arg(4.5)), resize},
                 {"position 0", Variant(0L), L""},
                 {"negative", Variant(-40'000L), L""},
                 {"missing", Variant::missing(), L""},
                 {"nothing", Variant(static_cast<IDispatch*>(nullptr)), L""},
                 {"an object without Id", objectVariant(sharedPulsar().Get()), L""},
                 {"an array", test::arrayOf({Variant(1L)}), L""}};
    for (const auto& [what, which, gone] : cases) {
        SCOPED_TRACE(what);
        hub_ = make<Notifications>();
        publish(hub_.Get(), L"MY:B");
        std::wstring announced;
        const auto listener = make<Listener>([&](auto, auto E) {
            announced += tagOf(test::offeredBy(*E).Get());
            return E_FAIL;  // suppressed
        });
        test::subscribe(byId(2).Get(), listener.Get());
        EXPECT_EQ(hub_->Remove(which), S_OK);
        EXPECT_EQ(announced, gone);
        EXPECT_EQ(count(), gone.empty() ? 7 : 6);
        EXPECT_TRUE(gone.empty() || !byTag(gone.c_str()));
    }
}

TEST_F(NotificationsHub, OutlivesNotificationsThatRemoveThemselves) {
    const LONG before = liveObjects;
    auto script = adopted(new test::LateObject);
    script->names = {L"Id", L"Tag", L"Subscribers", L"Notify"};
    script->invoked = [&](DISPID id, WORD flags, DISPPARAMS&, VARIANT* result, EXCEPINFO*) {
        if (flags == DISPATCH_PROPERTYPUT) return S_OK;
        if (id == 0) *result = Variant(2000L).release();
        if (id == 1) {
            hub_->Remove(arg(7L));
            *result = Variant(L"MY:VANISHING").release();
        }
        return S_OK;
    };
    Variant given(script.Get());
    script.Reset();
    EXPECT_EQ(test::call(hub_.Get(), L"Publish", {Variant(L"MY:V"), byReference(given)}).outcome,
              S_OK);
    given = Variant();
    EXPECT_EQ(count(), 7);
    EXPECT_TRUE(byTag(L"MY:VANISHING"));
    EXPECT_EQ(liveObjects, before);
    EXPECT_FALSE(byTag(L"MY:VANISHING"));
}

// Subscribes to everything offered, and unsubscribes again; logs the handshake.
class Follower {
  public:
    std::wstring log;
    bool follows = true;
    ComPtr<Listener> listener = make<Listener>([this](auto, auto E) {
        const LONG id = test::idIn(*E);
        if (id > SystemNotifications::Goodbye) return log += L"!", S_OK;
        const auto offered = test::offeredBy(*E);
        log += (id == 1 ? L"+" : L"-") + std::to_wstring(idOf(offered.Get()) % 1001);
        if (follows && id == 1) test::subscribe(offered.Get(), listener.Get());
        if (follows && id == 2) test::unsubscribe(offered.Get(), listener.Get());
        return S_OK;
    });
};

TEST_F(NotificationsHub, IntroducesNewcomersAndStartsThePulseForTheFirst) {
    Follower first;
    Follower second;
    Follower idle;
    idle.follows = false;
    EXPECT_EQ(welcome(idle.listener.Get()), S_OK);
    EXPECT_EQ(idle.log, L"+3+4+5+6");
    EXPECT_FALSE(pulsing());
    EXPECT_EQ(welcome(first.listener.Get()), S_OK);
    EXPECT_TRUE(pulsing());
    EXPECT_EQ(welcome(second.listener.Get()), S_OK);
    EXPECT_EQ(goodbye(first.listener.Get()), S_OK);
    EXPECT_TRUE(pulsing());
    EXPECT_EQ(goodbye(second.listener.Get()), S_OK);
    EXPECT_EQ(second.log, L"+3+4+5+6-3-4-5-6");
    EXPECT_FALSE(pulsing());

    // Twice welcomed is twice told; one goodbye takes back one of them.
    EXPECT_EQ(welcome(idle.listener.Get()), S_OK);
    idle.log.clear();
    const auto published = publish(hub_.Get(), L"MY:NEW");
    const std::wstring once = L"+" + std::to_wstring(idOf(published.Get()) % 1001);
    EXPECT_EQ(idle.log, once + once);
    EXPECT_EQ(test::countOf(byId(1).Get()), 2);
    EXPECT_EQ(goodbye(idle.listener.Get()), S_OK);
    EXPECT_EQ(test::countOf(byId(1).Get()), 1);
    EXPECT_EQ(test::countOf(byId(2).Get()), 1);
}

TEST_F(NotificationsHub, LeavesThePulseAloneOutsideTheHandshake) {
    Follower follower;
    Follower idle;
    idle.follows = false;
    test::subscribe(byId(6).Get(), follower.listener.Get());
    EXPECT_FALSE(pulsing());
    EXPECT_EQ(welcome(idle.listener.Get()), S_OK);  // one there before and after
    EXPECT_FALSE(pulsing());
    EXPECT_EQ(welcome(follower.listener.Get()), S_OK);  // the second one there
    EXPECT_FALSE(pulsing());
    EXPECT_EQ(sharedPulsar()->StartPulse(), S_OK);
    for (int i = 0; i < 2; ++i) test::unsubscribe(byId(6).Get(), follower.listener.Get());
    EXPECT_TRUE(pulsing());
    EXPECT_EQ(goodbye(idle.listener.Get()), S_OK);  // none there before and after
    EXPECT_TRUE(pulsing());
    EXPECT_EQ(sharedPulsar()->StopPulse(), S_OK);
}

TEST_F(NotificationsHub, PassesAnErrorOutOfTheHandshake) {
    const auto listener = make<Listener>([](auto, auto) { return E_ACCESSDENIED; });
    EXPECT_EQ(welcome(listener.Get()), E_ACCESSDENIED);
    EXPECT_EQ(test::countOf(byId(1).Get()), 1);
    EXPECT_EQ(test::countOf(byId(2).Get()), 0);
    EXPECT_TRUE(publish(hub_.Get(), L"MY:QUIET"));  // suppressed there
    EXPECT_EQ(goodbye(listener.Get()), E_ACCESSDENIED);
    hub_->Remove(arg(2L));
    hub_->Remove(arg(1L));
    EXPECT_EQ(goodbye(listener.Get()), E_ACCESSDENIED);  // OnGoodbye is now what stood third
}

TEST_F(NotificationsHub, RefusesWhatIsNoSubscriber) {
    constexpr auto kInvalid = static_cast<HRESULT>(0x800A0005);
    constexpr auto kMismatch = static_cast<HRESULT>(0x800A000D);
    const auto stranger = adopted(new test::LateObject);
    const auto third = byId(3);
    const auto list = test::subscribersOf(third.Get());
    EXPECT_EQ(welcome(nullptr), kInvalid);
    EXPECT_EQ(goodbye(nullptr), kInvalid);
    EXPECT_EQ(hub_->Welcome(nullptr), kInvalid);
    EXPECT_EQ(list->Add(nullptr), kInvalid);
    for (const wchar_t* member : {L"Welcome", L"Goodbye"}) {
        EXPECT_EQ(test::call(hub_.Get(), member, {arg(stranger.Get())}).error, kMismatch);
    }
    EXPECT_EQ(test::call(list.Get(), L"Add", {arg(stranger.Get())}).error, kMismatch);
    EXPECT_EQ(test::call(third.Get(), L"Notify", {arg(1L), arg(stranger.Get())}).error, kMismatch);
    EXPECT_EQ(test::call(list.Get(), L"Add", {arg(3L)}).outcome, DISP_E_TYPEMISMATCH);

    const auto listener = make<Listener>([](auto, auto) { return S_OK; });
    test::subscribe(third.Get(), listener.Get());
    for (Variant which : {Variant(0L), Variant(L"x"), Variant(), Variant(stranger.Get())}) {
        EXPECT_EQ(list->Remove(&which), S_OK);
    }
    EXPECT_EQ(list->Remove(nullptr), S_OK);
    EXPECT_EQ(test::countOf(third.Get()), 1);
    Variant unknown = asUnknown(static_cast<IDispatch*>(listener.Get()));
    EXPECT_EQ(list->Remove(&unknown), S_OK);
    EXPECT_EQ(test::countOf(third.Get()), 0);
    ComPtr<_INotificationSubscriber> none;
    EXPECT_EQ(list->get_Item(-1, &none), S_OK);
    EXPECT_FALSE(none);
}

TEST_F(NotificationsHub, KeepsNothingOfAHundredThousandVisitors) {
    Follower follower;
    const auto script = adopted(new test::LateObject);
    script->names = {L"Notify"};
    test::expectNoGrowth(
        [&] {
            follower.log.clear();
            welcome(follower.listener.Get());
            test::call(hub_.Get(), L"Welcome", {arg(script.Get())});
            test::call(hub_.Get(), L"Goodbye", {arg(script.Get())});
            goodbye(follower.listener.Get());
        },
        100'000);
    EXPECT_EQ(test::countOf(byId(1).Get()), 0);
    EXPECT_EQ(script->AddRef(), 2u);
    script->Release();
}

}  // namespace
}  // namespace vela
