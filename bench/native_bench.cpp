// What the algorithms take, on this machine. Fails when a limit is exceeded.
#include "bench/tables.h"

int main(int argc, char** argv) {
    const bool good = bench::print({{"keyed_collection", bench::keyedCollection},
                                    {"transforms", bench::transforms},
                                    {"extenso", bench::extenso}},
                                   argc, argv);
    return good ? 0 : 1;
}
