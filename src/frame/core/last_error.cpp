#include "frame/core/last_error.h"

#include <algorithm>
#include <array>

namespace vela {

std::wstring partOf(const ErrorRecord& record, int part) {
    switch (part) {
        case 1: return std::to_wstring(record.type);
        case 2: return record.description;
        case 3: return std::to_wstring(record.number);
        case 4: return record.source;
        case 5:
            return L"(" + record.source + L") " + std::to_wstring(record.number) + L" - " +
                   record.description;
        default: return {};
    }
}

bool isNetworkError(int number) {
    static constexpr std::array kNumbers{3006, 3008, 3009, 3040, 3046, 3158, 3164,
                                         3171, 3186, 3187, 3188, 3189, 3197, 3202,
                                         3211, 3212, 3218, 3260, 3261, 3262};
    return std::binary_search(kNumbers.begin(), kNumbers.end(), number);
}

}  // namespace vela
