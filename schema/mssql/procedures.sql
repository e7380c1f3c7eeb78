-- The server procedures the library calls by name (SQL Server 2000 and later).
-- Run after the table scripts NN_*.sql. The embedded database implements the same
-- procedures in the library itself, so this script is for SQL Server only.


-- Next document number of a bill type, from the type's rule in bs_billsetItem:
--   Prefix + date part + sequence, the sequence zero-padded to SeqWidth digits.
--   Codeformat, the date part: 'yyyymmdd', 'yymmdd', 'yyyymm', 'yymm', 'yyyy', 'yy', or
--     empty for none (any other text counts as none).
--   EncodeType, when the sequence starts again from 1: 'D' each day, 'M' each month,
--     'Y' each year; anything else never.
--   CurSeq and CurPeriod hold the last sequence handed out and the period it belongs to.
--   A rule whose date part is coarser than its restart period repeats numbers; set them up
--   together (yyyymm with M, yyyymmdd with D).
-- The counter moves in one update statement, so two sessions never receive the same number.
-- A sequence wider than SeqWidth is written in full rather than cut, to stay unique.
-- Returns 0 with the number in @ResultStr; 1 with null for a bill type that has no rule;
-- 2 with null when the number would be longer than 20 characters (the counter is then
-- left as it was, also inside a caller's transaction).
create procedure bs_Get_BillSeqNo
  @BillType int,
  @ResultStr varchar(20) output
as
begin
  set nocount on
  declare @now datetime, @prefix varchar(10), @format varchar(10), @encode varchar(10),
          @width int, @datePart varchar(8), @period varchar(8), @seq int, @digits varchar(40),
          @result varchar(60), @trancount int

  select @ResultStr = null, @now = getdate()

  select @prefix = isnull(rtrim(Prefix), ''), @format = lower(isnull(rtrim(Codeformat), '')),
         @encode = upper(isnull(rtrim(EncodeType), '')), @width = isnull(SeqWidth, 4)
    from bs_billsetItem
   where BillId = @BillType
  if @@rowcount = 0 return 1
  -- Any width over 20 makes the number too long; 21 says so without padding further.
  if @width > 20 select @width = 21

  select @datePart = case @format
           when 'yyyymmdd' then convert(varchar(8), @now, 112)
           when 'yymmdd' then convert(varchar(6), @now, 12)
           when 'yyyymm' then left(convert(varchar(8), @now, 112), 6)
           when 'yymm' then left(convert(varchar(6), @now, 12), 4)
           when 'yyyy' then left(convert(varchar(8), @now, 112), 4)
           when 'yy' then left(convert(varchar(6), @now, 12), 2)
           else '' end,
         @period = case @encode
           when 'D' then convert(varchar(8), @now, 112)
           when 'M' then left(convert(varchar(8), @now, 112), 6)
           when 'Y' then left(convert(varchar(8), @now, 112), 4)
           else '' end

  -- A savepoint, not a transaction of our own, when the caller already holds one: rolling
  -- back here must not undo the caller's work.
  select @trancount = @@trancount
  if @trancount = 0 begin tran else save tran bs_Get_BillSeqNo

  update bs_billsetItem
     set @seq = CurSeq = case when isnull(CurPeriod, '') = @period then isnull(CurSeq, 0) + 1 else 1 end,
         CurPeriod = @period
   where BillId = @BillType
  if @@rowcount = 0
  begin
    -- the rule was deleted between the two statements
    if @trancount = 0 rollback tran else rollback tran bs_Get_BillSeqNo
    return 1
  end

  select @digits = convert(varchar(12), @seq)
  if len(@digits) < @width select @digits = replicate('0', @width - len(@digits)) + @digits
  select @result = @prefix + @datePart + @digits
  if len(@result) > 20
  begin
    if @trancount = 0 rollback tran else rollback tran bs_Get_BillSeqNo
    return 2
  end

  if @trancount = 0 commit tran
  select @ResultStr = @result
  return 0
end
go


-- Copies the rows of one note table whose RefNo is @iRefNo into that table's backup store
-- under the new key @iNewRefNo, and records the copy in Sy_NoteBackup with its @iType (the
-- table's position in the caller's list: 0 the header, then its detail tables).
-- The backup store of table T is the table T_Bak, created on first use with T's columns
-- and no keys, so that one note may be backed up many times. No rows for @iRefNo is not a
-- failure: nothing is copied and the copy is still recorded.
-- Returns 0 on success, otherwise:
--   1  @sTableName is empty or names no user table
--   2  the table is not a note table: it has no RefNo column, or it has an identity column
--   3  the backup store could not be created
--   4  the store's columns no longer match the table, or the copy failed
--   5  this table was already backed up under @iNewRefNo
create procedure sy_BackupNote
  @iRefNo int,
  @iNewRefNo int,
  @sTableName varchar(100),
  @iType int
as
begin
  set nocount on
  declare @table varchar(100), @store varchar(110), @tableId int, @storeId int, @sql nvarchar(2000),
          @rows int, @failed int, @err int, @trancount int

  select @table = ltrim(rtrim(isnull(@sTableName, '')))
  if @table = '' return 1
  select @tableId = object_id(@table)
  if @tableId is null or objectproperty(@tableId, 'IsUserTable') <> 1 return 1
  -- The table's own name from here on: an owner prefix, brackets or other letter case in
  -- @sTableName would otherwise name a store that is not T_Bak and log the copy under a
  -- second name.
  select @table = object_name(@tableId)
  if columnproperty(@tableId, 'RefNo', 'ColumnId') is null return 2
  if objectproperty(@tableId, 'TableHasIdentity') = 1 return 2
  if exists (select 1 from Sy_NoteBackup where NewRefNo = @iNewRefNo and TableName = @table) return 5

  select @store = @table + '_Bak'
  if object_id(@store) is null
  begin
    select @sql = N'select * into ' + quotename(@store) + N' from ' + quotename(@table) + N' where 1 = 0'
    exec sp_executesql @sql
    if @@error <> 0 or object_id(@store) is null return 3
  end
  select @storeId = object_id(@store)

  -- The copy goes column by column in declared order: both sides must have the same names.
  if (select count(*) from syscolumns where id = @tableId) <> (select count(*) from syscolumns where id = @storeId)
     or exists (select 1
                  from syscolumns t, syscolumns s
                 where t.id = @tableId and s.id = @storeId and s.colid = t.colid and t.name <> s.name)
    return 4

  select @trancount = @@trancount
  if @trancount = 0 begin tran else save tran sy_BackupNote

  select @sql = N'select * into #rows from ' + quotename(@table) + N' where RefNo = @old'
              + N' update #rows set RefNo = @new'
              + N' insert into ' + quotename(@store) + N' select * from #rows'
              + N' select @copied = @@rowcount, @failed = @@error'
  exec @err = sp_executesql @sql, N'@old int, @new int, @copied int output, @failed int output',
                            @old = @iRefNo, @new = @iNewRefNo, @copied = @rows output, @failed = @failed output
  if @err = 0 select @err = isnull(@failed, 1)
  if @err = 0
  begin
    insert into Sy_NoteBackup (NewRefNo, TableName, iType, RefNo, RowsCopied, BackupDate)
    values (@iNewRefNo, @table, @iType, @iRefNo, isnull(@rows, 0), getdate())
    select @err = @@error
  end
  if @err <> 0
  begin
    if @trancount = 0 rollback tran else rollback tran sy_BackupNote
    return 4
  end

  if @trancount = 0 commit tran
  return 0
end
go


-- Checks a material issue note (pm_IssWipDtl lines of @RefNo) against its production jobs.
-- Per job component (the line's RefJobNo and PartNo, against CompNo in pl_JbBom) the
-- note's quantity may not exceed the planned issue quantity less what has already been
-- issued. A part that is not a component of its job has nothing planned. Lines without a
-- job are not checked.
-- @iRes 0: within limits, the other outputs 0 and ''. @iRes 1: the first component over
-- its limit (by job, then part) with the note's quantity, the plan and what was issued.
create procedure Pm_CheckWipIssQty
  @RefNo int,
  @iRes int output,
  @OverPartNo varchar(100) output,
  @IssQty float output,
  @PlanQty float output,
  @IssuedQty float output
as
begin
  set nocount on
  select @iRes = 0, @OverPartNo = '', @IssQty = 0, @PlanQty = 0, @IssuedQty = 0

  select top 1 @iRes = 1, @OverPartNo = i.PartNo, @IssQty = i.Qty,
         @PlanQty = isnull(b.PlanIssQty, 0), @IssuedQty = isnull(b.IssuedQty, 0)
    from (select RefJobNo, PartNo, sum(isnull(Qty, 0)) as Qty
            from pm_IssWipDtl
           where RefNo = @RefNo and isnull(RefJobNo, 0) <> 0
           group by RefJobNo, PartNo) i
    left outer join
         (select RefJobNo, CompNo, sum(isnull(PlanIssQty, 0)) as PlanIssQty, sum(isnull(IssuedQty, 0)) as IssuedQty
            from pl_JbBom
           group by RefJobNo, CompNo) b
      on b.RefJobNo = i.RefJobNo and b.CompNo = i.PartNo
   where i.Qty > isnull(b.PlanIssQty, 0) - isnull(b.IssuedQty, 0)
   order by i.RefJobNo, i.PartNo

  return 0
end
go


-- Checks a supplementary issue note (kept in the same tables as issue notes) against its
-- jobs: per job component the note's quantity may not exceed what is still owed to the
-- job, the quantity to be issued again (NeedAddQty) less what has been (AddIssQty).
-- @iRes 0: within limits. @iRes 1: the first component over (by job, then part) with the
-- note's quantity and the quantity owed.
create procedure Pm_CheckWipAddIssQty
  @RefNo int,
  @iRes int output,
  @OverPartNo varchar(100) output,
  @IssQty float output,
  @DueQty float output
as
begin
  set nocount on
  select @iRes = 0, @OverPartNo = '', @IssQty = 0, @DueQty = 0

  select top 1 @iRes = 1, @OverPartNo = i.PartNo, @IssQty = i.Qty, @DueQty = isnull(b.DueQty, 0)
    from (select RefJobNo, PartNo, sum(isnull(Qty, 0)) as Qty
            from pm_IssWipDtl
           where RefNo = @RefNo and isnull(RefJobNo, 0) <> 0
           group by RefJobNo, PartNo) i
    left outer join
         (select RefJobNo, CompNo, sum(isnull(NeedAddQty, 0)) - sum(isnull(AddIssQty, 0)) as DueQty
            from pl_JbBom
           group by RefJobNo, CompNo) b
      on b.RefJobNo = i.RefJobNo and b.CompNo = i.PartNo
   where i.Qty > isnull(b.DueQty, 0)
   order by i.RefJobNo, i.PartNo

  return 0
end
go
