#include "platform/ui/kivfunc_forms.h"

#include "testing/gui.h"

#include <QDialog>
#include <QFontInfo>
#include <QScreen>
#include <gtest/gtest.h>

namespace kivdb::kivfunc {
namespace {

TEST(KivfuncForms, CentredOverTheOwnerOrTheScreenAndKeptOnIt) {
    if (!testing::guiApplication()) GTEST_SKIP() << "a non-GUI application already exists";
    QWidget owner;
    owner.setGeometry(100, 80, 600, 400);
    owner.show();
    const QRect area = owner.screen()->availableGeometry();
    const QPoint half(99, 49);  // a 200 x 100 frame's centre lies 99, 49 from its corner
    const std::tuple<bool, QSize, QPoint> cases[] = {
        {true, {200, 100}, owner.frameGeometry().center() - half},
        {false, {200, 100}, area.center() - half},
        {true, {area.width() + 50, 100}, {area.left(), owner.frameGeometry().center().y() - 49}},
    };
    for (const auto& [owned, size, topLeft] : cases) {
        SCOPED_TRACE(::testing::Message() << (owned ? "owned, " : "alone, ") << size.width() << " wide");
        QDialog form(owned ? &owner : nullptr);
        form.resize(size);
        SetFormPOsition(&form);
        EXPECT_EQ(form.frameGeometry().topLeft(), topLeft);
    }
}

TEST(KivfuncForms, SysScreenGivesTheSuiteFaceAndFitsTheScreen) {
    if (!testing::guiApplication()) GTEST_SKIP() << "a non-GUI application already exists";
    QDialog form;
    form.resize(5000, 300);
    SetSysScreen(&form);
    EXPECT_EQ(form.size(), QSize(form.screen()->availableGeometry().width(), 300));
    EXPECT_EQ(form.font().pointSize(), 9);
    EXPECT_EQ(form.font().families().value(0), "宋体");
    // Where 宋体 is missing, the installed Ming face draws the Chinese text.
    EXPECT_TRUE(QFontInfo(form.font()).family().startsWith("AR PL UMing")) << QFontInfo(form.font()).family().toStdString();
}

}  // namespace
}  // namespace kivdb::kivfunc
