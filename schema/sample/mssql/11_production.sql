-- Production: a job for 20 worm gear boxes (version A) made for the sales order, with its
-- components, a permitted substitute, its routing, the issue of the full kit, a
-- supplementary issue for two damaged bearings, a returned oil seal, the first 12 boxes
-- finished into stock and their final inspection.
-- IssuedQty of a component is what its issue lines took less what came back;
-- AddIssQty what the supplementary issues took.

insert into pl_jbmain (RefNo, JobNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, RefOrderNo, Slordno, CustPoNo, ProdNo, ProdVersion, ProdQty, QtyIssued, StkQtyIssued, ReadyQty) values (8, 'MO0605001', '2006-05-06', '2', 'D04', 'liuy', 0, N'江宁起重订单，先做20台', 7, 'SO0605001', 'JNQZ-2006-0412', 'WPA80-20', 'A', 20, 20, 12, 12)
go

insert into pl_JbBom (RefJobNo, LineId, CompNo, CVersion, Qtyper, Factor, WcNo, PlanIssQty, IssuedQty, NeedAddQty, AddIssQty) values (8, 1, 'CS-HT200-80', '', 1, 1, 'WC03', 20, 20, 0, 0)
insert into pl_JbBom (RefJobNo, LineId, CompNo, CVersion, Qtyper, Factor, WcNo, PlanIssQty, IssuedQty, NeedAddQty, AddIssQty) values (8, 2, 'WG80-ASM', 'A', 1, 1, 'WC03', 20, 20, 0, 0)
insert into pl_JbBom (RefJobNo, LineId, CompNo, CVersion, Qtyper, Factor, WcNo, PlanIssQty, IssuedQty, NeedAddQty, AddIssQty) values (8, 3, 'ST-40CR-45', '', 1, 1, 'WC01', 20, 20, 0, 0)
insert into pl_JbBom (RefJobNo, LineId, CompNo, CVersion, Qtyper, Factor, WcNo, PlanIssQty, IssuedQty, NeedAddQty, AddIssQty) values (8, 4, 'BR-6208', '', 2, 1, 'WC03', 40, 40, 2, 2)
insert into pl_JbBom (RefJobNo, LineId, CompNo, CVersion, Qtyper, Factor, WcNo, PlanIssQty, IssuedQty, NeedAddQty, AddIssQty) values (8, 5, 'OS-45628', '', 2, 1, 'WC03', 40, 39, 0, 0)
insert into pl_JbBom (RefJobNo, LineId, CompNo, CVersion, Qtyper, Factor, WcNo, PlanIssQty, IssuedQty, NeedAddQty, AddIssQty) values (8, 6, 'OIL-220', '', 1.5, 1, 'WC03', 30, 30, 0, 0)
insert into pl_JbBom (RefJobNo, LineId, CompNo, CVersion, Qtyper, Factor, WcNo, PlanIssQty, IssuedQty, NeedAddQty, AddIssQty) values (8, 7, 'BT-M12-40', '', 8, 1, 'WC03', 160, 160, 0, 0)
go

insert into pl_JbBomAlt (RefJobNo, LineId, AltSeqNo, AltPartNo, PartName, AltVersion, QtyPer, Factor) values (8, 4, 1, 'BR-6208-J', N'深沟球轴承(进口)', '', 2, 1)
go

insert into pl_JbRout (RefJobNo, SeqNo, WcNo) values (8, 1, 'WC01')
insert into pl_JbRout (RefJobNo, SeqNo, WcNo) values (8, 2, 'WC02')
insert into pl_JbRout (RefJobNo, SeqNo, WcNo) values (8, 3, 'WC03')
insert into pl_JbRout (RefJobNo, SeqNo, WcNo) values (8, 4, 'WC04')
go

-- 10 is the normal issue (6040), 11 the supplementary issue (6060). The bolts are kept at
-- the line and were issued before the line store was refilled: it stands below zero.
insert into pm_IssWip (RefNo, NoteNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, WcNo) values (10, 'MI0605001', '2006-05-08', '2', 'D05', 'chenj', 0, N'MO0605001 全套领料', 'WC03')
insert into pm_IssWip (RefNo, NoteNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, WcNo) values (11, 'MA0605001', '2006-05-12', '2', 'D05', 'chenj', 0, N'装配时损坏轴承2套', 'WC03')
go

insert into pm_IssWipDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, RefJobNo, Qty, FromLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (10, 1, 1, 'CS-HT200-80', N'箱体铸件', N'件', 8, 20, 'WH01', 'B051220', '00', null, 1, 1)
insert into pm_IssWipDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, RefJobNo, Qty, FromLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (10, 2, 2, 'WG80-ASM', N'蜗轮组件', N'套', 8, 20, 'WH01', '', '00', null, 1, 1)
insert into pm_IssWipDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, RefJobNo, Qty, FromLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (10, 3, 3, 'ST-40CR-45', N'蜗杆轴坯', N'根', 8, 20, 'WH01', '', '00', null, 1, 1)
insert into pm_IssWipDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, RefJobNo, Qty, FromLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (10, 4, 4, 'BR-6208', N'深沟球轴承', N'套', 8, 40, 'WH01', '', '00', null, 1, 1)
insert into pm_IssWipDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, RefJobNo, Qty, FromLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (10, 5, 5, 'OS-45628', N'骨架油封', N'个', 8, 40, 'WH01', '', '00', null, 1, 1)
insert into pm_IssWipDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, RefJobNo, Qty, FromLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (10, 6, 6, 'OIL-220', N'工业齿轮油', N'升', 8, 30, 'WH01', '', 'L0512B', '2007-12-31', 1, 1)
insert into pm_IssWipDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, RefJobNo, Qty, FromLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (10, 7, 7, 'BT-M12-40', N'六角头螺栓', N'个', 8, 160, 'WH03', '', '00', null, 1, 1)
insert into pm_IssWipDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, RefJobNo, Qty, FromLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (11, 1, 1, 'BR-6208', N'深沟球轴承', N'套', 8, 2, 'WH03', '', '00', null, 1, 1)
go

insert into pm_IssWipRtn (RefNo, NoteNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, WcNo) values (12, 'MR0605001', '2006-05-18', '2', 'D05', 'chenj', 0, N'多领油封退回', 'WC03')
go

insert into pm_IssWipRtnDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, RefJobNo, Qty, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (12, 1, 1, 'OS-45628', N'骨架油封', N'个', 8, 1, 'WH01', '', '00', null, 1, 1)
go

-- Made in house: no vendor. shiftType 1 is a finished-production line.
insert into pm_FinRep (RefNo, NoteNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, VendNo, Currency, ExRate) values (13, 'FR0605001', '2006-05-20', '2', 'D04', 'liuy', 0, N'第一批12台完工入库', '', 'RMB', 1)
go

insert into pm_FinRepDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, RefJobNo, shiftType, Qty, InvQty, Price, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor, PoNo) values (13, 1, 1, 'WPA80-20', N'蜗轮蜗杆减速机', N'台', 8, 1, 12, 0, 0, 'WH02', '', '00', null, 1, 1, '')
go

insert into pm_FQcCode (FqcCode, RefJobNo, WcNo, EquipNo, ProdNo, bSub, Qty, bChecked) values ('FQC0605001', 8, 'WC04', 'EQ05', 'WPA80-20', 0, 12, 1)
insert into pm_FQcCode (FqcCode, RefJobNo, WcNo, EquipNo, ProdNo, bSub, Qty, bChecked) values ('FQC0605002', 8, 'WC04', 'EQ05', 'WPA80-20', 0, 8, 0)
go
