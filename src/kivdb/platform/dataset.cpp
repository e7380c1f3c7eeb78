#include "platform/dataset.h"

#include "platform/connection_support.h"
#include "platform/field_values.h"
#include "platform/oledate.h"

#include <cmath>
#include <limits>

namespace kivdb {
namespace {

DatabaseError notEditing() { return DatabaseError(QStringLiteral("Dataset not in edit or insert mode"), ErrorKind::Argument); }
DatabaseError emptyDataSet() {
    return DatabaseError(QStringLiteral("Cannot perform this operation on an empty dataset"), ErrorKind::Argument);
}
DatabaseError inactive() {
    return DatabaseError(QStringLiteral("Cannot perform this operation on a closed dataset"), ErrorKind::Argument);
}

// What an integer field may hold.
struct IntegerRange {
    DataType type;
    qint64 low, high;
};
constexpr IntegerRange kIntegerRanges[] = {
    {DataType::SmallInt, -32768, 32767},
    {DataType::Word, 0, 65535},
    {DataType::Integer, std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max()},
    {DataType::LargeInt, std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max()},
};

template <typename F>
auto converted(F&& read) {
    try {
        return read();
    } catch (const ValueError& e) {
        throw DatabaseError(QString::fromUtf8(e.what()), e.kind());
    }
}

// A value as a field of the type keeps it. Throws DatabaseError.
Value asDataType(const Value& value, DataType type, const QString& field) {
    if (!value.isValid() || value.isNull()) return {};
    for (const auto& range : kIntegerRanges) {
        if (range.type != type) continue;
        qint64 n = 0;
        bool ok = true;
        if (value.typeId() == QMetaType::QString) {
            n = value.toString().trimmed().toLongLong(&ok);
        } else if (value.typeId() == QMetaType::Double) {
            ok = std::isfinite(value.toDouble());
            n = std::llround(value.toDouble());
        } else {
            n = value.toLongLong(&ok);
        }
        if (!ok) throw DatabaseError(QStringLiteral("'%1' is not a valid integer value").arg(value.toString()), ErrorKind::Value);
        if (n < range.low || n > range.high)
            throw DatabaseError(QStringLiteral("%1 is not a valid value for field '%2'. The allowed range is %3 to %4")
                                    .arg(n).arg(field).arg(range.low).arg(range.high), ErrorKind::Value);
        return qlonglong(n);
    }
    switch (type) {
    case DataType::String: return converted([&] { return fieldText(value); });
    case DataType::Boolean: return converted([&] { return fieldBool(value); });
    case DataType::DateTime:
        if (value.typeId() == QMetaType::QDateTime) return value;
        if (value.typeId() == QMetaType::QString) {
            const QDateTime when = parseDateTimeText(value.toString());
            if (!when.isValid())
                throw DatabaseError(QStringLiteral("'%1' is not a valid date and time").arg(value.toString()), ErrorKind::Value);
            return when;
        }
        return converted([&] { return Value(fromOleDate(fieldDate(value))); });
    default: return converted([&] { return fieldFloat(value); });
    }
}

// What each character of a format means; any other is literal text.
struct FormatChar {
    QChar ch;
    void (*apply)(NumberFormat&, bool afterPoint);
};
const FormatChar kFormatChars[] = {
    {u'0', [](NumberFormat& p, bool after) { p.hasDigits = true; after ? (++p.minDecimals, ++p.maxDecimals) : ++p.minIntegerDigits; }},
    {u'#', [](NumberFormat& p, bool after) { p.hasDigits = true; if (after) ++p.maxDecimals; }},
    {u',', [](NumberFormat& p, bool after) { if (!after) p.grouped = true; }},
    {u'.', [](NumberFormat& p, bool) { p.hasPoint = true; }},
};

}  // namespace

NumberFormat parseNumberFormat(const QString& format) {
    NumberFormat pattern;
    for (const QChar c : format) {
        const auto* entry = std::find_if(std::begin(kFormatChars), std::end(kFormatChars),
                                         [c](const FormatChar& f) { return f.ch == c; });
        if (entry != std::end(kFormatChars) && !(entry->ch == u'.' && pattern.hasPoint)) {
            entry->apply(pattern, pattern.hasPoint);
        } else {
            (pattern.hasDigits ? pattern.suffix : pattern.prefix) += c;
        }
    }
    return pattern;
}

QString numericDisplayFormat(const QString& displayFormat, bool currency) {
    return displayFormat.isEmpty() && currency ? QStringLiteral("#,##0.00") : displayFormat;
}

QString formatNumber(double value, const QString& format) {
    const NumberFormat pattern = parseNumberFormat(format);
    if (!pattern.hasDigits) return format;

    QString digits = QString::number(std::abs(value), 'f', pattern.maxDecimals);
    QString integer = digits.section(u'.', 0, 0);
    QString decimals = digits.section(u'.', 1);
    while (decimals.size() > pattern.minDecimals && decimals.endsWith(u'0')) decimals.chop(1);
    if (integer == QLatin1String("0")) integer.clear();
    while (integer.size() < pattern.minIntegerDigits) integer.prepend(u'0');
    if (pattern.grouped)
        for (qsizetype i = integer.size() - 3; i > 0; i -= 3) integer.insert(i, u',');
    const bool negative = value < 0 && (!integer.isEmpty() || decimals.count(u'0') != decimals.size());
    QString text = integer;
    // A point stays when no digit is left to show: zero through "#.##" shows as ".".
    if (!decimals.isEmpty() || (pattern.hasPoint && integer.isEmpty())) text += u'.' + decimals;
    return (negative ? QStringLiteral("-") : QString()) + pattern.prefix + text + pattern.suffix;
}

DataType dataTypeOf(FieldType type) {
    switch (type) {
    case FieldType::String: return DataType::String;
    case FieldType::Integer: return DataType::Integer;
    case FieldType::Float: return DataType::Float;
    case FieldType::Currency: return DataType::Currency;
    case FieldType::Bcd: return DataType::Bcd;
    case FieldType::DateTime: return DataType::DateTime;
    case FieldType::Boolean: return DataType::Boolean;
    }
    return DataType::String;
}

// ---- Field

Field::Field(DataSet* dataSet, int index, QString name, DataType type)
    : currency(type == DataType::Currency), displayLabel(name), dataSet_(dataSet), index_(index),
      name_(std::move(name)), type_(type) {}

bool Field::isNumeric() const {
    return type_ != DataType::String && type_ != DataType::Boolean && type_ != DataType::DateTime;
}

bool Field::isNull() const { return !asVariant().isValid(); }
Value Field::asVariant() const { return dataSet_->value(index_); }
QString Field::asString() const { return converted([&] { return fieldText(asVariant()); }); }
int Field::asInteger() const { return converted([&] { return fieldInt(asVariant()); }); }
qint64 Field::asLargeInt() const {
    const Value v = asVariant();
    return v.typeId() == QMetaType::LongLong ? v.toLongLong() : asInteger();
}
double Field::asFloat() const { return converted([&] { return fieldFloat(asVariant()); }); }
double Field::asDateTime() const { return converted([&] { return fieldDate(asVariant()); }); }
bool Field::asBoolean() const { return converted([&] { return fieldBool(asVariant()); }); }

void Field::setAsVariant(const Value& value) {
    if (readOnly) throw DatabaseError(QStringLiteral("Field '%1' cannot be modified").arg(name_), ErrorKind::Argument);
    dataSet_->setValue(index_, asDataType(value, type_, name_));
}
void Field::setAsString(const QString& value) { setAsVariant(value); }
void Field::setAsInteger(qint64 value) { setAsVariant(qlonglong(value)); }
void Field::setAsFloat(double value) { setAsVariant(value); }
void Field::setAsDateTime(double value) { setAsVariant(value == 0 ? Value() : Value(fromOleDate(value))); }
void Field::setAsBoolean(bool value) { setAsVariant(value); }
void Field::clear() { setAsVariant(Value()); }

QString Field::displayText() const { return displayText(asVariant()); }

QString Field::displayText(const Value& value) const {
    if (!value.isValid()) return {};
    const QString format = numericDisplayFormat(displayFormat, currency);
    switch (type_) {
    case DataType::String:
    case DataType::Boolean:
    case DataType::DateTime: return converted([&] { return fieldText(value); });
    default:
        return format.isEmpty() ? converted([&] { return fieldText(value); })
                                : formatNumber(converted([&] { return fieldFloat(value); }), format);
    }
}

// ---- DataSet

DataSet::DataSet() = default;
DataSet::~DataSet() = default;

void DataSet::addFieldDef(const QString& name, DataType type) {
    if (active()) throw DatabaseError(QStringLiteral("Cannot perform this operation on an open dataset"), ErrorKind::Argument);
    fieldDefs_.emplace_back(name, type);
}

void DataSet::clearFieldDefs() {
    if (active()) throw DatabaseError(QStringLiteral("Cannot perform this operation on an open dataset"), ErrorKind::Argument);
    fieldDefs_.clear();
}

void DataSet::loadRows(RowSet rows) {
    close();
    fieldDefs_.clear();
    loaded_ = std::move(rows);
    open();
}

void DataSet::openData() {
    if (!loaded_.columns.empty()) {
        columns_ = loaded_.columns;
        for (auto& row : loaded_.rows) appendRow(std::move(row));
        loaded_ = {};
        return;
    }
    for (const auto& [name, type] : fieldDefs_) {
        columns_.push_back({name, FieldType::String});
        columnTypes_.push_back(type);
    }
}

void DataSet::open() {
    if (active()) return;
    state_ = DataSetState::Opening;
    try {
        columns_.clear();
        columnTypes_.clear();
        openData();
    } catch (...) {
        closeData();
        rows_.clear();
        state_ = DataSetState::Inactive;
        throw;
    }
    for (size_t i = columnTypes_.size(); i < columns_.size(); ++i) columnTypes_.push_back(dataTypeOf(columns_[i].type));
    for (size_t i = 0; i < columns_.size(); ++i)
        fields_.push_back(std::unique_ptr<Field>(new Field(this, int(i), columns_[i].name, columnTypes_[i])));
    state_ = DataSetState::Browse;
    current_ = ensureRow(0) ? 0 : -1;
    bof_ = true;
    eof_ = current_ < 0;
    notify(DataSetEvent::DataSetChanged);
}

void DataSet::close() {
    if (!active()) return;
    closeData();
    fields_.clear();
    rows_.clear();
    bookmarks_.clear();
    buffer_.clear();
    current_ = -1;
    eof_ = bof_ = true;
    setState(DataSetState::Inactive);
}

void DataSet::requireActive() const {
    if (!active()) throw inactive();
}

void DataSet::appendRow(std::vector<Value> values) {
    values.resize(columns_.size());
    rows_.push_back({nextId_++, std::move(values)});
}

bool DataSet::ensureRow(size_t index) {
    while (index >= rows_.size())
        if (!fetchMore()) return false;
    return true;
}

void DataSet::fetchAll() {
    while (fetchMore()) {}
}

void DataSet::checkBrowseMode() {
    requireActive();
    if (state_ == DataSetState::Insert && !modified_) cancel();
    if (state_ == DataSetState::Edit || state_ == DataSetState::Insert || state_ == DataSetState::SetKey) post();
}

bool DataSet::isEmpty() const { return rows_.empty() && state_ != DataSetState::Insert; }

void DataSet::first() {
    checkBrowseMode();
    current_ = ensureRow(0) ? 0 : -1;
    bof_ = true;
    eof_ = current_ < 0;
    notify(DataSetEvent::Scrolled);
}

void DataSet::last() {
    checkBrowseMode();
    fetchAll();
    current_ = qsizetype(rows_.size()) - 1;
    eof_ = true;
    bof_ = current_ < 0;
    notify(DataSetEvent::Scrolled);
}

void DataSet::next() { moveBy(1); }
void DataSet::prior() { moveBy(-1); }

int DataSet::moveBy(int distance) {
    checkBrowseMode();
    if (current_ < 0) return 0;
    const qsizetype from = current_;
    if (distance > 0) {
        bof_ = false;
        qsizetype to = current_ + distance;
        if (!ensureRow(size_t(to))) {
            to = qsizetype(rows_.size()) - 1;
            eof_ = true;
        }
        current_ = to;
    } else if (distance < 0) {
        eof_ = false;
        qsizetype to = current_ + distance;
        if (to < 0) {
            to = 0;
            bof_ = true;
        }
        current_ = to;
    }
    if (current_ != from) notify(DataSetEvent::Scrolled);
    return int(current_ - from);
}

int DataSet::recordCount() {
    if (!active()) return 0;
    fetchAll();
    return int(rows_.size());
}

int DataSet::recNo() const {
    if (!active() || state_ == DataSetState::Insert || current_ < 0) return -1;
    return int(current_) + 1;
}

// ---- bookmarks

qsizetype DataSet::rowIndex(Bookmark bookmark) const {
    // Rows keep their order and ids grow with it, except for inserted rows: a plain search.
    for (size_t i = 0; i < rows_.size(); ++i)
        if (rows_[i].id == bookmark) return qsizetype(i);
    return -1;
}

Bookmark DataSet::bookmark() {
    if (!active() || current_ < 0 || state_ == DataSetState::Insert) return 0;
    const Bookmark id = rows_[size_t(current_)].id;
    bookmarks_.insert(id);
    return id;
}

bool DataSet::bookmarkValid(Bookmark bookmark) const {
    return bookmarks_.count(bookmark) && rowIndex(bookmark) >= 0;
}

void DataSet::gotoBookmark(Bookmark bookmark) {
    checkBrowseMode();
    if (!bookmarks_.count(bookmark)) throw DatabaseError(QStringLiteral("Bookmark not found"), ErrorKind::Argument);
    const qsizetype index = rowIndex(bookmark);
    if (index < 0) throw DatabaseError(QStringLiteral("Record not found: its row was deleted"), ErrorKind::Argument);
    current_ = index;
    eof_ = bof_ = false;
    notify(DataSetEvent::Scrolled);
}

void DataSet::releaseBookmark(Bookmark bookmark) { bookmarks_.erase(bookmark); }

int DataSet::compareBookmarks(Bookmark a, Bookmark b) const {
    if (a == b) return 0;
    if (a == 0 || b == 0) return a == 0 ? -1 : 1;
    const qsizetype ia = rowIndex(a), ib = rowIndex(b);
    if (ia < 0 || ib < 0) throw DatabaseError(QStringLiteral("Record not found: its row was deleted"), ErrorKind::Argument);
    return ia < ib ? -1 : 1;
}

// ---- controls and observers

void DataSet::disableControls() { ++disabled_; }

void DataSet::enableControls() {
    if (disabled_ == 0) return;
    if (--disabled_ == 0 && heldBack_) {
        heldBack_ = false;
        notify(DataSetEvent::DataSetChanged);
    }
}

int DataSet::addObserver(DataSetObserver observer) {
    observers_.emplace_back(nextObserverId_, std::move(observer));
    return nextObserverId_++;
}

void DataSet::removeObserver(int id) {
    std::erase_if(observers_, [id](const auto& o) { return o.first == id; });
}

void DataSet::notify(DataSetEvent event) {
    if (disabled_ > 0) {
        heldBack_ = true;
        return;
    }
    for (auto& [id, observer] : observers_) observer(event);
}

void DataSet::setState(DataSetState state) {
    if (state_ == state) return;
    state_ = state;
    notify(DataSetEvent::StateChanged);
}

// ---- editing

const Value& DataSet::value(int index) const {
    static const Value null;
    if (state_ == DataSetState::Edit || state_ == DataSetState::Insert || state_ == DataSetState::SetKey)
        return buffer_[size_t(index)];
    if (!active() || current_ < 0) return null;
    return rows_[size_t(current_)].values[size_t(index)];
}

const Value& DataSet::heldValue(int row, int field) const {
    if (row == current_ && state_ == DataSetState::Edit) return buffer_[size_t(field)];
    return rows_[size_t(row)].values[size_t(field)];
}

int DataSet::insertPosition() const { return state_ == DataSetState::Insert ? int(insertAt_) : -1; }

void DataSet::setValue(int index, const Value& value) {
    if (state_ != DataSetState::Edit && state_ != DataSetState::Insert && state_ != DataSetState::SetKey)
        throw notEditing();
    buffer_[size_t(index)] = value;
    modified_ = true;
    notify(DataSetEvent::RecordChanged);
}

void DataSet::edit() {
    requireActive();
    if (state_ == DataSetState::Edit || state_ == DataSetState::Insert) return;
    if (current_ < 0) return insert();
    buffer_ = rows_[size_t(current_)].values;
    modified_ = false;
    setState(DataSetState::Edit);
}

void DataSet::setKey() {
    checkBrowseMode();
    buffer_.assign(columns_.size(), Value());
    modified_ = false;
    setState(DataSetState::SetKey);
}

void DataSet::insert() {
    checkBrowseMode();
    beforeInsert_ = current_;
    insertAt_ = std::max<qsizetype>(current_, 0);
    buffer_.assign(columns_.size(), Value());
    modified_ = false;
    setState(DataSetState::Insert);
}

void DataSet::append() {
    checkBrowseMode();
    fetchAll();
    beforeInsert_ = current_;
    insertAt_ = qsizetype(rows_.size());
    buffer_.assign(columns_.size(), Value());
    modified_ = false;
    eof_ = true;
    setState(DataSetState::Insert);
}

void DataSet::post() {
    requireActive();
    if (state_ == DataSetState::Edit) {
        auto& row = rows_[size_t(current_)];
        if (row.values != buffer_) {
            writeChange(ChangeKind::Update, row.id, row.values, buffer_);
            row.values = std::move(buffer_);
        }
    } else if (state_ == DataSetState::Insert) {
        writeChange(ChangeKind::Insert, nextId_, {}, buffer_);
        rows_.insert(rows_.begin() + insertAt_, Row{nextId_++, std::move(buffer_)});
        current_ = insertAt_;
        bof_ = eof_ = false;
    } else if (state_ == DataSetState::SetKey) {
        // Nothing is stored: the key entered is the dataset's to search with.
    } else {
        throw notEditing();
    }
    buffer_.clear();
    setState(DataSetState::Browse);
    notify(DataSetEvent::DataSetChanged);
}

void DataSet::cancel() {
    if (state_ == DataSetState::Insert) current_ = beforeInsert_;
    if (state_ != DataSetState::Edit && state_ != DataSetState::Insert && state_ != DataSetState::SetKey) return;
    buffer_.clear();
    setState(DataSetState::Browse);
    notify(DataSetEvent::DataSetChanged);
}

void DataSet::deleteRecord() {
    requireActive();
    if (state_ == DataSetState::Insert) return cancel();
    if (current_ < 0) throw emptyDataSet();
    if (state_ == DataSetState::Edit) cancel();
    writeChange(ChangeKind::Delete, rows_[size_t(current_)].id, rows_[size_t(current_)].values, {});
    rows_.erase(rows_.begin() + current_);
    if (current_ >= qsizetype(rows_.size()) && !ensureRow(size_t(current_))) current_ = qsizetype(rows_.size()) - 1;
    eof_ = current_ < 0;
    bof_ = current_ <= 0;
    notify(DataSetEvent::DataSetChanged);
}

void DataSet::writeChange(ChangeKind, Bookmark, const std::vector<Value>&, const std::vector<Value>&) {}

// ---- fields and locate

Field& DataSet::field(int index) {
    if (index < 0 || index >= fieldCount()) throw DatabaseError(QStringLiteral("Field index out of range"), ErrorKind::Argument);
    return *fields_[size_t(index)];
}

Field* DataSet::findField(const QString& name) {
    for (auto& f : fields_)
        if (f->name().compare(name, Qt::CaseInsensitive) == 0) return f.get();
    return nullptr;
}

Field& DataSet::fieldByName(const QString& name) {
    if (Field* f = findField(name)) return *f;
    throw DatabaseError(QStringLiteral("Field '%1' not found").arg(name), ErrorKind::Argument);
}

QStringList DataSet::fieldNames() const {
    QStringList names;
    for (const auto& f : fields_) names << f->name();
    return names;
}

bool DataSet::rowMatches(const Row& row, const std::vector<int>& fields, const QVariantList& values,
                         LocateOptions options) const {
    for (size_t i = 0; i < fields.size(); ++i) {
        const Value& have = row.values[size_t(fields[i])];
        const Value& want = values[qsizetype(i)];
        const bool haveNull = !have.isValid() || have.isNull(), wantNull = !want.isValid() || want.isNull();
        if (haveNull || wantNull) {
            if (haveNull != wantNull) return false;
            continue;
        }
        const DataType type = fields_[size_t(fields[i])]->dataType();
        if (type == DataType::String) {
            const Qt::CaseSensitivity cs = options.caseInsensitive ? Qt::CaseInsensitive : Qt::CaseSensitive;
            const QString text = have.toString(), sought = want.toString();
            if (options.partialKey ? !text.startsWith(sought, cs) : text.compare(sought, cs) != 0) return false;
        } else if (asDataType(want, type, fields_[size_t(fields[i])]->name()) != have) {
            return false;
        }
    }
    return true;
}

bool DataSet::locate(const QString& fieldNames, const Value& values, LocateOptions options) {
    checkBrowseMode();
    std::vector<int> fields;
    for (const QString& name : fieldNames.split(u';', Qt::SkipEmptyParts))
        fields.push_back(fieldByName(name.trimmed()).index());
    const QVariantList sought = fields.size() == 1 ? QVariantList{values} : values.toList();
    if (qsizetype(fields.size()) != sought.size())
        throw DatabaseError(QStringLiteral("Locate needs one value for each of its %1 fields").arg(fields.size()), ErrorKind::Argument);
    for (size_t i = 0; ensureRow(i); ++i)
        if (rowMatches(rows_[i], fields, sought, options)) {
            current_ = qsizetype(i);
            eof_ = bof_ = false;
            notify(DataSetEvent::Scrolled);
            return true;
        }
    return false;
}

}  // namespace kivdb
