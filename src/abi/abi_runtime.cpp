#include "abi/abi_runtime.h"

#include "frame/host_screen.h"
#include "platform/field_values.h"
#include "platform/host_text.h"
#include "platform/oledate.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <unordered_map>

namespace kivdb::abi {

namespace {

std::atomic<HostEncoding> hostEncoding{HostEncoding::Gb18030};
thread_local QByteArray lastError;
thread_local int32_t lastErrorKind = KIVDB_ERROR_NONE;

// The C interface's numbers are the kinds' own.
static_assert(int(ErrorKind::Sql) == KIVDB_ERROR_SQL && int(ErrorKind::Database) == KIVDB_ERROR_DATABASE &&
              int(ErrorKind::Value) == KIVDB_ERROR_VALUE && int(ErrorKind::Date) == KIVDB_ERROR_DATE &&
              int(ErrorKind::Schema) == KIVDB_ERROR_SCHEMA && int(ErrorKind::Argument) == KIVDB_ERROR_ARGUMENT);

// Handles by number. Numbers count up and are never reused, so a stale handle can never
// reach something registered after it; connections and data modules count from different
// bases, so one passed for the other is unknown too. An entry either owns its object (a
// connection from kivdb_connect) or watches one the host's screen owns.
template <typename T>
class HandleRegistry {
public:
    explicit HandleRegistry(uintptr_t firstHandle) : next_(firstHandle) {}

    uintptr_t addOwned(std::shared_ptr<T> object) {
        const std::lock_guard guard(mutex_);
        entries_[next_] = {object, object};
        return next_++;
    }

    // The same handle each time for the same live object.
    uintptr_t addWatched(const std::shared_ptr<T>& object) {
        const std::lock_guard guard(mutex_);
        if (auto it = watched_.find(object.get()); it != watched_.end()) {
            const auto entry = entries_.find(it->second);
            if (entry != entries_.end() && entry->second.watched.lock() == object) return it->second;
        }
        entries_[next_] = {nullptr, object};
        watched_[object.get()] = next_;
        return next_++;
    }

    // Null when the handle is unknown or what it stood for is gone.
    std::shared_ptr<T> find(uintptr_t handle) const {
        const std::lock_guard guard(mutex_);
        const auto it = entries_.find(handle);
        return it == entries_.end() ? nullptr : it->second.watched.lock();
    }

    enum class Removal { Removed, NotOwned, Unknown };
    Removal removeOwned(uintptr_t handle) {
        std::shared_ptr<T> last;  // released after the registry's lock
        const std::lock_guard guard(mutex_);
        const auto it = entries_.find(handle);
        if (it == entries_.end() || !it->second.watched.lock()) return Removal::Unknown;
        if (!it->second.owned) return Removal::NotOwned;
        last = std::move(it->second.owned);
        entries_.erase(it);
        return Removal::Removed;
    }

private:
    struct Entry {
        std::shared_ptr<T> owned;
        std::weak_ptr<T> watched;
    };
    mutable std::mutex mutex_;
    uintptr_t next_;
    std::unordered_map<uintptr_t, Entry> entries_;
    std::unordered_map<const T*, uintptr_t> watched_;
};

HandleRegistry<Connection>& connections() {
    static HandleRegistry<Connection> registry(0x10000000);
    return registry;
}

HandleRegistry<HostDataModule>& dataModules() {
    static HandleRegistry<HostDataModule> registry(0x20000000);
    return registry;
}

HandleRegistry<DataSetHandle>& dataSets() {
    static HandleRegistry<DataSetHandle> registry(0x30000000);
    return registry;
}

HandleRegistry<StringListHandle>& stringLists() {
    static HandleRegistry<StringListHandle> registry(0x40000000);
    return registry;
}

uintptr_t keyOf(const void* handle) { return reinterpret_cast<uintptr_t>(handle); }

DatabaseError invalidConnectionHandle() {
    return DatabaseError(QStringLiteral(
        "invalid connection handle: it was closed, its data module was removed, or it never came from "
        "kivdb_connect or GetDataConnection"),
        ErrorKind::Argument);
}

// The object a handle of a host-made kind stands for; what names the kind in errors.
template <typename T>
std::shared_ptr<T> found(HandleRegistry<T>& registry, const void* handle, const char* what) {
    if (!handle) throw DatabaseError(QStringLiteral("no %1 (null handle)").arg(QLatin1String(what)), ErrorKind::Argument);
    auto object = registry.find(keyOf(handle));
    if (!object)
        throw DatabaseError(QStringLiteral("invalid %1 handle: it was freed, or it never came from the library")
                                .arg(QLatin1String(what)),
                            ErrorKind::Argument);
    return object;
}

template <typename T>
void freed(HandleRegistry<T>& registry, const void* handle, const char* what) {
    if (handle && registry.removeOwned(keyOf(handle)) != HandleRegistry<T>::Removal::Removed)
        throw DatabaseError(QStringLiteral("invalid %1 handle: it was freed, or it never came from the library")
                                .arg(QLatin1String(what)),
                            ErrorKind::Argument);
}

std::shared_ptr<HostDataModule> dataModule(kivdb_host_module* handle) {
    if (!handle) throw DatabaseError(QStringLiteral("no data module (null handle)"), ErrorKind::Argument);
    auto module = dataModules().find(keyOf(handle));
    if (!module)
        throw DatabaseError(QStringLiteral(
            "invalid data module handle: it was removed, or it never came from kivdb_host_add_data_module"),
            ErrorKind::Argument);
    return module;
}

}  // namespace

void setLastError(const QString& message, int32_t kind) {
    lastError = outText(message);
    lastErrorKind = kind;
}

void clearLastError() {
    lastError.clear();
    lastErrorKind = KIVDB_ERROR_NONE;
}

DataSetHandle::~DataSetHandle() {
    const auto turn = connection->lock();
    dataSet.reset();
}

CallTurn::CallTurn(std::initializer_list<kivdb_conn*> connections, std::initializer_list<kivdb_dataset*> dataSets,
                   std::initializer_list<kivdb_strings*> lists) {
    for (kivdb_conn* handle : connections) {
        if (!handle) throw DatabaseError(QStringLiteral("no connection (null handle)"), ErrorKind::Argument);
        auto conn = abi::connections().find(keyOf(handle));
        if (!conn) throw invalidConnectionHandle();
        connections_.push_back(std::move(conn));
    }
    for (kivdb_dataset* handle : dataSets) dataSets_.push_back(found(abi::dataSets(), handle, "dataset"));
    for (kivdb_strings* handle : lists) lists_.push_back(found(stringLists(), handle, "string list"));

    std::vector<Connection*> order;
    for (const auto& conn : connections_) order.push_back(conn.get());
    for (const auto& dataSet : dataSets_) order.push_back(dataSet->connection.get());
    std::sort(order.begin(), order.end());
    order.erase(std::unique(order.begin(), order.end()), order.end());
    for (Connection* conn : order) locks_.push_back(conn->lock());
    std::vector<StringListHandle*> listOrder;
    for (const auto& list : lists_) listOrder.push_back(list.get());
    std::sort(listOrder.begin(), listOrder.end());
    listOrder.erase(std::unique(listOrder.begin(), listOrder.end()), listOrder.end());
    for (StringListHandle* list : listOrder) locks_.emplace_back(list->mutex);
}

QueryDataSet& CallTurn::queryDataSet(size_t index) const {
    auto* query = dynamic_cast<QueryDataSet*>(&dataSet(index));
    if (!query) throw DatabaseError(QStringLiteral("the dataset is not a query (kivdb_query_new)"), ErrorKind::Argument);
    return *query;
}

kivdb_dataset* dataSetHandle(std::shared_ptr<DataSetHandle> dataSet) {
    return reinterpret_cast<kivdb_dataset*>(dataSets().addOwned(std::move(dataSet)));
}

void freeDataSet(kivdb_dataset* handle) { freed(dataSets(), handle, "dataset"); }

kivdb_strings* stringListHandle() {
    return reinterpret_cast<kivdb_strings*>(stringLists().addOwned(std::make_shared<StringListHandle>()));
}

void freeStringList(kivdb_strings* handle) { freed(stringLists(), handle, "string list"); }

std::unique_lock<std::recursive_mutex> hostScreenLock() { return HostScreen::instance().lock(); }

kivdb_conn* connectionHandle(Connection* conn) {
    if (!conn) return nullptr;
    const std::shared_ptr<Connection> shared = conn->shared_from_this();
    return reinterpret_cast<kivdb_conn*>(connections().addWatched(shared));
}

QString inText(const char* text) {
    if (!text) return {};
    return decodeHostText(QByteArrayView(text, qsizetype(std::strlen(text))), hostEncoding);
}

QByteArray outText(const QString& text) { return encodeHostText(text, hostEncoding); }

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
        std::shared_ptr<Connection> conn = Connection::open(abi::inText(url));
        return reinterpret_cast<kivdb_conn*>(abi::connections().addOwned(std::move(conn)));
    });
}

// A call still running on the connection in another thread keeps it open until it ends.
KIVDB_API void KIVDB_CALL kivdb_disconnect(kivdb_conn* conn) {
    abi::clearLastError();
    if (!conn) return;
    abi::guarded([&] {
        if (abi::connections().removeOwned(abi::keyOf(conn)) == abi::HandleRegistry<Connection>::Removal::Unknown)
            throw abi::invalidConnectionHandle();
    });
}

KIVDB_API const char* KIVDB_CALL kivdb_last_error(void) { return abi::lastError.constData(); }
KIVDB_API int32_t KIVDB_CALL kivdb_last_error_kind(void) { return abi::lastErrorKind; }

KIVDB_API bool KIVDB_CALL kivdb_set_encoding(const char* name) {
    abi::clearLastError();
    const auto encoding = hostEncodingNamed(name ? name : "");
    if (!encoding)
        return abi::setLastError(QStringLiteral("unknown encoding '%1'").arg(QString::fromLatin1(name ? name : "")),
                                 KIVDB_ERROR_ARGUMENT),
               false;
    abi::hostEncoding = *encoding;
    return true;
}

KIVDB_API void KIVDB_CALL kivdb_free(char* text) { std::free(text); }

// Every entry point but kivdb_last_error, kivdb_last_error_kind and the two releases clears the previous error
// first; releasing leaves it, so a host may free its arguments before reading it.
KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_null(void) { return abi::clearLastError(), abi::newVariant({}); }
KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_int(int64_t value) {
    return abi::clearLastError(), abi::newVariant(qlonglong(value));
}
KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_float(double value) { return abi::clearLastError(), abi::newVariant(value); }
KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_text(const char* value) {
    return abi::guarded<kivdb_variant*>(nullptr, [&] { return abi::newVariant(abi::inText(value)); });
}
KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_bool(bool value) { return abi::clearLastError(), abi::newVariant(value); }
KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_date(double value) {
    return abi::clearLastError(), abi::newVariant(fromOleDate(value));
}

KIVDB_API kivdb_variant* KIVDB_CALL kivdb_variant_array(const kivdb_variant* const* items, int32_t count) {
    abi::clearLastError();
    QVariantList list;
    for (int32_t i = 0; items && i < count; ++i) list.append(abi::inVariant(items[i]));
    return abi::newVariant(list);
}

KIVDB_API int32_t KIVDB_CALL kivdb_variant_type(const kivdb_variant* v) {
    abi::clearLastError();
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
    abi::clearLastError();
    return abi::newText(fieldText(abi::inVariant(v)));
}

KIVDB_API int32_t KIVDB_CALL kivdb_variant_count(const kivdb_variant* v) {
    abi::clearLastError();
    return v && v->isArray ? int32_t(v->items.size()) : 0;
}

KIVDB_API const kivdb_variant* KIVDB_CALL kivdb_variant_item(const kivdb_variant* v, int32_t index) {
    abi::clearLastError();
    if (!v || !v->isArray || index < 0 || size_t(index) >= v->items.size()) return nullptr;
    return v->items[size_t(index)].get();
}

KIVDB_API void KIVDB_CALL kivdb_variant_free(kivdb_variant* v) { delete v; }

KIVDB_API kivdb_host_module* KIVDB_CALL kivdb_host_add_data_module(const char* class_name) {
    return abi::guarded<kivdb_host_module*>(nullptr, [&] {
        HostDataModule& module = HostScreen::instance().addDataModule(abi::inText(class_name));
        return reinterpret_cast<kivdb_host_module*>(abi::dataModules().addWatched(module.shared_from_this()));
    });
}

KIVDB_API bool KIVDB_CALL kivdb_host_add_component(kivdb_host_module* module, const char* class_name,
                                                   const char* connection_url) {
    return abi::guarded<bool>(false, [&] {
        abi::dataModule(module)->addComponent(abi::inText(class_name), abi::inText(connection_url));
        return true;
    });
}

// Connections of the module's components close when no call is running on them any more;
// their handles answer an error from then on.
KIVDB_API void KIVDB_CALL kivdb_host_remove_data_module(kivdb_host_module* module) {
    abi::guarded([&] { HostScreen::instance().removeDataModule(*abi::dataModule(module)); });
}

}  // extern "C"
