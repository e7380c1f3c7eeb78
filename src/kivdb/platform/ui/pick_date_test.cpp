#include "platform/ui/pick_date.h"

#include "platform/oledate.h"
#include "testing/gui.h"

#include <QAbstractButton>
#include <QCalendarWidget>
#include <QDialogButtonBox>
#include <QDir>
#include <gtest/gtest.h>

namespace kivdb {
namespace {

TEST(PickDate, AnswersTheChosenDayOrNothing) {
    if (!testing::guiApplication()) GTEST_SKIP() << "a non-GUI application already exists";
    const double march15 = encodeOleDate(2006, 3, 15) + 0.5;  // the time is dropped
    const std::tuple<double, std::vector<int>, QString, QDate> cases[] = {
        {march15, {}, "确定", QDate(2006, 3, 15)},
        {march15, {Qt::Key_Right}, "确定", QDate(2006, 3, 16)},
        {march15, {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}, "", QDate(2006, 3, 29)},
        {march15, {Qt::Key_PageDown}, "确定", QDate(2006, 4, 15)},
        {march15, {Qt::Key_Right}, "取消", QDate()},
        {march15, {Qt::Key_Left, Qt::Key_Escape}, "", QDate()},
        {kNoDate, {}, "确定", QDate::currentDate()},
    };
    for (const auto& [initial, keys, pressed, expected] : cases) {
        QString caption;
        testing::whenModal([&](QWidget* modal) {
            auto* dialog = qobject_cast<PickDateDialog*>(modal);
            caption = dialog->windowTitle();
            for (int key : keys) testing::sendKey(dialog->calendar()->focusProxy(), key);
            for (QAbstractButton* b : dialog->buttons()->buttons())
                if (b->text() == pressed) testing::click(b);
        });
        EXPECT_EQ(kivfunc::PickDate(nullptr, initial), toOleDate(expected)) << expected.toString().toStdString();
        EXPECT_EQ(caption, "选择日期");
    }
}

// Leaves a picture of the dialog in the build tree for people to look at.
TEST(PickDate, Renders) {
    if (!testing::guiApplication()) GTEST_SKIP() << "a non-GUI application already exists";
    PickDateDialog dialog(nullptr, encodeOleDate(2006, 3, 15));
    dialog.show();
    QDir screens(QCoreApplication::applicationDirPath() + "/../screens");
    ASSERT_TRUE(screens.mkpath("."));
    EXPECT_TRUE(dialog.grab().save(screens.filePath("pick_date.png")));
}

}  // namespace
}  // namespace kivdb
