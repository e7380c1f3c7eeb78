create table #t (Code varchar(10) not null, Qty decimal(18,2) default 0, Id int identity(1,1), constraint PK_t primary key (Code))
insert into #t (Code) values ('A'); update #t set Qty = Qty + 1 from #t, a where #t.Code = a.x
delete #t where Code like '[a-c]%'