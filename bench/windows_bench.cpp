// What clients of the registered library pay, against what the platform or a plain program takes
// for the same. Fails when a limit is exceeded.
#include <windows.h>

#include <objbase.h>

#include <initializer_list>

#include "bench/tables.h"

int main() {
    CoInitialize(nullptr);
    bool good = true;
    for (const auto table :
         {bench::lateBinding, bench::collection, bench::documents, bench::notifications,
          bench::switches, bench::serializer, bench::tcp, bench::files}) {
        good = table() && good;
    }
    CoUninitialize();
    return good ? 0 : 1;
}
