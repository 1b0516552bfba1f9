// The instances that the whole process shares: one of each, and gone when COM goes.
#include "frame/shared_instances.h"

#include <thread>

#include "frame/built_library.h"

namespace vela {
namespace {

using test::Module;

ComPtr<_TextUtil> textOf(_MyUtil* util) {
    ComPtr<_TextUtil> text;
    EXPECT_EQ(util->get_MyText(&text), S_OK);
    return text;
}

// A copy of the module: what its shared instances do cannot be seen from the other tests.
class FrameSharedInstances : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(CopyFileW(test::modulePath().c_str(), path_.c_str(), TRUE));
    }
    test::TemporaryFolder folder_;
    const std::wstring path_ = folder_.path(L"copy.dll");
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
    const Module module(path_);
    inApartment([&] {
        const auto first = module.create<_MyUtil>();
        const auto second = module.create<_MyUtil>();
        const auto text = textOf(first.Get());
        EXPECT_EQ(textOf(first.Get()).Get(), text.Get());
        EXPECT_EQ(textOf(second.Get()).Get(), text.Get());
        EXPECT_NE(module.create<_TextUtil>().Get(), text.Get());
        ComPtr<_SysUtil> one;
        ComPtr<_SysUtil> other;
        EXPECT_EQ(first->get_MySys(&one), S_OK);
        EXPECT_EQ(second->get_MySys(&other), S_OK);
        EXPECT_EQ(one.Get(), other.Get());
        EXPECT_NE(module.create<_SysUtil>().Get(), one.Get());
    });
}

TEST_F(FrameSharedInstances, GoWithTheApartmentThatMadeThem) {
    const Module module(path_);
    IUnknown* held = nullptr;
    inApartment([&] {
        const auto util = module.create<_MyUtil>();
        held = textOf(util.Get()).Detach();
        // An inner pair of calls is not the end.
        ASSERT_EQ(CoInitialize(nullptr), S_FALSE);
        CoUninitialize();
        EXPECT_EQ(static_cast<IUnknown*>(textOf(util.Get()).Get()), held);
    });
    EXPECT_EQ(held->Release(), 0u);  // the caller's was the last reference
    inApartment([&] { EXPECT_TRUE(textOf(module.create<_MyUtil>().Get())); });
    EXPECT_EQ(module.call("DllCanUnloadNow"), S_OK);
}

TEST_F(FrameSharedInstances, LetTheModuleGoWhenCallersHoldNothing) {
    const Module module(path_);
    const auto canUnload = [&] { return module.call("DllCanUnloadNow"); };
    EXPECT_EQ(canUnload(), S_OK);
    inApartment([&] {
        auto util = module.create<_MyUtil>();
        auto text = textOf(util.Get());
        EXPECT_EQ(canUnload(), S_FALSE);
        util.Reset();
        EXPECT_EQ(canUnload(), S_FALSE);  // the shared object itself is held
        std::thread([&] { EXPECT_EQ(canUnload(), S_FALSE); }).join();
        text.Reset();
        EXPECT_EQ(canUnload(), S_OK);
        EXPECT_TRUE(textOf(module.create<_MyUtil>().Get()));  // and can be used again

        // Neither while a class factory is held, nor while one has locked the server.
        ComPtr<IClassFactory> factory;
        for (const BOOL locked : {TRUE, FALSE}) {
            ASSERT_EQ(module.classObject(ClassOf<_MyUtil>::id(), factory), S_OK);
            EXPECT_EQ(factory->LockServer(locked), S_OK);
            EXPECT_EQ(canUnload(), S_FALSE);
            factory.Reset();
            EXPECT_EQ(canUnload(), locked ? S_FALSE : S_OK);
        }
    });
    EXPECT_EQ(canUnload(), S_OK);
}

// Shared objects may use each other while they are made and while they go.
TEST(FrameSharedSlots, AreMadeOnceAndGoInReverse) {
    if (!releaseIfUnused()) GTEST_SKIP() << "earlier tests left shared preferences to this thread";
    std::wstring log;
    inApartment([&] {
        const GUID keys[] = {{1, 0, 0, {}}, {2, 0, 0, {}}};
        const auto made = [&](wchar_t name) {
            log += name;
            return std::shared_ptr<void>(new int, [&log, name](void* held) {
                delete static_cast<int*>(held);
                log += static_cast<wchar_t>(name - L'a' + L'A');
            });
        };
        const auto inner = [&] {
            return sharedSlot(
                keys[0], [&] { return made(L'a'); }, false);
        };
        sharedSlot(
            keys[1], [&] { return inner(), made(L'b'); }, false);
        inner();
        EXPECT_EQ(log, L"ab");
    });
    EXPECT_EQ(log, L"abBA");
}

}  // namespace
}  // namespace vela
