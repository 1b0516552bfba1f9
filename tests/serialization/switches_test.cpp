// Switches and their records.
#include "serialization/Switches.h"

#include "automation/enumerator.h"
#include "serialization/KeyValue.h"
#include "support/support.h"

namespace vela {
namespace {

constexpr HRESULT runtime(int number) { return static_cast<HRESULT>(0x800A0000u | number); }

class SerializationSwitches : public test::NoObjectsLeft {
  protected:
    HRESULT read(std::wstring_view text) { return switches_->FromString(Bstr(text).get()); }
    HRESULT add(ComPtr<_KeyValue> record) { return switches_->Add(record.GetAddressOf()); }
    ComPtr<_KeyValue> item(VARIANT index) {
        ComPtr<_KeyValue> found;
        EXPECT_EQ(switches_->get_Item(&index, &found), S_OK);
        return found;
    }
    ComPtr<_KeyValue> item(std::wstring_view key) { return item(Variant(key)); }
    // The keys in order, a bar after each.
    static std::wstring keys(IDispatch* switches) {
        std::wstring all;
        eachVariant(test::call(switches, L"NewEnum").result.punkVal, [&](const Variant& record) {
            all += textOf(getProperty(objectIn(record), L"Key")) + L"|";
            return true;
        });
        return all;
    }
    std::wstring keys() { return keys(switches_.Get()); }
    // The keys of what is found, or the error.
    std::wstring byRef(std::wstring_view pattern, const wchar_t* find = L"FindByRef") {
        const test::Called found = test::call(switches_.Get(), find, {Variant(pattern)});
        const HRESULT error = found.error & 0xFFFF;
        return error ? L"error " + std::to_wstring(error) : keys(objectIn(found.result));
    }

    ComPtr<_Switches> switches_ = make<Switches>();
};

TEST_F(SerializationSwitches, AreReadBehindThoseThatAreThere) {
    EXPECT_EQ(read(L"prog /user=ana // log "), S_OK);
    EXPECT_EQ(read(L"/x = 1"), S_OK);
    EXPECT_EQ(textOf(getProperty(item(L"LOG").Get(), L"LngValue")), L"3");
    EXPECT_EQ(read(L"/new/LOG/never"), runtime(457));
    EXPECT_EQ(keys(), L"user=ana||log|x = 1|new|");
}

TEST_F(SerializationSwitches, FindARecordByPositionKeyOrRecordOrNothingWithoutAnyError) {
    const ComPtr<_KeyValue> named = make<KeyValue>();
    named->put_Key(Bstr(L"B").get());
    Variant two(2L), record(named.Get());
    const Variant key(L"B"), noKey(L"3"), noRecord(switches_.Get());
    const Variant nothing(static_cast<IDispatch*>(nullptr));
    const std::pair<std::vector<VARIANT>, bool> table[] = {
        {{two, key, record, test::arg(1.5), test::byReference(two), test::byReference(record)},
         true},
        {{test::arg(0L), test::arg(4L), test::arg(-1L), test::arg(1e12), noKey, noRecord, nothing,
          VARIANT{}},
         false}};
    for (const auto& [indexes, isThere] : table) {
        for (VARIANT index : indexes) {
            SCOPED_TRACE(index.vt);
            EXPECT_EQ(read(L"/a/b/2"), S_OK);
            EXPECT_EQ(item(index), isThere ? item(L"b") : nullptr);
            EXPECT_EQ(switches_->Remove(&index), S_OK);
            EXPECT_EQ(keys(), isThere ? L"a|2|" : L"a|b|2|");
            switches_->Clear();
        }
    }
    EXPECT_EQ(add(nullptr), runtime(13));
}

TEST_F(SerializationSwitches, KeepTheKeyThatARecordWasAddedWith) {
    read(L"/a");
    const auto record = item(L"a");
    record->put_Key(Bstr(L"z").get());
    EXPECT_EQ(item(L"A"), record);
    EXPECT_FALSE(item(Variant(record.Get())));
    EXPECT_EQ(add(record), S_OK);
    EXPECT_EQ(keys(), L"z|z|");
    EXPECT_EQ(byRef(L"a"), L"error 457");
}

TEST_F(SerializationSwitches, SelectByPatternTheSameRecords) {
    read(L"/user=ana/User =rui/username/#");
    item(L"username")->put_Group(Bstr(L" Names ").get());
    const std::pair<const wchar_t*, const wchar_t*> table[] = {
        {L"user", L"user=ana|User =rui|"},
        {L"  u*[!a-q] ", L"user=ana|User =rui|"},
        {L"#", L""},
        {L"", L""},
        {L"[Z-a]", L"error 93"},  // both in upper case
    };
    for (const auto& [pattern, found] : table) EXPECT_EQ(byRef(pattern), found);
    EXPECT_EQ(byRef(L"n*", L"FindByGroup"), L"username|");
    EXPECT_EQ(byRef(L" ", L"FindByGroup"), L"user=ana|User =rui|#|");
}

// A record of a caller's own, which calls back when it is asked.
class CallersRecord final : public Object<CallersRecord, Unbuilt<_KeyValue>> {
  public:
    std::function<void()> whenAsked;
    HRESULT STDMETHODCALLTYPE get_Key(BSTR* result) override { return give(result, L"k"); }
    HRESULT STDMETHODCALLTYPE get_Ref(BSTR* result) override {
        return answer(result, [&] {
            whenAsked();
            return std::wstring_view(L"mine");
        });
    }
};

TEST_F(SerializationSwitches, SurviveARecordThatRemovesItself) {
    const auto mine = make<CallersRecord>();
    Variant first(1L);
    mine->whenAsked = [&] { switches_->Remove(&first); };
    EXPECT_EQ(add(mine), S_OK);
    EXPECT_EQ(byRef(L"m*"), L"k|");
    EXPECT_EQ(keys(), L"");
}

}  // namespace
}  // namespace vela
