// Pulsars: their slots, their patterns tick by tick, and real ticks of a message loop.
#include <thread>

#include "automation/late_objects.h"
#include "notifications/Pulsar.h"
#include "notifications/notifications_support.h"
#include "notifications/shared_hub.h"

namespace vela {
namespace {

// Pulsars of an apartment of their own, which ends with the test; counts the pulses of each.
class NotificationsPulsar : public testing::Test {
  protected:
    template <class Body>
    void inApartment(Body body) {
        const LONG before = liveObjects;
        std::thread([&] {
            ASSERT_EQ(CoInitialize(nullptr), S_OK);
            body();
            CoUninitialize();
        }).join();
        EXPECT_EQ(liveObjects, before);
    }
    static ComPtr<Pulsar> create(LONG interval = 60000) {
        const auto made =
            test::got<ComPtr<_Pulsar>>(sharedPulsar().Get(), &_Pulsar::CreatePulsar, interval);
        return own<Pulsar>(made.Get());
    }
    static void listen(_Pulsar* pulsar, std::function<HRESULT()> heard) {
        test::listen(pulsar, __uuidof(__Pulsar), [=](DISPID, WORD, DISPPARAMS& call, auto&&...) {
            EXPECT_EQ(*call.rgvarg[0].ppdispVal, pulsar);
            return heard();
        });
    }
    static SHORT indexOf(_Pulsar* pulsar) { return test::got<SHORT>(pulsar, &_Pulsar::get_Index); }
    // Runs the message loop until `done`, at most `limit` milliseconds.
    static void pump(const std::function<bool()>& done, DWORD limit = 20'000) {
        const DWORD start = GetTickCount();
        MSG message;
        while (!done() && GetTickCount() - start < limit) {
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
        }
    }
    static void pumpFor(DWORD milliseconds) {
        pump([] { return false; }, milliseconds);
    }
};

int timerWindows() {
    int count = 0;
    const auto next = [](HWND last) {
        return FindWindowExW(HWND_MESSAGE, last, nullptr, L"VelaUtil10.Timers");
    };
    for (HWND window = next(nullptr); window; window = next(window)) ++count;
    return count;
}

TEST_F(NotificationsPulsar, TicksOnWhenAnotherApartmentEnds) {
    inApartment([] {
        const auto pulsar = create(20);
        bool pulsed = false;
        const int windows = timerWindows();
        std::thread([] {
            ASSERT_EQ(CoInitialize(nullptr), S_OK);
            const auto others = create(20);
            EXPECT_EQ(indexOf(others.Get()), 1);
            EXPECT_EQ(others->StartPulse(), S_OK);
            pumpFor(50);
            CoUninitialize();
        }).join();
        EXPECT_EQ(timerWindows(), windows);
        listen(pulsar.Get(), [&] { return pulsed = true, S_OK; });
        EXPECT_EQ(pulsar->StartPulse(), S_OK);
        pump([&] { return pulsed; });
        EXPECT_TRUE(pulsed);
    });
}

TEST_F(NotificationsPulsar, TakesTheLowestFreeSlotButTheFirst) {
    inApartment([&] {
        EXPECT_EQ(indexOf(sharedPulsar().Get()), 0);
        auto first = create();
        const auto second = create();
        EXPECT_EQ(indexOf(create().Get()), 3);
        EXPECT_EQ(second->Dispose(), S_OK);
        first.Reset();  // a stopped pulsar goes with its last reference
        EXPECT_EQ(sharedPulsar()->Dispose(), S_OK);
        const ComPtr<Pulsar> next[] = {create(), create(), create()};
        for (SHORT slot = 1; slot <= 3; ++slot) EXPECT_EQ(indexOf(next[slot - 1].Get()), slot);
    });
}

TEST_F(NotificationsPulsar, KeepsItsPlaceInThePattern) {
    inApartment([&] {
        const auto pulsar = create();
        std::string pulses;
        listen(pulsar.Get(), [&] { return pulses += '!', E_FAIL; });
        const auto ticks = [&](const wchar_t* pattern, int count) {
            EXPECT_EQ(pulsar->put_PulsePattern(Bstr(pattern).get()), S_OK);
            for (pulses.clear(); count > 0; --count, pulses += '.') pulsar->tick();
            return pulses;
        };
        EXPECT_EQ(ticks(L"101", 7), "!..!.!..!.!.");
        EXPECT_EQ(pulsar->StartPulse(), S_OK);
        EXPECT_EQ(pulsar->StopPulse(), S_OK);
        EXPECT_EQ(ticks(L"101", 2), ".!.");
        EXPECT_EQ(ticks(L"00x1", 3), "...");
        EXPECT_EQ(ticks(L"1", 2), ".!.");  // behind the end of the shorter pattern
        EXPECT_EQ(ticks(L"", 2), "!.!.");
    });
}

TEST_F(NotificationsPulsar, TicksInTheMessageLoop) {
    const int windows = timerWindows();
    inApartment([&] {
        auto running = create(20);
        const ComPtr<Pulsar> silent[] = {create(0), create(-1)};
        int pulses = 0;
        listen(running.Get(), [&] { return ++pulses, S_OK; });
        for (const auto& pulsar : silent) {
            listen(pulsar.Get(), [&] { return ADD_FAILURE(), S_OK; });
            EXPECT_EQ(pulsar->StartPulse(), S_OK);
        }
        EXPECT_EQ(running->StartPulse(), S_OK);
        EXPECT_EQ(running->put_PulseInterval(2'000'000'000), S_OK);  // from the next start on
        Pulsar* const alone = running.Get();
        running.Reset();  // its timer keeps it alive
        pump([&] { return pulses >= 3; });
        EXPECT_GE(pulses, 3);
        EXPECT_EQ(alone->StartPulse(), S_OK);  // now with the long interval
        pulses = 0;
        pumpFor(200);
        EXPECT_EQ(pulses, 0);
    });  // the pulsar that still runs goes with the apartment
    EXPECT_EQ(timerWindows(), windows);
}

TEST_F(NotificationsPulsar, FeedsTheSharedNotification) {
    inApartment([&] {
        int pulses = 0;
        const auto listener = make<test::Listener>([&](auto, auto E) {
            EXPECT_EQ(test::idIn(*E), SystemNotifications::Pulse);
            EXPECT_EQ(test::parameterIn(*E).vt, VT_EMPTY);
            return ++pulses, E_ACCESSDENIED;
        });
        const auto onPulse = test::got<ComPtr<_INotification>>(sharedNotifications().Get(),
                                                               &_Notifications::get_OnPulse);
        test::subscribe(onPulse.Get(), listener.Get());
        const auto shared = own<Pulsar>(sharedPulsar().Get());
        EXPECT_EQ(shared->put_PulsePattern(Bstr(L"0").get()), S_OK);  // ignored
        EXPECT_EQ(shared->put_PulseInterval(20), S_OK);
        EXPECT_EQ(shared->StartPulse(), S_OK);
        pump([&] { return pulses >= 3; });  // errors do not end it
        EXPECT_GE(pulses, 3);
    });
}

TEST_F(NotificationsPulsar, MayBeStoppedAndMadeFromWithinAPulse) {
    inApartment([&] {
        const auto pulsar = create(20);
        std::vector<ComPtr<Pulsar>> made;
        listen(pulsar.Get(), [&] {
            for (int i = 0; i < 50; ++i) made.push_back(create());
            return pulsar->Dispose();
        });
        EXPECT_EQ(pulsar->StartPulse(), S_OK);
        pump([&] { return !made.empty(); });
        pumpFor(100);
        EXPECT_EQ(made.size(), 50u);
        EXPECT_EQ(indexOf(create().Get()), 1);
    });
}

}  // namespace
}  // namespace vela
