-- Basic data: parameters, numbering, approval configuration, users, masters.
-- Run with sqlcmd against the suite database; every statement ends its batch.

create table bs_paralistB (
  ParFieldName varchar(50) not null,
  paraValue bit null default 0,
  constraint PK_bs_paralistB primary key (ParFieldName)
)
go

create table bs_paralistI (
  ParFieldName varchar(50) not null,
  ParaValue int null,
  constraint PK_bs_paralistI primary key (ParFieldName)
)
go

create table bs_paralistS (
  ParFieldName varchar(50) not null,
  paraValue varchar(100) null,
  constraint PK_bs_paralistS primary key (ParFieldName)
)
go

-- one row
create table bs_sysPar (
  CostPerHour float null
)
go

-- one row
create table Bs_SysSet (
  SysNoteId int null default 0,
  ProgId varchar(50) null
)
go

-- SeqNo of the row BillId 0 is the last RefNo handed out
create table BillCode (
  BillId int not null,
  SeqNo int null,
  constraint PK_BillCode primary key (BillId)
)
go

create table Bs_BillSet (
  BillId int not null,
  BillName nvarchar(50) null,
  CheckLevel int null,
  OpenMode int null,
  AllowNegQty bit null default 0,
  CheckNoteNo bit null default 0,
  NeedOpId bit null default 0,
  VerBackUp bit null default 0,
  constraint PK_Bs_BillSet primary key (BillId)
)
go

-- numbering rule of a bill type, read and advanced by bs_Get_BillSeqNo (see procedures.sql)
create table bs_billsetItem (
  BillId int not null,
  Description nvarchar(100) null,
  EncodeType varchar(10) null,
  Prefix varchar(10) null,
  Codeformat varchar(10) null,
  SeqWidth smallint null default 4,
  CurSeq int null default 0,
  CurPeriod varchar(8) null default '',
  constraint PK_bs_billsetItem primary key (BillId)
)
go

create table bs_billcheck (
  BillId int not null,
  CheckLevel int not null,
  CheckName nvarchar(50) null,
  constraint PK_bs_billcheck primary key (BillId, CheckLevel)
)
go

-- a user is meant to hold one level per bill type; where he holds several, approval takes the first
create table Bs_BillCheckUser (
  BillId int not null,
  CheckUser varchar(20) not null,
  CheckLevel int not null,
  constraint PK_Bs_BillCheckUser primary key (BillId, CheckUser, CheckLevel)
)
go

-- one row per note and level: a second approval of a level racing the first is refused by the key
-- rather than stored twice
create table Bs_BillCheckRec (
  BillId int not null,
  RefNo int not null,
  CheckLevel int not null,
  Checked bit null default 0,
  CheckUser varchar(20) null,
  CheckDate datetime null,
  constraint PK_Bs_BillCheckRec primary key (BillId, RefNo, CheckLevel)
)
go
create index IX_Bs_BillCheckRec_RefNo on Bs_BillCheckRec (RefNo)
go

create table Bs_User (
  UserId varchar(20) not null,
  UserName nvarchar(50) null,
  DepartNo varchar(20) null,
  bAdmin bit null default 0,
  AuthId int null,
  OpenNoteType int null,
  OpenNoteQty int null,
  Effect bit null default 1,
  constraint PK_Bs_User primary key (UserId)
)
go

create table Bs_UserAuth (
  UserId varchar(20) not null,
  ModId int not null,
  EnterOp bit null default 0,
  InsertOp bit null default 0,
  DeleteOp bit null default 0,
  ModifyOp bit null default 0,
  PrintOp bit null default 0,
  CheckOp bit null default 0,
  RecheckOp bit null default 0,
  PriceOp bit null default 0,
  NegQtyOp bit null default 0,
  OtherOp bit null default 0,
  constraint PK_Bs_UserAuth primary key (UserId, ModId)
)
go

create table Bs_Roller (
  RollId varchar(20) not null,
  RollDesc nvarchar(50) null,
  constraint PK_Bs_Roller primary key (RollId)
)
go

create table Bs_Depart (
  DepartNo varchar(20) not null,
  DepartName nvarchar(50) null,
  ChargeMan varchar(20) null,
  constraint PK_Bs_Depart primary key (DepartNo)
)
go

create table Bs_Employee (
  EmpId varchar(20) not null,
  EmpName nvarchar(50) null,
  DepartNo varchar(20) null,
  Effect bit null default 1,
  constraint PK_Bs_Employee primary key (EmpId)
)
go

create table Bs_Location (
  StkNo varchar(20) not null,
  StkName nvarchar(50) null,
  DepartNo varchar(20) null,
  AllowNeg bit null default 0,
  Effect bit null default 1,
  constraint PK_Bs_Location primary key (StkNo)
)
go

create table Bs_Customer (
  CustNo varchar(20) not null,
  CustName nvarchar(100) null,
  ShortName nvarchar(50) null,
  ShortKey varchar(20) null,
  TaxId varchar(30) null,
  SalesId varchar(20) null,
  DepartNo varchar(20) null,
  Currency varchar(10) null,
  PayCode int null,
  PayType int null,
  TradeType int null,
  PriceType int null,
  Coeffi float null,
  SaleByTax bit null default 0,
  Credit money null default 0,
  RegAddr nvarchar(200) null,
  CustType smallint null default 0,
  ObjectType smallint null default 0,
  Area nvarchar(50) null,
  flag varchar(1) null default '',
  Sumday int null,
  Payday int null,
  ShipDays int null,
  constraint PK_Bs_Customer primary key (CustNo)
)
go

create table Bs_Vendor (
  VendNo varchar(20) not null,
  VendName nvarchar(100) null,
  ShortName nvarchar(50) null,
  ShortKey varchar(20) null,
  TaxId varchar(30) null,
  Buyer varchar(20) null,
  DepartNo varchar(20) null,
  Currency varchar(10) null,
  PayCode int null,
  PayType int null,
  TradeType int null,
  SaleByTax bit null default 0,
  RegAddr nvarchar(200) null,
  flag varchar(1) null default '',
  constraint PK_Bs_Vendor primary key (VendNo)
)
go

create table Bs_ProdList (
  PartNo varchar(30) not null,
  PartName nvarchar(100) null,
  PartSpec nvarchar(100) null,
  Unit varchar(10) null,
  ProdCode varchar(20) null,
  Alias nvarchar(50) null,
  ShortNo varchar(20) null,
  BarCode varchar(50) null,
  CatType varchar(20) null,
  CatType1 varchar(20) null,
  CatType2 varchar(20) null,
  CatType3 varchar(20) null,
  prodtype varchar(1) null,
  Price decimal(18,6) null,
  StdCost decimal(18,6) null,
  TaxRate decimal(9,4) null,
  MaxStk decimal(18,4) null default 0,
  MinPoQty decimal(18,4) null default 0,
  MinPur decimal(18,4) null default 0,
  LotType int null,
  BatchType int null,
  bLotProc bit null default 0,
  bBatchProc bit null default 0,
  bEffectProc bit null default 0,
  SerialControl bit null default 0,
  constraint PK_Bs_ProdList primary key (PartNo)
)
go

create table Bs_PartUnit (
  PartNo varchar(30) not null,
  Unit varchar(10) not null,
  ExRate float null,
  Factor float null,
  constraint PK_Bs_PartUnit primary key (PartNo, Unit)
)
go

create table bs_ProdCode (
  ProdCode varchar(20) not null,
  TypeName nvarchar(50) null,
  constraint PK_bs_ProdCode primary key (ProdCode)
)
go

create table Bs_PayType (
  PayType varchar(10) not null,
  Descrip nvarchar(50) null,
  constraint PK_Bs_PayType primary key (PayType)
)
go

create table bs_Paycode (
  PayCode int not null,
  PayType varchar(10) null,
  PayDay int null,
  Descrip nvarchar(50) null,
  constraint PK_bs_Paycode primary key (PayCode)
)
go

create table bs_PriceSys (
  PriceSysNo int not null,
  PriceSysName nvarchar(50) null,
  constraint PK_bs_PriceSys primary key (PriceSysNo)
)
go

create table bs_ProdPriceSys (
  ProdNo varchar(30) not null,
  PriceSysNo int not null,
  Price decimal(18,6) null,
  taxflag bit null default 0,
  constraint PK_bs_ProdPriceSys primary key (ProdNo, PriceSysNo)
)
go

create table bs_CustPrice (
  CustNo varchar(20) not null,
  PartNo varchar(30) not null,
  Price decimal(18,6) null,
  taxFlag bit null default 0,
  TaxRate decimal(9,4) null,
  constraint PK_bs_CustPrice primary key (CustNo, PartNo)
)
go

create table bs_PuPart (
  VendNo varchar(20) not null,
  PartNo varchar(30) not null,
  Price decimal(18,6) null,
  TaxFlag bit null default 0,
  TaxRate decimal(9,4) null,
  NeedIqc bit null default 0,
  constraint PK_bs_PuPart primary key (VendNo, PartNo)
)
go
create index IX_bs_PuPart_PartNo on bs_PuPart (PartNo)
go

-- FieldValue is text: lists join it to Description with +, and compared with a number it converts
create table Bs_QueryList (
  lang int not null,
  ListType int not null,
  FieldValue varchar(20) not null,
  Description nvarchar(100) null,
  constraint PK_Bs_QueryList primary key (lang, ListType, FieldValue)
)
go

create table Bs_Log (
  UserId varchar(20) null,
  Computer varchar(50) null,
  ModId int null,
  OpId int null,
  RefNo int null,
  NoteNo varchar(20) null,
  OpDate datetime null,
  Remark nvarchar(200) null
)
go
create index IX_Bs_Log_ModId_RefNo on Bs_Log (ModId, RefNo)
go
