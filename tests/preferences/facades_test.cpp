// Default paths and windows; printers and report parameters are in clients/preferences.js.
#include "automation/late_objects.h"
#include "preferences/RPManager.h"
#include "preferences/UPUtil.h"
#include "preferences/preferences_support.h"

namespace vela::test {
namespace {

class PreferencesFacades : public NoObjectsLeft {
  protected:
    void SetUp() override { context_->start(L"sales", L"ana"); }
    // As a program does that is started again.
    void restart() {
        context_->stop();
        context_ = contextIn(folder_);
        context_->start(L"sales", L"ana");
    }

    TemporaryFolder folder_;
    std::shared_ptr<UPContext> context_ = contextIn(folder_);
};

TEST_F(PreferencesFacades, DefaultPathsComeBackThroughReferences) {
    context_->saveDefaultPath(L"inv", L"ex", {L"C:\\x\\", L"f", L""});
    restart();
    const auto values = make<UPValueUtil>();
    values->setContext(context_);
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

TEST_F(PreferencesFacades, AnswerFalseWithoutAPrinterOrAManager) {
    _UPManager* nothing = nullptr;
    EXPECT_FALSE(context_->usePrintingPreferences(2, L"", nullptr, {}));
    for (_UPManager** manager : {&nothing, static_cast<_UPManager**>(nullptr)}) {
        EXPECT_FALSE(yes(make<RPManager>().Get(), &_RPManager::Load, manager, nullptr));
    }
}

TEST_F(PreferencesFacades, ReportParametersGoToTheStoreThatIsHandedOver) {
    std::wstring log;
    const auto storeNamed = [&](std::wstring name) {
        const auto store = adopted(new LateObject);
        store->names = {L"DataSource", L"Load", L"Save"};
        store->invoked = [&log, name](DISPID id, WORD, DISPPARAMS& call, VARIANT*, EXCEPINFO*) {
            if (id > 0) log += name + (id == 1 ? L" loads " : L" saves ");
            if (id > 0) log += textOf(call.rgvarg[2]) + L" ";
            return S_OK;
        };
        return store;
    };
    const auto first = storeNamed(L"first"), second = storeNamed(L"second"),
               other = adopted(new LateObject);
    const auto parameters = make<RPManager>();
    const auto load = [&](Variant source) {
        ComPtr<_UPManager> manager = context_->manager();
        return yes(parameters.Get(), &_RPManager::Load, manager.GetAddressOf(), &source);
    };
    Variant null;
    null.vt = VT_NULL;
    for (const Variant& unusable :
         {null, arrayOf({}), Variant(other.Get()), Variant(static_cast<IDispatch*>(nullptr))}) {
        EXPECT_FALSE(load(unusable)) << unusable.vt;
        EXPECT_FALSE(context_->manager()->section(L"RP"));
    }
    EXPECT_TRUE(load(Variant(first.Get())));
    EXPECT_EQ(parameters->AddItem(make<RPItem>().Get()), S_OK);
    EXPECT_TRUE(load(Variant(first.Get())));
    EXPECT_TRUE(load(Variant(second.Get())));
    EXPECT_EQ(log, L"first loads SALES first saves SALES first loads SALES second loads SALES ");
    EXPECT_FALSE(load(null));
    EXPECT_EQ(parameters->AddItem(make<RPItem>().Get()), S_OK);
    context_->stop();
    EXPECT_TRUE(log.ends_with(L"second saves SALES ")) << log;
}

// A caller's window, with lengths in twips.
class PreferencesWindows : public PreferencesFacades {
  protected:
    PreferencesWindows() {
        window_->names = {L"Left",        L"Top",     L"Width", L"Height",
                          L"WindowState", L"Visible", L"Name",  L"hWnd"};
        window_->invoked = [this](DISPID id, WORD flags, DISPPARAMS& call, VARIANT* result,
                                  EXCEPINFO*) {
            const auto at = static_cast<std::size_t>(id);
            if (flags & DISPATCH_PROPERTYPUT) {
                values_[at] = converted(call.rgvarg[0], VT_I4).lVal;
                log_ += window_->names[at] + (L"=" + std::to_wstring(values_[at]) + L" ");
                return S_OK;
            }
            if (onRead_) onRead_();
            if (at == 4 && state_.vt != VT_EMPTY) *result = Variant(state_).release();
            else if (at < values_.size()) *result = Variant(values_[at]).release();
            else if (at == 7) *result = Variant(handle_).release();
            else *result = Variant(L"Main").release();
            return S_OK;
        };
    }
    // Saves the window at such a place, in the order of the names.
    void save(const std::vector<long>& place, const wchar_t* id = L"") {
        values_ = place;
        context_->saveWindowPos(window_.Get(), id, L"g");
    }
    // What loading sets.
    std::wstring loaded(const wchar_t* id = L"") {
        log_.clear();
        const bool found = context_->loadWindowPos(window_.Get(), id, L"g");
        return (found ? L"" : L"none ") + log_;
    }

    const ComPtr<LateObject> window_ = adopted(new LateObject);
    std::vector<long> values_;
    Variant state_;     // what WindowState says instead of its value, unless Empty
    long handle_ = 0;   // what hWnd says
    std::wstring log_;  // what was set, in order
    std::function<void()> onRead_;
};

TEST_F(PreferencesWindows, ComeBackUnderTheirNameOrId) {
    save({300, 450, 3000, 1500, 0, true});
    save({600, 750, 3000, 1500, 2, true}, L"other");
    restart();
    EXPECT_EQ(loaded(L"none"), L"none ");
    EXPECT_EQ(loaded(), L"WindowState=0 Left=300 Top=450 Width=3000 Height=1500 ");
    EXPECT_EQ(loaded(L"OTHER"), L"WindowState=2 ");  // and nobody knows its place
    window_->names.resize(2);                        // and has no other members
    EXPECT_EQ(loaded(L"main"), L"Left=300 Top=450 ");
}

TEST_F(PreferencesWindows, OnlyAVisibleAndNormalWindowHasAPlace) {
    save({300, 450, 3000, 1500, 0, true});
    save({1, 1, 1, 1, 1, false});
    save({-60, -60, 99999, 99999, 2, true});
    // A window can be moved only while it is normal.
    EXPECT_EQ(loaded(), L"WindowState=0 Left=300 Top=450 Width=3000 Height=1500 WindowState=2 ");
}

TEST_F(PreferencesWindows, CountStatesTheirOwnWay) {
    const std::wstring place = L"Left=300 Top=450 Width=3000 Height=1500 ";
    Variant null;
    null.vt = VT_NULL;
    const struct {
        const char* what;
        Variant state;
        std::wstring expected;
    } table[] = {
        {"another number", Variant(-4143L), place},
        {"another small number", Variant(3L), place},
        {"as text", str(L"2"),
         L"WindowState=0 Left=600 Top=750 Width=3000 Height=1500 WindowState=2 "},
        {"no number", str(L"normal"), L"WindowState=0 " + place},
        {"nothing", null, L"WindowState=0 " + place},
    };
    for (const auto& row : table) {
        state_ = Variant(0L);
        save({600, 750, 3000, 1500, 0, true});
        state_ = row.state;
        save({300, 450, 3000, 1500, 0, true});
        EXPECT_EQ(loaded(), row.expected) << row.what;
    }
    window_->names[4] = L"Other";
    save({600, 450, 3000, 1500, 9, true});
    EXPECT_EQ(loaded(), L"Left=600 Top=450 Width=3000 Height=1500 ");
}

TEST_F(PreferencesWindows, FirstSavedWhileMinimisedAreRestoredToWhereTheyWouldBe) {
    const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 100, 50, 300, 200,
                                        nullptr, nullptr, nullptr, nullptr);
    for (const int show : {SW_SHOWMINIMIZED, SW_SHOWMAXIMIZED}) {
        ShowWindow(window, show);
        const long state = show == SW_SHOWMINIMIZED ? 1 : 2;
        const std::wstring id = std::to_wstring(state);
        handle_ = static_cast<long>(reinterpret_cast<INT_PTR>(window));
        save({0, 0, 2400, 405, state, true}, id.c_str());
        handle_ = 0;  // the place is known now
        save({0, 0, 2400, 405, state, true}, id.c_str());
        EXPECT_EQ(loaded(id.c_str()),
                  L"WindowState=0 Left=1500 Top=750 Width=4500 Height=3000 "
                  L"WindowState=" +
                      id + L" ");
    }
    DestroyWindow(window);
    handle_ = static_cast<long>(reinterpret_cast<INT_PTR>(window));  // of what is gone
    save({0, 0, 2400, 405, 1, true}, L"gone");
    EXPECT_EQ(loaded(L"gone"), L"WindowState=1 ");
    save({300, 450, 3000, 1500, 0, true}, L"gone");
    EXPECT_EQ(loaded(L"gone"), L"WindowState=0 Left=300 Top=450 Width=3000 Height=1500 ");
}

TEST_F(PreferencesWindows, AreBroughtIntoView) {
    addItem(context_->manager()->section(L"UI").Get(), L"MAIN", L"G",
            {{L"ScreenWxH", L"1x1"}, {L"Left", L"-99999"}, {L"Width", L"9999999"}});
    values_.resize(5);
    EXPECT_NE(loaded(), L"none ");
    const long left = values_[0], width = values_[2];
    EXPECT_GE(left, 0);
    EXPECT_LE(left + width, GetSystemMetrics(SM_CXSCREEN) * 15 + 15);
    EXPECT_GT(width, 1);
}

TEST_F(PreferencesWindows, MayStopThePreferencesThatReadThem) {
    onRead_ = [&] { context_->stop(); };
    save({1, 1, 1, 1, 0, true});
    EXPECT_FALSE(context_->manager()->loaded());
}

}  // namespace
}  // namespace vela::test
