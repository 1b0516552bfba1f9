// What an apartment shares: one of each, its own, and gone when COM goes.
#include "runtime/shared_instances.h"

#include <future>
#include <thread>

#include "frame/built_library.h"

namespace vela {
namespace {

using test::Module;

ComPtr<_TextUtil> textOf(_MyUtil* util) {
    return test::got<ComPtr<_TextUtil>>(util, &_MyUtil::get_MyText);
}

std::wstring errorOf(_SysUtil* system) {
    Bstr number;
    EXPECT_EQ(system->MyError(Number, number.put()), S_OK);
    return number.str();
}

// A copy of the module: what its shared instances do cannot be seen from the other tests.
class RuntimeSharedInstances : public testing::Test {
  protected:
    test::TemporaryFolder folder_;
    const std::wstring path_ = folder_.path(L"copy.dll");
    const BOOL copied_ = CopyFileW(test::modulePath().c_str(), path_.c_str(), TRUE);
    const Module module_{path_};
};

template <class Body>
void inThisApartment(Body body) {
    ASSERT_EQ(CoInitialize(nullptr), S_OK);
    body();
    CoUninitialize();
}

// Runs `body` in an apartment that ends with it.
template <class Body>
void inApartment(Body body) {
    std::thread([&] { inThisApartment(body); }).join();
}

TEST_F(RuntimeSharedInstances, AreTheSameFromEveryFacade) {
    inApartment([&] {
        const auto first = module_.create<_MyUtil>();
        const auto second = module_.create<_MyUtil>();
        const auto text = textOf(first.Get());
        EXPECT_EQ(textOf(first.Get()).Get(), text.Get());
        EXPECT_EQ(textOf(second.Get()).Get(), text.Get());
        EXPECT_NE(module_.create<_TextUtil>().Get(), text.Get());
        const auto system = [](const ComPtr<_MyUtil>& util) {
            return test::got<ComPtr<_SysUtil>>(util.Get(), &_MyUtil::get_MySys);
        };
        EXPECT_EQ(system(first).Get(), system(second).Get());
    });
}

TEST_F(RuntimeSharedInstances, GoWithTheApartmentThatMadeThem) {
    IUnknown* held = nullptr;
    inApartment([&] {
        const auto util = module_.create<_MyUtil>();
        held = textOf(util.Get()).Detach();
        // An inner pair of calls is not the end.
        ASSERT_EQ(CoInitialize(nullptr), S_FALSE);
        CoUninitialize();
        EXPECT_EQ(static_cast<IUnknown*>(textOf(util.Get()).Get()), held);
    });
    EXPECT_EQ(held->Release(), 0u);  // the caller's was the last reference
    inApartment([&] { EXPECT_TRUE(textOf(module_.create<_MyUtil>().Get())); });
    EXPECT_EQ(module_.call("DllCanUnloadNow"), S_OK);
}

TEST_F(RuntimeSharedInstances, KeepTheModuleUntilTheirApartmentEnds) {
    const auto canUnload = [&] { return module_.call("DllCanUnloadNow"); };
    EXPECT_EQ(canUnload(), S_OK);
    inApartment([&] {
        auto util = module_.create<_MyUtil>();
        EXPECT_EQ(canUnload(), S_FALSE);
        ComPtr<ITypeInfo> info;
        EXPECT_EQ(util->GetTypeInfo(0, 0, &info), S_OK);
        util.Reset();
        EXPECT_EQ(canUnload(), S_OK);  // what the library keeps for itself is no reason

        // Neither while a class factory is held, nor while one has locked the server.
        ComPtr<IClassFactory> factory;
        for (const BOOL locked : {TRUE, FALSE}) {
            ASSERT_EQ(module_.classObject(ClassOf<_MyUtil>::id(), factory), S_OK);
            EXPECT_EQ(factory->LockServer(locked), S_OK);
            EXPECT_EQ(canUnload(), S_FALSE);
            factory.Reset();
            EXPECT_EQ(canUnload(), locked ? S_FALSE : S_OK);
        }
        std::thread([&] { EXPECT_EQ(canUnload(), S_OK); }).join();
        const auto text = textOf(module_.create<_MyUtil>().Get()).Get();
        EXPECT_EQ(canUnload(), S_FALSE);
        std::thread([&] { EXPECT_EQ(canUnload(), S_FALSE); }).join();
        EXPECT_EQ(textOf(module_.create<_MyUtil>().Get()).Get(), text);
    });
    EXPECT_EQ(canUnload(), S_OK);
}

// Also when the host asks now and then what it may free.
TEST_F(RuntimeSharedInstances, KeepWhatCallersPutIn) {
    inApartment([&] {
        const auto system = [&] { return module_.create<_SysUtil>(); };
        const auto pulsar = [&] {
            return test::got<ComPtr<_Pulsar>>(system().Get(), &_SysUtil::get_Pulsar);
        };
        const auto stopwatch = [&] {
            return test::got<ComPtr<_TickCount>>(module_.create<_DatetimeUtil>().Get(),
                                                 &_DatetimeUtil::get_Contador);
        };
        EXPECT_EQ(system()->SaveMyError(1, 3021, Bstr(L"Sem registo").get(), nullptr), S_OK);
        EXPECT_EQ(pulsar()->put_PulseInterval(7), S_OK);
        EXPECT_EQ(stopwatch()->Iniciar(), S_OK);
        EXPECT_EQ(module_.call("DllCanUnloadNow"), S_FALSE);
        EXPECT_EQ(errorOf(system().Get()), L"3021");
        EXPECT_EQ(test::got<LONG>(pulsar().Get(), &_Pulsar::get_PulseInterval), 7);
        EXPECT_LT(test::got<LONG>(stopwatch().Get(), &_TickCount::Milisegundos), 10'000);
    });
}

// A worker asks for everything first, and ends in the middle of the other thread's work.
TEST_F(RuntimeSharedInstances, BelongToTheApartmentThatAskedForThem) {
    const auto preferencesOf = [&] {
        return test::got<ComPtr<_UPUtil>>(module_.create<_Preferences>().Get(),
                                          &_Preferences::get_MyPreferences);
    };
    const auto hub = [&] {
        return test::got<ComPtr<_Notifications>>(module_.create<_SysUtil>().Get(),
                                                 &_SysUtil::get_Notifications);
    };
    const auto start = [&](const std::wstring& document) {
        const auto preferences = preferencesOf();
        const auto sources =
            test::got<ComPtr<_UPDataSources>>(preferences.Get(), &_UPUtil::get_ActiveDataSources);
        const Variant name(folder_.path(document));
        EXPECT_EQ(sources->put_LocalSource(name), S_OK);
        EXPECT_EQ(sources->put_SharedSource(name), S_OK);
        test::got<Variant>(preferences.Get(), &_UPUtil::StartUPM, nullptr, nullptr);
    };
    const auto save = [&](const wchar_t* value) {
        const auto values =
            test::got<ComPtr<_UPValueUtil>>(preferencesOf().Get(), &_UPUtil::get_Values);
        EXPECT_EQ(values->SaveValue(Bstr(L"key").get(), nullptr, Bstr(value).get()), S_OK);
    };
    std::promise<void> asked;
    std::promise<void> mayEnd;
    std::thread worker([&] {
        inThisApartment([&] {
            hub();
            module_.create<_SysUtil>()->SaveMyError(1, 7, nullptr, nullptr);
            start(L"worker.xml");
            save(L"worker");
            asked.set_value();
            mayEnd.get_future().wait();
        });
    });
    asked.get_future().wait();
    inApartment([&] {
        const auto ours = hub();
        EXPECT_EQ(errorOf(module_.create<_SysUtil>().Get()), L"0");
        start(L"ours.xml");
        mayEnd.set_value();
        worker.join();
        save(L"ours");
        EXPECT_EQ(hub().Get(), ours.Get());
    });
    EXPECT_NE(test::readFile(folder_.path(L"worker.xml")).find("\"worker\""), std::string::npos);
    EXPECT_NE(test::readFile(folder_.path(L"ours.xml")).find("\"ours\""), std::string::npos);
}

// Each is ended, the last made first, although both fail.
template <char name>
struct Ending {
    void end() {
        if (ended) *ended += name;
        check(E_FAIL);
    }

    std::string* ended = nullptr;
};
struct First : Ending<'1'> {};
struct Second : Ending<'2'> {
    ~Second() { apartmentLocal<First>(); }  // made anew for that, and goes too
};

TEST(RuntimeApartment, EndsEverythingThatIsItsOwn) {
    std::string ended;
    inApartment([&] {
        apartmentLocal<Second>().ended = &ended;
        apartmentLocal<First>().ended = &ended;
        EXPECT_EQ(apartmentLocal<Second>().ended, &ended);
    });
    EXPECT_EQ(ended, "12");
}

}  // namespace
}  // namespace vela
