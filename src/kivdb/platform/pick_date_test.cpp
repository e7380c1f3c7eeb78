#include "platform/pick_date.h"

#include "platform/kivfunc_gui_test.h"
#include "platform/oledate.h"

#include <QCalendarWidget>
#include <QDialogButtonBox>
#include <QDir>
#include <QFontInfo>
#include <QPushButton>
#include <gtest/gtest.h>

namespace kivdb {
namespace {

using namespace testing_gui;

QWidget* calendarKeys(PickDateDialog* dialog) {
    QWidget* view = dialog->calendar()->focusProxy();
    return view ? view : dialog->calendar();
}

QPushButton* button(PickDateDialog* dialog, const QString& text) {
    for (QAbstractButton* b : dialog->buttons()->buttons())
        if (b->text() == text) return qobject_cast<QPushButton*>(b);
    return nullptr;
}

struct PickCase {
    const char* name;
    std::vector<int> keys;   // typed into the calendar first
    const char* pressed;     // button clicked afterwards, or nullptr
    QDate expected;          // null: cancelled
};

TEST(PickDate, AnswersTheChosenDayOrNothing) {
    if (!guiApplication()) GTEST_SKIP() << "a non-GUI application already exists";
    const PickCase cases[] = {
        {"ok keeps the day", {}, "确定", QDate(2006, 3, 15)},
        {"right arrow, ok", {Qt::Key_Right}, "确定", QDate(2006, 3, 16)},
        {"down arrow twice, enter", {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}, nullptr, QDate(2006, 3, 29)},
        {"page down moves a month", {Qt::Key_PageDown}, "确定", QDate(2006, 4, 15)},
        {"cancel", {Qt::Key_Right}, "取消", QDate()},
        {"escape", {Qt::Key_Left, Qt::Key_Escape}, nullptr, QDate()},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        QString caption;
        whenModal([&](QWidget* modal) {
            auto* dialog = qobject_cast<PickDateDialog*>(modal);
            ASSERT_NE(dialog, nullptr);
            caption = dialog->windowTitle();
            for (int key : c.keys) sendKey(calendarKeys(dialog), key);
            if (c.pressed && dialog->isVisible()) click(button(dialog, c.pressed));
        });
        EXPECT_EQ(kivfunc::PickDate(nullptr, encodeOleDate(2006, 3, 15) + 0.5), toOleDate(c.expected));
        EXPECT_EQ(caption, "选择日期");
    }
}

TEST(PickDate, OpensOnTodayWithoutADate) {
    if (!guiApplication()) GTEST_SKIP() << "a non-GUI application already exists";
    whenModal([](QWidget* modal) { click(button(qobject_cast<PickDateDialog*>(modal), "确定")); });
    EXPECT_EQ(kivfunc::PickDate(), toOleDate(QDate::currentDate()));
}

// Leaves a picture of the dialog beside the test binary for people to look at.
TEST(PickDate, RendersInTheSuiteFace) {
    if (!guiApplication()) GTEST_SKIP() << "a non-GUI application already exists";
    PickDateDialog dialog(nullptr, encodeOleDate(2006, 3, 15));
    dialog.show();
    EXPECT_TRUE(QFontInfo(dialog.font()).family().contains("UMing")) << QFontInfo(dialog.font()).family().toStdString();
    QDir screens(QCoreApplication::applicationDirPath() + "/../screens");
    ASSERT_TRUE(screens.mkpath("."));
    EXPECT_TRUE(dialog.grab().save(screens.filePath("pick_date.png")));
}

}  // namespace
}  // namespace kivdb
