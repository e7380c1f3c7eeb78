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
    // Datasets and string lists.
    for (const char* name : {"kivdb_query_new", "kivdb_query_open",
                             "kivdb_dataset_free", "kivdb_dataset_open", "kivdb_dataset_close",
                             "kivdb_dataset_first", "kivdb_dataset_next", "kivdb_dataset_prior",
                             "kivdb_dataset_last", "kivdb_dataset_move_by", "kivdb_dataset_eof",
                             "kivdb_dataset_bof", "kivdb_dataset_record_count", "kivdb_dataset_rec_no",
                             "kivdb_dataset_state", "kivdb_dataset_field_count", "kivdb_dataset_field_name",
                             "kivdb_dataset_get_text", "kivdb_dataset_get_int", "kivdb_dataset_get_float",
                             "kivdb_dataset_get_date", "kivdb_dataset_get_bool", "kivdb_dataset_is_null",
                             "kivdb_dataset_get_variant", "kivdb_dataset_display_text",
                             "kivdb_dataset_set_text", "kivdb_dataset_set_int",
                             "kivdb_dataset_set_float", "kivdb_dataset_set_null", "kivdb_dataset_set_variant",
                             "kivdb_dataset_edit", "kivdb_dataset_insert", "kivdb_dataset_append",
                             "kivdb_dataset_post", "kivdb_dataset_cancel", "kivdb_dataset_delete",
                             "kivdb_query_set_batch", "kivdb_query_updates_pending", "kivdb_query_apply_updates",
                             "kivdb_query_cancel_updates", "kivdb_strings_new", "kivdb_strings_free",
                             "kivdb_strings_count", "kivdb_strings_item", "kivdb_strings_add",
                             "kivdb_strings_clear"})
        EXPECT_NE(dlsym(library, name), nullptr) << name;
    // The library's own C++ code stays inside it.
    EXPECT_EQ(dlsym(library, "_ZN5kivdb19SelTableStringValueERNS_10ConnectionERK7QString"), nullptr);
    dlclose(library);
}

}  // namespace
