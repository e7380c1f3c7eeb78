-- Sales: an order of 30 worm gear boxes and 2 spur gear boxes at the customer's contract
-- prices, and the first shipment against it with a pail of gear oil given free of charge.
-- ShipQty of an order line adds up the shipped quantity (not the free one) of its lines.

insert into sl_order (RefNo, Slordno, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, CustNo, Currency, ExRate, Amount, SlAmt, TaxAmt, PaidAmt, SalesId, CustPoNo, FinFlag, addFinFlag) values (7, 'SO0605001', '2006-05-05', '2', 'D02', 'lim', 0, N'分两批交货', 'C001', 'RMB', 1, 64600, 55213.68, 9386.32, 0, 'E002', 'JNQZ-2006-0412', 0, 0)
go

insert into sl_orderDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Version, OrderQty, ShipQty, RtnQty, RtnShipQty, Price) values (7, 1, 1, 'WPA80-20', N'蜗轮蜗杆减速机', N'台', 'A', 30, 10, 1, 0, 1700)
insert into sl_orderDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Version, OrderQty, ShipQty, RtnQty, RtnShipQty, Price) values (7, 2, 2, 'ZQ350-23', N'圆柱齿轮减速机', N'台', 'A', 2, 2, 0, 0, 6800)
go

insert into sl_ship (RefNo, NoteNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, CustNo, Currency, ExRate, Amount, SlAmt, TaxAmt, PaidAmt) values (15, 'SH0605001', '2006-05-25', '2', 'D02', 'lim', 4, N'第一批交货，赠送齿轮油一桶', 'C001', 'RMB', 1, 30600, 26153.85, 4446.15, 10000)
go

insert into sl_ShipDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, LargessQty, InvQty, Price, FromLoc, BatchNo, LotNo, EffectDate, slsize, Factor, Slordno) values (15, 1, 1, 'WPA80-20', N'蜗轮蜗杆减速机', N'台', 10, 0, 10, 1700, 'WH02', '', '00', null, 1, 1, 'SO0605001')
insert into sl_ShipDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, LargessQty, InvQty, Price, FromLoc, BatchNo, LotNo, EffectDate, slsize, Factor, Slordno) values (15, 2, 2, 'ZQ350-23', N'圆柱齿轮减速机', N'台', 2, 0, 2, 6800, 'WH02', '', '00', null, 1, 1, 'SO0605001')
insert into sl_ShipDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, LargessQty, InvQty, Price, FromLoc, BatchNo, LotNo, EffectDate, slsize, Factor, Slordno) values (15, 3, 3, 'OIL-220', N'工业齿轮油', N'桶', 0, 1, 0, 0, 'WH01', '', 'L0512B', '2007-12-31', 18, 1, '')
go

-- A box damaged in transit came back (RtnQty of the order line; no replacement sent yet),
-- and two boxes went out to 上海港通 on consignment.
insert into sl_Rtn (RefNo, NoteNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, CustNo, Currency, ExRate, Amount, SlAmt, TaxAmt, PaidAmt) values (19, 'SR0606001', '2006-06-16', '2', 'D02', 'lim', 0, N'运输途中外壳碰损退回', 'C001', 'RMB', 1, 1700, 1452.99, 247.01, 0)
go

insert into sl_RtnDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, InvQty, Price, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor, Slordno) values (19, 1, 1, 'WPA80-20', N'蜗轮蜗杆减速机', N'台', 1, 0, 1700, 'WH02', '', '00', null, 1, 1, 'SO0605001')
go

insert into sl_Out (RefNo, SendNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, CustNo, Currency, ExRate) values (24, 'SD0606001', '2006-06-26', '2', 'D02', 'lim', 0, N'上海港通寄售样机', 'C002', 'RMB', 1)
go

insert into sl_OutDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, FromLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (24, 1, 1, 'WPA80-20', N'蜗轮蜗杆减速机', N'台', 2, 'WH02', '', '00', null, 1, 1)
go

-- Of the two boxes on consignment one came back and 上海港通 bought the other at its price
-- system less its coefficient. The settlement moves no stock: the box left with the issue.
insert into sl_OutRtn (RefNo, NoteNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, CustNo, Currency, ExRate) values (26, 'SB0606001', '2006-06-28', '2', 'D02', 'lim', 0, N'寄售样机退回一台', 'C002', 'RMB', 1)
go

insert into sl_OutRtnDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (26, 1, 1, 'WPA80-20', N'蜗轮蜗杆减速机', N'台', 1, 'WH02', '', '00', null, 1, 1)
go

insert into sl_ComSum (RefNo, NoteNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, CustNo, Currency, ExRate, Amount, SlAmt, TaxAmt, PaidAmt) values (27, 'CS0606001', '2006-06-30', '2', 'D02', 'lim', 0, N'寄售样机结算一台', 'C002', 'RMB', 1, 1710, 1461.54, 248.46, 0)
go

insert into sl_ComSumDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, InvQty, Price, FromLoc, BatchNo, LotNo, EffectDate, slsize, Factor, Slordno) values (27, 1, 1, 'WPA80-20', N'蜗轮蜗杆减速机', N'台', 1, 0, 1710, 'WH02', '', '00', null, 1, 1, '')
go
