#pragma once
// What the generated C wrappers need: handle conversion, string encoding, and the guard
// that turns an exception into the export's default answer plus the thread's last error.
#include "kivdb.h"
#include "platform/connection.h"

#include <QVariantList>
#include <exception>
#include <memory>
#include <vector>

struct kivdb_conn {
    kivdb::Connection* connection = nullptr;
    std::unique_ptr<kivdb::Connection> owned;  // empty for a host-owned connection
};

// A variant crossing the boundary. An array keeps its items as variants of their own so
// that a pointer to an item stays valid as long as the array.
struct kivdb_variant {
    QVariant value;  // unused for arrays
    bool isArray = false;
    std::vector<std::unique_ptr<kivdb_variant>> items;
};

namespace kivdb::abi {

void setLastError(const QString& message);
void clearLastError();

// Runs body; on an exception records its message and answers fallback.
template <typename T, typename Body>
T guarded(T fallback, Body&& body) {
    try {
        T result = body();
        clearLastError();
        return result;
    } catch (const std::exception& e) {
        setLastError(QString::fromUtf8(e.what()));
    } catch (...) {
        setLastError(QStringLiteral("unknown error"));
    }
    return fallback;
}

template <typename Body>
void guarded(Body&& body) {
    guarded<int>(0, [&] { body(); return 0; });
}

Connection& connection(kivdb_conn* handle);         // throws for a null handle
kivdb_conn* connectionHandle(Connection* connection);  // host-owned; null stays null

QString inText(const char* text);                   // null reads as ""
QByteArray outText(const QString& text);            // in the library's encoding
char* newText(const QString& text);                 // malloc'ed, for kivdb_free
void storeText(char** result, const QString& text);

QVariant inVariant(const kivdb_variant* v);
QVariantList inVariantArray(const kivdb_variant* v);
kivdb_variant* newVariant(const QVariant& value);
void storeVariant(kivdb_variant** result, const QVariant& value);

}  // namespace kivdb::abi
