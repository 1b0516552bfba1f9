// The choice of file types in a file dialog.
#pragma once

#include <string>
#include <string_view>

namespace vela {

// 'Texts|*.txt;*.log|All|*.*' as the platform's dialogs take it: each part ended by a zero unit,
// the whole by another. Empty parts at the end do not count; a description without a pattern is its
// own pattern. Empty when there are no parts.
std::wstring dialogFilter(std::wstring_view filter);

// The extension that the first pattern asks for, without its point; empty when that can be any.
std::wstring defaultExtension(std::wstring_view filter);

}  // namespace vela
