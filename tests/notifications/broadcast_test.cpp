// A broadcast over a list that changes under it: the table in the documentation, row by row.
#include <filesystem>
#include <map>
#include <sstream>

#include "automation/late_bound.h"
#include "notifications/notifications_support.h"
#include "support/documents.h"

namespace vela {
namespace {

using test::Listener;

// A notification of a hub with the subscribers A, B, C and D. The first time that B is called it
// does as told.
class Scene {
  public:
    Scene() {
        for (const char name : {'A', 'B', 'C', 'D', 'E'}) {
            listeners_[name] =
                make<Listener>([this, name](auto, auto E) { return hear(name, *E); });
        }
        for (const char name : {'A', 'B', 'C', 'D'}) add(name);
    }
    ~Scene() {
        for (const char name : {'A', 'B', 'C', 'D', 'E', 'B'}) remove(name);
    }

    void add(char name) { test::subscribe(fired.Get(), listeners_[name].Get()); }
    void remove(char name) { test::unsubscribe(fired.Get(), listeners_[name].Get()); }
    void goodbye(char name) {
        _INotificationSubscriber* leaving = listeners_[name].Get();
        EXPECT_EQ(hub->Goodbye(&leaving), S_OK);
    }
    // Who is called, in order, and what comes of it.
    std::string fire() {
        called_.clear();
        VARIANT_BOOL agreed = VARIANT_FALSE;
        const HRESULT outcome = fired->Notify(nullptr, nullptr, &agreed);
        if (FAILED(outcome)) return called_ + ", error";
        return called_ + (agreed ? ", True" : ", False");
    }

    std::function<HRESULT(_NotificationEventArgs* E)> act;
    const ComPtr<Notifications> hub = make<Notifications>();
    const ComPtr<_INotification> fired = test::publish(hub.Get(), L"MY:TABLE");

  private:
    HRESULT hear(char name, _NotificationEventArgs* E) {
        VARIANT_BOOL cancel = VARIANT_TRUE;
        EXPECT_EQ(E->get_Cancel(&cancel), S_OK);
        EXPECT_EQ(cancel, VARIANT_FALSE);
        if (test::idIn(E) == SystemNotifications::Goodbye) {
            test::unsubscribe(test::offeredBy(E).Get(), listeners_[name].Get());
            return S_OK;
        }
        called_ += called_.empty() ? "" : " ";
        called_ += name;
        return name == 'B' && act ? std::exchange(act, nullptr)(E) : S_OK;
    }

    std::map<char, ComPtr<Listener>> listeners_;
    std::string called_;
};

using Act = HRESULT (*)(Scene&, _NotificationEventArgs*);

HRESULT removing(Scene& scene, std::string_view names) {
    for (const char name : names) scene.remove(name);
    return S_OK;
}

const std::map<std::string, Act> kActs = {
    {"does nothing", [](Scene&, _NotificationEventArgs*) { return S_OK; }},
    {"removes itself", [](Scene& s, _NotificationEventArgs*) { return removing(s, "B"); }},
    {"removes A", [](Scene& s, _NotificationEventArgs*) { return removing(s, "A"); }},
    {"removes C", [](Scene& s, _NotificationEventArgs*) { return removing(s, "C"); }},
    {"removes A, itself and C",
     [](Scene& s, _NotificationEventArgs*) { return removing(s, "ABC"); }},
    {"removes everybody", [](Scene& s, _NotificationEventArgs*) { return removing(s, "ABCD"); }},
    {"adds E", [](Scene& s, _NotificationEventArgs*) { return s.add('E'), S_OK; }},
    {"adds itself again", [](Scene& s, _NotificationEventArgs*) { return s.add('B'), S_OK; }},
    {"removes itself and adds itself",
     [](Scene& s, _NotificationEventArgs*) { return s.remove('B'), s.add('B'), S_OK; }},
    {"says `Goodbye`", [](Scene& s, _NotificationEventArgs*) { return s.goodbye('B'), S_OK; }},
    {"says `Goodbye` for C",
     [](Scene& s, _NotificationEventArgs*) { return s.goodbye('C'), S_OK; }},
    {"publishes another notification",
     [](Scene& s, _NotificationEventArgs*) {
         return test::publish(s.hub.Get(), L"MY:OTHER") ? S_OK : E_FAIL;
     }},
    {"removes the notification from the hub",
     [](Scene& s, _NotificationEventArgs*) { return s.hub->Remove(test::arg(Bstr(L"MY:TABLE"))); }},
    {"fires the notification again",
     [](Scene& s, _NotificationEventArgs*) {
         VARIANT_BOOL agreed = VARIANT_FALSE;
         return s.fired->Notify(nullptr, nullptr, &agreed);
     }},
    {"sets `Cancel`",
     [](Scene&, _NotificationEventArgs* E) { return E->put_Cancel(VARIANT_TRUE); }},
    {"raises an error", [](Scene&, _NotificationEventArgs*) { return E_ACCESSDENIED; }},
};

class NotificationsBroadcast : public test::NoObjectsLeft {};

TEST_F(NotificationsBroadcast, DoesWhatTheDocumentedTableSays) {
    std::istringstream page(
        test::readFile(std::filesystem::path(VELA_DOCS "/notifications.md").wstring()));
    std::size_t rows = 0;
    for (std::string line; std::getline(page, line);) {
        const auto cells = test::cellsOf(line);
        if (cells.size() != 3 || !kActs.count(cells[0])) continue;
        SCOPED_TRACE(cells[0]);
        Scene scene;
        scene.act = [&](_NotificationEventArgs* E) { return kActs.at(cells[0])(scene, E); };
        EXPECT_EQ(scene.fire(), cells[1]);
        EXPECT_EQ(scene.fire(), cells[2]);
        ++rows;
    }
    EXPECT_EQ(rows, kActs.size());
    SetErrorInfo(0, nullptr);
}

TEST_F(NotificationsBroadcast, HandsEverySubscriberTheSameSenderAndArguments) {
    const auto notification = make<Notification>();
    const auto foreign = make<Notification>();
    std::vector<std::pair<_INotification*, _NotificationEventArgs*>> heard;
    const auto thief = make<Listener>([&](auto sender, auto E) {
        heard.emplace_back(*sender, *E);
        adopted(std::exchange(*sender, ComPtr<_INotification>(foreign).Detach()));
        adopted(std::exchange(*E, nullptr));
        return S_OK;
    });
    test::subscribe(notification.Get(), thief.Get());
    test::subscribe(notification.Get(), thief.Get());
    EXPECT_EQ(notification->Notify(nullptr, nullptr, nullptr), E_POINTER);
    VARIANT_BOOL agreed = VARIANT_FALSE;
    EXPECT_EQ(notification->Notify(nullptr, nullptr, &agreed), S_OK);
    ASSERT_EQ(heard.size(), 2u);
    EXPECT_EQ(heard[0], heard[1]);
    EXPECT_EQ(heard[0].first, static_cast<_INotification*>(notification.Get()));
}

TEST_F(NotificationsBroadcast, PassesTheParameterAsItIs) {
    const auto notification = make<Notification>();
    const Bstr text(L"conteúdo");
    Variant held(text.view());
    const VARIANT cases[] = {
        Variant::missing(), test::arg(7L), test::arg(text),
        test::arg(static_cast<IDispatch*>(static_cast<_Notification*>(notification.Get()))),
        test::byReference(held)};
    const VARTYPE expected[] = {VT_EMPTY, VT_I4, VT_BSTR, VT_DISPATCH, VT_BSTR};
    std::vector<Variant> heard;
    const auto listener = make<Listener>([&](auto, auto E) {
        heard.push_back(test::parameterIn(*E));
        return (*E)->put_Cancel(VARIANT_TRUE);
    });
    for (VARIANT parameter : cases) {
        _INotificationSubscriber* target = listener.Get();
        VARIANT_BOOL agreed = VARIANT_FALSE;
        EXPECT_EQ(notification->Notify(&parameter, &target, &agreed), S_OK);
        EXPECT_EQ(agreed, VARIANT_TRUE);  // nobody else is asked, and its Cancel is not read
    }
    ASSERT_EQ(heard.size(), std::size(cases));
    for (std::size_t i = 0; i < heard.size(); ++i) EXPECT_EQ(heard[i].vt, expected[i]) << i;
    EXPECT_EQ(objectIn(heard[3]), objectIn(cases[3]));
    EXPECT_EQ(textOf(heard[4]), L"conteúdo");
}

TEST_F(NotificationsBroadcast, PassesASubscribersErrorOn) {
    const auto notification = make<Notification>();
    const auto script = adopted(new test::LateObject);
    script->names = {L"Notify"};
    script->invoked = [](DISPID, WORD, DISPPARAMS&, VARIANT*, EXCEPINFO* exception) {
        exception->scode = -1;
        exception->bstrSource = allocate(L"Armazém");
        exception->bstrDescription = allocate(L"Sem stock");
        return DISP_E_EXCEPTION;
    };
    const test::Called added = test::call(test::subscribersOf(notification.Get()).Get(), L"Add",
                                          {test::arg(script.Get())});
    EXPECT_EQ(added.outcome, S_OK);
    const test::Called called =
        test::call(static_cast<_Notification*>(notification.Get()), L"Notify");
    EXPECT_EQ(called.error, -1);
    EXPECT_EQ(called.source, L"Armazém");
    EXPECT_EQ(called.description, L"Sem stock");
}

}  // namespace
}  // namespace vela
