-- Production: material issues, finished reports, quality codes.
-- Run with sqlcmd against the suite database; every statement ends its batch.

create table pm_FinRep (
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
  constraint PK_pm_FinRep primary key (RefNo)
)
go
create index IX_pm_FinRep_NoteNo on pm_FinRep (NoteNo)
go

create table pm_FinRepDtl (
  RefNo int not null,
  LineId int not null,
  SeqNo int null,
  PartNo varchar(30) null,
  PartName nvarchar(100) null,
  Unit varchar(10) null,
  RefJobNo int null,
  shiftType smallint null,
  Qty decimal(18,4) null default 0,
  InvQty decimal(18,4) null default 0,
  Price decimal(18,6) null,
  ToLoc varchar(20) null,
  BatchNo varchar(30) null,
  LotNo varchar(30) null,
  EffectDate datetime null,
  slsize float null,
  Factor float null,
  PoNo varchar(20) null,
  constraint PK_pm_FinRepDtl primary key (RefNo, LineId)
)
go

create table pm_IssWip (
  RefNo int not null,
  NoteNo varchar(20) null,
  BillDate datetime null,
  flag varchar(1) null default '',
  DepartNo varchar(20) null,
  PreparedBy varchar(20) null,
  AcctVouchNo int null default 0,
  Remark nvarchar(200) null,
  WcNo varchar(20) null,
  constraint PK_pm_IssWip primary key (RefNo)
)
go
create index IX_pm_IssWip_NoteNo on pm_IssWip (NoteNo)
go

create table pm_IssWipDtl (
  RefNo int not null,
  LineId int not null,
  SeqNo int null,
  PartNo varchar(30) null,
  PartName nvarchar(100) null,
  Unit varchar(10) null,
  RefJobNo int null,
  Qty decimal(18,4) null default 0,
  FromLoc varchar(20) null,
  BatchNo varchar(30) null,
  LotNo varchar(30) null,
  EffectDate datetime null,
  slsize float null,
  Factor float null,
  constraint PK_pm_IssWipDtl primary key (RefNo, LineId)
)
go
create index IX_pm_IssWipDtl_RefJobNo_PartNo on pm_IssWipDtl (RefJobNo, PartNo)
go

create table pm_IssWipRtn (
  RefNo int not null,
  NoteNo varchar(20) null,
  BillDate datetime null,
  flag varchar(1) null default '',
  DepartNo varchar(20) null,
  PreparedBy varchar(20) null,
  AcctVouchNo int null default 0,
  Remark nvarchar(200) null,
  WcNo varchar(20) null,
  constraint PK_pm_IssWipRtn primary key (RefNo)
)
go
create index IX_pm_IssWipRtn_NoteNo on pm_IssWipRtn (NoteNo)
go

create table pm_IssWipRtnDtl (
  RefNo int not null,
  LineId int not null,
  SeqNo int null,
  PartNo varchar(30) null,
  PartName nvarchar(100) null,
  Unit varchar(10) null,
  RefJobNo int null,
  Qty decimal(18,4) null default 0,
  ToLoc varchar(20) null,
  BatchNo varchar(30) null,
  LotNo varchar(30) null,
  EffectDate datetime null,
  slsize float null,
  Factor float null,
  constraint PK_pm_IssWipRtnDtl primary key (RefNo, LineId)
)
go

create table pm_FQcCode (
  FqcCode varchar(20) not null,
  RefJobNo int null,
  WcNo varchar(20) null,
  EquipNo varchar(20) null,
  ProdNo varchar(30) null,
  bSub bit null default 0,
  Qty decimal(18,4) null default 0,
  bChecked bit null default 0,
  constraint PK_pm_FQcCode primary key (FqcCode)
)
go
