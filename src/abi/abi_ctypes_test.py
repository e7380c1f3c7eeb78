"""The C interface from Python ctypes: Chinese text both ways, text beyond GBK as Python's
own GB18030 codec writes it, hidden string results, the last error and its kind, variants and arrays. Run by ctest with the library's path as argument."""
import ctypes
import os
import sys
import tempfile

lib = ctypes.CDLL(sys.argv[1])
lib.kivdb_connect.restype = ctypes.c_void_p
lib.kivdb_connect.argtypes = [ctypes.c_char_p]
lib.kivdb_disconnect.argtypes = [ctypes.c_void_p]
lib.kivdb_last_error.restype = ctypes.c_char_p
lib.kivdb_last_error_kind.restype = ctypes.c_int32
KIVDB_ERROR_SQL, KIVDB_ERROR_ARGUMENT = 1, 6  # kivdb.h
lib.kivdb_set_encoding.argtypes = [ctypes.c_char_p]
lib.kivdb_set_encoding.restype = ctypes.c_bool
lib.kivdb_free.argtypes = [ctypes.c_void_p]
lib.ExecTmpQuery.argtypes = [ctypes.c_void_p, ctypes.c_char_p]
lib.SelTableStringValue.argtypes = [ctypes.POINTER(ctypes.c_void_p), ctypes.c_void_p, ctypes.c_char_p]
lib.SelTableFloatValue.argtypes = [ctypes.c_void_p, ctypes.c_char_p]
lib.SelTableFloatValue.restype = ctypes.c_double
lib.SelTableBooleanValue.argtypes = [ctypes.c_void_p, ctypes.c_char_p]
lib.SelTableBooleanValue.restype = ctypes.c_bool
lib.SelTableIntegerValue2.argtypes = [ctypes.c_void_p, ctypes.c_char_p]
lib.SelTableIntegerValue2.restype = ctypes.c_int32
lib.SelTableVariantValue.argtypes = [ctypes.POINTER(ctypes.c_void_p), ctypes.c_void_p, ctypes.c_char_p]
lib.kivdb_variant_type.argtypes = [ctypes.c_void_p]
lib.kivdb_variant_as_text.argtypes = [ctypes.c_void_p]
lib.kivdb_variant_as_text.restype = ctypes.c_void_p
lib.kivdb_variant_free.argtypes = [ctypes.c_void_p]

results = {"passed": 0, "failed": 0}


def check(ok, what):
    if ok:
        results["passed"] += 1
    else:
        results["failed"] += 1
        print(f"FAILED: {what}: {lib.kivdb_last_error()!r}", file=sys.stderr)


def text_result(export, conn, sql, encoding):
    holder = ctypes.c_void_p()
    export(ctypes.byref(holder), conn, sql.encode(encoding))
    value = ctypes.string_at(holder.value).decode(encoding)
    lib.kivdb_free(holder)
    return value


with tempfile.TemporaryDirectory() as tmp:
    path = os.path.join(tmp, "ctypes.db")
    open(path, "w").close()  # an empty file is an empty embedded database
    conn = lib.kivdb_connect(f"sqlite:{path}".encode())
    check(conn is not None, "connect")
    lib.ExecTmpQuery(conn, "create table Bs_Customer (CustNo varchar(10), CustName varchar(40), "
                           "Credit float, SaleByTax bit)".encode("gbk"))
    lib.ExecTmpQuery(conn, "insert into Bs_Customer values ('C1', '华东机械厂', 1250.5, 1)".encode("gbk"))
    check(text_result(lib.SelTableStringValue, conn,
                      "select CustName from Bs_Customer where CustNo = 'C1'", "gbk") == "华东机械厂",
          "GBK round trip")
    check(text_result(lib.SelTableStringValue, conn,
                      "select CustNo from Bs_Customer where CustName = '华东机械厂'", "gbk") == "C1",
          "GBK argument")
    beyond = "a\U00020000\U0001F600\u00df\u20a9\u00a0\ud55cb"
    lib.ExecTmpQuery(conn, f"insert into Bs_Customer values ('C2', '{beyond}', 0, 0)".encode("gb18030"))
    check(text_result(lib.SelTableStringValue, conn,
                      "select CustName from Bs_Customer where CustNo = 'C2'", "gb18030") == beyond,
          "GB18030 beyond GBK")
    lib.ExecTmpQuery(conn, b"insert into Bs_Customer values ('C3', 'a\x81 b', 0, 0)")
    check(b"GB18030" in lib.kivdb_last_error() and lib.kivdb_last_error_kind() == KIVDB_ERROR_ARGUMENT, "invalid bytes refused")
    lib.ExecTmpQuery(conn, b"delete from Bs_Customer where CustNo <> 'C1'")
    check(lib.SelTableFloatValue(conn, b"select Credit from Bs_Customer") == 1250.5, "float result")
    check(lib.SelTableBooleanValue(conn, b"select SaleByTax from Bs_Customer") is True, "Boolean result")
    check(lib.SelTableIntegerValue2(conn, b"select Credit from Bs_Customer where 1 = 0") == -1, "-1 default")

    variant = ctypes.c_void_p()
    lib.SelTableVariantValue(ctypes.byref(variant), conn, b"select CustNo from Bs_Customer where 1 = 0")
    check(lib.kivdb_variant_type(variant) == 0, "null variant")
    lib.SelTableVariantValue(ctypes.byref(variant), conn, b"select Credit from Bs_Customer")
    check(lib.kivdb_variant_type(variant) == 2, "float variant")
    lib.kivdb_variant_free(variant)

    check(lib.SelTableFloatValue(conn, b"select nothing from nowhere") == 0.0, "default on error")
    check(len(lib.kivdb_last_error()) > 0 and lib.kivdb_last_error_kind() == KIVDB_ERROR_SQL, "error message and kind kept")

    check(lib.kivdb_set_encoding(b"UTF-8"), "switch encoding")
    check(text_result(lib.SelTableStringValue, conn,
                      "select CustName from Bs_Customer where CustNo = 'C1'", "utf-8") == "华东机械厂",
          "UTF-8 round trip")
    lib.ExecTmpQuery(conn, "select * from 不存在的表".encode("utf-8"))
    check("不存在的表" in lib.kivdb_last_error().decode("utf-8"), "Chinese in error messages")
    lib.kivdb_disconnect(conn)

print(f"{results['passed']} passed, {results['failed']} failed")
sys.exit(1 if results["failed"] else 0)
