#include "preferences/preferences_save.h"

#include <algorithm>
#include <utility>

#include "automation/error.h"
#include "preferences/Section.h"
#include "preferences/document_cache.h"

namespace vela {

namespace {

constexpr DWORD kPassingPatience = 100;  // ms

std::wstring pathOf(_IUPSection* section) {
    const auto ours = own<UPDataSourceXML>(storeOf(section).Get());
    return ours ? ours->path() : std::wstring();
}

}  // namespace

PreferencesSave::PreferencesSave(UPManager& manager, Occasion occasion)
    : manager_(&manager),
      user_(manager.applicationId(), manager.userId()),
      occasion_(occasion),
      nested_(std::exchange(manager.saving_, true)) {}

PreferencesSave::~PreferencesSave() { manager_->saving_ = nested_; }

void PreferencesSave::run() {
    // A store that saves everything is being called for that already.
    if (nested_) return;
    if (occasion_ != Occasion::Passing) forgetDocuments();
    registered_ = manager_->sections();
    saveParked();
    for (const auto& section : registered_) {
        ComPtr<_IUPDataSource> store;
        // A caller's section may answer anything.
        quietly([&] {
            if (isWanted(section.Get())) store = storeOf(section.Get());
        });
        if (store) save({user_, section}, store.Get());
    }
    writeBatches();
}

bool PreferencesSave::isRegistered(const UPManager::Pending& pending) const {
    return pending.user == user_ &&
           std::any_of(registered_.begin(), registered_.end(), [&](const auto& section) {
               return isSame(section.Get(), pending.section.Get());
           });
}

bool PreferencesSave::isWanted(_IUPSection* section) const {
    const auto* pending = manager_->pendingOf(section);
    const bool again = pending && (pending->failed || occasion_ != Occasion::Passing);
    if (!again && flagOf(section, &_IUPSection::get_Saved)) return false;
    return occasion_ == Occasion::Save || occasion_ == Occasion::End || hasStored(section);
}

// Sections that could not be written before others took their places.
void PreferencesSave::saveParked() {
    auto& pending = manager_->pending_;
    std::erase_if(pending, [&](const auto& each) { return !each.failed && !isRegistered(each); });
    const auto all = pending;
    for (const auto& parked : all) {
        if (isRegistered(parked)) continue;
        quietly([&] {
            const auto store = storeOf(parked.section.Get());
            if (store) save({parked.user, parked.section}, store.Get());
        });
    }
    // What is registered for the same places is to find it there.
    writeBatches();
}

void PreferencesSave::save(const SectionSave& save, _IUPDataSource* store) {
    if (const auto ours = own<UPDataSourceXML>(store)) return add(ours->path(), save);
    if (occasion_ == Occasion::Passing) return;
    writeBatches();
    if (occasion_ == Occasion::Save && save.user == user_) return saveBy(store, save);
    SectionSave done = save;
    if (quietly([&] { saveBy(store, save); })) done.outcome = SectionSave::Outcome::Saved;
    note(done);
}

// Its own verdict is ignored.
void PreferencesSave::saveBy(_IUPDataSource* store, const SectionSave& save) {
    ComPtr<_IUPSection> argument = save.section;
    VARIANT_BOOL ignored = VARIANT_FALSE;
    checkRecorded(store->Save(Bstr(save.user.applicationId()).get(), Bstr(save.user.userId()).get(),
                              argument.GetAddressOf(), &ignored));
    checkRecorded(save.section->put_Saved(VARIANT_TRUE));
}

void PreferencesSave::add(const std::wstring& path, const SectionSave& save) {
    auto batch = std::find_if(batches_.begin(), batches_.end(),
                              [&](const Batch& each) { return each.path == path; });
    if (batch == batches_.end()) batch = batches_.insert(batch, {path, {}});
    batch->saves.push_back(save);
}

void PreferencesSave::addUnchanged(Batch& batch) const {
    const auto changed = batch.saves;
    for (const auto& section : registered_) {
        const bool there = std::any_of(changed.begin(), changed.end(), [&](const auto& save) {
            return isSame(save.section.Get(), section.Get());
        });
        quietly([&] {
            const bool joins = !there && pathOf(section.Get()) == batch.path;
            if (joins) batch.saves.push_back({user_, section, false});
        });
    }
}

void PreferencesSave::writeBatches() {
    if (batches_.empty()) return;
    forgetDocuments();
    const DWORD patience = occasion_ == Occasion::Passing ? kPassingPatience : kPatience;
    for (Batch& batch : std::exchange(batches_, {})) {
        quietly([&] { addUnchanged(batch); });
        saveSections(batch.path, batch.saves, patience);
        for (const SectionSave& save : batch.saves) {
            if (!save.changed) continue;
            quietly([&] { checkRecorded(save.section->put_Saved(VARIANT_TRUE)); });
            note(save);
        }
    }
}

void PreferencesSave::note(const SectionSave& save) {
    std::erase_if(manager_->pending_, [&](const auto& pending) {
        return pending.user == save.user && isSame(pending.section.Get(), save.section.Get());
    });
    const bool failed = save.outcome == SectionSave::Outcome::Failed;
    if (failed || occasion_ == Occasion::Passing) {
        manager_->pending_.push_back({save.user, save.section, failed});
    }
}

}  // namespace vela
