#include "preferences/UPDataSourceXML.h"
#include "preferences/UPManager.h"
#include "preferences/preferences_support.h"

namespace vela::test {
namespace {

constexpr DWORD kNewFile = 34;  // hidden and archive

class PreferencesStore : public NoObjectsLeft {
  protected:
    bool load(_IUPSection* section, const std::wstring& application = L"sales",
              const std::wstring& user = L"ana") {
        XMLup::emptyCache();
        return XMLup().loadFromFile(file_, application, user, section);
    }
    bool save(const ComPtr<_IUPSection>& section, const std::wstring& application = L"sales",
              const std::wstring& user = L"ana") {
        return XMLup().saveIntoFile(file_, application, user, section.Get());
    }
    bool saveValue() { return save(sectionWith(kKVSection, L"K", L"G", {{L"Value", L"1"}})); }
    // What a new section of the kind reads.
    std::wstring stored(const SectionKind& kind, const std::wstring& fields = L"Value",
                        const std::wstring& application = L"sales",
                        const std::wstring& user = L"ana") {
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
    struct {
        const SectionKind& kind;
        std::string groups;
        const wchar_t *fields, *expected;
        bool loaded = true;
    } const table[] = {
        // Names of elements and first attributes do not count.
        {kKVSection, "<x y='g'><z w='k' value='1'/></x>", L"Value", L"K@G=1 "},
        // A group and an Id are stored as the class stores them.
        {kDPSection, "<g id='Ex'><i id='Inv' ext='csv' PATH='C:\\' file='f'/></g>",
         L"Path File Ext", L"Inv@Ex=C:\\ f csv "},
        // Unknown attributes, and numbers that do not fit.
        {kUISection,
         "<g id='G'><i id='W' nosuch='1' left='99999999999' top='abc' height='' searchkey='x'"
         " WindowState='2' ScreenWXH='s' width='-12'/></g>",
         L"ScreenWxH Width Left Top Height WindowState", L"W@G=s -12 0 0 0 2 "},
        {kPPSection, "<g id='1'><i id='A' copies='32768' orientation='2' printername='hp'/></g>",
         L"Copies Orientation PrinterName", L"A@1=1 2 HP "},
        // Of two with one identity the last stays, at the end.
        {kKVSection,
         "<g id='G'><i id='A' value='1'/><i id='B' value='2'/></g><g id='g'><i id='a' value='3'/>"
         "</g>",
         L"Value", L"B@G=2 A@G=3 "},
        {kKVSection, " x <!-- y --><g id=''>\n<i id='A' value='1'/> </g>", L"Value", L"A@=1 "},
        // A group without attributes.
        {kKVSection, "<g id='G'><i id='A' value='1'/></g><g/>", L"Value", L"A@G=1 ", false},
        // A report parameter's Id follows its fields.
        {kRPSection, "<g id='G'><i id='old' view='V' field='F' mode='2' value='v'/></g>", L"Value",
         L"V@F@2@G=v "},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.groups);
        const std::string id(row.kind.id, row.kind.id + 2);
        const auto section = makeSection(row.kind);
        writeFile(file_, document(others_ + ofAna("<" + id + "_Section id='" + id + "'>" +
                                                  row.groups + "</" + id + "_Section>")));
        EXPECT_EQ(load(section.Get()), row.loaded);
        EXPECT_EQ(contents(section.Get(), row.fields), row.expected);
    }
    for (const char* nothing : {"<XX_Section id='XX'><g/></XX_Section>", "<KV_Section id='KV'/>",
                                "<KV_Section id='X'><g id='G'><i id='A'/></g></KV_Section>"}) {
        writeFile(file_, document(others_ + ofAna(nothing)));
        EXPECT_EQ(stored(kKVSection), L"") << nothing;
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
    const auto write = [&](const std::string& value) {
        writeFile(file_, document(ofAna("<KV_Section id='KV'><g id='G'><i id='A' value='" + value +
                                        "'/></g></KV_Section>")));
    };
    const auto read = [&] {
        const auto section = makeSection(kKVSection);
        EXPECT_TRUE(XMLup().loadFromFile(file_, L"SALES", L"ANA", section.Get()));
        return contents(section.Get());
    };
    write("1");
    EXPECT_EQ(stored(kKVSection), L"A@G=1 ");
    write("2");
    EXPECT_EQ(read(), L"A@G=1 ");
    EXPECT_TRUE(yes(make<UPManager>().Get(), &_UPManager::Save));
    EXPECT_EQ(read(), L"A@G=2 ");
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

// A caller's item with a date: its properties are known from type information alone.
ComPtr<IDispatch> datedItem(double date) {
    static wchar_t names[][12] = {L"When", L"Value"};
    static PARAMDATA value[] = {{names[1], VT_DATE}};
    static METHODDATA methods[] = {
        {names[0], value, 1, 0, CC_STDCALL, 1, DISPATCH_PROPERTYPUT, VT_EMPTY}};
    static INTERFACEDATA interfaceData{methods, 1};
    Variant when;
    when.vt = VT_DATE;
    when.date = date;
    auto item = scriptObject(
        {{L"Id", str(L"")}, {L"Group", str(L"")}, {L"SearchKey", str(L"a@g")}, {L"When", when}});
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
    const SectionKind kind{L"XX", L"", L"[when]", [] { return datedItem(dateToWrite); }};
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
        EXPECT_TRUE(stored(kKVSection) == L"K@G=" + row.read + L" ") << row.text.substr(0, 40);
    }
}

TEST_F(PreferencesStore, ASaveTouchesItsOwnSectionAlone) {
    const std::string paths =
        "<DP_Section id=\"DP\" description=\"Default Path\"><DP_Group id=\"G\">"
        "<DP_Item id=\"A\" path=\"\xE1\" file=\"\" ext=\"\" "
        "unknown=\"1\"/></DP_Group></DP_Section>";
    const auto holding = [&](const std::string& values) {
        return compact(document(
            "<!-- kept -->" + others_ + "<App id=\"SALES\"><App_User id=\"RUI\">" + paths +
            "</App_User><App_User id=\"ANA\">" + paths + values + "</App_User></App><Rest/>"));
    };
    writeFile(file_, holding("<KV_Section id=\"KV\"><x y=\"old\"><z/></x></KV_Section>"));
    const auto values = sectionWith(kKVSection, L"K", L"G", {{L"Value", L"1"}});
    EXPECT_TRUE(save(values));
    EXPECT_EQ(compact(readFile(file_)),
              holding("<KV_Section id=\"KV\" description=\"Key Value\"><KV_Group id=\"G\">"
                      "<KV_Item id=\"K\" value=\"1\" key=\"K\"/></KV_Group></KV_Section>"));
    itemsOf(values.Get())->Clear();  // its last item removed, the section is gone
    EXPECT_TRUE(save(values));
    EXPECT_EQ(compact(readFile(file_)), holding(""));
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
    EXPECT_EQ(contents(read.Get()), L"K@G=é\x0416 ");
    EXPECT_NE(xml.find(L"<App id=\"Z\"/>"), xml.npos);
    for (const wchar_t* bad : {L"", L"x", L"<a>", L"<!DOCTYPE a><UserPreferences version='1'/>"}) {
        EXPECT_EQ(XMLup().saveIntoXml(bad, L"a", L"u", section.Get()), L"");
        EXPECT_FALSE(XMLup().loadFromXml(bad, L"a", L"u", section.Get()));
    }
}

TEST_F(PreferencesStore, TheDataSourceConvertsItsNameAndWantsOne) {
    const auto source = make<UPDataSourceXML>(L"");
    auto section = sectionWith(kKVSection, L"K", L"G");
    const auto saves = [&] {
        return yes(source.Get(), &_IUPDataSource::Save, nullptr, nullptr, section.GetAddressOf());
    };
    EXPECT_FALSE(saves());
    EXPECT_EQ(source->put_DataSource(Variant(5L)), S_OK);
    EXPECT_EQ(source->putref_DataSource(Variant(7L)), S_OK);
    const auto name = got<Variant>(source.Get(), &_IUPDataSource::get_DataSource);
    EXPECT_EQ(name.vt, VT_BSTR);
    EXPECT_EQ(textOf(name), L"5");
    EXPECT_EQ(source->put_DataSource(str(file_)), S_OK);
    EXPECT_TRUE(saves());
    EXPECT_FALSE(yes(source.Get(), &_IUPDataSource::Load, nullptr, nullptr, nullptr));
}

// ---- bad input ---------------------------------------------------------------------------------

std::string wide(const std::string& xml) {
    std::string result = "\xFF\xFE";
    for (char c : xml) (result += c) += '\0';
    return result;
}
std::string recoded(const std::string& encoding, const std::string& accent) {
    return "<?xml version=\"1.0\" encoding=\"" + encoding +
           "\"?><UserPreferences version=\"1\"><App id=\"_ALL_\"><App_User id=\"RUI\">"
           "<KV_Section id=\"KV\"><g id=\"G\"><i id=\"A\" value=\"" +
           accent + "\"/></g></KV_Section></App_User></App></UserPreferences>";
}
std::string withEntities(const std::string& declarations, const std::string& value) {
    return "<?xml version=\"1.0\"?><!DOCTYPE UserPreferences [" + declarations +
           "]><UserPreferences version=\"1\">" +
           ofAna("<KV_Section id=\"KV\"><g id=\"G\"><i id=\"A\" value=\"" + value + "\"/>" + value +
                 "</g></KV_Section>") +
           "</UserPreferences>";
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
    enum Fate { Refused, ReadOnly, SetAside, Begun, Merged };
    const std::string good = document(others_), accents = "\xE7";
    struct {
        const char* what;
        std::string content;
        Fate fate;
        DWORD attributes = FILE_ATTRIBUTE_NORMAL;
        DWORD held = 99;  // the share mode of another program's handle; 99 for none
    } const table[] = {
        {"empty", "", Begun},
        {"truncated", good.substr(0, good.size() - 30), SetAside},
        {"not XML", "hello", SetAside, FILE_ATTRIBUTE_HIDDEN},
        {"NULs", std::string(1000, '\0'), SetAside},
        {"another root", "<Other version=\"1\"/>", Refused},
        {"undeclared accents", "<UserPreferences version=\"1\" x=\"" + accents + "\"/>", SetAside},
        {"UTF-8", recoded("utf-8", "\xC3\xA7"), Merged},
        {"Latin-1", recoded("iso-8859-1", accents), Merged},
        {"UTF-16", wide(recoded("utf-16", accents)), Merged},
        {"hidden", recoded("windows-1252", accents), Merged, FILE_ATTRIBUTE_HIDDEN},
        {"read-only", good, ReadOnly, FILE_ATTRIBUTE_READONLY},
        {"locked", good, Refused, FILE_ATTRIBUTE_NORMAL, 0},
        {"being read", good, ReadOnly, FILE_ATTRIBUTE_NORMAL, FILE_SHARE_READ},
        {"entity bomb", billionLaughs(), SetAside},
        {"external entity",
         withEntities("<!ENTITY e SYSTEM \"file:///C:/windows/win.ini\">", "&e;"), SetAside},
        {"external DTD",
         "<!DOCTYPE a SYSTEM \"file:///C:/none.dtd\">" + good.substr(good.find("<U")), SetAside},
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
        EXPECT_EQ(load(section.Get()), row.fate == ReadOnly || row.fate == Merged);
        EXPECT_EQ(contents(section.Get()), L"");
        EXPECT_EQ(saveValue(), row.fate >= SetAside);
        EXPECT_LT(GetTickCount() - start, 4000u);
        CloseHandle(holder);

        EXPECT_EQ(readFile(file_ + L".bad"), row.fate == SetAside ? row.content : "");
        EXPECT_EQ(exists(file_ + L".bad"), row.fate == SetAside);
        EXPECT_FALSE(exists(file_ + L".tmp"));
        EXPECT_EQ(attributes(file_) & 3, row.attributes & 3);  // read-only, hidden
        if (row.fate < SetAside) {
            EXPECT_EQ(readFile(file_), row.content);
        } else {
            EXPECT_EQ(stored(kKVSection), L"K@G=1 ");
            EXPECT_EQ(stored(kKVSection, L"Value", L"_ALL_", L"RUI"),
                      row.fate == Merged ? L"A@G=ç " : L"");
        }
        SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL);
    }
}

// A parser may have a limit below this size; the document is then kept whole, as an unreadable one.
TEST_F(PreferencesStore, FiftyMegabytesAreKept) {
    std::string big;
    for (int i = 0; big.size() < 50u << 20; ++i) {
        big += "<i id=\"" + std::to_string(i) + "\" path=\"" + std::string(1000, 'x') + "\"/>";
    }
    writeFile(file_,
              document("<App id=\"BIG\"><App_User id=\"RUI\"><DP_Section id=\"DP\"><g id=\"G\">" +
                       big + "</g></DP_Section></App_User></App>"));
    EXPECT_TRUE(saveValue());
    EXPECT_EQ(stored(kKVSection), L"K@G=1 ");
    const auto kept = readFile(exists(file_ + L".bad") ? file_ + L".bad" : file_);
    EXPECT_TRUE(kept.find(big.substr(big.size() - 2000, 1000)) != std::string::npos);
    EXPECT_GT(kept.size(), big.size());
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
        EXPECT_EQ(save(section, row.application, row.user), row.done);
        if (!row.done) {
            EXPECT_EQ(readFile(file_), document(others_));
            continue;
        }
        const std::string once = readFile(file_);
        EXPECT_NE(compact(once).find(others_), std::string::npos);
        EXPECT_EQ(stored(kDPSection, L"Path", row.application, row.user),
                  row.id + L"@" + row.group + L"=p ");
        EXPECT_TRUE(save(section, row.application, row.user));
        EXPECT_EQ(readFile(file_), once);
    }
}

TEST_F(PreferencesStore, ADocumentThatVanishesIsMadeAnew) {
    EXPECT_TRUE(saveValue());
    EXPECT_EQ(stored(kKVSection), L"K@G=1 ");
    DeleteFileW(file_.c_str());
    EXPECT_TRUE(saveValue());
    EXPECT_EQ(attributes(file_), kNewFile);
    EXPECT_EQ(stored(kKVSection), L"K@G=1 ");
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
    EXPECT_EQ(stored(kKVSection, L"Value", L"_all_", L"ana"), L"K@G=ana ");
    EXPECT_EQ(stored(kRPSection, L"Value", L"_all_", L"ana"), L"@@0@G=ana ");
    EXPECT_EQ(stored(kKVSection, L"Value", L"_all_", L"rui"), L"K@G=rui ");
}

}  // namespace
}  // namespace vela::test
