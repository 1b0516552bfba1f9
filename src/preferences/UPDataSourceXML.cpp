#include "preferences/UPDataSourceXML.h"

#include "preferences/xml_up.h"

namespace vela {

HRESULT UPDataSourceXML::get_DataSource(VARIANT* result) {
    return answer(result, [&] { return Variant(name_); });
}

HRESULT UPDataSourceXML::put_DataSource(VARIANT value) {
    return guard([&] { setName(textOf(value)); });
}

HRESULT UPDataSourceXML::putref_DataSource(VARIANT) { return S_OK; }

HRESULT UPDataSourceXML::Load(BSTR applicationId, BSTR userId, _IUPSection** section,
                              VARIANT_BOOL* result) {
    return answer(result, [&] {
        if (name_.empty() || !section || !*section) return false;
        return XMLup().loadFromFile(path_, text(applicationId), text(userId), *section);
    });
}

HRESULT UPDataSourceXML::Save(BSTR applicationId, BSTR userId, _IUPSection** section,
                              VARIANT_BOOL* result) {
    return answer(result, [&] {
        if (name_.empty() || !section || !*section) return false;
        return XMLup().saveIntoFile(path_, text(applicationId), text(userId), *section);
    });
}

}  // namespace vela
