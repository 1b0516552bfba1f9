// How the documents of a user are named.
#pragma once

namespace vela {

inline constexpr wchar_t kLocalSuffix[] = L".up1.xml";
inline constexpr wchar_t kSharedSuffix[] = L".up2.xml";

}  // namespace vela
