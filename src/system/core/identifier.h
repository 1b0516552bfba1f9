// Numbers that are drawn once in a process.
#pragma once

#include <cstdint>

namespace vela {

// 1 to 2,147,483,647, a different one on each call until all are used up; then over again.
std::int32_t nextIdentifier();

}  // namespace vela
