// The user as whom this process runs.
#pragma once

#include <string>

namespace vela {

// Each is empty on failure.
std::wstring loginName();
// The login name where no full name is known. Neither the account's domain nor anyone else is asked
// when the account is one of this computer.
std::wstring fullName();
// The domain of the account, or the computer where it is a local one.
std::wstring accountDomain();
// The security identifier as text, S-1-...
std::wstring accountIdentifier();

}  // namespace vela
