// Runs the tests in a single-threaded apartment, as the library's clients do.
#include <gtest/gtest.h>
#include <objbase.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    CoInitialize(nullptr);
    const int result = RUN_ALL_TESTS();
    CoUninitialize();
    return result;
}
