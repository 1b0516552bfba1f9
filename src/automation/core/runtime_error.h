// Automation's run-time errors. Algorithms raise them too, so no platform is needed here.
#pragma once

namespace vela {

// The value is what a script reads in Err.Number.
enum class RuntimeError : int {
    InvalidProcedureCall = 5,
    Overflow = 6,
    SubscriptOutOfRange = 9,
    DivisionByZero = 11,
    TypeMismatch = 13,
    ObjectNotSet = 91,
    InvalidPattern = 93,
    MemberNotSupported = 438,
    KeyAlreadyPresent = 457,
};

// What raise() throws; at the class boundary it gets its usual English text.
struct RuntimeFailure {
    RuntimeError error;
};

[[noreturn]] inline void raise(RuntimeError error) { throw RuntimeFailure{error}; }

}  // namespace vela
