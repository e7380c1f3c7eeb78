-- Bill types: settings, numbering rules and counters, approval levels and approvers,
-- stock settings. Counters stand at the last number the sample's notes use.

insert into Bs_BillSet (BillId, BillName, CheckLevel, OpenMode, AllowNegQty, CheckNoteNo, NeedOpId, VerBackUp) values (1010, N'销售订单', 1, 1, 0, 1, 0, 1)
insert into Bs_BillSet (BillId, BillName, CheckLevel, OpenMode, AllowNegQty, CheckNoteNo, NeedOpId, VerBackUp) values (1020, N'销售出货单', 2, 1, 0, 1, 1, 1)
insert into Bs_BillSet (BillId, BillName, CheckLevel, OpenMode, AllowNegQty, CheckNoteNo, NeedOpId, VerBackUp) values (1030, N'销售退货单', 0, 1, 0, 1, 0, 0)
insert into Bs_BillSet (BillId, BillName, CheckLevel, OpenMode, AllowNegQty, CheckNoteNo, NeedOpId, VerBackUp) values (2010, N'采购订单', 1, 1, 0, 1, 0, 1)
insert into Bs_BillSet (BillId, BillName, CheckLevel, OpenMode, AllowNegQty, CheckNoteNo, NeedOpId, VerBackUp) values (2020, N'采购收货单', 1, 1, 0, 1, 0, 0)
insert into Bs_BillSet (BillId, BillName, CheckLevel, OpenMode, AllowNegQty, CheckNoteNo, NeedOpId, VerBackUp) values (3010, N'其他入库单', 0, 0, 0, 0, 0, 0)
insert into Bs_BillSet (BillId, BillName, CheckLevel, OpenMode, AllowNegQty, CheckNoteNo, NeedOpId, VerBackUp) values (3130, N'仓库调拨单', 0, 0, 0, 0, 0, 0)
insert into Bs_BillSet (BillId, BillName, CheckLevel, OpenMode, AllowNegQty, CheckNoteNo, NeedOpId, VerBackUp) values (3400, N'盘点单', 0, 0, 0, 0, 0, 0)
insert into Bs_BillSet (BillId, BillName, CheckLevel, OpenMode, AllowNegQty, CheckNoteNo, NeedOpId, VerBackUp) values (5020, N'生产工单', 1, 0, 0, 1, 0, 1)
insert into Bs_BillSet (BillId, BillName, CheckLevel, OpenMode, AllowNegQty, CheckNoteNo, NeedOpId, VerBackUp) values (6040, N'生产领料单', 0, 0, 1, 0, 0, 0)
insert into Bs_BillSet (BillId, BillName, CheckLevel, OpenMode, AllowNegQty, CheckNoteNo, NeedOpId, VerBackUp) values (6050, N'生产退料单', 0, 0, 0, 0, 0, 0)
insert into Bs_BillSet (BillId, BillName, CheckLevel, OpenMode, AllowNegQty, CheckNoteNo, NeedOpId, VerBackUp) values (6060, N'生产补料单', 0, 0, 1, 0, 0, 0)
insert into Bs_BillSet (BillId, BillName, CheckLevel, OpenMode, AllowNegQty, CheckNoteNo, NeedOpId, VerBackUp) values (6080, N'完工入库单', 0, 0, 0, 0, 0, 0)
insert into Bs_BillSet (BillId, BillName, CheckLevel, OpenMode, AllowNegQty, CheckNoteNo, NeedOpId, VerBackUp) values (7030, N'收款单', 0, 0, 0, 1, 0, 0)
insert into Bs_BillSet (BillId, BillName, CheckLevel, OpenMode, AllowNegQty, CheckNoteNo, NeedOpId, VerBackUp) values (7230, N'付款单', 0, 0, 0, 1, 0, 0)
insert into Bs_BillSet (BillId, BillName, CheckLevel, OpenMode, AllowNegQty, CheckNoteNo, NeedOpId, VerBackUp) values (7330, N'银行转帐单', 0, 0, 0, 1, 0, 0)
go

-- Prefix, two-digit year and month, three digits restarting every month: SO0605001.
insert into bs_billsetItem (BillId, Description, EncodeType, Prefix, Codeformat, SeqWidth, CurSeq, CurPeriod) values (1010, N'销售订单', 'M', 'SO', 'yymm', 3, 1, '200605')
insert into bs_billsetItem (BillId, Description, EncodeType, Prefix, Codeformat, SeqWidth, CurSeq, CurPeriod) values (1020, N'销售出货单', 'M', 'SH', 'yymm', 3, 1, '200605')
insert into bs_billsetItem (BillId, Description, EncodeType, Prefix, Codeformat, SeqWidth, CurSeq, CurPeriod) values (1030, N'销售退货单', 'M', 'SR', 'yymm', 3, 0, '')
insert into bs_billsetItem (BillId, Description, EncodeType, Prefix, Codeformat, SeqWidth, CurSeq, CurPeriod) values (2010, N'采购订单', 'M', 'PO', 'yymm', 3, 1, '200606')
insert into bs_billsetItem (BillId, Description, EncodeType, Prefix, Codeformat, SeqWidth, CurSeq, CurPeriod) values (2020, N'采购收货单', 'M', 'RC', 'yymm', 3, 2, '200604')
insert into bs_billsetItem (BillId, Description, EncodeType, Prefix, Codeformat, SeqWidth, CurSeq, CurPeriod) values (3010, N'其他入库单', 'M', 'OI', 'yymm', 3, 1, '200601')
insert into bs_billsetItem (BillId, Description, EncodeType, Prefix, Codeformat, SeqWidth, CurSeq, CurPeriod) values (3130, N'仓库调拨单', 'M', 'TR', 'yymm', 3, 1, '200605')
insert into bs_billsetItem (BillId, Description, EncodeType, Prefix, Codeformat, SeqWidth, CurSeq, CurPeriod) values (3400, N'盘点单', 'M', 'SC', 'yymm', 3, 1, '200603')
insert into bs_billsetItem (BillId, Description, EncodeType, Prefix, Codeformat, SeqWidth, CurSeq, CurPeriod) values (5020, N'生产工单', 'M', 'MO', 'yymm', 3, 1, '200605')
insert into bs_billsetItem (BillId, Description, EncodeType, Prefix, Codeformat, SeqWidth, CurSeq, CurPeriod) values (6040, N'生产领料单', 'M', 'MI', 'yymm', 3, 1, '200605')
insert into bs_billsetItem (BillId, Description, EncodeType, Prefix, Codeformat, SeqWidth, CurSeq, CurPeriod) values (6050, N'生产退料单', 'M', 'MR', 'yymm', 3, 1, '200605')
insert into bs_billsetItem (BillId, Description, EncodeType, Prefix, Codeformat, SeqWidth, CurSeq, CurPeriod) values (6060, N'生产补料单', 'M', 'MA', 'yymm', 3, 1, '200605')
insert into bs_billsetItem (BillId, Description, EncodeType, Prefix, Codeformat, SeqWidth, CurSeq, CurPeriod) values (6080, N'完工入库单', 'M', 'FR', 'yymm', 3, 1, '200605')
insert into bs_billsetItem (BillId, Description, EncodeType, Prefix, Codeformat, SeqWidth, CurSeq, CurPeriod) values (7030, N'收款单', 'M', 'RV', 'yymm', 3, 1, '200606')
insert into bs_billsetItem (BillId, Description, EncodeType, Prefix, Codeformat, SeqWidth, CurSeq, CurPeriod) values (7230, N'付款单', 'M', 'PY', 'yymm', 3, 1, '200605')
insert into bs_billsetItem (BillId, Description, EncodeType, Prefix, Codeformat, SeqWidth, CurSeq, CurPeriod) values (7330, N'银行转帐单', 'M', 'BT', 'yymm', 3, 1, '200606')
go

insert into bs_billcheck (BillId, CheckLevel, CheckName) values (1010, 1, N'销售主管审核')
insert into bs_billcheck (BillId, CheckLevel, CheckName) values (1020, 1, N'销售主管审核')
insert into bs_billcheck (BillId, CheckLevel, CheckName) values (1020, 2, N'总经理审批')
insert into bs_billcheck (BillId, CheckLevel, CheckName) values (2010, 1, N'总经理审批')
insert into bs_billcheck (BillId, CheckLevel, CheckName) values (2020, 1, N'仓库主管确认')
insert into bs_billcheck (BillId, CheckLevel, CheckName) values (5020, 1, N'生产经理审核')
go

insert into Bs_BillCheckUser (BillId, CheckUser, CheckLevel) values (1010, 'lim', 1)
insert into Bs_BillCheckUser (BillId, CheckUser, CheckLevel) values (1020, 'lim', 1)
insert into Bs_BillCheckUser (BillId, CheckUser, CheckLevel) values (1020, 'wangjg', 2)
insert into Bs_BillCheckUser (BillId, CheckUser, CheckLevel) values (2010, 'wangjg', 1)
insert into Bs_BillCheckUser (BillId, CheckUser, CheckLevel) values (2020, 'chenj', 1)
insert into Bs_BillCheckUser (BillId, CheckUser, CheckLevel) values (5020, 'liuy', 1)
go

insert into St_StkBillSet (BillId, AllowSelDtlStk, SerialCheck) values (1020, 1, 1)
insert into St_StkBillSet (BillId, AllowSelDtlStk, SerialCheck) values (1030, 1, 1)
insert into St_StkBillSet (BillId, AllowSelDtlStk, SerialCheck) values (2020, 0, 0)
insert into St_StkBillSet (BillId, AllowSelDtlStk, SerialCheck) values (3010, 0, 0)
insert into St_StkBillSet (BillId, AllowSelDtlStk, SerialCheck) values (3130, 1, 1)
insert into St_StkBillSet (BillId, AllowSelDtlStk, SerialCheck) values (3400, 1, 0)
insert into St_StkBillSet (BillId, AllowSelDtlStk, SerialCheck) values (6040, 1, 0)
insert into St_StkBillSet (BillId, AllowSelDtlStk, SerialCheck) values (6050, 1, 0)
insert into St_StkBillSet (BillId, AllowSelDtlStk, SerialCheck) values (6060, 1, 0)
insert into St_StkBillSet (BillId, AllowSelDtlStk, SerialCheck) values (6080, 0, 1)
go
