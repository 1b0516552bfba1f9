#include "preferences/UPDataSourceXML.h"
#include "preferences/UPUtil.h"
#include "preferences/preferences_support.h"

namespace vela::test {
namespace {

bool loaded(_UPManager* manager) {
    VARIANT_BOOL loaded = VARIANT_FALSE;
    EXPECT_EQ(manager->get_Loaded(&loaded), S_OK);
    return isTrue(loaded);
}

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
    bool isRegistered(const wchar_t* id) {
        VARIANT_BOOL found = VARIANT_TRUE;
        EXPECT_EQ(manager_->IsRegistered(Bstr(id).get(), &found), S_OK);
        return isTrue(found);
    }
    bool hasSections() {
        VARIANT_BOOL has = VARIANT_FALSE;
        EXPECT_EQ(manager_->get_HasRegisteredSections(&has), S_OK);
        return isTrue(has);
    }
    void TearDown() override {
        manager_.Reset();
        NoObjectsLeft::TearDown();
    }
    ComPtr<UPManager> manager_;
    void SetUp() override { manager_ = make<UPManager>(); }
};

TEST_F(PreferencesManager, IdentitiesAreUpperCasedAndNeverEmpty) {
    EXPECT_FALSE(loaded(manager_.Get()));
    EXPECT_FALSE(hasSections());
    const struct {
        const wchar_t *given, *kept;
    } table[] = {{L"ana", L"ANA"}, {L" ção ", L" ÇÃO "}, {L"", L"_ALL_"}, {L" ", L" "}};
    EXPECT_EQ(textProperty<_UPManager>(manager_.Get(), &_UPManager::get_UserId), L"_ALL_");
    EXPECT_EQ(textProperty<_UPManager>(manager_.Get(), &_UPManager::get_ApplicationId), L"_ALL_");
    for (const auto& row : table) {
        EXPECT_EQ(manager_->put_UserId(Bstr(row.given).get()), S_OK);
        EXPECT_EQ(manager_->put_ApplicationId(Bstr(row.given).get()), S_OK);
        EXPECT_EQ(manager_->userId(), row.kept);
        EXPECT_EQ(manager_->applicationId(), row.kept);
    }
}

TEST_F(PreferencesManager, KnowsRegisteredSectionsByIdAlone) {
    add(kKVSection);
    EXPECT_TRUE(hasSections());
    for (const wchar_t* id : {L"KV", L"kv"}) EXPECT_TRUE(isRegistered(id)) << id;
    for (const wchar_t* id : {L"", L" kv", L"UI", L"1"}) EXPECT_FALSE(isRegistered(id)) << id;
}

TEST_F(PreferencesManager, LoadsOnceAndSavesOnlyWhatChanged) {
    const auto values = add(kKVSection), paths = add(kDPSection);
    manager_->add(makeSection(kUISection));  // without a store
    VARIANT_BOOL done = VARIANT_FALSE;
    for (int i = 0; i < 2; ++i) EXPECT_EQ(manager_->Load(&done), S_OK);
    EXPECT_TRUE(isTrue(done));
    EXPECT_EQ(values->loads, 1);
    EXPECT_EQ(values->identities, L"_ALL_/_ALL_");
    EXPECT_EQ(manager_->Save(&done), S_OK);
    EXPECT_EQ(values->saves + paths->saves, 0);
    EXPECT_EQ(addItem(manager_->section(L"DP").Get(), L"a", L"g"), S_OK);
    for (int i = 0; i < 2; ++i) EXPECT_EQ(manager_->Save(&done), S_OK);
    EXPECT_EQ(values->saves, 0);
    EXPECT_EQ(paths->saves, 1);
    VARIANT_BOOL flag = VARIANT_TRUE;
    manager_->section(L"UI")->get_Loaded(&flag);
    EXPECT_FALSE(isTrue(flag));
}

TEST_F(PreferencesManager, AFailingStoreStopsTheRestAndReachesTheCaller) {
    const auto first = add(kKVSection), second = add(kDPSection);
    for (const wchar_t* id : {L"KV", L"DP"}) addItem(manager_->section(id).Get(), L"a", L"g");
    first->fails = true;
    const auto object = asObject(manager_);
    for (const wchar_t* member : {L"Load", L"Save"}) {
        const Called result = call(object.Get(), member);
        EXPECT_EQ(result.outcome, DISP_E_EXCEPTION);
        EXPECT_EQ(result.error, static_cast<HRESULT>(0x80040007));
        EXPECT_EQ(result.source + L": " + result.description, L"Fake: broken");
    }
    EXPECT_EQ(second->loads + second->saves, 0);
    first->fails = false;
    VARIANT_BOOL done;
    EXPECT_EQ(manager_->Load(&done), S_OK);
    EXPECT_EQ(manager_->Save(&done), S_OK);
    EXPECT_EQ(first->loads + first->saves, 4);
    EXPECT_EQ(second->loads + second->saves, 2);
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
        const char* what;
        const wchar_t* user;
        const char* left;
        bool sections;
    } table[] = {{"another user's", L"rui", "xx--", true},
                 {"none there", L"rui", "xx--", true},
                 {"the current ones", L"", "----", false}};
    for (const auto& row : table) {
        VARIANT_BOOL done = VARIANT_TRUE;
        EXPECT_EQ(manager_->Delete(Bstr(row.user).get(), &done), S_OK);
        EXPECT_FALSE(isTrue(done));
        EXPECT_EQ(left(), row.left) << row.what;
        EXPECT_EQ(hasSections(), row.sections);
    }
}

TEST_F(PreferencesManager, StoresAreNamedAfterTheUserOfTheMachine) {
    wchar_t before[256] = L"";
    GetEnvironmentVariableW(L"USERNAME", before, 256);
    SetEnvironmentVariableW(L"USERNAME", L"josé");
    const auto sources = make<UPDataSources>();
    SetEnvironmentVariableW(L"USERNAME", before);
    EXPECT_EQ(sources->localName(), L"josé.up1.xml");
    EXPECT_EQ(sources->sharedName(), L"josé.up2.xml");
    Variant session;
    EXPECT_EQ(sources->get_SessionSource(&session), S_OK);
    EXPECT_EQ(session.vt, VT_BSTR);
    EXPECT_EQ(sources->putref_LocalSource(Variant(5L)), S_OK);
    EXPECT_EQ(sources->localName(), L"5");
}

// ---- the life cycle
// ------------------------------------------------------------------------------

// The shared context lives on; it is made before a test counts its objects.
struct SharedContext {
    SharedContext() { UPContext::shared(); }
};
class PreferencesContext : SharedContext, public NoObjectsLeft {
  protected:
    ComPtr<_UPUtil> fresh() {
        ComPtr<_UPUtil> preferences;
        EXPECT_EQ(make<UPUtil>()->NewPreferences(&preferences), S_OK);
        useFolder(preferences.Get());
        return preferences;
    }
    void useFolder(_UPUtil* preferences) {
        ComPtr<_UPDataSources> sources;
        EXPECT_EQ(preferences->get_ActiveDataSources(&sources), S_OK);
        sources->put_LocalSource(Variant(folder_.path(L"ana.up1.xml")));
        sources->put_SharedSource(Variant(shared_));
    }
    static void start(_UPUtil* preferences, const wchar_t* application, const wchar_t* user) {
        Variant result;
        EXPECT_EQ(preferences->StartUPM(Bstr(application).get(), Bstr(user).get(), &result), S_OK);
        EXPECT_EQ(result.vt, VT_I2);
        EXPECT_EQ(result.iVal, -1);
    }
    static ComPtr<_UPValueUtil> values(_UPUtil* preferences) {
        ComPtr<_UPValueUtil> values;
        EXPECT_EQ(preferences->get_Values(&values), S_OK);
        return values;
    }
    static void keep(_UPUtil* preferences, const wchar_t* value) {
        EXPECT_EQ(
            values(preferences)->SaveValue(Bstr(L"k").get(), Bstr(L"g").get(), Bstr(value).get()),
            S_OK);
    }
    static std::wstring kept(_UPUtil* preferences) {
        Bstr value;
        EXPECT_EQ(
            values(preferences)
                ->GetValue(Bstr(L" K ").get(), Bstr(L"G").get(), Bstr(L"none").get(), value.put()),
            S_OK);
        return value.str();
    }
    static ComPtr<_UPManager> manager(_UPUtil* preferences) {
        ComPtr<_UPManager> manager;
        EXPECT_EQ(preferences->get_ActiveUPM(&manager), S_OK);
        return manager;
    }

    TemporaryFolder folder_;
    const std::wstring shared_ = folder_.path(L"ana.up2.xml");
};

TEST_F(PreferencesContext, StartsStopsAndStartsAgain) {
    const auto preferences = fresh();
    EXPECT_EQ(kept(preferences.Get()), L"");  // not started: not even the default
    start(preferences.Get(), L"", L"");
    EXPECT_EQ(textProperty(manager(preferences.Get()).Get(), &_UPManager::get_UserId), L"_ALL_");
    EXPECT_TRUE(loaded(manager(preferences.Get()).Get()));
    EXPECT_EQ(kept(preferences.Get()), L"none");
    keep(preferences.Get(), L"1");
    EXPECT_EQ(readFile(shared_), "");
    EXPECT_EQ(preferences->StopUPM(), S_OK);
    EXPECT_FALSE(loaded(manager(preferences.Get()).Get()));
    EXPECT_NE(readFile(shared_).find("App_User id=\"_ALL_\""), std::string::npos);
    EXPECT_EQ(kept(preferences.Get()), L"");
    keep(preferences.Get(), L"2");  // without effect

    const auto other = fresh();
    EXPECT_NE(manager(other.Get()).Get(), manager(preferences.Get()).Get());
    start(other.Get(), L"", L"");
    EXPECT_EQ(kept(other.Get()), L"1");
    // Sections that are there stay, with what the document does not have.
    keep(other.Get(), L"3");
    start(other.Get(), L"", L"");
    EXPECT_EQ(kept(other.Get()), L"3");
}

TEST_F(PreferencesContext, OtherIdentitiesAreSavedAndReadOnTheirOwn) {
    const auto preferences = fresh();
    start(preferences.Get(), L"sales", L"ana");
    keep(preferences.Get(), L"ana's");
    start(preferences.Get(), L"sales", L"rui");
    EXPECT_EQ(kept(preferences.Get()), L"none");
    keep(preferences.Get(), L"rui's");
    start(preferences.Get(), L"stock", L"rui");
    EXPECT_EQ(kept(preferences.Get()), L"none");
    start(preferences.Get(), L"sales", L"ana");
    EXPECT_EQ(kept(preferences.Get()), L"ana's");
    start(preferences.Get(), L"SALES", L"RUI");
    EXPECT_EQ(kept(preferences.Get()), L"rui's");
}

TEST_F(PreferencesContext, ReleasingAnyUserOfTheSharedContextStopsIt) {
    auto first = make<UPUtil>();
    const auto second = make<UPUtil>();
    EXPECT_EQ(manager(first.Get()).Get(), manager(second.Get()).Get());
    useFolder(first.Get());
    start(first.Get(), L"sales", L"ana");
    keep(second.Get(), L"1");
    first.Reset();
    EXPECT_NE(readFile(shared_).find("value=\"1\""), std::string::npos);
    EXPECT_FALSE(loaded(manager(second.Get()).Get()));
    EXPECT_EQ(kept(second.Get()), L"");
    // The shared manager goes on without sections, as it was.
    VARIANT_BOOL ignored;
    EXPECT_EQ(manager(second.Get())->Delete(nullptr, &ignored), S_OK);
}

TEST_F(PreferencesContext, AReleasedUPUtilSavesFirst) {
    {
        const auto preferences = fresh();
        start(preferences.Get(), L"sales", L"ana");
        keep(preferences.Get(), L"1");
    }
    const auto preferences = fresh();
    start(preferences.Get(), L"sales", L"ana");
    EXPECT_EQ(kept(preferences.Get()), L"1");
}

}  // namespace
}  // namespace vela::test
