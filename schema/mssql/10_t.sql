-- Tax invoices and the tax and customs reference codes.
-- Run with sqlcmd against the suite database; every statement ends its batch.

create table T_RInvHea (
  RefNo int not null,
  NoteNo varchar(20) null,
  InvDate datetime null,
  CustNo varchar(20) null,
  SlAmt money null default 0,
  TaxAmt money null default 0,
  constraint PK_T_RInvHea primary key (RefNo)
)
go
create index IX_T_RInvHea_NoteNo on T_RInvHea (NoteNo)
go

create table T_pInvHea (
  RefNo int not null,
  NoteNo varchar(20) null,
  InvSeqNo varchar(20) null,
  InvDate datetime null,
  TaxDepartName nvarchar(100) null,
  SlAmt money null default 0,
  TaxAmt money null default 0,
  Type smallint null,
  nType smallint null,
  BelongMonth int null,
  constraint PK_T_pInvHea primary key (RefNo)
)
go
create index IX_T_pInvHea_NoteNo on T_pInvHea (NoteNo)
go
create index IX_T_pInvHea_BelongMonth on T_pInvHea (BelongMonth)
go

create table T_useTaxCode (
  TaxCode varchar(20) not null,
  constraint PK_T_useTaxCode primary key (TaxCode)
)
go

create table ht_taxCode (
  SysTaxCode varchar(20) not null,
  TaxCode varchar(20) null,
  TaxName nvarchar(50) null,
  TaxRate decimal(9,4) null,
  TaxRate2 decimal(9,4) null,
  constraint PK_ht_taxCode primary key (SysTaxCode)
)
go

create table T_CompType (
  ID varchar(10) not null,
  Name nvarchar(50) null,
  constraint PK_T_CompType primary key (ID)
)
go

create table T_NInvNo (
  FpDm varchar(20) not null,
  Fpmc nvarchar(50) null,
  constraint PK_T_NInvNo primary key (FpDm)
)
go

create table HY_code (
  CodeNo varchar(10) not null,
  CodeName nvarchar(50) null,
  constraint PK_HY_code primary key (CodeNo)
)
go

create table CPYtype (
  CodeNo varchar(10) not null,
  CodeName nvarchar(50) null,
  constraint PK_CPYtype primary key (CodeNo)
)
go

create table AdjustReason (
  CodeNo varchar(10) not null,
  CodeName nvarchar(50) null,
  constraint PK_AdjustReason primary key (CodeNo)
)
go

create table CustomCode (
  PortCode varchar(10) not null,
  PortName nvarchar(50) null,
  constraint PK_CustomCode primary key (PortCode)
)
go

create table TaxDepart (
  TaxDepartCode varchar(20) not null,
  TaxDepartName nvarchar(100) null,
  constraint PK_TaxDepart primary key (TaxDepartCode)
)
go
