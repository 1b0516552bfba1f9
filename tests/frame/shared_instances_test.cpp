// The instances that the whole process shares: one of each, and gone when COM goes.
#include "frame/shared_instances.h"

#include <thread>

#include "frame/built_library.h"

namespace vela {
namespace {

using test::Module;

ComPtr<_TextUtil> textOf(_MyUtil* util) {
    return test::got<ComPtr<_TextUtil>>(util, &_MyUtil::get_MyText);
}

// A copy of the module: what its shared instances do cannot be seen from the other tests.
class FrameSharedInstances : public testing::Test {
  protected:
    test::TemporaryFolder folder_;
    const std::wstring path_ = folder_.path(L"copy.dll");
    const BOOL copied_ = CopyFileW(test::modulePath().c_str(), path_.c_str(), TRUE);
    const Module module_{path_};
};

// Runs `body` in an apartment that ends with it.
template <class Body>
void inApartment(Body body) {
    std::thread([&] {
        ASSERT_EQ(CoInitialize(nullptr), S_OK);
        body();
        CoUninitialize();
    }).join();
}

TEST_F(FrameSharedInstances, AreTheSameFromEveryFacade) {
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

TEST_F(FrameSharedInstances, GoWithTheApartmentThatMadeThem) {
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

TEST_F(FrameSharedInstances, LetTheModuleGoWhenCallersHoldNothing) {
    const auto canUnload = [&] { return module_.call("DllCanUnloadNow"); };
    EXPECT_EQ(canUnload(), S_OK);
    inApartment([&] {
        auto util = module_.create<_MyUtil>();
        auto text = textOf(util.Get());
        EXPECT_EQ(canUnload(), S_FALSE);
        util.Reset();
        EXPECT_EQ(canUnload(), S_FALSE);  // the shared object itself is held
        std::thread([&] { EXPECT_EQ(canUnload(), S_FALSE); }).join();
        text.Reset();
        EXPECT_EQ(canUnload(), S_OK);
        EXPECT_TRUE(textOf(module_.create<_MyUtil>().Get()));  // and can be used again

        // Neither while a class factory is held, nor while one has locked the server.
        ComPtr<IClassFactory> factory;
        for (const BOOL locked : {TRUE, FALSE}) {
            ASSERT_EQ(module_.classObject(ClassOf<_MyUtil>::id(), factory), S_OK);
            EXPECT_EQ(factory->LockServer(locked), S_OK);
            EXPECT_EQ(canUnload(), S_FALSE);
            factory.Reset();
            EXPECT_EQ(canUnload(), locked ? S_FALSE : S_OK);
        }
    });
    EXPECT_EQ(canUnload(), S_OK);
}

}  // namespace
}  // namespace vela
