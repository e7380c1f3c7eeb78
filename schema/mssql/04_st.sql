-- Stock: on-hand, lots, serials, costs, stock notes.
-- Run with sqlcmd against the suite database; every statement ends its batch.

create table St_onhand (
  PartNo varchar(30) not null,
  BatchNo varchar(30) not null,
  LotNo varchar(30) not null,
  Location varchar(20) not null,
  Qty float null,
  constraint PK_St_onhand primary key (PartNo, BatchNo, LotNo, Location)
)
go
create index IX_St_onhand_Location_PartNo on St_onhand (Location, PartNo)
go

-- the rows of St_onhand with their lot's effective date and batch date, kept by the stock postings
create table st_OnHandAndBatchNoAndLotNo (
  PartNo varchar(30) not null,
  BatchNo varchar(30) not null,
  LotNo varchar(30) not null,
  Location varchar(20) not null,
  Qty float null,
  EffectDate datetime null,
  BatchNoDate datetime null,
  constraint PK_st_OnHandAndBatchNoAndLotNo primary key (PartNo, BatchNo, LotNo, Location)
)
go
create index IX_st_OnHandAndBatchNoAndLotNo_Location_PartNo on st_OnHandAndBatchNoAndLotNo (Location, PartNo)
go

create table st_Lot (
  PartNo varchar(30) not null,
  LotNo varchar(30) not null,
  EffectDate datetime null,
  constraint PK_st_Lot primary key (PartNo, LotNo)
)
go

create table St_StkBillSet (
  BillId int not null,
  AllowSelDtlStk bit null default 0,
  SerialCheck bit null default 0,
  constraint PK_St_StkBillSet primary key (BillId)
)
go

create table st_partRec (
  BillId int null,
  RefNo int null,
  LineId int null,
  PartNo varchar(30) null,
  Location varchar(20) null,
  BatchNo varchar(30) null,
  batchType varchar(1) null,
  LotNo varchar(30) null,
  Qty decimal(18,4) null default 0,
  RecDate datetime null
)
go
create index IX_st_partRec_BatchNo_batchType on st_partRec (BatchNo, batchType)
go
create index IX_st_partRec_RefNo on st_partRec (RefNo)
go

create table St_PartSerial (
  PartNo varchar(30) not null,
  SerialNo varchar(50) not null,
  Location varchar(20) null,
  constraint PK_St_PartSerial primary key (PartNo, SerialNo)
)
go
create index IX_St_PartSerial_PartNo_Location on St_PartSerial (PartNo, Location)
go

create table st_MonthPartCost (
  Period int not null,
  PartNo varchar(30) not null,
  cost decimal(18,6) null,
  constraint PK_st_MonthPartCost primary key (Period, PartNo)
)
go

create table St_InHead (
  RefNo int not null,
  NoteNo varchar(20) null,
  BillDate datetime null,
  flag varchar(1) null default '',
  DepartNo varchar(20) null,
  PreparedBy varchar(20) null,
  AcctVouchNo int null default 0,
  Remark nvarchar(200) null,
  BillId int null,
  Amout money null default 0,
  constraint PK_St_InHead primary key (RefNo)
)
go
create index IX_St_InHead_NoteNo on St_InHead (NoteNo)
go

create table st_Inet (
  RefNo int not null,
  LineId int not null,
  SeqNo int null,
  PartNo varchar(30) null,
  PartName nvarchar(100) null,
  Unit varchar(10) null,
  Qty decimal(18,4) null default 0,
  FromLoc varchar(20) null,
  ToLoc varchar(20) null,
  BatchNo varchar(30) null,
  LotNo varchar(30) null,
  EffectDate datetime null,
  slsize float null,
  Factor float null,
  constraint PK_st_Inet primary key (RefNo, LineId)
)
go

create table St_check (
  RefNo int not null,
  NoteNo varchar(20) null,
  BillDate datetime null,
  flag varchar(1) null default '',
  DepartNo varchar(20) null,
  PreparedBy varchar(20) null,
  AcctVouchNo int null default 0,
  Remark nvarchar(200) null,
  Location varchar(20) null,
  constraint PK_St_check primary key (RefNo)
)
go
create index IX_St_check_NoteNo on St_check (NoteNo)
go

create table st_checkdtl (
  RefNo int not null,
  LineId int not null,
  SeqNo int null,
  PartNo varchar(30) null,
  PartName nvarchar(100) null,
  Unit varchar(10) null,
  Location varchar(20) null,
  BatchNo varchar(30) null,
  LotNo varchar(30) null,
  Qty decimal(18,4) null default 0,
  diffQty decimal(18,4) null default 0,
  constraint PK_st_checkdtl primary key (RefNo, LineId)
)
go
