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

// A record of a caller's own, which calls back.
class CallersRecord final : public Object<CallersRecord, Unbuilt<_KeyValue>> {
  public:
    ~CallersRecord() override { whenDying(); }
    HRESULT STDMETHODCALLTYPE get_Key(BSTR* result) override {
        return answer(result, [] { return std::wstring_view(L"k"); });
    }
    HRESULT STDMETHODCALLTYPE get_Ref(BSTR* result) override {
        return answer(result, [&] {
            whenAsked();
            return std::wstring_view(L"mine");
        });
    }
    std::function<void()> whenAsked = [] {};
    std::function<void()> whenDying = [] {};
};

class SerializationSwitches : public test::NoObjectsLeft {
  protected:
    void TearDown() override {
        switches_.Reset();
        NoObjectsLeft::TearDown();
    }
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
    static std::wstring keys(_Switches* switches) {
        std::wstring all;
        ComPtr<IUnknown> enumerator;
        EXPECT_EQ(switches->get_NewEnum(&enumerator), S_OK);
        eachVariant(enumerator.Get(), [&](const Variant& record) {
            all += textOf(getProperty(objectIn(record), L"Key")) + L"|";
            return true;
        });
        return all;
    }
    std::wstring keys() { return keys(switches_.Get()); }
    // The keys of what is found, or the error.
    std::wstring found(decltype(&_Switches::FindByRef) find, std::wstring_view pattern) {
        ComPtr<_Switches> result;
        const HRESULT outcome = (switches_.Get()->*find)(Bstr(pattern).get(), &result);
        return result ? keys(result.Get()) : L"error " + std::to_wstring(outcome & 0xFFFF);
    }
    std::wstring byRef(std::wstring_view pattern) { return found(&_Switches::FindByRef, pattern); }

    ComPtr<_Switches> switches_ = make<Switches>();
};

TEST_F(SerializationSwitches, RecordsHoldAnObject) {
    const ComPtr<_KeyValue> record = make<KeyValue>();
    const Variant object(switches_.Get());
    // JScript assigns objects by value, VBScript by reference.
    for (const WORD kind : {DISPATCH_PROPERTYPUT, DISPATCH_PROPERTYPUTREF}) {
        EXPECT_EQ(test::call(record.Get(), L"ObjValue", {object}, kind).outcome, S_OK);
        EXPECT_EQ(objectIn(getProperty(record.Get(), L"ObjValue")), objectIn(object));
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

TEST_F(SerializationSwitches, FindARecordByPositionKeyOrRecord) {
    const ComPtr<_KeyValue> named = make<KeyValue>();
    named->put_Key(Bstr(L"B").get());
    Variant two(2L), key(L"B"), record(named.Get()), unknown;
    const Variant currency = converted(two, VT_CY), decimal = converted(two, VT_DECIMAL);
    unknown.vt = VT_UNKNOWN, unknown.punkVal = ComPtr<IUnknown>(named).Detach();
    VARIANT number = arg(short{2}), numberReference{}, objectReference{};
    numberReference.vt = VT_BYREF | VT_I2, numberReference.piVal = &number.iVal;
    objectReference.vt = VT_BYREF | VT_DISPATCH, objectReference.ppdispVal = &record.pdispVal;
    for (const VARIANT& index :
         {VARIANT(two), VARIANT(key), VARIANT(record), VARIANT(unknown), VARIANT(currency),
          VARIANT(decimal), arg(1.5), number, numberReference, objectReference, byReference(two),
          byReference(key), byReference(record)}) {
        EXPECT_EQ(read(L"/a/b/2"), S_OK);
        EXPECT_EQ(item(index).Get(), item(L"b").Get()) << index.vt;
        remove(index);
        EXPECT_EQ(keys(), L"a|2|") << index.vt;
        switches_->Clear();
    }
}

TEST_F(SerializationSwitches, FindNothingWithoutAnyError) {
    read(L"/a");
    SetErrorInfo(0, nullptr);
    const Variant unnamed(make<KeyValue>().Get()), noRecord(switches_.Get()), one(L"1"), empty;
    Variant null, array, nothing;
    null.vt = VT_NULL;
    array.vt = VT_ARRAY | VT_VARIANT, array.parray = SafeArrayCreateVector(VT_VARIANT, 0, 1);
    nothing.vt = VT_DISPATCH;
    for (const VARIANT& index :
         {arg(0L), arg(2L), arg(-1L), arg(1e12), VARIANT(one), VARIANT(unnamed), VARIANT(noRecord),
          VARIANT(empty), VARIANT(null), VARIANT(array), VARIANT(nothing)}) {
        EXPECT_FALSE(item(index)) << index.vt;
        remove(index);
        ComPtr<IErrorInfo> left;
        EXPECT_EQ(GetErrorInfo(0, &left), S_FALSE) << index.vt;
    }
    ComPtr<_KeyValue> found;
    EXPECT_EQ(switches_->get_Item(nullptr, &found), S_OK);
    EXPECT_EQ(switches_->Remove(nullptr), S_OK);
    EXPECT_EQ(keys(), L"a|");
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
    EXPECT_EQ(keys(), L"|");
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
        {L"[", L"error 93"},
        {L"[Z-a]", L"error 93"},  // both in upper case
    };
    for (const auto& [pattern, keys] : table) EXPECT_EQ(byRef(pattern), keys);
    EXPECT_EQ(found(&_Switches::FindByGroup, L"n*"), L"username|");
    EXPECT_EQ(found(&_Switches::FindByGroup, L" "), L"user=ana|User =rui|#|");
    switches_->Clear();
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

TEST_F(SerializationSwitches, AreClearedOneByOne) {
    std::wstring left;
    {
        const auto mine = make<CallersRecord>();
        mine->whenDying = [&] { left = keys(); };
        EXPECT_EQ(add(mine), S_OK);
    }
    read(L"/a/b");
    EXPECT_EQ(switches_->Clear(), S_OK);
    EXPECT_EQ(left, L"a|b|");
    EXPECT_EQ(keys(), L"");
}

TEST_F(SerializationSwitches, GiveNoWrongCount) {
    std::wstring text;
    for (int i = 1; i <= 32'768; ++i) text += L"/" + std::to_wstring(i);
    EXPECT_EQ(read(text), S_OK);
    short count = 1;
    EXPECT_EQ(switches_->get_Count(&count), runtime(6));
    remove(arg(32'768L));
    EXPECT_EQ(switches_->get_Count(&count), S_OK);
    EXPECT_EQ(count, 32'767);
}

}  // namespace
}  // namespace vela
