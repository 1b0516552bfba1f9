// Busy apartments: each has its own of everything that is shared, loses nothing and leaves nothing.
//
//     vela_apartments [APARTMENTS ROUNDS]      4 and 20,000 unless given
//
// A thread for each apartment uses the registered library. Every round it changes what is shared
// and reads it back, while the host asks what it may free; now and then the apartment ends, half
// the time without stopping its preferences, and a new one must find what the last one saved.
// Prints what went wrong, and one line at the end.
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "support/heaps.h"
#include "support/registered.h"

namespace vela::test {
namespace {

constexpr int kRoundsOfALife = 100;
constexpr int kParts = 4;
std::atomic<int> failures = 0;

void expect(bool right, const char* what, int apartment, int round) {
    if (right || ++failures > 20) return;
    std::printf("apartment %d, round %d: %s\n", apartment, round, what);
}

HRESULT canUnload() {
    const HMODULE module = GetModuleHandleW(L"Vela.Util.10.dll");
    if (!module) return S_OK;
    void* address = reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow"));
    return reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(address)();
}

// One apartment, from its beginning to its end.
class Life {
  public:
    Life(int apartment, const std::wstring& document, int round)
        : apartment_(apartment), round_(round), preferences_(startedPreferences(document)) {
        expect(value() == round_, "what the last apartment saved is lost", apartment_, round_);
    }

    void round() {
        ++round_;
        keepValue();
        keepError();
        publish();
        if (round_ % 10 == 0) CoFreeUnusedLibraries();
        expect(canUnload() == S_FALSE, "the library may go", apartment_, round_);
    }
    void stop() { check(preferences_->StopUPM()); }

  private:
    int value() {
        Bstr text;
        check(values_->GetValue(key_.get(), group_.get(), Bstr(L"0").get(), text.put()));
        return _wtoi(text.str().c_str());
    }
    void keepValue() {
        const auto values =
            got(got(createRegistered<_Preferences>(), &_Preferences::get_MyPreferences),
                &_UPUtil::get_Values);
        check(values->SaveValue(key_.get(), group_.get(), Bstr(std::to_wstring(round_)).get()));
        expect(value() == round_, "a value is lost", apartment_, round_);
    }
    void keepError() {
        const LONG number = apartment_ * 1'000'000 + round_;
        Bstr text;
        check(system_->SaveMyError(1, number, nullptr, nullptr));
        check(createRegistered<_SysUtil>()->MyError(Number, text.put()));
        expect(text.view() == std::to_wstring(number), "the last error is another's", apartment_,
               round_);
    }
    void publish() {
        const auto hub = got(createRegistered<_SysUtil>(), &_SysUtil::get_Notifications);
        expect(got(hub, &_Notifications::get_Count) == 6, "the hub is another's", apartment_,
               round_);
        ComPtr<_INotification> published;
        check(hub->Publish(Bstr(L"MY:ROUND").get(), nullptr, &published));
        expect(got(hub, &_Notifications::get_Count) == 7, "a notification is lost", apartment_,
               round_);
        check(hub->Remove(Variant(L"MY:ROUND")));
        check(got(system_, &_SysUtil::get_Pulsar)->put_PulseInterval(round_));
        expect(got(got(system_, &_SysUtil::get_Pulsar), &_Pulsar::get_PulseInterval) == round_,
               "the pulsar is another's", apartment_, round_);
    }

    const int apartment_;
    int round_;
    const Bstr key_{L"key"};
    const Bstr group_{L"group"};
    const ComPtr<_SysUtil> system_ = createRegistered<_SysUtil>();
    const ComPtr<_UPUtil> preferences_;
    const ComPtr<_UPValueUtil> values_ = got(preferences_, &_UPUtil::get_Values);
};

void live(int apartment, int rounds, const std::wstring& document) {
    for (int round = 0; round < rounds; round += kRoundsOfALife) {
        check(CoInitialize(nullptr));
        const bool done = quietly([&] {
            Life life(apartment, document, round);
            for (int i = 0; i < kRoundsOfALife; ++i) life.round();
            if (round % (2 * kRoundsOfALife) == 0) life.stop();
        });
        expect(done, "a call failed", apartment, round);
        CoUninitialize();
    }
}

void liveTogether(int apartments, int rounds, const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    std::vector<std::thread> threads;
    for (int i = 0; i < apartments; ++i) {
        threads.emplace_back(live, i, rounds, (folder / (std::to_wstring(i) + L".xml")).wstring());
    }
    for (std::thread& thread : threads) thread.join();
    std::filesystem::remove_all(folder);
}

void run(int apartments, int rounds) {
    const auto folder = std::filesystem::temp_directory_path() /
                        (L"vela-apartments-" + std::to_wstring(GetCurrentProcessId()));
    check(CoInitialize(nullptr));
    const auto loaded =
        createRegistered<_KVItem>();  // the same copy of the library from beginning to end
    // The platform keeps something for itself now and then; what is left behind grows every time.
    long left = std::numeric_limits<long>::max();
    for (int part = 0; part < kParts; ++part) {
        const long before = allocatedBlocks();
        liveTogether(apartments, rounds / kParts, folder);
        left = std::min(left, allocatedBlocks() - before);
    }
    // Wine's parser leaves eight blocks behind for the declaration of each new document.
    const int lives = apartments * rounds / kParts / kRoundsOfALife;
    expect(left < 10 * apartments + lives / 2, "memory is left behind", 0, static_cast<int>(left));
    expect(canUnload() == S_FALSE, "the library may go while an object lives", 0, rounds);
}

}  // namespace
}  // namespace vela::test

int main(int count, char** arguments) {
    const int apartments = count > 1 ? std::atoi(arguments[1]) : 4;
    const int rounds = count > 2 ? std::atoi(arguments[2]) : 20'000;
    vela::test::run(apartments, rounds);
    vela::test::expect(vela::test::canUnload() == S_OK, "objects are left behind", 0, rounds);
    CoUninitialize();
    vela::test::expect(!GetModuleHandleW(L"Vela.Util.10.dll"), "the library stays", 0, rounds);
    if (vela::test::failures == 0) {
        std::printf("apartments: %d of %d rounds each: passed\n", apartments, rounds);
    }
    return vela::test::failures == 0 ? 0 : 1;
}
