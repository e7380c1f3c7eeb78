-- Departments, employees, roles, users and their rights, the module menu.
-- Module numbers follow the thousands of the bill types: 1 sales, 2 purchasing, 3 stock,
-- 5 planning, 6 production, 7 receivables and payables, 8 ledger, 9 system.

insert into Bs_Depart (DepartNo, DepartName, ChargeMan) values ('D01', N'总经理办公室', 'E001')
insert into Bs_Depart (DepartNo, DepartName, ChargeMan) values ('D02', N'销售部', 'E002')
insert into Bs_Depart (DepartNo, DepartName, ChargeMan) values ('D03', N'采购部', 'E003')
insert into Bs_Depart (DepartNo, DepartName, ChargeMan) values ('D04', N'生产部', 'E004')
insert into Bs_Depart (DepartNo, DepartName, ChargeMan) values ('D05', N'仓储部', 'E005')
insert into Bs_Depart (DepartNo, DepartName, ChargeMan) values ('D06', N'财务部', 'E006')
insert into Bs_Depart (DepartNo, DepartName, ChargeMan) values ('D07', N'品质部', 'E007')
go

insert into Bs_Employee (EmpId, EmpName, DepartNo, Effect) values ('E001', N'王建国', 'D01', 1)
insert into Bs_Employee (EmpId, EmpName, DepartNo, Effect) values ('E002', N'李明', 'D02', 1)
insert into Bs_Employee (EmpId, EmpName, DepartNo, Effect) values ('E003', N'张伟', 'D03', 1)
insert into Bs_Employee (EmpId, EmpName, DepartNo, Effect) values ('E004', N'刘洋', 'D04', 1)
insert into Bs_Employee (EmpId, EmpName, DepartNo, Effect) values ('E005', N'陈静', 'D05', 1)
insert into Bs_Employee (EmpId, EmpName, DepartNo, Effect) values ('E006', N'赵丽', 'D06', 1)
insert into Bs_Employee (EmpId, EmpName, DepartNo, Effect) values ('E007', N'孙强', 'D07', 1)
insert into Bs_Employee (EmpId, EmpName, DepartNo, Effect) values ('E008', N'周涛', 'D02', 0)
go

insert into Bs_Roller (RollId, RollDesc) values ('R01', N'系统管理员')
insert into Bs_Roller (RollId, RollDesc) values ('R02', N'销售员')
insert into Bs_Roller (RollId, RollDesc) values ('R03', N'采购员')
insert into Bs_Roller (RollId, RollDesc) values ('R04', N'仓库管理员')
insert into Bs_Roller (RollId, RollDesc) values ('R05', N'财务会计')
go

-- Data scope AuthId: 0 every note, 1 the user's department, 2 the user's own notes.
insert into Bs_User (UserId, UserName, DepartNo, bAdmin, AuthId, OpenNoteType, OpenNoteQty, Effect) values ('admin', N'系统管理员', 'D01', 1, 0, 0, 0, 1)
insert into Bs_User (UserId, UserName, DepartNo, bAdmin, AuthId, OpenNoteType, OpenNoteQty, Effect) values ('wangjg', N'王建国', 'D01', 0, 0, 0, 0, 1)
insert into Bs_User (UserId, UserName, DepartNo, bAdmin, AuthId, OpenNoteType, OpenNoteQty, Effect) values ('lim', N'李明', 'D02', 0, 1, 1, 50, 1)
insert into Bs_User (UserId, UserName, DepartNo, bAdmin, AuthId, OpenNoteType, OpenNoteQty, Effect) values ('zhangw', N'张伟', 'D03', 0, 2, 1, 30, 1)
insert into Bs_User (UserId, UserName, DepartNo, bAdmin, AuthId, OpenNoteType, OpenNoteQty, Effect) values ('liuy', N'刘洋', 'D04', 0, 1, 0, 0, 1)
insert into Bs_User (UserId, UserName, DepartNo, bAdmin, AuthId, OpenNoteType, OpenNoteQty, Effect) values ('chenj', N'陈静', 'D05', 0, 1, 2, 100, 1)
insert into Bs_User (UserId, UserName, DepartNo, bAdmin, AuthId, OpenNoteType, OpenNoteQty, Effect) values ('zhaol', N'赵丽', 'D06', 0, 0, 0, 0, 1)
insert into Bs_User (UserId, UserName, DepartNo, bAdmin, AuthId, OpenNoteType, OpenNoteQty, Effect) values ('zhout', N'周涛', 'D02', 0, 2, 0, 0, 0)
go

-- The super user needs no rights rows. Columns: enter, insert, delete, modify, print,
-- approve, withdraw approval, see prices, issue below zero, other.
insert into Bs_UserAuth (UserId, ModId, EnterOp, InsertOp, DeleteOp, ModifyOp, PrintOp, CheckOp, RecheckOp, PriceOp, NegQtyOp, OtherOp) values ('wangjg', 1, 1, 0, 0, 0, 1, 1, 1, 1, 0, 1)
insert into Bs_UserAuth (UserId, ModId, EnterOp, InsertOp, DeleteOp, ModifyOp, PrintOp, CheckOp, RecheckOp, PriceOp, NegQtyOp, OtherOp) values ('wangjg', 2, 1, 0, 0, 0, 1, 1, 1, 1, 0, 1)
insert into Bs_UserAuth (UserId, ModId, EnterOp, InsertOp, DeleteOp, ModifyOp, PrintOp, CheckOp, RecheckOp, PriceOp, NegQtyOp, OtherOp) values ('lim', 1, 1, 1, 0, 1, 1, 1, 0, 1, 0, 0)
insert into Bs_UserAuth (UserId, ModId, EnterOp, InsertOp, DeleteOp, ModifyOp, PrintOp, CheckOp, RecheckOp, PriceOp, NegQtyOp, OtherOp) values ('lim', 3, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0)
insert into Bs_UserAuth (UserId, ModId, EnterOp, InsertOp, DeleteOp, ModifyOp, PrintOp, CheckOp, RecheckOp, PriceOp, NegQtyOp, OtherOp) values ('zhangw', 2, 1, 1, 1, 1, 1, 0, 0, 1, 0, 0)
insert into Bs_UserAuth (UserId, ModId, EnterOp, InsertOp, DeleteOp, ModifyOp, PrintOp, CheckOp, RecheckOp, PriceOp, NegQtyOp, OtherOp) values ('zhangw', 3, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0)
insert into Bs_UserAuth (UserId, ModId, EnterOp, InsertOp, DeleteOp, ModifyOp, PrintOp, CheckOp, RecheckOp, PriceOp, NegQtyOp, OtherOp) values ('liuy', 5, 1, 1, 1, 1, 1, 1, 1, 0, 0, 1)
insert into Bs_UserAuth (UserId, ModId, EnterOp, InsertOp, DeleteOp, ModifyOp, PrintOp, CheckOp, RecheckOp, PriceOp, NegQtyOp, OtherOp) values ('liuy', 6, 1, 1, 1, 1, 1, 1, 0, 0, 0, 1)
insert into Bs_UserAuth (UserId, ModId, EnterOp, InsertOp, DeleteOp, ModifyOp, PrintOp, CheckOp, RecheckOp, PriceOp, NegQtyOp, OtherOp) values ('chenj', 3, 1, 1, 1, 1, 1, 1, 1, 0, 1, 0)
insert into Bs_UserAuth (UserId, ModId, EnterOp, InsertOp, DeleteOp, ModifyOp, PrintOp, CheckOp, RecheckOp, PriceOp, NegQtyOp, OtherOp) values ('chenj', 6, 1, 1, 0, 1, 1, 0, 0, 0, 1, 0)
insert into Bs_UserAuth (UserId, ModId, EnterOp, InsertOp, DeleteOp, ModifyOp, PrintOp, CheckOp, RecheckOp, PriceOp, NegQtyOp, OtherOp) values ('zhaol', 1, 1, 0, 0, 0, 1, 0, 0, 1, 0, 0)
insert into Bs_UserAuth (UserId, ModId, EnterOp, InsertOp, DeleteOp, ModifyOp, PrintOp, CheckOp, RecheckOp, PriceOp, NegQtyOp, OtherOp) values ('zhaol', 2, 1, 0, 0, 0, 1, 0, 0, 1, 0, 0)
insert into Bs_UserAuth (UserId, ModId, EnterOp, InsertOp, DeleteOp, ModifyOp, PrintOp, CheckOp, RecheckOp, PriceOp, NegQtyOp, OtherOp) values ('zhaol', 7, 1, 1, 1, 1, 1, 1, 1, 1, 0, 1)
insert into Bs_UserAuth (UserId, ModId, EnterOp, InsertOp, DeleteOp, ModifyOp, PrintOp, CheckOp, RecheckOp, PriceOp, NegQtyOp, OtherOp) values ('zhaol', 8, 1, 1, 1, 1, 1, 1, 1, 1, 0, 1)
insert into Bs_UserAuth (UserId, ModId, EnterOp, InsertOp, DeleteOp, ModifyOp, PrintOp, CheckOp, RecheckOp, PriceOp, NegQtyOp, OtherOp) values ('zhout', 1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0)
go

-- Module entries (MenuType 0, not last) and their forms (MenuType = module, last level).
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (1, N'销售管理', 0, 0)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (2, N'采购管理', 0, 0)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (3, N'库存管理', 0, 0)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (5, N'生产计划', 0, 0)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (6, N'车间管理', 0, 0)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (7, N'应收应付', 0, 0)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (8, N'总帐', 0, 0)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (1010, N'销售订单', 1, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (1020, N'销售出货单', 1, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (1030, N'销售退货单', 1, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (1610, N'发出商品单', 1, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (1620, N'发出商品退回单', 1, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (1630, N'委托代销结算单', 1, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (2010, N'采购订单', 2, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (2020, N'采购收货单', 2, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (2030, N'采购退货单', 2, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (2110, N'暂收单', 2, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (2120, N'暂收退货单', 2, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (2145, N'外协加工结算单', 2, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (3010, N'其他入库单', 3, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (3130, N'仓库调拨单', 3, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (3400, N'盘点单', 3, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (5020, N'生产工单', 5, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (6040, N'生产领料单', 6, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (6050, N'生产退料单', 6, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (6060, N'生产补料单', 6, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (6080, N'完工入库单', 6, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (7030, N'收款单', 7, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (7040, N'客户折让单', 7, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (7230, N'付款单', 7, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (7240, N'供应商折让单', 7, 1)
insert into s_MenuDef (MenuId, MenuCaption, MenuType, bLast) values (7330, N'银行转帐单', 7, 1)
go
