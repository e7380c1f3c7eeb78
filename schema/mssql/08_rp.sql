-- Receivables and payables: banks, open items, receipts, payments, discounts.
-- Run with sqlcmd against the suite database; every statement ends its batch.

create table Rp_Bank (
  BankNo varchar(20) not null,
  BankName nvarchar(50) null,
  Account varchar(50) null,
  Currency varchar(10) null,
  SubId varchar(20) null,
  balance money null default 0,
  CashType bit null default 0,
  constraint PK_Rp_Bank primary key (BankNo)
)
go

create table Rp_TypeCodeInfo (
  Type varchar(4) not null,
  Code int not null,
  Descript nvarchar(50) null,
  constraint PK_Rp_TypeCodeInfo primary key (Type, Code)
)
go

create table Rp_RAcct (
  CustNo varchar(20) null,
  Type int not null,
  NoteRefNo int not null,
  NoteNo varchar(20) null,
  bInv bit null default 0,
  RefDate datetime null,
  Amount money null default 0,
  HadPayAmt money null default 0,
  Currency varchar(10) null,
  constraint PK_Rp_RAcct primary key (Type, NoteRefNo)
)
go
create index IX_Rp_RAcct_CustNo on Rp_RAcct (CustNo)
go

create table Rp_PAcct (
  VendNo varchar(20) null,
  Type int not null,
  NoteRefNo int not null,
  NoteNo varchar(20) null,
  bInv bit null default 0,
  RefDate datetime null,
  Amount money null default 0,
  HadPayAmt money null default 0,
  Currency varchar(10) null,
  constraint PK_Rp_PAcct primary key (Type, NoteRefNo)
)
go
create index IX_Rp_PAcct_VendNo on Rp_PAcct (VendNo)
go

create table rp_racctRec (
  CustNo varchar(20) null,
  Type int null,
  NoteRefNo int null,
  NoteNo varchar(20) null,
  RefDate datetime null,
  Amount money null default 0
)
go
create index IX_rp_racctRec_CustNo_RefDate on rp_racctRec (CustNo, RefDate)
go
create index IX_rp_racctRec_Type on rp_racctRec (Type)
go

create table rp_PacctRec (
  VendNo varchar(20) null,
  Type int null,
  NoteRefNo int null,
  NoteNo varchar(20) null,
  RefDate datetime null,
  Amount money null default 0
)
go
create index IX_rp_PacctRec_VendNo_RefDate on rp_PacctRec (VendNo, RefDate)
go
create index IX_rp_PacctRec_Type on rp_PacctRec (Type)
go

create table Rp_RinvNoteTypeName (
  NoteType int not null,
  NoteTypeName nvarchar(50) null,
  constraint PK_Rp_RinvNoteTypeName primary key (NoteType)
)
go

create table Rp_PinvNoteTypeName (
  NoteType int not null,
  NoteTypeName nvarchar(50) null,
  constraint PK_Rp_PinvNoteTypeName primary key (NoteType)
)
go

create table rp_rpay (
  RefNo int not null,
  NoteNo varchar(20) null,
  BillDate datetime null,
  flag varchar(1) null default '',
  DepartNo varchar(20) null,
  PreparedBy varchar(20) null,
  AcctVouchNo int null default 0,
  Remark nvarchar(200) null,
  CustNo varchar(20) null,
  BankNo varchar(20) null,
  Currency varchar(10) null,
  ExRate float null,
  Amount money null default 0,
  PrePayAmt money null default 0,
  ActPayAmt money null default 0,
  constraint PK_rp_rpay primary key (RefNo)
)
go
create index IX_rp_rpay_NoteNo on rp_rpay (NoteNo)
go

create table rp_PPay (
  RefNo int not null,
  NoteNo varchar(20) null,
  BillDate datetime null,
  flag varchar(1) null default '',
  DepartNo varchar(20) null,
  PreparedBy varchar(20) null,
  AcctVouchNo int null default 0,
  Remark nvarchar(200) null,
  VendNo varchar(20) null,
  BankNo varchar(20) null,
  Currency varchar(10) null,
  ExRate float null,
  Amount money null default 0,
  PrePayAmt money null default 0,
  ActPayAmt money null default 0,
  constraint PK_rp_PPay primary key (RefNo)
)
go
create index IX_rp_PPay_NoteNo on rp_PPay (NoteNo)
go

create table Rp_bankTrans (
  RefNo int not null,
  NoteNo varchar(20) null,
  RefDate datetime null,
  flag varchar(1) null default '',
  DepartNo varchar(20) null,
  PreparedBy varchar(20) null,
  AcctVouchNo int null default 0,
  Remark nvarchar(200) null,
  Frombank varchar(20) null,
  ToBank varchar(20) null,
  Currency varchar(10) null,
  ExRate float null,
  Amount money null default 0,
  constraint PK_Rp_bankTrans primary key (RefNo)
)
go
create index IX_Rp_bankTrans_NoteNo on Rp_bankTrans (NoteNo)
go

create table Rp_RDisc (
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
  constraint PK_Rp_RDisc primary key (RefNo)
)
go
create index IX_Rp_RDisc_NoteNo on Rp_RDisc (NoteNo)
go

create table rp_RDiscDtl (
  RefNo int not null,
  LineId int not null,
  SeqNo int null,
  PartNo varchar(30) null,
  PartName nvarchar(100) null,
  Unit varchar(10) null,
  Qty decimal(18,4) null default 0,
  InvQty decimal(18,4) null default 0,
  Price decimal(18,6) null,
  Amount money null default 0,
  constraint PK_rp_RDiscDtl primary key (RefNo, LineId)
)
go

create table Rp_PDisc (
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
  constraint PK_Rp_PDisc primary key (RefNo)
)
go
create index IX_Rp_PDisc_NoteNo on Rp_PDisc (NoteNo)
go

create table rp_PDiscDtl (
  RefNo int not null,
  LineId int not null,
  SeqNo int null,
  PartNo varchar(30) null,
  PartName nvarchar(100) null,
  Unit varchar(10) null,
  Qty decimal(18,4) null default 0,
  InvQty decimal(18,4) null default 0,
  Price decimal(18,6) null,
  Amount money null default 0,
  constraint PK_rp_PDiscDtl primary key (RefNo, LineId)
)
go
