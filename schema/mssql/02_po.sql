-- Purchasing: orders, receipts, returns, stock-ins, subcontract settlements.
-- Run with sqlcmd against the suite database; every statement ends its batch.

create table Po_Order (
  RefNo int not null,
  PoNo varchar(20) null,
  BillDate datetime null,
  flag varchar(1) null default '',
  DepartNo varchar(20) null,
  PreparedBy varchar(20) null,
  AcctVouchNo int null default 0,
  Remark nvarchar(200) null,
  VendNo varchar(20) null,
  Currency varchar(10) null,
  ExRate float null,
  Amount money null default 0,
  SlAmt money null default 0,
  TaxAmt money null default 0,
  PaidAmt money null default 0,
  Buyer varchar(20) null,
  FinFlag bit null default 0,
  addFinFlag bit null default 0,
  constraint PK_Po_Order primary key (RefNo)
)
go
create index IX_Po_Order_PoNo on Po_Order (PoNo)
go

create table Po_OrderDtl (
  RefNo int not null,
  LineId int not null,
  SeqNo int null,
  PartNo varchar(30) null,
  PartName nvarchar(100) null,
  Unit varchar(10) null,
  Version varchar(10) null,
  OrderQty decimal(18,4) null default 0,
  RecvQty decimal(18,4) null default 0,
  RtnQty decimal(18,4) null default 0,
  RtnRecvQty decimal(18,4) null default 0,
  Price decimal(18,6) null,
  shipDate datetime null,
  constraint PK_Po_OrderDtl primary key (RefNo, LineId)
)
go

create table Po_Recv (
  RefNo int not null,
  RecvNo varchar(20) null,
  BillDate datetime null,
  flag varchar(1) null default '',
  DepartNo varchar(20) null,
  PreparedBy varchar(20) null,
  AcctVouchNo int null default 0,
  Remark nvarchar(200) null,
  VendNo varchar(20) null,
  Currency varchar(10) null,
  ExRate float null,
  Amount money null default 0,
  SlAmt money null default 0,
  TaxAmt money null default 0,
  PaidAmt money null default 0,
  Buyer varchar(20) null,
  IqcFinFlag bit null default 0,
  constraint PK_Po_Recv primary key (RefNo)
)
go
create index IX_Po_Recv_RecvNo on Po_Recv (RecvNo)
go

create table Po_RecvDtl (
  RefNo int not null,
  LineId int not null,
  SeqNo int null,
  PartNo varchar(30) null,
  PartName nvarchar(100) null,
  Unit varchar(10) null,
  Version varchar(10) null,
  Qty decimal(18,4) null default 0,
  InvQty decimal(18,4) null default 0,
  QcQty decimal(18,4) null default 0,
  IqcNo varchar(20) null,
  Price decimal(18,6) null,
  ToLoc varchar(20) null,
  BatchNo varchar(30) null,
  LotNo varchar(30) null,
  EffectDate datetime null,
  slsize float null,
  Factor float null,
  PoNo varchar(20) null,
  constraint PK_Po_RecvDtl primary key (RefNo, LineId)
)
go

create table Po_Rtn (
  RefNo int not null,
  NoteNo varchar(20) null,
  BillDate datetime null,
  flag varchar(1) null default '',
  DepartNo varchar(20) null,
  PreparedBy varchar(20) null,
  AcctVouchNo int null default 0,
  Remark nvarchar(200) null,
  VendNo varchar(20) null,
  Currency varchar(10) null,
  ExRate float null,
  Amount money null default 0,
  SlAmt money null default 0,
  TaxAmt money null default 0,
  PaidAmt money null default 0,
  constraint PK_Po_Rtn primary key (RefNo)
)
go
create index IX_Po_Rtn_NoteNo on Po_Rtn (NoteNo)
go

create table Po_RtnDtl (
  RefNo int not null,
  LineId int not null,
  SeqNo int null,
  PartNo varchar(30) null,
  PartName nvarchar(100) null,
  Unit varchar(10) null,
  Qty decimal(18,4) null default 0,
  InvQty decimal(18,4) null default 0,
  Price decimal(18,6) null,
  FromLoc varchar(20) null,
  BatchNo varchar(30) null,
  LotNo varchar(30) null,
  EffectDate datetime null,
  slsize float null,
  Factor float null,
  PoNo varchar(20) null,
  constraint PK_Po_RtnDtl primary key (RefNo, LineId)
)
go

create table Po_StkIn (
  RefNo int not null,
  ShipNo varchar(20) null,
  BillDate datetime null,
  flag varchar(1) null default '',
  DepartNo varchar(20) null,
  PreparedBy varchar(20) null,
  AcctVouchNo int null default 0,
  Remark nvarchar(200) null,
  VendNo varchar(20) null,
  Buyer varchar(20) null,
  Dealer varchar(20) null,
  Currency varchar(10) null,
  ExRate float null,
  SlAmt money null default 0,
  IqcFinFlag bit null default 0,
  constraint PK_Po_StkIn primary key (RefNo)
)
go
create index IX_Po_StkIn_ShipNo on Po_StkIn (ShipNo)
go

create table Po_StkInDtl (
  RefNo int not null,
  LineId int not null,
  SeqNo int null,
  PartNo varchar(30) null,
  PartName nvarchar(100) null,
  Unit varchar(10) null,
  Qty decimal(18,4) null default 0,
  RtnQty decimal(18,4) null default 0,
  DisQty decimal(18,4) null default 0,
  QcQty decimal(18,4) null default 0,
  IqcNo varchar(20) null,
  Price decimal(18,6) null,
  ToLoc varchar(20) null,
  BatchNo varchar(30) null,
  LotNo varchar(30) null,
  EffectDate datetime null,
  slsize float null,
  Factor float null,
  constraint PK_Po_StkInDtl primary key (RefNo, LineId)
)
go
create index IX_Po_StkInDtl_PartNo on Po_StkInDtl (PartNo)
go

create table Po_StkRtn (
  RefNo int not null,
  NoteNo varchar(20) null,
  BillDate datetime null,
  flag varchar(1) null default '',
  DepartNo varchar(20) null,
  PreparedBy varchar(20) null,
  AcctVouchNo int null default 0,
  Remark nvarchar(200) null,
  VendNo varchar(20) null,
  Dealer varchar(20) null,
  Currency varchar(10) null,
  ExRate float null,
  SlAmt money null default 0,
  constraint PK_Po_StkRtn primary key (RefNo)
)
go
create index IX_Po_StkRtn_NoteNo on Po_StkRtn (NoteNo)
go

create table Po_StkRtnDtl (
  RefNo int not null,
  LineId int not null,
  SeqNo int null,
  PartNo varchar(30) null,
  PartName nvarchar(100) null,
  Unit varchar(10) null,
  Qty decimal(18,4) null default 0,
  Price decimal(18,6) null,
  FromLoc varchar(20) null,
  BatchNo varchar(30) null,
  LotNo varchar(30) null,
  EffectDate datetime null,
  slsize float null,
  Factor float null,
  constraint PK_Po_StkRtnDtl primary key (RefNo, LineId)
)
go

create table Po_SubClose (
  RefNo int not null,
  CloseNo varchar(20) null,
  BillDate datetime null,
  flag varchar(1) null default '',
  DepartNo varchar(20) null,
  PreparedBy varchar(20) null,
  AcctVouchNo int null default 0,
  Remark nvarchar(200) null,
  VendNo varchar(20) null,
  Currency varchar(10) null,
  ExRate float null,
  Amount money null default 0,
  SlAmt money null default 0,
  TaxAmt money null default 0,
  PaidAmt money null default 0,
  constraint PK_Po_SubClose primary key (RefNo)
)
go
create index IX_Po_SubClose_CloseNo on Po_SubClose (CloseNo)
go

create table Po_SubCloseDtl (
  RefNo int not null,
  LineId int not null,
  SeqNo int null,
  PartNo varchar(30) null,
  PartName nvarchar(100) null,
  Unit varchar(10) null,
  Qty decimal(18,4) null default 0,
  InvQty decimal(18,4) null default 0,
  Price decimal(18,6) null,
  PoNo varchar(20) null,
  constraint PK_Po_SubCloseDtl primary key (RefNo, LineId)
)
go

create table po_IQcCode (
  IqcCode varchar(20) not null,
  VendNo varchar(20) null,
  bTmp bit null default 0,
  RefNoteNo varchar(20) null,
  PartNo varchar(30) null,
  Qty decimal(18,4) null default 0,
  bChecked bit null default 0,
  constraint PK_po_IQcCode primary key (IqcCode)
)
go
