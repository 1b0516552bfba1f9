// What the tests share: late-bound calls, temporary folders, and a check that no object is left.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "contract.h"

namespace vela::test {

// What a late-bound call gave: `outcome` as Invoke returned it, the error as the caller sees it.
struct Called {
    HRESULT outcome = S_OK;
    Variant result;
    HRESULT error = S_OK;  // EXCEPINFO's scode when outcome is DISP_E_EXCEPTION
    std::wstring source;
    std::wstring description;
    UINT failedArgument = 99;
};

// Calls by name as a script engine does; `arguments` in their natural order. DISPATCH_PROPERTYPUT
// and PUTREF pass the last argument as the value.
Called call(IDispatch* object, const wchar_t* name, std::vector<VARIANT> arguments = {},
            WORD flags = DISPATCH_METHOD | DISPATCH_PROPERTYGET);

// Shorthands for arguments; the variants own nothing, so keep what they point at alive.
VARIANT arg(long value);
VARIANT arg(short value);
VARIANT arg(bool value);
VARIANT arg(double value);
VARIANT arg(const Bstr& value);
VARIANT arg(IDispatch* value);
VARIANT byReference(VARIANT& value);

// A new object of a registered class, by its programmatic name.
ComPtr<IDispatch> create(const wchar_t* progId);
template <class Interface>
ComPtr<Interface> createAs(const wchar_t* progId) {
    ComPtr<Interface> object;
    const ComPtr<IDispatch> made = create(progId);
    if (made) made.As(&object);
    EXPECT_TRUE(object);
    return object;
}

// What a member gives through its last parameter.
template <class Result, class Object, class Member, class... Arguments>
Result got(Object* object, Member member, Arguments... arguments) {
    Result result{};
    EXPECT_EQ((object->*member)(arguments..., &result), S_OK);
    return result;
}
template <class Object, class Member, class... Arguments>
bool yes(Object* object, Member member, Arguments... arguments) {
    return isTrue(got<VARIANT_BOOL>(object, member, arguments...));
}

// A folder of its own for one test, removed with its content at the end.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    std::wstring path(const std::wstring& name) const { return folder_ + L"\\" + name; }

  private:
    std::wstring folder_;
};

std::string readFile(const std::wstring& path);  // empty when there is none
void writeFile(const std::wstring& path, std::string_view content);

// Fails a test that leaves objects of this program's copy of the library behind, once the members
// of its fixture are gone.
class NoObjectsLeft : public ::testing::Test {
  protected:
    ~NoObjectsLeft() override {
        SetErrorInfo(0, nullptr);
        EXPECT_EQ(liveObjects, before_);
    }

  private:
    const LONG before_ = liveObjects;
};

}  // namespace vela::test
