/* The C interface as a C host uses it: connect, call exports with GBK text both ways,
 * hidden string results, the thread's last error, switching to UTF-8. Prints the plain
 * "N passed, N failed" line and exits non-zero on any failure. */
#include "kivdb.h"

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

    check(kivdb_set_encoding("UTF-8"), "switch to UTF-8");
    SelTableStringValue(&name, conn, "select PartName from Bs_ProdList where PartNo = 'P1'");
    check(name && strcmp(name, kUtf8) == 0, "UTF-8 text after the switch");
    check(!kivdb_set_encoding("EBCDIC"), "unknown encoding refused");
    kivdb_set_encoding("GBK");

    GetSpErrorMsg(&name, -5);
    check(name && strcmp(name, "\xb7\xb5\xbb\xd8\xb4\xe6\xb4\xa2\xb9\xfd\xb3\xcc\xb4\xed\xce\xf3\xd0\xc5\xcf\xa2 -5") == 0,
          "export without connection");
    kivdb_free(name);

    check(SelTableIntValue(NULL, "select 1") == 0 && strlen(kivdb_last_error()) > 0, "null connection");
    kivdb_disconnect(conn);
    remove(url + 7);
    printf("%d passed, %d failed\n", passed, failed);
    return failed ? 1 : 0;
}
