-- Engineering: equipment, work centres, product versions, bills of materials.
-- Run with sqlcmd against the suite database; every statement ends its batch.

create table En_Equip (
  EquipNo varchar(20) not null,
  CName nvarchar(50) null,
  StkNo varchar(20) null,
  DepartNo varchar(20) null,
  bSubType bit null default 0,
  constraint PK_En_Equip primary key (EquipNo)
)
go

create table En_WorkCent (
  WcNo varchar(20) not null,
  WcName nvarchar(50) null,
  DepartNo varchar(20) null,
  Pqc bit null default 0,
  constraint PK_En_WorkCent primary key (WcNo)
)
go

create table en_WcEquip (
  WcNo varchar(20) not null,
  EquipNo varchar(20) not null,
  SchSeqNo int null,
  constraint PK_en_WcEquip primary key (WcNo, EquipNo)
)
go

create table En_ProdVersion (
  ProdNo varchar(30) not null,
  Version varchar(10) not null,
  constraint PK_En_ProdVersion primary key (ProdNo, Version)
)
go

create table en_bom (
  ProdNo varchar(30) not null,
  Version varchar(10) not null,
  LineId int not null,
  CompNo varchar(30) null,
  CVersion varchar(10) null,
  Qtyper decimal(18,6) null,
  Factor float null,
  WcNo varchar(20) null,
  constraint PK_en_bom primary key (ProdNo, Version, LineId)
)
go
create index IX_en_bom_CompNo on en_bom (CompNo)
go
