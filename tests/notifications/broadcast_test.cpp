// A broadcast over a list that changes under it: the table in the documentation, row by row.
#include <filesystem>
#include <map>
#include <sstream>

#include "notifications/notifications_support.h"
#include "support/documents.h"

namespace vela {
namespace {

using test::Listener;

// A notification of a hub with the subscribers A, B, C and D. The first time that B is called it
// does as told.
struct Scene {
    Scene() {
        for (const char name : {'A', 'B', 'C', 'D', 'E'}) {
            listeners[name] = make<Listener>([this, name](auto sender, auto E) {
                adopted(std::exchange(*sender, nullptr));  // as a careless subscriber may
                return hear(name, *E);
            });
            if (name != 'E') add(name);
        }
    }
    void add(char name) { test::subscribe(fired.Get(), listeners[name].Get()); }
    void remove(char name) { test::unsubscribe(fired.Get(), listeners[name].Get()); }
    HRESULT goodbye(char name) {
        _INotificationSubscriber* leaving = listeners[name].Get();
        return hub->Goodbye(&leaving);
    }
    HRESULT hear(char name, _NotificationEventArgs* E) {
        EXPECT_FALSE(test::yes(E, &_NotificationEventArgs::get_Cancel));
        if (test::idIn(E) == SystemNotifications::Goodbye) {
            test::unsubscribe(test::offeredBy(E).Get(), listeners[name].Get());
            return S_OK;
        }
        called += called.empty() ? "" : " ";
        called += name;
        return name == 'B' && act ? std::exchange(act, nullptr)(*this, E) : S_OK;
    }
    // Who is called, in order, and what comes of it.
    std::string fire() {
        called.clear();
        VARIANT_BOOL agreed = VARIANT_FALSE;
        if (FAILED(fired->Notify(nullptr, nullptr, &agreed))) return called + ", error";
        return called + (agreed ? ", True" : ", False");
    }

    std::function<HRESULT(Scene&, _NotificationEventArgs* E)> act;
    const ComPtr<Notifications> hub = make<Notifications>();
    const ComPtr<_INotification> fired = test::publish(hub.Get(), L"MY:TABLE");
    std::map<char, ComPtr<Listener>> listeners;
    std::string called;
};

using Act = decltype(Scene::act);

Act edit(std::string_view removed, std::string_view added = "") {
    return [removed, added](Scene& scene, auto) {
        for (const char name : removed) scene.remove(name);
        for (const char name : added) scene.add(name);
        return S_OK;
    };
}

const std::map<std::string, Act> kActs = {
    {"does nothing", edit("")},
    {"removes itself", edit("B")},
    {"removes A", edit("A")},
    {"removes C", edit("C")},
    {"removes A, itself and C", edit("ABC")},
    {"removes everybody", edit("ABCD")},
    {"adds E", edit("", "E")},
    {"adds itself again", edit("", "B")},
    {"removes itself and adds itself", edit("B", "B")},
    {"says `Goodbye`", [](Scene& s, auto) { return s.goodbye('B'); }},
    {"says `Goodbye` for C", [](Scene& s, auto) { return s.goodbye('C'); }},
    {"publishes another notification",
     [](Scene& s, auto) { return test::publish(s.hub.Get(), L"MY:OTHER") ? S_OK : E_FAIL; }},
    {"removes the notification from the hub",
     [](Scene& s, auto) { return s.hub->Remove(Variant(L"MY:TABLE")); }},
    {"fires the notification again",
     [](Scene& s, auto) { return test::call(s.fired.Get(), L"Notify").outcome; }},
    {"sets `Cancel`", [](auto&, auto E) { return E->put_Cancel(VARIANT_TRUE); }},
    {"raises an error", [](auto&&...) { return E_ACCESSDENIED; }},
};

using NotificationsBroadcast = test::NoObjectsLeft;

TEST_F(NotificationsBroadcast, DoesWhatTheDocumentedTableSays) {
    std::istringstream page(
        test::readFile(std::filesystem::path(VELA_DOCS "/notifications.md").wstring()));
    std::size_t rows = 0;
    for (std::string line; std::getline(page, line);) {
        const auto cells = test::cellsOf(line);
        if (cells.size() != 3 || !kActs.count(cells[0])) continue;
        SCOPED_TRACE(cells[0]);
        Scene scene;
        scene.act = kActs.at(cells[0]);
        EXPECT_EQ(scene.fire(), cells[1]);
        EXPECT_EQ(scene.fire(), cells[2]);
        ++rows;
    }
    EXPECT_EQ(rows, kActs.size());
}

TEST_F(NotificationsBroadcast, PassesASubscribersErrorOn) {
    const auto failing = make<Listener>([](auto, auto) {
        return guard([] { throw Error{-1, L"Armazém", L"Sem stock"}; });
    });
    const ComPtr<_INotification> notification = make<Notification>();
    test::subscribe(notification.Get(), failing.Get());
    const test::Called called = test::call(notification.Get(), L"Notify");
    EXPECT_EQ(called.error, -1);
    EXPECT_EQ(called.source, L"Armazém");
    EXPECT_EQ(called.description, L"Sem stock");
}

}  // namespace
}  // namespace vela
