-- Purchasing: castings from the foundry (received, the bronze blanks only in part),
-- bearings and seals received in boxes and packs, and imported bearings still awaiting
-- approval. Order quantities are in the part's unit; RecvQty adds up the receipt lines
-- converted to it. Amounts include 17% VAT: Amount = SlAmt + TaxAmt.

insert into Po_Order (RefNo, PoNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, VendNo, Currency, ExRate, Amount, SlAmt, TaxAmt, PaidAmt, Buyer, FinFlag, addFinFlag) values (3, 'PO0604001', '2006-04-03', '2', 'D03', 'zhangw', 0, N'5月工单备料', 'V001', 'RMB', 1, 26700, 22820.51, 3879.49, 0, 'E003', 0, 0)
insert into Po_Order (RefNo, PoNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, VendNo, Currency, ExRate, Amount, SlAmt, TaxAmt, PaidAmt, Buyer, FinFlag, addFinFlag) values (5, 'PO0604002', '2006-04-12', '2', 'D03', 'zhangw', 0, N'轴承油封补库', 'V003', 'RMB', 1, 8300, 7094.02, 1205.98, 0, 'E003', 1, 0)
insert into Po_Order (RefNo, PoNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, VendNo, Currency, ExRate, Amount, SlAmt, TaxAmt, PaidAmt, Buyer, FinFlag, addFinFlag) values (18, 'PO0606001', '2006-06-15', '1', 'D03', 'zhangw', 0, N'B版本试制用进口轴承', 'V004', 'JPY', 14.6, 120000, 120000, 0, 0, 'E003', 0, 0)
go

insert into Po_OrderDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Version, OrderQty, RecvQty, RtnQty, RtnRecvQty, Price, shipDate) values (3, 1, 1, 'CS-HT200-80', N'箱体铸件', N'件', '', 100, 100, 0, 0, 210, '2006-04-10')
insert into Po_OrderDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Version, OrderQty, RecvQty, RtnQty, RtnRecvQty, Price, shipDate) values (3, 2, 2, 'BZ-ZCUSN-180', N'锡青铜蜗轮坯', N'件', '', 60, 40, 0, 0, 95, '2006-04-20')
insert into Po_OrderDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Version, OrderQty, RecvQty, RtnQty, RtnRecvQty, Price, shipDate) values (5, 1, 1, 'BR-6208', N'深沟球轴承', N'套', '', 200, 200, 0, 0, 38.5, '2006-04-18')
insert into Po_OrderDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Version, OrderQty, RecvQty, RtnQty, RtnRecvQty, Price, shipDate) values (5, 2, 2, 'OS-45628', N'骨架油封', N'个', '', 500, 500, 20, 0, 1.2, '2006-04-18')
insert into Po_OrderDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Version, OrderQty, RecvQty, RtnQty, RtnRecvQty, Price, shipDate) values (18, 1, 1, 'BR-6208-J', N'深沟球轴承(进口)', N'套', '', 100, 0, 0, 0, 1200, '2006-07-20')
go

insert into Po_Recv (RefNo, RecvNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, VendNo, Currency, ExRate, Amount, SlAmt, TaxAmt, PaidAmt, Buyer, IqcFinFlag) values (4, 'RC0604001', '2006-04-10', '2', 'D05', 'chenj', 3, N'蜗轮坯余20件下旬到货', 'V001', 'RMB', 1, 24800, 21196.58, 3603.42, 15000, 'E003', 0)
insert into Po_Recv (RefNo, RecvNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, VendNo, Currency, ExRate, Amount, SlAmt, TaxAmt, PaidAmt, Buyer, IqcFinFlag) values (6, 'RC0604002', '2006-04-18', '2', 'D05', 'chenj', 0, N'按箱、按包收货', 'V003', 'RMB', 1, 8300, 7094.02, 1205.98, 0, 'E003', 1)
go

insert into Po_RecvDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Version, Qty, InvQty, QcQty, IqcNo, Price, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor, PoNo) values (4, 1, 1, 'CS-HT200-80', N'箱体铸件', N'件', '', 100, 100, 100, 'IQC0604001', 210, 'WH01', 'B060410', '00', null, 1, 1, 'PO0604001')
insert into Po_RecvDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Version, Qty, InvQty, QcQty, IqcNo, Price, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor, PoNo) values (4, 2, 2, 'BZ-ZCUSN-180', N'锡青铜蜗轮坯', N'件', '', 40, 40, 0, 'IQC0604002', 95, 'WH01', '', 'L0604A', null, 1, 1, 'PO0604001')
insert into Po_RecvDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Version, Qty, InvQty, QcQty, IqcNo, Price, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor, PoNo) values (6, 1, 1, 'BR-6208', N'深沟球轴承', N'箱', '', 4, 0, 0, '', 1925, 'WH01', '', '00', null, 50, 1, 'PO0604002')
insert into Po_RecvDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Version, Qty, InvQty, QcQty, IqcNo, Price, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor, PoNo) values (6, 2, 2, 'OS-45628', N'骨架油封', N'包', '', 5, 0, 0, '', 120, 'WH01', '', '00', null, 100, 1, 'PO0604002')
go

-- The castings passed incoming inspection; the bronze blanks still wait for it.
insert into po_IQcCode (IqcCode, VendNo, bTmp, RefNoteNo, PartNo, Qty, bChecked) values ('IQC0604001', 'V001', 0, 'RC0604001', 'CS-HT200-80', 100, 1)
insert into po_IQcCode (IqcCode, VendNo, bTmp, RefNoteNo, PartNo, Qty, bChecked) values ('IQC0604002', 'V001', 0, 'RC0604001', 'BZ-ZCUSN-180', 40, 0)
go

-- Twenty faulty seals went back to the vendor (RtnQty of the order line, awaiting
-- replacement), and steel bars arrived ahead of their order, taken in provisionally.
insert into Po_Rtn (RefNo, NoteNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, VendNo, Currency, ExRate, Amount, SlAmt, TaxAmt, PaidAmt) values (20, 'PR0606001', '2006-06-19', '2', 'D05', 'chenj', 0, N'油封唇口缺陷退货', 'V003', 'RMB', 1, 24, 20.51, 3.49, 0)
go

insert into Po_RtnDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, InvQty, Price, FromLoc, BatchNo, LotNo, EffectDate, slsize, Factor, PoNo) values (20, 1, 1, 'OS-45628', N'骨架油封', N'个', 20, 0, 1.2, 'WH01', '', '00', null, 1, 1, 'PO0604002')
go

insert into Po_StkIn (RefNo, ShipNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, VendNo, Buyer, Dealer, Currency, ExRate, SlAmt, IqcFinFlag) values (21, 'TS0606001', '2006-06-20', '2', 'D05', 'chenj', 0, N'钢材先到，订单未下', 'V002', 'E003', 'E005', 'RMB', 1, 1638, 1)
go

insert into Po_StkInDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, RtnQty, DisQty, QcQty, IqcNo, Price, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (21, 1, 1, 'ST-40CR-45', N'蜗杆轴坯', N'捆', 2, 1, 0, 0, '', 819, 'WH01', '', '00', null, 20, 1)
go

-- One bundle of the provisional steel was bent and went back; the foundry settled the heat
-- treatment of the job's worm shafts.
insert into Po_StkRtn (RefNo, NoteNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, VendNo, Dealer, Currency, ExRate, SlAmt) values (25, 'TT0606001', '2006-06-27', '2', 'D05', 'chenj', 0, N'一捆弯曲退回', 'V002', 'E005', 'RMB', 1, 819)
go

insert into Po_StkRtnDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, Price, FromLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (25, 1, 1, 'ST-40CR-45', N'蜗杆轴坯', N'捆', 1, 819, 'WH01', '', '00', null, 20, 1)
go

insert into Po_SubClose (RefNo, CloseNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, VendNo, Currency, ExRate, Amount, SlAmt, TaxAmt, PaidAmt) values (28, 'WS0606001', '2006-06-30', '2', 'D03', 'zhangw', 0, N'MO0605001蜗杆轴调质', 'V001', 'RMB', 1, 160, 136.75, 23.25, 0)
go

insert into Po_SubCloseDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, InvQty, Price, PoNo) values (28, 1, 1, 'ST-40CR-45', N'蜗杆轴坯', N'根', 20, 0, 8, '')
go
