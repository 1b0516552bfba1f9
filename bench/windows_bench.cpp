// What clients of the registered library pay, against what the platform or a plain program takes
// for the same. Fails when a limit is exceeded.
#include <windows.h>

#include <objbase.h>

#include "bench/tables.h"

int main(int argc, char** argv) {
    CoInitialize(nullptr);
    const bool good = bench::print({{"late_binding", bench::lateBinding},
                                    {"collection", bench::collection},
                                    {"documents", bench::documents},
                                    {"notifications", bench::notifications},
                                    {"switches", bench::switches},
                                    {"serializer", bench::serializer},
                                    {"tcp", bench::tcp},
                                    {"files", bench::files}},
                                   argc, argv);
    CoUninitialize();
    return good ? 0 : 1;
}
