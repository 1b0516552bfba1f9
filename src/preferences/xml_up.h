// Reads a section out of an XML document and writes it back.
//
// The document, in windows-1252:
//
//     <?xml version="1.0" encoding="windows-1252"?>
//     <UserPreferences version="1">
//       <App id="SALES">
//         <App_User id="ANA">
//           <KV_Section id="KV" description="Key Value">
//             <KV_Group id="GENERAL">
//               <KV_Item id="LASTCOMPANY" value="7" key="LASTCOMPANY"/>
//
// It holds many applications, users of each, and sections of each user; a section is named by its
// Id. An item's attributes are its Id and then the fields that the section's Properties list names,
// in the order of the item class's members. Reading goes by position: the first attribute of a
// group is the group, the first of an item its Id, whatever they are called.
//
// Nothing here raises: every failure is the result false, and leaves no error info.
#pragma once

#include <string>
#include <string_view>

#include "contract.h"
#include "xml/xml_document.h"

namespace vela {

class XMLup {
  public:
    // The root's version as read by the last load.
    short version() const { return version_; }

    // Adds the stored items to the section's. True when the document could be read, also when it
    // holds no such section. Only names ending in ".XML", in any case, are documents. The first
    // reading of a file is kept until emptyCache().
    bool loadFromFile(const std::wstring& fileName, std::wstring_view applicationId,
                      std::wstring_view userId, _IUPSection* section);
    // Replaces the section in the file, which is made when missing. The rest of the document stays;
    // a document that cannot be parsed is first set aside under a name ending in ".bad". A file
    // that cannot be read or written is left as it is.
    bool saveIntoFile(const std::wstring& fileName, std::wstring_view applicationId,
                      std::wstring_view userId, _IUPSection* section);
    // Writes an empty document, hidden.
    bool createFile(const std::wstring& fileName);

    bool loadFromXml(std::wstring_view xml, std::wstring_view applicationId,
                     std::wstring_view userId, _IUPSection* section);
    // The new document text; empty on failure.
    std::wstring saveIntoXml(std::wstring_view xml, std::wstring_view applicationId,
                             std::wstring_view userId, _IUPSection* section);

    // Forgets the documents read so far.
    static void emptyCache();

  private:
    void setIdentity(std::wstring_view applicationId, std::wstring_view userId);
    void openForReading(const std::wstring& fileName);
    void readVersion();
    void readSection(_IUPSection* section);
    bool removeSection(_IUPSection* section);
    void writeSection(_IUPSection* section);
    void resetDocument();

    std::wstring applicationPath() const;
    std::wstring userPath() const;
    std::wstring sectionPath(const std::wstring& id) const;

    XmlDocument document_;
    short version_ = 0;
    std::wstring applicationId_;
    std::wstring userId_;
};

}  // namespace vela
