#include <numeric>
#include <random>

#include "preferences/preferences_support.h"

namespace vela::test {
namespace {

// A running vela_saver.
class Saver {
  public:
    explicit Saver(const std::wstring& arguments) {
        wchar_t self[MAX_PATH];
        GetModuleFileNameW(nullptr, self, MAX_PATH);
        const std::wstring path(self);
        std::wstring line =
            L"\"" + path.substr(0, path.find_last_of(L'\\') + 1) + L"vela_saver.exe\" " + arguments;
        STARTUPINFOW start{};
        start.cb = sizeof start;
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

    std::wstring command(const wchar_t* user, const wchar_t* kind, int rounds) const {
        return L"save \"" + file_ + L"\" " + user + L" " + kind + L" " + std::to_wstring(rounds) +
               L" " + eventName_;
    }
    // The values of a user's section, which must be readable, and "items" when some are missing.
    std::wstring values(const wchar_t* user, const SectionKind& kind) {
        const auto section = makeSection(kind);
        XMLup::emptyCache();
        EXPECT_TRUE(XMLup().loadFromFile(file_, L"SALES", user, section.Get()));
        std::set<std::wstring> found;
        std::wistringstream lines(
            contents(section.Get(), &kind == &kDPSection ? L"Path" : L"Value"));
        int count = 0;
        for (std::wstring line; lines >> line; ++count) found.insert(line.substr(line.find(L'=')));
        return std::accumulate(found.begin(), found.end(),
                               std::wstring(count == 200 ? L"" : L"items"));
    }

    TemporaryFolder folder_;
    const std::wstring file_ = folder_.path(L"a.up2.xml");
    const std::wstring eventName_ = L"vela-" + std::to_wstring(GetCurrentProcessId());
    const HANDLE first_ = CreateEventW(nullptr, FALSE, FALSE, eventName_.c_str());
};

TEST_F(PreferencesSaveKill, AKilledSaveLosesAndHalvesNothing) {
    ASSERT_EQ(Saver(command(L"RUI", L"KV", 1)).exitCode(), 0u);
    std::mt19937 random(std::random_device{}());
    for (int kill = 0; kill < 30; ++kill) {
        ResetEvent(first_);
        Saver saver(command(L"ANA", L"KV", 0));
        ASSERT_EQ(WaitForSingleObject(first_, 20000), DWORD{WAIT_OBJECT_0});
        Sleep(random() % 60);
        saver.kill();
        ASSERT_EQ(values(L"RUI", kKVSection), L"=1");
        ASSERT_EQ(values(L"ANA", kKVSection).rfind(L"="), 0u) << "generations mixed";
        ASSERT_EQ(GetFileAttributesW((file_ + L".bad").c_str()), INVALID_FILE_ATTRIBUTES);
    }
    // What a kill leaves beside the document does not hinder the next save.
    writeFile(file_ + L".tmp", std::string(1000000, 'x'));
    ASSERT_EQ(Saver(command(L"ANA", L"KV", 1)).exitCode(), 0u);
    EXPECT_EQ(values(L"ANA", kKVSection), L"=1");
    EXPECT_EQ(values(L"RUI", kKVSection), L"=1");
    EXPECT_EQ(GetFileAttributesW((file_ + L".tmp").c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(PreferencesSaveKill, ProgramsThatSaveAtTheSameTimeLoseNothing) {
    {
        Saver ana(command(L"ANA", L"KV", 40)), rui(command(L"RUI", L"KV", 40)),
            paths(command(L"ANA", L"DP", 40));
        EXPECT_EQ(ana.exitCode(), 0u);
        EXPECT_EQ(rui.exitCode(), 0u);
        EXPECT_EQ(paths.exitCode(), 0u);
    }
    EXPECT_EQ(values(L"ANA", kKVSection), L"=40");
    EXPECT_EQ(values(L"RUI", kKVSection), L"=40");
    EXPECT_EQ(values(L"ANA", kDPSection), L"=40");
}

TEST_F(PreferencesSaveKill, AForgottenStopIsMadeUpForAtTheEndOfTheApartment) {
    ASSERT_EQ(Saver(L"forget \"" + file_ + L"\"").exitCode(), 0u);
    const auto section = makeSection(kKVSection);
    XMLup::emptyCache();
    EXPECT_TRUE(XMLup().loadFromFile(file_, L"SALES", L"ANA", section.Get()));
    EXPECT_EQ(contents(section.Get()), L"K@G=kept ");
}

}  // namespace
}  // namespace vela::test
