#include "xml/core/xml_scanner.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

// What the scanner tells of a text: "1" with a blank and "name=value;" for each attribute where an
// element of the first depth starts, "/1" where it ends, "." at the end.
std::wstring told(std::wstring_view text) {
    std::wstring result;
    XmlScanner scanner(text);
    for (auto event = scanner.next(); event != XmlScanner::Event::Done; event = scanner.next()) {
        const bool isStart = event == XmlScanner::Event::Start;
        result += (isStart ? L"" : L"/") + std::to_wstring(scanner.depth() + (isStart ? 0 : 1));
        for (const auto& [name, value] : scanner.attributes()) {
            result += L" " + std::wstring(name) + L"=" + value + L";";
        }
    }
    EXPECT_EQ(scanner.next(), XmlScanner::Event::Done);
    EXPECT_TRUE(scanner.attributes().empty());
    return result + L".";
}

TEST(XmlScanner, TellsOfElementsAndTheirAttributes) {
    const std::pair<std::wstring, std::wstring> table[] = {
        {L"", L"."},
        {L"\xFEFF<?xml version='1.0'?>\r\n<a><b/><c>x</c></a>\n", L"12/22/2/1."},
        {L"<a x=\"1\" longer='2 >'\n\ty = \"\" ><b y='&amp;'/></a >",
         L"1 x=1; longer=2 >; y=;2 y=&;/2/1."},
        {L"<a>&unknown; ]]> \"<!-- <b> -- --><![CDATA[<b>]] ]]><?pi <b>?><b/></a>", L"12/2/1."},
        {L"<p:a\x00E9 q:x='&lt;&gt;&quot;&apos;&#65;&#x4a;&#x4A;&#9;'/>", L"1 q:x=<>\"'AJJ\t;/1."},
        {L"<a x='\r\n\t \"'/>", L"1 x=\r\n\t \";/1."},
        {L"<a x='&#x1F600;&#65535;'/>", L"."},
        {L"<a x='&#x000001F600;'/>",
         std::wstring(L"1 x=") + wchar_t(0xD83D) + wchar_t(0xDE00) + L";/1."},
    };
    for (const auto& [text, expected] : table) EXPECT_EQ(told(text), expected) << text;
}

TEST(XmlScanner, EndsWhereTheTextIsNotWellFormed) {
    for (const wchar_t* wrong : {L"<>",
                                 L"< b/>",
                                 L"<b",
                                 L"<b/",
                                 L"<b/ >",
                                 L"<b//>",
                                 L"<b x/>",
                                 L"<b x=/>",
                                 L"<b x=1/>",
                                 L"<b x='1/>",
                                 L"<b x='1'y='2'/>",
                                 L"<b ='1'/>",
                                 L"<b/x='1'/>",
                                 L"<b x='<'/>",
                                 L"<b x='&'/>",
                                 L"<b x='&;'/>",
                                 L"<b x='&AMP;'/>",
                                 L"<b x='&none;'/>",
                                 L"<b x='&#;'/>",
                                 L"<b x='&#x;'/>",
                                 L"<b x='&#0;'/>",
                                 L"<b x='&#8;'/>",
                                 L"<b x='&#xD800;'/>",
                                 L"<b x='&#X41;'/>",
                                 L"<b x='&#4a;'/>",
                                 L"<b x='&#x4g;'/>",
                                 L"<b x='&#-1;'/>",
                                 L"<b x='&#x110000;'/>",
                                 L"<b x='&#4294967361;'/>",
                                 L"<b<c/>",
                                 L"<b x='1'<c/>",
                                 L"</>",
                                 L"</a",
                                 L"</a x='1'>",
                                 L"</a<b/>",
                                 L"<!DOCTYPE a>",
                                 L"<!-- ",
                                 L"<!-->",
                                 L"<![CDATA[]>",
                                 L"<?pi >"}) {
        EXPECT_EQ(told(std::wstring(L"<a>") + wrong + L"<d/></a>"), L"1.") << wrong;
    }
    EXPECT_EQ(told(L"<a></a></a><b/>"), L"1/1.");
}

TEST(XmlScanner, OfABeginningTellsTheBeginning) {
    const std::wstring text =
        L"<?xml version='1.0'?><a x='1&amp;'><!-- b --><b y=\"&#233;\" z='' /><![CDATA[>]]>t</a>";
    const std::wstring whole = told(text);
    for (std::size_t size = 0; size < text.size(); ++size) {
        // On the heap and exactly as long: nothing may be read behind it.
        const std::vector<wchar_t> part(text.begin(), text.begin() + static_cast<int>(size));
        std::wstring start = told({part.data(), part.size()});
        start.pop_back();
        EXPECT_TRUE(whole.starts_with(start)) << size;
    }
}

}  // namespace
}  // namespace vela
