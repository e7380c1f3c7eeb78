-- Open items, ledger entries, a customer receipt, a vendor payment, a bank transfer and
-- the vouchers made from the notes. HadPayAmt of an open item and PaidAmt of its note
-- agree with the receipts and payments entered against it.

insert into Rp_RAcct (CustNo, Type, NoteRefNo, NoteNo, bInv, RefDate, Amount, HadPayAmt, Currency) values ('C003', 0, 0, 'QC-C003', 0, '2005-12-31', 8600, 0, 'RMB')
insert into Rp_RAcct (CustNo, Type, NoteRefNo, NoteNo, bInv, RefDate, Amount, HadPayAmt, Currency) values ('C001', 1, 15, 'SH0605001', 1, '2006-05-25', 30600, 10000, 'RMB')
go

insert into Rp_PAcct (VendNo, Type, NoteRefNo, NoteNo, bInv, RefDate, Amount, HadPayAmt, Currency) values ('V001', 1, 4, 'RC0604001', 1, '2006-04-10', 24800, 15000, 'RMB')
insert into Rp_PAcct (VendNo, Type, NoteRefNo, NoteNo, bInv, RefDate, Amount, HadPayAmt, Currency) values ('V003', 1, 6, 'RC0604002', 0, '2006-04-18', 8300, 0, 'RMB')
go

-- Type 100 closes the statements at the end of the first quarter.
insert into rp_racctRec (CustNo, Type, NoteRefNo, NoteNo, RefDate, Amount) values ('C003', 0, 0, 'QC-C003', '2005-12-31', 8600)
insert into rp_racctRec (CustNo, Type, NoteRefNo, NoteNo, RefDate, Amount) values ('C003', 100, 0, '', '2006-03-31', 0)
insert into rp_racctRec (CustNo, Type, NoteRefNo, NoteNo, RefDate, Amount) values ('C001', 1, 15, 'SH0605001', '2006-05-25', 30600)
insert into rp_racctRec (CustNo, Type, NoteRefNo, NoteNo, RefDate, Amount) values ('C001', 3, 16, 'RV0606001', '2006-06-10', -10000)
go

insert into rp_PacctRec (VendNo, Type, NoteRefNo, NoteNo, RefDate, Amount) values ('V001', 1, 4, 'RC0604001', '2006-04-10', 24800)
insert into rp_PacctRec (VendNo, Type, NoteRefNo, NoteNo, RefDate, Amount) values ('V003', 1, 6, 'RC0604002', '2006-04-18', 8300)
insert into rp_PacctRec (VendNo, Type, NoteRefNo, NoteNo, RefDate, Amount) values ('V001', 3, 14, 'PY0605001', '2006-05-22', -15000)
go

insert into rp_PPay (RefNo, NoteNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, VendNo, BankNo, Currency, ExRate, Amount, PrePayAmt, ActPayAmt) values (14, 'PY0605001', '2006-05-22', '2', 'D06', 'zhaol', 0, N'付RC0604001部分货款', 'V001', 'B02', 'RMB', 1, 15000, 0, 15000)
go

insert into rp_rpay (RefNo, NoteNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, CustNo, BankNo, Currency, ExRate, Amount, PrePayAmt, ActPayAmt) values (16, 'RV0606001', '2006-06-10', '2', 'D06', 'zhaol', 0, N'收SH0605001部分货款', 'C001', 'B02', 'RMB', 1, 10000, 0, 10000)
go

insert into Rp_bankTrans (RefNo, NoteNo, RefDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, Frombank, ToBank, Currency, ExRate, Amount) values (17, 'BT0606001', '2006-06-12', '2', 'D06', 'zhaol', 0, N'提取备用金', 'B02', 'B01', 'RMB', 1, 5000)
go

-- Status '1' and '2' are before posting; '3' is posted.
insert into ac_vouchHea (RefNo, VouchNo, BillDate, flag, Remark) values (1, N'记-0001', '2006-01-05', '3', N'其他入库单 OI0601001')
insert into ac_vouchHea (RefNo, VouchNo, BillDate, flag, Remark) values (2, N'记-0031', '2006-03-31', '3', N'盘点单 SC0603001')
insert into ac_vouchHea (RefNo, VouchNo, BillDate, flag, Remark) values (3, N'记-0008', '2006-04-10', '1', N'采购收货单 RC0604001')
insert into ac_vouchHea (RefNo, VouchNo, BillDate, flag, Remark) values (4, N'记-0026', '2006-05-25', '3', N'销售出货单 SH0605001')
go

-- Discounts: to the customer for the damaged box, from the foundry for late castings.
insert into Rp_RDisc (RefNo, NoteNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, CustNo, Currency, ExRate, Amount) values (22, 'RD0606001', '2006-06-22', '2', 'D06', 'zhaol', 0, N'碰损补偿折让', 'C001', 'RMB', 1, 300)
go

insert into rp_RDiscDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, InvQty, Price, Amount) values (22, 1, 1, 'WPA80-20', N'蜗轮蜗杆减速机', N'台', 1, 0, 300, 300)
go

insert into Rp_PDisc (RefNo, NoteNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, VendNo, Currency, ExRate, Amount) values (23, 'PD0606001', '2006-06-23', '2', 'D06', 'zhaol', 0, N'铸件延期交货折让', 'V001', 'RMB', 1, 500)
go

insert into rp_PDiscDtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, InvQty, Price, Amount) values (23, 1, 1, 'CS-HT200-80', N'箱体铸件', N'件', 1, 0, 500, 500)
go

insert into Rp_RAcct (CustNo, Type, NoteRefNo, NoteNo, bInv, RefDate, Amount, HadPayAmt, Currency) values ('C001', 2, 19, 'SR0606001', 0, '2006-06-16', -1700, 0, 'RMB')
insert into Rp_RAcct (CustNo, Type, NoteRefNo, NoteNo, bInv, RefDate, Amount, HadPayAmt, Currency) values ('C001', 4, 22, 'RD0606001', 0, '2006-06-22', -300, 0, 'RMB')
insert into rp_racctRec (CustNo, Type, NoteRefNo, NoteNo, RefDate, Amount) values ('C001', 2, 19, 'SR0606001', '2006-06-16', -1700)
insert into rp_racctRec (CustNo, Type, NoteRefNo, NoteNo, RefDate, Amount) values ('C001', 4, 22, 'RD0606001', '2006-06-22', -300)
go

insert into Rp_PAcct (VendNo, Type, NoteRefNo, NoteNo, bInv, RefDate, Amount, HadPayAmt, Currency) values ('V003', 2, 20, 'PR0606001', 0, '2006-06-19', -24, 0, 'RMB')
insert into Rp_PAcct (VendNo, Type, NoteRefNo, NoteNo, bInv, RefDate, Amount, HadPayAmt, Currency) values ('V001', 4, 23, 'PD0606001', 0, '2006-06-23', -500, 0, 'RMB')
insert into rp_PacctRec (VendNo, Type, NoteRefNo, NoteNo, RefDate, Amount) values ('V003', 2, 20, 'PR0606001', '2006-06-19', -24)
insert into rp_PacctRec (VendNo, Type, NoteRefNo, NoteNo, RefDate, Amount) values ('V001', 4, 23, 'PD0606001', '2006-06-23', -500)
go

insert into Rp_RAcct (CustNo, Type, NoteRefNo, NoteNo, bInv, RefDate, Amount, HadPayAmt, Currency) values ('C002', 9, 27, 'CS0606001', 0, '2006-06-30', 1710, 0, 'RMB')
insert into rp_racctRec (CustNo, Type, NoteRefNo, NoteNo, RefDate, Amount) values ('C002', 9, 27, 'CS0606001', '2006-06-30', 1710)
insert into Rp_PAcct (VendNo, Type, NoteRefNo, NoteNo, bInv, RefDate, Amount, HadPayAmt, Currency) values ('V001', 9, 28, 'WS0606001', 0, '2006-06-30', 160, 0, 'RMB')
insert into rp_PacctRec (VendNo, Type, NoteRefNo, NoteNo, RefDate, Amount) values ('V001', 9, 28, 'WS0606001', '2006-06-30', 160)
go
