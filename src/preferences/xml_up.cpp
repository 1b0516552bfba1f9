#include "preferences/xml_up.h"

#include "preferences/document_cache.h"
#include "preferences/document_update.h"
#include "preferences/section_reader.h"
#include "preferences/section_writer.h"

namespace vela {

bool XMLup::load(const std::optional<XmlDocument>& document, const UserPath& user,
                 _IUPSection* section) {
    if (!document) return false;
    version_ = versionOf(*document);
    readSection(*document, user, section);
    return true;
}

bool XMLup::loadFromFile(const std::wstring& fileName, std::wstring_view applicationId,
                         std::wstring_view userId, _IUPSection* section) {
    bool loaded = false;
    quietly([&] { loaded = load(cachedDocument(fileName), {applicationId, userId}, section); });
    return loaded;
}

bool XMLup::loadFromXml(std::wstring_view xml, std::wstring_view applicationId,
                        std::wstring_view userId, _IUPSection* section) {
    bool loaded = false;
    quietly([&] { loaded = load(parsed(xml), {applicationId, userId}, section); });
    return loaded;
}

bool XMLup::saveIntoFile(const std::wstring& fileName, std::wstring_view applicationId,
                         std::wstring_view userId, _IUPSection* section) {
    bool saved = false;
    quietly([&] {
        DocumentUpdate update(fileName);
        const bool changed = replaceSection(update.document(), {applicationId, userId}, section);
        if (changed) update.commit();
        saved = changed || update.existed();
    });
    return saved;
}

std::wstring XMLup::saveIntoXml(std::wstring_view xml, std::wstring_view applicationId,
                                std::wstring_view userId, _IUPSection* section) {
    std::wstring result;
    quietly([&] {
        const auto document = parsed(xml);
        if (!document) return;
        replaceSection(*document, {applicationId, userId}, section);
        result = document->xml();
    });
    return result;
}

bool XMLup::createFile(const std::wstring& fileName) {
    return quietly([&] { createDocument(fileName); });
}

}  // namespace vela
