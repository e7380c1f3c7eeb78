#include "frame/host_screen.h"
#include "kivdb/exports.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace kivdb {
namespace {

// Registers data modules for one test and removes them afterwards.
class ScreenFixture : public ::testing::Test {
protected:
    HostDataModule& add(const QString& className) {
        HostDataModule& m = HostScreen::instance().addDataModule(className);
        added_.push_back(&m);
        return m;
    }
    void TearDown() override {
        for (HostDataModule* m : added_) HostScreen::instance().removeDataModule(*m);
    }
    // An empty file is an empty embedded database.
    QString database(const QString& name) {
        QFile(dir_.filePath(name)).open(QIODevice::WriteOnly);
        return "sqlite:" + dir_.filePath(name);
    }

private:
    std::vector<HostDataModule*> added_;
    QTemporaryDir dir_;
};

// Each database file holds its own name, so the connection found tells where it came from.
QString whichDatabase(Connection* conn) {
    if (!conn) return QStringLiteral("none");
    return SelTableStringValue(*conn, "select Name from Who");
}

void label(Connection& conn, const QString& name) {
    conn.execute("create table Who (Name varchar(20))");
    conn.execute("insert into Who values ('" + name + "')");
}

TEST_F(ScreenFixture, NoDataModuleOrNoConnectionGivesNothing) {
    EXPECT_EQ(GetDataConnection(), nullptr);
    add("TKivDmDataModule").addComponent("TADOQuery");
    EXPECT_EQ(GetDataConnection(), nullptr);
}

TEST_F(ScreenFixture, TheLastMatchingDataModuleWinsWhateverTheCaseOfItsClassName) {
    HostDataModule& first = add("TKivDmDataModule");
    first.addComponent("TADOConnection", database("first.db"));
    add("TOtherDataModule").addComponent("TADOConnection", database("other.db"));
    HostDataModule& last = add("tkivdmdatamodule");
    last.addComponent("TAdoConnection", database("last.db"));
    label(first.component(0).open(), "first");
    label(last.component(0).open(), "last");

    EXPECT_EQ(whichDatabase(GetDataConnection()), "last");
}

TEST_F(ScreenFixture, ADerivedClassDoesNotMatchAndTheFirstConnectionIsTheOneOpened) {
    HostDataModule& dm = add("TKivDmDataModule");
    dm.addComponent("TMyADOConnection", database("derived.db"));
    dm.addComponent("TADOConnection", database("one.db"));
    dm.addComponent("TADOConnection", database("two.db"));

    Connection* found = GetDataConnection();
    ASSERT_NE(found, nullptr);
    EXPECT_FALSE(dm.component(0).isConnected());
    EXPECT_TRUE(dm.component(1).isConnected());
    EXPECT_FALSE(dm.component(2).isConnected());
    EXPECT_EQ(found, dm.component(1).connection());
    // Already open: returned as it is, not reopened.
    EXPECT_EQ(GetDataConnection(), found);
}

TEST_F(ScreenFixture, AFailureToConnectReachesTheCaller) {
    add("TKivDmDataModule").addComponent("TADOConnection", "nosuch:driver");
    EXPECT_THROW(GetDataConnection(), DatabaseError);
}

}  // namespace
}  // namespace kivdb
