// libkivdb.so: the C ABI the suite's modules load. The exported wrappers are generated
// from the export table; this file holds the library-wide entry points.
#include <cstdlib>

extern "C" {
__attribute__((visibility("default"))) void kivdb_free(char* text) { std::free(text); }
}
