// The tests' main: the library set up as its hosts set it up, then every test.
#include "platform/ui/library_setup.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    kivdb::setUpLibrary();
    return RUN_ALL_TESTS();
}
