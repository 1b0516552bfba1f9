#include "preferences/UPManager.h"

#include "automation/enumerator.h"
#include "files/core/path_parts.h"
#include "files/delete_file.h"
#include "preferences/UPSections.h"
#include "preferences/document_cache.h"
#include "preferences/document_names.h"
#include "text/core/upper_case.h"

namespace vela {

namespace {

constexpr wchar_t kNobody[] = L"_ALL_";

std::wstring identity(std::wstring_view value) {
    return value.empty() ? kNobody : upperCase(value);
}

bool flagOf(_IUPSection* section, HRESULT (STDMETHODCALLTYPE _IUPSection::*get)(VARIANT_BOOL*)) {
    VARIANT_BOOL value = VARIANT_FALSE;
    checkRecorded((section->*get)(&value));
    return isTrue(value);
}

using Transfer = HRESULT (STDMETHODCALLTYPE _IUPDataSource::*)(BSTR, BSTR, _IUPSection**,
                                                               VARIANT_BOOL*);

// Hands the section to its store; false when it has none. The store's own verdict is ignored.
bool transfer(Transfer member, const UPManager& manager, _IUPSection* section) {
    ComPtr<_IUPDataSource> source;
    checkRecorded(section->get_DataSourceManager(&source));
    if (!source) return false;
    const Bstr application(manager.applicationId());
    const Bstr user(manager.userId());
    ComPtr<_IUPSection> argument = section;
    VARIANT_BOOL ignored = VARIANT_FALSE;
    checkRecorded(
        (source.Get()->*member)(application.get(), user.get(), argument.GetAddressOf(), &ignored));
    return true;
}

}  // namespace

UPManager::UPManager() : sections_(make<UPSections>()), userId_(kNobody), applicationId_(kNobody) {}

void UPManager::setUserId(std::wstring_view value) { userId_ = identity(value); }
void UPManager::setApplicationId(std::wstring_view value) { applicationId_ = identity(value); }

bool UPManager::isFor(std::wstring_view applicationId, std::wstring_view userId) const {
    return identity(applicationId) == applicationId_ && identity(userId) == userId_;
}

ComPtr<_IUPSection> UPManager::section(std::wstring_view id) {
    ComPtr<_IUPSection> found;
    checkRecorded(sections_->get_section(Variant(id), &found));
    return found;
}

void UPManager::add(ComPtr<_IUPSection> section) {
    checkRecorded(sections_->Add(section.GetAddressOf()));
}

void UPManager::eachSection(const std::function<void(_IUPSection*)>& visit) {
    ComPtr<IUnknown> enumerator;
    checkRecorded(sections_->get_NewEnum(&enumerator));
    eachVariant(enumerator.Get(), [&](const Variant& next) {
        ComPtr<_IUPSection> section;
        if (IDispatch* object = objectIn(next)) check(queryOrAdapt<_IUPSection>(object, &section));
        if (section) visit(section.Get());
        return true;
    });
}

void UPManager::load() {
    loaded_ = true;
    eachSection([this](_IUPSection* section) {
        if (flagOf(section, &_IUPSection::get_Loaded)) return;
        if (transfer(&_IUPDataSource::Load, *this, section)) {
            checkRecorded(section->put_Loaded(VARIANT_TRUE));
        }
    });
}

void UPManager::save() {
    forgetDocuments();
    eachSection([this](_IUPSection* section) {
        if (flagOf(section, &_IUPSection::get_Saved)) return;
        if (transfer(&_IUPDataSource::Save, *this, section)) {
            checkRecorded(section->put_Saved(VARIANT_TRUE));
        }
    });
}

HRESULT UPManager::get_PreferenceSections(_UPSections** result) {
    return answer(result, [&] { return sections_; });
}

HRESULT UPManager::putref_PreferenceSections(_UPSections* value) {
    return guard([&] {
        if (!value) raise(RuntimeError::InvalidProcedureCall);
        sections_ = value;
    });
}

HRESULT UPManager::get_Loaded(VARIANT_BOOL* result) {
    return answer(result, [&] { return loaded_; });
}

HRESULT UPManager::get_UserId(BSTR* result) { return give(result, userId_); }

HRESULT UPManager::put_UserId(BSTR value) {
    return guard([&] { setUserId(text(value)); });
}

HRESULT UPManager::get_ApplicationId(BSTR* result) { return give(result, applicationId_); }

HRESULT UPManager::put_ApplicationId(BSTR value) {
    return guard([&] { setApplicationId(text(value)); });
}

HRESULT UPManager::get_HasRegisteredSections(VARIANT_BOOL* result) {
    return answer(result, [&] {
        SHORT count = 0;
        checkRecorded(sections_->get_Count(&count));
        return count >= 1;
    });
}

HRESULT UPManager::IsRegistered(BSTR sectionId, VARIANT_BOOL* result) {
    return answerQuietly(result, [&] {
        const auto found = section(text(sectionId));
        if (!found) return false;
        return upperCase(text(sectionId)) == textProperty(found.Get(), &_IUPSection::get_Id);
    });
}

HRESULT UPManager::Load(VARIANT_BOOL* result) {
    return answer(result, [&] {
        load();
        return loaded_;
    });
}

HRESULT UPManager::Delete(BSTR userId, VARIANT_BOOL* result) {
    return answer(result, [&] {
        // What was read of the documents goes with them.
        forgetDocuments();
        const std::wstring local = dataSources_->localName();
        const std::wstring shared = dataSources_->sharedName();
        const std::wstring user(text(userId));
        if (user.empty()) {
            deleteFile(local);
            deleteFile(shared);
            sections_ = make<UPSections>();
        } else {
            deleteFile(folderOf(local) + user + kLocalSuffix);
            deleteFile(folderOf(shared) + user + kSharedSuffix);
        }
        return false;
    });
}

HRESULT UPManager::Save(VARIANT_BOOL* result) {
    return answer(result, [&] {
        save();
        return true;
    });
}

}  // namespace vela
