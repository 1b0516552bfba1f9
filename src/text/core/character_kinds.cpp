// Where the platform's notion of a letter comes from.
#include "text/core/character_kinds.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <locale.h>
#include <wctype.h>

#include <stdexcept>
#endif

namespace vela {

#ifdef _WIN32

bool isLetter(wchar_t unit) {
    WORD kinds = 0;
    return GetStringTypeW(CT_CTYPE1, &unit, 1, &kinds) && (kinds & C1_ALPHA);
}

#else

bool isLetter(wchar_t unit) {
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (!locale) throw std::runtime_error("the platform knows no letters");
    return iswalpha_l(static_cast<wint_t>(unit), locale);
}

#endif

}  // namespace vela
