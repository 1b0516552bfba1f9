#include <random>
#include <set>

#include "preferences/preferences_support.h"

namespace vela::test {
namespace {

// A running vela_saver.
class Saver {
  public:
    explicit Saver(std::wstring arguments) {
        STARTUPINFOW start{};
        start.cb = sizeof start;
        std::wstring line = L"vela_saver.exe " + std::move(arguments);
        EXPECT_TRUE(CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                   nullptr, &start, &process_));
    }
    ~Saver() {
        kill();
        CloseHandle(process_.hThread);
        CloseHandle(process_.hProcess);
    }
    void kill() {
        TerminateProcess(process_.hProcess, 9);
        WaitForSingleObject(process_.hProcess, 10000);
    }
    DWORD exitCode() {
        DWORD code = STILL_ACTIVE;
        EXPECT_EQ(WaitForSingleObject(process_.hProcess, 60000), DWORD{WAIT_OBJECT_0});
        GetExitCodeProcess(process_.hProcess, &code);
        return code;
    }

  private:
    PROCESS_INFORMATION process_{};
};

class PreferencesSaveKill : public NoObjectsLeft {
  protected:
    ~PreferencesSaveKill() { CloseHandle(first_); }

    std::wstring saving(const wchar_t* user, const wchar_t* kind, int rounds) const {
        return L"\"" + file_ + L"\" " + user + L" " + kind + L" " + std::to_wstring(rounds) + L" " +
               eventName_;
    }
    // The different values of a user's section, which must be readable and complete.
    std::set<std::wstring> values(const wchar_t* user, const SectionKind& kind) {
        const auto section = makeSection(kind);
        XMLup::emptyCache();
        EXPECT_TRUE(XMLup().loadFromFile(file_, L"SALES", user, section.Get()));
        EXPECT_EQ(got<SHORT>(itemsOf(section.Get()).Get(), &_UPItems::get_Count), 200);
        std::set<std::wstring> found;
        const auto items = itemsOf(section.Get());
        const auto enumerator = got<ComPtr<IUnknown>>(items.Get(), &_UPItems::get_NewEnum);
        eachVariant(enumerator.Get(), [&](const Variant& item) {
            found.insert(shown(objectIn(item), &kind == &kDPSection ? L"Path" : L"Value"));
            return true;
        });
        return found;
    }

    using Values = std::set<std::wstring>;
    TemporaryFolder folder_;
    const std::wstring file_ = folder_.path(L"a.up2.xml");
    const std::wstring eventName_ = L"vela-" + std::to_wstring(GetCurrentProcessId());
    const HANDLE first_ = CreateEventW(nullptr, FALSE, FALSE, eventName_.c_str());
};

TEST_F(PreferencesSaveKill, AKilledSaveLosesAndHalvesNothing) {
    ASSERT_EQ(Saver(saving(L"RUI", L"KV", 1)).exitCode(), 0u);
    std::mt19937 random(std::random_device{}());
    for (int kill = 0; kill < 30; ++kill) {
        ResetEvent(first_);
        Saver saver(saving(L"ANA", L"KV", 0));
        ASSERT_EQ(WaitForSingleObject(first_, 20000), DWORD{WAIT_OBJECT_0});
        Sleep(random() % 60);
        saver.kill();
        ASSERT_EQ(values(L"RUI", kKVSection), Values{L"1"});
        ASSERT_EQ(values(L"ANA", kKVSection).size(), 1u) << "generations mixed";
        ASSERT_EQ(GetFileAttributesW((file_ + L".bad").c_str()), INVALID_FILE_ATTRIBUTES);
    }
    // What a kill leaves beside the document does not hinder the next save.
    writeFile(file_ + L".tmp", std::string(1000000, 'x'));
    ASSERT_EQ(Saver(saving(L"ANA", L"KV", 1)).exitCode(), 0u);
    EXPECT_EQ(values(L"ANA", kKVSection), Values{L"1"});
    EXPECT_EQ(values(L"RUI", kKVSection), Values{L"1"});
    EXPECT_EQ(GetFileAttributesW((file_ + L".tmp").c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(PreferencesSaveKill, ProgramsThatSaveAtTheSameTimeLoseNothing) {
    Saver ana(saving(L"ANA", L"KV", 40)), rui(saving(L"RUI", L"KV", 40)),
        paths(saving(L"ANA", L"DP", 40));
    for (Saver* saver : {&ana, &rui, &paths}) EXPECT_EQ(saver->exitCode(), 0u);
    EXPECT_EQ(values(L"ANA", kKVSection), Values{L"40"});
    EXPECT_EQ(values(L"RUI", kKVSection), Values{L"40"});
    EXPECT_EQ(values(L"ANA", kDPSection), Values{L"40"});
}

}  // namespace
}  // namespace vela::test
