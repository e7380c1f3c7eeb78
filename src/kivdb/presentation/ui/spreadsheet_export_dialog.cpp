#include "kivdb/exports.h"

#include "presentation/spreadsheet_export.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QProgressDialog>
#include <QStandardPaths>
#include <QUrl>

#include <algorithm>
#include <climits>

namespace kivdb {

namespace {

constexpr int kShowProgressAfterMs = 500;

const QString kTitle = QStringLiteral("导出到电子表格");

// The file the user chooses, empty when none.
QString chooseFile(QWidget* parent) {
    QFileDialog dialog(parent, kTitle, QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
                       QStringLiteral("电子表格文件 (*.xlsx)"));
    dialog.setObjectName(QStringLiteral("spreadsheetFileDialog"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("xlsx"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return dialog.selectedFiles().front();
}

}  // namespace

void DataSetExportToExcel(DataSet& dataSet) {
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        throw Error(kSpreadsheetExportFailed, ErrorKind::Database);
    QWidget* parent = QApplication::activeWindow();
    const QString path = chooseFile(parent);
    if (path.isEmpty()) return;

    QProgressDialog progress(QStringLiteral("正在导出..."), QStringLiteral("取消"), 0, 0, parent);
    progress.setObjectName(QStringLiteral("spreadsheetProgressDialog"));
    progress.setWindowTitle(kTitle);
    progress.setWindowModality(Qt::ApplicationModal);  // setValue then handles the cancel button's events
    progress.setMinimumDuration(kShowProgressAfterMs);
    DataSetExportToExcel(dataSet, path, [&](qint64 written, qint64 total) {
        progress.setMaximum(int(std::min<qint64>(total, INT_MAX)));
        progress.setValue(int(std::min<qint64>(written, INT_MAX)));
        return !progress.wasCanceled();
    });
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(path))) throw Error(kSpreadsheetExportFailed, ErrorKind::Database);
}

}  // namespace kivdb
