// The names of the stores that a manager's sections are kept in.
#pragma once

#include "contract.h"

namespace vela {

class UPDataSources final : public Object<UPDataSources, _UPDataSources> {
  public:
    // Local and shared documents are named after the logged-on user, in the current folder.
    UPDataSources();

    HRESULT STDMETHODCALLTYPE get_LocalSource(VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE put_LocalSource(VARIANT value) override;
    HRESULT STDMETHODCALLTYPE putref_LocalSource(VARIANT value) override;
    HRESULT STDMETHODCALLTYPE get_SharedSource(VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE put_SharedSource(VARIANT value) override;
    HRESULT STDMETHODCALLTYPE putref_SharedSource(VARIANT value) override;
    HRESULT STDMETHODCALLTYPE get_SessionSource(VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE put_SessionSource(VARIANT value) override;
    HRESULT STDMETHODCALLTYPE putref_SessionSource(VARIANT value) override;

    // The names as text; empty where a source holds none.
    std::wstring localName() const { return local_.name(); }
    std::wstring sharedName() const { return shared_.name(); }
    // What the names stand for, made absolute; empty where they are.
    std::wstring localPath() const { return local_.path(); }
    std::wstring sharedPath() const { return shared_.path(); }
    // From now on the names that are there now stand for what they stand for now, also when the
    // current folder changes.
    void settle();

  private:
    struct Source {
        std::wstring name() const;
        std::wstring path() const;
        void settle();

        Variant value;
        std::wstring settledName;
        std::wstring settledPath;
    };

    Source local_;
    Source shared_;
    Variant session_{std::wstring_view()};
};

}  // namespace vela
