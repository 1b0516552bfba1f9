#include "preferences/RPManager.h"
#include "preferences/UPSections.h"
#include "preferences/UPUtil.h"
#include "preferences/preferences_support.h"

#include <winspool.h>

// The platform names a function so; our member is meant.
#undef SetPrinter

namespace vela::test {
namespace {

// Facades over a context of their own, started for SALES and ANA.
class PreferencesFacades : public NoObjectsLeft {
  protected:
    void SetUp() override {
        context_ = std::make_shared<UPContext>();
        context_->manager()->dataSources()->put_LocalSource(str(folder_.path(L"a.up1.xml")));
        context_->manager()->dataSources()->put_SharedSource(str(folder_.path(L"a.up2.xml")));
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
    const auto value = [&](const wchar_t* key) {
        return Bstr::owning(got<BSTR>(values_.Get(), &_UPValueUtil::GetValue, Bstr(key).get(),
                                      Bstr(L"g").get(), Bstr(L"other").get()))
            .str();
    };
    for (const wchar_t* text : {L"first", L" v é "}) {
        values_->SaveValue(Bstr(L" key ").get(), Bstr(L"G ").get(), Bstr(text).get());
    }
    restart();
    EXPECT_EQ(value(L"KEY"), L" v é ");
    EXPECT_EQ(value(L"none"), L"other");
    EXPECT_EQ(contents(section(L"KV").Get()), L"KEY@G= v é  ");
}

TEST_F(PreferencesFacades, DefaultPathsComeBackThroughReferences) {
    const auto object = asObject(values_);
    const Bstr reference(L"inv"), group(L"ex"), none(L"none"), path(L"C:\\x\\"), file(L"f");
    call(object.Get(), L"SaveDefaultPath", {arg(reference), arg(group), arg(path), arg(file)});
    restart();
    Variant read[3]{Variant(1L), Variant(2L), Variant(3L)};
    const auto load = [&](const Bstr& id) {
        const auto found = call(object.Get(), L"LoadDefaultPath",
                                {arg(id), arg(group), byReference(read[0]), byReference(read[1]),
                                 byReference(read[2])});
        return textOf(found.result) + L" " + textOf(read[0]) + L"|" + textOf(read[1]) + L"|" +
               textOf(read[2]);
    };
    EXPECT_EQ(load(none), L"False 1|2|3");
    EXPECT_EQ(load(reference), L"True C:\\x\\|f|");
}

ComPtr<ScriptObject> form(long left, long top, long width, long height, long state = 0) {
    return scriptObject({{L"Name", str(L"Main")},
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
        return yes(windows_.Get(), &_UPWindowUtil::LoadWindowPos, &object, Bstr(id).get(),
                   Bstr(L"g").get());
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

    const auto stubborn = form(7, 7, 7, 7, 1);
    stubborn->refused = {L"WindowState", L"Width", L"Height"};
    EXPECT_TRUE(load(stubborn));
    EXPECT_EQ(place(stubborn), L"300 450 7 7 1 ");
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
    save(scriptObject({{L"Name", str(L"x")}}));  // cannot be asked
    EXPECT_FALSE(load(window, L"x"));
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

// Notes how it is set up.
class FakePrinter final : public Object<FakePrinter, Unbuilt<_ISetPrinter>> {
  public:
    HRESULT STDMETHODCALLTYPE get_Copies(SHORT* value) override { return give(value, SHORT{4}); }
    HRESULT STDMETHODCALLTYPE get_PaperBin(SHORT* value) override { return give(value, SHORT{5}); }
    HRESULT STDMETHODCALLTYPE get_PaperSize(SHORT* value) override { return give(value, SHORT{6}); }
    HRESULT STDMETHODCALLTYPE get_DeviceName(BSTR* value) override { return give(value, L"own"); }
    HRESULT STDMETHODCALLTYPE get_Orientation(PrinterOrientation* value) override {
        return give(value, Landscape);
    }
    HRESULT STDMETHODCALLTYPE SetPrinter(BSTR name, VARIANT_BOOL* result) override {
        done += std::wstring(text(name)) + L":";
        return answer(result, [&] { return installed; });
    }
    HRESULT STDMETHODCALLTYPE SetProperties(SHORT copies, PrinterOrientation orientation, SHORT bin,
                                            SHORT size, VARIANT_BOOL* result) override {
        for (long value : {long{copies}, long{orientation}, long{bin}, long{size}}) {
            done += L" " + std::to_wstring(value);
        }
        return answer(result, [] { return true; });
    }
    std::wstring done;
    bool installed = true;
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
        VARIANT_BOOL wins = row.wins ? VARIANT_TRUE : VARIANT_FALSE;
        EXPECT_EQ(yes(printers_.Get(), &_UPPrinterUtil::UsePrintingPreferences, row.type,
                      Bstr(row.reference).get(), &target, &row.copies, &row.orientation, &wins),
                  row.found)
            << row.reference;
        EXPECT_EQ(printer->done, row.done) << row.reference;
    }
    EXPECT_FALSE(yes(printers_.Get(), &_UPPrinterUtil::UsePrintingPreferences, 2,
                     Bstr(L"invoice").get(), nullptr, nullptr, nullptr, nullptr));
}

// The paper codes of a printer that is gone mean nothing to another one.
TEST_F(PreferencesPrinters, AStoredPrinterThatIsGoneCountsAsNone) {
    const auto printer = make<FakePrinter>();
    printer->installed = false;
    _ISetPrinter* target = printer.Get();
    SHORT copies = 9;
    EXPECT_FALSE(yes(printers_.Get(), &_UPPrinterUtil::UsePrintingPreferences, 2,
                     Bstr(L"invoice").get(), &target, &copies, nullptr, nullptr));
    EXPECT_EQ(printer->done, L"HP: 9 2 5 6");
}

TEST_F(PreferencesPrinters, NobodyIsAskedWhereThereIsNoPrinter) {
    DWORD length = 0;
    if (GetDefaultPrinterW(nullptr, &length) || length > 0) GTEST_SKIP() << "there is a printer";
    _ISetPrinter* none = nullptr;
    EXPECT_FALSE(yes(printers_.Get(), &_UPPrinterUtil::UISetPrintingPreferences, 0, 1,
                     Bstr(L"new").get(), &none, nullptr, nullptr, nullptr));
    EXPECT_EQ(got<SHORT>(printers_.Get(), &_UPPrinterUtil::GetCopies, 1, Bstr(L"new").get()), 0);
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
            const Bstr reference(row.reference);
            EXPECT_EQ(
                got<SHORT>(printers_.Get(), &_UPPrinterUtil::GetCopies, row.type, reference.get()),
                started ? row.copies : 0);
            EXPECT_EQ(
                Bstr::owning(got<BSTR>(printers_.Get(), &_UPPrinterUtil::GetPrinterDescription,
                                       row.type, reference.get()))
                    .str(),
                started ? row.description : L"");
        }
    };
    expectAll(true);
    context_->stop();
    expectAll(false);
}

class PreferencesReports : public PreferencesFacades {
  protected:
    bool load(RPManager* reports, VARIANT* source = nullptr) {
        _UPManager* manager = context_->manager().Get();
        return yes(reports, &_RPManager::Load, &manager, source);
    }
    static void add(RPManager* reports, const wchar_t* view, const wchar_t* value) {
        const ComPtr<_RPItem> item = make<RPItem>();
        item->put_View(Bstr(view).get());
        item->put_Value(Bstr(value).get());
        item->put_Group(Bstr(L"g").get());
        EXPECT_EQ(reports->AddItem(item.Get()), S_OK);
    }
    static std::wstring value(RPManager* reports, const wchar_t* id) {
        const auto item =
            got<ComPtr<_RPItem>>(reports, &_RPManager::GetItem, Bstr(id).get(), Bstr(L"G").get());
        return item ? textProperty(item.Get(), &_RPItem::get_Value) : L"none";
    }
    static long count(RPManager* reports) {
        const auto items = got<ComPtr<_Collection>>(reports, &_RPManager::get_Items);
        return got<long>(items.Get(), &_Collection::get_Count);
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
    EXPECT_EQ(again->Clear(), S_OK);
    EXPECT_EQ(count(again.Get()), 0);
    context_->stop();
    EXPECT_EQ(readFile(folder_.path(L"a.up2.xml")).find("RP_Section"), std::string::npos);
}

TEST_F(PreferencesReports, MayHaveADocumentOfTheirOwn) {
    Variant own = str(folder_.path(L"own.xml"));
    const auto reports = make<RPManager>();
    EXPECT_TRUE(load(reports.Get(), &own));
    add(reports.Get(), L"V", L"1");
    context_->stop();
    EXPECT_NE(readFile(folder_.path(L"own.xml")).find("RP_Section"), std::string::npos);
    _UPManager* nothing = nullptr;
    EXPECT_FALSE(yes(reports.Get(), &_RPManager::Load, &nothing, nullptr));
}

}  // namespace
}  // namespace vela::test
