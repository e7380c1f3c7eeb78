-- Sales: orders, shipments, returns, consignment.
-- Run with sqlcmd against the suite database; every statement ends its batch.

create table sl_order (
  RefNo int not null,
  Slordno varchar(20) null,
  BillDate datetime null,
  flag varchar(1) null default '',
  DepartNo varchar(20) null,
  PreparedBy varchar(20) null,
  AcctVouchNo int null default 0,
  Remark nvarchar(200) null,
  CustNo varchar(20) null,
  Currency varchar(10) null,
  ExRate float null,
  Amount money null default 0,
  SlAmt money null default 0,
  TaxAmt money null default 0,
  PaidAmt money null default 0,
  SalesId varchar(20) null,
  CustPoNo varchar(30) null,
  FinFlag bit null default 0,
  addFinFlag bit null default 0,
  constraint PK_sl_order primary key (RefNo)
)
go
create index IX_sl_order_Slordno on sl_order (Slordno)
go

create table sl_orderDtl (
  RefNo int not null,
  LineId int not null,
  SeqNo int null,
  PartNo varchar(30) null,
  PartName nvarchar(100) null,
  Unit varchar(10) null,
  Version varchar(10) null,
  OrderQty decimal(18,4) null default 0,
  ShipQty decimal(18,4) null default 0,
  RtnQty decimal(18,4) null default 0,
  RtnShipQty decimal(18,4) null default 0,
  Price decimal(18,6) null,
  constraint PK_sl_orderDtl primary key (RefNo, LineId)
)
go

create table sl_ship (
  RefNo int not null,
  NoteNo varchar(20) null,
  BillDate datetime null,
  flag varchar(1) null default '',
  DepartNo varchar(20) null,
  PreparedBy varchar(20) null,
  AcctVouchNo int null default 0,
  Remark nvarchar(200) null,
  CustNo varchar(20) null,
  Currency varchar(10) null,
  ExRate float null,
  Amount money null default 0,
  SlAmt money null default 0,
  TaxAmt money null default 0,
  PaidAmt money null default 0,
  constraint PK_sl_ship primary key (RefNo)
)
go
create index IX_sl_ship_NoteNo on sl_ship (NoteNo)
go

create table sl_ShipDtl (
  RefNo int not null,
  LineId int not null,
  SeqNo int null,
  PartNo varchar(30) null,
  PartName nvarchar(100) null,
  Unit varchar(10) null,
  Qty decimal(18,4) null default 0,
  LargessQty decimal(18,4) null default 0,
  InvQty decimal(18,4) null default 0,
  Price decimal(18,6) null,
  FromLoc varchar(20) null,
  BatchNo varchar(30) null,
  LotNo varchar(30) null,
  EffectDate datetime null,
  slsize float null,
  Factor float null,
  Slordno varchar(20) null,
  constraint PK_sl_ShipDtl primary key (RefNo, LineId)
)
go

create table sl_Rtn (
  RefNo int not null,
  NoteNo varchar(20) null,
  BillDate datetime null,
  flag varchar(1) null default '',
  DepartNo varchar(20) null,
  PreparedBy varchar(20) null,
  AcctVouchNo int null default 0,
  Remark nvarchar(200) null,
  CustNo varchar(20) null,
  Currency varchar(10) null,
  ExRate float null,
  Amount money null default 0,
  SlAmt money null default 0,
  TaxAmt money null default 0,
  PaidAmt money null default 0,
  constraint PK_sl_Rtn primary key (RefNo)
)
go
create index IX_sl_Rtn_NoteNo on sl_Rtn (NoteNo)
go

create table sl_RtnDtl (
  RefNo int not null,
  LineId int not null,
  SeqNo int null,
  PartNo varchar(30) null,
  PartName nvarchar(100) null,
  Unit varchar(10) null,
  Qty decimal(18,4) null default 0,
  InvQty decimal(18,4) null default 0,
  Price decimal(18,6) null,
  ToLoc varchar(20) null,
  BatchNo varchar(30) null,
  LotNo varchar(30) null,
  EffectDate datetime null,
  slsize float null,
  Factor float null,
  Slordno varchar(20) null,
  constraint PK_sl_RtnDtl primary key (RefNo, LineId)
)
go

create table sl_ComSum (
  RefNo int not null,
  NoteNo varchar(20) null,
  BillDate datetime null,
  flag varchar(1) null default '',
  DepartNo varchar(20) null,
  PreparedBy varchar(20) null,
  AcctVouchNo int null default 0,
  Remark nvarchar(200) null,
  CustNo varchar(20) null,
  Currency varchar(10) null,
  ExRate float null,
  Amount money null default 0,
  SlAmt money null default 0,
  TaxAmt money null default 0,
  PaidAmt money null default 0,
  constraint PK_sl_ComSum primary key (RefNo)
)
go
create index IX_sl_ComSum_NoteNo on sl_ComSum (NoteNo)
go

create table sl_ComSumDtl (
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
  Slordno varchar(20) null,
  constraint PK_sl_ComSumDtl primary key (RefNo, LineId)
)
go

create table sl_Out (
  RefNo int not null,
  SendNo varchar(20) null,
  BillDate datetime null,
  flag varchar(1) null default '',
  DepartNo varchar(20) null,
  PreparedBy varchar(20) null,
  AcctVouchNo int null default 0,
  Remark nvarchar(200) null,
  CustNo varchar(20) null,
  Currency varchar(10) null,
  ExRate float null,
  constraint PK_sl_Out primary key (RefNo)
)
go
create index IX_sl_Out_SendNo on sl_Out (SendNo)
go

create table sl_OutDtl (
  RefNo int not null,
  LineId int not null,
  SeqNo int null,
  PartNo varchar(30) null,
  PartName nvarchar(100) null,
  Unit varchar(10) null,
  Qty decimal(18,4) null default 0,
  FromLoc varchar(20) null,
  BatchNo varchar(30) null,
  LotNo varchar(30) null,
  EffectDate datetime null,
  slsize float null,
  Factor float null,
  constraint PK_sl_OutDtl primary key (RefNo, LineId)
)
go

create table sl_OutRtn (
  RefNo int not null,
  NoteNo varchar(20) null,
  BillDate datetime null,
  flag varchar(1) null default '',
  DepartNo varchar(20) null,
  PreparedBy varchar(20) null,
  AcctVouchNo int null default 0,
  Remark nvarchar(200) null,
  CustNo varchar(20) null,
  Currency varchar(10) null,
  ExRate float null,
  constraint PK_sl_OutRtn primary key (RefNo)
)
go
create index IX_sl_OutRtn_NoteNo on sl_OutRtn (NoteNo)
go

create table sl_OutRtnDtl (
  RefNo int not null,
  LineId int not null,
  SeqNo int null,
  PartNo varchar(30) null,
  PartName nvarchar(100) null,
  Unit varchar(10) null,
  Qty decimal(18,4) null default 0,
  ToLoc varchar(20) null,
  BatchNo varchar(30) null,
  LotNo varchar(30) null,
  EffectDate datetime null,
  slsize float null,
  Factor float null,
  constraint PK_sl_OutRtnDtl primary key (RefNo, LineId)
)
go
