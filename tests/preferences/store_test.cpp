#include "preferences/UPDataSourceXML.h"
#include "preferences/UPManager.h"
#include "preferences/preferences_support.h"

namespace vela::test {
namespace {

constexpr DWORD kNewFile = 34;  // hidden and archive

class PreferencesStore : public NoObjectsLeft {
  protected:
    bool load(_IUPSection* section, std::wstring_view application = L"sales",
              std::wstring_view user = L"ana") {
        XMLup::emptyCache();
        return XMLup().loadFromFile(file_, application, user, section);
    }
    bool save(_IUPSection* section, std::wstring_view application = L"sales",
              std::wstring_view user = L"ana") {
        return XMLup().saveIntoFile(file_, application, user, section);
    }
    bool save(const ComPtr<_IUPSection>& section) { return save(section.Get()); }
    // What a new section of the kind reads.
    Lines stored(const SectionKind& kind, const std::vector<const wchar_t*>& fields = {L"Value"},
                 std::wstring_view application = L"sales", std::wstring_view user = L"ana") {
        const auto section = makeSection(kind);
        EXPECT_TRUE(load(section.Get(), application, user));
        return contents(section.Get(), fields);
    }
    static DWORD attributes(const std::wstring& path) { return GetFileAttributesW(path.c_str()); }
    static bool exists(const std::wstring& path) {
        return attributes(path) != INVALID_FILE_ATTRIBUTES;
    }

    TemporaryFolder folder_;
    std::wstring file_ = folder_.path(L"ção.XmL");
    const std::string others_ =
        "<App id=\"_ALL_\"><App_User id=\"RUI\"><KV_Section id=\"KV\" description=\"x\">"
        "<KV_Group id=\"G\"><KV_Item id=\"A\" value=\"\x80\xE7&#1046;&lt;&quot;\" key=\"A\"/>"
        "</KV_Group></KV_Section><Other a=\"'\">text</Other></App_User></App>";
};

// ---- reading -----------------------------------------------------------------------------------

TEST_F(PreferencesStore, ReadsByPositionAndIgnoresWhatDoesNotFit) {
    using Shown = std::vector<const wchar_t*>;
    const Shown value{L"Value"}, path{L"Path", L"File", L"Ext"};
    const Shown window{L"ScreenWxH", L"Width", L"Left", L"Top", L"Height", L"WindowState"};
    const Shown printer{L"Copies", L"Orientation", L"PrinterName"};
    struct {
        const char* what;
        const SectionKind& kind;
        const char* xml;
        bool loaded;
        Shown fields;
        Lines expected;
    } const table[] = {
        {"names of elements and first attributes do not count",
         kKVSection,
         "<KV_Section id='KV'><x y='g'><z w='k' value='1'/></x></KV_Section>",
         true,
         value,
         {L"K@G=1"}},
        {"the group and the Id are stored as the class stores them",
         kDPSection,
         "<DP_Section id='DP'><g id='Ex'><i id='Inv' ext='csv' PATH='C:\\' file='f'/></g>"
         "</DP_Section>",
         true,
         path,
         {L"Inv@Ex=C:\\|f|csv"}},
        {"unknown attributes and numbers that do not fit",
         kUISection,
         "<UI_Section id='UI'><g id='G'><i id='W' nosuch='1' left='99999999999' top='abc' height=''"
         " searchkey='x' WindowState='2' ScreenWXH='s' width='-12'/></g></UI_Section>",
         true,
         window,
         {L"W@G=s|-12|0|0|0|2"}},
        {"16-bit numbers",
         kPPSection,
         "<PP_Section id='PP'><g id='1'><i id='A' copies='32768' orientation='2' printername='hp'/>"
         "</g></PP_Section>",
         true,
         printer,
         {L"A@1=1|2|HP"}},
        {"of two with one identity the last stays, at the end",
         kKVSection,
         "<KV_Section id='KV'><g id='G'><i id='A' value='1'/><i id='B' value='2'/></g><g id='g'>"
         "<i id='a' value='3'/></g></KV_Section>",
         true,
         value,
         {L"B@G=2", L"A@G=3"}},
        {"comments and text between elements",
         kKVSection,
         "<KV_Section id='KV'> x <!-- y --><g id=''>\n<i id='A' value='1'/> </g></KV_Section>",
         true,
         value,
         {L"A@=1"}},
        {"another section", kKVSection, "<XX_Section id='XX'><g/></XX_Section>", true, value, {}},
        {"an empty section", kKVSection, "<KV_Section id='KV'/>", true, value, {}},
        {"a section of another id",
         kKVSection,
         "<KV_Section id='X'><g id='G'><i id='A'/></g></KV_Section>",
         true,
         value,
         {}},
        {"a group without attributes",
         kKVSection,
         "<KV_Section id='KV'><g id='G'><i id='A' value='1'/></g><g/></KV_Section>",
         false,
         value,
         {L"A@G=1"}},
        {"a report parameter's Id follows its fields",
         kRPSection,
         "<RP_Section id='RP'><g id='G'><i id='old' view='V' field='F' mode='2' value='v'/></g>"
         "</RP_Section>",
         true,
         value,
         {L"V@F@2@G=v"}},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.what);
        const auto section = makeSection(row.kind);
        writeFile(file_, document(others_ + ofAna(row.xml)));
        EXPECT_EQ(load(section.Get()), row.loaded);
        EXPECT_EQ(contents(section.Get(), row.fields), row.expected);
    }
}

TEST_F(PreferencesStore, ReadsTheVersionFromTheFirstAttribute) {
    struct {
        const wchar_t* root;
        bool loaded;
        short version;
    } const table[] = {{L"<UserPreferences version='1'/>", true, 1},
                       {L"<UserPreferences x='7' version='1'/>", true, 7},
                       {L"<UserPreferences version='none'/>", true, 0},
                       {L"<UserPreferences/>", false, 0},
                       {L"<UserPreferences version='99999'/>", false, 0},
                       {L"<Other version='1'/>", false, 0},
                       {L"", false, 0}};
    const auto section = makeSection(kKVSection);
    for (const auto& row : table) {
        XMLup store;
        EXPECT_EQ(store.loadFromXml(row.root, L"", L"", section.Get()), row.loaded) << row.root;
        EXPECT_EQ(store.version(), row.version) << row.root;
    }
}

TEST_F(PreferencesStore, ReadsAFileOnceUntilTheManagerSaves) {
    const auto holding = [](const std::string& value) {
        return document(ofAna("<KV_Section id='KV'><g id='G'><i id='A' value='" + value +
                              "'/></g></KV_Section><DP_Section id='DP'><g id='G'><i id='A' path='" +
                              value + "'/></g></DP_Section>"));
    };
    const auto pathRead = [&] {
        const auto section = makeSection(kDPSection);
        EXPECT_TRUE(XMLup().loadFromFile(file_, L"SALES", L"ANA", section.Get()));
        return contents(section.Get(), {L"Path"});
    };
    writeFile(file_, holding("1"));
    EXPECT_EQ(stored(kKVSection), Lines{L"A@G=1"});
    writeFile(file_, holding("2"));
    EXPECT_EQ(pathRead(), Lines{L"A@G=1"});
    VARIANT_BOOL saved;
    EXPECT_EQ(make<UPManager>()->Save(&saved), S_OK);
    EXPECT_EQ(pathRead(), Lines{L"A@G=2"});
}

// ---- writing -----------------------------------------------------------------------------------

TEST_F(PreferencesStore, WritesTheDocumentedShape) {
    EXPECT_TRUE(save(sectionWith(kKVSection, L"LastCompany", L"General", {{L"Value", L"7"}})));
    EXPECT_EQ(attributes(file_), kNewFile);
    EXPECT_TRUE(
        save(sectionWith(kDPSection, L"INVOICES", L"EXPORT",
                         {{L"Path", L"C:\\Data\\"}, {L"File", L"lição"}, {L"Ext", L"csv"}})));
    EXPECT_EQ(compact(readFile(file_)),
              compact(document(
                  ofAna("<KV_Section id=\"KV\" description=\"Key Value\"><KV_Group id=\"GENERAL\">"
                        "<KV_Item id=\"LASTCOMPANY\" value=\"7\" key=\"LASTCOMPANY\"/></KV_Group>"
                        "</KV_Section><DP_Section id=\"DP\" description=\"Default Path\">"
                        "<DP_Group id=\"EXPORT\"><DP_Item id=\"INVOICES\" path=\"C:\\Data\\\" "
                        "file=\"li\xE7\xE3o\" ext=\"csv\"/></DP_Group></DP_Section>"))));
    EXPECT_EQ(attributes(file_), kNewFile);

    SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_TRUE(save(sectionWith(kKVSection, L"A", L"G")));
    EXPECT_FALSE(attributes(file_) & FILE_ATTRIBUTE_HIDDEN);
    EXPECT_TRUE(XMLup().createFile(file_));
    EXPECT_EQ(readFile(file_),
              "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\r\n<UserPreferences "
              "version=\"1\"/>\r\n");
}

class OddSection final : public SectionMembers<OddSection, _IUPSection> {
    using SectionMembers::SectionMembers;
};

// The item element that a section with other Properties writes.
std::wstring writtenItem(const SectionKind& kind, const Fields& fields) {
    const ComPtr<_IUPSection> section = make<OddSection>(kind);
    EXPECT_EQ(addItem(section.Get(), L"a", L"g", fields), S_OK);
    const std::wstring xml =
        XMLup().saveIntoXml(L"<UserPreferences version='1'/>", L"x", L"y", section.Get());
    const auto start = xml.find(std::wstring(L"<") + kind.id + L"_Item ");
    return start == xml.npos ? xml : xml.substr(start, xml.find(L"/>", start) + 2 - start);
}

TEST_F(PreferencesStore, WritesTheFieldsWhoseBracketedNameOccurs) {
    struct {
        const SectionKind& kind;
        const wchar_t *properties, *item;
    } const table[] = {
        {kDPSection, L"xx[ext]yy[Path][file", L"<XX_Item id=\"a\" path=\"\" ext=\"\"/>"},
        {kDPSection, L"[id][group]", L"<XX_Item id=\"a\"/>"},
        {kDPSection, L"none", L"<XX_Item id=\"a\"/>"},
        {kDPSection, L"", L"<XX_Item id=\"a\" path=\"\" file=\"\" ext=\"\"/>"},
        {kKVSection, L"", L"<XX_Item id=\"A\" value=\"\" key=\"A\"/>"},
        {kRPSection, L"", L"<XX_Item id=\"@@0\" view=\"\" field=\"\" mode=\"0\" value=\"\"/>"},
        {kPPSection, L"",
         L"<XX_Item id=\"a\" paperbin=\"0\" papersize=\"0\" orientation=\"1\" "
         L"copies=\"1\" printername=\"\"/>"},
        {kUISection, L"[tag][width][screenwxh]",
         L"<XX_Item id=\"a\" screenwxh=\"\" width=\"0\" tag=\"\"/>"},
    };
    for (const auto& row : table) {
        const SectionKind kind{L"XX", L"", row.properties, row.kind.createItem};
        EXPECT_EQ(writtenItem(kind, {}), row.item) << row.properties;
    }
}

// A kind of item with a date, as a caller would bring it: its properties are known from type
// information alone.
ComPtr<IDispatch> datedItem() {
    static wchar_t names[][12] = {L"When", L"Value"};
    static PARAMDATA value[] = {{names[1], VT_DATE}};
    static METHODDATA methods[] = {
        {names[0], value, 1, 0, CC_STDCALL, 1, DISPATCH_PROPERTYPUT, VT_EMPTY}};
    static INTERFACEDATA interfaceData{methods, 1};
    auto item = scriptObject({{L"Id", Variant(std::wstring_view())},
                              {L"Group", Variant(std::wstring_view())},
                              {L"SearchKey", Variant(std::wstring_view(L"a@g"))},
                              {L"When", Variant()}});
    ComPtr<ITypeInfo> info;
    HREFTYPE reference = 0;
    EXPECT_EQ(CreateDispTypeInfo(&interfaceData, LOCALE_USER_DEFAULT, &info), S_OK);
    // Some platforms describe a class with one interface.
    if (FAILED(info->GetRefTypeOfImplType(0, &reference)) ||
        FAILED(info->GetRefTypeInfo(reference, &item->type))) {
        item->type = info;
    }
    return asObject(item);
}
double dateToWrite;

TEST_F(PreferencesStore, WritesDatesAsDayMonthYear) {
    struct {
        double date;
        const wchar_t* text;
    } const table[] = {{36526.75, L"01-01-2000"},
                       {60.0, L"28-02-1900"},
                       {2958465.0, L"31-12-9999"},
                       {0.0, L""},
                       {-1.5, L""},
                       {1e10, L""}};
    const SectionKind kind{L"XX", L"", L"[when]", [] {
                               auto item = datedItem();
                               Variant date;
                               date.vt = VT_DATE;
                               date.date = dateToWrite;
                               putProperty(item.Get(), L"When", date);
                               return item;
                           }};
    for (const auto& row : table) {
        dateToWrite = row.date;
        EXPECT_EQ(writtenItem(kind, {}),
                  L"<XX_Item id=\"a\" when=\"" + std::wstring(row.text) + L"\"/>");
    }
}

TEST_F(PreferencesStore, AnyTextComesBack) {
    const std::wstring pair{wchar_t(0xD83D), wchar_t(0xDE00)};
    struct {
        std::wstring text, read;
    } const table[] = {
        {L"ação €Žž™", L"ação €Žž™"},
        {L"\x0416\x4E2D" + pair, L"\x0416\x4E2D" + pair},
        {L"\"'<a b='&amp;'/>]]>&#10;<!--", L"\"'<a b='&amp;'/>]]>&#10;<!--"},
        {L"  a\r\nb\tc\n ", L"  a\r\nb\tc\n "},
        {std::wstring(L"a\0b\x01\x1F", 5) + L"c" + wchar_t(0xFFFF), L"abc"},
        {pair.substr(0, 1) + L"x" + pair.substr(1), L"x"},
        {std::wstring(1000000, L'é'), std::wstring(1000000, L'é')},
        {L"", L""},
    };
    for (const auto& row : table) {
        const auto section = sectionWith(kKVSection, L"K", L"G", {{L"Value", row.text}});
        ASSERT_TRUE(save(section));
        // Twice: what is read back must not change when the document is read and written again.
        ASSERT_TRUE(save(sectionWith(kDPSection, L"x", L"G")));
        EXPECT_TRUE(stored(kKVSection) == Lines{L"K@G=" + row.read}) << row.text.substr(0, 40);
    }
}

TEST_F(PreferencesStore, ASaveTouchesItsOwnSectionAlone) {
    const std::string paths =
        "<DP_Section id=\"DP\" description=\"Default Path\"><DP_Group id=\"G\">"
        "<DP_Item id=\"A\" path=\"\xE1\" file=\"\" ext=\"\" "
        "unknown=\"1\"/></DP_Group></DP_Section>";
    const auto rui = "<App_User id=\"RUI\">" + paths + "</App_User>";
    const auto before = document("<!-- kept -->" + others_ + "<App id=\"SALES\">" + rui +
                                 "<App_User id=\"ANA\">" + paths +
                                 "<KV_Section id=\"KV\" description=\"d\"><x y=\"old\"><z/></x>"
                                 "</KV_Section></App_User></App><Rest/>");
    writeFile(file_, before);
    const auto values = sectionWith(kKVSection, L"K", L"G", {{L"Value", L"1"}});
    EXPECT_TRUE(save(values));
    const auto written = document(
        "<!-- kept -->" + others_ + "<App id=\"SALES\">" + rui + "<App_User id=\"ANA\">" + paths +
        "<KV_Section id=\"KV\" description=\"Key Value\"><KV_Group id=\"G\">"
        "<KV_Item id=\"K\" value=\"1\" "
        "key=\"K\"/></KV_Group></KV_Section></App_User></App><Rest/>");
    EXPECT_EQ(compact(readFile(file_)), compact(written));
    // Its last item removed, the section is gone.
    itemsOf(values.Get())->Clear();
    EXPECT_TRUE(save(values));
    EXPECT_EQ(compact(readFile(file_)),
              compact(document("<!-- kept -->" + others_ + "<App id=\"SALES\">" + rui +
                               "<App_User id=\"ANA\">" + paths + "</App_User></App><Rest/>")));
}

TEST_F(PreferencesStore, OnlyNamesEndingInXmlAreDocuments) {
    const auto section = sectionWith(kKVSection, L"K", L"G");
    for (const wchar_t* name : {L"a.dat", L"axml", L"a.xml.bak", L"a.xm", L"xml"}) {
        const std::wstring path = folder_.path(name);
        EXPECT_FALSE(XMLup().saveIntoFile(path, L"A", L"U", section.Get())) << name;
        EXPECT_FALSE(XMLup().createFile(path)) << name;
        EXPECT_FALSE(exists(path)) << name;
        writeFile(path, document(""));
        EXPECT_FALSE(XMLup().loadFromFile(path, L"A", L"U", section.Get())) << name;
        EXPECT_FALSE(XMLup().saveIntoFile(path, L"A", L"U", section.Get())) << name;
        EXPECT_EQ(readFile(path), document("")) << name;
    }
}

TEST_F(PreferencesStore, TextsAreReadAndWrittenWithoutFiles) {
    const auto section = sectionWith(kKVSection, L"K", L"G", {{L"Value", L"é\x0416"}});
    const auto xml = XMLup().saveIntoXml(
        L"<UserPreferences version='1'><App id='Z'/></UserPreferences>", L"a", L"u", section.Get());
    const auto read = makeSection(kKVSection);
    EXPECT_TRUE(XMLup().loadFromXml(xml, L"A", L"U", read.Get()));
    EXPECT_EQ(contents(read.Get()), Lines{L"K@G=é\x0416"});
    EXPECT_NE(xml.find(L"<App id=\"Z\"/>"), xml.npos);
    for (const wchar_t* bad : {L"", L"x", L"<a>", L"<!DOCTYPE a><UserPreferences version='1'/>"}) {
        EXPECT_EQ(XMLup().saveIntoXml(bad, L"a", L"u", section.Get()), L"");
        EXPECT_FALSE(XMLup().loadFromXml(bad, L"a", L"u", section.Get()));
    }
}

TEST_F(PreferencesStore, TheDataSourceConvertsItsNameAndWantsOne) {
    const auto source = make<UPDataSourceXML>(L"");
    auto section = sectionWith(kKVSection, L"K", L"G");
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_EQ(source->Save(nullptr, nullptr, section.GetAddressOf(), &done), S_OK);
    EXPECT_FALSE(isTrue(done));
    EXPECT_EQ(source->put_DataSource(Variant(5L)), S_OK);
    EXPECT_EQ(source->putref_DataSource(Variant(7L)), S_OK);
    Variant name;
    EXPECT_EQ(source->get_DataSource(&name), S_OK);
    EXPECT_EQ(name.vt, VT_BSTR);
    EXPECT_EQ(textOf(name), L"5");
    EXPECT_EQ(source->put_DataSource(Variant(std::wstring_view(file_))), S_OK);
    EXPECT_EQ(source->Save(nullptr, nullptr, section.GetAddressOf(), &done), S_OK);
    EXPECT_TRUE(isTrue(done));
    EXPECT_EQ(source->Load(nullptr, nullptr, nullptr, &done), S_OK);
    EXPECT_FALSE(isTrue(done));
}

// ---- bad input ---------------------------------------------------------------------------------

std::string wide(const std::string& xml) {
    std::string result = "\xFF\xFE";
    for (char c : xml) (result += c) += '\0';
    return result;
}
std::string recoded(const std::string& encoding, const std::string& accent) {
    return "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?><UserPreferences version=\"1\">" +
           "<App id=\"_ALL_\"><App_User id=\"RUI\"><KV_Section id=\"KV\"><g id=\"G\"><i id=\"A\" "
           "value=\"" +
           accent + "\"/></g></KV_Section></App_User></App></UserPreferences>";
}
std::string fiftyMegabytes() {
    std::string items;
    const std::string filler(1000, 'x');
    for (int i = 0; items.size() < 50u << 20; ++i) {
        items += "<i id=\"" + std::to_string(i) + "\" path=\"" + filler + "\"/>";
    }
    return "<App id=\"BIG\"><App_User id=\"RUI\"><DP_Section id=\"DP\"><g id=\"G\">" + items +
           "</g></DP_Section></App_User></App>";
}
std::string withEntities(const std::string& declarations, const std::string& value) {
    return "<?xml version=\"1.0\"?><!DOCTYPE UserPreferences [" + declarations +
           "]><UserPreferences version=\"1\"><App id=\"SALES\"><App_User id=\"ANA\">"
           "<KV_Section id=\"KV\"><g id=\"G\"><i id=\"A\" value=\"" +
           value + "\"/>" + value + "</g></KV_Section></App_User></App></UserPreferences>";
}
std::string billionLaughs() {
    std::string declarations = "<!ENTITY a0 \"ha\">";
    for (int i = 1; i < 40; ++i) {
        const auto before = "&a" + std::to_string(i - 1) + ";";
        declarations += "<!ENTITY a" + std::to_string(i) + " \"" + before + before + "\">";
    }
    return withEntities(declarations, "&a39;");
}

TEST_F(PreferencesStore, BadDocumentsLoseNothing) {
    enum After { Kept, SetAside, Merged };
    const std::string good = document(others_), accents = "\xE7";
    struct {
        const char* what;
        std::string content;
        DWORD attributes, held;  // held: the share mode of another program's handle; 99 for none
        bool loaded, saved;
        After after;
    } const table[] = {
        {"empty", "", FILE_ATTRIBUTE_NORMAL, 99, false, true, Merged},
        {"truncated", good.substr(0, good.size() - 30), FILE_ATTRIBUTE_NORMAL, 99, false, true,
         SetAside},
        {"not XML", "hello", FILE_ATTRIBUTE_HIDDEN, 99, false, true, SetAside},
        {"NULs", std::string(1000, '\0'), FILE_ATTRIBUTE_NORMAL, 99, false, true, SetAside},
        {"another root", "<Other version=\"1\"/>", FILE_ATTRIBUTE_NORMAL, 99, false, false, Kept},
        {"undeclared accents", "<UserPreferences version=\"1\" x=\"" + accents + "\"/>",
         FILE_ATTRIBUTE_NORMAL, 99, false, true, SetAside},
        {"UTF-8", recoded("utf-8", "\xC3\xA7"), FILE_ATTRIBUTE_NORMAL, 99, true, true, Merged},
        {"Latin-1", recoded("iso-8859-1", accents), FILE_ATTRIBUTE_NORMAL, 99, true, true, Merged},
        {"UTF-16", wide(recoded("utf-16", accents)), FILE_ATTRIBUTE_NORMAL, 99, true, true, Merged},
        {"hidden", recoded("windows-1252", accents), FILE_ATTRIBUTE_HIDDEN, 99, true, true, Merged},
        {"read-only", good, FILE_ATTRIBUTE_READONLY, 99, true, false, Kept},
        {"locked", good, FILE_ATTRIBUTE_NORMAL, 0, false, false, Kept},
        {"being read by another program", good, FILE_ATTRIBUTE_NORMAL, FILE_SHARE_READ, true, false,
         Kept},
        {"entity bomb", billionLaughs(), FILE_ATTRIBUTE_NORMAL, 99, false, true, SetAside},
        {"external entity",
         withEntities("<!ENTITY e SYSTEM \"file:///C:/windows/win.ini\">", "&e;"),
         FILE_ATTRIBUTE_NORMAL, 99, false, true, SetAside},
        {"external DTD",
         "<!DOCTYPE a SYSTEM \"file:///C:/none.dtd\">" + good.substr(good.find("<U")),
         FILE_ATTRIBUTE_NORMAL, 99, false, true, SetAside},
    };
    int number = 0;
    for (const auto& row : table) {
        SCOPED_TRACE(row.what);
        file_ = folder_.path(std::to_wstring(++number) + L".xml");
        writeFile(file_, row.content);
        SetFileAttributesW(file_.c_str(), row.attributes);
        HANDLE holder = INVALID_HANDLE_VALUE;
        if (row.held != 99) {
            holder = CreateFileW(file_.c_str(), GENERIC_READ, row.held, nullptr, OPEN_EXISTING, 0,
                                 nullptr);
            ASSERT_NE(holder, INVALID_HANDLE_VALUE);
        }
        const auto section = makeSection(kKVSection);
        const DWORD start = GetTickCount();
        EXPECT_EQ(load(section.Get()), row.loaded);
        EXPECT_EQ(contents(section.Get()), Lines{});
        EXPECT_EQ(save(sectionWith(kKVSection, L"K", L"G", {{L"Value", L"1"}})), row.saved);
        EXPECT_LT(GetTickCount() - start, 4000u);
        CloseHandle(holder);

        const auto rest = folder_.path(std::to_wstring(number) + L".xml.bad");
        EXPECT_EQ(readFile(rest), row.after == SetAside ? row.content : "");
        EXPECT_EQ(exists(rest), row.after == SetAside);
        EXPECT_FALSE(exists(file_ + L".tmp"));
        EXPECT_EQ(attributes(file_) & 3, row.attributes & 3);  // read-only, hidden
        if (row.after == Kept) {
            EXPECT_EQ(readFile(file_), row.content);
        } else {
            EXPECT_EQ(stored(kKVSection), Lines{L"K@G=1"});
        }
        if (row.after == Merged && !row.content.empty()) {
            EXPECT_EQ(stored(kKVSection, {L"Value"}, L"_ALL_", L"RUI"), Lines{L"A@G=ç"});
        }
        SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL);
    }
}

// A parser may have a limit below this size; the document is then kept whole, as an unreadable one.
TEST_F(PreferencesStore, FiftyMegabytesAreKept) {
    const std::string big = fiftyMegabytes();
    writeFile(file_, document(big));
    EXPECT_TRUE(save(sectionWith(kKVSection, L"K", L"G", {{L"Value", L"1"}})));
    EXPECT_EQ(stored(kKVSection), Lines{L"K@G=1"});
    const auto kept = exists(file_ + L".bad") ? file_ + L".bad" : file_;
    EXPECT_TRUE(readFile(kept).find(big.substr(big.size() - 2000, 1000)) != std::string::npos);
    EXPECT_GT(readFile(kept).size(), big.size());
}

TEST_F(PreferencesStore, AFolderIsNoDocument) {
    CreateDirectoryW(file_.c_str(), nullptr);
    const auto section = sectionWith(kKVSection, L"K", L"G");
    EXPECT_FALSE(load(section.Get()));
    EXPECT_FALSE(save(section));
    EXPECT_FALSE(XMLup().createFile(file_));
    EXPECT_TRUE(attributes(file_) & FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_FALSE(exists(file_ + L".bad"));
}

TEST_F(PreferencesStore, EveryUnreadableDocumentIsKept) {
    for (const char* content : {"first", "second", "third"}) {
        writeFile(file_, content);
        EXPECT_FALSE(save(makeSection(kKVSection)));  // nothing to write: nothing is replaced
        EXPECT_EQ(readFile(file_), content);
        EXPECT_TRUE(save(sectionWith(kKVSection, L"K", L"G")));
    }
    EXPECT_EQ(readFile(file_ + L".bad"), "first");
    EXPECT_EQ(readFile(file_ + L".1.bad"), "second");
    EXPECT_EQ(readFile(file_ + L".2.bad"), "third");
}

TEST_F(PreferencesStore, IdentitiesOfEveryKind) {
    const std::wstring longText(10000, L'Ç');
    struct {
        std::wstring application, user, id, group;
        bool done;
    } const table[] = {
        {L"ação", L"josé", L"É", L"Ü", true},
        {L" a  b ", L" u ", L"a b", L" ", true},
        {L"a'b<&>", L"x]/..", L"'\"<&>]", L"'<&>/*", true},
        {L"", L"", L"", L"", true},
        {L"\x0416", L"\x4E2D", L"\x0416", L"\x0416", true},
        {longText, longText, longText, longText, true},
        {L"a\tb\nc", L"u", L"a\tb\nc", L"g\tg", true},
        {L"a\"b", L"u", L"k", L"g", false},
        {L"a", L"\"", L"k", L"g", false},
        {L"a", L"u", L"k", L"g\"g", false},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.application.substr(0, 20) + L"/" + row.user.substr(0, 20));
        SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL);
        writeFile(file_, document(others_));
        const auto section = sectionWith(kDPSection, row.id, row.group, {{L"Path", L"p"}});
        EXPECT_EQ(save(section.Get(), row.application, row.user), row.done);
        EXPECT_NE(compact(readFile(file_)).find(others_), std::string::npos);
        if (!row.done) {
            EXPECT_EQ(readFile(file_), document(others_));
            continue;
        }
        const std::string once = readFile(file_);
        EXPECT_EQ(stored(kDPSection, {L"Path"}, row.application, row.user),
                  Lines{row.id + L"@" + row.group + L"=p"});
        EXPECT_TRUE(save(section.Get(), row.application, row.user));
        EXPECT_EQ(readFile(file_), once);
    }
}

TEST_F(PreferencesStore, ADocumentThatVanishesIsMadeAnew) {
    const auto section = sectionWith(kKVSection, L"K", L"G");
    EXPECT_TRUE(save(section));
    EXPECT_TRUE(load(section.Get()));
    DeleteFileW(file_.c_str());
    EXPECT_TRUE(save(section));
    EXPECT_EQ(attributes(file_), kNewFile);
    EXPECT_EQ(stored(kKVSection), Lines{L"K@G="});
}

TEST_F(PreferencesStore, TwoManagersOfOneDocumentLoseNothing) {
    const auto source = make<UPDataSourceXML>(file_);
    struct {
        const wchar_t* user;
        const SectionKind& kind;
        ComPtr<UPManager> manager;
    } table[] = {{L"ana", kKVSection, make<UPManager>()},
                 {L"ana", kRPSection, make<UPManager>()},
                 {L"rui", kKVSection, make<UPManager>()}};
    for (auto& row : table) {
        const auto section = makeSection(row.kind);
        section->putref_DataSourceManager(source.Get());
        row.manager->setUserId(row.user);
        row.manager->add(section);
        row.manager->load();
        EXPECT_EQ(addItem(section.Get(), L"K", L"G", {{L"Value", row.user}}), S_OK);
    }
    for (auto& row : table) row.manager->save();
    EXPECT_EQ(stored(kKVSection, {L"Value"}, L"_all_", L"ana"), Lines{L"K@G=ana"});
    EXPECT_EQ(stored(kRPSection, {L"Value"}, L"_all_", L"ana"), Lines{L"@@0@G=ana"});
    EXPECT_EQ(stored(kKVSection, {L"Value"}, L"_all_", L"rui"), Lines{L"K@G=rui"});
}

}  // namespace
}  // namespace vela::test
