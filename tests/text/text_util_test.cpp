#include "text/TextUtil.h"

#include "automation/late_objects.h"
#include "text/text_transforms.h"

namespace vela::test {
namespace {

// As a script calls them: by name.
std::wstring called(const wchar_t* name, const std::vector<Variant>& arguments) {
    const Called called = callWith(create(L"VelaUtil10.TextUtil").Get(), name, arguments);
    EXPECT_EQ(called.outcome, S_OK) << name;
    EXPECT_EQ(called.result.vt, VT_BSTR) << name;
    return textOf(called.result);
}
template <class... Texts>
std::wstring made(const wchar_t* name, const Texts&... texts) {
    return called(name, {Variant(std::wstring_view(texts))...});
}

const std::wstring kText = L"Conceição nº 5, 100 €; " + std::wstring(50, L'-');

TEST(TextUtilMembers, FillTemplatesFromAnyArrayOfVariants) {
    const Variant form(L"@X1 @X2 @X3"), seven(7L);
    Variant array = arrayOf({seven, Variant(L"@X1")}, 1);
    EXPECT_EQ(called(L"PreparaTextoComVars", {form, Variant(byReference(array))}), L"@X1 7 @X1");
    EXPECT_EQ(called(L"PreparaTextoComVars", {form, arrayOf({Variant(), seven})}), L" 7 @X3");
    EXPECT_EQ(called(L"PreparaTextoComVars", {form, arrayOf({})}), L"@X1 @X2 @X3");
}

TEST(TextUtilMembers, TransformTextsByOneAnother) {
    const std::wstring block = made(L"Compactar", kText);
    EXPECT_LT(block.size(), kText.size());
    EXPECT_EQ(made(L"Descompactar", block), kText);
    EXPECT_EQ(made(L"Compactar64", kText), made(L"CodificarStr64", block));
    EXPECT_EQ(made(L"Descompactar64", made(L"CodificarStr64", kText)), kText);
    EXPECT_EQ(made(L"Encriptar", kText, L""), block);
    EXPECT_EQ(made(L"Encriptar", kText), block);
    EXPECT_EQ(made(L"Desencriptar", block), kText);
    EXPECT_EQ(made(L"Encriptar", kText, L"ab"), cipheredText(block, L"AB"));
    EXPECT_EQ(cipheredText(L"AAA", L"bç€"), L"\x03†í");
    EXPECT_EQ(made(L"DescodificarStr64", L"YW\r\nI\x0416"), L"ab");
    const std::wstring large(3'000'000, L'ç');
    EXPECT_EQ(made(L"Desencriptar", made(L"Encriptar", large, L"ção"), L"ÇÃO"), large);
}

TEST(TextUtilMembers, GiveBackWhatTheyCannotUndo) {
    const std::wstring plain = L"\x0416 longer than a trailer";
    EXPECT_EQ(made(L"Descompactar", plain), plain);
    EXPECT_EQ(made(L"Desencriptar", plain, L""), plain);
    const std::wstring hidden = made(L"Encriptar", kText, L"right");
    EXPECT_EQ(made(L"Desencriptar", hidden, L"wrong"), cipheredText(hidden, L"wrong"));
    EXPECT_EQ(made(L"Desencriptar", L"\x0416", L"a"), L"~");
}

TEST(TextUtilMembers, TakeNoTextForTheEmptyText) {
    const auto util = createAs<_TextUtil>(L"VelaUtil10.TextUtil");
    Bstr result;
    EXPECT_EQ(util->Descompactar64(nullptr, result.put()), S_OK);
    EXPECT_EQ(util->Encriptar(nullptr, nullptr, result.put()), S_OK);
    EXPECT_EQ(util->Desencriptar(nullptr, nullptr, result.put()), S_OK);
    EXPECT_EQ(result.view(), L"");
}

}  // namespace
}  // namespace vela::test
