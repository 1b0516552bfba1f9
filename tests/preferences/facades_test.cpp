// The facades; printers and report parameters are also in clients/preferences.js.
#include "automation/late_bound.h"
#include "preferences/RPManager.h"
#include "preferences/UPSections.h"
#include "preferences/UPUtil.h"
#include "preferences/preferences_support.h"

#include <winspool.h>

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
    }
    template <class Facade>
    ComPtr<Facade> facade() {
        const auto made = make<Facade>();
        made->setContext(context_);
        return made;
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
};

TEST_F(PreferencesFacades, DefaultPathsComeBackThroughReferences) {
    const auto values = facade<UPValueUtil>();
    callWith(values.Get(), L"SaveDefaultPath",
             {str(L"inv"), str(L"ex"), str(L"C:\\x\\"), str(L"f")});
    restart();
    Variant path(1L), file(2L), extension(3L);
    const auto load = [&](const wchar_t* id) {
        const Variant reference(id), group(L"ex");
        const auto found =
            call(values.Get(), L"LoadDefaultPath",
                 {reference, group, byReference(path), byReference(file), byReference(extension)});
        return textOf(found.result) + L" " + textOf(path) + L"|" + textOf(file) + L"|" +
               textOf(extension);
    };
    EXPECT_EQ(load(L"none"), L"False 1|2|3");
    EXPECT_EQ(load(L"inv"), L"True C:\\x\\|f|");
}

TEST_F(PreferencesFacades, NobodyIsAskedWhereThereIsNoPrinter) {
    DWORD length = 0;
    if (GetDefaultPrinterW(nullptr, &length) || length > 0) GTEST_SKIP() << "there is a printer";
    _ISetPrinter* none = nullptr;
    EXPECT_FALSE(yes(facade<UPPrinterUtil>().Get(), &_UPPrinterUtil::UISetPrintingPreferences, 0, 1,
                     Bstr(L"new").get(), &none, nullptr, nullptr, nullptr));
    EXPECT_EQ(contents(section(L"PP").Get()), L"");
}

TEST_F(PreferencesFacades, AnswerFalseWithoutAPrinterOrAManager) {
    _UPManager* nothing = nullptr;
    EXPECT_FALSE(yes(facade<UPPrinterUtil>().Get(), &_UPPrinterUtil::UsePrintingPreferences, 2,
                     nullptr, nullptr, nullptr, nullptr, nullptr));
    for (_UPManager** manager : {&nothing, static_cast<_UPManager**>(nullptr)}) {
        EXPECT_FALSE(yes(make<RPManager>().Get(), &_RPManager::Load, manager, nullptr));
    }
}

// A caller's window; lengths in twips.
struct Window {
    std::vector<long> values;       // Left, Top, Width, Height, WindowState, Visible
    std::wstring log;               // what was set, in order
    std::wstring refused;           // names of properties that cannot be set
    std::function<HRESULT()> read;  // run when a property is read
    ComPtr<LateObject> object = adopted(new LateObject);

    Window() {
        object->names = {L"Left", L"Top", L"Width", L"Height", L"WindowState", L"Visible", L"Name"};
        object->invoked = [this](DISPID id, WORD flags, DISPPARAMS& call, VARIANT* result,
                                 EXCEPINFO*) {
            const auto at = static_cast<std::size_t>(id);
            const std::wstring name = object->names[at];
            if (flags & DISPATCH_PROPERTYPUT) {
                if (refused.find(name) != refused.npos) return DISP_E_MEMBERNOTFOUND;
                values[at] = converted(call.rgvarg[0], VT_I4).lVal;
                log += name + L"=" + std::to_wstring(values[at]) + L" ";
                return S_OK;
            }
            if (read && FAILED(read())) return E_FAIL;
            if (at < values.size()) *result = Variant(values[at]).release();
            else *result = Variant(L"Main").release();
            return S_OK;
        };
    }
};

class PreferencesWindows : public PreferencesFacades {
  protected:
    void save(const std::vector<long>& place, const wchar_t* id = L"", bool visible = true) {
        IDispatch* object = window_.object.Get();
        window_.values = place;
        window_.values.push_back(visible);
        EXPECT_EQ(facade<UPWindowUtil>()->SaveWindowPos(&object, Bstr(id).get(), Bstr(L"g").get()),
                  S_OK);
    }
    // What loading sets.
    std::wstring loaded(const wchar_t* id = L"") {
        IDispatch* object = window_.object.Get();
        window_.log.clear();
        const bool found = yes(facade<UPWindowUtil>().Get(), &_UPWindowUtil::LoadWindowPos, &object,
                               Bstr(id).get(), Bstr(L"g").get());
        return (found ? L"" : L"none ") + window_.log;
    }
    Window window_;
};

TEST_F(PreferencesWindows, ComeBackUnderTheirNameOrId) {
    save({300, 450, 3000, 1500, 0});
    save({600, 750, 3000, 1500, 2}, L"other");
    restart();
    EXPECT_EQ(loaded(L"none"), L"none ");
    EXPECT_EQ(loaded(), L"WindowState=0 Left=300 Top=450 Width=3000 Height=1500 ");
    // A window can be moved only while it is normal.
    EXPECT_EQ(loaded(L"OTHER"),
              L"WindowState=0 Left=600 Top=750 Width=3000 Height=1500 WindowState=2 ");
    window_.refused = L"WindowState Width Height";
    EXPECT_EQ(loaded(), L"Left=300 Top=450 ");
}

TEST_F(PreferencesWindows, OnlyAVisibleAndNormalWindowHasAPlace) {
    save({300, 450, 3000, 1500, 0});
    save({1, 1, 1, 1, 1}, L"", false);
    EXPECT_EQ(loaded(), L"WindowState=0 Left=300 Top=450 Width=3000 Height=1500 ");
    save({-60, -60, 99999, 99999, 2});
    EXPECT_EQ(loaded(), L"WindowState=0 Left=300 Top=450 Width=3000 Height=1500 WindowState=2 ");
    window_.read = [] { return E_FAIL; };  // cannot be asked
    save({1, 1, 1, 1, 0}, L"x");
    EXPECT_EQ(loaded(L"x"), L"none ");
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
        window_.values = {0, 0, 0, 0, 0};
        EXPECT_NE(loaded(), L"none ");
        const long left = window_.values[0], width = window_.values[2];
        EXPECT_GE(left, 0);
        EXPECT_LE(left + width, GetSystemMetrics(SM_CXSCREEN) * 15 + 15) << left;
        EXPECT_GT(width, 1);
    }
}

TEST_F(PreferencesWindows, MayStopThePreferencesThatReadThem) {
    window_.read = [&] {
        context_->stop();
        return S_OK;
    };
    save({1, 1, 1, 1, 0});
    EXPECT_FALSE(context_->manager()->loaded());
}

}  // namespace
}  // namespace vela::test
