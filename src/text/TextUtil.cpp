#include "text/TextUtil.h"

#include "text/core/alignment.h"
#include "text/core/telephone_number.h"
#include "text/core/text_filter.h"
#include "text/core/text_normalisation.h"
#include "text/core/text_search.h"
#include "text/core/text_split.h"
#include "text/core/upper_case.h"
#include "text/core/wildcard.h"
#include "text/numbers/core/fixed_point.h"
#include "text/text_arrays.h"
#include "text/text_transforms.h"
#include "text/user_locale.h"

namespace vela {

namespace {

SAFEARRAY* arrayAt(SAFEARRAY** array) { return array ? *array : nullptr; }

// Stores where a caller asked for it.
template <class Value>
void put(Value* target, Value value) {
    if (target) *target = value;
}

// Puts an array of the texts in the place of a caller's, and tells how many they are. Throws Error
// 6, and leaves the caller's, when they are too many.
short answerTexts(SAFEARRAY** target, const std::vector<std::wstring_view>& texts) {
    const short count = count16(texts.size());
    rewrite(target, texts);
    return count;
}

Side sideOf(AlignmentConstant alignment) {
    switch (alignment) {
        case RightJustify: return Side::Right;
        case CenterJustify: return Side::Centre;
        default: return Side::Left;
    }
}

// A number, or one in a text of the user's locale, written with a decimal point; empty where there
// is none. Currency and decimal numbers keep all their digits.
Bstr withDecimalPoint(const VARIANT& value) {
    if (dereferenced(value).vt == VT_EMPTY || !numberIn(value)) return {};
    Variant number = isText(value) ? converted(value, VT_R8) : Variant(value);
    if (number.vt == VT_CY) return Bstr(pointText(number.cyVal.int64));
    check(VariantChangeTypeEx(&number, &number, LOCALE_INVARIANT, 0, VT_BSTR));
    return Bstr::owning(number.release().bstrVal);
}

}  // namespace

HRESULT TextUtil::ProcTras(BSTR where, BSTR what, SHORT from, SHORT* result) {
    return answer(result, [&] { return count16(findBackwards(text(where), text(what), from)); });
}

HRESULT TextUtil::ProcuraAbrirFechar(BSTR where, BSTR marks, SHORT* opened, SHORT* closed,
                                     SHORT* result) {
    return answer(result, [&] {
        const MarkPair found = findPair(text(where), text(marks));
        const short end = count16(found.closed);
        const short begin = count16(found.opened);
        put(opened, begin);
        put(closed, end);
        return begin;
    });
}

HRESULT TextUtil::ProcurarPar(SHORT from, BSTR where, BSTR marks, SHORT* result) {
    return answer(result, [&] { return count16(findPair(text(where), text(marks), from).closed); });
}

HRESULT TextUtil::ProcuraPrimeiroDeVarios(SHORT from, BSTR where, BSTR characters, SHORT* result) {
    return answer(result,
                  [&] { return count16(findFirstOf(text(where), text(characters), from)); });
}

HRESULT TextUtil::ProcuraUmDeVarios(BSTR where, SHORT from, SAFEARRAY** what, SHORT* place,
                                    SHORT* position) {
    return guard([&] {
        const TextElements elements(arrayAt(what));
        const FoundText found = findFirstText(text(where), elements.texts(), from);
        const short foundPlace = count16(found.place);
        const short foundPosition = count16(found.position);
        put(place, foundPlace);
        put(position, foundPosition);
    });
}

HRESULT TextUtil::OrdenarArrayStr(SAFEARRAY** array) {
    return guard([&] { TextElements(arrayAt(array)).sort(); });
}

HRESULT TextUtil::QuantosChar(BSTR where, BSTR what, SHORT* result) {
    return answer(result, [&] { return count16(occurrences(text(where), text(what))); });
}

HRESULT TextUtil::QuantosCaracteres(BSTR where, BSTR character, SHORT* result) {
    return answer(result,
                  [&] { return count16(occurrences(text(where), text(character).substr(0, 1))); });
}

HRESULT TextUtil::MudaChar(BSTR* where, BSTR what, BSTR replacement) {
    if (!where) return E_POINTER;
    return guard([&] { rewrite(where, replaceAll(text(*where), text(what), text(replacement))); });
}

HRESULT TextUtil::MudaChar2(BSTR* where, BSTR what, BSTR replacements) {
    if (!where) return E_POINTER;
    return guard([&] { rewrite(where, translated(text(*where), text(what), text(replacements))); });
}

HRESULT TextUtil::MudaCharComMascara(BSTR* where, BSTR pattern, BSTR replacement) {
    if (!where) return E_POINTER;
    return guard([&] {
        const auto mask = Wildcard::compile(text(pattern));
        if (!mask) raise(RuntimeError::InvalidPattern);
        rewrite(where, withMatchesReplaced(text(*where), *mask, text(replacement)));
    });
}

HRESULT TextUtil::ParteTexto(BSTR* value, SAFEARRAY** lines, SHORT width, SHORT* result) {
    return answer(result, [&] {
        if (width < 1) raise(RuntimeError::InvalidProcedureCall);
        return answerTexts(lines, wrapped(optionalText(value), static_cast<std::size_t>(width)));
    });
}

HRESULT TextUtil::SeparaPorChar(BSTR* value, BSTR* separator, SAFEARRAY** parts, SHORT* result) {
    return answer(result, [&] {
        return answerTexts(parts, splitAt(optionalText(value), optionalText(separator)));
    });
}

HRESULT TextUtil::StrCharValidos(BSTR* value, BSTR allowed, BSTR* result) {
    return answer(result, [&] { return onlyCharacters(optionalText(value), text(allowed)); });
}

HRESULT TextUtil::CopyStr(VARIANT* from, VARIANT* to) {
    if (!from || !to) return E_POINTER;
    return guard([&] { rewrite(to, Variant(*from)); });
}

HRESULT TextUtil::SemEspacos(BSTR value, BSTR* result) {
    return answer(result, [&] { return withoutSpaces(text(value)); });
}

HRESULT TextUtil::SemNumeros(BSTR value, BSTR* result) {
    return answer(result, [&] { return withoutDigits(text(value)); });
}

HRESULT TextUtil::SemAlfa(VARIANT value, BSTR* result) {
    return answer(result, [&] {
        if (dereferenced(value).vt == VT_NULL) return std::wstring();
        return withoutLetters(textOf(value));
    });
}

HRESULT TextUtil::SubstituirAcentos(BSTR* value) {
    if (!value) return E_POINTER;
    return guard([&] { rewrite(value, withoutAccents(text(*value))); });
}

HRESULT TextUtil::StrPontoDecimal(VARIANT* value, BSTR* result) {
    return answer(result, [&] { return value ? withDecimalPoint(*value) : Bstr(); });
}

HRESULT TextUtil::TelefoneSeparaIndicativoNumero(BSTR telephone, SHORT* code, LONG* number) {
    return guard([&] {
        const TelephoneNumber found = telephoneNumber(text(telephone));
        put(code, static_cast<SHORT>(found.code));
        put(number, static_cast<LONG>(found.number));
    });
}

HRESULT TextUtil::StrAlinhar(BSTR value, SHORT width, AlignmentConstant* alignment, BSTR* filler,
                             BSTR* result) {
    return answer(result, [&] {
        const std::wstring_view filling = optionalText(filler);
        return aligned(text(value), static_cast<std::size_t>(std::max<SHORT>(width, 0)),
                       sideOf(alignment ? *alignment : LeftJustify),
                       filling.empty() ? L' ' : filling.front());
    });
}

HRESULT TextUtil::UTrim(BSTR value, BSTR* result) {
    return answer(result, [&] {
        Bstr upper(trimmed(text(value)));
        upperCaseInPlace(upper.data(), upper.view().size());
        return upper;
    });
}

HRESULT TextUtil::SwapTxt(BSTR* first, BSTR* second) {
    if (!first || !second) return E_POINTER;
    std::swap(*first, *second);
    return S_OK;
}

HRESULT TextUtil::QueConteudoSql(BSTR value, BSTR* result) {
    return answer(result, [&] { return sqlLiteral(text(value)); });
}

HRESULT TextUtil::PreparaTextoComVars(BSTR value, SAFEARRAY** values, BSTR* result) {
    return answer(result, [&] {
        const VariantTexts filling = variantTexts(arrayAt(values));
        return filledTemplate(text(value), filling.texts, filling.lowerBound);
    });
}

HRESULT TextUtil::SoEstesChar(BSTR value, BSTR allowed, BSTR replacement, BSTR* result) {
    return answer(result,
                  [&] { return onlyCharacters(text(value), text(allowed), text(replacement)); });
}

HRESULT TextUtil::SoNumeros(BSTR value, VARIANT_BOOL negative, VARIANT_BOOL fractions,
                            VARIANT_BOOL* result) {
    return answer(result, [&] {
        const std::wstring separator = isTrue(fractions) ? decimalSeparator() : std::wstring();
        return isNumber(text(value), {isTrue(negative), separator});
    });
}

HRESULT TextUtil::Compactar(BSTR value, BSTR* result) {
    return answer(result, [&] { return compressedText(text(value)); });
}

HRESULT TextUtil::Descompactar(BSTR value, BSTR* result) {
    return answer(result, [&] { return decompressedText(text(value)); });
}

HRESULT TextUtil::Encriptar(BSTR value, BSTR* key, BSTR* result) {
    return answer(result, [&] { return encryptedText(text(value), optionalText(key)); });
}

HRESULT TextUtil::Desencriptar(BSTR value, BSTR* key, BSTR* result) {
    return answer(result, [&] { return decryptedText(text(value), optionalText(key)); });
}

HRESULT TextUtil::CodificarStr64(BSTR value, BSTR* result) {
    return answer(result, [&] { return base64Text(text(value)); });
}

HRESULT TextUtil::DescodificarStr64(BSTR value, BSTR* result) {
    return answer(result, [&] { return textOfBase64(text(value)); });
}

HRESULT TextUtil::Compactar64(BSTR value, BSTR* result) {
    return answer(result, [&] { return base64Text(compressedText(text(value))); });
}

HRESULT TextUtil::Descompactar64(BSTR value, BSTR* result) {
    return answer(result, [&] { return decompressedText(textOfBase64(text(value))); });
}

HRESULT ClassOf<_TextUtil>::create(REFIID id, void** result) {
    return createObject<TextUtil>(id, result);
}

}  // namespace vela
