-- Tax invoices issued for the shipment and received for the castings, and the tax
-- code lists.

insert into T_RInvHea (RefNo, NoteNo, InvDate, CustNo, SlAmt, TaxAmt) values (1, '03245671', '2006-05-28', 'C001', 26153.85, 4446.15)
go

insert into T_pInvHea (RefNo, NoteNo, InvSeqNo, InvDate, TaxDepartName, SlAmt, TaxAmt, Type, nType, BelongMonth) values (1, '00871234', '0001', '2006-04-15', N'常州市武进区国家税务局', 21196.58, 3603.42, 1, 1, 200604)
go

insert into ht_taxCode (SysTaxCode, TaxCode, TaxName, TaxRate, TaxRate2) values ('0101', '0101', N'增值税(17%)', 17, 17)
insert into ht_taxCode (SysTaxCode, TaxCode, TaxName, TaxRate, TaxRate2) values ('0102', '0102', N'增值税(13%)', 13, 13)
insert into ht_taxCode (SysTaxCode, TaxCode, TaxName, TaxRate, TaxRate2) values ('0103', '0103', N'增值税(小规模6%)', 6, 6)
go

insert into T_useTaxCode (TaxCode) values ('0101')
go

insert into T_CompType (ID, Name) values ('110', N'国有企业')
insert into T_CompType (ID, Name) values ('159', N'其他有限责任公司')
insert into T_CompType (ID, Name) values ('173', N'私营有限责任公司')
insert into T_CompType (ID, Name) values ('210', N'合资经营企业(港或澳、台资)')
go

insert into T_NInvNo (FpDm, Fpmc) values ('3200053140', N'江苏增值税专用发票')
insert into T_NInvNo (FpDm, Fpmc) values ('132040620101', N'江苏省国家税务局通用机打发票')
go

insert into HY_code (CodeNo, CodeName) values ('C35', N'通用设备制造业')
insert into HY_code (CodeNo, CodeName) values ('C36', N'专用设备制造业')
insert into HY_code (CodeNo, CodeName) values ('F63', N'批发业')
go

insert into CPYtype (CodeNo, CodeName) values ('01', N'汽油')
insert into CPYtype (CodeNo, CodeName) values ('02', N'柴油')
insert into CPYtype (CodeNo, CodeName) values ('03', N'润滑油')
go

insert into AdjustReason (CodeNo, CodeName) values ('01', N'申报数据有误更正')
insert into AdjustReason (CodeNo, CodeName) values ('02', N'补充申报')
go

insert into CustomCode (PortCode, PortName) values ('2200', N'上海海关')
insert into CustomCode (PortCode, PortName) values ('2300', N'南京海关')
insert into CustomCode (PortCode, PortName) values ('2307', N'常州海关')
go

insert into TaxDepart (TaxDepartCode, TaxDepartName) values ('13204120000', N'常州市武进区国家税务局')
insert into TaxDepart (TaxDepartCode, TaxDepartName) values ('13204000000', N'常州市国家税务局')
go
