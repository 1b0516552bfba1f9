// Loads a section from an XML document and saves it there: one call each.
//
// Nothing here raises: every failure is the result false, and leaves no error info.
#pragma once

#include <string>
#include <string_view>

#include "contract.h"
#include "preferences/preference_document.h"

namespace vela {

class XMLup {
  public:
    // The root's version as read by the last load.
    short version() const { return version_; }

    // Adds the stored items to the section's. True when the document could be read, also when it
    // holds no such section. Only names ending in ".XML", in any case, are documents. The first
    // reading of a file is kept until forgetDocuments().
    bool loadFromFile(const std::wstring& fileName, std::wstring_view applicationId,
                      std::wstring_view userId, _IUPSection* section);
    // Puts the section into the file, which is made when missing, and its folder too. It is merged,
    // item by item, with what others wrote since it was read from there; a section that was never
    // read replaces the stored one. The rest of the document stays; a document that cannot be
    // parsed is first kept aside under a name ending in ".bad". A file that cannot be read or
    // written is left as it is, and so is one that has no document while the section has no items:
    // these are failures.
    bool saveIntoFile(const std::wstring& fileName, std::wstring_view applicationId,
                      std::wstring_view userId, _IUPSection* section);
    // Writes an empty document, hidden.
    bool createFile(const std::wstring& fileName);

    bool loadFromXml(std::wstring_view xml, std::wstring_view applicationId,
                     std::wstring_view userId, _IUPSection* section);
    // The new document text; empty on failure.
    std::wstring saveIntoXml(std::wstring_view xml, std::wstring_view applicationId,
                             std::wstring_view userId, _IUPSection* section);

  private:
    // Whether all of the section could be read.
    bool read(const XmlDocument& document, const UserPath& user, _IUPSection* section);

    short version_ = 0;
};

}  // namespace vela
