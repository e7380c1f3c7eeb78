-- Stock notes: the opening stock taken over in January (BillId 3010), the first-quarter
-- count of the raw material store (3400) and a transfer to the assembly line (3130).
-- Every note is posted (flag '2'). A line without a lot carries lot '00'; a line without
-- a batch carries a blank batch. slsize over Factor turns the line unit into the part's.

insert into St_InHead (RefNo, NoteNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, BillId, Amout) values (1, 'OI0601001', '2006-01-05', '2', 'D05', 'chenj', 1, N'期初库存录入', 3010, 46297.5)
insert into St_InHead (RefNo, NoteNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, BillId, Amout) values (9, 'TR0605001', '2006-05-06', '2', 'D05', 'chenj', 0, N'装配线补充轴承', 3130, 330)
go

insert into st_Inet (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, FromLoc, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (1, 1, 1, 'CS-HT200-80', N'箱体铸件', N'件', 30, null, 'WH01', 'B051220', '00', null, 1, 1)
insert into st_Inet (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, FromLoc, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (1, 2, 2, 'BZ-ZCUSN-180', N'锡青铜蜗轮坯', N'件', 25, null, 'WH01', '', 'L0511A', null, 1, 1)
insert into st_Inet (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, FromLoc, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (1, 3, 3, 'ST-40CR-45', N'蜗杆轴坯', N'捆', 3, null, 'WH01', '', '00', null, 20, 1)
insert into st_Inet (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, FromLoc, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (1, 4, 4, 'BR-6208', N'深沟球轴承', N'套', 120, null, 'WH01', '', '00', null, 1, 1)
insert into st_Inet (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, FromLoc, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (1, 5, 5, 'OS-45628', N'骨架油封', N'个', 200, null, 'WH01', '', '00', null, 1, 1)
insert into st_Inet (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, FromLoc, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (1, 6, 6, 'OIL-220', N'工业齿轮油', N'桶', 10, null, 'WH01', '', 'L0512B', '2007-12-31', 18, 1)
insert into st_Inet (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, FromLoc, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (1, 7, 7, 'OIL-220', N'工业齿轮油', N'桶', 1, null, 'WH01', '', 'L0507A', '2006-05-31', 18, 1)
insert into st_Inet (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, FromLoc, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (1, 8, 8, 'BT-M12-40', N'六角头螺栓', N'个', 150, null, 'WH03', '', '00', null, 1, 1)
insert into st_Inet (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, FromLoc, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (1, 9, 9, 'WG80-ASM', N'蜗轮组件', N'套', 30, null, 'WH01', '', '00', null, 1, 1)
insert into st_Inet (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, FromLoc, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (1, 10, 10, 'ZQ350-23', N'圆柱齿轮减速机', N'台', 3, null, 'WH02', '', '00', null, 1, 1)
insert into st_Inet (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, FromLoc, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (1, 11, 11, 'WPA80-20', N'蜗轮蜗杆减速机', N'台', 5, null, 'WH02', '', '00', null, 1, 1)
insert into st_Inet (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Qty, FromLoc, ToLoc, BatchNo, LotNo, EffectDate, slsize, Factor) values (9, 1, 1, 'BR-6208', N'深沟球轴承', N'套', 10, 'WH01', 'WH03', '', '00', null, 1, 1)
go

insert into St_check (RefNo, NoteNo, BillDate, flag, DepartNo, PreparedBy, AcctVouchNo, Remark, Location) values (2, 'SC0603001', '2006-03-31', '2', 'D05', 'chenj', 2, N'一季度原材料仓盘点', 'WH01')
go

-- Qty is the counted quantity, diffQty counted less booked.
insert into st_checkdtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Location, BatchNo, LotNo, Qty, diffQty) values (2, 1, 1, 'OS-45628', N'骨架油封', N'个', 'WH01', '', '00', 198, -2)
insert into st_checkdtl (RefNo, LineId, SeqNo, PartNo, PartName, Unit, Location, BatchNo, LotNo, Qty, diffQty) values (2, 2, 2, 'BR-6208', N'深沟球轴承', N'套', 'WH01', '', '00', 120, 0)
go
