-- Production planning: jobs, their components and routings.
-- Run with sqlcmd against the suite database; every statement ends its batch.

create table pl_jbmain (
  RefNo int not null,
  JobNo varchar(20) null,
  BillDate datetime null,
  flag varchar(1) null default '',
  DepartNo varchar(20) null,
  PreparedBy varchar(20) null,
  AcctVouchNo int null default 0,
  Remark nvarchar(200) null,
  RefOrderNo int null,
  Slordno varchar(20) null,
  CustPoNo varchar(30) null,
  ProdNo varchar(30) null,
  ProdVersion varchar(10) null,
  ProdQty decimal(18,4) null default 0,
  QtyIssued decimal(18,4) null default 0,
  StkQtyIssued decimal(18,4) null default 0,
  ReadyQty decimal(18,4) null default 0,
  constraint PK_pl_jbmain primary key (RefNo)
)
go
create index IX_pl_jbmain_JobNo on pl_jbmain (JobNo)
go
create index IX_pl_jbmain_RefOrderNo on pl_jbmain (RefOrderNo)
go

-- planned and issued quantities, and what is to be issued again and has been, checked by
-- Pm_CheckWipIssQty and Pm_CheckWipAddIssQty
create table pl_JbBom (
  RefJobNo int not null,
  LineId int not null,
  CompNo varchar(30) null,
  CVersion varchar(10) null,
  Qtyper decimal(18,6) null,
  Factor float null,
  WcNo varchar(20) null,
  PlanIssQty decimal(18,4) null default 0,
  IssuedQty decimal(18,4) null default 0,
  NeedAddQty decimal(18,4) null default 0,
  AddIssQty decimal(18,4) null default 0,
  constraint PK_pl_JbBom primary key (RefJobNo, LineId)
)
go
create index IX_pl_JbBom_CompNo on pl_JbBom (CompNo)
go

create table pl_JbBomAlt (
  RefJobNo int not null,
  LineId int not null,
  AltSeqNo int not null,
  AltPartNo varchar(30) null,
  PartName nvarchar(100) null,
  AltVersion varchar(10) null,
  QtyPer decimal(18,6) null,
  Factor float null,
  constraint PK_pl_JbBomAlt primary key (RefJobNo, LineId, AltSeqNo)
)
go

create table pl_JbRout (
  RefJobNo int not null,
  SeqNo int not null,
  WcNo varchar(20) null,
  constraint PK_pl_JbRout primary key (RefJobNo, SeqNo)
)
go
create index IX_pl_JbRout_WcNo on pl_JbRout (WcNo)
go
