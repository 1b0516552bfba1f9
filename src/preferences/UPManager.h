// The preferences of one application and one user: registered sections, loaded, saved, deleted.
#pragma once

#include <functional>

#include "contract.h"
#include "preferences/UPDataSources.h"

namespace vela {

class UPManager final : public Object<UPManager, _UPManager> {
  public:
    UPManager();

    HRESULT STDMETHODCALLTYPE get_PreferenceSections(_UPSections** result) override;
    HRESULT STDMETHODCALLTYPE putref_PreferenceSections(_UPSections* value) override;
    HRESULT STDMETHODCALLTYPE get_Loaded(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE get_UserId(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE put_UserId(BSTR value) override;
    HRESULT STDMETHODCALLTYPE get_ApplicationId(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE put_ApplicationId(BSTR value) override;
    HRESULT STDMETHODCALLTYPE get_HasRegisteredSections(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE IsRegistered(BSTR sectionId, VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE Load(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE Delete(BSTR userId, VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE Save(VARIANT_BOOL* result) override;

    bool loaded() const { return loaded_; }
    void setLoaded(bool loaded) { loaded_ = loaded; }
    const ComPtr<UPDataSources>& dataSources() const { return dataSources_; }
    const std::wstring& userId() const { return userId_; }
    const std::wstring& applicationId() const { return applicationId_; }
    // Empty becomes the identity of nobody in particular, anything else is upper-cased.
    void setUserId(std::wstring_view value);
    void setApplicationId(std::wstring_view value);
    // Whether setting these would change nothing.
    bool isFor(std::wstring_view applicationId, std::wstring_view userId) const;

    // The registered section of an Id; null when there is none.
    ComPtr<_IUPSection> section(std::wstring_view id);
    void add(ComPtr<_IUPSection> section);
    // Load and save pass on what a store raises.
    void load();
    void save();

  private:
    void eachSection(const std::function<void(_IUPSection*)>& visit);

    ComPtr<_UPSections> sections_;
    std::wstring userId_;
    std::wstring applicationId_;
    bool loaded_ = false;
    const ComPtr<UPDataSources> dataSources_ = make<UPDataSources>();
};

}  // namespace vela
