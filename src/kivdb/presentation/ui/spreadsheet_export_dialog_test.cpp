#include "kivdb/exports.h"

#include "platform/query_dataset.h"
#include "presentation/spreadsheet_export.h"
#include "testing/gui.h"
#include "testing/spreadsheet_reader.h"
#include "testing/test_database.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QLineEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QTemporaryDir>
#include <QUrl>
#include <gtest/gtest.h>

namespace kivdb {

// Stands in for the desktop's spreadsheet application: notes what it was asked to open.
class UrlOpener : public QObject {
    Q_OBJECT
public:
    QList<QUrl> opened;
public slots:
    void open(const QUrl& url) { opened << url; }
};

namespace {

// Types the name into the save dialog and presses a key there.
void answerFileDialog(QWidget* modal, const QString& path, int key) {
    auto* dialog = qobject_cast<QFileDialog*>(modal);
    ASSERT_TRUE(dialog);
    EXPECT_EQ(dialog->objectName(), "spreadsheetFileDialog");
    auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    ASSERT_TRUE(name);
    name->setText(path);
    testing::sendKey(name, key);
}

TEST(SpreadsheetExportDialog, SavesWhereTheUserSaysAndOpensTheFile) {
    if (!testing::guiApplication()) GTEST_SKIP() << "a non-GUI application already exists";
    // Rows doubled up to 2^19: an export long enough to show its progress.
    QStringList setup{"create table note (n int, code nvarchar(20))", "insert into note values (1, N'甲')"};
    for (int i = 0; i < 19; ++i) setup << "insert into note select n + (select count(*) from note), code from note";
    auto conn = testing::memoryDatabase(setup);
    QTemporaryDir dir;
    UrlOpener opener;
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &opener, "open");
    struct Case {
        const char* name;
        const char* select;
        int key;             // pressed in the save dialog
        bool cancelProgress;  // the progress dialog's cancel button
        QString sheet;        // the file's first cells, empty when no file is left
        bool raises;
    } cases[] = {
        {"Enter saves", "select code, n from note where n <= 2 order by n", Qt::Key_Return, false,
         "'code,'n;'甲,1;'甲,2", false},
        {"Escape saves nothing", "select code from note where n = 1", Qt::Key_Escape, false, "", false},
        {"cancelled while writing", "select n, code, n * 0.5 as half, code as again from note", Qt::Key_Return, true, "", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const QString path = dir.filePath(QStringLiteral("导出"));  // the suffix is added
        QueryDataSet ds(*conn, c.select);
        ds.open();
        opener.opened.clear();
        testing::whenModal([&](QWidget* modal) {
            answerFileDialog(modal, path, c.key);
            if (!c.cancelProgress) return;
            testing::whenModal([](QWidget* modal) {
                auto* progress = qobject_cast<QProgressDialog*>(modal);
                ASSERT_TRUE(progress);
                for (QPushButton* b : progress->findChildren<QPushButton*>())
                    if (b->text() == "取消") testing::click(b);
            });
        });
        bool raised = false;
        try {
            DataSetExportToExcel(ds);
        } catch (const Error& e) {
            EXPECT_STREQ(e.what(), kSpreadsheetExportFailed);
            raised = true;
        }
        EXPECT_EQ(raised, c.raises);
        QStringList cells;
        for (const QStringList& row : testing::readSheet(path + ".xlsx").mid(0, 3)) cells << row.join(u',');
        EXPECT_EQ(cells.join(u';'), c.sheet);
        EXPECT_EQ(opener.opened, c.sheet.isEmpty() ? QList<QUrl>() : QList<QUrl>{QUrl::fromLocalFile(path + ".xlsx")});
        EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).size(), c.sheet.isEmpty() ? 0 : 1);
        QFile::remove(path + ".xlsx");
    }
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
}

}  // namespace
}  // namespace kivdb

#include "spreadsheet_export_dialog_test.moc"
