#pragma once
// A dataset as the hosts' data-aware framework has it: named, typed fields over rows, a
// current row, a state, bookmarks, editing through a record buffer, and observers told of
// changes unless controls are disabled. The rows live in memory; a subclass (QueryDataSet)
// fills them from a connection as navigation needs them and writes changes back.
//
// Errors are DatabaseError with the framework's wording where hosts may show it, of kind
// Argument for a use the dataset's state or fields do not allow, Value for a value a field
// cannot take. A dataset is used by one thread at a time; its connection takes care of its own turns.
#include "platform/connection.h"

#include <QStringList>
#include <functional>
#include <memory>
#include <set>
#include <vector>

namespace kivdb {

// In the framework's order: hosts pass states as their ordinal.
enum class DataSetState {
    Inactive, Browse, Edit, Insert, SetKey, CalcFields, Filter, NewValue, OldValue, CurValue,
    BlockRead, InternalCalc, Opening
};

enum class DataType { String, Integer, SmallInt, Word, LargeInt, Boolean, Float, Currency, Bcd, DateTime };

// The data type of a result column.
DataType dataTypeOf(FieldType type);

class DataSet;

// A field of the current row. Reading it outside an active dataset or on an empty one gives
// null. Every conversion the value does not allow throws DatabaseError.
class Field {
public:
    const QString& name() const { return name_; }
    int index() const { return index_; }
    DataType dataType() const { return type_; }
    bool isNumeric() const;  // the integer, float, currency and BCD types
    DataSet& dataSet() const { return *dataSet_; }

    bool isNull() const;
    Value asVariant() const;
    QString asString() const;     // null gives ""
    int asInteger() const;        // null gives 0
    qint64 asLargeInt() const;    // null gives 0; integers beyond 32 bits whole
    double asFloat() const;       // null gives 0
    double asDateTime() const;    // the suite's date number; null gives 0
    bool asBoolean() const;       // null gives false

    // Writing needs Edit or Insert state and a field that is not read-only; the value is
    // kept as the field's type (text "12" in an Integer field is 12). Throws DatabaseError.
    void setAsVariant(const Value& value);
    void setAsString(const QString& value);
    void setAsInteger(qint64 value);
    void setAsFloat(double value);
    void setAsDateTime(double value);  // 0 gives null
    void setAsBoolean(bool value);
    void clear();

    // The text a grid shows: the value through displayFormat ("#,##0.00", "0.00", "#.##";
    // a format without digit placeholders, such as "****", is shown as it is). A currency
    // field without a format shows "#,##0.00". Null shows "".
    QString displayText() const;
    // The same for a value of this field that is not the current row's (a grid's other rows).
    QString displayText(const Value& value) const;

    bool currency = false;
    QString displayFormat;
    QString displayLabel;  // the name unless set
    bool visible = true;
    bool readOnly = false;

private:
    friend class DataSet;
    Field(DataSet* dataSet, int index, QString name, DataType type);

    DataSet* dataSet_;
    int index_;
    QString name_;
    DataType type_;
};

// The framework's numeric display format applied to a number: '0' a digit always shown,
// '#' one shown when significant, ',' thousands grouped, '.' the point; other characters
// are kept as text. Zero through "#.##" shows as a bare ".".
QString formatNumber(double value, const QString& format);

// A numeric display format taken apart as formatNumber reads it: the digits required and
// allowed either side of the point, grouping, and the text before the first digit
// placeholder and after it. Without digit placeholders the format shows as it is.
struct NumberFormat {
    QString prefix, suffix;
    int minIntegerDigits = 0;
    int minDecimals = 0;
    int maxDecimals = 0;
    bool grouped = false;
    bool hasDigits = false;
    bool hasPoint = false;
};
NumberFormat parseNumberFormat(const QString& format);

// The format a numeric field shows with: its own, else "#,##0.00" for a currency field;
// empty when the value shows as it is.
QString numericDisplayFormat(const QString& displayFormat, bool currency);

// A row's identity, kept while the row lives: rows inserted or deleted before it leave it
// valid. 0 is no bookmark.
using Bookmark = quint64;

enum class DataSetEvent { StateChanged, Scrolled, RecordChanged, DataSetChanged };
using DataSetObserver = std::function<void(DataSetEvent)>;

struct LocateOptions {
    bool caseInsensitive = false;
    bool partialKey = false;  // a text matches when it starts with the value sought
};

class DataSet {
public:
    DataSet();
    virtual ~DataSet();
    DataSet(const DataSet&) = delete;
    DataSet& operator=(const DataSet&) = delete;

    // The fields an in-memory dataset opens with. Only while inactive; throws DatabaseError.
    void addFieldDef(const QString& name, DataType type);
    void clearFieldDefs();
    // Closes, takes the columns and rows given, and opens on the first row.
    void loadRows(RowSet rows);

    void open();
    void close();  // an in-memory dataset's rows go with it; pending edits are dropped
    bool active() const { return state_ != DataSetState::Inactive; }
    void setActive(bool value) { value ? open() : close(); }
    DataSetState state() const { return state_; }

    // Navigation posts a pending edit first, as the framework does.
    void first();
    void next();
    void prior();
    void last();
    int moveBy(int distance);  // answers how far it moved
    bool eof() const { return eof_; }
    bool bof() const { return bof_; }
    bool isEmpty() const;
    // Every row counts: a dataset that reads on demand reads the rest first.
    int recordCount();
    int recNo() const;  // 1-based; -1 when inactive, empty or inserting

    Bookmark bookmark();  // of the current row; 0 (none) on an empty or inactive dataset
    // Throws DatabaseError when the bookmark was released, or its row deleted.
    void gotoBookmark(Bookmark bookmark);
    void releaseBookmark(Bookmark bookmark);
    bool bookmarkValid(Bookmark bookmark) const;
    // -1, 0 or 1 as the first row comes before, is, or comes after the second; a null
    // bookmark sorts first. Throws DatabaseError for a deleted row's bookmark.
    int compareBookmarks(Bookmark a, Bookmark b) const;

    // Nested: observers hear nothing until the last enable, which tells them once
    // (DataSetChanged) if anything happened meanwhile.
    void disableControls();
    void enableControls();
    bool controlsDisabled() const { return disabled_ > 0; }
    int addObserver(DataSetObserver observer);
    void removeObserver(int id);

    // edit on an empty dataset inserts, as the framework does. insert opens a row before
    // the current one, append one after the last. post throws outside Edit, Insert and
    // SetKey; cancel restores the row (or drops the inserted one); deleteRecord throws on an
    // empty dataset. Moving away posts a changed row and drops an untouched inserted one.
    // setKey opens a key buffer (fields writable, nothing stored); post or cancel close it.
    void edit();
    void setKey();
    void insert();
    void append();
    void post();
    void cancel();
    void deleteRecord();

    // fieldNames separated by ';'; values one per field (a QVariantList for several). Moves
    // to the first matching row and answers true; else stays and answers false.
    bool locate(const QString& fieldNames, const Value& values, LocateOptions options = {});

    int fieldCount() const { return int(fields_.size()); }
    Field& field(int index);                  // throws DatabaseError out of range
    Field& fieldByName(const QString& name);  // any case; throws "Field 'X' not found"
    Field* findField(const QString& name);    // nullptr when absent
    QStringList fieldNames() const;

    // For views (item models, grids): the rows read so far, by position, without moving the
    // current row. The row being inserted is not among them until it is posted;
    // insertPosition() tells where it shows meanwhile. heldValue of the current row while it
    // is edited is the edited value.
    int heldRowCount() const { return int(rows_.size()); }
    Bookmark heldRowId(int row) const { return rows_[size_t(row)].id; }
    const Value& heldValue(int row, int field) const;
    int currentIndex() const { return int(current_); }  // 0-based among the held rows; -1 none
    int insertPosition() const;  // -1 when not inserting
    // Whether rows of the result remain unread, and reading the next page of them (false when
    // there were none). Observers are not told: the view that asks knows.
    virtual bool canReadMore() const { return false; }
    bool readMore() { return fetchMore(); }

protected:
    // One row held: its identity for bookmarks and its values.
    struct Row {
        Bookmark id;
        std::vector<Value> values;
    };
    enum class ChangeKind { Insert, Update, Delete };

    // Filled by openData, before fields are made.
    std::vector<Column> columns_;
    std::vector<DataType> columnTypes_;  // per column; from columns_ unless defined

    // The subclass's part of opening: sets columns_ (and columnTypes_) and appends rows.
    virtual void openData();
    virtual void closeData() {}
    // Reads further rows on demand; false when there are none.
    virtual bool fetchMore() { return false; }
    // Before a change to the row `row` reaches the rows: a subclass may write it through, and
    // a throw leaves the dataset as it was. `before` is empty for inserts, `after` for deletes.
    virtual void writeChange(ChangeKind kind, Bookmark row, const std::vector<Value>& before,
                             const std::vector<Value>& after);

    void appendRow(std::vector<Value> values);
    std::vector<Row>& rows() { return rows_; }
    const std::vector<Row>& rows() const { return rows_; }
    void notify(DataSetEvent event);
    void setState(DataSetState state);

private:
    friend class Field;
    const Value& value(int index) const;
    void setValue(int index, const Value& value);
    void requireActive() const;
    void checkBrowseMode();  // posts a pending edit
    void fetchAll();
    bool ensureRow(size_t index);  // fetching as needed; true when the row exists
    qsizetype rowIndex(Bookmark bookmark) const;  // -1 when gone
    bool rowMatches(const Row& row, const std::vector<int>& fields, const QVariantList& values,
                    LocateOptions options) const;

    DataSetState state_ = DataSetState::Inactive;
    std::vector<std::unique_ptr<Field>> fields_;
    std::vector<std::pair<QString, DataType>> fieldDefs_;
    std::vector<Row> rows_;
    RowSet loaded_;
    qsizetype current_ = -1;
    bool eof_ = true, bof_ = true;
    Bookmark nextId_ = 1;
    std::set<Bookmark> bookmarks_;
    std::vector<Value> buffer_;   // the row being edited or inserted, or the key being set
    bool modified_ = false;       // a field of the buffer was written
    qsizetype insertAt_ = -1;     // where an inserted row goes
    qsizetype beforeInsert_ = -1; // the current row before insert, for cancel
    int disabled_ = 0;
    bool heldBack_ = false;
    std::vector<std::pair<int, DataSetObserver>> observers_;
    int nextObserverId_ = 1;
};

}  // namespace kivdb
