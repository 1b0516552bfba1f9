// Saving sections into the document of a file: read once, written once.
#pragma once

#include <span>

#include "contract.h"
#include "files/whole_file.h"
#include "preferences/preference_document.h"

namespace vela {

struct SectionSave {
    enum class Outcome {
        Failed,   // the file is as it was
        Nothing,  // is stored: there is neither a document nor an item, or the name is of none
        Saved
    };

    UserPath user;
    ComPtr<_IUPSection> section;
    // Whether it is written in any case, and not only when a document that held it has lost it.
    bool changed = true;
    Outcome outcome = Outcome::Failed;
};

// Saves all of them, or none where the file fails; a section that cannot be told is left out alone.
// What others changed in the document since a section was read stays; a section that was never read
// from it is replaced. A missing folder is made. Others who save the document are waited for up to
// `patience` ms. Nothing is raised.
void saveSections(const std::wstring& fileName, std::span<SectionSave> saves,
                  DWORD patience = kPatience);

}  // namespace vela
