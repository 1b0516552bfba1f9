// Telephone numbers of Portugal.
#pragma once

#include <string_view>

namespace vela {

struct TelephoneNumber {
    int code = 0;    // area code, or prefix of a network or service; 0 when there is none
    int number = 0;  // what follows, below 100,000,000; zeros in front do not show
};

// Takes a number as people write it: digits, with spaces, hyphens, full stops, slashes and
// parentheses anywhere, and the country's own prefix in front, +351 or 00351.
//
//     2xx xxx xxx   geographic: code 21 (Lisboa) or 22 (Porto), else three digits, as 239
//     9xx xxx xxx   mobile: two digits, as 91 or 96
//     3xx, 6xx, 7xx, 8xx and six more: services: three digits, as 707 or 800
//     up to eight digits, no country prefix   no code: a short number such as 112, or a local one
//
// Anything else is unreadable, and gives zeros.
TelephoneNumber telephoneNumber(std::wstring_view text);

}  // namespace vela
