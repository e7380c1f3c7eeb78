// The code checks: a code is valid when its master row exists; some also refuse the empty code.
#include "kivdb/exports.h"
#include "testing/test_database.h"

#include <gtest/gtest.h>

#include <functional>

namespace kivdb {
namespace {

using testing::memoryDatabase;
using testing::StatementRecorder;

std::unique_ptr<Connection> masterDatabase() {
    return memoryDatabase({
        "create table Bs_Depart (DepartNo varchar(10))",
        "insert into Bs_Depart values ('D1'), ('')",
        "create table Bs_User (UserId varchar(10))",
        "insert into Bs_User values ('U1')",
        "create table Bs_Customer (CustNo varchar(20))",
        "insert into Bs_Customer values ('C1')",
        "create table Bs_Vendor (VendNo varchar(20))",
        "insert into Bs_Vendor values ('V1')",
        "create table Bs_Roller (RollId varchar(10))",
        "insert into Bs_Roller values ('R1')",
        "create table Bs_ProdList (PartNo varchar(30), Unit varchar(10))",
        "insert into Bs_ProdList values ('P1', 'PCS'), ('P2', null)",
        "create table Bs_PartUnit (PartNo varchar(30), Unit varchar(10))",
        "insert into Bs_PartUnit values ('P1', 'BOX'), ('P2', 'KG')",
        "create table Bs_Employee (EmpId varchar(10))",
        "insert into Bs_Employee values ('E1')",
        "create table Bs_Location (StkNo varchar(10))",
        "insert into Bs_Location values ('WH1'), ('')",
        "create table Rp_Bank (BankNo varchar(10))",
        "insert into Rp_Bank values ('B1'), ('')",
        "create table AC_Currency (Currency varchar(10))",
        "insert into AC_Currency values ('RMB'), ('')",
        "create table Pl_jbmain (RefNo int)",
        "insert into Pl_jbmain values (42)",
        "create table En_Equip (EquipNo varchar(10))",
        "insert into En_Equip values ('EQ1')",
        "create table En_WorkCent (WcNo varchar(10))",
        "insert into En_WorkCent values ('WC1')",
        "create table pl_JbBom (RefJobNo int, LineId int, CompNo varchar(30))",
        "insert into pl_JbBom values (42, 1, 'P1'), (42, 2, 'P2')",
        "create table pl_JbBomAlt (RefJobNo int, LineId int, AltPartNo varchar(30))",
        "insert into pl_JbBomAlt values (42, 1, 'P9')",
        "create table pl_JbRout (RefJobNo int, WcNo varchar(10))",
        "insert into pl_JbRout values (42, 'WC1')",
        "create table en_WcEquip (WcNo varchar(10), EquipNo varchar(10))",
        "insert into en_WcEquip values ('WC1', 'EQ1'), ('WC2', 'EQ2')",
        "create table ac_subject (SubId varchar(20), EndLevel bit, SpecType int)",
        "insert into ac_subject values ('1002', 1, 1), ('1009', 1, 2), ('1001', 1, 3), ('10', 0, 1), ('1003', 1, null)",
    });
}

TEST(CodeChecks, ACodeIsValidWhenItsRowExists) {
    const auto conn = masterDatabase();
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
    const auto conn = masterDatabase();
    StatementRecorder recorder(*conn);
    EXPECT_FALSE(BankSubIdInvoid(*conn, ""));
    EXPECT_FALSE(BankSubIdInvoid(*conn, "   "));
    EXPECT_THROW(IsCustNoValid(*conn, "C1' or '1'='1"), ValueError);
    EXPECT_THROW(IsPartUnitValid(*conn, "P1", "B'OX"), ValueError);
    EXPECT_TRUE(recorder.statements().isEmpty()) << recorder.statements().join('\n').toStdString();
}

}  // namespace
}  // namespace kivdb
