#include "preferences/kept_aside.h"

#include <algorithm>
#include <thread>

#include "files/whole_file.h"
#include "support/support.h"

namespace vela::test {
namespace {

class PreferencesKeptAside : public ::testing::Test {
  protected:
    void keep(const std::string& content) const {
        keepAside(file_, std::as_bytes(std::span(content)));
    }
    std::wstring copy(int number) const {
        return file_ + (number == 0 ? L"" : L"." + std::to_wstring(number)) + L".bad";
    }

    TemporaryFolder folder_;
    const std::wstring file_ = folder_.path(L"a.xml");
};

TEST_F(PreferencesKeptAside, HoldWhatWasReadWhateverBecameOfTheFile) {
    keep("missing");
    writeFile(file_, "changed");
    SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_HIDDEN);
    const KernelHandle alone(
        CreateFileW(file_.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    keep("in use");
    EXPECT_EQ(readFile(copy(0)), "missing");
    EXPECT_EQ(readFile(copy(1)), "in use");
    EXPECT_FALSE(GetFileAttributesW(copy(0).c_str()) & FILE_ATTRIBUTE_HIDDEN);
    EXPECT_TRUE(GetFileAttributesW(copy(1).c_str()) & FILE_ATTRIBUTE_HIDDEN);
}

TEST_F(PreferencesKeptAside, AreNeverTakenByTwo) {
    constexpr int kEach = 15;
    const auto keepAll = [&](const char* content) {
        for (int i = 0; i < kEach; ++i) keep(content);
    };
    std::thread other(keepAll, "other");
    keepAll("one");
    other.join();
    std::vector<std::string> kept;
    for (int i = 0; i < 2 * kEach; ++i) kept.push_back(readFile(copy(i)));
    EXPECT_EQ(std::count(kept.begin(), kept.end(), "one"), kEach);
    EXPECT_EQ(std::count(kept.begin(), kept.end(), "other"), kEach);
}

}  // namespace
}  // namespace vela::test
