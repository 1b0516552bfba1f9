#include "preferences/document_bytes.h"

#include "preferences/preference_document.h"
#include "support/support.h"

namespace vela::test {
namespace {

const std::string kWindows = "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\r\n";
const std::string kUtf8 = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n";

TEST(PreferencesDocumentBytes, AreUtf8OnlyWhereReferencesCannotStand) {
    const struct {
        std::wstring inside;
        std::string bytes, declaration;
    } table[] = {
        {L"<a x=\"é\"/>", "<a x=\"\xE9\"/>", kWindows},
        {L"<a x=\"\x0416\"/>", "<a x=\"&#1046;\"/>", kWindows},
        {L"<a x=\"&#9;&#13;&#10;\x0416\"/>", "&#1046;\"/>", kWindows},
        {L"<a> x <b> </b>\r\n<c y=\"\x0416\"/></a>", "&#1046;\"/>", kWindows},
        {L"<a>\x0416</a>", "<a>&#1046;</a>", kWindows},
        {L"<!--é-->", "<!--\xE9-->", kWindows},
        {L"<!--\x0416-->", "<!--\xD0\x96-->", kUtf8},
        {L"<!--\xD83D\xDE00-->", "<!--\xF0\x9F\x98\x80-->", kUtf8},
        {L"<a x=\"é\" \x0416=\"\x0416\"/>", "<a x=\"\xC3\xA9\" \xD0\x96=\"\xD0\x96\"/>", kUtf8},
        {L"<\x0416/>", "<\xD0\x96/>", kUtf8},
        {L"<?p \x0416?>", "<?p \xD0\x96?>", kUtf8},
        {L"<![CDATA[\x0416]]>", "<![CDATA[\xD0\x96]]>", kUtf8},
    };
    for (const auto& [inside, bytes, declaration] : table) {
        const auto document = parsed(L"<r>" + inside + L"</r>");
        ASSERT_TRUE(document) << bytes;
        const std::string content = bytesOf(*document);
        EXPECT_EQ(content.substr(0, declaration.size()), declaration);
        EXPECT_NE(content.find(bytes), content.npos) << content;
        // Read again it is the same, and without its cause the exception is over.
        const auto again = parsed(std::as_bytes(std::span(content)));
        ASSERT_TRUE(again) << bytes;
        EXPECT_EQ(bytesOf(*again), content);
        again->root()->removeChild(detail::firstChild(again->root()).Get(), nullptr);
        EXPECT_TRUE(bytesOf(*again).starts_with(kWindows)) << bytes;
    }
}

}  // namespace
}  // namespace vela::test
