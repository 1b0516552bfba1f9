#include "preferences/xml_up.h"

#include <algorithm>
#include <cwchar>
#include <map>
#include <utility>
#include <vector>

#include "automation/enumerator.h"
#include "automation/late_properties.h"
#include "collections/core/keyed_collection.h"
#include "files/whole_file.h"
#include "preferences/Section.h"
#include "preferences/document_bytes.h"
#include "preferences/stored_item.h"
#include "runtime/apartment.h"
#include "text/core/upper_case.h"
#include "text/dates/core/calendar.h"

namespace vela {

namespace {

constexpr wchar_t kRoot[] = L"//UserPreferences";
constexpr wchar_t kApplication[] = L"//UserPreferences/App[@id=\"";
constexpr wchar_t kUser[] = L"\"]/App_User[@id=\"";
constexpr wchar_t kId[] = L"[@id=\"";
constexpr wchar_t kEnd[] = L"\"]";
constexpr DWORD kNewFileAttributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE;

// The documents read since the last save, by file name.
struct DocumentCache : ApartmentCache {
    KeyedCollection<XmlDocument> documents;
};

KeyedCollection<XmlDocument>& cache() { return apartmentLocal<DocumentCache>().documents; }

bool isDocumentName(const std::wstring& fileName) {
    return fileName.size() >= 4 &&
           upperCase(std::wstring_view(fileName).substr(fileName.size() - 4)) == L".XML";
}

ComPtr<_UPItems> itemsOf(_IUPSection* section) {
    ComPtr<_UPItems> items;
    checkRecorded(section->get_Items(&items));
    if (!items) check(E_FAIL);
    return items;
}

ComPtr<IUnknown> enumeratorOf(_UPItems* items) {
    ComPtr<IUnknown> enumerator;
    checkRecorded(items->get_NewEnum(&enumerator));
    return enumerator;
}

bool hasItems(_IUPSection* section) {
    bool found = false;
    eachVariant(enumeratorOf(itemsOf(section).Get()).Get(), [&](const Variant&) {
        found = true;
        return false;
    });
    return found;
}

// A text that goes between the quotes of a path. Paths have no way to write a quote.
const std::wstring& quotable(const std::wstring& text) {
    if (text.find(L'"') != text.npos) check(E_INVALIDARG);
    return text;
}

// The names of the item class's own properties, upper-cased; none where it does not tell.
std::vector<std::wstring> propertyNames(IDispatch* item) {
    std::vector<std::wstring> names = settableProperties(item);
    for (std::wstring& name : names) name = upperCase(name);
    return names;
}

// Reads the items of one section. They are all of one class: what an attribute's name stands for is
// found out once, where the class tells of its properties.
class ItemReader {
  public:
    explicit ItemReader(_IUPSection* section) : section_(section) {}

    ComPtr<IDispatch> read(const Bstr& group, const XmlNode& element) {
        ComPtr<IDispatch> object;
        checkRecorded(section_->CreateItem(&object));
        const ComPtr<_IUPItem> item = itemIn(object.Get());
        checkRecorded(item->put_Group(group.get()));
        if (!std::exchange(asked_, true)) properties_ = propertyNames(object.Get());
        bool first = true;
        eachAttribute(element, [&](const Bstr& name, const Bstr& value) {
            if (first) checkRecorded(item->put_Id(value.get()));
            else assign(object.Get(), memberFor(object.Get(), name), value);
            first = false;
        });
        return object;
    }

  private:
    // The number of the item's property of that name; DISPID_UNKNOWN when it has none.
    DISPID memberFor(IDispatch* item, const Bstr& name) {
        const auto known = std::find_if(members_.begin(), members_.end(), [&](const auto& member) {
            return member.first == name.view();
        });
        if (known != members_.end()) return known->second;
        DISPID id = DISPID_UNKNOWN;
        const bool tells = !properties_.empty();
        if (!tells || std::find(properties_.begin(), properties_.end(), upperCase(name.view())) !=
                          properties_.end()) {
            if (FAILED(findMember(item, name.get(), &id))) id = DISPID_UNKNOWN;
        }
        if (tells) members_.emplace_back(name.view(), id);
        return id;
    }

    // Anything that does not fit is ignored.
    static void assign(IDispatch* item, DISPID id, const Bstr& value) {
        if (id == DISPID_UNKNOWN) return;
        VARIANT argument{};
        argument.vt = VT_BSTR;
        argument.bstrVal = value.get();
        quietly([&] {
            check(callLateBound(item, id, DISPATCH_PROPERTYPUT, single(argument), nullptr));
        });
    }

    _IUPSection* section_;
    bool asked_ = false;
    std::vector<std::wstring> properties_;
    std::vector<std::pair<std::wstring, DISPID>> members_;
};

// A field as the document holds it; dates as day-month-year, the zero date as nothing.
Variant fieldText(Variant value) {
    if (value.vt == VT_BSTR) return value;
    if (value.vt != VT_DATE) return converted(value, VT_BSTR);
    SYSTEMTIME time;
    if (value.date <= 0 || !VariantTimeToSystemTime(value.date, &time)) return Variant(L"");
    return Variant(dateText(std::chrono::year{time.wYear} / time.wMonth / time.wDay));
}

struct StoredField {
    Bstr attribute;  // in lower case
    std::wstring property;
};

// The fields that a section keeps, in the order of its item class's members.
std::vector<StoredField> fieldsOf(_IUPSection* section) {
    const std::wstring listed = upperCase(textProperty(section, &_IUPSection::get_Properties));
    ComPtr<IDispatch> sample;
    checkRecorded(section->CreateItem(&sample));
    std::vector<StoredField> fields;
    for (const std::wstring& name : settableProperties(sample.Get())) {
        const std::wstring upper = upperCase(name);
        if (upper == L"GROUP" || upper == L"ID") continue;
        if (!listed.empty() && listed.find(L"[" + upper + L"]") == listed.npos) continue;
        std::wstring lower = name;
        for (wchar_t& c : lower) c = lowerCase(c);
        fields.push_back({Bstr(lower), name});
    }
    return fields;
}

// Reading adds items, which is no change to be saved: the flag is put back at the end.
class KeptSavedFlag {
  public:
    explicit KeptSavedFlag(_IUPSection* section) : section_(section) {
        checkRecorded(section->get_Saved(&saved_));
    }
    ~KeptSavedFlag() { section_->put_Saved(saved_); }
    KeptSavedFlag(const KeptSavedFlag&) = delete;
    KeptSavedFlag& operator=(const KeptSavedFlag&) = delete;

  private:
    _IUPSection* section_;
    VARIANT_BOOL saved_ = VARIANT_TRUE;
};

short numberIn(const std::wstring& text) {
    const long number = std::wcstol(text.c_str(), nullptr, 10);
    if (number < -32768 || number > 32767) raise(RuntimeError::Overflow);
    return static_cast<short>(number);
}

// Copies a document that cannot be read to a name of its own, so that its replacement loses
// nothing.
void setAside(const std::wstring& fileName) {
    for (int attempt = 0; attempt < 1000; ++attempt) {
        const std::wstring number = attempt == 0 ? L"" : L"." + std::to_wstring(attempt);
        if (CopyFileW(fileName.c_str(), (fileName + number + L".bad").c_str(), TRUE)) return;
        if (GetLastError() != ERROR_FILE_EXISTS) break;
    }
    check(E_FAIL);
}

}  // namespace

void XMLup::emptyCache() { cache().clear(); }

void XMLup::setIdentity(std::wstring_view applicationId, std::wstring_view userId) {
    applicationId_ = upperCase(applicationId);
    userId_ = upperCase(userId);
}

std::wstring XMLup::applicationPath() const {
    return kApplication + quotable(applicationId_) + kEnd;
}

std::wstring XMLup::userPath() const {
    return kApplication + quotable(applicationId_) + kUser + quotable(userId_) + kEnd;
}

std::wstring XMLup::sectionPath(const std::wstring& id) const {
    return userPath() + L"/" + id + L"_Section" + kId + quotable(id) + kEnd;
}

// ---- reading -----------------------------------------------------------------------------------

void XMLup::openForReading(const std::wstring& fileName) {
    if (const XmlDocument* cached = cache().find(fileName)) {
        document_ = *cached;
        return;
    }
    if (!isDocumentName(fileName)) check(E_INVALIDARG);
    Bytes content;
    check(HRESULT_FROM_WIN32(readWholeFile(fileName, content)));
    document_ = XmlDocument::make();
    if (!document_.parse(content)) check(E_FAIL);
    cache().add(document_, std::wstring_view(fileName));
}

void XMLup::readVersion() {
    const XmlNode root = document_.select(kRoot);
    if (!root) check(E_FAIL);
    version_ = numberIn(firstAttribute(root));
}

void XMLup::readSection(_IUPSection* section) {
    const XmlNode element = document_.select(sectionPath(idOf(section)));
    if (!element) return;
    const ComPtr<_UPItems> items = itemsOf(section);
    const KeptSavedFlag saved(section);
    ItemReader reader(section);
    eachChild(element, [&](const XmlNode& group) {
        const Bstr groupText(firstAttribute(group));
        eachChild(group, [&](const XmlNode& child) {
            ComPtr<IDispatch> item = reader.read(groupText, child);
            checkRecorded(items->Add(item.GetAddressOf(), nullptr, nullptr));
        });
    });
}

bool XMLup::loadFromFile(const std::wstring& fileName, std::wstring_view applicationId,
                         std::wstring_view userId, _IUPSection* section) {
    return quietly([&] {
        setIdentity(applicationId, userId);
        openForReading(fileName);
        readVersion();
        readSection(section);
    });
}

bool XMLup::loadFromXml(std::wstring_view xml, std::wstring_view applicationId,
                        std::wstring_view userId, _IUPSection* section) {
    return quietly([&] {
        setIdentity(applicationId, userId);
        document_ = XmlDocument::make();
        if (!document_.parse(xml)) check(E_FAIL);
        readVersion();
        readSection(section);
    });
}

// ---- writing -----------------------------------------------------------------------------------

bool XMLup::removeSection(_IUPSection* section) {
    const XmlNode element = document_.select(sectionPath(idOf(section)));
    if (!element) return false;
    XmlNode parent;
    check(element->get_parentNode(&parent));
    check(parent->removeChild(element.Get(), nullptr));
    return true;
}

namespace {

XmlElement append(const XmlDocument& document, const XmlNode& parent, const std::wstring& name,
                  std::wstring_view id) {
    const XmlElement element = document.createElement(name);
    setAttribute(element, Bstr(L"id"), Variant(id));
    check(parent->appendChild(element.Get(), nullptr));
    return element;
}

// The group elements of one section, found by their id and made when missing.
class Groups {
  public:
    Groups(const XmlDocument& document, const XmlNode& section, const std::wstring& sectionId)
        : document_(document), section_(section), name_(sectionId + L"_Group") {
        eachChild(section, [&](const XmlNode& child) {
            XmlElement element;
            Bstr name;
            check(child.As(&element));
            check(child->get_nodeName(name.put()));
            if (name.view() == name_) elements_.try_emplace(attribute(element, L"id"), element);
        });
    }

    const XmlElement& at(const std::wstring& group) {
        auto found = elements_.find(group);
        if (found == elements_.end()) {
            const XmlElement made = append(document_, section_, name_, quotable(group));
            found = elements_.emplace(group, made).first;
        }
        return found->second;
    }

  private:
    const XmlDocument& document_;
    XmlNode section_;
    std::wstring name_;
    std::map<std::wstring, XmlElement> elements_;
};

void writeItem(const XmlDocument& document, Groups& groups, const std::wstring& elementName,
               const std::vector<StoredField>& fields, IDispatch* object) {
    const ComPtr<_IUPItem> item = itemIn(object);
    const XmlElement& parent = groups.at(textProperty(item.Get(), &_IUPItem::get_Group));
    const XmlElement element = document.createElement(elementName);
    setAttribute(element, Bstr(L"id"), Variant(textProperty(item.Get(), &_IUPItem::get_Id)));
    for (const StoredField& field : fields) {
        setAttribute(element, field.attribute,
                     fieldText(getProperty(object, field.property.c_str())));
    }
    check(parent->appendChild(element.Get(), nullptr));
}

}  // namespace

void XMLup::writeSection(_IUPSection* section) {
    const std::wstring id = idOf(section);
    XmlNode application = document_.select(applicationPath());
    if (!application) {
        const XmlNode root = document_.select(kRoot);
        if (!root) check(E_FAIL);
        application = append(document_, root, L"App", applicationId_);
    }
    XmlNode user = document_.select(userPath());
    if (!user) user = append(document_, application, L"App_User", userId_);
    XmlNode element = document_.select(sectionPath(id));
    if (!element) {
        const XmlElement made = append(document_, user, id + L"_Section", id);
        setAttribute(made, Bstr(L"description"),
                     Variant(textProperty(section, &_IUPSection::get_Description)));
        element = made;
    }

    const std::vector<StoredField> fields = fieldsOf(section);
    Groups groups(document_, element, id);
    eachVariant(enumeratorOf(itemsOf(section).Get()).Get(), [&](const Variant& item) {
        writeItem(document_, groups, id + L"_Item", fields, objectIn(item));
        return true;
    });
}

void XMLup::resetDocument() {
    document_ = XmlDocument::make();
    const XmlElement root =
        document_.addRoot(L"UserPreferences", L"xml", L" version='1.0' encoding='windows-1252'");
    setAttribute(root, Bstr(L"version"), Variant(L"1"));
}

bool XMLup::saveIntoFile(const std::wstring& fileName, std::wstring_view applicationId,
                         std::wstring_view userId, _IUPSection* section) {
    return quietly([&] {
        setIdentity(applicationId, userId);
        if (!isDocumentName(fileName)) check(E_INVALIDARG);
        const std::wstring path = sectionPath(idOf(section));
        const bool filled = hasItems(section);
        FileReplacement replacement(fileName);
        check(HRESULT_FROM_WIN32(replacement.error()));

        Bytes content;
        const DWORD reading = readWholeFile(fileName, content);
        const bool exists = reading != ERROR_FILE_NOT_FOUND;
        if (exists) check(HRESULT_FROM_WIN32(reading));
        document_ = XmlDocument::make();
        if (exists && document_.parse(content)) {
            const bool removed = removeSection(section);
            if (!removed && !filled) return;
        } else {
            if (!filled) check(E_FAIL);
            if (!content.empty()) setAside(fileName);
            resetDocument();
        }
        if (filled) writeSection(section);
        const std::string changed = bytesOf(document_);
        check(HRESULT_FROM_WIN32(
            replacement.commit(changed.data(), changed.size(), kNewFileAttributes)));
    });
}

bool XMLup::createFile(const std::wstring& fileName) {
    return quietly([&] {
        resetDocument();
        if (!isDocumentName(fileName)) check(E_INVALIDARG);
        FileReplacement replacement(fileName);
        const std::string content = bytesOf(document_);
        check(HRESULT_FROM_WIN32(
            replacement.commit(content.data(), content.size(), kNewFileAttributes)));
    });
}

std::wstring XMLup::saveIntoXml(std::wstring_view xml, std::wstring_view applicationId,
                                std::wstring_view userId, _IUPSection* section) {
    std::wstring result;
    quietly([&] {
        setIdentity(applicationId, userId);
        document_ = XmlDocument::make();
        if (!document_.parse(xml)) check(E_FAIL);
        removeSection(section);
        if (hasItems(section)) writeSection(section);
        result = document_.xml();
    });
    return result;
}

}  // namespace vela
