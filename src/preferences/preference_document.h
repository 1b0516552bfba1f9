// What a preference document looks like, in windows-1252:
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
// Id, and holds its items by group.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "xml/xml_document.h"

namespace vela {

// A document without any application.
XmlDocument emptyDocument();
// None when the content cannot be parsed.
std::optional<XmlDocument> parsed(std::span<const std::byte> content);
std::optional<XmlDocument> parsed(std::wstring_view xml);

// Throws Error when the document is none of preferences.
XmlNode rootOf(const XmlDocument& document);
// The number that the root's first attribute, its version, begins with; 0 where there is none, or
// none of 16 bits. Throws Error when the document is none of preferences.
short versionOf(const XmlDocument& document);

// Where a document holds the sections of one user of one application.
class UserPath {
  public:
    // Documents hold identities in upper case.
    UserPath(std::wstring_view applicationId, std::wstring_view userId);

    const std::wstring& applicationId() const { return applicationId_; }
    const std::wstring& userId() const { return userId_; }

    // XPath expressions; throw Error for identities that none can name.
    std::wstring application() const;
    std::wstring user() const;
    std::wstring section(const std::wstring& id) const;

    bool operator==(const UserPath&) const = default;

  private:
    std::wstring applicationId_;
    std::wstring userId_;
};

}  // namespace vela
