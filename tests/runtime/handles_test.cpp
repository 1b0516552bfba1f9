// Owners of handles: every handle is closed once, whatever becomes of its owner, and by the
// function of its kind.
#include "runtime/handles.h"

#include <vector>

#include "support/support.h"

namespace vela {
namespace {

// Handles are numbers from 1. To close one changes the last error, as the platform's functions may.
struct NumberTraits {
    using Handle = int;
    static int none() { return 0; }
    static bool isOpen(int number) { return number > 0; }
    static void close(int number) {
        closed.push_back(number);
        SetLastError(ERROR_INVALID_HANDLE);
    }
    static inline std::vector<int> closed;
};
using Number = Owner<NumberTraits>;

TEST(RuntimeHandles, AreClosedOnce) {
    const struct {
        const char* what;
        void (*use)(Number& one);
        std::vector<int> closed;
    } cases[] = {
        {"nothing", [](Number&) {}, {1}},
        {"reset twice", [](Number& one) { one.reset(), one.reset(); }, {1}},
        {"reset to another", [](Number& one) { one.reset(2); }, {1, 2}},
        {"released", [](Number& one) { EXPECT_EQ(one.release(), 1); }, {}},
        {"filled", [](Number& one) { *one.put() = 2; }, {1, 2}},
        {"filled with none", [](Number& one) { *one.put() = -1; }, {1}},
        {"replaced", [](Number& one) { one = Number(2); }, {1, 2}},
        {"moved from", [](Number& one) { EXPECT_TRUE(Number(std::move(one))); }, {1}},
        {"moved from, to another", [](Number& one) { Number(2) = std::move(one); }, {2, 1}},
        {"moved to itself", [](Number& one) { one = std::move(static_cast<Number&>(one)); }, {1}},
        {"exchanged", [](Number& one) { Number old = std::exchange(one, Number(2)); }, {1, 2}},
    };
    for (const auto& [what, use, expected] : cases) {
        NumberTraits::closed.clear();
        {
            Number one(1);
            use(one);
        }
        EXPECT_EQ(NumberTraits::closed, expected) << what;
    }
}

TEST(RuntimeHandles, LeaveTheLastErrorToBeRead) {
    SetLastError(ERROR_FILE_EXISTS);
    Number(1).reset(2);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_EXISTS});
}

TEST(RuntimeHandles, KnowWhatIsNone) {
    EXPECT_FALSE(KernelHandle());
    EXPECT_FALSE(KernelHandle(INVALID_HANDLE_VALUE));
    EXPECT_FALSE(SearchHandle(INVALID_HANDLE_VALUE));
    EXPECT_TRUE(KernelHandle(CreateEventW(nullptr, FALSE, FALSE, nullptr)));
}

// The handle that an owner had; the owner is gone once the whole expression is done.
template <class Owned>
auto afterwards(Owned owned) {
    EXPECT_TRUE(owned);
    return owned.get();
}

TEST(RuntimeHandles, AreClosedByTheirKind) {
    DWORD flags = 0;
    const HANDLE event = afterwards(KernelHandle(CreateEventW(nullptr, FALSE, FALSE, nullptr)));
    EXPECT_FALSE(GetHandleInformation(event, &flags));

    RegistryKey key;
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, L"Software", 0, KEY_READ, key.put()), ERROR_SUCCESS);
    const HKEY software = afterwards(std::move(key));
    EXPECT_EQ(RegCloseKey(software), ERROR_INVALID_HANDLE);

    const HGLOBAL global = afterwards(GlobalMemory(GlobalAlloc(GHND, 1)));
    EXPECT_EQ(GlobalFlags(global), UINT{GMEM_INVALID_HANDLE});
}

}  // namespace
}  // namespace vela
