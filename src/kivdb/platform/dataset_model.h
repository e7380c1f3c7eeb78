#pragma once
// A Qt item model over a dataset, for grids: one row a dataset row (the row being inserted
// shows where it will go), one column a visible field. It reads rows only as a view asks for
// them (canFetchMore/fetchMore read the dataset's next page) and follows the dataset's
// changes through its observer: posts, deletions, inserts and rows read by navigation reach
// the view as row insertions, removals and changed data; a change of the fields resets it.
//
// Editing a cell makes its row current and puts the dataset in edit state; the row is posted
// the way the dataset posts (on moving away, or by the host). An error while editing is shown
// through the message sink and the edit refused: nothing escapes into the view.
#include "platform/dataset.h"

#include <QAbstractTableModel>
#include <optional>
#include <vector>

namespace kivdb {

class DataSetModel : public QAbstractTableModel {
    Q_OBJECT
public:
    // The dataset must outlive the model.
    explicit DataSetModel(DataSet& dataSet, QObject* parent = nullptr);
    ~DataSetModel() override;

    DataSet& dataSet() const { return dataSet_; }
    // The field shown in a column; the visible fields are taken again by refreshColumns,
    // which hosts call after changing a field's visibility.
    Field& columnField(int column) const;
    void refreshColumns();
    // The model row of the dataset's current row; -1 when none.
    int currentRow() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;

signals:
    // The dataset moved to another row (by navigation, locate, a bookmark, a post).
    void currentRowChanged(int row);

private:
    // The rows as the view knows them: the dataset's row ids, 0 for the row being inserted.
    std::vector<Bookmark> datasetRows() const;
    void follow(DataSetEvent event);
    void takeRows(std::vector<Bookmark> rows);
    void appendReadRows();
    std::vector<int> visibleFields() const;
    std::optional<Value> cellValue(int row, int field) const;

    DataSet& dataSet_;
    int observer_ = 0;
    std::vector<Bookmark> rows_;
    std::vector<int> columns_;  // field index of each column
    int current_ = -1;
};

}  // namespace kivdb
