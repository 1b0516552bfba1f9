// What clients of the registered library pay, against what the platform or a plain program takes
// for the same. Fails when a limit is exceeded.
#include <VelaUtil10.h>
#include <windows.h>
#include <wrl/client.h>
#include <xml_types.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "measure.h"

namespace {

using Microsoft::WRL::ComPtr;

void require(HRESULT outcome, const char* what) {
    if (SUCCEEDED(outcome)) return;
    std::printf("%s failed: %08lx\n", what, static_cast<unsigned long>(outcome));
    std::exit(2);
}

// Owns a string for the length of a scope.
struct Text {
    explicit Text(const std::wstring& text) : value(SysAllocString(text.c_str())) {}
    ~Text() { SysFreeString(value); }
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    operator BSTR() const { return value; }

    BSTR value;
};

template <class Interface>
ComPtr<Interface> create(const wchar_t* progId) {
    CLSID id;
    ComPtr<Interface> object;
    require(CLSIDFromProgID(progId, &id), "finding a class");
    require(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)), "creating");
    return object;
}

DISPID numberOf(IDispatch* object, const wchar_t* name) {
    DISPID id = DISPID_UNKNOWN;
    auto* writable = const_cast<wchar_t*>(name);
    require(object->GetIDsOfNames(IID_NULL, &writable, 1, 0, &id), "finding a member");
    return id;
}

// One late-bound call with at most one argument, through the object or through type information.
class Call {
  public:
    Call(DISPID id, WORD flags) : id(id), flags(flags) {}
    Call(DISPID id, WORD flags, BSTR text) : Call(id, flags) {
        argument.vt = VT_BSTR;
        argument.bstrVal = text;
        arguments = 1;
    }

    void through(IDispatch* object) {
        finish(object->Invoke(id, IID_NULL, 0, flags, &parameters(), &result, nullptr, nullptr));
    }
    void through(ITypeInfo* info, void* object) {
        finish(info->Invoke(object, id, flags, &parameters(), &result, nullptr, nullptr));
    }

  private:
    DISPPARAMS& parameters() {
        list = {&argument, nullptr, arguments, 0};
        result.vt = VT_EMPTY;
        return list;
    }
    void finish(HRESULT outcome) {
        require(outcome, "a late-bound call");
        if (result.vt == VT_BSTR) SysFreeString(result.bstrVal);
    }

    const DISPID id;
    const WORD flags;
    VARIANT argument{};
    UINT arguments = 0;
    DISPPARAMS list{};
    VARIANT result;
};

// ---- late binding ------------------------------------------------------------------------------

bench::Row propertyRead() {
    const auto item = create<_PPItem>(L"VelaUtil10.PPItem");
    ComPtr<ITypeInfo> info;
    require(item->GetTypeInfo(0, 0, &info), "type information");
    Call call(numberOf(item.Get(), L"Copies"), DISPATCH_PROPERTYGET);
    return {"property read", bench::nanoseconds([&](long) { call.through(item.Get()); }, 200'000),
            bench::nanoseconds([&](long) { call.through(info.Get(), item.Get()); }, 50'000), 0.05};
}

bench::Row stringCall() {
    const auto util = create<_TextUtil>(L"VelaUtil10.TextUtil");
    ComPtr<ITypeInfo> info;
    require(util->GetTypeInfo(0, 0, &info), "type information");
    const Text argument(L"  a short text ");
    Call call(numberOf(util.Get(), L"UTrim"), DISPATCH_METHOD, argument);
    return {"call with a string in and one out",
            bench::nanoseconds([&](long) { call.through(util.Get()); }, 100'000),
            bench::nanoseconds([&](long) { call.through(info.Get(), util.Get()); }, 50'000), 0.4};
}

bench::Row nameLookUp(const char* what, wchar_t* name) {
    const auto util = create<_TextUtil>(L"VelaUtil10.TextUtil");
    ComPtr<ITypeInfo> info;
    require(util->GetTypeInfo(0, 0, &info), "type information");
    DISPID id = 0;
    return {
        what,
        bench::nanoseconds([&](long) { util->GetIDsOfNames(IID_NULL, &name, 1, 0, &id); }, 200'000),
        bench::nanoseconds([&](long) { info->GetIDsOfNames(&name, 1, &id); }, 20'000), 0.1};
}

// ---- the keyed collection
// ------------------------------------------------------------------------

bench::Row collectionItem() {
    constexpr long kEntries = 1'000;
    const auto ours = create<_Collection>(L"VelaUtil10.Collection");
    const auto theirs = create<IDispatch>(L"Scripting.Dictionary");
    const DISPID theirAdd = numberOf(theirs.Get(), L"Add");
    VARIANT missing{};
    missing.vt = VT_ERROR;
    missing.scode = DISP_E_PARAMNOTFOUND;
    std::vector<BSTR> keys;
    for (long i = 0; i < kEntries; ++i) {
        VARIANT key{};
        VARIANT value{};
        key.vt = VT_BSTR;
        key.bstrVal = SysAllocString((L"Entry number " + std::to_wstring(i)).c_str());
        value.vt = VT_I4;
        value.lVal = i;
        require(ours->Add(value, key, missing, missing), "adding");
        VARIANT reversed[] = {value, key};
        DISPPARAMS parameters{reversed, nullptr, 2, 0};
        require(theirs->Invoke(theirAdd, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr,
                               nullptr, nullptr),
                "adding");
        keys.push_back(key.bstrVal);
    }
    const auto item = [&](IDispatch* object) {
        const DISPID id = numberOf(object, L"Item");
        return bench::nanoseconds(
            [&, id](long i) {
                Call(id, DISPATCH_PROPERTYGET, keys[static_cast<std::size_t>(i % kEntries)])
                    .through(object);
            },
            100'000);
    };
    const bench::Row row{"Item by key (to Scripting.Dictionary)", item(ours.Get()),
                         item(theirs.Get()), 0.5};
    for (const BSTR key : keys) SysFreeString(key);
    return row;
}

// ---- documents
// -----------------------------------------------------------------------------------

constexpr int kItems = 2'500;
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

// Replaces one section in the document and saves it.
void plainSave(const std::wstring& path, std::size_t section, const std::vector<PlainItem>& items) {
    const std::wstring id = kSections[section];
    auto document = loadDocument(path);
    if (auto old = selectNode(document.Get(), sectionPath(id))) {
        ComPtr<IXMLDOMNode> parent;
        old->get_parentNode(&parent);
        parent->removeChild(old.Get(), nullptr);
    }
    auto user =
        selectNode(document.Get(), L"//UserPreferences/App[@id=\"SALES\"]/App_User[@id=\"ANA\"]");
    auto element = appendWithId(document.Get(), user.Get(), id + L"_Section", id);
    setAttribute(element.Get(), L"description", kDescriptions[section]);
    std::vector<std::pair<std::wstring, ComPtr<IXMLDOMElement>>> groups;
    for (const PlainItem& item : items) {
        auto group = std::find_if(groups.begin(), groups.end(),
                                  [&](const auto& known) { return known.first == item.group; });
        if (group == groups.end()) {
            groups.emplace_back(item.group, appendWithId(document.Get(), element.Get(),
                                                         id + L"_Group", item.group));
            group = groups.end() - 1;
        }
        ComPtr<IXMLDOMElement> made;
        document->createElement(Text(id + L"_Item"), &made);
        for (const auto& [name, value] : item.attributes) setAttribute(made.Get(), name, value);
        group->second->appendChild(made.Get(), nullptr);
    }
    const Text name(path);
    VARIANT target{};
    target.vt = VT_BSTR;
    target.bstrVal = name;
    require(document->save(target), "saving");
}

void writeEmptyDocument(const std::wstring& path) {
    auto document = newDocument();
    VARIANT_BOOL loaded = VARIANT_FALSE;
    document->loadXML(
        Text(L"<UserPreferences version=\"1\"><App id=\"SALES\"><App_User id=\"ANA\"/>"
             L"</App></UserPreferences>"),
        &loaded);
    const Text name(path);
    VARIANT target{};
    target.vt = VT_BSTR;
    target.bstrVal = name;
    require(document->save(target), "saving");
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

void markAllUnsaved(_UPUtil* preferences) {
    for (const wchar_t* id : kSections) sectionOf(preferences, id)->put_Saved(VARIANT_FALSE);
}

std::vector<bench::Row> documents() {
    const std::wstring folder = std::filesystem::temp_directory_path().wstring();
    const std::wstring ours = folder + L"vela-bench-ours.xml";
    const std::wstring theirs = folder + L"vela-bench-theirs.xml";
    std::vector<PlainItem> items[4];
    for (std::size_t s = 0; s < 4; ++s) {
        for (int i = 0; i < kItems; ++i) items[s].push_back(plainItem(kSections[s], i));
    }
    for (const std::wstring& path : {ours, theirs}) {
        writeEmptyDocument(path);
        for (std::size_t s = 0; s < 4; ++s) plainSave(path, s, items[s]);
    }

    ComPtr<_UPUtil> preferences;
    const auto [ourLoad, theirLoad] =
        bench::alternately([&] { preferences = startPreferences(ours); },
                           [&] {
                               auto document = loadDocument(theirs);
                               for (const wchar_t* id : kSections) {
                                   std::vector<PlainItem> read;
                                   if (plainRead(document.Get(), id, read) != kItems)
                                       require(E_FAIL, "reading");
                               }
                           },
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
    const auto [ourSave, theirSave] = bench::alternately(
        [&] {
            VARIANT_BOOL saved = VARIANT_FALSE;
            require(manager->Save(&saved), "saving");
        },
        [&] {
            for (std::size_t s = 0; s < 4; ++s) plainSave(theirs, s, items[s]);
        },
        [&] { markAllUnsaved(preferences.Get()); });
    manager.Reset();
    preferences.Reset();
    for (const std::wstring& path : {ours, theirs}) DeleteFileW(path.c_str());
    return {{"load 4 sections of 2,500 items", ourLoad, theirLoad, 1.3},
            {"save 4 sections of 2,500 items", ourSave, theirSave, 1.3}};
}

bool run() {
    wchar_t first[] = L"ProcTras";
    wchar_t last[] = L"Descompactar64";
    const std::vector<bench::Row> calls = {propertyRead(), stringCall(),
                                           nameLookUp("name look-up, first member", first),
                                           nameLookUp("name look-up, last member", last)};
    bench::report("late binding (ours) to ITypeInfo (theirs)", calls);
    const std::vector<bench::Row> collection = {collectionItem()};
    bench::report("Collection, late-bound", collection);
    const std::vector<bench::Row> files = documents();
    bench::report("documents (ours) to a plain program on the same DOM", files);
    return bench::withinLimits(calls) && bench::withinLimits(collection) &&
           bench::withinLimits(files);
}

}  // namespace

int main() {
    CoInitialize(nullptr);
    const bool good = run();
    CoUninitialize();
    return good ? 0 : 1;
}
