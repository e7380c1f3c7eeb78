#include "platform/ui/pick_date.h"

#include "platform/ui/kivfunc_forms.h"
#include "platform/oledate.h"

#include <QCalendarWidget>
#include <QDialogButtonBox>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

namespace kivdb {

PickDateDialog::PickDateDialog(QWidget* parent, double initial)
    : QDialog(parent), calendar_(new QCalendarWidget(this)), buttons_(new QDialogButtonBox(this)) {
    setWindowTitle(QStringLiteral("选择日期"));
    // Month and weekday names in Chinese whatever the workstation's locale; weeks start on
    // Monday as Chinese calendars print them.
    calendar_->setLocale(QLocale(QLocale::Chinese, QLocale::China));
    calendar_->setFirstDayOfWeek(Qt::Monday);
    calendar_->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendar_->setGridVisible(true);
    QDate start = oleDateToDate(initial);
    calendar_->setSelectedDate(start.isValid() ? start : QDate::currentDate());

    QPushButton* ok = buttons_->addButton(QStringLiteral("确定"), QDialogButtonBox::AcceptRole);
    buttons_->addButton(QStringLiteral("取消"), QDialogButtonBox::RejectRole);
    ok->setDefault(true);
    connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
    // Double-clicking a day or pressing Enter on it chooses it.
    connect(calendar_, &QCalendarWidget::activated, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(calendar_);
    layout->addWidget(buttons_);
    kivfunc::SetSysScreen(this);
    calendar_->setFocus();
}

double PickDateDialog::selectedDate() const { return toOleDate(calendar_->selectedDate()); }

namespace kivfunc {

double PickDate(QWidget* parent, double initial) {
    PickDateDialog dialog(parent, initial);
    dialog.adjustSize();  // its real size, so that it is centred as it will look
    SetFormPOsition(&dialog);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedDate() : kNoDate;
}

}  // namespace kivfunc
}  // namespace kivdb
