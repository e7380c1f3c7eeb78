// The spreadsheet writer in constant-memory mode: each row goes to a temporary file as soon
// as the next begins, and the workbook is assembled from those files at the end. A sheet
// holds at most the format's row limit; further rows go on to another sheet under the same
// header.
#include "presentation/spreadsheet_export.h"

#include "platform/field_values.h"

#include <QFileInfo>
#include <xlsxwriter.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

namespace kivdb {

namespace {

constexpr int kProgressEvery = 500;
constexpr int kPageRows = 500;
constexpr qsizetype kMaxCellText = 32767;  // the format's limit; longer texts are cut there
constexpr double kExactIntegers = 9007199254740992.0;  // 2^53: integers beyond lose digits as numbers

void check(lxw_error error) {
    if (error != LXW_NO_ERROR) throw std::runtime_error(lxw_strerror(error));
}

// A column as the sheet writes it.
struct SheetColumn {
    QString label;
    DataType type;
    QString format;  // the numeric display format in effect; empty: numbers as they are
};

// Literal text in a spreadsheet number format: quoted, a quote mark outside the quotes.
QString sheetLiteral(const QString& text) {
    if (text.isEmpty()) return {};
    QString quoted = text;
    return u'"' + quoted.replace(u'"', QStringLiteral("\"\\\"\"")) + u'"';
}

// The spreadsheet number format that shows numbers as `format` does. Such a format shows a
// point even where the display format drops it (a whole number through "#.##"), so
// `point` false gives the format without point and decimals, for those values.
QString sheetNumberFormat(const NumberFormat& format, bool point) {
    QString integer;
    if (format.grouped) {
        integer = QString(std::max(0, 4 - format.minIntegerDigits), u'#') + QString(format.minIntegerDigits, u'0');
        integer.insert(integer.size() - 3, u',');
    } else {
        integer = format.minIntegerDigits > 0 ? QString(format.minIntegerDigits, u'0') : QStringLiteral("#");
    }
    if (point && format.hasPoint)
        integer += u'.' + QString(format.minDecimals, u'0') + QString(format.maxDecimals - format.minDecimals, u'#');
    return sheetLiteral(format.prefix) + integer + sheetLiteral(format.suffix);
}

// The target's name reserved beside it (same folder, so the final rename stays on one file
// system) and removed unless it was moved into place.
class WorkFile {
public:
    explicit WorkFile(const QString& target) {
        static std::atomic<int> serial{0};
        const QFileInfo info(target);
        target_ = QFile::encodeName(info.absoluteFilePath());
        folder_ = QFile::encodeName(info.absolutePath());
        for (int attempt = 0; attempt < 100; ++attempt) {
            path_ = folder_ + QFile::encodeName(QStringLiteral("/.%1.%2-%3").arg(info.fileName()).arg(getpid()).arg(serial++));
            const int fd = ::open(path_.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
            if (fd >= 0) {
                ::close(fd);
                return;
            }
            if (errno != EEXIST) break;
        }
        path_.clear();
        throw std::runtime_error("cannot create a file beside " + target_.toStdString());
    }
    ~WorkFile() {
        if (!path_.isEmpty()) ::unlink(path_.constData());
    }
    WorkFile(const WorkFile&) = delete;
    WorkFile& operator=(const WorkFile&) = delete;

    const QByteArray& path() const { return path_; }
    QByteArray& folder() { return folder_; }
    void moveIntoPlace() {
        if (::rename(path_.constData(), target_.constData()) != 0)
            throw std::runtime_error("cannot replace " + target_.toStdString());
        path_.clear();
    }

private:
    QByteArray target_, folder_, path_;
};

class SheetWriter {
public:
    SheetWriter(const QString& target, std::vector<SheetColumn> columns, const ExportProgress& progress, qint64 total)
        : work_(target), columns_(std::move(columns)), formats_(columns_.size()),
          progress_(progress), total_(total) {
        if (columns_.size() > size_t(LXW_COL_MAX)) throw std::runtime_error("too many columns");
        // Its temporary files go beside the target too: a temporary folder in memory would
        // hold the whole sheet there.
        lxw_workbook_options options = {LXW_TRUE, work_.folder().data(), LXW_FALSE};
        workbook_.reset(workbook_new_opt(work_.path().constData(), &options));
        if (!workbook_) throw std::runtime_error("cannot start the workbook");
        header_ = workbook_add_format(workbook_.get());
        format_set_bold(header_);
        date_ = numberFormat("yyyy-mm-dd");
        dateTime_ = numberFormat("yyyy-mm-dd hh:mm:ss");
        for (size_t c = 0; c < columns_.size(); ++c) {
            const NumberFormat parsed = parseNumberFormat(columns_[c].format);
            if (!parsed.hasDigits) continue;
            formats_[c] = {parsed, numberFormat(sheetNumberFormat(parsed, true).toUtf8()),
                           numberFormat(sheetNumberFormat(parsed, false).toUtf8())};
        }
        startSheet();
        report();
    }

    // valueOf(column) gives the row's value of each column in turn.
    template <typename ValueOf>
    void addRow(ValueOf&& valueOf) {
        if (row_ == LXW_ROW_MAX) startSheet();
        for (size_t c = 0; c < columns_.size(); ++c) writeCell(lxw_col_t(c), valueOf(c));
        ++row_;
        if (++written_ % kProgressEvery == 0) report();
    }

    void finish() {
        if (written_ % kProgressEvery != 0) report();
        check(workbook_close(workbook_.release()));  // frees it, whether it succeeds or not
        work_.moveIntoPlace();
    }

private:
    // A column's number formats: as the display format, and without its point.
    struct ColumnFormat {
        NumberFormat parsed;
        lxw_format* withPoint = nullptr;
        lxw_format* withoutPoint = nullptr;
    };

    lxw_format* numberFormat(const QByteArray& code) {
        lxw_format* format = workbook_add_format(workbook_.get());
        format_set_num_format(format, code.constData());
        return format;
    }

    void startSheet() {
        sheet_ = workbook_add_worksheet(workbook_.get(), nullptr);
        if (!sheet_) throw std::runtime_error("cannot add a sheet");
        row_ = 0;
        for (size_t c = 0; c < columns_.size(); ++c) {
            const SheetColumn& column = columns_[c];
            // Wide enough for the label (CJK characters take two places) and for a date.
            double width = 2;
            for (const QChar ch : column.label) width += ch.unicode() >= 0x2e80 ? 2 : 1;
            if (column.type == DataType::DateTime) width = std::max(width, 20.0);
            check(worksheet_set_column(sheet_, lxw_col_t(c), lxw_col_t(c), std::clamp(width, 10.0, 60.0), nullptr));
            writeText(lxw_col_t(c), column.label, header_);
        }
        ++row_;
    }

    void report() {
        if (progress_ && !progress_(written_, total_)) throw std::runtime_error("cancelled");
    }

    void writeText(lxw_col_t column, const QString& text, lxw_format* format = nullptr) {
        check(worksheet_write_string(sheet_, row_, column, text.left(kMaxCellText).toUtf8().constData(), format));
    }

    void writeNumber(lxw_col_t column, const Value& value) {
        const ColumnFormat& format = formats_[column];
        const QString& display = columns_[column].format;
        // A format without digits ("****") masks the value: only the format is written.
        if (!display.isEmpty() && !format.parsed.hasDigits) return writeText(column, display);
        const double number = value.toDouble();
        // Digits a number of the sheet cannot hold are kept as text.
        const bool exact = value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float
                               ? std::isfinite(number) : std::abs(number) < kExactIntegers;
        if (!exact) return writeText(column, fieldText(value));
        lxw_format* shown = format.withPoint;
        if (shown && format.parsed.hasPoint && format.parsed.minDecimals == 0) {
            QString text = formatNumber(number, display);
            text = text.mid(text.startsWith(u'-') + format.parsed.prefix.size());
            text.chop(format.parsed.suffix.size());
            if (!text.contains(u'.')) shown = format.withoutPoint;
        }
        check(worksheet_write_number(sheet_, row_, column, number, shown));
    }

    void writeDate(lxw_col_t column, const QDateTime& when) {
        const QDate day = when.date();
        const QTime time = when.time();
        // Chosen per value: midnight shows as the day alone, any other time with the day.
        const bool wholeDay = time == QTime(0, 0);
        // The format counts days from 1900: earlier dates are written as text.
        if (day.year() < 1900)
            return writeText(column, when.toString(wholeDay ? QStringLiteral("yyyy-MM-dd") : QStringLiteral("yyyy-MM-dd hh:mm:ss")));
        lxw_datetime value = {day.year(), day.month(), day.day(), time.hour(), time.minute(),
                              time.second() + time.msec() / 1000.0};
        check(worksheet_write_datetime(sheet_, row_, column, &value, wholeDay ? date_ : dateTime_));
    }

    // The value's own type decides: a column of the embedded database may hold any.
    void writeCell(lxw_col_t column, const Value& value) {
        switch (value.typeId()) {
        case QMetaType::UnknownType: return;
        case QMetaType::Bool: return check(worksheet_write_boolean(sheet_, row_, column, value.toBool(), nullptr));
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
        case QMetaType::Double:
        case QMetaType::Float: return writeNumber(column, value);
        case QMetaType::QDateTime: return writeDate(column, value.toDateTime());
        case QMetaType::QDate: return writeDate(column, value.toDate().startOfDay());
        default: return writeText(column, fieldText(value));
        }
    }

    WorkFile work_;
    std::vector<SheetColumn> columns_;
    std::vector<ColumnFormat> formats_;
    const ExportProgress& progress_;
    qint64 total_;
    qint64 written_ = 0;
    std::unique_ptr<lxw_workbook, decltype(&lxw_workbook_free)> workbook_{nullptr, lxw_workbook_free};
    lxw_worksheet* sheet_ = nullptr;
    lxw_row_t row_ = 0;
    lxw_format* header_ = nullptr;
    lxw_format* date_ = nullptr;
    lxw_format* dateTime_ = nullptr;
};

// Every failure, whatever raised it, becomes the one export error.
template <typename Body>
void exporting(Body&& body) {
    try {
        body();
    } catch (const Error& e) {
        throw Error(kSpreadsheetExportFailed, e.kind());
    } catch (...) {
        throw Error(kSpreadsheetExportFailed, ErrorKind::Database);
    }
}

// Controls disabled and the current row kept for the walk over a dataset's rows.
class DataSetWalk {
public:
    explicit DataSetWalk(DataSet& dataSet) : dataSet_(dataSet) {
        dataSet_.disableControls();
        mark_ = dataSet_.bookmark();
    }
    ~DataSetWalk() {
        try {
            if (mark_ && dataSet_.bookmarkValid(mark_)) dataSet_.gotoBookmark(mark_);
            dataSet_.releaseBookmark(mark_);
        } catch (...) {
            // the row is gone: the dataset stays where the walk ended
        }
        dataSet_.enableControls();
    }
    DataSetWalk(const DataSetWalk&) = delete;
    DataSetWalk& operator=(const DataSetWalk&) = delete;

private:
    DataSet& dataSet_;
    Bookmark mark_ = 0;
};

}  // namespace

void DataSetExportToExcel(DataSet& dataSet, const QString& path, const ExportProgress& progress) {
    exporting([&] {
        std::vector<Field*> fields;
        std::vector<SheetColumn> columns;
        for (int i = 0; i < dataSet.fieldCount(); ++i) {
            Field& field = dataSet.field(i);
            if (!field.visible) continue;
            fields.push_back(&field);
            columns.push_back({field.displayLabel, field.dataType(),
                               field.isNumeric() ? numericDisplayFormat(field.displayFormat, field.currency) : QString()});
        }
        DataSetWalk walk(dataSet);
        SheetWriter sheet(path, std::move(columns), progress, dataSet.recordCount());
        for (dataSet.first(); !dataSet.eof(); dataSet.next())
            sheet.addRow([&](size_t c) { return fields[c]->asVariant(); });
        sheet.finish();
    });
}

void exportCursorToSpreadsheet(Cursor& cursor, const QString& path, const ExportProgress& progress) {
    exporting([&] {
        std::vector<SheetColumn> columns;
        for (const Column& column : cursor.columns()) {
            const DataType type = dataTypeOf(column.type);
            columns.push_back({column.name, type, numericDisplayFormat({}, type == DataType::Currency)});
        }
        SheetWriter sheet(path, std::move(columns), progress, -1);
        while (!cursor.atEnd())
            for (const std::vector<Value>& row : cursor.fetch(kPageRows))
                sheet.addRow([&](size_t c) -> const Value& { return row[c]; });
        sheet.finish();
    });
}

}  // namespace kivdb
