#include <random>
#include <set>

#include "preferences/preferences_support.h"
#include "support/child_process.h"

namespace vela::test {
namespace {

class PreferencesSaveKill : public NoObjectsLeft {
  protected:
    std::wstring saving(const wchar_t* user, int rounds) const {
        return L"vela_saver.exe \"" + file_ + L"\" " + user + L" " + std::to_wstring(rounds) +
               L" " + eventName_;
    }
    // The different values of a user's 200 items.
    std::set<std::wstring> values(const wchar_t* user) {
        const auto section = makeSection(kKVSection);
        forgetDocuments();
        EXPECT_TRUE(XMLup().loadFromFile(file_, L"SALES", user, section.Get()));
        EXPECT_EQ(got<SHORT>(itemsOf(section.Get()).Get(), &_UPItems::get_Count), 200);
        std::wistringstream list(contents(section.Get()));
        std::set<std::wstring> found;
        for (std::wstring item; list >> item;) found.insert(item.substr(item.find(L'=') + 1));
        return found;
    }

    using Values = std::set<std::wstring>;
    TemporaryFolder folder_;
    const std::wstring file_ = folder_.path(L"a.up2.xml");
    const std::wstring eventName_ = L"vela-" + std::to_wstring(GetCurrentProcessId());
    const NamedEvent first_{eventName_};
};

TEST_F(PreferencesSaveKill, AKilledSaveLosesAndHalvesNothing) {
    ASSERT_EQ(ChildProcess(saving(L"RUI", 1)).exitCode(), 0u);
    std::mt19937 random(std::random_device{}());
    for (int kill = 0; kill < 30; ++kill) {
        first_.reset();
        {
            const ChildProcess killed(saving(L"ANA", 0));
            ASSERT_TRUE(first_.isSetSoon());
            Sleep(random() % 60);
        }
        ASSERT_EQ(values(L"RUI"), Values{L"1"});
        ASSERT_EQ(values(L"ANA").size(), 1u) << "generations mixed";
        ASSERT_EQ(GetFileAttributesW((file_ + L".bad").c_str()), INVALID_FILE_ATTRIBUTES);
    }
}

TEST_F(PreferencesSaveKill, ProgramsThatSaveAtTheSameTimeLoseNothing) {
    const ChildProcess ana(saving(L"ANA", 40)), rui(saving(L"RUI", 40));
    for (const ChildProcess* saver : {&ana, &rui}) EXPECT_EQ(saver->exitCode(), 0u);
    EXPECT_EQ(values(L"ANA"), Values{L"40"});
    EXPECT_EQ(values(L"RUI"), Values{L"40"});
}

}  // namespace
}  // namespace vela::test
