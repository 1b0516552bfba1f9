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
        log.append(L"load ").append(text(application)).append(L"/").append(text(user));
        return outcome(result);
    }
    HRESULT STDMETHODCALLTYPE Save(BSTR, BSTR, _IUPSection**, VARIANT_BOOL* result) override {
        log += L"save";
        return outcome(result);
    }
    std::wstring log;
    bool fails = false;

  private:
    HRESULT outcome(VARIANT_BOOL* result) {
        log += L" ";
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
    useFolder(manager_, folder);
    add(kKVSection);
    const auto leftWithout = [&](const wchar_t* user) {
        EXPECT_FALSE(yes(manager_.Get(), &_UPManager::Delete, Bstr(user).get()));
        std::string contents;
        for (const auto& name : names) contents += readFile(folder.path(name));
        return contents;
    };
    for (int i = 0; i < 2; ++i) EXPECT_EQ(leftWithout(L"rui"), "12");
    EXPECT_TRUE(yes(manager_.Get(), &_UPManager::get_HasRegisteredSections));
    EXPECT_EQ(leftWithout(L""), "");
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
}

// The shared context lives on; it is made before a test counts its objects.
struct SharedContext {
    const std::shared_ptr<UPContext> shared_ = UPContext::shared();
};
class PreferencesContext : protected SharedContext, public NoObjectsLeft {
  protected:
    using Preferences = std::shared_ptr<UPContext>;
    Preferences fresh() const { return contextIn(folder_); }
    Preferences started() const {
        const Preferences preferences = fresh();
        EXPECT_EQ(preferences->start(L"sales", L"ana"), -1);
        return preferences;
    }
    static void keep(const Preferences& preferences, const wchar_t* value) {
        preferences->saveValue(L" k", L"g ", value);
    }
    static std::wstring kept(const Preferences& preferences) {
        return preferences->getValue(L" K ", L"G", L"none");
    }
    bool documentHas(const char* text) const {
        return readFile(folder_.path(L"ana.up2.xml")).find(text) != std::string::npos;
    }

    const TemporaryFolder folder_;
};

TEST_F(PreferencesContext, StartsStopsAndStartsAgain) {
    const auto preferences = fresh();
    EXPECT_EQ(kept(preferences), L"");  // not started: not even the default
    preferences->start(L"", L"");
    EXPECT_EQ(kept(preferences), L"none");
    keep(preferences, L"1");
    EXPECT_FALSE(documentHas("KV_Item"));
    preferences->stop();
    EXPECT_TRUE(documentHas("App_User id=\"_ALL_\""));
    EXPECT_EQ(kept(preferences), L"");
    keep(preferences, L"2");  // without effect

    const auto other = fresh();
    other->start(L"", L"");
    EXPECT_EQ(kept(other), L"1");
    // Sections that are there stay, with what the document does not have.
    keep(other, L"3");
    other->start(L"", L"");
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
        preferences->start(row.application, row.user);
        EXPECT_EQ(kept(preferences), row.found);
        keep(preferences, row.kept);
    }
}

TEST_F(PreferencesContext, AnotherDocumentIsReadWhenTheFormerHasEverything) {
    const auto preferences = started();
    keep(preferences, L"1");
    preferences->manager()->dataSources()->put_SharedSource(Variant(folder_.path(L"b.xml")));
    preferences->start(L"sales", L"ana");
    EXPECT_EQ(kept(preferences), L"none");
    EXPECT_TRUE(documentHas("value=\"1\""));
}

TEST_F(PreferencesContext, WhoOnlyReadsWritesNothing) {
    const auto writer = started();
    keep(writer, L"1");
    writer->stop();
    const auto reader = started();
    writer->start(L"sales", L"ana");
    keep(writer, L"2");
    writer->stop();
    reader->stop();
    reader->start(L"sales", L"rui");
    reader->start(L"sales", L"ana");
    EXPECT_EQ(kept(reader), L"2");
    EXPECT_FALSE(yes(reader->manager().Get(), &_UPManager::Delete, nullptr));
    reader->start(L"sales", L"ana");
    EXPECT_EQ(kept(reader), L"none");  // what was deleted does not come back
}

TEST_F(PreferencesContext, AReleasedUPUtilSavesFirst) {
    auto common = make<UPUtil>();
    auto own = got<ComPtr<_UPUtil>>(common.Get(), &_UPUtil::NewPreferences);
    const auto manager = got<ComPtr<_UPManager>>(own.Get(), &_UPUtil::get_ActiveUPM);
    EXPECT_NE(manager.Get(), shared_->manager().Get());
    useFolder(vela::own<UPManager>(manager.Get()), folder_);
    call(own.Get(), L"StartUPM", {str(L"sales"), str(L"ana")});
    const auto values = got<ComPtr<_UPValueUtil>>(own.Get(), &_UPUtil::get_Values);
    values->SaveValue(Bstr(L"k").get(), nullptr, Bstr(L"1").get());
    own.Reset();
    EXPECT_TRUE(documentHas("value=\"1\""));
    // The shared ones are stopped by any of those that use them.
    const auto other = make<UPUtil>();
    useFolder(shared_->manager(), folder_);
    shared_->start(L"sales", L"ana");
    keep(shared_, L"2");
    common.Reset();
    EXPECT_TRUE(documentHas("value=\"2\""));
    EXPECT_FALSE(shared_->manager()->loaded());
    // The shared manager goes on without sections, as it was.
    EXPECT_FALSE(yes(shared_->manager().Get(), &_UPManager::Delete, nullptr));
}

}  // namespace
}  // namespace vela::test
