#include "text/text_transforms.h"

#include "automation/late_bound.h"
#include "text/ansi_bytes.h"

namespace vela::test {
namespace {

// As a script calls them: by name.
class TextTransforms : public ::testing::Test {
  protected:
    template <class... Texts>
    std::wstring called(const wchar_t* name, const Texts&... texts) {
        const Called called = callWith(util_.Get(), name, {Variant(std::wstring_view(texts))...});
        EXPECT_EQ(called.outcome, S_OK) << name;
        EXPECT_EQ(called.result.vt, VT_BSTR) << name;
        return textOf(called.result);
    }

    const ComPtr<IDispatch> util_ = create(L"VelaUtil10.TextUtil");
    const std::wstring text_ = L"Conceição nº 5, 100 €; " + std::wstring(50, L'-');
};

TEST_F(TextTransforms, EveryByteIsOneCharacter) {
    std::string bytes;
    for (int i = 0; i < 256; ++i) bytes.push_back(static_cast<char>(i));
    EXPECT_EQ(ansiText(bytes).size(), 256U);
    EXPECT_EQ(ansiText(bytes).substr(0, 128), std::wstring(bytes.begin(), bytes.begin() + 128));
    EXPECT_EQ(ansiBytes(ansiText(bytes)), bytes);
    EXPECT_EQ(ansiBytes(L"\x0416 \xD83D\xDE00 \x0100"), "? ?? ?");
}

TEST_F(TextTransforms, ComeBackAsTheyWere) {
    EXPECT_EQ(called(L"Descompactar", called(L"Compactar", text_)), text_);
    EXPECT_EQ(called(L"Descompactar64", called(L"Compactar64", text_)), text_);
    EXPECT_EQ(called(L"DescodificarStr64", called(L"CodificarStr64", text_)), text_);
    const std::wstring large(3'000'000, L'ç');
    EXPECT_EQ(called(L"Desencriptar", called(L"Encriptar", large, L"ção"), L"ÇÃO"), large);
    EXPECT_EQ(called(L"Descompactar", called(L"Compactar", L"a\x0416")), L"a?");
}

TEST_F(TextTransforms, AreMadeOfOneAnother) {
    const std::wstring block = called(L"Compactar", text_);
    EXPECT_LT(block.size(), text_.size());
    EXPECT_EQ(called(L"Compactar64", text_), called(L"CodificarStr64", block));
    EXPECT_EQ(called(L"Descompactar64", called(L"CodificarStr64", text_)), text_);
    EXPECT_EQ(called(L"Encriptar", text_, L""), block);
    EXPECT_EQ(called(L"Encriptar", text_), block);
    EXPECT_EQ(called(L"Desencriptar", block), text_);
    EXPECT_EQ(called(L"Encriptar", text_, L"ab"), cipheredText(block, L"AB"));
    EXPECT_EQ(called(L"CodificarStr64", L"ç"), L"5w==");
    EXPECT_EQ(called(L"DescodificarStr64", L"YW\r\nI\x0416"), L"ab");
}

TEST_F(TextTransforms, GiveBackWhatTheyCannotUndo) {
    const std::wstring plain = L"\x0416 longer than a trailer";
    EXPECT_EQ(called(L"Descompactar", plain), plain);
    EXPECT_EQ(called(L"Desencriptar", plain, L""), plain);
    const std::wstring hidden = called(L"Encriptar", text_, L"right");
    EXPECT_EQ(called(L"Desencriptar", hidden, L"wrong"), cipheredText(hidden, L"wrong"));
    EXPECT_EQ(called(L"Desencriptar", L"\x0416", L"a"), L"~");
}

TEST_F(TextTransforms, TakeNoTextForTheEmptyText) {
    ComPtr<_TextUtil> util;
    ASSERT_EQ(util_.As(&util), S_OK);
    using Member = HRESULT (STDMETHODCALLTYPE _TextUtil::*)(BSTR, BSTR*);
    for (const Member member :
         {&_TextUtil::Compactar, &_TextUtil::Descompactar, &_TextUtil::CodificarStr64,
          &_TextUtil::DescodificarStr64, &_TextUtil::Compactar64, &_TextUtil::Descompactar64}) {
        Bstr result;
        EXPECT_EQ((util.Get()->*member)(nullptr, result.put()), S_OK);
        EXPECT_EQ(result.view(), L"");
    }
    BSTR key = nullptr;
    for (BSTR* none : {&key, static_cast<BSTR*>(nullptr)}) {
        Bstr result;
        EXPECT_EQ(util->Encriptar(nullptr, none, result.put()), S_OK);
        EXPECT_EQ(util->Desencriptar(nullptr, none, result.put()), S_OK);
        EXPECT_EQ(result.view(), L"");
    }
}

}  // namespace
}  // namespace vela::test
