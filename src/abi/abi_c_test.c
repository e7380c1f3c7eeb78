/* The C interface as a C host uses it: connect, call exports with GBK text both ways,
 * characters beyond GBK, hidden string results, the thread's last error and its kind, switching to
 * UTF-8, stale handles, threads sharing one connection, and datasets and string lists made,
 * driven and passed to exports through handles. Prints the plain
 * "N passed, N failed" line and exits non-zero on any failure. */
#include "kivdb.h"

#include <pthread.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static int passed, failed;

static void check(int ok, const char* what) {
    if (ok) ++passed;
    else { ++failed; fprintf(stderr, "FAILED: %s (last error: %s)\n", what, kivdb_last_error()); }
}

/* "甲乙" in GBK and in UTF-8. */
static const char kGbk[] = "\xbc\xd7\xd2\xd2";
static const char kUtf8[] = "\xe7\x94\xb2\xe4\xb9\x99";

/* Text GBK has no bytes for, as GB18030 writes it: U+20000, U+1F600, sharp s, won sign. */
static const char kBeyondGbk[] = "a\x95\x32\x82\x36\x94\x39\xfc\x36\x81\x30\x89\x38\x81\x36\xb2\x39" "b";

enum { kThreads = 8, kCallsPerThread = 500 };

struct Worker {
    kivdb_conn* conn;
    int index;
    int wrong;
};

/* Each thread asks for numbers it knows, in texts of its own, on the one shared connection;
 * its last error is its own. */
static void* hammer(void* arg) {
    struct Worker* w = (struct Worker*)arg;
    char sql[64];
    for (int i = 0; i < kCallsPerThread; ++i) {
        snprintf(sql, sizeof sql, "select %d * 1000 + %d", w->index, i);
        if (SelTableIntValue(w->conn, sql) != w->index * 1000 + i || kivdb_last_error()[0] != '\0') ++w->wrong;
        if (i % 100 == 0 && GetTableMaxInteger(w->conn, "Bs_ProdList", "Qty") != 7) ++w->wrong;
    }
    return NULL;
}

static void checkThreadsShareOneConnection(kivdb_conn* conn) {
    pthread_t threads[kThreads];
    struct Worker workers[kThreads];
    for (int t = 0; t < kThreads; ++t) {
        workers[t] = (struct Worker){conn, t, 0};
        pthread_create(&threads[t], NULL, hammer, &workers[t]);
    }
    int wrong = 0;
    for (int t = 0; t < kThreads; ++t) {
        pthread_join(threads[t], NULL);
        wrong += workers[t].wrong;
    }
    check(wrong == 0, "threads sharing one connection all get their own answers");
}

static void callDisconnectNull(void) { kivdb_disconnect(NULL); }
static void callVariantInt(void) { kivdb_variant_free(kivdb_variant_int(1)); }
static void callVariantCount(void) { kivdb_variant_count(NULL); }
static void callSetEncoding(void) { kivdb_set_encoding("GBK"); }

/* Each call leaves the kind of its error, or none, for kivdb_last_error_kind. */
static kivdb_conn* kindConn;
static void callRejectedSql(void) { SelTableIntValue(kindConn, "select Nope from Bs_ProdList"); }
static void callConstraint(void) { ExecTmpQuery(kindConn, "insert into Kind_Key values (1); insert into Kind_Key values (1)"); }
static void callGood(void) { SelTableIntValue(kindConn, "select Qty from Bs_ProdList"); }
static void callNullConnection(void) { SelTableIntValue(NULL, "select 1"); }
static void callUnknownHandle(void) { SelTableIntValue((kivdb_conn*)(uintptr_t)0x1234, "select 1"); }
static void callNotAnInteger(void) { SelTableIntValue(kindConn, "select 'abc'"); }
static void callNotADate(void) { SelTableDateValue(kindConn, "select 'abc'"); }
static void callStrayLeadByte(void) { ExecTmpQuery(kindConn, "select 'a\x81 b'"); }
static void callQuotedValue(void) { TableExistStringValue(kindConn, "Bs_ProdList", "PartNo", "P1' or '1'='1"); }
static void callUnknownEncoding(void) { kivdb_set_encoding("EBCDIC"); }
static void callMissingDatabase(void) { kivdb_connect("sqlite:/nonexistent/dir/x.db"); }

static void checkErrorKinds(kivdb_conn* conn) {
    kindConn = conn;
    ExecTmpQuery(conn, "create table Kind_Key (Id int primary key)");
    struct { void (*call)(void); int32_t kind; const char* what; } cases[] = {
        {callRejectedSql, KIVDB_ERROR_SQL, "a column the table lacks"},
        {callConstraint, KIVDB_ERROR_SQL, "a duplicate key"},
        {callGood, KIVDB_ERROR_NONE, "a call that succeeds"},
        {callNullConnection, KIVDB_ERROR_ARGUMENT, "a null connection"},
        {callUnknownHandle, KIVDB_ERROR_ARGUMENT, "a handle the library never gave out"},
        {callNotAnInteger, KIVDB_ERROR_VALUE, "text asked for as an integer"},
        {callNotADate, KIVDB_ERROR_VALUE, "text asked for as a date"},
        {callStrayLeadByte, KIVDB_ERROR_ARGUMENT, "text not in the encoding"},
        {callQuotedValue, KIVDB_ERROR_ARGUMENT, "a quote in a text value"},
        {callUnknownEncoding, KIVDB_ERROR_ARGUMENT, "an unknown encoding"},
        {callMissingDatabase, KIVDB_ERROR_DATABASE, "a database that is not there"},
    };
    char what[128];
    for (size_t i = 0; i < sizeof cases / sizeof cases[0]; ++i) {
        SelTableIntValue(NULL, "select 1");
        cases[i].call();
        snprintf(what, sizeof what, "error kind: %s", cases[i].what);
        check(kivdb_last_error_kind() == cases[i].kind, what);
        check((kivdb_last_error()[0] == '\0') == (cases[i].kind == KIVDB_ERROR_NONE), what);
    }
}

static int failsWith(const char* fragment) { return strstr(kivdb_last_error(), fragment) != NULL; }

/* A handle that was closed, whose data module was removed, or that never came from the
 * library answers an error, never a crash. */
static void checkStaleHandles(const char* url) {
    kivdb_host_module* module = kivdb_host_add_data_module("TKivDmDataModule");
    check(kivdb_host_add_component(module, "TADOConnection", url), "host connection component");
    kivdb_conn* host = GetDataConnection();
    check(host && SelTableIntValue(host, "select 7") == 7, "host connection works");
    check(GetDataConnection() == host, "the same handle for the same connection");
    kivdb_host_remove_data_module(module);
    check(SelTableIntValue(host, "select 7") == 0 && failsWith("invalid connection handle"),
          "a connection of a removed data module");
    check(GetDataConnection() == NULL, "no data module left");
    check(!kivdb_host_add_component(module, "TADOConnection", url) && failsWith("invalid data module handle"),
          "a removed data module");
    kivdb_host_remove_data_module(module);
    check(failsWith("invalid data module handle"), "a data module removed twice");

    kivdb_conn* closed = kivdb_connect(url);
    kivdb_disconnect(closed);
    check(SelTableIntValue(closed, "select 7") == 0 && failsWith("invalid connection handle"), "a closed connection");
    kivdb_disconnect(closed);
    check(failsWith("invalid connection handle"), "a connection closed twice");
    check(SelTableIntValue((kivdb_conn*)(uintptr_t)0x1234, "select 7") == 0 && failsWith("invalid connection handle"),
          "a handle the library never gave out");
    check(SelTableIntValue((kivdb_conn*)module, "select 7") == 0 && failsWith("invalid connection handle"),
          "a data module passed as a connection");
}

/* The dataset's position, state and current row in one line. */
static const char* describe(kivdb_dataset* ds) {
    static char line[160];
    char* code = NULL;
    kivdb_dataset_get_text(&code, ds, "code");
    snprintf(line, sizeof line, "rec %d eof %d bof %d state %d %s=%lld%s", kivdb_dataset_rec_no(ds),
             kivdb_dataset_eof(ds), kivdb_dataset_bof(ds), kivdb_dataset_state(ds), code ? code : "?",
             (long long)kivdb_dataset_get_int(ds, "QTY"), kivdb_dataset_is_null(ds, "qty") ? " null" : "");
    kivdb_free(code);
    return line;
}

enum Op { FIRST, NEXT, PRIOR, LAST, MOVE_BY, EDIT, INSERT, APPEND, SET_TEXT, SET_INT, SET_NULL, POST, CANCEL, DELETE };

static void step(kivdb_dataset* ds, enum Op op, const char* field, int value) {
    char text[16];
    snprintf(text, sizeof text, "%d", value);
    switch (op) {
    case FIRST: kivdb_dataset_first(ds); break;
    case NEXT: kivdb_dataset_next(ds); break;
    case PRIOR: kivdb_dataset_prior(ds); break;
    case LAST: kivdb_dataset_last(ds); break;
    case MOVE_BY: kivdb_dataset_move_by(ds, value); break;
    case EDIT: kivdb_dataset_edit(ds); break;
    case INSERT: kivdb_dataset_insert(ds); break;
    case APPEND: kivdb_dataset_append(ds); break;
    case SET_TEXT: kivdb_dataset_set_text(ds, field, field[0] == 'c' ? "N" : text); break;
    case SET_INT: kivdb_dataset_set_int(ds, field, value); break;
    case SET_NULL: kivdb_dataset_set_null(ds, field); break;
    case POST: kivdb_dataset_post(ds); break;
    case CANCEL: kivdb_dataset_cancel(ds); break;
    case DELETE: kivdb_dataset_delete(ds); break;
    }
}

static void checkDatasets(kivdb_conn* conn, const char* url) {
    ExecTmpQuery(conn, "create table Ds_Note (code varchar(10) primary key, qty int)");
    ExecTmpQuery(conn, "insert into Ds_Note values ('A', 1); insert into Ds_Note values ('B', 2); "
                       "insert into Ds_Note values ('C', 3)");
    kivdb_dataset* ds = kivdb_query_open(conn, "select code, qty from Ds_Note order by code");
    check(ds && kivdb_dataset_record_count(ds) == 3 && kivdb_dataset_field_count(ds) == 2, "a query opens");
    struct { enum Op op; const char* field; int value; const char* expected; } steps[] = {
        {LAST, NULL, 0, "rec 3 eof 1 bof 0 state 1 C=3"},
        {NEXT, NULL, 0, "rec 3 eof 1 bof 0 state 1 C=3"},
        {MOVE_BY, NULL, -2, "rec 1 eof 0 bof 0 state 1 A=1"},
        {PRIOR, NULL, 0, "rec 1 eof 0 bof 1 state 1 A=1"},
        {EDIT, NULL, 0, "rec 1 eof 0 bof 1 state 2 A=1"},
        {SET_TEXT, "qty", 11, "rec 1 eof 0 bof 1 state 2 A=11"},
        {CANCEL, NULL, 0, "rec 1 eof 0 bof 1 state 1 A=1"},
        {EDIT, NULL, 0, "rec 1 eof 0 bof 1 state 2 A=1"},
        {SET_NULL, "Qty", 0, "rec 1 eof 0 bof 1 state 2 A=0 null"},
        {POST, NULL, 0, "rec 1 eof 0 bof 1 state 1 A=0 null"},
        {APPEND, NULL, 0, "rec -1 eof 1 bof 1 state 3 =0 null"},
        {SET_TEXT, "code", 0, "rec -1 eof 1 bof 1 state 3 N=0 null"},
        {SET_INT, "qty", 14, "rec -1 eof 1 bof 1 state 3 N=14"},
        {POST, NULL, 0, "rec 4 eof 0 bof 0 state 1 N=14"},
        {FIRST, NULL, 0, "rec 1 eof 0 bof 1 state 1 A=0 null"},
        {NEXT, NULL, 0, "rec 2 eof 0 bof 0 state 1 B=2"},
        {DELETE, NULL, 0, "rec 2 eof 0 bof 0 state 1 C=3"},
        /* Edits refused leave the row as it was. */
        {SET_INT, "qty", 5, "rec 2 eof 0 bof 0 state 1 C=3"},
        {POST, NULL, 0, "rec 2 eof 0 bof 0 state 1 C=3"},
    };
    char what[200];
    for (size_t i = 0; i < sizeof steps / sizeof steps[0]; ++i) {
        step(ds, steps[i].op, steps[i].field, steps[i].value);
        const char* seen = describe(ds);
        snprintf(what, sizeof what, "dataset step %zu: %s, expected %s", i, seen, steps[i].expected);
        check(strcmp(seen, steps[i].expected) == 0, what);
    }
    check(SelTableIntegerValue2(conn, "select qty from Ds_Note where code = 'A'") == -1 &&
              SelTableIntValue(conn, "select qty from Ds_Note where code = 'N'") == 14 &&
              SelTableIntValue(conn, "select count(*) from Ds_Note") == 3,
          "edits are written back at once");

    /* Batch mode keeps edits until they are applied. */
    check(kivdb_query_set_batch(ds, true) && kivdb_dataset_edit(ds) && kivdb_dataset_set_int(ds, "qty", 30) &&
          kivdb_dataset_post(ds) && kivdb_query_updates_pending(ds), "a batch edit waits");
    check(SelTableIntValue(conn, "select qty from Ds_Note where code = 'C'") == 3, "nothing written before applying");
    check(kivdb_query_apply_updates(ds) && !kivdb_query_updates_pending(ds) &&
          SelTableIntValue(conn, "select qty from Ds_Note where code = 'C'") == 30, "applied in one go");

    /* Exports on handles: the counter, the header and every line stamped; a pick list filled. */
    ExecTmpQuery(conn, "create table BillCode (BillId int, SeqNo int); insert into BillCode values (0, 5); "
                       "create table Ds_Hd (NoteNo varchar(10) primary key, refNo int); "
                       "create table Ds_Dtl (LineId int primary key, RefNo int); "
                       "insert into Ds_Dtl values (1, 0); insert into Ds_Dtl values (2, 0)");
    kivdb_dataset* master = kivdb_query_open(conn, "select * from Ds_Hd");
    kivdb_dataset* detail = kivdb_query_open(conn, "select * from Ds_Dtl order by LineId");
    check(kivdb_dataset_append(master) && kivdb_dataset_last(detail), "master appended, detail on its last line");
    updateTableRefNo(conn, master, detail, 5);
    check(SelTableIntValue(conn, "select SeqNo from BillCode") == 6 && kivdb_dataset_get_int(master, "REFNO") == 6 &&
              SelTableIntValue(conn, "select sum(RefNo) from Ds_Dtl") == 12 && kivdb_dataset_rec_no(detail) == 1,
          "updateTableRefNo through handles");
    kivdb_strings* list = kivdb_strings_new();
    kivdb_strings_add(list, "old");
    SqlAddPickList(conn, "select code from Ds_Note order by code desc", list);
    char* item = NULL;
    kivdb_strings_item(&item, list, 2);
    check(kivdb_strings_count(list) == 3 && item && strcmp(item, "A") == 0, "SqlAddPickList fills the list");
    kivdb_strings_item(&item, list, 3);
    check(kivdb_last_error_kind() == KIVDB_ERROR_ARGUMENT, "an item out of range");
    kivdb_free(item);
    item = NULL;  /* the library frees what the variable holds: it must hold nothing freed */
    kivdb_variant* names[] = {kivdb_variant_text("qty")};
    kivdb_variant* masked = kivdb_variant_array((const kivdb_variant* const*)names, 1);
    DisVisablePrice(ds, masked);
    kivdb_dataset_display_text(&item, ds, "qty");
    check(item && strcmp(item, "****") == 0, "DisVisablePrice masks what a grid shows");
    kivdb_free(item);
    kivdb_variant_free(masked);
    kivdb_variant_free(names[0]);
    xRunQuery(ds, "select count(*) as n from Ds_Note", true);
    check(kivdb_dataset_get_int(ds, "n") == 3, "xRunQuery opens the new statement");

    /* A dataset keeps its connection; freed handles and handles of another kind are refused. */
    kivdb_conn* own = kivdb_connect(url);
    kivdb_dataset* kept = kivdb_query_new(own, "select code from Ds_Note order by code");
    kivdb_disconnect(own);
    check(kivdb_dataset_open(kept) && kivdb_dataset_record_count(kept) == 3, "a dataset outlives its connection handle");
    kivdb_dataset_free(kept);
    check(!kivdb_dataset_first(kept) && failsWith("invalid dataset handle") &&
              kivdb_last_error_kind() == KIVDB_ERROR_ARGUMENT && kivdb_dataset_eof(kept),
          "a freed dataset");
    PostDataSet((kivdb_dataset*)list);
    check(failsWith("invalid dataset handle"), "a string list passed as a dataset");
    kivdb_strings_free(list);
    check(kivdb_strings_count(list) == 0 && failsWith("invalid string list handle"), "a freed string list");
    kivdb_dataset_free(master);
    kivdb_dataset_free(detail);
    kivdb_dataset_free(ds);
}

int main(int argc, char** argv) {
    char url[512];
    snprintf(url, sizeof url, "sqlite:%s", argc > 1 ? argv[1] : "abi_c_test.db");
    /* An empty file is an empty embedded database; the library opens only existing ones. */
    FILE* created = fopen(url + 7, "w");
    if (created) fclose(created);
    kivdb_conn* conn = kivdb_connect(url);
    check(conn != NULL, "connect");
    check(kivdb_connect("sqlite:/nonexistent/dir/x.db") == NULL && strlen(kivdb_last_error()) > 0,
          "a missing database is refused");
    if (!conn) { printf("%d passed, %d failed\n", passed, failed); return 1; }

    ExecTmpQuery(conn, "create table Bs_ProdList (PartNo varchar(20), PartName varchar(40), Qty int)");
    check(kivdb_last_error()[0] == '\0', "create table");
    char insert[256];
    snprintf(insert, sizeof insert, "insert into Bs_ProdList values ('P1', '%s', 7)", kGbk);
    ExecTmpQuery(conn, insert);

    /* The hidden result: whatever the variable held is released and replaced. */
    char* name = (char*)malloc(8);
    strcpy(name, "old");
    SelTableStringValue(&name, conn, "select PartName from Bs_ProdList where PartNo = 'P1'");
    check(name && strcmp(name, kGbk) == 0, "GBK text comes back as GBK");
    check(SelTableIntValue(conn, "select Qty from Bs_ProdList") == 7, "integer result");
    check(TableExistStringValue(conn, "Bs_ProdList", "PartName", kGbk), "GBK text goes in as GBK");

    /* Errors: the default answer and the message, cleared by the next good call. */
    check(SelTableIntValue(conn, "select Nope from Bs_ProdList") == 0, "default on error");
    check(strlen(kivdb_last_error()) > 0, "last error set");
    check(SelTableIntValue(conn, "select Qty from Bs_ProdList") == 7 && kivdb_last_error()[0] == '\0',
          "success clears the last error");
    check(!TableExistStringValue(conn, "Bs_ProdList", "PartNo", "P1' or '1'='1"), "quoted value refused");
    check(strlen(kivdb_last_error()) > 0, "quoted value reported");

    /* Beyond GBK: stored and read back byte for byte. Bytes that are no text are refused
     * and nothing is sent. */
    snprintf(insert, sizeof insert, "insert into Bs_ProdList values ('P2', '%s', 1)", kBeyondGbk);
    ExecTmpQuery(conn, insert);
    SelTableStringValue(&name, conn, "select PartName from Bs_ProdList where PartNo = 'P2'");
    check(name && strcmp(name, kBeyondGbk) == 0, "text beyond GBK comes back unchanged");
    ExecTmpQuery(conn, "insert into Bs_ProdList values ('P3', 'a\x81 b', 1)");
    check(failsWith("GB18030"), "a stray lead byte is refused");
    ExecTmpQuery(conn, "insert into Bs_ProdList values ('P3', 'ab', 1) -- \x81");
    check(failsWith("GB18030"), "a lead byte at the end is refused");
    check(SelTableIntValue(conn, "select count(*) from Bs_ProdList where PartNo = 'P3'") == 0, "nothing was sent");
    ExecTmpQuery(conn, "delete from Bs_ProdList where PartNo = 'P2'");

    check(kivdb_set_encoding("UTF-8"), "switch to UTF-8");
    SelTableStringValue(&name, conn, "select PartName from Bs_ProdList where PartNo = 'P1'");
    check(name && strcmp(name, kUtf8) == 0, "UTF-8 text after the switch");
    check(!kivdb_set_encoding("EBCDIC"), "unknown encoding refused");
    ExecTmpQuery(conn, "insert into Bs_ProdList values ('P3', 'a\xff', 1)");
    check(failsWith("UTF-8"), "invalid UTF-8 is refused");
    kivdb_set_encoding("GBK");

    GetSpErrorMsg(&name, -5);
    check(name && strcmp(name, "\xb7\xb5\xbb\xd8\xb4\xe6\xb4\xa2\xb9\xfd\xb3\xcc\xb4\xed\xce\xf3\xd0\xc5\xcf\xa2 -5") == 0,
          "export without connection");
    kivdb_free(name);

    check(SelTableIntValue(NULL, "select 1") == 0 && strlen(kivdb_last_error()) > 0, "null connection");
    /* Every call clears the error before it; releasing leaves it to be read. */
    struct { void (*call)(void); const char* what; } clearing[] = {
        {callDisconnectNull, "disconnect(NULL) clears the last error"},
        {callVariantInt, "a variant made clears the last error"},
        {callVariantCount, "a variant read clears the last error"},
        {callSetEncoding, "set_encoding clears the last error"},
    };
    for (size_t i = 0; i < sizeof clearing / sizeof clearing[0]; ++i) {
        SelTableIntValue(NULL, "select 1");
        clearing[i].call();
        check(kivdb_last_error()[0] == '\0' && kivdb_last_error_kind() == KIVDB_ERROR_NONE, clearing[i].what);
    }
    kivdb_variant* argument = kivdb_variant_null();
    SelTableIntValue(NULL, "select 1");
    kivdb_variant_free(argument);
    kivdb_free(NULL);
    check(strlen(kivdb_last_error()) > 0 && kivdb_last_error_kind() == KIVDB_ERROR_ARGUMENT, "releasing keeps the last error");
    checkErrorKinds(conn);
    checkThreadsShareOneConnection(conn);
    checkStaleHandles(url);
    checkDatasets(conn, url);
    kivdb_disconnect(conn);
    remove(url + 7);
    printf("%d passed, %d failed\n", passed, failed);
    return failed ? 1 : 0;
}
