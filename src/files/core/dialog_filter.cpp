#include "files/core/dialog_filter.h"

#include <algorithm>
#include <vector>

#include "files/core/path_parts.h"

namespace vela {

namespace {

// Descriptions and patterns by turns.
std::vector<std::wstring> partsIn(std::wstring_view filter) {
    std::vector<std::wstring> parts;
    for (std::size_t from = 0; from <= filter.size();) {
        const std::size_t end = (std::min)(filter.find(L'|', from), filter.size());
        parts.emplace_back(filter.substr(from, end - from));
        from = end + 1;
    }
    while (!parts.empty() && parts.back().empty()) parts.pop_back();
    if (parts.size() % 2 == 1) parts.push_back(parts.back());
    return parts;
}

}  // namespace

std::wstring dialogFilter(std::wstring_view filter) {
    std::wstring list;
    for (const std::wstring& part : partsIn(filter)) list += part + L'\0';
    return list.empty() ? list : list + L'\0';
}

std::wstring defaultExtension(std::wstring_view filter) {
    const std::vector<std::wstring> parts = partsIn(filter);
    if (parts.empty()) return L"";
    const std::wstring& patterns = parts[1];
    const std::wstring extension = partsOf(patterns.substr(0, patterns.find(L';'))).extension;
    return extension.find_first_of(L"*?") == std::wstring::npos ? extension : L"";
}

}  // namespace vela
