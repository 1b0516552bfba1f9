// One saving of a manager's sections.
//
// Sections go in their order. Those of our own stores that follow each other are written document
// by document, each read and written once; a caller's store is called for its section alone.
#pragma once

#include "preferences/UPDataSourceXML.h"
#include "preferences/UPManager.h"
#include "preferences/document_save.h"

namespace vela {

class PreferencesSave {
  public:
    enum class Failures { Raised, Kept };  // of callers' stores
    enum class Sections { All, Loaded };

    PreferencesSave(UPManager& manager, Failures failures, Sections sections);
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

    bool isRegistered(const UPManager::Owed& owed) const;
    void visit(const ComPtr<_IUPSection>& section);
    void saveBy(_IUPDataSource* store, const ComPtr<_IUPSection>& section);
    void add(const std::wstring& path, SectionSave save);
    // The other registered sections of the document, in case that it has lost them.
    void addUnchanged(Batch& batch) const;
    void writeBatches();
    void note(const SectionSave& save);

    const ComPtr<UPManager> manager_;
    const UserPath user_;
    const Failures failures_;
    const Sections wanted_;
    const bool nested_;
    std::vector<ComPtr<_IUPSection>> registered_;
    std::vector<Batch> batches_;
};

}  // namespace vela
