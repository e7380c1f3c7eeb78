#include "abi/abi_runtime.h"

#include "frame/host_screen.h"
#include "platform/field_values.h"
#include "platform/oledate.h"

#include <QHash>
#include <QStringDecoder>
#include <QStringEncoder>
#include <atomic>
#include <cstdlib>
#include <cstring>

namespace kivdb::abi {

namespace {

std::atomic<bool> utf8Boundary{false};  // GBK unless a host switches
thread_local QByteArray lastError;

QHash<Connection*, kivdb_conn*>& hostHandles() {
    static QHash<Connection*, kivdb_conn*> handles;
    return handles;
}

}  // namespace

void setLastError(const QString& message) { lastError = outText(message); }
void clearLastError() { lastError.clear(); }

Connection& connection(kivdb_conn* handle) {
    if (!handle || !handle->connection) throw DatabaseError(QStringLiteral("no connection (null handle)"));
    return *handle->connection;
}

kivdb_conn* connectionHandle(Connection* conn) {
    if (!conn) return nullptr;
    kivdb_conn*& handle = hostHandles()[conn];
    if (!handle) handle = new kivdb_conn{conn, nullptr};
    return handle;
}

QString inText(const char* text) {
    if (!text) return {};
    if (utf8Boundary) return QString::fromUtf8(text);
    QStringDecoder decoder("GBK");
    return decoder.decode(QByteArrayView(text, qsizetype(std::strlen(text))));
}

QByteArray outText(const QString& text) {
    if (utf8Boundary) return text.toUtf8();
    QStringEncoder encoder("GBK");
    return encoder.encode(text);
}

char* newText(const QString& text) {
    const QByteArray bytes = outText(text);
    char* copy = static_cast<char*>(std::malloc(size_t(bytes.size()) + 1));
    std::memcpy(copy, bytes.constData(), size_t(bytes.size()) + 1);
    return copy;
}

void storeText(char** result, const QString& text) {
    if (!result) return;
    std::free(*result);
    *result = newText(text);
}

QVariant inVariant(const kivdb_variant* v) {
    if (!v) return {};
    if (!v->isArray) return v->value;
    QVariantList list;
    for (const auto& item : v->items) list.append(inVariant(item.get()));
    return list;
}

// A single value passed where an array is expected counts as an array of one.
QVariantList inVariantArray(const kivdb_variant* v) {
    if (!v) return {};
    if (v->isArray) return inVariant(v).toList();
    return {v->value};
}

kivdb_variant* newVariant(const QVariant& value) {
    auto* v = new kivdb_variant;
    if (value.typeId() == QMetaType::QVariantList) {
        v->isArray = true;
        for (const QVariant& item : value.toList()) v->items.emplace_back(newVariant(item));
    } else {
        v->value = value;
    }
    return v;
}

void storeVariant(kivdb_variant** result, const QVariant& value) {
    if (!result) return;
    delete *result;
    *result = newVariant(value);
}

}  // namespace kivdb::abi

using namespace kivdb;

extern "C" {

KIVDB_API kivdb_conn* KIVDB_CALL kivdb_connect(const char* url) {
    return abi::guarded<kivdb_conn*>(nullptr, [&] {
        auto conn = Connection::open(abi::inText(url));
        Connection* raw = conn.get();
        return new kivdb_conn{raw, std::move(conn)};
    });
}

KIVDB_API void KIVDB_CALL kivdb_disconnect(kivdb_conn* conn) {
    if (conn && conn->owned) delete conn;
}

KIVDB_API const char* KIVDB_CALL kivdb_last_error(void) { return abi::lastError.constData(); }

KIVDB_API bool KIVDB_CALL kivdb_set_encoding(const char* name) {
    const QByteArray n = QByteArray(name ? name : "").toUpper();
    if (n == "UTF-8" || n == "UTF8") abi::utf8Boundary = true;
    else if (n == "GBK" || n == "CP936") abi::utf8Boundary = false;
    else return false;
    return true;
}

KIVDB_API void KIVDB_CALL kivdb_free(char* text) { std::free(text); }

KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_null(void) { return abi::newVariant({}); }
KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_int(int64_t value) { return abi::newVariant(qlonglong(value)); }
KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_float(double value) { return abi::newVariant(value); }
KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_text(const char* value) { return abi::newVariant(abi::inText(value)); }
KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_bool(bool value) { return abi::newVariant(value); }
KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_date(double value) {
    return abi::newVariant(fromOleDate(value));
}

KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_array(const kivdb_variant* const* items, int32_t count) {
    QVariantList list;
    for (int32_t i = 0; items && i < count; ++i) list.append(abi::inVariant(items[i]));
    return abi::newVariant(list);
}

KIVDB_API int32_t KIVDB_CALL kivdb_variant_type(const kivdb_variant* v) {
    if (v && v->isArray) return KIVDB_VT_ARRAY;
    const QVariant value = abi::inVariant(v);
    if (!value.isValid() || value.isNull()) return KIVDB_VT_NULL;
    switch (value.typeId()) {
    case QMetaType::Bool: return KIVDB_VT_BOOL;
    case QMetaType::Int:
    case QMetaType::LongLong: return KIVDB_VT_INT;
    case QMetaType::Double: return KIVDB_VT_FLOAT;
    case QMetaType::QDateTime:
    case QMetaType::QDate: return KIVDB_VT_DATE;
    case QMetaType::QVariantList: return KIVDB_VT_ARRAY;
    default: return KIVDB_VT_TEXT;
    }
}

KIVDB_API int64_t KIVDB_CALL kivdb_variant_as_int(const kivdb_variant* v) {
    return abi::guarded<int64_t>(0, [&] { return int64_t(fieldInt(abi::inVariant(v))); });
}

KIVDB_API double KIVDB_CALL kivdb_variant_as_float(const kivdb_variant* v) {
    return abi::guarded<double>(0, [&] { return fieldFloat(abi::inVariant(v)); });
}

KIVDB_API char* KIVDB_CALL kivdb_variant_as_text(const kivdb_variant* v) {
    return abi::newText(fieldText(abi::inVariant(v)));
}

KIVDB_API int32_t KIVDB_CALL kivdb_variant_count(const kivdb_variant* v) {
    return v && v->isArray ? int32_t(v->items.size()) : 0;
}

KIVDB_API const kivdb_variant* KIVDB_CALL kivdb_variant_item(const kivdb_variant* v, int32_t index) {
    if (!v || !v->isArray || index < 0 || size_t(index) >= v->items.size()) return nullptr;
    return v->items[size_t(index)].get();
}

KIVDB_API void KIVDB_CALL kivdb_variant_free(kivdb_variant* v) { delete v; }

KIVDB_API kivdb_host_module* KIVDB_CALL kivdb_host_add_data_module(const char* class_name) {
    return reinterpret_cast<kivdb_host_module*>(&HostScreen::instance().addDataModule(abi::inText(class_name)));
}

KIVDB_API bool KIVDB_CALL kivdb_host_add_component(kivdb_host_module* module, const char* class_name,
                                                   const char* connection_url) {
    if (!module) return false;
    reinterpret_cast<HostDataModule*>(module)->addComponent(abi::inText(class_name), abi::inText(connection_url));
    return true;
}

KIVDB_API void KIVDB_CALL kivdb_host_remove_data_module(kivdb_host_module* module) {
    if (module) HostScreen::instance().removeDataModule(*reinterpret_cast<HostDataModule*>(module));
}

}  // extern "C"
