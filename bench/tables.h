// The tables of the benchmarks. Each function prints its own and tells whether every row is within
// its limit.
#pragma once

namespace bench {

// The algorithms, natively.
bool keyedCollection();
bool transforms();
bool extenso();

// Clients of the registered library.
bool lateBinding();
bool collection();
bool documents();
bool notifications();
bool switches();
bool serializer();
bool tcp();
bool files();

}  // namespace bench
