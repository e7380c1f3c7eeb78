#include "platform/query_dataset.h"

#include "platform/sqlite_connection.h"

#include <QRegularExpression>

namespace kivdb {
namespace {

// A value as a T-SQL literal.
QString literal(const Value& value) {
    if (!value.isValid() || value.isNull()) return QStringLiteral("null");
    switch (value.typeId()) {
    case QMetaType::LongLong:
    case QMetaType::Int: return QString::number(value.toLongLong());
    case QMetaType::Double: return QString::number(value.toDouble(), 'g', 17);
    case QMetaType::Bool: return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QMetaType::QDateTime:
        return u'\'' + value.toDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz")) + u'\'';
    default: return u'\'' + value.toString().replace(u'\'', QStringLiteral("''")) + u'\'';
    }
}

DatabaseError cannotWrite(const QString& why) {
    return DatabaseError(QStringLiteral("Cannot write the change back: %1").arg(why), ErrorKind::Argument);
}

}  // namespace

QueryDataSet::QueryDataSet(Connection& conn, const QString& sql) : conn_(conn), sql_(sql) {}

QueryDataSet::~QueryDataSet() {
    // The cursor goes before the connection it reads, whatever the owner does next.
    cursor_.reset();
}

void QueryDataSet::setSql(const QString& sql) {
    close();
    sql_ = sql;
}

qint64 QueryDataSet::execute() { return conn_.execute(sql_); }

void QueryDataSet::openData() {
    pending_.clear();
    cursor_ = conn_.openCursor(sql_);
    columns_ = cursor_->columns();
    fetchMore();
}

void QueryDataSet::closeData() {
    cursor_.reset();
    pending_.clear();
}

bool QueryDataSet::fetchMore() {
    if (!cursor_ || cursor_->atEnd()) return false;
    auto page = cursor_->fetch(pageRows_);
    for (auto& row : page) appendRow(std::move(row));
    if (cursor_->atEnd()) cursor_.reset();
    return !page.empty();
}

void QueryDataSet::refresh() {
    struct Settings {
        bool currency;
        QString displayFormat, displayLabel;
        bool visible, readOnly;
    };
    std::vector<std::pair<QString, Settings>> kept;
    for (int i = 0; i < fieldCount(); ++i) {
        const Field& f = field(i);
        kept.push_back({f.name(), {f.currency, f.displayFormat, f.displayLabel, f.visible, f.readOnly}});
    }
    const int at = recNo();
    close();
    open();
    for (const auto& [name, s] : kept)
        if (Field* f = findField(name)) {
            f->currency = s.currency;
            f->displayFormat = s.displayFormat;
            f->displayLabel = s.displayLabel;
            f->visible = s.visible;
            f->readOnly = s.readOnly;
        }
    if (at > 1) moveBy(at - 1);
}

void QueryDataSet::setUpdateMode(UpdateMode mode) {
    if (mode != updateMode_ && updatesPending())
        throw DatabaseError(QStringLiteral("Cannot change the update mode while changes are pending"), ErrorKind::Argument);
    updateMode_ = mode;
}

QString QueryDataSet::updateTable() const {
    if (!tableName_.isEmpty()) return tableName_;
    static const QRegularExpression plainSelect(
        QStringLiteral(R"(^\s*select\s.+?\sfrom\s+([\w#$.\[\]]+)\s*((where|order\s+by)\b.*)?$)"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    const auto match = plainSelect.match(sql_);
    if (!match.hasMatch() || match.captured(2).contains(QLatin1String(" from "), Qt::CaseInsensitive))
        throw cannotWrite(QStringLiteral("the statement reads no single table; set the table name"));
    return match.captured(1);
}

QStringList QueryDataSet::keyColumns(const QString& table) const {
    QStringList key = keyFields_.split(u';', Qt::SkipEmptyParts);
    for (QString& k : key) k = k.trimmed();
    if (key.isEmpty()) {
        auto* embedded = dynamic_cast<SqliteConnection*>(&conn_);
        if (!embedded) throw cannotWrite(QStringLiteral("key fields are not set (over ODBC they must be)"));
        key = embedded->primaryKey(table);
        if (key.isEmpty()) throw cannotWrite(QStringLiteral("table %1 has no primary key; set the key fields").arg(table));
    }
    return key;
}

QString QueryDataSet::changeStatement(ChangeKind kind, const std::vector<Value>& before,
                                      const std::vector<Value>& after) const {
    const QString table = updateTable();
    if (kind == ChangeKind::Insert) {
        QStringList names, values;
        for (size_t i = 0; i < columns_.size(); ++i) {
            if (!after[i].isValid()) continue;  // left to the column's default
            names << columns_[i].name;
            values << literal(after[i]);
        }
        return QStringLiteral("insert into %1 (%2) values (%3)").arg(table, names.join(QStringLiteral(", ")), values.join(QStringLiteral(", ")));
    }
    QStringList where;
    for (const QString& key : keyColumns(table)) {
        const auto column = std::find_if(columns_.begin(), columns_.end(), [&](const Column& c) {
            return c.name.compare(key, Qt::CaseInsensitive) == 0;
        });
        if (column == columns_.end()) throw cannotWrite(QStringLiteral("key field %1 is not in the result").arg(key));
        const Value& v = before[size_t(column - columns_.begin())];
        where << (v.isValid() ? column->name + QStringLiteral(" = ") + literal(v) : column->name + QStringLiteral(" is null"));
    }
    if (kind == ChangeKind::Delete)
        return QStringLiteral("delete from %1 where %2").arg(table, where.join(QStringLiteral(" and ")));
    QStringList sets;
    for (size_t i = 0; i < columns_.size(); ++i)
        if (before[i] != after[i]) sets << columns_[i].name + QStringLiteral(" = ") + literal(after[i]);
    return QStringLiteral("update %1 set %2 where %3").arg(table, sets.join(QStringLiteral(", ")), where.join(QStringLiteral(" and ")));
}

void QueryDataSet::writeChange(ChangeKind kind, Bookmark row, const std::vector<Value>& before,
                               const std::vector<Value>& after) {
    const QString statement = changeStatement(kind, before, after);  // refuses what cannot be written
    if (updateMode_ == UpdateMode::Immediate) {
        if (conn_.execute(statement) == 0)
            throw DatabaseError(QStringLiteral("Record not found or changed by another user"));
        return;
    }
    const auto earlier = std::find_if(pending_.begin(), pending_.end(), [row](const PendingChange& c) { return c.row == row; });
    if (earlier == pending_.end()) {
        pending_.push_back({row, kind, before, after});
    } else if (kind == ChangeKind::Delete && earlier->kind == ChangeKind::Insert) {
        pending_.erase(earlier);
    } else {
        if (kind == ChangeKind::Delete) earlier->kind = ChangeKind::Delete;
        earlier->current = after;
    }
}

void QueryDataSet::applyUpdates() {
    if (pending_.empty()) return;
    const auto turn = conn_.lock();
    const bool own = !conn_.inTransaction();
    if (own) conn_.begin();
    try {
        for (const PendingChange& change : pending_) {
            if (change.kind == ChangeKind::Update && change.original == change.current) continue;
            const QString statement = changeStatement(change.kind, change.original, change.current);
            if (conn_.execute(statement) == 0)
                throw DatabaseError(QStringLiteral("Record not found or changed by another user: %1").arg(statement));
        }
        if (own) conn_.commit();
    } catch (...) {
        if (own && conn_.inTransaction()) conn_.rollback();
        throw;
    }
    pending_.clear();
}

void QueryDataSet::cancelUpdates() {
    pending_.clear();
    refresh();
}

}  // namespace kivdb
