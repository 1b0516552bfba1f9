#include "preferences/RPManager.h"
#include "preferences/UPSections.h"
#include "preferences/UPUtil.h"
#include "preferences/preferences_support.h"

namespace vela::test {
namespace {

// Facades over a context of their own, started for SALES and ANA.
class PreferencesFacades : public NoObjectsLeft {
  protected:
    void SetUp() override {
        context_ = std::make_shared<UPContext>();
        context_->manager()->dataSources()->put_LocalSource(Variant(folder_.path(L"a.up1.xml")));
        context_->manager()->dataSources()->put_SharedSource(Variant(folder_.path(L"a.up2.xml")));
        context_->start(L"sales", L"ana");
        values_->setContext(context_);
        windows_->setContext(context_);
        printers_->setContext(context_);
    }
    void TearDown() override {
        values_.Reset();
        windows_.Reset();
        printers_.Reset();
        context_.reset();
        NoObjectsLeft::TearDown();
    }
    ComPtr<_IUPSection> section(const wchar_t* id) { return context_->manager()->section(id); }
    // As a program does that is started again.
    void restart() {
        context_->stop();
        const auto empty = make<UPSections>();  // new sections are read anew
        context_->manager()->putref_PreferenceSections(empty.Get());
        context_->start(L"sales", L"ana");
    }

    TemporaryFolder folder_;
    std::shared_ptr<UPContext> context_;
    ComPtr<UPValueUtil> values_ = make<UPValueUtil>();
    ComPtr<UPWindowUtil> windows_ = make<UPWindowUtil>();
    ComPtr<UPPrinterUtil> printers_ = make<UPPrinterUtil>();
};

TEST_F(PreferencesFacades, ValuesAreKeptByTrimmedKeyAndAsTheyAre) {
    const auto value = [&](const wchar_t* key, const wchar_t* other) {
        Bstr result;
        EXPECT_EQ(
            values_->GetValue(Bstr(key).get(), Bstr(L"g").get(), Bstr(other).get(), result.put()),
            S_OK);
        return result.str();
    };
    for (const wchar_t* text : {L"first", L" v é "}) {
        EXPECT_EQ(values_->SaveValue(Bstr(L" key ").get(), Bstr(L"G ").get(), Bstr(text).get()),
                  S_OK);
    }
    restart();
    EXPECT_EQ(value(L"KEY", L"other"), L" v é ");
    EXPECT_EQ(value(L"none", L"other"), L"other");
    EXPECT_EQ(contents(section(L"KV").Get()), Lines{L"KEY@G= v é "});
}

TEST_F(PreferencesFacades, DefaultPathsComeBackThroughReferences) {
    const auto object = asObject(values_);
    const Bstr reference(L"inv"), group(L"ex"), none(L"none"), path(L"C:\\x\\"), file(L"f");
    EXPECT_EQ(
        call(object.Get(), L"SaveDefaultPath", {arg(reference), arg(group), arg(path), arg(file)})
            .outcome,
        S_OK);
    restart();
    Variant read[3]{Variant(1L), Variant(2L), Variant(3L)};
    const auto load = [&](const Bstr& id) {
        return textOf(call(object.Get(), L"LoadDefaultPath",
                           {arg(id), arg(group), byReference(read[0]), byReference(read[1]),
                            byReference(read[2])})
                          .result);
    };
    EXPECT_EQ(load(none), L"False");
    EXPECT_EQ(textOf(read[0]) + textOf(read[1]) + textOf(read[2]), L"123");
    EXPECT_EQ(load(reference), L"True");
    EXPECT_EQ(textOf(read[0]) + L"|" + textOf(read[1]) + L"|" + textOf(read[2]), L"C:\\x\\|f|");
}

// ---- windows
// -------------------------------------------------------------------------------------

ComPtr<ScriptObject> form(long left, long top, long width, long height, long state = 0) {
    return scriptObject({{L"Name", Variant(std::wstring_view(L"Main"))},
                         {L"Visible", Variant(-1L)},
                         {L"Left", Variant(left)},
                         {L"Top", Variant(top)},
                         {L"Width", Variant(width)},
                         {L"Height", Variant(height)},
                         {L"WindowState", Variant(state)}});
}

class PreferencesWindows : public PreferencesFacades {
  protected:
    void save(const ComPtr<ScriptObject>& window, const wchar_t* id = L"") {
        IDispatch* object = window.Get();
        EXPECT_EQ(windows_->SaveWindowPos(&object, Bstr(id).get(), Bstr(L"g").get()), S_OK);
    }
    bool load(const ComPtr<ScriptObject>& window, const wchar_t* id = L"") {
        IDispatch* object = window.Get();
        VARIANT_BOOL found = VARIANT_TRUE;
        EXPECT_EQ(windows_->LoadWindowPos(&object, Bstr(id).get(), Bstr(L"g").get(), &found), S_OK);
        return isTrue(found);
    }
    static std::wstring place(const ComPtr<ScriptObject>& window) {
        std::wstring result;
        for (const wchar_t* name : {L"Left", L"Top", L"Width", L"Height", L"WindowState"}) {
            result += window->text(name) + L" ";
        }
        return result;
    }
};

TEST_F(PreferencesWindows, ComeBackUnderTheirNameOrId) {
    save(form(300, 450, 3000, 1500));
    save(form(600, 750, 3000, 1500, 2), L"other");
    restart();
    const auto window = form(0, 0, 1, 1, 1);
    EXPECT_FALSE(load(window, L"none"));
    EXPECT_EQ(place(window), L"0 0 1 1 1 ");
    EXPECT_TRUE(load(window));
    EXPECT_EQ(place(window), L"300 450 3000 1500 0 ");
    window->sets.clear();
    EXPECT_TRUE(load(window, L"OTHER"));
    EXPECT_EQ(place(window), L"600 750 3000 1500 2 ");
    // A window can be moved only while it is normal.
    EXPECT_EQ(window->sets.front(), L"WindowState");
    EXPECT_EQ(window->sets.back(), L"WindowState");
}

TEST_F(PreferencesWindows, OnlyAVisibleAndNormalWindowHasAPlace) {
    save(form(300, 450, 3000, 1500));
    const auto hidden = form(1, 1, 1, 1);
    hidden->set(L"Visible", 0);
    save(hidden);
    const auto window = form(0, 0, 1, 1);
    EXPECT_TRUE(load(window));
    EXPECT_EQ(place(window), L"300 450 3000 1500 0 ");
    save(form(-60, -60, 99999, 99999, 2));
    EXPECT_TRUE(load(window));
    EXPECT_EQ(place(window), L"300 450 3000 1500 2 ");
    save(scriptObject({{L"Name", Variant(std::wstring_view(L"x"))}}));  // cannot be asked
    EXPECT_FALSE(load(window, L"x"));
}

TEST_F(PreferencesWindows, MayRefuseToBeSet) {
    save(form(300, 450, 3000, 1500));
    const auto window = form(7, 7, 7, 7, 1);
    window->refused = {L"WindowState", L"Width", L"Height"};
    EXPECT_TRUE(load(window));
    EXPECT_EQ(place(window), L"300 450 7 7 1 ");
}

TEST_F(PreferencesWindows, AreBroughtIntoView) {
    const struct {
        const wchar_t *screen, *left, *width;
    } table[] = {
        {L"", L"9999999", L"3000"}, {L"1x1", L"-9999999", L"3000"}, {L"1x1", L"0", L"9999999"}};
    for (const auto& row : table) {
        addItem(section(L"UI").Get(), L"MAIN", L"G",
                {{L"ScreenWxH", row.screen},
                 {L"Left", row.left},
                 {L"Top", L"0"},
                 {L"Width", row.width},
                 {L"Height", L"1500"}});
        const auto window = form(0, 0, 1, 1);
        EXPECT_TRUE(load(window));
        const long left = std::stol(window->text(L"Left")),
                   width = std::stol(window->text(L"Width"));
        EXPECT_GE(left, 0);
        EXPECT_LE(left + width, GetSystemMetrics(SM_CXSCREEN) * 15 + 15) << left;
        EXPECT_GT(width, 1);
    }
}

// ---- printers
// ------------------------------------------------------------------------------------

// Notes how it is set up.
class FakePrinter final : public Object<FakePrinter, Unbuilt<_ISetPrinter>> {
  public:
    HRESULT STDMETHODCALLTYPE get_Copies(SHORT* result) override { return give(result, SHORT{4}); }
    HRESULT STDMETHODCALLTYPE get_Orientation(PrinterOrientation* result) override {
        return give(result, Landscape);
    }
    HRESULT STDMETHODCALLTYPE get_PaperBin(SHORT* result) override {
        return give(result, SHORT{5});
    }
    HRESULT STDMETHODCALLTYPE get_PaperSize(SHORT* result) override {
        return give(result, SHORT{6});
    }
    HRESULT STDMETHODCALLTYPE get_DeviceName(BSTR* result) override { return give(result, L"own"); }
    HRESULT STDMETHODCALLTYPE SetPrinter(BSTR name, VARIANT_BOOL* result) override {
        done += std::wstring(text(name)) + L":";
        return answer(result, [] { return true; });
    }
    HRESULT STDMETHODCALLTYPE SetProperties(SHORT copies, PrinterOrientation orientation, SHORT bin,
                                            SHORT size, VARIANT_BOOL* result) override {
        for (long value : {long{copies}, long{orientation}, long{bin}, long{size}}) {
            done += L" " + std::to_wstring(value);
        }
        return answer(result, [] { return true; });
    }
    std::wstring done;
};

class PreferencesPrinters : public PreferencesFacades {
  protected:
    void SetUp() override {
        PreferencesFacades::SetUp();
        const struct {
            const wchar_t *id, *printer, *copies;
        } table[] = {{L"INVOICE", L"Hp", L"3"}, {L"LETTER", L"", L"1"}, {L"LABEL", L"ÇX", L"2"}};
        for (const auto& row : table) {
            addItem(section(L"PP").Get(), row.id, L"2",
                    {{L"PrinterName", row.printer}, {L"Copies", row.copies}, {L"PaperBin", L"7"}});
        }
    }
};

TEST_F(PreferencesPrinters, AStoredChoiceIsAppliedElseTheDefaults) {
    const struct {
        const wchar_t* reference;
        SHORT type, copies;
        PrinterOrientation orientation;
        bool wins, found;
        const wchar_t* done;
    } table[] = {
        {L"invoice", 2, 9, Landscape, false, true, L"HP: 3 1 7 0"},
        {L" Invoice ", 2, 9, Landscape, true, true, L"HP: 9 2 7 0"},
        {L"invoice", 2, 0, PrinterOrientation(0), true, true, L"HP: 3 1 7 0"},
        {L"letter", 2, 9, Landscape, false, true, L" 1 1 7 0"},
        {L"invoice", 1, 9, Portrait, false, false, L" 9 1 5 6"},
        {L"none", 2, 0, PrinterOrientation(0), true, false, L" 4 2 5 6"},
    };
    for (auto row : table) {
        const auto printer = make<FakePrinter>();
        _ISetPrinter* target = printer.Get();
        VARIANT_BOOL wins = row.wins ? VARIANT_TRUE : VARIANT_FALSE, found = VARIANT_FALSE;
        EXPECT_EQ(printers_->UsePrintingPreferences(row.type, Bstr(row.reference).get(), &target,
                                                    &row.copies, &row.orientation, &wins, &found),
                  S_OK);
        EXPECT_EQ(isTrue(found), row.found) << row.reference;
        EXPECT_EQ(printer->done, row.done) << row.reference;
    }
    VARIANT_BOOL found = VARIANT_TRUE;
    EXPECT_EQ(printers_->UsePrintingPreferences(2, Bstr(L"invoice").get(), nullptr, nullptr,
                                                nullptr, nullptr, &found),
              S_OK);
    EXPECT_FALSE(isTrue(found));
}

TEST_F(PreferencesPrinters, AreDescribedInWords) {
    const struct {
        const wchar_t* reference;
        SHORT type, copies;
        const wchar_t* description;
    } table[] = {{L"invoice", 2, 3, L"hp (3 cópias)"},
                 {L"label", 2, 2, L"çx (2 cópias)"},
                 {L"letter", 2, 1, L""},
                 {L"invoice", 3, 0, L""}};
    restart();
    const auto expectAll = [&](bool started) {
        for (const auto& row : table) {
            SHORT copies = -1;
            Bstr description;
            EXPECT_EQ(printers_->GetCopies(row.type, Bstr(row.reference).get(), &copies), S_OK);
            EXPECT_EQ(printers_->GetPrinterDescription(row.type, Bstr(row.reference).get(),
                                                       description.put()),
                      S_OK);
            EXPECT_EQ(copies, started ? row.copies : 0);
            EXPECT_EQ(description.str(), started ? row.description : L"");
        }
    };
    expectAll(true);
    context_->stop();
    expectAll(false);
}

// ---- report parameters
// ---------------------------------------------------------------------------

class PreferencesReports : public PreferencesFacades {
  protected:
    bool load(RPManager* reports, VARIANT* source = nullptr) {
        _UPManager* manager = context_->manager().Get();
        VARIANT_BOOL done = VARIANT_FALSE;
        EXPECT_EQ(reports->Load(&manager, source, &done), S_OK);
        return isTrue(done);
    }
    static void add(RPManager* reports, const wchar_t* view, const wchar_t* value) {
        const ComPtr<_RPItem> item = make<RPItem>();
        item->put_View(Bstr(view).get());
        item->put_Value(Bstr(value).get());
        item->put_Group(Bstr(L"g").get());
        EXPECT_EQ(reports->AddItem(item.Get()), S_OK);
    }
    static std::wstring value(RPManager* reports, const wchar_t* id) {
        ComPtr<_RPItem> item;
        EXPECT_EQ(reports->GetItem(Bstr(id).get(), Bstr(L"G").get(), &item), S_OK);
        return item ? textProperty(item.Get(), &_RPItem::get_Value) : L"none";
    }
    static long count(RPManager* reports) {
        ComPtr<_Collection> items;
        long count = -1;
        EXPECT_EQ(reports->get_Items(&items), S_OK);
        EXPECT_EQ(items->get_Count(&count), S_OK);
        return count;
    }
};

TEST_F(PreferencesReports, AreKeptLikeTheOtherSections) {
    const auto reports = make<RPManager>();
    EXPECT_EQ(count(reports.Get()), 0);
    EXPECT_EQ(value(reports.Get(), L"v@@0"), L"none");
    EXPECT_TRUE(FAILED(reports->AddItem(make<RPItem>().Get())));  // no manager yet
    EXPECT_TRUE(load(reports.Get()));
    add(reports.Get(), L"V", L"1");
    add(reports.Get(), L"V", L"2");
    add(reports.Get(), L"W", L"3");
    EXPECT_EQ(count(reports.Get()), 2);
    restart();
    const auto again = make<RPManager>();
    EXPECT_TRUE(load(again.Get()));
    EXPECT_EQ(value(again.Get(), L"v@@0"), L"2");
    ComPtr<_Collection> items;
    Variant first, index(1L);
    EXPECT_EQ(again->get_Items(&items), S_OK);
    EXPECT_EQ(items->get_Item(index, &first), S_OK);
    EXPECT_EQ(shown(objectIn(first), L"Id"), L"V@@0");
    EXPECT_EQ(again->Clear(), S_OK);
    EXPECT_EQ(count(again.Get()), 0);
    context_->stop();
    EXPECT_EQ(readFile(folder_.path(L"a.up2.xml")).find("RP_Section"), std::string::npos);
}

TEST_F(PreferencesReports, MayHaveADocumentOfTheirOwn) {
    Variant own(std::wstring_view(folder_.path(L"own.xml")));
    const auto reports = make<RPManager>();
    EXPECT_TRUE(load(reports.Get(), &own));
    add(reports.Get(), L"V", L"1");
    context_->stop();
    EXPECT_NE(readFile(folder_.path(L"own.xml")).find("RP_Section"), std::string::npos);
    VARIANT_BOOL done = VARIANT_TRUE;
    _UPManager* nothing = nullptr;
    EXPECT_EQ(reports->Load(&nothing, nullptr, &done), S_OK);
    EXPECT_FALSE(isTrue(done));
}

}  // namespace
}  // namespace vela::test
