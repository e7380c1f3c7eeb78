// Datasets and string lists for hosts: made, navigated, read, edited and freed through
// handles, so exports that work on a live dataset or fill a list can be called from C.
#include "abi/abi_runtime.h"
#include "platform/field_values.h"

using namespace kivdb;

namespace {

template <typename T, typename Body>
T onDataSet(kivdb_dataset* ds, T fallback, Body&& body) {
    return abi::guarded<T>(fallback, [&] {
        const abi::CallTurn turn({}, {ds});
        return body(turn.dataSet(0));
    });
}

template <typename Body>
bool actOn(kivdb_dataset* ds, Body&& body) {
    return onDataSet<bool>(ds, false, [&](DataSet& d) { return body(d), true; });
}

template <typename T, typename Body>
T onField(kivdb_dataset* ds, const char* name, T fallback, Body&& body) {
    return onDataSet<T>(ds, fallback, [&](DataSet& d) { return body(d.fieldByName(abi::inText(name))); });
}

template <typename Body>
bool setField(kivdb_dataset* ds, const char* name, Body&& body) {
    return onField<bool>(ds, name, false, [&](Field& f) { return body(f), true; });
}

template <typename T, typename Body>
T onQuery(kivdb_dataset* ds, T fallback, Body&& body) {
    return abi::guarded<T>(fallback, [&] {
        const abi::CallTurn turn({}, {ds});
        return body(turn.queryDataSet(0));
    });
}

kivdb_dataset* newQuery(kivdb_conn* conn, const char* sql, bool open) {
    return abi::guarded<kivdb_dataset*>(nullptr, [&] {
        const abi::CallTurn turn({conn});
        auto handle = std::make_shared<abi::DataSetHandle>();
        handle->connection = turn.sharedConnection(0);
        handle->dataSet = std::make_unique<QueryDataSet>(*handle->connection, abi::inText(sql));
        if (open) handle->dataSet->open();
        return abi::dataSetHandle(std::move(handle));
    });
}

template <typename T, typename Body>
T onList(kivdb_strings* list, T fallback, Body&& body) {
    return abi::guarded<T>(fallback, [&] {
        const abi::CallTurn turn({}, {}, {list});
        return body(turn.strings(0));
    });
}

}  // namespace

extern "C" {

KIVDB_API kivdb_dataset* KIVDB_CALL kivdb_query_new(kivdb_conn* conn, const char* sql) { return newQuery(conn, sql, false); }
KIVDB_API kivdb_dataset* KIVDB_CALL kivdb_query_open(kivdb_conn* conn, const char* sql) { return newQuery(conn, sql, true); }
// A call still running on the dataset in another thread keeps it until it ends.
KIVDB_API void KIVDB_CALL kivdb_dataset_free(kivdb_dataset* ds) {
    abi::guarded([&] { abi::freeDataSet(ds); });
}

KIVDB_API bool KIVDB_CALL kivdb_dataset_open(kivdb_dataset* ds) { return actOn(ds, [](DataSet& d) { d.open(); }); }
KIVDB_API bool KIVDB_CALL kivdb_dataset_close(kivdb_dataset* ds) { return actOn(ds, [](DataSet& d) { d.close(); }); }
KIVDB_API bool KIVDB_CALL kivdb_dataset_first(kivdb_dataset* ds) { return actOn(ds, [](DataSet& d) { d.first(); }); }
KIVDB_API bool KIVDB_CALL kivdb_dataset_next(kivdb_dataset* ds) { return actOn(ds, [](DataSet& d) { d.next(); }); }
KIVDB_API bool KIVDB_CALL kivdb_dataset_prior(kivdb_dataset* ds) { return actOn(ds, [](DataSet& d) { d.prior(); }); }
KIVDB_API bool KIVDB_CALL kivdb_dataset_last(kivdb_dataset* ds) { return actOn(ds, [](DataSet& d) { d.last(); }); }
KIVDB_API int32_t KIVDB_CALL kivdb_dataset_move_by(kivdb_dataset* ds, int32_t distance) {
    return onDataSet<int32_t>(ds, 0, [&](DataSet& d) { return d.moveBy(distance); });
}
KIVDB_API bool KIVDB_CALL kivdb_dataset_eof(kivdb_dataset* ds) { return onDataSet<bool>(ds, true, [](DataSet& d) { return d.eof(); }); }
KIVDB_API bool KIVDB_CALL kivdb_dataset_bof(kivdb_dataset* ds) { return onDataSet<bool>(ds, true, [](DataSet& d) { return d.bof(); }); }
KIVDB_API int32_t KIVDB_CALL kivdb_dataset_record_count(kivdb_dataset* ds) {
    return onDataSet<int32_t>(ds, 0, [](DataSet& d) { return d.recordCount(); });
}
KIVDB_API int32_t KIVDB_CALL kivdb_dataset_rec_no(kivdb_dataset* ds) {
    return onDataSet<int32_t>(ds, -1, [](DataSet& d) { return d.recNo(); });
}
KIVDB_API int32_t KIVDB_CALL kivdb_dataset_state(kivdb_dataset* ds) {
    return onDataSet<int32_t>(ds, 0, [](DataSet& d) { return int32_t(d.state()); });
}

KIVDB_API int32_t KIVDB_CALL kivdb_dataset_field_count(kivdb_dataset* ds) {
    return onDataSet<int32_t>(ds, 0, [](DataSet& d) { return d.fieldCount(); });
}
KIVDB_API void KIVDB_CALL kivdb_dataset_field_name(char** result, kivdb_dataset* ds, int32_t index) {
    abi::storeText(result, onDataSet<QString>(ds, {}, [&](DataSet& d) { return d.field(index).name(); }));
}
KIVDB_API void KIVDB_CALL kivdb_dataset_get_text(char** result, kivdb_dataset* ds, const char* field) {
    abi::storeText(result, onField<QString>(ds, field, {}, [](Field& f) { return f.asString(); }));
}
KIVDB_API int64_t KIVDB_CALL kivdb_dataset_get_int(kivdb_dataset* ds, const char* field) {
    return onField<int64_t>(ds, field, 0, [](Field& f) { return f.asLargeInt(); });
}
KIVDB_API double KIVDB_CALL kivdb_dataset_get_float(kivdb_dataset* ds, const char* field) {
    return onField<double>(ds, field, 0.0, [](Field& f) { return f.asFloat(); });
}
KIVDB_API double KIVDB_CALL kivdb_dataset_get_date(kivdb_dataset* ds, const char* field) {
    return onField<double>(ds, field, 0.0, [](Field& f) { return f.asDateTime(); });
}
KIVDB_API bool KIVDB_CALL kivdb_dataset_get_bool(kivdb_dataset* ds, const char* field) {
    return onField<bool>(ds, field, false, [](Field& f) { return f.asBoolean(); });
}
KIVDB_API bool KIVDB_CALL kivdb_dataset_is_null(kivdb_dataset* ds, const char* field) {
    return onField<bool>(ds, field, false, [](Field& f) { return f.isNull(); });
}
KIVDB_API void KIVDB_CALL kivdb_dataset_display_text(char** result, kivdb_dataset* ds, const char* field) {
    abi::storeText(result, onField<QString>(ds, field, {}, [](Field& f) { return f.displayText(); }));
}
KIVDB_API void KIVDB_CALL kivdb_dataset_get_variant(kivdb_variant** result, kivdb_dataset* ds, const char* field) {
    abi::storeVariant(result, onField<Value>(ds, field, {}, [](Field& f) { return f.asVariant(); }));
}

KIVDB_API bool KIVDB_CALL kivdb_dataset_set_text(kivdb_dataset* ds, const char* field, const char* value) {
    return setField(ds, field, [&](Field& f) { f.setAsString(abi::inText(value)); });
}
KIVDB_API bool KIVDB_CALL kivdb_dataset_set_int(kivdb_dataset* ds, const char* field, int64_t value) {
    return setField(ds, field, [&](Field& f) { f.setAsInteger(value); });
}
KIVDB_API bool KIVDB_CALL kivdb_dataset_set_float(kivdb_dataset* ds, const char* field, double value) {
    return setField(ds, field, [&](Field& f) { f.setAsFloat(value); });
}
KIVDB_API bool KIVDB_CALL kivdb_dataset_set_null(kivdb_dataset* ds, const char* field) {
    return setField(ds, field, [](Field& f) { f.clear(); });
}
KIVDB_API bool KIVDB_CALL kivdb_dataset_set_variant(kivdb_dataset* ds, const char* field, const kivdb_variant* value) {
    return setField(ds, field, [&](Field& f) { f.setAsVariant(abi::inVariant(value)); });
}

KIVDB_API bool KIVDB_CALL kivdb_dataset_edit(kivdb_dataset* ds) { return actOn(ds, [](DataSet& d) { d.edit(); }); }
KIVDB_API bool KIVDB_CALL kivdb_dataset_insert(kivdb_dataset* ds) { return actOn(ds, [](DataSet& d) { d.insert(); }); }
KIVDB_API bool KIVDB_CALL kivdb_dataset_append(kivdb_dataset* ds) { return actOn(ds, [](DataSet& d) { d.append(); }); }
KIVDB_API bool KIVDB_CALL kivdb_dataset_post(kivdb_dataset* ds) { return actOn(ds, [](DataSet& d) { d.post(); }); }
KIVDB_API bool KIVDB_CALL kivdb_dataset_cancel(kivdb_dataset* ds) { return actOn(ds, [](DataSet& d) { d.cancel(); }); }
KIVDB_API bool KIVDB_CALL kivdb_dataset_delete(kivdb_dataset* ds) { return actOn(ds, [](DataSet& d) { d.deleteRecord(); }); }

KIVDB_API bool KIVDB_CALL kivdb_query_set_batch(kivdb_dataset* ds, bool batch) {
    return onQuery<bool>(ds, false, [&](QueryDataSet& q) {
        q.setUpdateMode(batch ? QueryDataSet::UpdateMode::Batch : QueryDataSet::UpdateMode::Immediate);
        return true;
    });
}
KIVDB_API bool KIVDB_CALL kivdb_query_updates_pending(kivdb_dataset* ds) {
    return onQuery<bool>(ds, false, [](QueryDataSet& q) { return q.updatesPending(); });
}
KIVDB_API bool KIVDB_CALL kivdb_query_apply_updates(kivdb_dataset* ds) {
    return onQuery<bool>(ds, false, [](QueryDataSet& q) { return q.applyUpdates(), true; });
}
KIVDB_API bool KIVDB_CALL kivdb_query_cancel_updates(kivdb_dataset* ds) {
    return onQuery<bool>(ds, false, [](QueryDataSet& q) { return q.cancelUpdates(), true; });
}

KIVDB_API kivdb_strings* KIVDB_CALL kivdb_strings_new(void) {
    return abi::guarded<kivdb_strings*>(nullptr, [] { return abi::stringListHandle(); });
}
KIVDB_API void KIVDB_CALL kivdb_strings_free(kivdb_strings* list) {
    abi::guarded([&] { abi::freeStringList(list); });
}
KIVDB_API int32_t KIVDB_CALL kivdb_strings_count(kivdb_strings* list) {
    return onList<int32_t>(list, 0, [](StringList& l) { return l.count(); });
}
KIVDB_API void KIVDB_CALL kivdb_strings_item(char** result, kivdb_strings* list, int32_t index) {
    abi::storeText(result, onList<QString>(list, {}, [&](StringList& l) {
        if (index < 0 || index >= l.count())
            throw ValueError(QStringLiteral("list index %1 out of bounds (%2 items)").arg(index).arg(l.count()),
                             ErrorKind::Argument);
        return l[index];
    }));
}
KIVDB_API int32_t KIVDB_CALL kivdb_strings_add(kivdb_strings* list, const char* text) {
    return onList<int32_t>(list, -1, [&](StringList& l) { return l.add(abi::inText(text)); });
}
KIVDB_API bool KIVDB_CALL kivdb_strings_clear(kivdb_strings* list) {
    return onList<bool>(list, false, [](StringList& l) { return l.clear(), true; });
}

}  // extern "C"
