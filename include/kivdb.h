/* kivdb: the suite's shared library of database functions, C interface.
 *
 * Conventions
 *  - Every export takes the connection first (a handle from kivdb_connect or GetDataConnection),
 *    except those working on a dataset the host holds: they take the dataset first.
 *    A handle is checked on every call: one that was closed, whose data module was removed,
 *    or that the library never gave out makes the call fail with an error, never crash.
 *  - Threads may share a connection: calls on one connection take turns, each holding it from
 *    its first statement to its last row read.
 *  - Strings are const char* in the library's encoding: GB18030 by default (GBK's bytes for
 *    every GBK character, so GBK hosts work unchanged, and every other character as well), or
 *    UTF-8, see kivdb_set_encoding. Bytes that are not text in the encoding (a stray or final
 *    lead byte) make the call fail before anything is sent.
 *  - String and variant results come through a first hidden pointer argument: the library frees
 *    what the variable held and stores a new value, which the caller frees with kivdb_free
 *    (strings) or kivdb_variant_free (variants).
 *  - Booleans are one byte; dates are doubles, days since 30 December 1899 (0 = no date).
 *  - Datasets and string lists are handles a host makes (kivdb_query_new, kivdb_strings_new)
 *    and frees (kivdb_dataset_free, kivdb_strings_free); exports taking them work on them in
 *    place. A dataset keeps its connection open until it is freed, and its calls take turns
 *    with the connection's other calls.
 *  - Errors never cross as exceptions: the export answers its default and kivdb_last_error()
 *    holds the message for the calling thread, kivdb_last_error_kind() what kind of error it
 *    was; every call clears both first, except kivdb_last_error, kivdb_last_error_kind and
 *    the releases kivdb_free and kivdb_variant_free.
 */
#ifndef KIVDB_H
#define KIVDB_H

#include <stdbool.h>
#include <stdint.h>

#if defined(_WIN32)
#  define KIVDB_API __declspec(dllexport)
#  if defined(_M_IX86) || defined(__i386__)
#    define KIVDB_CALL __stdcall
#  else
#    define KIVDB_CALL
#  endif
#else
#  define KIVDB_API __attribute__((visibility("default")))
#  define KIVDB_CALL
#endif

#ifdef __cplusplus
extern "C" {
#endif

typedef struct kivdb_conn kivdb_conn;
typedef struct kivdb_variant kivdb_variant;
typedef struct kivdb_host_module kivdb_host_module;
typedef struct kivdb_dataset kivdb_dataset;
typedef struct kivdb_strings kivdb_strings;

/* Connections: "sqlite:PATH" (embedded database) or "odbc:CONNECTION-STRING". */
KIVDB_API kivdb_conn* KIVDB_CALL kivdb_connect(const char* url);
/* Closes a connection made by kivdb_connect (once a call running on it in another thread
 * ends); a host-owned one (GetDataConnection) is left alone. */
KIVDB_API void KIVDB_CALL kivdb_disconnect(kivdb_conn* conn);

/* The calling thread's last error, "" when the last call succeeded. Valid until the next call. */
KIVDB_API const char* KIVDB_CALL kivdb_last_error(void);
/* The kind of the calling thread's last error, KIVDB_ERROR_NONE when the last call succeeded. */
enum kivdb_error_kind {
    KIVDB_ERROR_NONE = 0,
    KIVDB_ERROR_SQL = 1,      /* a statement the server would reject, or one the library cannot run */
    KIVDB_ERROR_DATABASE = 2, /* the database, its driver or the connection failed */
    KIVDB_ERROR_VALUE = 3,    /* a value that is not of the type asked for */
    KIVDB_ERROR_DATE = 4,     /* a text or number that is not a date */
    KIVDB_ERROR_SCHEMA = 5,   /* the schema scripts could not be read or run */
    KIVDB_ERROR_ARGUMENT = 6, /* bad input: a null, invalid or closed handle, text that is not in
                               * the library's encoding, a quote in a text value, an unknown option */
    KIVDB_ERROR_INTERNAL = 7  /* a fault of the library itself */
};
KIVDB_API int32_t KIVDB_CALL kivdb_last_error_kind(void);
/* "GB18030" (default; "GBK" and "CP936" name it too) or "UTF-8"; answers false for an
 * encoding the library does not know. */
KIVDB_API bool KIVDB_CALL kivdb_set_encoding(const char* name);
KIVDB_API void KIVDB_CALL kivdb_free(char* text);

/* Variants: null, integer, float, text, Boolean, date, or an array of variants. */
enum kivdb_variant_type {
    KIVDB_VT_NULL = 0, KIVDB_VT_INT = 1, KIVDB_VT_FLOAT = 2, KIVDB_VT_TEXT = 3,
    KIVDB_VT_BOOL = 4, KIVDB_VT_DATE = 5, KIVDB_VT_ARRAY = 6
};
KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_null(void);
KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_int(int64_t value);
KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_float(double value);
KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_text(const char* value);
KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_bool(bool value);
KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_date(double value);
/* An array holding copies of the items. */
KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_array(const kivdb_variant* const* items, int32_t count);
KIVDB_API int32_t KIVDB_CALL kivdb_variant_type(const kivdb_variant* v);
KIVDB_API int64_t KIVDB_CALL kivdb_variant_as_int(const kivdb_variant* v);
KIVDB_API double KIVDB_CALL kivdb_variant_as_float(const kivdb_variant* v);
/* The value as text; the caller frees it with kivdb_free. */
KIVDB_API char* KIVDB_CALL kivdb_variant_as_text(const kivdb_variant* v);
KIVDB_API int32_t KIVDB_CALL kivdb_variant_count(const kivdb_variant* v);
KIVDB_API const kivdb_variant* KIVDB_CALL kivdb_variant_item(const kivdb_variant* v, int32_t index);
KIVDB_API void KIVDB_CALL kivdb_variant_free(kivdb_variant* v);

/* The host's data modules, searched by GetDataConnection. A component given a connection URL
 * is a connection component; it connects when GetDataConnection first opens it. */
KIVDB_API kivdb_host_module* KIVDB_CALL kivdb_host_add_data_module(const char* class_name);
KIVDB_API bool KIVDB_CALL kivdb_host_add_component(kivdb_host_module* module, const char* class_name,
                                                   const char* connection_url);
KIVDB_API void KIVDB_CALL kivdb_host_remove_data_module(kivdb_host_module* module);

/* Datasets. A query reads its statement's rows as navigation reaches them and writes edits
 * back to the one table they come from, by its primary key: at once on post and delete, or,
 * in batch mode, when kivdb_query_apply_updates runs them in one transaction. Actions answer
 * true when done and false on an error; kivdb_dataset_eof and _bof answer true on an error,
 * so a loop over the rows ends. States are the framework's ordinals: 0 inactive, 1 browse,
 * 2 edit, 3 insert, 4 set-key. Fields are named without regard to case. */
KIVDB_API kivdb_dataset* KIVDB_CALL kivdb_query_new(kivdb_conn* conn, const char* sql); /* closed */
KIVDB_API kivdb_dataset* KIVDB_CALL kivdb_query_open(kivdb_conn* conn, const char* sql); /* new and open */
KIVDB_API void KIVDB_CALL kivdb_dataset_free(kivdb_dataset* ds);
KIVDB_API bool KIVDB_CALL kivdb_dataset_open(kivdb_dataset* ds);
KIVDB_API bool KIVDB_CALL kivdb_dataset_close(kivdb_dataset* ds);
KIVDB_API bool KIVDB_CALL kivdb_dataset_first(kivdb_dataset* ds);
KIVDB_API bool KIVDB_CALL kivdb_dataset_next(kivdb_dataset* ds);
KIVDB_API bool KIVDB_CALL kivdb_dataset_prior(kivdb_dataset* ds);
KIVDB_API bool KIVDB_CALL kivdb_dataset_last(kivdb_dataset* ds);
KIVDB_API int32_t KIVDB_CALL kivdb_dataset_move_by(kivdb_dataset* ds, int32_t distance); /* how far it moved */
KIVDB_API bool KIVDB_CALL kivdb_dataset_eof(kivdb_dataset* ds);
KIVDB_API bool KIVDB_CALL kivdb_dataset_bof(kivdb_dataset* ds);
KIVDB_API int32_t KIVDB_CALL kivdb_dataset_record_count(kivdb_dataset* ds); /* reads every row */
KIVDB_API int32_t KIVDB_CALL kivdb_dataset_rec_no(kivdb_dataset* ds); /* 1-based; -1 none */
KIVDB_API int32_t KIVDB_CALL kivdb_dataset_state(kivdb_dataset* ds);
KIVDB_API int32_t KIVDB_CALL kivdb_dataset_field_count(kivdb_dataset* ds);
KIVDB_API void KIVDB_CALL kivdb_dataset_field_name(char** result, kivdb_dataset* ds, int32_t index);
/* The current row's value of a field; null reads as "", 0, 0.0, date 0 or false. */
KIVDB_API void KIVDB_CALL kivdb_dataset_get_text(char** result, kivdb_dataset* ds, const char* field);
KIVDB_API int64_t KIVDB_CALL kivdb_dataset_get_int(kivdb_dataset* ds, const char* field);
KIVDB_API double KIVDB_CALL kivdb_dataset_get_float(kivdb_dataset* ds, const char* field);
KIVDB_API double KIVDB_CALL kivdb_dataset_get_date(kivdb_dataset* ds, const char* field);
KIVDB_API bool KIVDB_CALL kivdb_dataset_get_bool(kivdb_dataset* ds, const char* field);
KIVDB_API bool KIVDB_CALL kivdb_dataset_is_null(kivdb_dataset* ds, const char* field);
KIVDB_API void KIVDB_CALL kivdb_dataset_get_variant(kivdb_variant** result, kivdb_dataset* ds, const char* field);
/* The text a grid shows: the value through the field's display format (DisVisablePrice's mask). */
KIVDB_API void KIVDB_CALL kivdb_dataset_display_text(char** result, kivdb_dataset* ds, const char* field);
/* Setting needs edit or insert state; the value is kept as the field's type. */
KIVDB_API bool KIVDB_CALL kivdb_dataset_set_text(kivdb_dataset* ds, const char* field, const char* value);
KIVDB_API bool KIVDB_CALL kivdb_dataset_set_int(kivdb_dataset* ds, const char* field, int64_t value);
KIVDB_API bool KIVDB_CALL kivdb_dataset_set_float(kivdb_dataset* ds, const char* field, double value);
KIVDB_API bool KIVDB_CALL kivdb_dataset_set_null(kivdb_dataset* ds, const char* field);
KIVDB_API bool KIVDB_CALL kivdb_dataset_set_variant(kivdb_dataset* ds, const char* field, const kivdb_variant* value);
KIVDB_API bool KIVDB_CALL kivdb_dataset_edit(kivdb_dataset* ds);
KIVDB_API bool KIVDB_CALL kivdb_dataset_insert(kivdb_dataset* ds);
KIVDB_API bool KIVDB_CALL kivdb_dataset_append(kivdb_dataset* ds);
KIVDB_API bool KIVDB_CALL kivdb_dataset_post(kivdb_dataset* ds);
KIVDB_API bool KIVDB_CALL kivdb_dataset_cancel(kivdb_dataset* ds);
KIVDB_API bool KIVDB_CALL kivdb_dataset_delete(kivdb_dataset* ds);
/* Batch mode on a query: edits wait for apply_updates; switching refuses while some wait. */
KIVDB_API bool KIVDB_CALL kivdb_query_set_batch(kivdb_dataset* ds, bool batch);
KIVDB_API bool KIVDB_CALL kivdb_query_updates_pending(kivdb_dataset* ds);
KIVDB_API bool KIVDB_CALL kivdb_query_apply_updates(kivdb_dataset* ds);
KIVDB_API bool KIVDB_CALL kivdb_query_cancel_updates(kivdb_dataset* ds); /* and reads the rows again */

/* String lists. */
KIVDB_API kivdb_strings* KIVDB_CALL kivdb_strings_new(void);
KIVDB_API void KIVDB_CALL kivdb_strings_free(kivdb_strings* list);
KIVDB_API int32_t KIVDB_CALL kivdb_strings_count(kivdb_strings* list);
KIVDB_API void KIVDB_CALL kivdb_strings_item(char** result, kivdb_strings* list, int32_t index);
KIVDB_API int32_t KIVDB_CALL kivdb_strings_add(kivdb_strings* list, const char* text); /* the new index; -1 on error */
KIVDB_API bool KIVDB_CALL kivdb_strings_clear(kivdb_strings* list);

#include "kivdb_exports.h"

#ifdef __cplusplus
}
#endif

#endif /* KIVDB_H */
