// One saving of a manager's sections.
//
// Sections go in their order. Those of our own stores that follow each other are written document
// by document, each read and written once; a caller's store is called for its section alone.
#pragma once

#include "preferences/UPDataSourceXML.h"
#include "preferences/UPManager.h"
#include "preferences/document_save.h"
#include "preferences/live_contexts.h"

namespace vela {

class PreferencesSave {
  public:
    enum class Occasion {
        Save,    // of all sections; what a caller's store raises ends it, and is passed on
        End,     // of all that can be saved
        Start,   // the same, but for sections that may not yet have what is stored
        Passing  // the same, and no caller's store is called
    };

    PreferencesSave(UPManager& manager, Occasion occasion);
    ~PreferencesSave();
    PreferencesSave(const PreferencesSave&) = delete;
    PreferencesSave& operator=(const PreferencesSave&) = delete;

    void run();

  private:
    // What goes into one document.
    struct Batch {
        std::wstring path;
        std::vector<SectionSave> saves;
    };

    bool isRegistered(const UPManager::Pending& pending) const;
    bool isWanted(_IUPSection* section) const;
    void saveParked();
    void save(const SectionSave& save, _IUPDataSource* store);
    void saveBy(_IUPDataSource* store, const SectionSave& save);
    void add(const std::wstring& path, const SectionSave& save);
    // The other registered sections of the document, in case that it has lost them.
    void addUnchanged(Batch& batch) const;
    void writeBatches();
    // Sets what is to be remembered of a section that was saved, or not.
    void note(const SectionSave& save);

    const LiveContexts::Call call_;
    const ComPtr<UPManager> manager_;
    const UserPath user_;
    const Occasion occasion_;
    const bool nested_;
    std::vector<ComPtr<_IUPSection>> registered_;
    std::vector<Batch> batches_;
};

}  // namespace vela
