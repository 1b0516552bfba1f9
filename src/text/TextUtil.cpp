#include "text/TextUtil.h"

#include "text/text_normalisation.h"
#include "text/text_transforms.h"
#include "text/upper_case.h"

namespace vela {

namespace {

struct TextArray {
    LONG lowerBound = 0;
    std::vector<std::wstring> values;
};

// The elements of an array of variants as text, those that have none as the empty text; no elements
// where there is no array.
TextArray textsIn(SAFEARRAY* array) {
    TextArray texts;
    if (!array || SafeArrayGetDim(array) != 1) return texts;
    LONG upper = -1;
    check(SafeArrayGetLBound(array, 1, &texts.lowerBound));
    check(SafeArrayGetUBound(array, 1, &upper));
    for (LONG i = texts.lowerBound; i <= upper; ++i) {
        Variant element;
        check(SafeArrayGetElement(array, &i, &element));
        std::wstring value;
        quietly([&] { value = textOf(element); });
        texts.values.push_back(std::move(value));
    }
    return texts;
}

// An optional text by reference; empty where the caller gave no place for it.
std::wstring_view optionalText(const BSTR* value) { return text(value ? *value : nullptr); }

}  // namespace

HRESULT TextUtil::MudaChar(BSTR* onde, BSTR oQueMuda, BSTR paraQueMuda) {
    if (!onde) return E_POINTER;
    return guard(
        [&] { rewrite(onde, replaceAll(text(*onde), text(oQueMuda), text(paraQueMuda))); });
}

HRESULT TextUtil::SubstituirAcentos(BSTR* value) {
    if (!value) return E_POINTER;
    return guard([&] { rewrite(value, withoutAccents(text(*value))); });
}

HRESULT TextUtil::UTrim(BSTR value, BSTR* result) {
    return answer(result, [&] {
        Bstr upper(trimmed(text(value)));
        upperCaseInPlace(upper.data(), upper.view().size());
        return upper;
    });
}

HRESULT TextUtil::QueConteudoSql(BSTR value, BSTR* result) {
    return answer(result, [&] { return sqlLiteral(text(value)); });
}

HRESULT TextUtil::PreparaTextoComVars(BSTR value, SAFEARRAY** values, BSTR* result) {
    return answer(result, [&] {
        const TextArray texts = textsIn(values ? *values : nullptr);
        return filledTemplate(text(value), texts.values, texts.lowerBound);
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

}  // namespace vela
