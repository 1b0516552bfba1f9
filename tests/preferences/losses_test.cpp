// Ways in which what a user saved could be lost.
#include <thread>

#include "automation/late_objects.h"
#include "preferences/UPDataSourceXML.h"
#include "preferences/preferences_support.h"

namespace vela::test {
namespace {

std::string section(const std::string& id, const std::string& groups) {
    return "<" + id + "_Section id=\"" + id + "\">" + groups + "</" + id + "_Section>";
}
std::string document(const std::string& sections, const std::string& version = "version='1'") {
    return "<UserPreferences " + version + "><App id=\"SALES\"><App_User id=\"ANA\">" + sections +
           "</App_User></App></UserPreferences>";
}
std::string items(const std::string& id, int count) {
    std::string result;
    for (int i = 0; i < count; ++i) {
        result += "<i id=\"K" + std::to_string(i) + "\" value=\"1\"/>";
    }
    return "<g id=\"" + id + "\">" + result + "</g>";
}

// Keeps a file from everybody else.
class Lock {
  public:
    explicit Lock(const std::wstring& path)
        : file_(CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)) {
        EXPECT_TRUE(file_);
    }
    // Lets go of it a moment from now.
    void endSoon(DWORD milliseconds) {
        end_ = std::jthread([this, milliseconds] {
            Sleep(milliseconds);
            file_.reset();
        });
    }

  private:
    KernelHandle file_;
    std::jthread end_;
};

// A caller's store that fails in one of its members.
ComPtr<_IUPDataSource> storeWithout(std::wstring_view failing) {
    const auto store = adopted(new LateObject);
    store->names = {L"DataSource", L"Load", L"Save"};
    store->invoked = [failing, names = store->names](DISPID id, WORD, DISPPARAMS&, VARIANT*,
                                                     EXCEPINFO*) {
        return names[static_cast<std::size_t>(id)] == failing ? E_FAIL : S_OK;
    };
    ComPtr<_IUPDataSource> adapted;
    EXPECT_EQ(queryOrAdapt<_IUPDataSource>(static_cast<IDispatch*>(store.Get()), &adapted), S_OK);
    return adapted;
}

class PreferencesLosses : public NoObjectsLeft {
  protected:
    using Preferences = std::shared_ptr<UPContext>;

    Preferences started() const {
        const Preferences preferences = contextIn(folder_);
        preferences->start(L"sales", L"ana");
        return preferences;
    }
    static void keep(const Preferences& preferences, const wchar_t* id, const wchar_t* value = L"2",
                     const wchar_t* group = L"G") {
        preferences->saveValue(id, group, value);
    }
    static std::wstring kept(const Preferences& preferences, const wchar_t* id,
                             const wchar_t* group = L"G") {
        return preferences->getValue(id, group, L"none");
    }
    std::wstring kept(const wchar_t* id, const wchar_t* group = L"G") const {
        return kept(started(), id, group);
    }
    static ComPtr<_UPItems> itemsIn(const Preferences& preferences, const wchar_t* section) {
        return itemsOf(preferences->manager()->section(section).Get());
    }
    int count(const wchar_t* section) const {
        return got<SHORT>(itemsIn(started(), section).Get(), &_UPItems::get_Count);
    }
    std::string text() const { return readFile(file_); }

    const TemporaryFolder folder_;
    const std::wstring file_ = folder_.path(L"ana.up2.xml");
};

TEST_F(PreferencesLosses, AShortLockIsWaitedFor) {
    writeFile(file_, document(section("KV", items("G", 20))));
    std::optional<Lock> lock(file_);
    lock->endSoon(100);
    const Preferences preferences = started();
    EXPECT_EQ(kept(preferences, L"K7"), L"1");
    keep(preferences, L"new");
    lock.emplace(file_);
    lock->endSoon(300);
    preferences->stop();
    EXPECT_EQ(count(L"KV"), 21);
}

TEST_F(PreferencesLosses, ALongLockCostsNothing) {
    writeFile(file_, document(section("KV", items("G", 20))));
    std::optional<Lock> lock(file_);
    const Preferences preferences = started();
    EXPECT_EQ(kept(preferences, L"K7"), L"none");
    keep(preferences, L"K7", L"2");
    preferences->manager()->saveEach();
    EXPECT_TRUE(flagOf(preferences->manager()->section(L"KV").Get(), &_IUPSection::get_Saved));
    lock.reset();
    // Any later save writes it, over what could not be read before, and loses none of that.
    preferences->stop();
    EXPECT_EQ(count(L"KV"), 20);
    EXPECT_EQ(kept(L"K7"), L"2");
    EXPECT_EQ(kept(L"K8"), L"1");
}

// Of the same user they stay in use, of another one they wait.
TEST_F(PreferencesLosses, WhatCouldNotBeWrittenSurvivesAStart) {
    writeFile(file_, document(""));
    const Preferences preferences = started();
    keep(preferences, L"k", L"ana's");
    {
        const Lock lock(file_);
        preferences->start(L"sales", L"ana");
        EXPECT_EQ(kept(preferences, L"k"), L"ana's");
        preferences->start(L"sales", L"rui");
        EXPECT_EQ(kept(preferences, L"k"), L"none");
    }
    preferences->stop();
    EXPECT_EQ(kept(L"k"), L"ana's");
}

// The sections of one place, that of before and that of now, are written together.
TEST_F(PreferencesLosses, WhatWaitedAndWhatIsNewAreBothWritten) {
    writeFile(file_, document(section("KV", items("G", 2))));
    const Preferences preferences = started();
    SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_READONLY);
    for (const wchar_t* id : {L"first", L"second", L"third"}) {
        keep(preferences, id);
        preferences->start(L"sales", L"rui");
        keep(preferences, id);
        preferences->start(L"sales", L"ana");
    }
    SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL);
    keep(preferences, L"last");
    preferences->stop();
    const Preferences read = started();
    for (const wchar_t* user : {L"ana", L"rui"}) {
        read->start(L"sales", user);
        for (const wchar_t* id : {L"first", L"second", L"third"}) {
            EXPECT_EQ(kept(read, id), L"2") << user << id;
        }
    }
    EXPECT_EQ(kept(L"K1") + kept(L"last"), L"12");
}

// Nothing is known of what is stored, so nothing of it is to go.
TEST_F(PreferencesLosses, WhatAnAbortedStartDidNotLoadStays) {
    writeFile(file_, document(section("KV", items("G", 5))));
    const auto store = storeWithout(L"Load");
    const Preferences preferences = contextIn(folder_);
    const auto first = make<RPSection>();
    first->putref_DataSourceManager(store.Get());
    preferences->manager()->add(first);
    EXPECT_FALSE(quietly([&] { preferences->start(L"sales", L"ana"); }));
    keep(preferences, L"new");
    preferences->finish();
    EXPECT_EQ(count(L"KV"), 6);
    first->putref_DataSourceManager(nullptr);
}

TEST_F(PreferencesLosses, ACopyElsewhereCostsNothingHere) {
    const Preferences first = started();
    keep(first, L"k");
    first->stop();
    first->start(L"sales", L"ana");
    const Preferences second = started();
    keep(second, L"other");
    second->stop();
    ComPtr<_IUPSection> section = first->manager()->section(L"KV");
    UPDataSourceXML copy(folder_.path(L"copy.xml"));
    EXPECT_TRUE(yes(&copy, &_IUPDataSource::Save, Bstr(L"sales").get(), Bstr(L"ana").get(),
                    section.GetAddressOf()));
    keep(first, L"k", L"3");
    first->stop();
    EXPECT_EQ(kept(L"k") + kept(L"other"), L"32");
}

TEST_F(PreferencesLosses, ADeletedDocumentDoesNotComeBack) {
    const Preferences preferences = started();
    keep(preferences, L"k");
    preferences->saveDefaultPath(L"p", L"G", {L"x", L"", L""});
    preferences->manager()->save();
    EXPECT_FALSE(yes(preferences->manager().Get(), &_UPManager::Delete, Bstr(L"ana").get()));
    keep(preferences, L"new");
    preferences->stop();
    EXPECT_EQ(count(L"DP"), 0);
}

TEST_F(PreferencesLosses, WhatCannotBeReadStays) {
    const struct {
        const char *what, *version, *groups, *stays;
    } table[] = {
        {"a group without attributes", "version='1'", "<g/><g><i id='LOST'/></g>", "LOST"},
        {"no version", "", "", ""},
        {"an odd version", "version='99999'", "", ""},
        {"no identity that this class takes", "version='1'",
         "<g id='x'><i id='b '/><i id='b '/></g>", "b "},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.what);
        writeFile(file_, document(section("DP", row.groups + items("G", 3)), row.version));
        const Preferences preferences = started();
        preferences->saveDefaultPath(L"new", L"G", {L"p", L"", L""});
        preferences->stop();
        EXPECT_NE(text().find(row.stays), std::string::npos);
        const auto paths = itemsIn(started(), L"DP");
        for (const wchar_t* id : {L"K0", L"K2", L"new"}) {
            EXPECT_TRUE(got<ComPtr<IDispatch>>(paths.Get(), &_UPItems::get_Item, Bstr(id).get(),
                                               Bstr(L"g").get()));
        }
    }
}

TEST_F(PreferencesLosses, EveryStartReadsAnew) {
    const Preferences first = started();
    keep(first, L"k", L"1");
    first->stop();
    const Preferences second = started();
    keep(second, L"k", L"2");
    keep(second, L"other", L"2");
    second->stop();
    first->start(L"sales", L"ana");
    EXPECT_EQ(kept(first, L"k"), L"2");
    keep(first, L"own", L"1");
    first->stop();
    EXPECT_EQ(kept(L"k") + kept(L"other") + kept(L"own"), L"221");
}

TEST_F(PreferencesLosses, ProgramsThatChangeOtherItemsLoseNothing) {
    writeFile(file_, document(section("KV", items("G", 5))));
    const Preferences first = started(), second = started();
    const auto remove = [](const Preferences& preferences, const wchar_t* id) {
        itemsIn(preferences, L"KV")->Remove(Bstr(id).get(), Bstr(L"G").get());
    };
    for (int round = 0; round < 3; ++round) {
        keep(first, L"K0", L"first");
        keep(first, L"both", L"first");
        remove(first, L"K1");
        first->manager()->save();
        keep(second, L"K2", L"second");
        keep(second, L"both", L"second");
        remove(second, L"K3");
        second->manager()->save();
        const Preferences read = started();
        std::wstring all;
        for (const wchar_t* id : {L"K0", L"K1", L"K2", L"K3", L"K4", L"both"}) {
            all += kept(read, id) + L" ";
        }
        EXPECT_EQ(all, L"first none second none 1 second ");
        // What the other did is not seen before the next start.
        EXPECT_EQ(kept(first, L"K2") + kept(second, L"K0"), L"11");
    }
}

TEST_F(PreferencesLosses, ADocumentThatVanishedIsWrittenWhole) {
    enum { Vanished, Unreadable, Restarted };
    for (const auto fate : {Vanished, Unreadable, Restarted}) {
        writeFile(file_, document(section("KV", items("G", 5)) + section("DP", items("G", 2))));
        const Preferences preferences = started();
        keep(preferences, L"new");
        if (fate == Unreadable) writeFile(file_, "not XML");
        else DeleteFileW(file_.c_str());
        if (fate == Restarted) {
            writeFile(file_, "<UserPreferences><App id=\"STOCK\"><App_User id=\"ANA\">" +
                                 section("XY", items("G", 2)) +
                                 "</App_User></App></UserPreferences>");
        }
        preferences->stop();
        EXPECT_EQ(count(L"KV"), 6) << fate;
        EXPECT_EQ(count(L"DP"), 2) << fate;
        EXPECT_EQ(text().find("XY_Section") != std::string::npos, fate == Restarted);
        SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL);
    }
}

TEST_F(PreferencesLosses, FoldersAreMadeAndNamesMadeAbsolute) {
    const std::wstring deep = folder_.path(L"Maker\\Product\\ana.up2.xml");
    wchar_t before[MAX_PATH];
    GetCurrentDirectoryW(MAX_PATH, before);
    SetCurrentDirectoryW(folder_.path(L"").c_str());
    const auto preferences = std::make_shared<UPContext>();
    const auto& sources = preferences->manager()->dataSources();
    sources->put_LocalSource(Variant(L"a.xml"));
    sources->put_SharedSource(Variant(deep));
    preferences->start(L"", L"");
    SetCurrentDirectoryW(before);
    addItem(preferences->manager()->section(L"UI").Get(), L"a", L"g");
    keep(preferences, L"k");
    preferences->stop();
    EXPECT_NE(readFile(deep), "");
    EXPECT_NE(readFile(folder_.path(L"a.xml")), "");
    EXPECT_EQ(textOf(got<Variant>(storeOf(preferences->manager()->section(L"UI").Get()).Get(),
                                  &_IUPDataSource::get_DataSource)),
              L"a.xml");
    // Nothing is made for nothing.
    UPDataSourceXML nowhere(folder_.path(L"none\\a.xml"));
    const auto empty = makeSection(kKVSection);
    EXPECT_FALSE(yes(&nowhere, &_IUPDataSource::Save, nullptr, nullptr,
                     ComPtr<_IUPSection>(empty).GetAddressOf()));
    EXPECT_EQ(GetFileAttributesW(folder_.path(L"none").c_str()), INVALID_FILE_ATTRIBUTES);
    yes(preferences->manager().Get(), &_UPManager::Delete, nullptr);
    EXPECT_EQ(readFile(folder_.path(L"a.xml")), "");
}

// ---- callers' items, sections and stores -------------------------------------------------------

// An object with the given properties and no type information, as script classes make them.
ComPtr<LateObject> scriptObject(std::vector<const wchar_t*> names,
                                std::shared_ptr<std::vector<Variant>> values) {
    auto object = adopted(new LateObject);
    object->names = std::move(names);
    object->invoked = [values](DISPID id, WORD flags, DISPPARAMS& call, VARIANT* result,
                               EXCEPINFO*) {
        Variant& value = values->at(static_cast<std::size_t>(id));
        if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
            value = Variant(call.rgvarg[0]);
        } else if (value.vt == VT_ERROR) {
            return value.scode;
        } else if (result) {
            *result = Variant(value).release();
        }
        return S_OK;
    };
    return object;
}
ComPtr<LateObject> scriptItem(const wchar_t* id, const wchar_t* group, Variant value) {
    return scriptObject({L"Id", L"Group", L"SearchKey", L"Value"},
                        std::make_shared<std::vector<Variant>>(std::vector<Variant>{
                            str(id), str(group), str(std::wstring(id) + L"@" + group), value}));
}
Variant null() {
    Variant value;
    value.vt = VT_NULL;
    return value;
}
Variant failing() {
    Variant value;
    value.vt = VT_ERROR;
    value.scode = E_UNEXPECTED;
    return value;
}

TEST_F(PreferencesLosses, OneOddItemCostsNoOther) {
    const Preferences preferences = started();
    keep(preferences, L"k");
    keep(preferences, L"quoted", L"2", L"a \"group\"");
    const auto values = itemsIn(preferences, L"KV");
    const ComPtr<IDispatch> odd[] = {
        scriptItem(L"SCRIPT", L"G", str(L"kept")), scriptItem(L"NULL", L"G", null()),
        scriptItem(L"FAILS", L"G", failing()),
        got<ComPtr<IDispatch>>(makeSection(kDPSection).Get(), &_IUPSection::CreateItem)};
    for (ComPtr<IDispatch> item : odd) {
        EXPECT_EQ(values->Add(item.GetAddressOf(), nullptr, nullptr), S_OK);
    }
    preferences->stop();
    EXPECT_EQ(kept(L"k") + kept(L"quoted", L"a \"group\"") + kept(L"script"), L"22kept");
    EXPECT_EQ(count(L"KV"), 6);
}

// As a script engine's do that has gone.
TEST_F(PreferencesLosses, ItemsThatAnswerNoMoreAreNotRemoved) {
    for (int i = 0; i < 2; ++i) {
        const Preferences preferences = started();
        auto values = std::make_shared<std::vector<Variant>>(
            std::vector<Variant>{str(L"S"), str(L"G"), str(L"S@G"), str(L"kept")});
        ComPtr<IDispatch> item = scriptObject({L"Id", L"Group", L"SearchKey", L"Value"}, values);
        itemsIn(preferences, L"KV")->Add(item.GetAddressOf(), nullptr, nullptr);
        preferences->manager()->save();
        keep(preferences, L"k");
        std::fill(values->begin(), values->end(), failing());
        preferences->stop();
        EXPECT_EQ(kept(L"k") + kept(L"s"), L"2kept");
    }
}

TEST_F(PreferencesLosses, CallersSectionsAndStoresMayAnswerAnything) {
    const Variant answers[] = {Variant(), Variant(7L), str(L"text"), failing(),
                               Variant(static_cast<IDispatch*>(nullptr))};
    for (const Variant& answer : answers) {
        for (std::size_t odd = 0; odd < 9; ++odd) {
            const Preferences preferences = started();
            const std::wstring value = std::to_wstring(odd);
            auto items = make<UPItems>();
            auto store = make<UPDataSourceXML>(file_);
            ComPtr<IDispatch> item = scriptItem(L"a", L"g", str(L"b"));
            items->Add(item.GetAddressOf(), nullptr, nullptr);
            auto values = std::make_shared<std::vector<Variant>>(std::vector<Variant>{
                str(L"OWN"), str(L"Own"), Variant(asObject(store).Get()), Variant(0L), Variant(0L),
                Variant(asObject(items).Get()), str(L"[value]"), Variant(item.Get())});
            ComPtr<IDispatch> object =
                scriptObject({L"Id", L"Description", L"DataSourceManager", L"Saved", L"Loaded",
                              L"Items", L"Properties", L"CreateItem"},
                             values);
            ComPtr<_IUPSection> own;
            ASSERT_EQ(queryOrAdapt<_IUPSection>(object.Get(), &own), S_OK);
            preferences->manager()->add(own);
            keep(preferences, L"k", value.c_str());
            if (odd < values->size()) values->at(odd) = answer;
            preferences->manager()->save();
            EXPECT_EQ(kept(L"k"), value);
        }
    }
}

TEST_F(PreferencesLosses, AFailingStoreTakesNoOtherSectionDownAtTheEnd) {
    const auto store = storeWithout(L"Save");
    const Preferences preferences = started();
    const auto failing = preferences->manager()->section(L"PP");
    failing->putref_DataSourceManager(store.Get());
    addItem(failing.Get(), L"a", L"g");
    keep(preferences, L"k");
    preferences->finish();
    EXPECT_EQ(kept(L"k"), L"2");
    failing->putref_DataSourceManager(nullptr);
}

TEST_F(PreferencesLosses, IdentitiesWithControlCharactersAreFoundAgain) {
    for (int i = 0; i < 2; ++i) {
        const Preferences preferences = started();
        keep(preferences, L"a\x01\x02z", std::to_wstring(i).c_str(), L"g\x03");
        EXPECT_EQ(kept(preferences, L"az", L"g"), std::to_wstring(i));
        preferences->stop();
    }
    EXPECT_EQ(count(L"KV"), 1);
    EXPECT_EQ(kept(L"a\x01\x02z", L"g\x03"), L"1");
}

TEST_F(PreferencesLosses, AStuckLockIsWaitedForOncePerDocument) {
    const KernelHandle stuck(CreateFileW((file_ + L".vela.tmp").c_str(), GENERIC_WRITE, 0, nullptr,
                                         CREATE_ALWAYS, 0, nullptr));
    const Preferences preferences = started();
    keep(preferences, L"k");
    preferences->saveDefaultPath(L"p", L"G", {});
    const ULONGLONG start = GetTickCount64();
    preferences->stop();
    EXPECT_LT(GetTickCount64() - start, 8000u);
}

}  // namespace
}  // namespace vela::test
