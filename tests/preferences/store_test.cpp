#include <optional>

#include "preferences/preferences_support.h"

namespace vela::test {
namespace {

constexpr DWORD kNewFile = 34;  // hidden and archive

// A document as this library writes it.
std::string document(const std::string& applications) {
    return "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\r\n<UserPreferences version=\"1\">" +
           applications + "</UserPreferences>\r\n";
}
std::string ofAna(const std::string& sections) {
    return "<App id=\"SALES\"><App_User id=\"ANA\">" + sections + "</App_User></App>";
}
std::string withValue(const std::string& value) {
    return "<KV_Section id=\"KV\"><g id=\"G\"><i id=\"A\" value=\"" + value +
           "\"/></g></KV_Section>";
}
// Without the line breaks and indents that some parsers write between elements.
std::string compact(std::string xml) {
    for (std::size_t at = 0; (at = xml.find(">\r\n", at)) != xml.npos; ++at) {
        const auto next = xml.find_first_not_of("\r\n\t ", at + 1);
        if (next != xml.npos && xml[next] == '<') xml.erase(at + 1, next - at - 1);
    }
    return xml;
}

class PreferencesStore : public NoObjectsLeft {
  protected:
    bool load(_IUPSection* section, const std::wstring& application = L"sales",
              const std::wstring& user = L"ana") {
        forgetDocuments();
        return XMLup().loadFromFile(file_, application, user, section);
    }
    bool save(const ComPtr<_IUPSection>& section, const std::wstring& application = L"sales",
              const std::wstring& user = L"ana") {
        return XMLup().saveIntoFile(file_, application, user, section.Get());
    }
    bool saveValue() { return save(sectionWith(kKVSection, L"K", L"G", {{L"Value", L"1"}})); }
    // What a new section of the kind reads.
    std::wstring stored(const SectionKind& kind, const wchar_t* field = L"Value") {
        const auto section = makeSection(kind);
        EXPECT_TRUE(load(section.Get()));
        return contents(section.Get(), field);
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
    const struct {
        const SectionKind& kind;
        std::string groups;
        const wchar_t *fields, *expected;
    } table[] = {
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
        // Of two with one identity the last stays, at the end.
        {kKVSection,
         "<g id='G'><i id='A' value='1'/><i id='B' value='2'/></g> x <!-- y -->"
         "<g id='g'><i id='a' value='3'/></g>",
         L"Value", L"B@G=2 A@G=3 "},
        // A group without attributes, and one that any character is in.
        {kKVSection,
         "<g id=''><i id='A' value='1'/></g><g><i id='B'/></g><g id='&quot;'><i id='C'/></g>",
         L"Value", L"A@=1 C@\"= "},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.groups);
        const std::string id(row.kind.id, row.kind.id + 2);
        const auto section = makeSection(row.kind);
        writeFile(file_, document(others_ + ofAna("<" + id + "_Section id='" + id + "'>" +
                                                  row.groups + "</" + id + "_Section>")));
        EXPECT_TRUE(load(section.Get()));
        EXPECT_EQ(contents(section.Get(), row.fields), row.expected);
    }
}

TEST_F(PreferencesStore, ReadsAFileOnceUntilTheManagerSaves) {
    const auto read = [&] {
        const auto section = makeSection(kKVSection);
        EXPECT_TRUE(XMLup().loadFromFile(file_, L"SALES", L"ANA", section.Get()));
        return contents(section.Get());
    };
    writeFile(file_, document(ofAna(withValue("1"))));
    EXPECT_EQ(stored(kKVSection), L"A@G=1 ");
    writeFile(file_, document(ofAna(withValue("2"))));
    EXPECT_TRUE(save(sectionWith(kDPSection, L"K", L"G")));  // into what is there now
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
    EXPECT_TRUE(saveValue());
    EXPECT_FALSE(attributes(file_) & FILE_ATTRIBUTE_HIDDEN);
    EXPECT_TRUE(XMLup().createFile(file_));
    EXPECT_EQ(readFile(file_),
              "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\r\n<UserPreferences "
              "version=\"1\"/>\r\n");
}

TEST_F(PreferencesStore, AnyTextComesBack) {
    const std::wstring pair{wchar_t(0xD83D), wchar_t(0xDE00)};
    const struct {
        std::wstring text, read = text;
    } table[] = {
        {L"ação €Žž™ \x0416\x4E2D" + pair},
        {L"\"'<a b='&amp;'/>]]>&#10;<!--"},
        {L"  a\r\nb\tc\n "},
        {std::wstring(L"a\0b\x01\x1F", 5) + L"c" + wchar_t(0xFFFF), L"abc"},
        {pair.substr(0, 1) + L"x" + pair.substr(1), L"x"},
        {std::wstring(1000000, L'é')},
        {L""},
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
    const auto holding = [&](const std::string& values) {
        return compact(document("<!-- kept -->" + others_ +
                                "<App id=\"SALES\"><App_User id=\"RUI\">" + withValue("\xE1") +
                                "</App_User><App_User id=\"ANA\"><DP_Section/>" + values +
                                "</App_User></App><Rest/>"));
    };
    writeFile(file_, holding(withValue("old")));
    const auto values = sectionWith(kKVSection, L"K", L"G", {{L"Value", L"1"}});
    EXPECT_TRUE(save(values));
    EXPECT_EQ(compact(readFile(file_)),
              holding("<KV_Section id=\"KV\" description=\"Key Value\"><KV_Group id=\"G\">"
                      "<KV_Item id=\"K\" value=\"1\" key=\"K\"/></KV_Group></KV_Section>"));
    itemsOf(values.Get())->Clear();  // its last item removed, the section is gone
    EXPECT_TRUE(save(values));
    EXPECT_EQ(compact(readFile(file_)), holding(""));
}

TEST_F(PreferencesStore, OnlyFilesWithNamesEndingInXmlAreDocuments) {
    for (const wchar_t* name : {L"a.dat", L"axml", L"a.xml.bak"}) {
        file_ = folder_.path(name);
        writeFile(file_, document(""));
        EXPECT_FALSE(load(makeSection(kKVSection).Get())) << file_;
        EXPECT_FALSE(saveValue()) << file_;
        EXPECT_FALSE(XMLup().createFile(file_)) << file_;
        EXPECT_EQ(readFile(file_), document(""));
    }
    file_ = folder_.path(L"folder.xml");
    CreateDirectoryW(file_.c_str(), nullptr);
    EXPECT_FALSE(saveValue());
}

TEST_F(PreferencesStore, TextsAreReadAndWrittenWithoutFiles) {
    const auto section = sectionWith(kKVSection, L"K", L"G", {{L"Value", L"é\x0416"}});
    const auto saved = [&](const wchar_t* xml) {
        return XMLup().saveIntoXml(xml, L"a", L"u", section.Get());
    };
    const auto read = makeSection(kKVSection);
    EXPECT_TRUE(
        XMLup().loadFromXml(saved(L"<UserPreferences version='1'/>"), L"A", L"U", read.Get()));
    EXPECT_EQ(contents(read.Get()), L"K@G=é\x0416 ");
    EXPECT_EQ(saved(L"<Other version='1'/>"), L"");
}

// ---- bad input ---------------------------------------------------------------------------------

TEST_F(PreferencesStore, BadDocumentsLoseNothing) {
    enum Fate { Refused, ReadOnly, SetAside, Begun, Merged };
    const std::string good = document(others_), values = document(ofAna(withValue("\xE7")));
    const struct {
        const char* what;
        std::string content;
        Fate fate;
        DWORD attributes = FILE_ATTRIBUTE_NORMAL;
        std::optional<DWORD> held = {};  // the share mode of another program's handle
    } table[] = {
        {"empty", "", Begun},
        {"truncated", good.substr(0, good.size() - 30), SetAside},
        {"not XML", "hello", SetAside, FILE_ATTRIBUTE_HIDDEN},
        {"another root", "<Other version=\"1\"/>", Refused},
        {"undeclared accents", "<UserPreferences version=\"1\" x=\"\xE7\"/>", SetAside},
        {"UTF-8",
         "<UserPreferences version=\"1\">" + ofAna(withValue("\xC3\xA7")) + "</UserPreferences>",
         Merged},
        {"hidden", values, Merged, FILE_ATTRIBUTE_HIDDEN},
        {"read-only", good, ReadOnly, FILE_ATTRIBUTE_READONLY},
        {"locked", good, Refused, FILE_ATTRIBUTE_NORMAL, 0},
        {"being read", good, ReadOnly, FILE_ATTRIBUTE_NORMAL, FILE_SHARE_READ},
        {"a document type", "<!DOCTYPE a><UserPreferences version=\"1\"/>", SetAside},
    };
    int number = 0;
    for (const auto& row : table) {
        SCOPED_TRACE(row.what);
        file_ = folder_.path(std::to_wstring(++number) + L".xml");
        writeFile(file_, row.content);
        SetFileAttributesW(file_.c_str(), row.attributes);
        HANDLE holder = INVALID_HANDLE_VALUE;
        if (row.held) {
            holder = CreateFileW(file_.c_str(), GENERIC_READ, *row.held, nullptr, OPEN_EXISTING, 0,
                                 nullptr);
            ASSERT_NE(holder, INVALID_HANDLE_VALUE);
        }
        const std::wstring read = row.fate == Merged ? L"A@G=ç " : L"";
        const auto section = makeSection(kKVSection);
        EXPECT_EQ(load(section.Get()), row.fate == ReadOnly || row.fate == Merged);
        EXPECT_EQ(contents(section.Get()), read);
        EXPECT_EQ(save(sectionWith(kDPSection, L"K", L"G")), row.fate >= SetAside);
        CloseHandle(holder);

        EXPECT_EQ(readFile(file_ + L".bad"), row.fate == SetAside ? row.content : "");
        EXPECT_EQ(exists(file_ + L".bad"), row.fate == SetAside);
        EXPECT_FALSE(exists(file_ + L".vela.tmp"));
        EXPECT_EQ(attributes(file_) & 3, row.attributes & 3);  // read-only, hidden
        if (row.fate < SetAside) {
            EXPECT_EQ(readFile(file_), row.content);
        } else {
            EXPECT_EQ(stored(kDPSection, L"Path"), L"K@G= ");
            EXPECT_EQ(stored(kKVSection), read);
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
              document(ofAna("<DP_Section id=\"DP\"><g id=\"G\">" + big + "</g></DP_Section>")));
    EXPECT_TRUE(saveValue());
    EXPECT_EQ(stored(kKVSection), L"K@G=1 ");
    EXPECT_GT(readFile(exists(file_ + L".bad") ? file_ + L".bad" : file_).size(), big.size());
}

TEST_F(PreferencesStore, EveryUnreadableDocumentIsKept) {
    for (const char* content : {"first", "second", "third"}) {
        writeFile(file_, content);
        // Nothing to write, and what cannot be written: nothing is replaced, nor copied.
        EXPECT_FALSE(save(makeSection(kKVSection)));
        EXPECT_FALSE(save(sectionWith(kKVSection, L"K", L"G"), L"\""));
        EXPECT_EQ(readFile(file_), content);
        EXPECT_TRUE(saveValue());
    }
    EXPECT_EQ(readFile(file_ + L".bad"), "first");
    EXPECT_EQ(readFile(file_ + L".1.bad"), "second");
    EXPECT_EQ(readFile(file_ + L".2.bad"), "third");
}

TEST_F(PreferencesStore, IdentitiesOfEveryKind) {
    const std::wstring longText(10000, L'Ç');
    const struct {
        std::wstring application, user, id, group;
        bool done = true;
    } table[] = {
        {L"ação", L"\x4E2D", L"É", L"\x0416"},
        {L"a'b<&>", L"x]/..", L"'\"<&>]", L"'<&>/*"},
        {L"", L"", L"", L""},
        {longText, longText, longText, longText},
        {L"a", L"\"", L"k", L"g", false},
        {L"a", L"u", L"k", L"g\"g"},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.application.substr(0, 20) + L"/" + row.user.substr(0, 20));
        writeFile(file_, document(others_));
        const auto section = sectionWith(kDPSection, row.id, row.group, {{L"Path", L"p"}});
        EXPECT_EQ(save(section, row.application, row.user), row.done);
        EXPECT_NE(compact(readFile(file_)).find(others_), std::string::npos);
        const auto read = makeSection(kDPSection);
        load(read.Get(), row.application, row.user);
        EXPECT_EQ(contents(read.Get(), L"Path"),
                  row.done ? row.id + L"@" + row.group + L"=p " : L"");
    }
}

}  // namespace
}  // namespace vela::test
