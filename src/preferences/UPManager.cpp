#include "preferences/UPManager.h"

#include <algorithm>

#include "automation/enumerator.h"
#include "files/core/path_parts.h"
#include "files/delete_file.h"
#include "preferences/Section.h"
#include "preferences/UPDataSourceXML.h"
#include "preferences/UPSections.h"
#include "preferences/document_cache.h"
#include "preferences/document_names.h"
#include "preferences/preferences_save.h"
#include "text/core/upper_case.h"

namespace vela {

namespace {

constexpr wchar_t kNobody[] = L"_ALL_";

std::wstring identity(std::wstring_view value) {
    return value.empty() ? kNobody : upperCase(value);
}

}  // namespace

UPManager::UPManager() : sections_(make<UPSections>()), userId_(kNobody), applicationId_(kNobody) {}

void UPManager::setUserId(std::wstring_view value) { userId_ = identity(value); }
void UPManager::setApplicationId(std::wstring_view value) { applicationId_ = identity(value); }

ComPtr<_IUPSection> UPManager::section(std::wstring_view id) {
    ComPtr<_IUPSection> found;
    checkRecorded(sections_->get_section(Variant(id), &found));
    return found;
}

void UPManager::add(ComPtr<_IUPSection> section) {
    checkRecorded(sections_->Add(section.GetAddressOf()));
}

std::vector<ComPtr<_IUPSection>> UPManager::sections() {
    std::vector<ComPtr<_IUPSection>> sections;
    ComPtr<IUnknown> enumerator;
    checkRecorded(sections_->get_NewEnum(&enumerator));
    eachVariant(enumerator.Get(), [&](const Variant& next) {
        ComPtr<_IUPSection> section;
        if (IDispatch* object = objectIn(next)) check(queryOrAdapt<_IUPSection>(object, &section));
        if (section) sections.push_back(std::move(section));
        return true;
    });
    return sections;
}

void UPManager::load() {
    const LiveContexts::Call call;
    loaded_ = true;
    for (const auto& section : sections()) {
        ComPtr<_IUPDataSource> store;
        // A caller's section may answer anything.
        quietly([&] {
            if (!flagOf(section.Get(), &_IUPSection::get_Loaded)) store = storeOf(section.Get());
        });
        if (!store) continue;
        ComPtr<_IUPSection> argument = section;
        VARIANT_BOOL ignored = VARIANT_FALSE;
        checkRecorded(store->Load(Bstr(applicationId_).get(), Bstr(userId_).get(),
                                  argument.GetAddressOf(), &ignored));
        quietly([&] { checkRecorded(section->put_Loaded(VARIANT_TRUE)); });
    }
}

void UPManager::save() { PreferencesSave(*this, PreferencesSave::Occasion::Save).run(); }
void UPManager::saveEach() { PreferencesSave(*this, PreferencesSave::Occasion::End).run(); }
void UPManager::saveForStart() { PreferencesSave(*this, PreferencesSave::Occasion::Start).run(); }
void UPManager::saveInPassing() {
    PreferencesSave(*this, PreferencesSave::Occasion::Passing).run();
}

const UPManager::Pending* UPManager::pendingOf(_IUPSection* section) const {
    const UserPath user(applicationId_, userId_);
    const auto found = std::find_if(pending_.begin(), pending_.end(), [&](const Pending& pending) {
        return pending.user == user && isSame(pending.section.Get(), section);
    });
    return found == pending_.end() ? nullptr : &*found;
}

bool UPManager::owes(_IUPSection* section) const {
    const Pending* pending = pendingOf(section);
    return pending && pending->failed;
}

bool UPManager::owesAny() const {
    return std::any_of(pending_.begin(), pending_.end(),
                       [](const Pending& pending) { return pending.failed; });
}

// What a section had there does not come back.
void UPManager::forgetDocument(const std::wstring& path) {
    for (const auto& section : sections()) {
        quietly([&] {
            const auto store = own<UPDataSourceXML>(storeOf(section.Get()).Get());
            const auto items = own<UPItems>(itemsOf(section.Get()).Get());
            const bool there = store && upperCase(store->path()) == upperCase(path);
            if (there && items) items->forgetRecords();
        });
    }
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
        const std::wstring local = dataSources_->localPath();
        const std::wstring shared = dataSources_->sharedPath();
        const std::wstring user(text(userId));
        if (user.empty()) {
            deleteFile(local);
            deleteFile(shared);
            sections_ = make<UPSections>();
            pending_.clear();
        } else {
            for (const std::wstring& path :
                 {folderOf(local) + user + kLocalSuffix, folderOf(shared) + user + kSharedSuffix}) {
                deleteFile(path);
                forgetDocument(path);
            }
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
