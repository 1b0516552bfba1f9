#include "text/numbers/core/extenso.h"

#include <cstdint>

#include "text/core/text_normalisation.h"
#include "text/core/upper_case.h"

namespace vela {

namespace {

// Each word ends with one blank.
using Words = std::wstring_view;
constexpr Words kUnits[] = {L"",       L"um ",   L"dois ", L"três ", L"quatro ",
                            L"cinco ", L"seis ", L"sete ", L"oito ", L"nove "};
constexpr Words kTeens[] = {L"dez ",    L"onze ",      L"doze ",      L"treze ",   L"catorze ",
                            L"quinze ", L"dezasseis ", L"dezassete ", L"dezoito ", L"dezanove "};
constexpr Words kTens[] = {L"",           L"",          L"vinte ",   L"trinta ",  L"quarenta ",
                           L"cinquenta ", L"sessenta ", L"setenta ", L"oitenta ", L"noventa "};
constexpr Words kHundreds[] = {L"",
                               L"cento ",
                               L"duzentos ",
                               L"trezentos ",
                               L"quatrocentos ",
                               L"quinhentos ",
                               L"seiscentos ",
                               L"setecentos ",
                               L"oitocentos ",
                               L"novecentos "};
constexpr Words kAnd = L"e ";
constexpr Words kZero = L"zero ";

// The scale words stand for six digits each: 10^9 is "mil milhões", 10^12 "um bilião".
constexpr std::uint64_t kThousand = 1'000;
constexpr std::uint64_t kMillion = 1'000'000;
struct Scale {
    std::uint64_t size;
    Words one, more;
};
constexpr Scale kScales[] = {{kMillion * kMillion, L"bilião ", L"biliões "},
                             {kMillion, L"milhão ", L"milhões "}};

// Below 1,000.
void appendGroup(std::wstring& text, std::uint64_t number) {
    if (number == 100) {
        text += L"cem ";
        return;
    }
    const std::uint64_t rest = number % 100;
    text += kHundreds[number / 100];
    if (number > 100 && rest > 0) text += kAnd;
    if (rest >= 10 && rest < 20) {
        text += kTeens[rest - 10];
        return;
    }
    text += kTens[rest / 10];
    if (rest > 20 && rest % 10 > 0) text += kAnd;
    text += kUnits[rest % 10];
}

// Whether "e" leads over to what follows a scale word: to a single group of three digits that is
// below one hundred or of whole hundreds.
bool isJoined(std::uint64_t rest) {
    while (rest > 0 && rest % kThousand == 0) rest /= kThousand;
    return rest > 0 && (rest < 100 || (rest < kThousand && rest % 100 == 0));
}

void appendBelowMillion(std::wstring& text, std::uint64_t number) {
    const std::uint64_t rest = number % kThousand;
    if (number >= kThousand) {
        if (number / kThousand > 1) appendGroup(text, number / kThousand);
        text += L"mil ";
        if (isJoined(rest)) text += kAnd;
    }
    appendGroup(text, rest);
}

void appendWhole(std::wstring& text, std::uint64_t number) {
    if (number == 0) text += kZero;
    for (const Scale& scale : kScales) {
        if (number < scale.size) continue;
        appendBelowMillion(text, number / scale.size);
        text += number / scale.size == 1 ? scale.one : scale.more;
        number %= scale.size;
        if (isJoined(number)) text += kAnd;
    }
    appendBelowMillion(text, number);
}

// The digits behind the point, two at least, named after how many they are. Four have no name;
// their zeros in front are read out, so that 0.0012 and 0.0102 differ.
void appendDecimals(std::wstring& text, std::uint64_t tenThousandths) {
    text += L"Virgula ";
    if (tenThousandths % 100 == 0) {
        appendWhole(text, tenThousandths / 100);
        text += L"centimos ";
    } else if (tenThousandths % 10 == 0) {
        appendWhole(text, tenThousandths / 10);
        text += L"mil.";
    } else {
        for (std::uint64_t ten = kThousand; tenThousandths < ten; ten /= 10) text += kZero;
        appendWhole(text, tenThousandths);
    }
}

void appendNumber(std::wstring& text, std::uint64_t amount) {
    appendWhole(text, amount / kCurrencyOne);
    if (amount % kCurrencyOne > 0) appendDecimals(text, amount % kCurrencyOne);
}

void appendCents(std::wstring& text, std::uint64_t cents) {
    appendWhole(text, cents);
    text += cents == 1 ? L"Centimo " : L"Centimos ";
}

void appendMoney(std::wstring& text, std::uint64_t allCents, Words name) {
    const std::uint64_t whole = allCents / 100;
    const std::uint64_t cents = allCents % 100;
    if (whole == 0 && cents > 0) return appendCents(text, cents);
    appendWhole(text, whole);
    if (whole > 0 && whole % kMillion == 0 && !name.empty()) text += L"de ";
    text += name;
    if (cents == 0) return;
    if (!name.empty()) text += L' ';
    text += kAnd;
    appendCents(text, cents);
}

// Without blanks around it and without the quotes that it may stand in.
Words unquoted(Words name) {
    name = trimmed(name);
    if (!name.starts_with(L'"')) return name;
    name.remove_prefix(1);
    if (!name.empty()) name.remove_suffix(1);
    return trimmed(name);
}

}  // namespace

std::wstring inWords(Currency amount, std::wstring_view name) {
    const bool isMoney = !trimmed(name).empty();
    auto magnitude = static_cast<std::uint64_t>(amount);
    if (amount < 0) magnitude = 0 - magnitude;
    const std::uint64_t cents = (magnitude + 50) / 100;
    std::wstring text;
    text.reserve(256);
    if (amount < 0 && (!isMoney || cents > 0)) text += L"menos ";
    if (isMoney) appendMoney(text, cents, unquoted(name));
    else appendNumber(text, magnitude);
    text.front() = upperCase(text.front());
    return text;
}

}  // namespace vela
