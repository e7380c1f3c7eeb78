-- System: logs, field dictionary, grid layouts, deletion and initialisation catalogues.
-- Run with sqlcmd against the suite database; every statement ends its batch.

create table Sy_Log (
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
create index IX_Sy_Log_ModId_RefNo on Sy_Log (ModId, RefNo)
go

create table s_SpErrorcode (
  ErrorCode int not null,
  Description nvarchar(100) null,
  constraint PK_s_SpErrorcode primary key (ErrorCode)
)
go

create table s_FieldChDef (
  sFieldName varchar(50) not null,
  Description nvarchar(100) null,
  FieldType int null,
  constraint PK_s_FieldChDef primary key (sFieldName)
)
go

create table Sy_GridFieldDis (
  UserId varchar(20) not null,
  PackName varchar(50) not null,
  FormName varchar(50) not null,
  GridName varchar(50) not null,
  ColNo int not null,
  FieldName varchar(50) null,
  Visible bit null default 0,
  Width int null,
  Description nvarchar(100) null,
  constraint PK_Sy_GridFieldDis primary key (UserId, PackName, FormName, GridName, ColNo)
)
go

-- one row
create table s_ModInsted (
  AcctModInsted bit null default 0,
  TaxModInsted bit null default 0,
  PayModInsted bit null default 0,
  ProdModInsted bit null default 0
)
go

create table s_MenuDef (
  MenuId int not null,
  MenuCaption nvarchar(50) null,
  MenuType int null,
  bLast bit null default 0,
  constraint PK_s_MenuDef primary key (MenuId)
)
go

create table s_chartshow (
  ModId int not null,
  SeqNo smallint not null,
  ChatName varchar(50) null,
  ChatType smallint null,
  XField varchar(50) null,
  YField varchar(50) null,
  XFieldCapition varchar(50) null,
  YFieldCapition varchar(50) null,
  bSys bit null default 0,
  bDateTime bit null default 0,
  constraint PK_s_chartshow primary key (ModId, SeqNo)
)
go

create table s_tabledelCheck (
  KeyFieldsList varchar(100) not null,
  RefTableName varchar(50) not null,
  RefFieldNameList varchar(100) not null,
  constraint PK_s_tabledelCheck primary key (KeyFieldsList, RefTableName, RefFieldNameList)
)
go

create table s_TableDelMulCheck (
  KeyFieldsList varchar(100) not null,
  RefTableName varchar(50) not null,
  RefFieldNameList varchar(100) not null,
  RefFieldTypeList varchar(100) null,
  constraint PK_s_TableDelMulCheck primary key (KeyFieldsList, RefTableName, RefFieldNameList)
)
go

create table s_tableList (
  TableName varchar(50) not null,
  Type int null,
  constraint PK_s_tableList primary key (TableName)
)
go

create table s_IniField (
  TableName varchar(50) not null,
  FieldName varchar(50) not null,
  constraint PK_s_IniField primary key (TableName, FieldName)
)
go

-- one row per table copied by sy_BackupNote; the rows themselves are in <table>_Bak
create table Sy_NoteBackup (
  NewRefNo int not null,
  TableName varchar(100) not null,
  iType int null,
  RefNo int null,
  RowsCopied int null,
  BackupDate datetime null,
  constraint PK_Sy_NoteBackup primary key (NewRefNo, TableName)
)
go
create index IX_Sy_NoteBackup_RefNo on Sy_NoteBackup (RefNo)
go
