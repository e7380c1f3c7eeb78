// The code checks: a code is valid when its master row exists; some also refuse the empty code.
#include "kivdb/exports.h"
#include "testing/suite_database.h"
#include "testing/test_database.h"

#include <gtest/gtest.h>

#include <functional>

namespace kivdb {
namespace {

using testing::StatementRecorder;

// The suite's tables, so that every statement meets the columns the schema has.
struct MasterData {
    testing::SuiteDatabaseFile file;
    std::unique_ptr<Connection> conn = file.connect();

    MasterData() {
        testing::executeAll(*conn, {
                 "insert into Bs_Depart (DepartNo) values ('D1'), ('')",
                 "insert into Bs_User (UserId) values ('U1')",
                 "insert into Bs_Customer (CustNo) values ('C1')",
                 "insert into Bs_Vendor (VendNo) values ('V1')",
                 "insert into Bs_Roller (RollId) values ('R1')",
                 "insert into Bs_ProdList (PartNo, Unit) values ('P1', 'PCS'), ('P2', null)",
                 "insert into Bs_PartUnit (PartNo, Unit) values ('P1', 'BOX'), ('P2', 'KG')",
                 "insert into Bs_Employee (EmpId) values ('E1')",
                 "insert into Bs_Location (StkNo) values ('WH1'), ('')",
                 "insert into Rp_Bank (BankNo) values ('B1'), ('')",
                 "insert into AC_Currency (Currency) values ('RMB'), ('')",
                 "insert into Pl_jbmain (RefNo) values (42)",
                 "insert into En_Equip (EquipNo) values ('EQ1')",
                 "insert into En_WorkCent (WcNo) values ('WC1')",
                 "insert into pl_JbBom (RefJobNo, LineId, CompNo) values (42, 1, 'P1'), (42, 2, 'P2')",
                 "insert into pl_JbBomAlt (RefJobNo, LineId, AltSeqNo, AltPartNo) values (42, 1, 1, 'P9')",
                 "insert into pl_JbRout (RefJobNo, SeqNo, WcNo) values (42, 1, 'WC1')",
                 "insert into en_WcEquip (WcNo, EquipNo) values ('WC1', 'EQ1'), ('WC2', 'EQ2')",
                 "insert into ac_subject (SubId, EndLevel, SpecType) values ('1002', 1, 1), ('1009', 1, 2), "
                 "('1001', 1, 3), ('10', 0, 1), ('1003', 1, null)",
        });
    }
};

TEST(CodeChecks, ACodeIsValidWhenItsRowExists) {
    MasterData data;
    Connection* conn = data.conn.get();
    const struct {
        std::function<bool(Connection&)> ask;
        bool expected;
        const char* what;
    } cases[] = {
        {[](Connection& c) { return IsDepartNoValid(c, "D1"); }, true, "department"},
        {[](Connection& c) { return IsDepartNoValid(c, "D2"); }, false, "no such department"},
        {[](Connection& c) { return IsDepartNoValid(c, ""); }, true, "a department row has the empty code"},
        {[](Connection& c) { return IsUserIdValid(c, "U1"); }, true, "user"},
        {[](Connection& c) { return IsCustNoValid(c, "C1"); }, true, "customer"},
        {[](Connection& c) { return IsCustNoValid(c, "C2"); }, false, "no such customer"},
        {[](Connection& c) { return IsVendNoValid(c, "V1"); }, true, "vendor"},
        {[](Connection& c) { return IsRollIdValid(c, "R1"); }, true, "role"},
        {[](Connection& c) { return IsPartNoValid(c, "P1"); }, true, "part"},
        {[](Connection& c) { return IsEmpIdValid(c, "E1"); }, true, "employee"},
        {[](Connection& c) { return IsEquipNoValid(c, "EQ1"); }, true, "equipment"},
        {[](Connection& c) { return IsWcNoValid(c, "WC1"); }, true, "work centre"},
        {[](Connection& c) { return IsStkNoValid(c, "WH1"); }, true, "stock location"},
        {[](Connection& c) { return IsStkNoValid(c, ""); }, false, "the empty location, though a row has it"},
        {[](Connection& c) { return IsBankNoValid(c, "B1"); }, true, "bank"},
        {[](Connection& c) { return IsBankNoValid(c, ""); }, false, "the empty bank, though a row has it"},
        {[](Connection& c) { return IsCurrencyValid(c, "RMB"); }, true, "currency"},
        {[](Connection& c) { return IsCurrencyValid(c, ""); }, false, "the empty currency, though a row has it"},
        {[](Connection& c) { return IsJobNoValid(c, 42); }, true, "job"},
        {[](Connection& c) { return IsJobNoValid(c, 43); }, false, "no such job"},
        {[](Connection& c) { return IsJobAltPartNoRight(c, 42, "P1", "P9"); }, true, "substitute of the component"},
        {[](Connection& c) { return IsJobAltPartNoRight(c, 42, "P2", "P9"); }, false, "substitute of another line"},
        {[](Connection& c) { return IsJobAltPartNoRight(c, 41, "P1", "P9"); }, false, "another job"},
        {[](Connection& c) { return IsJobWcNoEquipValid(c, 42, "WC1", "EQ1"); }, true, "equipment of a routed centre"},
        {[](Connection& c) { return IsJobWcNoEquipValid(c, 42, "WC2", "EQ2"); }, false, "centre not on the routing"},
        {[](Connection& c) { return IsJobWcNoEquipValid(c, 42, "WC1", "EQ2"); }, false, "equipment of another centre"},
        {[](Connection& c) { return IsPartUnitValid(c, "P1", "BOX"); }, true, "an alternative unit"},
        {[](Connection& c) { return IsPartUnitValid(c, "P1", "PCS"); }, true, "the part's own unit, not listed"},
        {[](Connection& c) { return IsPartUnitValid(c, "P1", "KG"); }, false, "another part's unit"},
        {[](Connection& c) { return IsPartUnitValid(c, "P2", ""); }, false, "a part whose unit is null"},
        {[](Connection& c) { return BankSubIdInvoid(c, "1002"); }, true, "end-level subject of type 1"},
        {[](Connection& c) { return BankSubIdInvoid(c, "1009"); }, true, "end-level subject of type 2"},
        {[](Connection& c) { return BankSubIdInvoid(c, "1001"); }, false, "subject of type 3"},
        {[](Connection& c) { return BankSubIdInvoid(c, "10"); }, false, "subject that is no end level"},
        {[](Connection& c) { return BankSubIdInvoid(c, "1003"); }, false, "subject without type"},
        {[](Connection& c) { return BankSubIdInvoid(c, "1004"); }, false, "no such subject"},
    };
    for (const auto& c : cases) EXPECT_EQ(c.ask(*conn), c.expected) << c.what;
}

// What is decided before anything is sent: a blank bank subject, a code holding a quote.
TEST(CodeChecks, RefusedWithoutAStatement) {
    MasterData data;
    Connection* conn = data.conn.get();
    StatementRecorder recorder(*conn);
    EXPECT_FALSE(BankSubIdInvoid(*conn, ""));
    EXPECT_FALSE(BankSubIdInvoid(*conn, "   "));
    EXPECT_THROW(IsCustNoValid(*conn, "C1' or '1'='1"), ValueError);
    EXPECT_THROW(IsPartUnitValid(*conn, "P1", "B'OX"), ValueError);
    EXPECT_TRUE(recorder.statements().isEmpty()) << recorder.statements().join('\n').toStdString();
}

}  // namespace
}  // namespace kivdb
