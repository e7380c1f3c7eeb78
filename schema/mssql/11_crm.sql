-- Customer relations: sale periods, tasks, competitors.
-- Run with sqlcmd against the suite database; every statement ends its batch.

create table Crm_SalePeriod (
  SalePeriodNo varchar(10) not null,
  Description nvarchar(100) null,
  SalePeriodRate decimal(9,4) null,
  constraint PK_Crm_SalePeriod primary key (SalePeriodNo)
)
go

create table crm_TaskPlan (
  TaskId int not null,
  TaskSub nvarchar(100) null,
  CustNo varchar(20) null,
  DueDate datetime null,
  TaskBy varchar(20) null,
  Finished bit null default 0,
  constraint PK_crm_TaskPlan primary key (TaskId)
)
go
create index IX_crm_TaskPlan_TaskBy on crm_TaskPlan (TaskBy)
go

create table Crm_CompetitorList (
  CompId varchar(20) not null,
  ShortName nvarchar(50) null,
  Area nvarchar(50) null,
  Industry nvarchar(50) null,
  constraint PK_Crm_CompetitorList primary key (CompId)
)
go
