// What the algorithms take, on this machine. Fails when a limit is exceeded.
#include <initializer_list>

#include "bench/tables.h"

int main() {
    bool good = true;
    for (const auto table : {bench::keyedCollection, bench::transforms, bench::extenso}) {
        good = table() && good;
    }
    return good ? 0 : 1;
}
