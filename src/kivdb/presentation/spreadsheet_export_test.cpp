#include "presentation/spreadsheet_export.h"

#include "platform/query_dataset.h"
#include "testing/spreadsheet_reader.h"
#include "testing/test_database.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUrl>
#include <gtest/gtest.h>

namespace kivdb {
namespace {

class SpreadsheetExportTest : public ::testing::Test {
protected:
    void SetUp() override {
        conn_ = testing::memoryDatabase(
            {"create table note (code nvarchar(20) primary key, qty int, amount money, price decimal(18,4), "
             "made datetime, posted bit, memo nvarchar(20))",
             "insert into note values (N'甲-01', 3, 1250000.5, 12.5, '2024-05-06 07:08:09', 1, N'备注')",
             "insert into note values (N'乙-02', null, -0.5, 12, '2024-05-07', 0, null)"});
        ASSERT_TRUE(dir_.isValid());
        path_ = dir_.filePath(QStringLiteral("导出.xlsx"));
    }
    QStringList leftInFolder() const { return QDir(dir_.path()).entryList(QDir::Files | QDir::Hidden | QDir::System); }

    static constexpr const char* kSelect = "select code, qty, amount, price, made, posted, memo from note order by made";
    std::unique_ptr<Connection> conn_;
    QTemporaryDir dir_;
    QString path_;
};

QString rows(const QList<QStringList>& sheet) {
    QStringList lines;
    for (const QStringList& row : sheet) lines << row.join(QStringLiteral(" | "));
    return lines.join(u'\n');
}

TEST_F(SpreadsheetExportTest, WritesVisibleFieldsAsTheGridShowsThem) {
    // 2024-05-06 is day 45418 of the sheet's calendar; 07:08:09 is 25689 seconds of 86400.
    const QString header = "'code | 'qty | 'amount | 'price | 'made | 'posted | 'memo";
    const QString made = " | 45418.29732638889 @ yyyy-mm-dd hh:mm:ss | ";
    struct Case {
        const char* name;
        std::function<void(DataSet&)> configure;
        QString sheet;
        const char* progress;
        const char* cursor = nullptr;  // exported instead of the dataset
    } cases[] = {
        // Money shows with grouping and two decimals, a date without time as a date.
        {"fields as they are", [](DataSet&) {},
         header + "\n'甲-01 | 3 | 1250000.5 @ #,##0.00 | 12.5" + made + "TRUE | '备注"
                  "\n'乙-02 |  | -0.5 @ #,##0.00 | 12 | 45419 @ yyyy-mm-dd | FALSE",
         "0/2 2/2"},
        {"labels, formats and a hidden field",
         [](DataSet& ds) {
             ds.fieldByName("code").displayLabel = "单号";
             ds.fieldByName("qty").displayFormat = "0.00";
             ds.fieldByName("amount").displayFormat = "****";  // the value must not reach the file
             ds.fieldByName("price").displayFormat = "#.##";   // a whole number shows no point
             ds.fieldByName("posted").displayFormat = "0.00";  // no number: no format
             ds.fieldByName("made").visible = false;
             ds.fieldByName("memo").displayFormat = "#元";
             ds.fieldByName("memo").displayLabel = "备注\"说明\"";
         },
         "'单号 | 'qty | 'amount | 'price | 'posted | '备注\"说明\""
         "\n'甲-01 | 3 @ 0.00 | '**** | 12.5 @ #.## | TRUE | '备注"
         "\n'乙-02 |  | '**** | 12 @ # | FALSE",
         "0/2 2/2"},
        {"literal text around the digits",
         [](DataSet& ds) { ds.fieldByName("amount").displayFormat = "¥#,##0.00\"元"; },
         header + "\n'甲-01 | 3 | 1250000.5 @ \"¥\"#,##0.00\"\"\\\"\"元\" | 12.5" + made + "TRUE | '备注"
                  "\n'乙-02 |  | -0.5 @ \"¥\"#,##0.00\"\"\\\"\"元\" | 12 | 45419 @ yyyy-mm-dd | FALSE",
         "0/2 2/2"},
        // The cursor's rows are typed as a dataset's fields: money as money.
        {"cursor", [](DataSet&) {}, "'code | 'amount | 'posted\n'甲-01 | 1250000.5 @ #,##0.00 | TRUE", "0/-1 1/-1",
         "select code, amount, posted from note where qty = 3"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        QueryDataSet ds(*conn_, kSelect);
        ds.open();
        c.configure(ds);
        ds.moveBy(1);
        QStringList progress;
        int changes = 0;
        ds.addObserver([&](DataSetEvent) { ++changes; });
        const ExportProgress record = [&](qint64 written, qint64 total) {
            progress << QStringLiteral("%1/%2").arg(written).arg(total);
            return true;
        };
        if (c.cursor) exportCursorToSpreadsheet(*conn_->openCursor(c.cursor), path_, record);
        else DataSetExportToExcel(ds, path_, record);
        EXPECT_EQ(rows(testing::readSheet(path_)).toStdString(), c.sheet.toStdString());
        EXPECT_EQ(progress.join(u' '), c.progress);
        EXPECT_EQ(ds.recNo(), 2);  // where it was
        EXPECT_FALSE(ds.controlsDisabled());
        EXPECT_LE(changes, 1);  // told once at the end, not row by row
        EXPECT_EQ(leftInFolder(), QStringList{"导出.xlsx"});
    }
}

TEST_F(SpreadsheetExportTest, AFailureLeavesNoFileAndSaysSo) {
    QueryDataSet ds(*conn_, kSelect);
    ds.open();
    QFile previous(path_);
    ASSERT_TRUE(previous.open(QIODevice::WriteOnly));
    previous.write("an earlier export");
    previous.close();
    QDir(dir_.path()).mkdir("folder.xlsx");
    QFile(dir_.filePath("plain")).open(QIODevice::WriteOnly);
    struct Case {
        const char* name;
        QString path;
        ExportProgress progress;
        bool open = true;
        ErrorKind kind = ErrorKind::Database;  // the cause's, when it has one
    } cases[] = {
        {"cancelled at the start", path_, [](qint64, qint64) { return false; }},
        {"cancelled at the end", path_, [](qint64 written, qint64) { return written < 2; }},
        {"no such folder", dir_.filePath("missing/out.xlsx"), {}},
        {"a file where the folder should be", dir_.filePath("plain/out.xlsx"), {}},
        {"a folder at the target", dir_.filePath("folder.xlsx"), {}},
        {"a closed dataset", path_, {}, false, ErrorKind::Argument},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ds.setActive(c.open);
        try {
            DataSetExportToExcel(ds, c.path, c.progress);
            ADD_FAILURE() << "no error";
        } catch (const Error& e) {
            EXPECT_STREQ(e.what(), kSpreadsheetExportFailed);
            EXPECT_EQ(e.kind(), c.kind);
        }
        EXPECT_EQ(leftInFolder(), QStringList({"plain", "导出.xlsx"}));
        ASSERT_TRUE(previous.open(QIODevice::ReadOnly));
        EXPECT_EQ(previous.readAll(), "an earlier export");
        previous.close();
    }
}

// What a spreadsheet application makes of the file, when one is installed.
TEST_F(SpreadsheetExportTest, ASpreadsheetApplicationReadsTheFile) {
    const QString office = QStandardPaths::findExecutable(QStringLiteral("libreoffice"));
    if (office.isEmpty()) GTEST_SKIP() << "no libreoffice on PATH";
    QueryDataSet ds(*conn_, kSelect);
    ds.open();
    ds.fieldByName("price").displayFormat = "#.##";
    DataSetExportToExcel(ds, path_);
    QProcess convert;
    // A profile of its own, so that another instance running meanwhile does not take the job.
    convert.start(office, {"-env:UserInstallation=" + QUrl::fromLocalFile(dir_.filePath("profile")).toString(),
                           "--headless", "--convert-to", "csv:Text - txt - csv (StarCalc):44,34,76", "--outdir",
                           dir_.path(), path_});
    ASSERT_TRUE(convert.waitForFinished(120000));
    QFile csv(dir_.filePath(QStringLiteral("导出.csv")));
    ASSERT_TRUE(csv.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(csv.readAll()).trimmed(),
              "code,qty,amount,price,made,posted,memo\n"
              "甲-01,3,\"1,250,000.50\",12.5,2024-05-06 07:08:09,TRUE,备注\n"
              "乙-02,,-0.50,12,2024-05-07,FALSE,");
}

}  // namespace
}  // namespace kivdb
