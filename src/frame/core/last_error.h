// The last error record, and what its numbers mean.
#pragma once

#include <cstdint>
#include <string>

namespace vela {

struct ErrorRecord {
    bool isEmpty() const { return *this == ErrorRecord(); }
    bool operator==(const ErrorRecord&) const = default;

    std::int16_t type = 0;  // the caller's own kind
    std::int32_t number = 0;
    std::wstring description;
    std::wstring source;
};

// One part as text: 1 type, 2 description, 3 number, 4 source, 5 "(source) number - description".
// Empty for any other part.
std::wstring partOf(const ErrorRecord& record, int part);

// Whether a database error number means a network or locking failure.
bool isNetworkError(int number);

}  // namespace vela
