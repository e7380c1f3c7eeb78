#include <dlfcn.h>
#include <gtest/gtest.h>

namespace {

const char* const kExportNames[] = {
#include KIVDB_EXPORT_NAMES
};

TEST(ExportTable, EveryListedExportIsADynamicSymbolOfTheLibrary) {
    void* library = dlopen(KIVDB_LIBRARY_PATH, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    for (const char* name : kExportNames) EXPECT_NE(dlsym(library, name), nullptr) << name;
    for (const char* name : {"kivdb_connect", "kivdb_disconnect", "kivdb_last_error", "kivdb_last_error_kind", "kivdb_free",
                             "kivdb_set_encoding", "kivdb_variant_free", "kivdb_host_add_data_module"})
        EXPECT_NE(dlsym(library, name), nullptr) << name;
    // The library's own C++ code stays inside it.
    EXPECT_EQ(dlsym(library, "_ZN5kivdb19SelTableStringValueERNS_10ConnectionERK7QString"), nullptr);
    dlclose(library);
}

}  // namespace
