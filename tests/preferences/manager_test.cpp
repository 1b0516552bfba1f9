#include "preferences/UPDataSourceXML.h"
#include "preferences/UPUtil.h"
#include "preferences/preferences_support.h"

namespace vela::test {
namespace {

constexpr HRESULT kBroken = static_cast<HRESULT>(0x80040007);

// A store that logs, answers False and fails when told to.
class FakeSource final : public Object<FakeSource, Unbuilt<_IUPDataSource>> {
  public:
    HRESULT STDMETHODCALLTYPE Load(BSTR application, BSTR user, _IUPSection**,
                                   VARIANT_BOOL* result) override {
        const std::wstring names =
            std::wstring(text(application)) + L"/" + std::wstring(text(user));
        return outcome(L"load " + names, result);
    }
    HRESULT STDMETHODCALLTYPE Save(BSTR, BSTR, _IUPSection**, VARIANT_BOOL* result) override {
        return outcome(L"save", result);
    }
    std::wstring log;
    bool fails = false;

  private:
    HRESULT outcome(const std::wstring& what, VARIANT_BOOL* result) {
        log += what + L" ";
        return answer(result, [&] {
            if (fails) throw Error{kBroken, L"Fake", L"broken"};
            return false;
        });
    }
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
    void change(const wchar_t* id) {
        EXPECT_EQ(addItem(manager_->section(id).Get(), L"a", L"g"), S_OK);
    }
    ComPtr<UPManager> manager_ = make<UPManager>();
};

TEST_F(PreferencesManager, LoadsOnceAndSavesOnlyWhatChanged) {
    const auto values = add(kKVSection), paths = add(kDPSection);
    manager_->add(makeSection(kUISection));  // without a store
    manager_->put_UserId(Bstr(L" ção ").get());
    manager_->put_ApplicationId(nullptr);
    for (const std::wstring id : {L"KV", L"kv", L"", L" kv", L"PP", L"1"}) {
        EXPECT_EQ(yes(manager_.Get(), &_UPManager::IsRegistered, Bstr(id).get()),
                  id == L"KV" || id == L"kv");
    }
    EXPECT_FALSE(yes(manager_.Get(), &_UPManager::get_Loaded));
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(yes(manager_.Get(), &_UPManager::Load));
    EXPECT_TRUE(yes(manager_.Get(), &_UPManager::Save));
    change(L"DP");
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(yes(manager_.Get(), &_UPManager::Save));
    EXPECT_EQ(values->log, L"load _ALL_/ ÇÃO  ");
    EXPECT_EQ(paths->log, L"load _ALL_/ ÇÃO  save ");
    EXPECT_FALSE(yes(manager_->section(L"UI").Get(), &_IUPSection::get_Loaded));
}

TEST_F(PreferencesManager, AFailingStoreStopsTheRestAndReachesTheCaller) {
    const auto first = add(kKVSection), second = add(kDPSection);
    for (const wchar_t* id : {L"KV", L"DP"}) change(id);
    for (const bool fails : {true, false}) {
        first->fails = fails;
        for (const wchar_t* member : {L"Load", L"Save"}) {
            const Called result = call(manager_.Get(), member);
            EXPECT_EQ(result.error, fails ? kBroken : S_OK);
            EXPECT_EQ(result.source + result.description, fails ? L"Fakebroken" : L"");
        }
        EXPECT_EQ(second->log, fails ? L"" : L"load _ALL_/_ALL_ save ");
    }
    EXPECT_EQ(first->log, second->log + second->log);
}

TEST_F(PreferencesManager, DeleteRemovesDocumentsAndAnswersFalse) {
    TemporaryFolder folder;
    const std::wstring names[] = {L"ana.up1.xml", L"ana.up2.xml", L"rui.up1.xml", L"rui.up2.xml"};
    for (int i = 0; i < 4; ++i) writeFile(folder.path(names[i]), std::to_string(i + 1));
    manager_->dataSources()->put_LocalSource(Variant(folder.path(names[0])));
    manager_->dataSources()->put_SharedSource(Variant(folder.path(names[1])));
    add(kKVSection);
    const auto left = [&](const wchar_t* user) {
        EXPECT_TRUE(yes(manager_.Get(), &_UPManager::get_HasRegisteredSections));
        EXPECT_FALSE(yes(manager_.Get(), &_UPManager::Delete, Bstr(user).get()));
        std::string contents;
        for (const auto& name : names) contents += readFile(folder.path(name));
        return contents;
    };
    for (int i = 0; i < 2; ++i) EXPECT_EQ(left(L"rui"), "12");
    EXPECT_EQ(left(L""), "");
    EXPECT_FALSE(yes(manager_.Get(), &_UPManager::get_HasRegisteredSections));
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
    using Preferences = ComPtr<IDispatch>;
    static Preferences opened() { return asObject(make<UPUtil>()); }
    static ComPtr<IDispatch> part(const Preferences& preferences, const wchar_t* name) {
        return objectIn(call(preferences.Get(), name).result);
    }
    Preferences fresh() {
        const auto preferences = part(opened(), L"NewPreferences");
        useFolder(preferences);
        return preferences;
    }
    Preferences freshForAna() {
        const auto preferences = fresh();
        start(preferences, L"sales", L"ana");
        return preferences;
    }
    void useFolder(const Preferences& preferences) {
        const auto sources = part(preferences, L"ActiveDataSources");
        putProperty(sources.Get(), L"LocalSource", str(folder_.path(L"ana.up1.xml")));
        putProperty(sources.Get(), L"SharedSource", str(shared_));
    }
    static void start(const Preferences& preferences, const wchar_t* application,
                      const wchar_t* user) {
        const auto result = call(preferences.Get(), L"StartUPM", {str(application), str(user)});
        EXPECT_EQ(textOf(result.result), L"-1");
    }
    static void stop(const Preferences& preferences) {
        EXPECT_EQ(call(preferences.Get(), L"StopUPM").outcome, S_OK);
    }
    static bool started(const Preferences& preferences) {
        return shown(part(preferences, L"ActiveUPM").Get(), L"Loaded") == L"True";
    }
    static void remove(const Preferences& preferences) {
        EXPECT_EQ(textOf(call(part(preferences, L"ActiveUPM").Get(), L"Delete").result), L"False");
    }
    static void keep(const Preferences& preferences, const wchar_t* value) {
        call(part(preferences, L"Values").Get(), L"SaveValue",
             {str(L" k"), str(L"g "), str(value)});
    }
    static std::wstring kept(const Preferences& preferences) {
        return textOf(call(part(preferences, L"Values").Get(), L"GetValue",
                           {str(L" K "), str(L"G"), str(L"none")})
                          .result);
    }

    TemporaryFolder folder_;
    const std::wstring shared_ = folder_.path(L"ana.up2.xml");
};

TEST_F(PreferencesContext, StartsStopsAndStartsAgain) {
    const auto preferences = fresh();
    EXPECT_EQ(kept(preferences), L"");  // not started: not even the default
    start(preferences, L"", L"");
    EXPECT_TRUE(started(preferences));
    EXPECT_EQ(kept(preferences), L"none");
    keep(preferences, L"1");
    EXPECT_EQ(readFile(shared_), "");
    stop(preferences);
    EXPECT_FALSE(started(preferences));
    EXPECT_NE(readFile(shared_).find("App_User id=\"_ALL_\""), std::string::npos);
    EXPECT_EQ(kept(preferences), L"");
    keep(preferences, L"2");  // without effect

    const auto other = fresh();
    EXPECT_NE(part(other, L"ActiveUPM").Get(), part(preferences, L"ActiveUPM").Get());
    start(other, L"", L"");
    EXPECT_EQ(kept(other), L"1");
    // Sections that are there stay, with what the document does not have.
    keep(other, L"3");
    start(other, L"", L"");
    EXPECT_EQ(kept(other), L"3");
}

TEST_F(PreferencesContext, OtherIdentitiesAreSavedAndReadOnTheirOwn) {
    const auto preferences = fresh();
    const struct {
        const wchar_t *application, *user, *found, *kept;
    } table[] = {{L"sales", L"ana", L"none", L"ana's"},
                 {L"sales", L"rui", L"none", L"rui's"},
                 {L"stock", L"rui", L"none", L"stock"},
                 {L"sales", L"ana", L"ana's", L"changed"},
                 {L"SALES", L"RUI", L"rui's", L""}};
    for (const auto& row : table) {
        start(preferences, row.application, row.user);
        EXPECT_EQ(kept(preferences), row.found);
        keep(preferences, row.kept);
    }
}

TEST_F(PreferencesContext, AnotherDocumentIsReadWhenTheFormerHasEverything) {
    const auto preferences = freshForAna();
    keep(preferences, L"1");
    const auto sources = part(preferences, L"ActiveDataSources");
    putProperty(sources.Get(), L"SharedSource", str(folder_.path(L"other.up2.xml")));
    start(preferences, L"sales", L"ana");
    EXPECT_EQ(kept(preferences), L"none");
    EXPECT_NE(readFile(shared_).find("value=\"1\""), std::string::npos);
}

TEST_F(PreferencesContext, WhoOnlyReadsWritesNothing) {
    const auto writer = freshForAna();
    keep(writer, L"1");
    stop(writer);
    const auto reader = freshForAna();
    start(writer, L"sales", L"ana");
    keep(writer, L"2");
    stop(writer);
    stop(reader);
    start(reader, L"sales", L"rui");
    start(reader, L"sales", L"ana");
    EXPECT_EQ(kept(reader), L"2");
}

TEST_F(PreferencesContext, AReleasedUPUtilSavesFirstAndDeletedDocumentsDoNotComeBack) {
    keep(freshForAna(), L"1");
    const auto reader = freshForAna();
    EXPECT_EQ(kept(reader), L"1");
    remove(reader);
    start(reader, L"sales", L"ana");
    EXPECT_EQ(kept(reader), L"none");
}

TEST_F(PreferencesContext, ReleasingAnyUserOfTheSharedContextStopsIt) {
    Preferences first = opened();
    const Preferences second = opened();
    EXPECT_EQ(part(first, L"ActiveUPM").Get(), part(second, L"ActiveUPM").Get());
    useFolder(first);
    start(first, L"sales", L"ana");
    keep(second, L"1");
    first.Reset();
    EXPECT_NE(readFile(shared_).find("value=\"1\""), std::string::npos);
    EXPECT_FALSE(started(second));
    EXPECT_EQ(kept(second), L"");
    // The shared manager goes on without sections, as it was.
    remove(second);
}

}  // namespace
}  // namespace vela::test
