// The preferences of one application and one user: registered sections, loaded, saved, deleted.
#pragma once

#include <vector>

#include "contract.h"
#include "preferences/UPDataSources.h"
#include "preferences/preference_document.h"

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
    // The registered section of an Id; null when there is none.
    ComPtr<_IUPSection> section(std::wstring_view id);
    void add(ComPtr<_IUPSection> section);
    // As they are registered now, in order.
    std::vector<ComPtr<_IUPSection>> sections();

    // Load and save pass on what a store raises, and then leave the sections behind it as they are.
    void load();
    void save();
    // Saves what can be saved, each section on its own.
    void saveEach();
    // The same before sections are registered anew. What callers' stores refuse is kept for later.
    void saveForStart();
    // The same for the sections of our own stores, and without much patience.
    void saveInPassing();
    // Whether the section's store could not write what was last saved. The next save tries it
    // again, although its Saved may be true.
    bool owes(_IUPSection* section) const;
    bool owesAny() const;

  private:
    friend class PreferencesSave;

    // A section to be saved again, for the identities that it belongs to.
    struct Pending {
        UserPath user;
        ComPtr<_IUPSection> section;
        // It could not be written; else it was, in passing, and its items may have been changed in
        // place since.
        bool failed;
    };

    const Pending* pendingOf(_IUPSection* section) const;
    void forgetDocument(const std::wstring& path);

    ComPtr<_UPSections> sections_;
    std::wstring userId_;
    std::wstring applicationId_;
    bool loaded_ = false;
    bool saving_ = false;
    std::vector<Pending> pending_;
    const ComPtr<UPDataSources> dataSources_ = make<UPDataSources>();
};

}  // namespace vela
