#include "text/TextUtil.h"

#include "automation/late_bound.h"

namespace vela::test {
namespace {

// As a script calls it: by name, with references to variants.
class TextUtilMembers : public ::testing::Test {
  protected:
    std::wstring called(const wchar_t* name, std::vector<VARIANT> arguments) {
        const Called called = call(util_.Get(), name, std::move(arguments));
        EXPECT_EQ(called.outcome, S_OK) << called.description.c_str();
        return textOf(called.result);
    }
    const ComPtr<IDispatch> util_ = create(L"VelaUtil10.TextUtil");
};

TEST_F(TextUtilMembers, RewriteAVariableInPlace) {
    struct {
        const wchar_t *name, *before, *after;
        std::vector<std::wstring> more;
    } const table[] = {
        {L"MudaChar", L"a-b-c", L"a--b--c", {L"-", L"--"}},
        {L"MudaChar", L"a-b", L"a-b", {L"", L"x"}},
        {L"mudachar", L"", L"", {L"a", L"b"}},
        {L"SubstituirAcentos", L"Conceição nº 5", L"Conceicao n   ", {}},
        {L"SubstituirAcentos", L"", L"", {}},
    };
    for (const auto& row : table) {
        Variant variable{std::wstring_view(row.before)};
        std::vector<Bstr> texts;
        std::vector<VARIANT> arguments{byReference(variable)};
        for (const std::wstring& text : row.more) texts.emplace_back(std::wstring_view(text));
        for (const Bstr& text : texts) arguments.push_back(arg(text));
        called(row.name, arguments);
        EXPECT_EQ(variable.vt, VT_BSTR);
        EXPECT_EQ(textOf(variable), row.after) << row.name;
    }
}

TEST_F(TextUtilMembers, LeaveWhatIsPassedByValueAlone) {
    Variant variable(L"  ab c ");
    EXPECT_EQ(called(L"UTrim", {byReference(variable)}), L"AB C");
    EXPECT_EQ(textOf(variable), L"  ab c ");
    const Bstr name(L"O'Neil"), text(L"é");
    EXPECT_EQ(called(L"QueConteudoSql", {arg(name)}), L"'O''Neil'");
    called(L"SubstituirAcentos", {arg(text)});
    EXPECT_EQ(text.view(), L"é");
}

TEST_F(TextUtilMembers, FillTemplatesFromAnyArrayOfVariants) {
    const Variant seven(7L), text(L"@X1"), nothing;
    struct {
        Variant array;
        const wchar_t* filled;
    } table[] = {
        {arrayOf({seven, text}, 0), L"7 7 @X3"},
        {arrayOf({seven, text}, 1), L"@X1 7 @X1"},
        {arrayOf({nothing, seven}, 0), L" 7 @X3"},
        {arrayOf({}, 0), L"@X1 @X2 @X3"},
        {arrayOf(std::vector<Variant>(10, seven), 0), L"7 7 7"},
    };
    const Bstr form(L"@X1 @X2 @X3");
    for (auto& row : table) {
        Variant before(row.array);
        EXPECT_EQ(called(L"PreparaTextoComVars", {arg(form), byReference(row.array)}), row.filled);
        EXPECT_EQ(called(L"PreparaTextoComVars", {arg(form), before}), row.filled);
    }
    const Bstr ten(L"@X1@X10");
    auto digits = arrayOf({Variant(1L), nothing, nothing, nothing, nothing, nothing, nothing,
                           nothing, nothing, Variant(10L)});
    EXPECT_EQ(called(L"PreparaTextoComVars", {arg(ten), byReference(digits)}), L"110");
    const Called wrong = call(util_.Get(), L"PreparaTextoComVars", {arg(form), arg(form)});
    EXPECT_EQ(wrong.outcome, DISP_E_TYPEMISMATCH);
}

}  // namespace
}  // namespace vela::test
