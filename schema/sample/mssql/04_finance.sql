-- Currencies, ledger subjects, periods, banks, payment terms and open-item type names.

-- CalMode '*': an amount times ExRate is in yuan; '/': divided by it (ExRate is yen per yuan).
insert into AC_Currency (Currency, CyName, CalMode, ExRate, Factor, LoCurFlag) values ('RMB', N'人民币', '*', 1, 1, 1)
insert into AC_Currency (Currency, CyName, CalMode, ExRate, Factor, LoCurFlag) values ('USD', N'美元', '*', 7.98, 1, 0)
insert into AC_Currency (Currency, CyName, CalMode, ExRate, Factor, LoCurFlag) values ('EUR', N'欧元', '*', 10.15, 1, 0)
insert into AC_Currency (Currency, CyName, CalMode, ExRate, Factor, LoCurFlag) values ('JPY', N'日元', '/', 14.6, 1, 0)
go

insert into ac_subject (SubId, SubName, EndLevel, SpecType) values ('1001', N'现金', 1, 1)
insert into ac_subject (SubId, SubName, EndLevel, SpecType) values ('1002', N'银行存款', 0, 2)
insert into ac_subject (SubId, SubName, EndLevel, SpecType) values ('100201', N'银行存款-工商银行', 1, 2)
insert into ac_subject (SubId, SubName, EndLevel, SpecType) values ('100202', N'银行存款-中国银行美元户', 1, 2)
insert into ac_subject (SubId, SubName, EndLevel, SpecType) values ('1131', N'应收账款', 1, 0)
insert into ac_subject (SubId, SubName, EndLevel, SpecType) values ('1211', N'原材料', 1, 0)
insert into ac_subject (SubId, SubName, EndLevel, SpecType) values ('1243', N'库存商品', 1, 0)
insert into ac_subject (SubId, SubName, EndLevel, SpecType) values ('2121', N'应付账款', 1, 0)
insert into ac_subject (SubId, SubName, EndLevel, SpecType) values ('217101', N'应交税金-应交增值税', 1, 0)
insert into ac_subject (SubId, SubName, EndLevel, SpecType) values ('4101', N'生产成本', 1, 0)
insert into ac_subject (SubId, SubName, EndLevel, SpecType) values ('5101', N'主营业务收入', 1, 0)
insert into ac_subject (SubId, SubName, EndLevel, SpecType) values ('5401', N'主营业务成本', 1, 0)
go

-- 200512 is the opening period the books were set up in; January to March 2006 are closed
-- in every ledger, April onwards are open.
insert into Ac_AccYm (Period, AcctDate, AcctStatus, AcctIni, CustIni, storeIni, salaryIni, iniFlag) values (200512, '2005-12-31', 1, 1, 1, 1, 1, 1)
insert into Ac_AccYm (Period, AcctDate, AcctStatus, AcctIni, CustIni, storeIni, salaryIni, iniFlag) values (200601, '2006-01-31', 1, 1, 1, 1, 1, 0)
insert into Ac_AccYm (Period, AcctDate, AcctStatus, AcctIni, CustIni, storeIni, salaryIni, iniFlag) values (200602, '2006-02-28', 1, 1, 1, 1, 1, 0)
insert into Ac_AccYm (Period, AcctDate, AcctStatus, AcctIni, CustIni, storeIni, salaryIni, iniFlag) values (200603, '2006-03-31', 1, 1, 1, 1, 1, 0)
insert into Ac_AccYm (Period, AcctDate, AcctStatus, AcctIni, CustIni, storeIni, salaryIni, iniFlag) values (200604, '2006-04-30', 0, 0, 0, 0, 0, 0)
insert into Ac_AccYm (Period, AcctDate, AcctStatus, AcctIni, CustIni, storeIni, salaryIni, iniFlag) values (200605, '2006-05-31', 0, 0, 0, 0, 0, 0)
insert into Ac_AccYm (Period, AcctDate, AcctStatus, AcctIni, CustIni, storeIni, salaryIni, iniFlag) values (200606, '2006-06-30', 0, 0, 0, 0, 0, 0)
insert into Ac_AccYm (Period, AcctDate, AcctStatus, AcctIni, CustIni, storeIni, salaryIni, iniFlag) values (200607, '2006-07-31', 0, 0, 0, 0, 0, 0)
insert into Ac_AccYm (Period, AcctDate, AcctStatus, AcctIni, CustIni, storeIni, salaryIni, iniFlag) values (200608, '2006-08-31', 0, 0, 0, 0, 0, 0)
insert into Ac_AccYm (Period, AcctDate, AcctStatus, AcctIni, CustIni, storeIni, salaryIni, iniFlag) values (200609, '2006-09-30', 0, 0, 0, 0, 0, 0)
insert into Ac_AccYm (Period, AcctDate, AcctStatus, AcctIni, CustIni, storeIni, salaryIni, iniFlag) values (200610, '2006-10-31', 0, 0, 0, 0, 0, 0)
insert into Ac_AccYm (Period, AcctDate, AcctStatus, AcctIni, CustIni, storeIni, salaryIni, iniFlag) values (200611, '2006-11-30', 0, 0, 0, 0, 0, 0)
insert into Ac_AccYm (Period, AcctDate, AcctStatus, AcctIni, CustIni, storeIni, salaryIni, iniFlag) values (200612, '2006-12-31', 0, 0, 0, 0, 0, 0)
go

-- B04 still points at the summary subject 1002: its vouchers are refused until mended.
insert into Rp_Bank (BankNo, BankName, Account, Currency, SubId, balance, CashType) values ('B01', N'现金', '', 'RMB', '1001', 13600, 1)
insert into Rp_Bank (BankNo, BankName, Account, Currency, SubId, balance, CashType) values ('B02', N'工商银行常州武进支行', '1105020109000123456', 'RMB', '100201', 490000, 0)
insert into Rp_Bank (BankNo, BankName, Account, Currency, SubId, balance, CashType) values ('B03', N'中国银行常州分行美元户', '4701823965091001', 'USD', '100202', 12000, 0)
insert into Rp_Bank (BankNo, BankName, Account, Currency, SubId, balance, CashType) values ('B04', N'农业银行湖塘分理处', '10609801040012345', 'RMB', '1002', 0, 0)
go

-- Kinds of terms: 0 days after the note date, 1 monthly statement then days,
-- 2 monthly statement, days, then the next payment day.
insert into Bs_PayType (PayType, Descrip) values ('0', N'按单据日期')
insert into Bs_PayType (PayType, Descrip) values ('1', N'月结')
insert into Bs_PayType (PayType, Descrip) values ('2', N'月结定日付款')
go

insert into bs_Paycode (PayCode, PayType, PayDay, Descrip) values (1, '0', 0, N'现款现货')
insert into bs_Paycode (PayCode, PayType, PayDay, Descrip) values (2, '0', 30, N'票到30天')
insert into bs_Paycode (PayCode, PayType, PayDay, Descrip) values (3, '1', 30, N'月结30天')
insert into bs_Paycode (PayCode, PayType, PayDay, Descrip) values (4, '2', 60, N'月结60天定日付款')
go

insert into Rp_TypeCodeInfo (Type, Code, Descript) values ('RE', 0, N'期初应收')
insert into Rp_TypeCodeInfo (Type, Code, Descript) values ('RE', 1, N'出货单')
insert into Rp_TypeCodeInfo (Type, Code, Descript) values ('RE', 2, N'退货单')
insert into Rp_TypeCodeInfo (Type, Code, Descript) values ('RE', 3, N'收款单')
insert into Rp_TypeCodeInfo (Type, Code, Descript) values ('RE', 4, N'折让单')
insert into Rp_TypeCodeInfo (Type, Code, Descript) values ('RE', 9, N'委托结算单')
insert into Rp_TypeCodeInfo (Type, Code, Descript) values ('RE', 100, N'对帐结转')
insert into Rp_TypeCodeInfo (Type, Code, Descript) values ('PA', 0, N'期初应付')
insert into Rp_TypeCodeInfo (Type, Code, Descript) values ('PA', 1, N'收货单')
insert into Rp_TypeCodeInfo (Type, Code, Descript) values ('PA', 2, N'退货单')
insert into Rp_TypeCodeInfo (Type, Code, Descript) values ('PA', 3, N'付款单')
insert into Rp_TypeCodeInfo (Type, Code, Descript) values ('PA', 4, N'折让单')
insert into Rp_TypeCodeInfo (Type, Code, Descript) values ('PA', 6, N'外协单')
insert into Rp_TypeCodeInfo (Type, Code, Descript) values ('PA', 9, N'受托结算单')
insert into Rp_TypeCodeInfo (Type, Code, Descript) values ('PA', 100, N'对帐结转')
go

insert into Rp_RinvNoteTypeName (NoteType, NoteTypeName) values (1, N'出货单')
insert into Rp_RinvNoteTypeName (NoteType, NoteTypeName) values (2, N'退货单')
insert into Rp_RinvNoteTypeName (NoteType, NoteTypeName) values (4, N'折让单')
insert into Rp_RinvNoteTypeName (NoteType, NoteTypeName) values (9, N'委托结算单')
go

insert into Rp_PinvNoteTypeName (NoteType, NoteTypeName) values (1, N'收货单')
insert into Rp_PinvNoteTypeName (NoteType, NoteTypeName) values (2, N'退货单')
insert into Rp_PinvNoteTypeName (NoteType, NoteTypeName) values (4, N'折让单')
insert into Rp_PinvNoteTypeName (NoteType, NoteTypeName) values (6, N'外协单')
insert into Rp_PinvNoteTypeName (NoteType, NoteTypeName) values (9, N'受托结算单')
go
