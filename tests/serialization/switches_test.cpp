// Switches and their records.
#include "serialization/Switches.h"

#include <functional>

#include "automation/enumerator.h"
#include "serialization/KeyValue.h"
#include "support/support.h"

namespace vela {
namespace {

using test::arg;
using test::byReference;

constexpr HRESULT runtime(int number) { return static_cast<HRESULT>(0x800A0000u | number); }

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
    void remove(VARIANT index) { EXPECT_EQ(switches_->Remove(&index), S_OK); }
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

TEST_F(SerializationSwitches, RecordsHoldAnObject) {
    const ComPtr<_KeyValue> record = make<KeyValue>();
    // JScript assigns objects by value, VBScript by reference.
    for (const WORD kind : {DISPATCH_PROPERTYPUT, DISPATCH_PROPERTYPUTREF}) {
        test::call(record.Get(), L"ObjValue", {arg(switches_.Get())}, kind);
        EXPECT_EQ(objectIn(getProperty(record.Get(), L"ObjValue")), switches_.Get());
        EXPECT_EQ(record->putref_ObjValue(nullptr), S_OK);
        EXPECT_FALSE(objectIn(getProperty(record.Get(), L"ObjValue")));
    }
}

TEST_F(SerializationSwitches, AreReadBehindThoseThatAreThere) {
    EXPECT_EQ(read(L"prog /user=ana // log "), S_OK);
    EXPECT_EQ(switches_->FromString(nullptr), S_OK);
    EXPECT_EQ(read(L"/x = 1"), S_OK);
    const auto last = item(arg(4L));
    EXPECT_EQ(textProperty(last.Get(), &_KeyValue::get_Ref), L"x ");
    EXPECT_EQ(textProperty(last.Get(), &_KeyValue::get_StrValue), L" 1");
    EXPECT_EQ(textOf(getProperty(item(L"LOG").Get(), L"LngValue")), L"3");
    EXPECT_EQ(read(L"/new/LOG/never"), runtime(457));
    EXPECT_EQ(keys(), L"user=ana||log|x = 1|new|");
}

TEST_F(SerializationSwitches, FindARecordByPositionKeyOrRecordOrNothingWithoutAnyError) {
    const ComPtr<_KeyValue> named = make<KeyValue>();
    named->put_Key(Bstr(L"B").get());
    Variant two(2L), key(L"B"), record(named.Get());
    const Variant currency = converted(two, VT_CY), noKey(L"3"), noRecord(switches_.Get());
    const Variant unnamed(make<KeyValue>().Get()), nothing(static_cast<IDispatch*>(nullptr));
    Variant unknown = objectVariant(named.Get()), null, array;
    VARIANT typed{};
    unknown.vt = VT_UNKNOWN;
    null.vt = VT_NULL;
    array.vt = VT_ARRAY | VT_VARIANT, array.parray = SafeArrayCreateVector(VT_VARIANT, 0, 1);
    typed.vt = VT_BYREF | VT_DISPATCH, typed.ppdispVal = &record.pdispVal;
    const std::pair<std::vector<VARIANT>, bool> table[] = {
        {{two, key, record, unknown, currency, arg(1.5), typed, byReference(two), byReference(key),
          byReference(record)},
         true},
        {{arg(0L), arg(4L), arg(-1L), arg(1e12), noKey, unnamed, noRecord, VARIANT{}, null, array,
          nothing},
         false}};
    for (const auto& [indexes, isThere] : table) {
        for (const VARIANT& index : indexes) {
            SCOPED_TRACE(index.vt);
            EXPECT_EQ(read(L"/a/b/2"), S_OK);
            EXPECT_EQ(item(index), isThere ? item(L"b") : nullptr);
            remove(index);
            EXPECT_EQ(keys(), isThere ? L"a|2|" : L"a|b|2|");
            ComPtr<IErrorInfo> left;
            EXPECT_EQ(GetErrorInfo(0, &left), S_FALSE);
            switches_->Clear();
        }
    }
    ComPtr<_KeyValue> found;
    EXPECT_EQ(switches_->get_Item(nullptr, &found), S_OK);
    EXPECT_EQ(switches_->Remove(nullptr), S_OK);
}

TEST_F(SerializationSwitches, KeepTheKeyThatARecordWasAddedWith) {
    read(L"/a");
    const auto record = item(L"a");
    record->put_Key(Bstr(L"z").get());
    EXPECT_EQ(item(L"A").Get(), record.Get());
    EXPECT_FALSE(item(Variant(record.Get())));
    EXPECT_EQ(add(record), S_OK);
    EXPECT_EQ(keys(), L"z|z|");
    EXPECT_EQ(byRef(L"a"), L"error 457");
}

TEST_F(SerializationSwitches, TakeRecordsOnly) {
    EXPECT_EQ(switches_->Add(nullptr), E_POINTER);
    EXPECT_EQ(add(nullptr), runtime(13));
    EXPECT_EQ(add(make<KeyValue>()), S_OK);
    EXPECT_EQ(add(make<KeyValue>()), runtime(457));  // the empty key is one like any other
}

TEST_F(SerializationSwitches, SelectByPatternTheSameRecords) {
    read(L"/user=ana/User =rui/username/#");
    item(L"username")->put_Group(Bstr(L" Names ").get());
    const struct {
        const wchar_t *pattern, *keys;
    } table[] = {
        {L"user", L"user=ana|User =rui|"},
        {L"  u*[!a-q] ", L"user=ana|User =rui|"},
        {L"#", L""},
        {L"", L""},
        {L"[Z-a]", L"error 93"},  // both in upper case
    };
    for (const auto& [pattern, keys] : table) EXPECT_EQ(byRef(pattern), keys);
    EXPECT_EQ(byRef(L"n*", L"FindByGroup"), L"username|");
    EXPECT_EQ(byRef(L" ", L"FindByGroup"), L"user=ana|User =rui|#|");
    switches_->Clear();
    EXPECT_EQ(keys(), L"");
    EXPECT_EQ(byRef(L"["), L"error 93");
}

TEST_F(SerializationSwitches, SurviveRecordsThatCallBack) {
    const auto mine = make<CallersRecord>();
    mine->whenAsked = [&] { remove(arg(1L)); };
    EXPECT_EQ(add(mine), S_OK);
    EXPECT_EQ(byRef(L"m*"), L"k|");
    EXPECT_EQ(keys(), L"");
    mine->whenAsked = [] { raise(RuntimeError::Overflow); };
    EXPECT_EQ(add(mine), S_OK);
    EXPECT_EQ(byRef(L"m*"), L"error 6");
}

}  // namespace
}  // namespace vela
