// The tables of the benchmarks. Each function prints its own and tells whether every row is within
// its limit.
#pragma once

#include <initializer_list>
#include <string_view>

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

struct Table {
    std::string_view name;
    bool (*print)();
};

// Prints the tables that the program's arguments name, without arguments all. Whether every row is
// within its limit.
inline bool print(std::initializer_list<Table> tables, int argc, char** argv) {
    bool good = true;
    for (const Table& table : tables) {
        bool wanted = argc == 1;
        for (int i = 1; i < argc; ++i) wanted = wanted || table.name == argv[i];
        if (wanted) good = table.print() && good;
    }
    return good;
}

}  // namespace bench
