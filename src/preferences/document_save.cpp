#include "preferences/document_save.h"

#include <shlobj.h>

#include <algorithm>

#include "automation/error.h"
#include "files/core/path_parts.h"
#include "files/file_state.h"
#include "files/full_path.h"
#include "preferences/Section.h"
#include "preferences/document_names.h"
#include "preferences/document_update.h"
#include "preferences/section_reader.h"
#include "preferences/section_writer.h"

namespace vela {

namespace {

// A new user has none yet. What cannot be made is missed when the file is.
void makeFolderOf(const std::wstring& fileName) {
    SHCreateDirectoryExW(nullptr, folderOf(fullPath(fileName)).c_str(), nullptr);
}

bool canHaveItems(const SectionSave& save) {
    bool has = true;
    quietly([&] { has = hasItems(save.section.Get()); });
    return has;
}

std::vector<KnownItem> known(const SectionRecord* record, _IUPSection* section) {
    if (!record || !record->content) return {};
    if (record->items) return *record->items;
    const auto document = parsed(*record->content);
    if (!document) return {};
    return knownItems(*document, record->place.user, section);
}

void setAll(std::span<SectionSave> saves, SectionSave::Outcome outcome) {
    for (SectionSave& save : saves) save.outcome = outcome;
}

// One saving of a document.
class DocumentSave {
  public:
    DocumentSave(const std::wstring& fileName, DWORD patience)
        : fileName_(fileName), update_(fileName, patience) {}

    void run(std::span<SectionSave> saves) {
        bool changed = false;
        for (const SectionSave& save : saves) noteIfLost(save.user);
        for (SectionSave& save : saves) {
            quietly([&] {
                changed |= write(save);
                save.outcome = SectionSave::Outcome::Saved;
            });
        }
        if (changed) commit(saves);
        else if (!update_.existed()) nothingSaved(saves);
        for (auto& [items, record] : records_) {
            record.content = update_.content();
            items->setRecord(std::move(record));
        }
    }

  private:
    using Record = std::pair<ComPtr<UPItems>, SectionRecord>;

    // Notes users of whom the document has nothing at all.
    void noteIfLost(const UserPath& user) {
        quietly([&] {
            if (!update_.document().select(user.user())) lost_.push_back(user);
        });
    }

    // Whether the document changes.
    bool write(const SectionSave& save) {
        _IUPSection* const section = save.section.Get();
        Record next{own<UPItems>(itemsOf(section).Get()),
                    {{fileName_, save.user, idOf(section)}, nullptr, true, {}}};
        const SectionPlace& place = next.second.place;
        const auto record = next.first ? next.first->recordOf(place) : nullptr;
        const bool lost = std::find(lost_.begin(), lost_.end(), save.user) != lost_.end();
        const bool rescued = lost && record && record->content;
        // What another section has put there is not what this one knows.
        const bool foreign = std::find(places_.begin(), places_.end(), place) != places_.end();
        if (!save.changed && !rescued && (foreign || !isCurrent(record.get()))) return false;
        bool changed = false;
        if (save.changed || rescued) {
            const bool replaces = !foreign && (lost || !record || isCurrent(record.get()));
            changed = write(save, record.get(), replaces, next.second);
            places_.push_back(place);
        }
        if (next.first) records_.push_back(std::move(next));
        return changed;
    }

    // Whether the document still holds what the program knows of it.
    bool isCurrent(const SectionRecord* record) const {
        return record && record->same && record->content && *record->content == *update_.content();
    }

    bool write(const SectionSave& save, const SectionRecord* record, bool replaces,
               SectionRecord& next) {
        auto replaced = Replaced::Refused;
        if (replaces) replaced = replaceSection(update_.document(), save.user, save.section.Get());
        if (replaced != Replaced::Refused) return replaced == Replaced::Changed;
        next.items = mergeSection(update_.document(), save.user, save.section.Get(),
                                  known(record, save.section.Get()));
        next.same = false;
        return true;
    }

    void commit(std::span<SectionSave> saves) {
        if (quietly([&] { update_.commit(); })) return;
        records_.clear();
        setAll(saves, SectionSave::Outcome::Failed);
    }

    static void nothingSaved(std::span<SectionSave> saves) {
        for (SectionSave& save : saves) {
            if (save.outcome == SectionSave::Outcome::Saved) {
                save.outcome = SectionSave::Outcome::Nothing;
            }
        }
    }

    const std::wstring& fileName_;
    DocumentUpdate update_;
    std::vector<UserPath> lost_;
    std::vector<SectionPlace> places_;  // written by now
    std::vector<Record> records_;
};

}  // namespace

void saveSections(const std::wstring& fileName, std::span<SectionSave> saves, DWORD patience) {
    quietly([&] {
        const bool filled = std::any_of(saves.begin(), saves.end(), canHaveItems);
        if (!isDocumentName(fileName) || (!filled && !fileExists(fileName))) {
            return setAll(saves, SectionSave::Outcome::Nothing);
        }
        if (filled) makeFolderOf(fileName);
        DocumentSave(fileName, patience).run(saves);
    });
}

}  // namespace vela
