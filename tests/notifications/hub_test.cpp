// The hub: what is found and removed by what, and who is told when somebody comes or goes.
#include "automation/late_objects.h"
#include "notifications/notifications_support.h"
#include "notifications/shared_hub.h"
#include "support/leaks.h"

namespace vela {
namespace {

using test::arg;
using test::Listener;
using test::publish;
using test::tagOf;

using Found = ComPtr<_INotification>;

class NotificationsHub : public test::NoObjectsLeft {
  protected:
    static void SetUpTestSuite() {
        sharedPulsar();
        sharedNotifications();
    }
    short count() { return test::got<short>(hub_.Get(), &_Notifications::get_Count); }
    Found byTag(const wchar_t* tag) {
        return test::got<Found>(hub_.Get(), &_Notifications::get_ItemByTAG, Bstr(tag).get());
    }
    Found byId(LONG id) { return test::got<Found>(hub_.Get(), &_Notifications::get_ItemByID, id); }
    HRESULT welcome(_INotificationSubscriber* subscriber) { return hub_->Welcome(&subscriber); }
    HRESULT goodbye(_INotificationSubscriber* subscriber) { return hub_->Goodbye(&subscriber); }
    static bool pulsing() { return !test::yes(sharedPulsar().Get(), &_Pulsar::get_Stopped); }

    ComPtr<Notifications> hub_ = make<Notifications>();
};

LONG idOf(_INotification* notification) {
    return test::got<LONG>(notification, &_INotification::get_Id);
}

TEST_F(NotificationsHub, HoldsTheSystemNotificationsAtTheirPositions) {
    LONG id = 0;
    for (const wchar_t* tag :
         {L"SYS:ON_WELCOME", L"SYS:ON_GOODBYE", L"SYS:ON_CLOSING_APPLICATION",
          L"SYS:ON_APPLICATION_RESIZE", L"SYS:ON_OPENINGDATABASE", L"SYS:ON_PULSE"}) {
        const auto found = byTag(tag);
        ASSERT_TRUE(found) << tag;
        EXPECT_EQ(idOf(found.Get()), ++id);
        EXPECT_EQ(hub_->at(id), found);
        EXPECT_EQ(byId(id), found);
    }
    EXPECT_EQ(count(), 6);
    for (const short position : {0, 7, -1}) {
        EXPECT_FALSE(test::got<Found>(hub_.Get(), &_Notifications::get_Item, position));
    }
    hub_->Remove(arg(1L));
    const auto first = test::got<Found>(hub_.Get(), &_Notifications::get_OnWelcome);
    EXPECT_EQ(tagOf(first.Get()), L"SYS:ON_GOODBYE");
}

TEST_F(NotificationsHub, NumbersEveryPublication) {
    const auto alpha = publish(hub_.Get(), L"  my:Alpha ");
    const LONG first = idOf(alpha.Get());
    EXPECT_GE(first, 1001);
    EXPECT_EQ(tagOf(alpha.Get()), L"MY:ALPHA");
    EXPECT_EQ(byTag(L" my:alpha"), alpha);
    EXPECT_FALSE(byId(first));
    for (const wchar_t* refused : {L"ALPHA", L"SYS:ON_PULSE", L"", L"M Y:X"}) {
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
    EXPECT_EQ(idOf(own.Get()), first + 5);
    EXPECT_EQ(count(), 7);
}

TEST_F(NotificationsHub, RemovesByPositionTagAndSystemObjectOnly) {
    const auto mine = publish(hub_.Get(), L"MY:B");
    const struct {
        const char* what;
        Variant which;
        const wchar_t* gone;  // the tag that is no longer found
    } cases[] = {{"text of a tag", Variant(L" my:b"), L"MY:B"},
                 {"identifier", Variant(idOf(mine.Get())), L""},
                 {"published object", objectVariant(mine.Get()), L""},
                 {"system object", objectVariant(byId(5).Get()), L"SYS:ON_OPENINGDATABASE"},
                 {"system tag", Variant(L"SYS:ON_PULSE"), L""},
                 {"position", Variant(7L), L"MY:B"},
                 {"position as text", Variant(L"5"), L"SYS:ON_OPENINGDATABASE"},
                 {"position 0", Variant(0L), L""},
                 {"negative", Variant(-40'000L), L""},
                 {"nothing", Variant(static_cast<IDispatch*>(nullptr)), L""},
                 {"an object without Id", objectVariant(sharedPulsar().Get()), L""}};
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
        EXPECT_EQ(count(), *gone ? 6 : 7);
        EXPECT_FALSE(byTag(gone));
    }
}

// Subscribes to everything offered, and unsubscribes again; logs the handshake.
class Follower {
  public:
    std::wstring log;
    ComPtr<Listener> listener = make<Listener>([this](auto, auto E) {
        const bool comes = test::idIn(*E) == SystemNotifications::Welcome;
        const auto offered = test::offeredBy(*E);
        log += (comes ? L"+" : L"-") + std::to_wstring(idOf(offered.Get()) % 1001);
        if (comes) test::subscribe(offered.Get(), listener.Get());
        else test::unsubscribe(offered.Get(), listener.Get());
        return S_OK;
    });
};

TEST_F(NotificationsHub, OutlivesANotificationThatRemovesItself) {
    const LONG before = liveObjects;
    auto script = adopted(new test::LateObject);
    script->names = {L"Id", L"Tag", L"Subscribers", L"Notify"};
    script->invoked = [&](DISPID id, WORD flags, DISPPARAMS&, VARIANT* result, EXCEPINFO*) {
        if (flags == DISPATCH_PROPERTYPUT || id > 1) return S_OK;
        if (id == 1) hub_->Remove(arg(7L));
        *result = id == 1 ? Variant(L"MY:VANISHING").release() : Variant(2000L).release();
        return S_OK;
    };
    Variant given(script.Get());
    script.Reset();
    test::call(hub_.Get(), L"Publish", {Variant(L"MY:V"), test::byReference(given)});
    given = Variant();
    EXPECT_EQ(count(), 7);
    EXPECT_TRUE(byTag(L"MY:VANISHING"));
    EXPECT_EQ(liveObjects, before);
    EXPECT_FALSE(byTag(L"MY:VANISHING"));
}

TEST_F(NotificationsHub, IntroducesNewcomersAndStartsThePulseForTheFirst) {
    Follower first;
    Follower second;
    EXPECT_EQ(welcome(first.listener.Get()), S_OK);
    EXPECT_EQ(first.log, L"+3+4+5+6");
    EXPECT_TRUE(pulsing());
    EXPECT_EQ(welcome(second.listener.Get()), S_OK);
    EXPECT_EQ(goodbye(first.listener.Get()), S_OK);
    EXPECT_TRUE(pulsing());
    EXPECT_EQ(goodbye(second.listener.Get()), S_OK);
    EXPECT_EQ(second.log, L"+3+4+5+6-3-4-5-6");
    EXPECT_FALSE(pulsing());
}

TEST_F(NotificationsHub, TellsTwiceWhoeverWasWelcomedTwice) {
    Follower follower;
    for (int i = 0; i < 2; ++i) EXPECT_EQ(welcome(follower.listener.Get()), S_OK);
    follower.log.clear();
    const auto published = publish(hub_.Get(), L"MY:NEW");
    const std::wstring once = L"+" + std::to_wstring(idOf(published.Get()) % 1001);
    EXPECT_EQ(follower.log, once + once);
    for (const short left : {1, 0}) {
        EXPECT_EQ(goodbye(follower.listener.Get()), S_OK);
        EXPECT_EQ(test::countOf(byId(1).Get()), left);
        EXPECT_EQ(test::countOf(byId(2).Get()), left);
    }
}

TEST_F(NotificationsHub, LeavesThePulseAloneOutsideTheHandshake) {
    Follower follower;
    const auto onPulse = byId(6);
    test::subscribe(onPulse.Get(), follower.listener.Get());
    EXPECT_FALSE(pulsing());
    EXPECT_EQ(welcome(follower.listener.Get()), S_OK);  // the second one there
    EXPECT_FALSE(pulsing());
    EXPECT_EQ(sharedPulsar()->StartPulse(), S_OK);
    for (int i = 0; i < 2; ++i) test::unsubscribe(onPulse.Get(), follower.listener.Get());
    EXPECT_EQ(goodbye(follower.listener.Get()), S_OK);  // none there before and after
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
}

TEST_F(NotificationsHub, RefusesWhatIsNoSubscriber) {
    const auto third = byId(3);
    const auto list = test::subscribersOf(third.Get());
    const Variant nothing(static_cast<IDispatch*>(nullptr));
    const Variant stranger(adopted(new test::LateObject).Get());
    for (const auto& [object, member] :
         {std::pair<IDispatch*, const wchar_t*>(hub_.Get(), L"Welcome"),
          {hub_.Get(), L"Goodbye"},
          {list.Get(), L"Add"}}) {
        EXPECT_EQ(test::call(object, member, {nothing}).error & 0xFFFF, 5) << member;
        EXPECT_EQ(test::call(object, member, {stranger}).error & 0xFFFF, 13) << member;
    }
    EXPECT_EQ(test::call(third.Get(), L"Notify", {arg(1L), stranger}).error & 0xFFFF, 13);
}

TEST_F(NotificationsHub, KeepsNothingOfTenThousandVisitors) {
    Follower follower;
    const auto script = adopted(new test::LateObject);
    script->names = {L"Notify"};
    test::expectNoGrowth([&] {
        follower.log.clear();
        welcome(follower.listener.Get());
        test::call(hub_.Get(), L"Welcome", {arg(script.Get())});
        test::call(hub_.Get(), L"Goodbye", {arg(script.Get())});
        goodbye(follower.listener.Get());
    });
    EXPECT_EQ(test::countOf(byId(1).Get()), 0);
}

}  // namespace
}  // namespace vela
