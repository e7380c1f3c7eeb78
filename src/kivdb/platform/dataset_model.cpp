#include "platform/dataset_model.h"

#include "platform/message_sink.h"

#include <algorithm>

namespace kivdb {

DataSetModel::DataSetModel(DataSet& dataSet, QObject* parent)
    : QAbstractTableModel(parent), dataSet_(dataSet), rows_(datasetRows()), columns_(visibleFields()),
      current_(currentRow()) {
    observer_ = dataSet_.addObserver([this](DataSetEvent event) { follow(event); });
}

DataSetModel::~DataSetModel() { dataSet_.removeObserver(observer_); }

Field& DataSetModel::columnField(int column) const { return dataSet_.field(columns_[size_t(column)]); }

std::vector<int> DataSetModel::visibleFields() const {
    std::vector<int> fields;
    if (!dataSet_.active()) return fields;
    for (int i = 0; i < dataSet_.fieldCount(); ++i)
        if (dataSet_.field(i).visible) fields.push_back(i);
    return fields;
}

void DataSetModel::refreshColumns() {
    beginResetModel();
    rows_ = datasetRows();
    columns_ = visibleFields();
    endResetModel();
}

std::vector<Bookmark> DataSetModel::datasetRows() const {
    std::vector<Bookmark> rows;
    if (!dataSet_.active()) return rows;
    rows.reserve(size_t(dataSet_.heldRowCount()) + 1);
    for (int i = 0; i < dataSet_.heldRowCount(); ++i) rows.push_back(dataSet_.heldRowId(i));
    if (const int at = dataSet_.insertPosition(); at >= 0) rows.insert(rows.begin() + at, 0);
    return rows;
}

int DataSetModel::currentRow() const {
    const int inserting = dataSet_.insertPosition();
    if (inserting >= 0) return inserting;
    return dataSet_.active() ? dataSet_.currentIndex() : -1;
}

std::optional<Value> DataSetModel::cellValue(int row, int field) const {
    // The view's rows are the model's: between a dataset change and the model's hearing of it
    // (inside a row insertion, or while controls are disabled) positions may differ, so a
    // row is found by its id, nearly always where its position says.
    const Bookmark id = rows_[size_t(row)];
    const int inserting = dataSet_.insertPosition();
    if (id == 0) return inserting >= 0 ? std::optional(dataSet_.field(field).asVariant()) : std::nullopt;
    const int held = dataSet_.heldRowCount();
    const int guess = inserting >= 0 && row > inserting ? row - 1 : row;
    for (int at : {guess, guess - 1, guess + 1})
        if (at >= 0 && at < held && dataSet_.heldRowId(at) == id) return dataSet_.heldValue(at, field);
    for (int at = 0; at < held; ++at)
        if (dataSet_.heldRowId(at) == id) return dataSet_.heldValue(at, field);
    return std::nullopt;  // deleted, the view hears of it next
}

void DataSetModel::follow(DataSetEvent event) {
    if (event == DataSetEvent::RecordChanged) {
        // A field of the row being edited or inserted.
        if (const int row = currentRow(); row >= 0 && row < rowCount())
            emit dataChanged(index(row, 0), index(row, columnCount() - 1));
        return;
    }
    if (event == DataSetEvent::Scrolled) {
        // Navigation reads rows but removes none: the new ones follow the known ones.
        appendReadRows();
    } else if (visibleFields() != columns_) {
        refreshColumns();
    } else {
        takeRows(datasetRows());
    }
    if (const int row = currentRow(); row != current_) {
        current_ = row;
        emit currentRowChanged(row);
    }
}

void DataSetModel::appendReadRows() {
    const int held = dataSet_.active() ? dataSet_.heldRowCount() : 0;
    const int known = rowCount() - (dataSet_.insertPosition() >= 0 ? 1 : 0);
    if (held <= known) return;
    beginInsertRows({}, rowCount(), rowCount() + held - known - 1);
    for (int i = known; i < held; ++i) rows_.push_back(dataSet_.heldRowId(i));
    endInsertRows();
}

void DataSetModel::takeRows(std::vector<Bookmark> rows) {
    // What changed lies between the common start and the common end of the old rows and the
    // new: a posted insert or an edit keeps the length, a deletion or cancel shortens it,
    // an insert or rows read lengthen it.
    const size_t common = std::min(rows_.size(), rows.size());
    size_t head = 0;
    while (head < common && rows_[head] == rows[head]) ++head;
    size_t tail = 0;
    while (tail < common - head && rows_[rows_.size() - 1 - tail] == rows[rows.size() - 1 - tail]) ++tail;
    const int from = int(head);
    const int removed = int(rows_.size() - head - tail);
    const int added = int(rows.size() - head - tail);
    if (removed == added) {
        rows_ = std::move(rows);
    } else {
        // The posted insert (0 becomes its id) or the last row replaced is changed data below.
        const int kept = std::min(removed, added);
        if (removed > kept) {
            beginRemoveRows({}, from + kept, from + removed - 1);
            rows_.erase(rows_.begin() + from + kept, rows_.begin() + from + removed);
            endRemoveRows();
        }
        if (added > kept) {
            beginInsertRows({}, from + kept, from + added - 1);
            rows_.insert(rows_.begin() + from + kept, rows.begin() + from + kept, rows.begin() + from + added);
            endInsertRows();
        }
        rows_ = std::move(rows);
    }
    if (!rows_.empty() && columnCount() > 0) emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

int DataSetModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : int(rows_.size()); }
int DataSetModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : int(columns_.size()); }

QVariant DataSetModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount() || index.column() >= columnCount()) return {};
    const Field& field = columnField(index.column());
    const std::optional<Value> found = cellValue(index.row(), field.index());
    if (!found) return {};
    const Value& value = *found;
    switch (role) {
    case Qt::DisplayRole: return field.displayText(value);
    case Qt::EditRole: return value;
    case Qt::TextAlignmentRole:
        return field.isNumeric() ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    default: return {};
    }
}

QVariant DataSetModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= columnCount())
        return QAbstractTableModel::headerData(section, orientation, role);
    return columnField(section).displayLabel;
}

Qt::ItemFlags DataSetModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (index.isValid() && index.column() < columnCount() && !columnField(index.column()).readOnly)
        flags |= Qt::ItemIsEditable;
    return flags;
}

bool DataSetModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable)) return false;
    try {
        if (index.row() != currentRow()) {
            const int inserting = dataSet_.insertPosition();
            const int target = inserting >= 0 && index.row() > inserting ? index.row() - 1 : index.row();
            // Moving posts the row being edited first, as the dataset does.
            dataSet_.moveBy(target - dataSet_.currentIndex());
        }
        dataSet_.edit();
        columnField(index.column()).setAsVariant(value);
        return true;
    } catch (const Error& e) {
        messageSink().show(MessageKind::Error, QString::fromUtf8(e.what()));
        return false;
    }
}

bool DataSetModel::canFetchMore(const QModelIndex& parent) const {
    return !parent.isValid() && dataSet_.active() && dataSet_.canReadMore();
}

void DataSetModel::fetchMore(const QModelIndex& parent) {
    if (!canFetchMore(parent)) return;
    try {
        dataSet_.readMore();
    } catch (const Error& e) {
        messageSink().show(MessageKind::Error, QString::fromUtf8(e.what()));
    }
    appendReadRows();
}

}  // namespace kivdb
