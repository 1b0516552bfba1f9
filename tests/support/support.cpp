#include "support/support.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace vela::test {

Called call(IDispatch* object, const wchar_t* name, std::vector<VARIANT> arguments, WORD flags) {
    Called called;
    DISPID id = DISPID_UNKNOWN;
    auto* writable = const_cast<wchar_t*>(name);
    called.outcome = object->GetIDsOfNames(IID_NULL, &writable, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(called.outcome)) return called;
    std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
        parameters.rgdispidNamedArgs = &put;
        parameters.cNamedArgs = 1;
    }
    EXCEPINFO exception{};
    called.outcome = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                    &called.result, &exception, &called.failedArgument);
    called.error = exception.scode;
    called.source = Bstr::owning(exception.bstrSource).str();
    called.description = Bstr::owning(exception.bstrDescription).str();
    return called;
}

namespace {

template <class Set>
VARIANT made(VARTYPE type, Set set) {
    VARIANT value{};
    value.vt = type;
    set(value);
    return value;
}

}  // namespace

VARIANT arg(long value) {
    return made(VT_I4, [&](VARIANT& v) { v.lVal = value; });
}
VARIANT arg(short value) {
    return made(VT_I2, [&](VARIANT& v) { v.iVal = value; });
}
VARIANT arg(bool value) {
    return made(VT_BOOL, [&](VARIANT& v) { v.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE; });
}
VARIANT arg(double value) {
    return made(VT_R8, [&](VARIANT& v) { v.dblVal = value; });
}
VARIANT arg(const Bstr& value) {
    return made(VT_BSTR, [&](VARIANT& v) { v.bstrVal = value.get(); });
}
VARIANT arg(IDispatch* value) {
    return made(VT_DISPATCH, [&](VARIANT& v) { v.pdispVal = value; });
}
VARIANT byReference(VARIANT& value) {
    return made(VT_BYREF | VT_VARIANT, [&](VARIANT& v) { v.pvarVal = &value; });
}

ComPtr<IDispatch> create(const wchar_t* progId) {
    CLSID id;
    ComPtr<IDispatch> object;
    EXPECT_EQ(CLSIDFromProgID(progId, &id), S_OK) << std::filesystem::path(progId);
    EXPECT_EQ(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)), S_OK);
    return object;
}

TemporaryFolder::TemporaryFolder() {
    static std::atomic<int> last = 0;
    folder_ = (std::filesystem::temp_directory_path() /
               (L"vela-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++last)))
                  .wstring();
    std::filesystem::create_directories(folder_);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

std::string readFile(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const std::wstring& path, std::string_view content) {
    std::ofstream file(std::filesystem::path(path), std::ios::binary);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
}

}  // namespace vela::test
