// The register of events: what is found by key, type and source, and what items may do to it.
#include "automation/enumerator.h"
#include "automation/late_bound.h"
#include "frame/Collection.h"
#include "notifications/EventHistory.h"

namespace vela {
namespace {

class Item final : public Object<Item, _IEventHistoryItem> {
  public:
    Item(const wchar_t* itsKey, LONG itsType = 0, LONG itsSource = 0)
        : key(itsKey), type(itsType), source(itsSource) {}
    HRESULT STDMETHODCALLTYPE get_EventType(LONG* result) override {
        return type < 0 ? E_FAIL : give(result, type);
    }
    HRESULT STDMETHODCALLTYPE get_EventSource(LONG* result) override {
        return give(result, source);
    }
    HRESULT STDMETHODCALLTYPE get_EventDate(DATE* result) override { return give(result, DATE{}); }
    HRESULT STDMETHODCALLTYPE get_EventKey(BSTR* result) override { return give(result, key); }

    std::wstring key;
    LONG type;
    LONG source;
};

class NotificationsEventHistory : public test::NoObjectsLeft {
  protected:
    void TearDown() override {
        history_.Reset();
        NoObjectsLeft::TearDown();
    }
    ComPtr<Item> add(const wchar_t* key, LONG type = 0, LONG source = 0) {
        auto item = make<Item>(key, type, source);
        _IEventHistoryItem* added = item.Get();
        EXPECT_EQ(history_->Add(&added), S_OK);
        return item;
    }
    std::wstring keys() { return keysOf(history_.Get()); }
    std::wstring keysOf(IDispatch* list) {
        std::wstring keys;
        const test::Called enumerator = test::call(list, L"NewEnum");
        eachVariant(enumerator.result.punkVal, [&](const Variant& item) {
            return keys += textOf(getProperty(objectIn(item), L"EventKey")), true;
        });
        return keys;
    }
    IUnknown* find(const wchar_t* key) {
        const auto probe = make<Item>(key);
        _IEventHistoryItem* sought = probe.Get();
        ComPtr<_IEventHistoryItem> found;
        EXPECT_EQ(history_->FindItem(&sought, &found), S_OK);
        return found.Get();
    }
    std::wstring findAll(LONG type, LONG source = -1) {
        ComPtr<_Collection> found;
        EXPECT_EQ(history_->FindItems(type, source, &found), S_OK);
        return keysOf(found.Get());
    }

    ComPtr<_EventHistory> history_ = make<EventHistory>();
};

TEST_F(NotificationsEventHistory, KeepsTheFirstOfEachKey) {
    const auto first = add(L"a", 1);
    const auto twin = add(L"A", 2);
    add(L"b");
    EXPECT_EQ(keys(), L"ab");
    EXPECT_EQ(find(L"a"), static_cast<_IEventHistoryItem*>(first.Get()));
    EXPECT_EQ(find(L"c"), nullptr);
    _IEventHistoryItem* sameKey = twin.Get();
    EXPECT_EQ(history_->Remove(&sameKey), S_OK);
    EXPECT_EQ(keys(), L"b");
    EXPECT_EQ(history_->RemoveAll(), S_OK);
    EXPECT_EQ(history_->RemoveAll(), S_OK);
    add(L"c");
    EXPECT_EQ(keys(), L"c");
}

TEST_F(NotificationsEventHistory, MissesAnItemWhoseKeyHasChanged) {
    const auto item = add(L"old");
    item->key = L"new";
    _IEventHistoryItem* changed = item.Get();
    EXPECT_EQ(find(L"new"), nullptr);
    EXPECT_EQ(history_->Remove(&changed), S_OK);
    EXPECT_EQ(find(L"old"), static_cast<_IEventHistoryItem*>(item.Get()));
}

TEST_F(NotificationsEventHistory, FindsByTypeAndSource) {
    add(L"a", 1, 10);
    add(L"b", 2, 10);
    add(L"c", 1, 20);
    add(L"d", -1);  // raises when asked for its type
    EXPECT_EQ(findAll(1), L"ac");
    EXPECT_EQ(findAll(1, 10), L"a");
    EXPECT_EQ(findAll(3), L"");
    ComPtr<_Collection> found;
    EXPECT_EQ(history_->FindItems(1, -1, &found), S_OK);
    const Bstr key(L"C");
    EXPECT_EQ(test::call(found.Get(), L"Item", {test::arg(key)}).outcome, S_OK);
}

TEST_F(NotificationsEventHistory, NeverFails) {
    _IEventHistoryItem* none = nullptr;
    ComPtr<_IEventHistoryItem> found;
    for (_IEventHistoryItem** item : {&none, static_cast<_IEventHistoryItem**>(nullptr)}) {
        EXPECT_EQ(history_->Add(item), S_OK);
        EXPECT_EQ(history_->Remove(item), S_OK);
        EXPECT_EQ(history_->FindItem(item, &found), S_OK);
    }
    const auto noItem = adopted(new test::LateObject);
    EXPECT_EQ(test::call(history_.Get(), L"Add", {test::arg(noItem.Get())}).outcome, S_OK);
    EXPECT_EQ(keys(), L"");
}

}  // namespace
}  // namespace vela
