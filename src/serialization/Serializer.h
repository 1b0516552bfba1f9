// Turns listed properties of any object into one XML element, and sets them again from it.
#pragma once

#include "contract.h"

namespace vela {

class Serializer final : public Object<Serializer, _Serializer> {
  public:
    HRESULT STDMETHODCALLTYPE Serialize(IDispatch** thisInstance, BSTR rootTag,
                                        BSTR* propertiesList, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE DeSerialize(IDispatch** thisInstance, BSTR* Xml, BSTR* propertiesList,
                                          VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE ReadSimpleElement(IXMLDOMNode** Node, BSTR elementName,
                                                BSTR* result) override;
    HRESULT STDMETHODCALLTYPE CreateSimpleElement(IXMLDOMDocument** xmlObject, BSTR elementName,
                                                  VARIANT elementValue,
                                                  IXMLDOMElement** result) override;

  private:
    void raiseSerializing(ComPtr<IDispatch> object, Variant& name, Variant& text,
                          SerializeAsTypes& kind);
};

}  // namespace vela
