#include "preferences/preferences_save.h"

#include <algorithm>
#include <utility>

#include "automation/error.h"
#include "preferences/Section.h"
#include "preferences/document_cache.h"

namespace vela {

namespace {

std::wstring pathOf(_IUPSection* section) {
    const auto ours = own<UPDataSourceXML>(storeOf(section).Get());
    return ours ? ours->path() : std::wstring();
}

}  // namespace

PreferencesSave::PreferencesSave(UPManager& manager, Failures failures, Sections sections)
    : manager_(&manager),
      user_(manager.applicationId(), manager.userId()),
      failures_(failures),
      wanted_(sections),
      nested_(std::exchange(manager.saving_, true)) {}

PreferencesSave::~PreferencesSave() { manager_->saving_ = nested_; }

void PreferencesSave::run() {
    // A store that saves everything is being called for that already.
    if (nested_) return;
    if (wanted_ == Sections::All) forgetDocuments();
    registered_ = manager_->sections();
    for (const auto& owed : manager_->owed_) {
        if (isRegistered(owed)) continue;
        quietly([&] { add(pathOf(owed.section.Get()), {owed.user, owed.section}); });
    }
    writeBatches();  // a registered section may have the same place, and is to find it there
    for (const auto& section : registered_) visit(section);
    writeBatches();
}

bool PreferencesSave::isRegistered(const UPManager::Owed& owed) const {
    return owed.user == user_ &&
           std::any_of(registered_.begin(), registered_.end(), [&](const auto& section) {
               return isSame(section.Get(), owed.section.Get());
           });
}

void PreferencesSave::visit(const ComPtr<_IUPSection>& section) {
    ComPtr<_IUPDataSource> store;
    // A caller's section may answer anything.
    quietly([&] {
        _IUPSection* const asked = section.Get();
        const bool changed = manager_->owes(asked) || !flagOf(asked, &_IUPSection::get_Saved);
        const bool wanted = wanted_ == Sections::All || flagOf(asked, &_IUPSection::get_Loaded);
        if (changed && wanted) store = storeOf(asked);
    });
    if (!store) return;
    if (const auto ours = own<UPDataSourceXML>(store.Get())) {
        add(ours->path(), {user_, section});
    } else if (failures_ == Failures::Raised) {
        saveBy(store.Get(), section);
    } else {
        quietly([&] { saveBy(store.Get(), section); });
    }
}

// Its own verdict is ignored.
void PreferencesSave::saveBy(_IUPDataSource* store, const ComPtr<_IUPSection>& section) {
    writeBatches();
    ComPtr<_IUPSection> argument = section;
    VARIANT_BOOL ignored = VARIANT_FALSE;
    checkRecorded(store->Save(Bstr(manager_->applicationId()).get(), Bstr(manager_->userId()).get(),
                              argument.GetAddressOf(), &ignored));
    checkRecorded(section->put_Saved(VARIANT_TRUE));
}

void PreferencesSave::add(const std::wstring& path, SectionSave save) {
    auto batch = std::find_if(batches_.begin(), batches_.end(),
                              [&](const Batch& each) { return each.path == path; });
    if (batch == batches_.end()) batch = batches_.insert(batch, {path, {}});
    batch->saves.push_back(std::move(save));
}

void PreferencesSave::addUnchanged(Batch& batch) const {
    const auto changed = batch.saves;
    for (const auto& section : registered_) {
        const bool there = std::any_of(changed.begin(), changed.end(), [&](const auto& save) {
            return isSame(save.section.Get(), section.Get());
        });
        if (!there && pathOf(section.Get()) == batch.path) {
            batch.saves.push_back({user_, section, false});
        }
    }
}

void PreferencesSave::writeBatches() {
    if (batches_.empty()) return;
    forgetDocuments();
    for (Batch& batch : std::exchange(batches_, {})) {
        quietly([&] { addUnchanged(batch); });
        saveSections(batch.path, batch.saves);
        for (const SectionSave& save : batch.saves) note(save);
    }
}

void PreferencesSave::note(const SectionSave& save) {
    if (!save.changed) return;
    quietly([&] { checkRecorded(save.section->put_Saved(VARIANT_TRUE)); });
    std::erase_if(manager_->owed_, [&](const auto& owed) {
        return owed.user == save.user && isSame(owed.section.Get(), save.section.Get());
    });
    if (save.outcome == SectionSave::Outcome::Failed) {
        manager_->owed_.push_back({save.user, save.section});
    }
}

bool UPManager::owes(_IUPSection* section) const {
    const UserPath user(applicationId_, userId_);
    return std::any_of(owed_.begin(), owed_.end(), [&](const Owed& owed) {
        return owed.user == user && isSame(owed.section.Get(), section);
    });
}

}  // namespace vela
