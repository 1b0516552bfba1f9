#include "preferences/xml_up.h"

#include "preferences/Section.h"
#include "preferences/document_cache.h"
#include "preferences/document_save.h"
#include "preferences/document_update.h"
#include "preferences/section_reader.h"
#include "preferences/section_writer.h"

namespace vela {

bool XMLup::read(const XmlDocument& document, const UserPath& user, _IUPSection* section) {
    version_ = versionOf(document);
    return readSection(document, user, section);
}

bool XMLup::loadFromFile(const std::wstring& fileName, std::wstring_view applicationId,
                         std::wstring_view userId, _IUPSection* section) {
    bool loaded = false;
    const UserPath user(applicationId, userId);
    // A save must not replace what could not be read.
    SectionRecord record{{fileName, user, {}}, nullptr, false, {}};
    quietly([&] {
        const ReadDocument found = cachedDocument(fileName);
        record.same = !found.document || read(found.document, user, section);
        record.content = found.content;
        loaded = bool(found.document);
    });
    quietly([&] {
        record.place.sectionId = idOf(section);
        const auto items = own<UPItems>(itemsOf(section).Get());
        if (items) items->setRecord(std::move(record));
    });
    return loaded;
}

bool XMLup::loadFromXml(std::wstring_view xml, std::wstring_view applicationId,
                        std::wstring_view userId, _IUPSection* section) {
    bool loaded = false;
    quietly([&] {
        const auto document = parsed(xml);
        if (document) read(*document, {applicationId, userId}, section);
        loaded = document.has_value();
    });
    return loaded;
}

bool XMLup::saveIntoFile(const std::wstring& fileName, std::wstring_view applicationId,
                         std::wstring_view userId, _IUPSection* section) {
    bool saved = false;
    quietly([&] {
        SectionSave save{{applicationId, userId}, section};
        saveSections(fileName, {&save, 1});
        saved = save.outcome == SectionSave::Outcome::Saved;
    });
    return saved;
}

std::wstring XMLup::saveIntoXml(std::wstring_view xml, std::wstring_view applicationId,
                                std::wstring_view userId, _IUPSection* section) {
    std::wstring result;
    quietly([&] {
        const auto document = parsed(xml);
        if (!document) return;
        const auto replaced = replaceSection(*document, {applicationId, userId}, section);
        if (replaced != Replaced::Refused) result = document->xml();
    });
    return result;
}

bool XMLup::createFile(const std::wstring& fileName) {
    return quietly([&] { createDocument(fileName); });
}

}  // namespace vela
