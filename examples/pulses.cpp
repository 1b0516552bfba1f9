// Receives pulses in a message loop and prints each: those of a pulsar of its own, as events, and
// those of the shared pulsar, as a notification.
//
//     ./dev wine build/win32/examples/pulses.exe
#include "client.h"

namespace {

constexpr long kPulses = 5;

long ownPulses = 0;
long sharedPulses = 0;

// Hears the events of a pulsar; Pulse is the only one.
class PulseEvents : public Callback<__Pulsar> {
  public:
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        std::printf("pulse %ld of my own pulsar\n", ++ownPulses);
        return S_OK;
    }
};

// Subscribes to the shared pulse when it is offered, and unsubscribes when it leaves.
class PulseSubscriber : public Callback<_INotificationSubscriber> {
  public:
    HRESULT STDMETHODCALLTYPE Notify(_INotification**, _NotificationEventArgs** E) override {
        try {
            long id = 0;
            check((*E)->get_NotificationID(&id));
            if (id == SystemNotifications::Welcome) handshake(*E, true);
            else if (id == SystemNotifications::Goodbye) handshake(*E, false);
            else std::printf("pulse %ld of the shared pulsar\n", ++sharedPulses);
            return S_OK;
        } catch (HRESULT failure) {
            return failure;
        }
    }

  private:
    void handshake(_NotificationEventArgs* E, bool subscribe) {
        VARIANT parameter{};
        ComPtr<_INotification> offered;
        ComPtr<_Subscribers> subscribers;
        long id = 0;
        check(E->get_Parameter(&parameter));
        const HRESULT found = parameter.pdispVal->QueryInterface(IID_PPV_ARGS(&offered));
        VariantClear(&parameter);
        check(found);
        check(offered->get_Id(&id));
        if (id != SystemNotifications::Pulse) return;
        check(offered->get_Subscribers(&subscribers));
        _INotificationSubscriber* self = this;
        VARIANT which{};
        which.vt = VT_DISPATCH;
        which.pdispVal = this;
        check(subscribe ? subscribers->Add(&self) : subscribers->Remove(&which));
    }
};

// They outlive the library's objects, which may hold them to the end.
PulseEvents events;
PulseSubscriber subscriber;

void pumpUntilDone() {
    const ULONGLONG end = GetTickCount64() + 30'000;  // milliseconds
    while (ownPulses < kPulses || sharedPulses < kPulses) {
        MSG message;
        if (GetTickCount64() > end) throw HRESULT_FROM_WIN32(ERROR_TIMEOUT);
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 100, QS_ALLINPUT);
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }
}

void listen() {
    ComPtr<_MyUtil> library;
    ComPtr<_SysUtil> system;
    ComPtr<_Notifications> hub;
    ComPtr<_Pulsar> shared;
    ComPtr<_Pulsar> own;
    check(
        CoCreateInstance(__uuidof(MyUtil), nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&library)));
    check(library->get_MySys(&system));
    check(system->get_Notifications(&hub));
    check(system->get_Pulsar(&shared));

    // A beat of three ticks, 50 ms each: pulses after 50 and 100 ms, none after 150.
    check(shared->CreatePulsar(50, &own));
    check(own->put_PulsePattern(Text(L"110").in()));

    const Connection<__Pulsar> connection(own.Get(), events);

    // The first subscriber of the shared pulse starts it, the last one to leave stops it.
    check(shared->put_PulseInterval(80));
    _INotificationSubscriber* self = &subscriber;
    check(hub->Welcome(&self));
    check(own->StartPulse());
    pumpUntilDone();
    check(own->Dispose());
    check(hub->Goodbye(&self));

    VARIANT_BOOL stopped = VARIANT_FALSE;
    check(shared->get_Stopped(&stopped));
    if (!stopped) throw E_FAIL;
    std::printf("The pulses came, and the shared pulsar has stopped.\n");
}

}  // namespace

int main() { return runInApartment(listen); }
