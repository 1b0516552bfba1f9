// Loading and saving preferences against a plain program on the same XML DOM.
#include <xml_types.h>

#include <algorithm>
#include <chrono>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <vector>

#include "bench/client.h"
#include "bench/tables.h"

namespace bench {

namespace {

constexpr int kItems = 2'500;
constexpr int kUsualItems = 40;
constexpr int kStarts = 20;
constexpr std::chrono::milliseconds kLongerThanUnsaved(2500);
const wchar_t* const kSections[] = {L"PP", L"UI", L"DP", L"KV"};
const wchar_t* const kDescriptions[] = {L"Printer Preferences", L"User Interface", L"Default Path",
                                        L"Key Value"};

using Attribute = std::pair<std::wstring, std::wstring>;
struct PlainItem {
    std::wstring group;
    std::vector<Attribute> attributes;
};

PlainItem plainItem(const std::wstring& section, int number) {
    const std::wstring id = L"ITEM" + std::to_wstring(number);
    PlainItem item{L"GROUP" + std::to_wstring(number % 10), {{L"id", id}}};
    if (section == L"PP") {
        item.attributes.insert(item.attributes.end(), {{L"paperbin", L"1"},
                                                       {L"papersize", L"9"},
                                                       {L"orientation", L"1"},
                                                       {L"copies", L"2"},
                                                       {L"printername", L"PRINTER"}});
    } else if (section == L"UI") {
        item.attributes.insert(item.attributes.end(), {{L"screenwxh", L"1024x768"},
                                                       {L"width", L"5000"},
                                                       {L"height", L"4000"},
                                                       {L"left", L"100"},
                                                       {L"top", L"200"},
                                                       {L"windowstate", L"0"},
                                                       {L"tag", L""}});
    } else if (section == L"DP") {
        item.attributes.insert(item.attributes.end(),
                               {{L"path", L"C:\\Data\\"}, {L"file", L"list"}, {L"ext", L"csv"}});
    } else {
        item.attributes.insert(item.attributes.end(), {{L"value", L"some value"}, {L"key", id}});
    }
    return item;
}

ComPtr<IXMLDOMDocument2> newDocument() {
    CLSID id;
    ComPtr<IXMLDOMDocument2> document;
    require(CLSIDFromProgID(L"Msxml2.DOMDocument.6.0", &id), "finding the XML parser");
    require(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&document)),
            "creating the XML parser");
    document->put_async(VARIANT_FALSE);
    return document;
}

ComPtr<IXMLDOMDocument2> loadDocument(const std::wstring& path) {
    auto document = newDocument();
    const Text name(path);
    VARIANT source{};
    source.vt = VT_BSTR;
    source.bstrVal = name;
    VARIANT_BOOL loaded = VARIANT_FALSE;
    require(document->load(source, &loaded), "loading");
    return document;
}

ComPtr<IXMLDOMNode> selectNode(IXMLDOMDocument2* document, const std::wstring& path) {
    ComPtr<IXMLDOMNode> node;
    document->selectSingleNode(Text(path), &node);
    return node;
}

std::wstring sectionPath(const std::wstring& section) {
    return L"//UserPreferences/App[@id=\"SALES\"]/App_User[@id=\"ANA\"]/" + section +
           L"_Section[@id=\"" + section + L"\"]";
}

void setAttribute(IXMLDOMElement* element, const std::wstring& name, const std::wstring& value) {
    const Text text(value);
    VARIANT content{};
    content.vt = VT_BSTR;
    content.bstrVal = text;
    require(element->setAttribute(Text(name), content), "setting an attribute");
}

ComPtr<IXMLDOMElement> appendElement(IXMLDOMDocument2* document, IXMLDOMNode* parent,
                                     const std::wstring& name) {
    ComPtr<IXMLDOMElement> element;
    require(document->createElement(Text(name), &element), "creating an element");
    require(parent->appendChild(element.Get(), nullptr), "appending an element");
    return element;
}

ComPtr<IXMLDOMElement> appendWithId(IXMLDOMDocument2* document, IXMLDOMNode* parent,
                                    const std::wstring& name, const std::wstring& id) {
    auto element = appendElement(document, parent, name);
    setAttribute(element.Get(), L"id", id);
    return element;
}

// Reads every attribute of every item of one section, as a program without preferences would.
std::size_t plainRead(IXMLDOMDocument2* document, const std::wstring& section,
                      std::vector<PlainItem>& items) {
    ComPtr<IXMLDOMNode> group;
    selectNode(document, sectionPath(section))->get_firstChild(&group);
    while (group) {
        ComPtr<IXMLDOMNamedNodeMap> groupAttributes;
        ComPtr<IXMLDOMNode> groupId;
        group->get_attributes(&groupAttributes);
        groupAttributes->get_item(0, &groupId);
        BSTR groupText = nullptr;
        groupId->get_text(&groupText);
        ComPtr<IXMLDOMNode> item;
        group->get_firstChild(&item);
        while (item) {
            PlainItem read{groupText, {}};
            ComPtr<IXMLDOMNamedNodeMap> attributes;
            item->get_attributes(&attributes);
            for (long i = 0;; ++i) {
                ComPtr<IXMLDOMNode> attribute;
                if (attributes->get_item(i, &attribute) != S_OK) break;
                BSTR name = nullptr;
                BSTR value = nullptr;
                attribute->get_nodeName(&name);
                attribute->get_text(&value);
                read.attributes.emplace_back(name, value);
                SysFreeString(name);
                SysFreeString(value);
            }
            items.push_back(std::move(read));
            ComPtr<IXMLDOMNode> next;
            item->get_nextSibling(&next);
            item = next;
        }
        SysFreeString(groupText);
        ComPtr<IXMLDOMNode> next;
        group->get_nextSibling(&next);
        group = next;
    }
    return items.size();
}

// Replaces one section in the document.
void plainReplace(IXMLDOMDocument2* document, std::size_t section,
                  const std::vector<PlainItem>& items) {
    const std::wstring id = kSections[section];
    if (auto old = selectNode(document, sectionPath(id))) {
        ComPtr<IXMLDOMNode> parent;
        old->get_parentNode(&parent);
        parent->removeChild(old.Get(), nullptr);
    }
    auto user = selectNode(document, L"//UserPreferences/App[@id=\"SALES\"]/App_User[@id=\"ANA\"]");
    auto element = appendWithId(document, user.Get(), id + L"_Section", id);
    setAttribute(element.Get(), L"description", kDescriptions[section]);
    std::vector<std::pair<std::wstring, ComPtr<IXMLDOMElement>>> groups;
    for (const PlainItem& item : items) {
        auto group = std::find_if(groups.begin(), groups.end(),
                                  [&](const auto& known) { return known.first == item.group; });
        if (group == groups.end()) {
            groups.emplace_back(item.group,
                                appendWithId(document, element.Get(), id + L"_Group", item.group));
            group = groups.end() - 1;
        }
        ComPtr<IXMLDOMElement> made;
        document->createElement(Text(id + L"_Item"), &made);
        for (const auto& [name, value] : item.attributes) setAttribute(made.Get(), name, value);
        group->second->appendChild(made.Get(), nullptr);
    }
}

void saveDocument(IXMLDOMDocument2* document, const std::wstring& path) {
    const Text name(path);
    VARIANT target{};
    target.vt = VT_BSTR;
    target.bstrVal = name;
    require(document->save(target), "saving");
}

// Replaces one section in the document and saves it.
void plainSave(const std::wstring& path, std::size_t section, const std::vector<PlainItem>& items) {
    auto document = loadDocument(path);
    plainReplace(document.Get(), section, items);
    saveDocument(document.Get(), path);
}

void writeEmptyDocument(const std::wstring& path) {
    auto document = newDocument();
    VARIANT_BOOL loaded = VARIANT_FALSE;
    document->loadXML(
        Text(L"<UserPreferences version=\"1\"><App id=\"SALES\"><App_User id=\"ANA\"/>"
             L"</App></UserPreferences>"),
        &loaded);
    saveDocument(document.Get(), path);
}

// Preferences of their own, started, with all sections in one document.
ComPtr<_UPUtil> startPreferences(const std::wstring& path) {
    const auto root = create<_Preferences>(L"VelaUtil10.Preferences");
    ComPtr<_UPUtil> shared;
    ComPtr<_UPUtil> preferences;
    ComPtr<_UPDataSources> sources;
    require(root->get_MyPreferences(&shared), "the shared preferences");
    require(shared->NewPreferences(&preferences), "new preferences");
    require(preferences->get_ActiveDataSources(&sources), "the data sources");
    const Text name(path);
    VARIANT source{};
    source.vt = VT_BSTR;
    source.bstrVal = name;
    sources->put_LocalSource(source);
    sources->put_SharedSource(source);
    VARIANT started;
    require(preferences->StartUPM(Text(L"SALES"), Text(L"ANA"), &started), "starting");
    return preferences;
}

ComPtr<_IUPSection> sectionOf(_UPUtil* preferences, const wchar_t* id) {
    ComPtr<_UPManager> manager;
    ComPtr<_UPSections> sections;
    ComPtr<_IUPSection> section;
    const Text name(id);
    VARIANT index{};
    index.vt = VT_BSTR;
    index.bstrVal = name;
    preferences->get_ActiveUPM(&manager);
    manager->get_PreferenceSections(&sections);
    require(sections->get_section(index, &section), "a section");
    return section;
}

// Has every section written, and the document another one than before.
void change(_UPUtil* preferences) {
    static int changes = 0;
    for (const wchar_t* id : kSections) sectionOf(preferences, id)->put_Saved(VARIANT_FALSE);
    ComPtr<_UPValueUtil> values;
    require(preferences->get_Values(&values), "the values");
    const std::wstring value = std::to_wstring(++changes);
    require(values->SaveValue(Text(L"ITEM0"), Text(L"GROUP0"), Text(value)), "a value");
}

// Two documents of the same sections: ours, and that of the plain program.
struct Documents {
    explicit Documents(int count) {
        const std::wstring folder = std::filesystem::temp_directory_path().wstring();
        ours = folder + L"vela-bench-ours.xml";
        theirs = folder + L"vela-bench-theirs.xml";
        for (std::size_t s = 0; s < 4; ++s) {
            for (int i = 0; i < count; ++i) items[s].push_back(plainItem(kSections[s], i));
        }
        for (const std::wstring& path : {ours, theirs}) {
            writeEmptyDocument(path);
            for (std::size_t s = 0; s < 4; ++s) plainSave(path, s, items[s]);
        }
    }
    ~Documents() {
        for (const std::wstring& path : {ours, theirs}) DeleteFileW(path.c_str());
    }
    Documents(const Documents&) = delete;
    Documents& operator=(const Documents&) = delete;

    std::wstring ours, theirs;
    std::vector<PlainItem> items[4];
};

void plainLoad(const Documents& documents) {
    auto document = loadDocument(documents.theirs);
    for (std::size_t s = 0; s < 4; ++s) {
        std::vector<PlainItem> read;
        if (plainRead(document.Get(), kSections[s], read) != documents.items[s].size()) {
            require(E_FAIL, "reading");
        }
    }
}

std::vector<Row> loadAndSave() {
    const Documents documents(kItems);
    const std::wstring& ours = documents.ours;
    const std::wstring& theirs = documents.theirs;
    const auto& items = documents.items;

    ComPtr<_UPUtil> preferences;
    const auto [ourLoad, theirLoad] =
        alternately([&] { preferences = startPreferences(ours); }, [&] { plainLoad(documents); },
                    [&] { preferences.Reset(); });

    for (const wchar_t* id : kSections) {
        SHORT count = 0;
        ComPtr<_UPItems> loaded;
        sectionOf(preferences.Get(), id)->get_Items(&loaded);
        loaded->get_Count(&count);
        if (count != kItems) require(E_FAIL, "loading every item");
    }
    ComPtr<_UPManager> manager;
    preferences->get_ActiveUPM(&manager);
    const auto [ourSave, theirSave] = alternately(
        [&] {
            VARIANT_BOOL saved = VARIANT_FALSE;
            require(manager->Save(&saved), "saving");
        },
        [&] {
            for (std::size_t s = 0; s < 4; ++s) plainSave(theirs, s, items[s]);
        },
        [&] { change(preferences.Get()); });
    manager.Reset();
    preferences.Reset();
    return {{"load 4 sections of 2,500 items", ourLoad, theirLoad, 0.8},
            {"save 4 sections of 2,500 items", ourSave, theirSave, 0.5}};
}

// What a usual user has: a program that starts, changes all of it, and stops.
Row startAndStop() {
    const Documents documents(kUsualItems / 4);
    const ComPtr<_UPUtil> preferences = startPreferences(documents.ours);
    const auto ours = [&] {
        for (int i = 0; i < kStarts; ++i) {
            VARIANT started;
            require(preferences->StartUPM(Text(L"SALES"), Text(L"ANA"), &started), "starting");
            change(preferences.Get());
            require(preferences->StopUPM(), "stopping");
        }
    };
    const auto theirs = [&] {
        for (int i = 0; i < kStarts; ++i) {
            plainLoad(documents);
            auto document = loadDocument(documents.theirs);
            for (std::size_t s = 0; s < 4; ++s) {
                plainReplace(document.Get(), s, documents.items[s]);
            }
            saveDocument(document.Get(), documents.theirs);
        }
    };
    const auto [our, their] = alternately(ours, theirs, [] {});
    return {"start and stop with 40 items in 4 sections", our / kStarts, their / kStarts, 1.2};
}

// In nanoseconds, over a time in which what is unsaved is saved in passing.
double saveValue(_UPUtil* preferences) {
    using Clock = std::chrono::steady_clock;
    ComPtr<_UPValueUtil> values;
    require(preferences->get_Values(&values), "the values");
    const Text group(L"GROUP0"), value(L"saved in passing");
    std::deque<Text> ids;
    for (int i = 0; i < kUsualItems; ++i) ids.emplace_back(L"ITEM" + std::to_wstring(i));
    const auto start = Clock::now();
    long calls = 0;
    std::chrono::duration<double, std::nano> taken{};
    while (taken < kLongerThanUnsaved) {
        for (const Text& id : ids) require(values->SaveValue(id, group, value), "a value");
        calls += kUsualItems;
        taken = Clock::now() - start;
    }
    return taken.count() / static_cast<double>(calls);
}

Row changesInPassing() {
    const Documents documents(kUsualItems / 4);
    const ComPtr<_UPUtil> saved = startPreferences(documents.ours);
    const ComPtr<_UPUtil> kept = startPreferences(L"");
    double ours = std::numeric_limits<double>::max(), theirs = ours;
    for (int i = 0; i < 3; ++i) {
        ours = std::min(ours, saveValue(saved.Get()));
        theirs = std::min(theirs, saveValue(kept.Get()));
    }
    std::ifstream document(std::filesystem::path(documents.ours), std::ios::binary);
    const std::string content(std::istreambuf_iterator<char>(document), {});
    if (content.find("saved in passing") == content.npos) require(E_FAIL, "saving in passing");
    return {"SaveValue, saved in passing (to not at all)", ours, theirs, 1.1};
}

}  // namespace

bool documents() {
    auto rows = loadAndSave();
    rows.push_back(startAndStop());
    rows.push_back(changesInPassing());
    return report("documents (ours) to a plain program on the same DOM", rows);
}

}  // namespace bench
