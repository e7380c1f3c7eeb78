#include "platform/kivfunc.h"

#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace kivdb::kivfunc {
namespace {

TEST(KivfuncRegistry, ReadsWhatWasWrittenUnderEitherRootWhateverTheCase) {
    QTemporaryDir home;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, home.filePath("user"));
    QSettings::setPath(QSettings::IniFormat, QSettings::SystemScope, home.filePath("system"));
    const QString key = "software\\Taluvex\\ProgList\\ERP01\\UserSet";
    WriteRegistry(key, "MainWindowsHand", "132456");
    WriteRegistry(key, "MainWindowsHand", "7", RegistryRoot::CurrentUser);
    const std::tuple<QString, QString, RegistryRoot, QString> cases[] = {
        {key, "MainWindowsHand", RegistryRoot::LocalMachine, "132456"},
        {"\\SOFTWARE\\taluvex\\PROGLIST\\erp01\\usERSet\\", "mainwindowshand", RegistryRoot::LocalMachine, "132456"},
        {key, "MainWindowsHand", RegistryRoot::CurrentUser, "7"},
        {"software\\Taluvex\\ProgList\\ERP02\\UserSet", "MainWindowsHand", RegistryRoot::LocalMachine, ""},
        {key, "NoSuchValue", RegistryRoot::LocalMachine, ""},
    };
    for (const auto& [path, name, root, expected] : cases)
        EXPECT_EQ(ReadRegistry(path, name, root), expected) << path.toStdString() << " " << name.toStdString();
}

}  // namespace
}  // namespace kivdb::kivfunc
