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
