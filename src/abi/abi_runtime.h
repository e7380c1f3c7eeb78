#pragma once
// What the generated C wrappers need: handle conversion, string encoding, and the guard
// that turns an exception into the export's default answer plus the thread's last error.
//
// Connection, data-module, dataset and string-list handles are numbers from a registry,
// never pointers the library trusts: every call looks its handle up, so a handle that was
// closed, freed, whose data module was removed, or that the library never gave out answers
// an error, not a crash. The handle types stay incomplete; the handle's value is the key.
#include "kivdb.h"
#include "platform/connection.h"
#include "platform/query_dataset.h"
#include "platform/string_list.h"
#include "platform/ui/library_setup.h"

#include <QVariantList>
#include <exception>
#include <initializer_list>
#include <memory>
#include <mutex>
#include <vector>

// A variant crossing the boundary. An array keeps its items as variants of their own so
// that a pointer to an item stays valid as long as the array.
struct kivdb_variant {
    QVariant value;  // unused for arrays
    bool isArray = false;
    std::vector<std::unique_ptr<kivdb_variant>> items;
};

namespace kivdb::abi {

// The thread's last error: its message and its KIVDB_ERROR_* kind.
void setLastError(const QString& message, int32_t kind);
void clearLastError();

// Runs body, the library set up first; on an exception records its message and kind and
// answers fallback. An exception that is no kivdb::Error is the library's own fault.
template <typename T, typename Body>
T guarded(T fallback, Body&& body) {
    try {
        setUpLibrary();
        T result = body();
        clearLastError();
        return result;
    } catch (const Error& e) {
        setLastError(QString::fromUtf8(e.what()), int32_t(e.kind()));
    } catch (const std::exception& e) {
        setLastError(QString::fromUtf8(e.what()), KIVDB_ERROR_INTERNAL);
    } catch (...) {
        setLastError(QStringLiteral("unknown error"), KIVDB_ERROR_INTERNAL);
    }
    return fallback;
}

template <typename Body>
void guarded(Body&& body) {
    guarded<int>(0, [&] { body(); return 0; });
}

// A dataset a host made: it keeps its connection open as long as it lives, and takes its
// connection's turn for every call, its closing included.
struct DataSetHandle {
    std::shared_ptr<Connection> connection;
    std::unique_ptr<DataSet> dataSet;
    ~DataSetHandle();
};

// A string list a host made; calls on it take turns.
struct StringListHandle {
    std::recursive_mutex mutex;
    StringList list;
};

// The handles of one call, kept alive until it ends even if another thread closes or frees
// one meanwhile, and locked for the whole call: every connection the call reaches, its
// datasets' included, then the string lists, each group in one global order, so calls on
// several handles cannot deadlock. Throws ErrorKind::Argument for an invalid handle.
class CallTurn {
public:
    CallTurn(std::initializer_list<kivdb_conn*> connections, std::initializer_list<kivdb_dataset*> dataSets = {},
             std::initializer_list<kivdb_strings*> lists = {});
    Connection& connection(size_t index) const { return *connections_.at(index); }
    const std::shared_ptr<Connection>& sharedConnection(size_t index) const { return connections_.at(index); }
    DataSet& dataSet(size_t index) const { return *dataSets_.at(index)->dataSet; }
    QueryDataSet& queryDataSet(size_t index) const;  // throws ErrorKind::Argument for another dataset
    StringList& strings(size_t index) const { return lists_.at(index)->list; }

private:
    std::vector<std::shared_ptr<Connection>> connections_;
    std::vector<std::shared_ptr<DataSetHandle>> dataSets_;
    std::vector<std::shared_ptr<StringListHandle>> lists_;
    std::vector<std::unique_lock<std::recursive_mutex>> locks_;  // released before the handles
};

// Handles for what a host makes through the C interface; freeing one throws
// ErrorKind::Argument for an unknown handle.
kivdb_dataset* dataSetHandle(std::shared_ptr<DataSetHandle> dataSet);
void freeDataSet(kivdb_dataset* handle);
kivdb_strings* stringListHandle();
void freeStringList(kivdb_strings* handle);

// The host's screen locked, for turning a connection found in it into a handle.
std::unique_lock<std::recursive_mutex> hostScreenLock();
// The handle of a connection the host's screen owns (GetDataConnection): the same handle
// each time for the same connection; null stays null.
kivdb_conn* connectionHandle(Connection* connection);

QString inText(const char* text);                   // null reads as ""
QByteArray outText(const QString& text);            // in the library's encoding
char* newText(const QString& text);                 // malloc'ed, for kivdb_free
void storeText(char** result, const QString& text);

QVariant inVariant(const kivdb_variant* v);
QVariantList inVariantArray(const kivdb_variant* v);
kivdb_variant* newVariant(const QVariant& value);
void storeVariant(kivdb_variant** result, const QVariant& value);

}  // namespace kivdb::abi
