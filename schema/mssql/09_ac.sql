-- Accounting: periods, currencies, subjects, vouchers.
-- Run with sqlcmd against the suite database; every statement ends its batch.

create table Ac_AccYm (
  Period int not null,
  AcctDate datetime null,
  AcctStatus bit null default 0,
  AcctIni bit null default 0,
  CustIni bit null default 0,
  storeIni bit null default 0,
  salaryIni bit null default 0,
  iniFlag bit null default 0,
  constraint PK_Ac_AccYm primary key (Period)
)
go

create table AC_Currency (
  Currency varchar(10) not null,
  CyName nvarchar(50) null,
  CalMode varchar(1) null,
  ExRate float null,
  Factor float null,
  LoCurFlag bit null default 0,
  constraint PK_AC_Currency primary key (Currency)
)
go

create table ac_subject (
  SubId varchar(20) not null,
  SubName nvarchar(100) null,
  EndLevel bit null default 0,
  SpecType smallint null,
  constraint PK_ac_subject primary key (SubId)
)
go

create table ac_vouchHea (
  RefNo int not null,
  VouchNo varchar(20) null,
  BillDate datetime null,
  flag varchar(1) null default '',
  Remark nvarchar(200) null,
  constraint PK_ac_vouchHea primary key (RefNo)
)
go
