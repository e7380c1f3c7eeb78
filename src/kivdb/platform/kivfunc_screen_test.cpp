#include "platform/kivfunc.h"

#include "platform/kivfunc_gui_test.h"

#include <QDialog>
#include <QFontInfo>
#include <QScreen>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace kivdb::kivfunc {
namespace {

TEST(KivfuncRegistry, ReadsWhatWasWrittenUnderEitherRoot) {
    QTemporaryDir home;
    ASSERT_TRUE(home.isValid());
    for (auto scope : {QSettings::UserScope, QSettings::SystemScope})
        QSettings::setPath(QSettings::IniFormat, scope, home.filePath(scope == QSettings::UserScope ? "user" : "system"));

    const QString key = "software\\Taluvex\\ProgList\\ERP01\\UserSet";
    WriteRegistry(key, "MainWindowsHand", "132456");
    WriteRegistry(key, "MainWindowsHand", "7", RegistryRoot::CurrentUser);
    const std::tuple<QString, QString, RegistryRoot, QString> cases[] = {
        {key, "MainWindowsHand", RegistryRoot::LocalMachine, "132456"},
        {"SOFTWARE\\taluvex\\PROGLIST\\erp01\\usERSet\\", "mainwindowshand", RegistryRoot::LocalMachine, "132456"},
        {"\\software\\Taluvex\\ProgList\\ERP01\\UserSet", "MainWindowsHand", RegistryRoot::LocalMachine, "132456"},
        {key, "MainWindowsHand", RegistryRoot::CurrentUser, "7"},
        {"software\\Taluvex\\ProgList\\ERP02\\UserSet", "MainWindowsHand", RegistryRoot::LocalMachine, ""},
        {key, "NoSuchValue", RegistryRoot::LocalMachine, ""},
    };
    for (const auto& [path, name, root, expected] : cases)
        EXPECT_EQ(ReadRegistry(path, name, root), expected) << path.toStdString() << " " << name.toStdString();
}

TEST(KivfuncForms, CentredOverTheOwnerOrTheScreen) {
    if (!testing_gui::guiApplication()) GTEST_SKIP() << "a non-GUI application already exists";
    QWidget owner;
    owner.setGeometry(100, 80, 600, 400);
    owner.show();
    const QRect area = owner.screen()->availableGeometry();
    const struct { const char* name; bool owned; QSize size; QPoint expectedTopLeft; } cases[] = {
        {"over the owner", true, {200, 100}, owner.frameGeometry().center() - QPoint(99, 49)},
        {"over the screen", false, {200, 100}, area.center() - QPoint(99, 49)},
        {"kept on the screen", true, {area.width() + 50, 100}, {area.left(), owner.frameGeometry().center().y() - 49}},
    };
    for (const auto& c : cases) {
        QDialog form(c.owned ? &owner : nullptr);
        form.resize(c.size);
        SetFormPOsition(&form);
        EXPECT_EQ(form.frameGeometry().topLeft(), c.expectedTopLeft) << c.name;
    }
    SetFormPOsition(nullptr);
}

TEST(KivfuncForms, SysScreenGivesTheSuiteFaceAndFitsTheScreen) {
    if (!testing_gui::guiApplication()) GTEST_SKIP() << "a non-GUI application already exists";
    QDialog form;
    form.resize(5000, 300);
    SetSysScreen(&form);
    const QSize room = form.screen()->availableGeometry().size();
    EXPECT_EQ(form.size(), QSize(room.width(), 300));
    EXPECT_EQ(form.font().pointSize(), 9);
    EXPECT_EQ(form.font().families().value(0), "宋体");
    EXPECT_TRUE(QFontInfo(form.font()).family().startsWith("AR PL UMing")) << QFontInfo(form.font()).family().toStdString();
    SetSysScreen(nullptr);
}

}  // namespace
}  // namespace kivdb::kivfunc
