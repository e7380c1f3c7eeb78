-- Sample company: 常州武南传动机械有限公司, a gear-box maker in 江苏, its 2006 books.
-- System switches, numbers and texts, the one-row system tables and the coded value lists.

insert into bs_paralistB (ParFieldName, paraValue) values ('BatchControl', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('LotControl', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('SerialControl', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('EffectDateControl', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('bLoosenSerialControl', 0)
insert into bs_paralistB (ParFieldName, paraValue) values ('PlanType', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('PoType', 0)
insert into bs_paralistB (ParFieldName, paraValue) values ('PoOneByOne', 0)
insert into bs_paralistB (ParFieldName, paraValue) values ('bCheckArriveDate', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('bCheckRPayArriveDate', 0)
insert into bs_paralistB (ParFieldName, paraValue) values ('CheckRpAccount', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('AllowInvDiffTaxRate', 0)
insert into bs_paralistB (ParFieldName, paraValue) values ('bCheckPPayArriveDate', 0)
insert into bs_paralistB (ParFieldName, paraValue) values ('UnitFactor', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('QtyPerFactor', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('CurFactor', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('FormByUser', 0)
insert into bs_paralistB (ParFieldName, paraValue) values ('FlowCheck', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('AllowDiffDepart', 0)
insert into bs_paralistB (ParFieldName, paraValue) values ('PayByInv', 0)
insert into bs_paralistB (ParFieldName, paraValue) values ('SaveSucMsg', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('bUpdateStkInBill', 0)
insert into bs_paralistB (ParFieldName, paraValue) values ('NoteVersion', 0)
insert into bs_paralistB (ParFieldName, paraValue) values ('VersionControl', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('bFqc', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('AutoFqcCode', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('JobOverProdQty', 0)
insert into bs_paralistB (ParFieldName, paraValue) values ('SaleByTax', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('BuyByTax', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('bSysPriceIsTaxPrice', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('bAutoRout', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('bAcctModSimu', 0)
insert into bs_paralistB (ParFieldName, paraValue) values ('bTaxModSimu', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('bCustPoNo', 0)
insert into bs_paralistB (ParFieldName, paraValue) values ('bAcctModUsed', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('bTaxModUsed', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('bRecvQtyEqDueQty', 0)
insert into bs_paralistB (ParFieldName, paraValue) values ('bShipQtyEqDueQty', 0)
insert into bs_paralistB (ParFieldName, paraValue) values ('bSlRtnNeedAdd', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('bPoRtnNeedAdd', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('FQCNgToPart', 0)
insert into bs_paralistB (ParFieldName, paraValue) values ('bNullWipRepRtnToStk', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('DisCostByWorkTime', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('PoRecvDelayParts', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('PoRecvPreShipParts', 0)
insert into bs_paralistB (ParFieldName, paraValue) values ('PoDefaultIqc', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('AutoIqcCode', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('ConfirmDateBeforeEnter', 0)
insert into bs_paralistB (ParFieldName, paraValue) values ('AllowAdjustNote', 0)
insert into bs_paralistB (ParFieldName, paraValue) values ('RpAcctIni', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('StkDiffClose', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('bGenAcctNOte', 1)
insert into bs_paralistB (ParFieldName, paraValue) values ('NoAllowBatchInStk', 1)
-- The library asks for this switch with a blank at the end of its name; the row is
-- stored the way it is asked for.
insert into bs_paralistB (ParFieldName, paraValue) values ('bNoAllowInStkAtInnerStk ', 0)
go

insert into bs_paralistI (ParFieldName, ParaValue) values ('QtyDigital', 2)
insert into bs_paralistI (ParFieldName, ParaValue) values ('PriceDigital', 4)
insert into bs_paralistI (ParFieldName, ParaValue) values ('AmtDigital', 2)
insert into bs_paralistI (ParFieldName, ParaValue) values ('QtyPerDigital', 4)
insert into bs_paralistI (ParFieldName, ParaValue) values ('CostDigital', 4)
insert into bs_paralistI (ParFieldName, ParaValue) values ('VoucherDigital', 2)
insert into bs_paralistI (ParFieldName, ParaValue) values ('DefaultTaxRate', 17)
insert into bs_paralistI (ParFieldName, ParaValue) values ('SalePriceType', 1)
insert into bs_paralistI (ParFieldName, ParaValue) values ('RecSumDay', 25)
insert into bs_paralistI (ParFieldName, ParaValue) values ('RecPayDay', 10)
go

insert into bs_paralistS (ParFieldName, paraValue) values ('DefSlShipStk', 'WH02')
insert into bs_paralistS (ParFieldName, paraValue) values ('DefSlRtnStk', 'WH02')
insert into bs_paralistS (ParFieldName, paraValue) values ('DefPoRecvStk', 'WH01')
insert into bs_paralistS (ParFieldName, paraValue) values ('DefPoRtnStk', 'WH01')
insert into bs_paralistS (ParFieldName, paraValue) values ('DefIssStk', 'WH01')
insert into bs_paralistS (ParFieldName, paraValue) values ('DefFinStk', 'WH02')
insert into bs_paralistS (ParFieldName, paraValue) values ('DefWipRtnStk', 'WH01')
go

insert into bs_sysPar (CostPerHour) values (18.5)
go

insert into Bs_SysSet (SysNoteId, ProgId) values (126, 'WN-JS-2006-0017')
go

-- The last RefNo handed out: the notes of the sample are numbered 1 to 28.
insert into BillCode (BillId, SeqNo) values (0, 28)
go

insert into s_ModInsted (AcctModInsted, TaxModInsted, PayModInsted, ProdModInsted) values (1, 1, 1, 1)
go

-- List 2: operations of the log; list 3: data scope of a user; list 13: chart styles.
insert into Bs_QueryList (lang, ListType, FieldValue, Description) values (0, 2, '1', N'新增')
insert into Bs_QueryList (lang, ListType, FieldValue, Description) values (0, 2, '2', N'修改')
insert into Bs_QueryList (lang, ListType, FieldValue, Description) values (0, 2, '3', N'删除')
insert into Bs_QueryList (lang, ListType, FieldValue, Description) values (0, 2, '4', N'审核')
insert into Bs_QueryList (lang, ListType, FieldValue, Description) values (0, 2, '5', N'反审核')
insert into Bs_QueryList (lang, ListType, FieldValue, Description) values (0, 2, '6', N'打印')
insert into Bs_QueryList (lang, ListType, FieldValue, Description) values (0, 3, '0', N'全部单据')
insert into Bs_QueryList (lang, ListType, FieldValue, Description) values (0, 3, '1', N'本部门单据')
insert into Bs_QueryList (lang, ListType, FieldValue, Description) values (0, 3, '2', N'本人制作的单据')
insert into Bs_QueryList (lang, ListType, FieldValue, Description) values (0, 13, '0', N'柱形图')
insert into Bs_QueryList (lang, ListType, FieldValue, Description) values (0, 13, '1', N'折线图')
insert into Bs_QueryList (lang, ListType, FieldValue, Description) values (0, 13, '2', N'饼图')
go

-- Return codes of the server procedures: document numbering (1, 2) and note backup (11 to 15).
insert into s_SpErrorcode (ErrorCode, Description) values (1, N'该单据类型没有设置编号规则')
insert into s_SpErrorcode (ErrorCode, Description) values (2, N'单据号码超过20位')
insert into s_SpErrorcode (ErrorCode, Description) values (11, N'没有该数据表')
insert into s_SpErrorcode (ErrorCode, Description) values (12, N'该数据表不是单据表')
insert into s_SpErrorcode (ErrorCode, Description) values (13, N'备份表尚未建立')
insert into s_SpErrorcode (ErrorCode, Description) values (14, N'单据备份失败')
insert into s_SpErrorcode (ErrorCode, Description) values (15, N'该单据已经备份')
go
