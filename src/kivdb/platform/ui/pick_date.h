#pragma once
// A small modal dialog for choosing one day.
#include <QDialog>

class QCalendarWidget;
class QDialogButtonBox;

namespace kivdb {

class PickDateDialog : public QDialog {
    Q_OBJECT
public:
    // Opens on `initial`, or on today when that is no date.
    explicit PickDateDialog(QWidget* parent = nullptr, double initial = 0.0);
    // The day selected, as a whole-day date value.
    double selectedDate() const;
    QCalendarWidget* calendar() const { return calendar_; }
    QDialogButtonBox* buttons() const { return buttons_; }

private:
    QCalendarWidget* calendar_;
    QDialogButtonBox* buttons_;
};

namespace kivfunc {
// Shows the dialog modally; answers the chosen day, or 0 when the user cancels.
double PickDate(QWidget* parent = nullptr, double initial = 0.0);
}  // namespace kivfunc

}  // namespace kivdb
