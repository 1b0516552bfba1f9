#include "preferences/UPDataSourceXML.h"
#include "preferences/UPUtil.h"
#include "preferences/preferences_support.h"

namespace vela::test {
namespace {

bool loaded(_UPManager* manager) { return yes(manager, &_UPManager::get_Loaded); }

// A store that counts, answers False and fails when told to.
class FakeSource final : public Object<FakeSource, Unbuilt<_IUPDataSource>> {
  public:
    HRESULT STDMETHODCALLTYPE Load(BSTR application, BSTR user, _IUPSection**,
                                   VARIANT_BOOL* result) override {
        ++loads;
        identities = std::wstring(text(application)) + L"/" + std::wstring(text(user));
        return outcome(result);
    }
    HRESULT STDMETHODCALLTYPE Save(BSTR, BSTR, _IUPSection**, VARIANT_BOOL* result) override {
        ++saves;
        return outcome(result);
    }
    HRESULT outcome(VARIANT_BOOL* result) const {
        return answer(result, [&] {
            if (fails) throw Error{static_cast<HRESULT>(0x80040007), L"Fake", L"broken"};
            return false;
        });
    }
    int loads = 0, saves = 0;
    bool fails = false;
    std::wstring identities;
};

class PreferencesManager : public NoObjectsLeft {
  protected:
    ComPtr<FakeSource> add(const SectionKind& kind) {
        const auto source = make<FakeSource>();
        const auto section = makeSection(kind);
        section->putref_DataSourceManager(source.Get());
        manager_->add(section);
        return source;
    }
    bool hasSections() { return yes(manager_.Get(), &_UPManager::get_HasRegisteredSections); }
    void TearDown() override {
        manager_.Reset();
        NoObjectsLeft::TearDown();
    }
    ComPtr<UPManager> manager_;
    void SetUp() override { manager_ = make<UPManager>(); }
};

TEST_F(PreferencesManager, IdentitiesAreUpperCasedAndNeverEmpty) {
    const struct {
        const wchar_t *given, *kept;
    } table[] = {{L"ana", L"ANA"}, {L" ção ", L" ÇÃO "}, {L"", L"_ALL_"}, {L" ", L" "}};
    EXPECT_EQ(manager_->userId() + manager_->applicationId(), L"_ALL__ALL_");
    for (const auto& row : table) {
        EXPECT_EQ(manager_->put_UserId(Bstr(row.given).get()), S_OK);
        EXPECT_EQ(manager_->put_ApplicationId(Bstr(row.given).get()), S_OK);
        EXPECT_EQ(manager_->userId(), row.kept);
        EXPECT_EQ(manager_->applicationId(), row.kept);
    }
}

TEST_F(PreferencesManager, KnowsRegisteredSectionsByIdAlone) {
    EXPECT_FALSE(hasSections());
    add(kKVSection);
    EXPECT_TRUE(hasSections());
    for (const std::wstring id : {L"KV", L"kv", L"", L" kv", L"UI", L"1"}) {
        EXPECT_EQ(yes(manager_.Get(), &_UPManager::IsRegistered, Bstr(id).get()),
                  id == L"KV" || id == L"kv");
    }
}

TEST_F(PreferencesManager, LoadsOnceAndSavesOnlyWhatChanged) {
    const auto values = add(kKVSection), paths = add(kDPSection);
    manager_->add(makeSection(kUISection));  // without a store
    EXPECT_FALSE(loaded(manager_.Get()));
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(yes(manager_.Get(), &_UPManager::Load));
    EXPECT_EQ(values->loads, 1);
    EXPECT_EQ(values->identities, L"_ALL_/_ALL_");
    yes(manager_.Get(), &_UPManager::Save);
    EXPECT_EQ(values->saves + paths->saves, 0);
    EXPECT_EQ(addItem(manager_->section(L"DP").Get(), L"a", L"g"), S_OK);
    for (int i = 0; i < 2; ++i) yes(manager_.Get(), &_UPManager::Save);
    EXPECT_EQ(values->saves, 0);
    EXPECT_EQ(paths->saves, 1);
    EXPECT_FALSE(yes(manager_->section(L"UI").Get(), &_IUPSection::get_Loaded));
}

TEST_F(PreferencesManager, AFailingStoreStopsTheRestAndReachesTheCaller) {
    const auto first = add(kKVSection), second = add(kDPSection);
    for (const wchar_t* id : {L"KV", L"DP"}) addItem(manager_->section(id).Get(), L"a", L"g");
    const auto object = asObject(manager_);
    for (const bool fails : {true, false}) {
        first->fails = fails;
        for (const wchar_t* member : {L"Load", L"Save"}) {
            const Called result = call(object.Get(), member);
            EXPECT_EQ(result.error, fails ? static_cast<HRESULT>(0x80040007) : S_OK);
            EXPECT_EQ(result.source + result.description, fails ? L"Fakebroken" : L"");
        }
        EXPECT_EQ(second->loads + second->saves, fails ? 0 : 2);
    }
    EXPECT_EQ(first->loads + first->saves, 4);
}

TEST_F(PreferencesManager, DeleteRemovesDocumentsAndAnswersFalse) {
    TemporaryFolder folder;
    const std::wstring names[] = {L"ana.up1.xml", L"ana.up2.xml", L"rui.up1.xml", L"rui.up2.xml"};
    for (const auto& name : names) writeFile(folder.path(name), "x");
    const auto left = [&] {
        std::string found;
        for (const auto& name : names) found += readFile(folder.path(name)).empty() ? '-' : 'x';
        return found;
    };
    manager_->dataSources()->put_LocalSource(Variant(folder.path(names[0])));
    manager_->dataSources()->put_SharedSource(Variant(folder.path(names[1])));
    add(kKVSection);
    const struct {
        const wchar_t* user;
        const char* left;
    } table[] = {{L"rui", "xx--"}, {L"rui", "xx--"}, {L"", "----"}};
    for (const auto& row : table) {
        EXPECT_TRUE(hasSections());
        EXPECT_FALSE(yes(manager_.Get(), &_UPManager::Delete, Bstr(row.user).get()));
        EXPECT_EQ(left(), row.left);
    }
    EXPECT_FALSE(hasSections());
}

TEST_F(PreferencesManager, StoresAreNamedAfterTheUserOfTheMachine) {
    wchar_t before[256] = L"";
    GetEnvironmentVariableW(L"USERNAME", before, 256);
    SetEnvironmentVariableW(L"USERNAME", L"josé");
    const auto sources = make<UPDataSources>();
    SetEnvironmentVariableW(L"USERNAME", before);
    EXPECT_EQ(sources->localName(), L"josé.up1.xml");
    EXPECT_EQ(sources->sharedName(), L"josé.up2.xml");
    EXPECT_EQ(got<Variant>(sources.Get(), &_UPDataSources::get_SessionSource).vt, VT_BSTR);
    EXPECT_EQ(sources->putref_LocalSource(Variant(5L)), S_OK);
    EXPECT_EQ(sources->localName(), L"5");
}

// The shared context lives on; it is made before a test counts its objects.
struct SharedContext {
    SharedContext() { UPContext::shared(); }
};
class PreferencesContext : SharedContext, public NoObjectsLeft {
  protected:
    using Preferences = ComPtr<_UPUtil>;
    Preferences fresh() {
        const auto preferences = got<Preferences>(make<UPUtil>().Get(), &_UPUtil::NewPreferences);
        useFolder(preferences);
        return preferences;
    }
    void useFolder(const Preferences& preferences) {
        const auto sources =
            got<ComPtr<_UPDataSources>>(preferences.Get(), &_UPUtil::get_ActiveDataSources);
        sources->put_LocalSource(str(folder_.path(L"ana.up1.xml")));
        sources->put_SharedSource(str(shared_));
    }
    static void start(const Preferences& preferences, const wchar_t* application,
                      const wchar_t* user) {
        const auto result = got<Variant>(preferences.Get(), &_UPUtil::StartUPM,
                                         Bstr(application).get(), Bstr(user).get());
        EXPECT_EQ(result.vt, VT_I2);
        EXPECT_EQ(result.iVal, -1);
    }
    static ComPtr<_UPValueUtil> values(const Preferences& preferences) {
        return got<ComPtr<_UPValueUtil>>(preferences.Get(), &_UPUtil::get_Values);
    }
    static ComPtr<_UPManager> manager(const Preferences& preferences) {
        return got<ComPtr<_UPManager>>(preferences.Get(), &_UPUtil::get_ActiveUPM);
    }
    static bool started(const Preferences& preferences) {
        return loaded(manager(preferences).Get());
    }
    static void keep(const Preferences& preferences, const wchar_t* value) {
        EXPECT_EQ(
            values(preferences)->SaveValue(Bstr(L"k").get(), Bstr(L"g").get(), Bstr(value).get()),
            S_OK);
    }
    static std::wstring kept(const Preferences& preferences) {
        return Bstr::owning(got<BSTR>(values(preferences).Get(), &_UPValueUtil::GetValue,
                                      Bstr(L" K ").get(), Bstr(L"G").get(), Bstr(L"none").get()))
            .str();
    }

    TemporaryFolder folder_;
    const std::wstring shared_ = folder_.path(L"ana.up2.xml");
};

TEST_F(PreferencesContext, StartsStopsAndStartsAgain) {
    const auto preferences = fresh();
    EXPECT_EQ(kept(preferences), L"");  // not started: not even the default
    start(preferences, L"", L"");
    EXPECT_EQ(textProperty(manager(preferences).Get(), &_UPManager::get_UserId), L"_ALL_");
    EXPECT_TRUE(started(preferences));
    EXPECT_EQ(kept(preferences), L"none");
    keep(preferences, L"1");
    EXPECT_EQ(readFile(shared_), "");
    EXPECT_EQ(preferences->StopUPM(), S_OK);
    EXPECT_FALSE(started(preferences));
    EXPECT_NE(readFile(shared_).find("App_User id=\"_ALL_\""), std::string::npos);
    EXPECT_EQ(kept(preferences), L"");
    keep(preferences, L"2");  // without effect

    const auto other = fresh();
    EXPECT_NE(manager(other).Get(), manager(preferences).Get());
    start(other, L"", L"");
    EXPECT_EQ(kept(other), L"1");
    // Sections that are there stay, with what the document does not have.
    keep(other, L"3");
    start(other, L"", L"");
    EXPECT_EQ(kept(other), L"3");
}

TEST_F(PreferencesContext, OtherIdentitiesAreSavedAndReadOnTheirOwn) {
    const auto preferences = fresh();
    start(preferences, L"sales", L"ana");
    keep(preferences, L"ana's");
    start(preferences, L"sales", L"rui");
    EXPECT_EQ(kept(preferences), L"none");
    keep(preferences, L"rui's");
    start(preferences, L"stock", L"rui");
    EXPECT_EQ(kept(preferences), L"none");
    start(preferences, L"sales", L"ana");
    EXPECT_EQ(kept(preferences), L"ana's");
    start(preferences, L"SALES", L"RUI");
    EXPECT_EQ(kept(preferences), L"rui's");
}

TEST_F(PreferencesContext, WhoOnlyReadsWritesNothing) {
    const auto writer = fresh();
    start(writer, L"sales", L"ana");
    keep(writer, L"1");
    writer->StopUPM();
    const auto reader = fresh();
    start(reader, L"sales", L"ana");
    keep(writer, L"lost");  // stopped
    start(writer, L"sales", L"ana");
    keep(writer, L"2");
    writer->StopUPM();
    reader->StopUPM();
    start(reader, L"sales", L"rui");
    start(reader, L"sales", L"ana");
    EXPECT_EQ(kept(reader), L"2");
}

TEST_F(PreferencesContext, DeletedDocumentsDoNotComeBack) {
    const auto preferences = fresh();
    start(preferences, L"sales", L"ana");
    keep(preferences, L"1");
    preferences->StopUPM();
    const auto reader = fresh();
    start(reader, L"sales", L"ana");
    EXPECT_FALSE(yes(manager(reader).Get(), &_UPManager::Delete, nullptr));
    start(reader, L"sales", L"ana");
    EXPECT_EQ(kept(reader), L"none");
}

// A window whose Left is read by stopping the preferences that ask for it.
TEST_F(PreferencesContext, MayBeStoppedByWhatItCalls) {
    const auto preferences = fresh();
    start(preferences, L"sales", L"ana");
    auto window = scriptObject({{L"Name", str(L"Main")},
                                {L"Visible", Variant(-1L)},
                                {L"Left", Variant(1L)},
                                {L"Top", Variant(1L)},
                                {L"Width", Variant(1L)},
                                {L"Height", Variant(1L)},
                                {L"WindowState", Variant(0L)}});
    window->whenRead = [&] { preferences->StopUPM(); };
    const auto windows = got<ComPtr<_UPWindowUtil>>(preferences.Get(), &_UPUtil::get_Windows);
    IDispatch* object = window.Get();
    EXPECT_EQ(windows->SaveWindowPos(&object, nullptr, nullptr), S_OK);
    EXPECT_FALSE(started(preferences));
}

TEST_F(PreferencesContext, ReleasingAnyUserOfTheSharedContextStopsIt) {
    Preferences first = make<UPUtil>();
    const Preferences second = make<UPUtil>();
    EXPECT_EQ(manager(first).Get(), manager(second).Get());
    useFolder(first);
    start(first, L"sales", L"ana");
    keep(second, L"1");
    first.Reset();
    EXPECT_NE(readFile(shared_).find("value=\"1\""), std::string::npos);
    EXPECT_FALSE(started(second));
    EXPECT_EQ(kept(second), L"");
    // The shared manager goes on without sections, as it was.
    EXPECT_FALSE(yes(manager(second).Get(), &_UPManager::Delete, nullptr));
}

TEST_F(PreferencesContext, AReleasedUPUtilSavesFirst) {
    {
        const auto preferences = fresh();
        start(preferences, L"sales", L"ana");
        keep(preferences, L"1");
    }
    const auto preferences = fresh();
    start(preferences, L"sales", L"ana");
    EXPECT_EQ(kept(preferences), L"1");
}

}  // namespace
}  // namespace vela::test
