-- Approval records of the approved notes (the shipment went through both its levels),
-- the new import order waiting for its one level, and the operation log.

insert into Bs_BillCheckRec (BillId, RefNo, CheckLevel, Checked, CheckUser, CheckDate) values (2010, 3, 1, 1, 'wangjg', '2006-04-03')
insert into Bs_BillCheckRec (BillId, RefNo, CheckLevel, Checked, CheckUser, CheckDate) values (2020, 4, 1, 1, 'chenj', '2006-04-10')
insert into Bs_BillCheckRec (BillId, RefNo, CheckLevel, Checked, CheckUser, CheckDate) values (2010, 5, 1, 1, 'wangjg', '2006-04-12')
insert into Bs_BillCheckRec (BillId, RefNo, CheckLevel, Checked, CheckUser, CheckDate) values (2020, 6, 1, 1, 'chenj', '2006-04-18')
insert into Bs_BillCheckRec (BillId, RefNo, CheckLevel, Checked, CheckUser, CheckDate) values (1010, 7, 1, 1, 'lim', '2006-05-05')
insert into Bs_BillCheckRec (BillId, RefNo, CheckLevel, Checked, CheckUser, CheckDate) values (5020, 8, 1, 1, 'liuy', '2006-05-06')
insert into Bs_BillCheckRec (BillId, RefNo, CheckLevel, Checked, CheckUser, CheckDate) values (1020, 15, 1, 1, 'lim', '2006-05-25')
insert into Bs_BillCheckRec (BillId, RefNo, CheckLevel, Checked, CheckUser, CheckDate) values (1020, 15, 2, 1, 'wangjg', '2006-05-26')
insert into Bs_BillCheckRec (BillId, RefNo, CheckLevel, Checked, CheckUser, CheckDate) values (2010, 18, 1, 0, '', null)
go

-- OpId as in value list 2: 1 new, 2 changed, 4 approved, 6 printed. Remark is the time.
insert into Sy_Log (UserId, Computer, ModId, OpId, RefNo, NoteNo, OpDate, Remark) values ('lim', 'XS-PC01', 1, 1, 7, 'SO0605001', '2006-05-05', '14:20:03')
insert into Sy_Log (UserId, Computer, ModId, OpId, RefNo, NoteNo, OpDate, Remark) values ('lim', 'XS-PC01', 1, 4, 7, 'SO0605001', '2006-05-05', '16:41:09')
insert into Sy_Log (UserId, Computer, ModId, OpId, RefNo, NoteNo, OpDate, Remark) values ('chenj', 'CK-PC01', 3, 1, 9, 'TR0605001', '2006-05-06', '15:22:48')
insert into Sy_Log (UserId, Computer, ModId, OpId, RefNo, NoteNo, OpDate, Remark) values ('lim', 'XS-PC01', 1, 1, 15, 'SH0605001', '2006-05-25', '09:12:40')
insert into Sy_Log (UserId, Computer, ModId, OpId, RefNo, NoteNo, OpDate, Remark) values ('lim', 'XS-PC01', 1, 2, 15, 'SH0605001', '2006-05-25', '09:30:05')
insert into Sy_Log (UserId, Computer, ModId, OpId, RefNo, NoteNo, OpDate, Remark) values ('lim', 'XS-PC01', 1, 4, 15, 'SH0605001', '2006-05-25', '10:02:17')
insert into Sy_Log (UserId, Computer, ModId, OpId, RefNo, NoteNo, OpDate, Remark) values ('wangjg', 'ZJL-PC', 1, 4, 15, 'SH0605001', '2006-05-26', '08:45:51')
insert into Sy_Log (UserId, Computer, ModId, OpId, RefNo, NoteNo, OpDate, Remark) values ('lim', 'XS-PC01', 1, 6, 15, 'SH0605001', '2006-05-26', '09:05:33')
insert into Sy_Log (UserId, Computer, ModId, OpId, RefNo, NoteNo, OpDate, Remark) values ('zhangw', 'CG-PC02', 2, 1, 18, 'PO0606001', '2006-06-15', '10:10:10')
go

insert into Bs_Log (UserId, Computer, ModId, OpId, RefNo, NoteNo, OpDate, Remark) values ('lim', 'XS-PC01', 1, 1, 7, 'SO0605001', '2006-05-05', '14:20:03')
insert into Bs_Log (UserId, Computer, ModId, OpId, RefNo, NoteNo, OpDate, Remark) values ('lim', 'XS-PC01', 1, 4, 7, 'SO0605001', '2006-05-05', '16:41:09')
insert into Bs_Log (UserId, Computer, ModId, OpId, RefNo, NoteNo, OpDate, Remark) values ('chenj', 'CK-PC01', 3, 1, 9, 'TR0605001', '2006-05-06', '15:22:48')
insert into Bs_Log (UserId, Computer, ModId, OpId, RefNo, NoteNo, OpDate, Remark) values ('lim', 'XS-PC01', 1, 1, 15, 'SH0605001', '2006-05-25', '09:12:40')
insert into Bs_Log (UserId, Computer, ModId, OpId, RefNo, NoteNo, OpDate, Remark) values ('lim', 'XS-PC01', 1, 2, 15, 'SH0605001', '2006-05-25', '09:30:05')
insert into Bs_Log (UserId, Computer, ModId, OpId, RefNo, NoteNo, OpDate, Remark) values ('lim', 'XS-PC01', 1, 4, 15, 'SH0605001', '2006-05-25', '10:02:17')
insert into Bs_Log (UserId, Computer, ModId, OpId, RefNo, NoteNo, OpDate, Remark) values ('wangjg', 'ZJL-PC', 1, 4, 15, 'SH0605001', '2006-05-26', '08:45:51')
insert into Bs_Log (UserId, Computer, ModId, OpId, RefNo, NoteNo, OpDate, Remark) values ('lim', 'XS-PC01', 1, 6, 15, 'SH0605001', '2006-05-26', '09:05:33')
insert into Bs_Log (UserId, Computer, ModId, OpId, RefNo, NoteNo, OpDate, Remark) values ('zhangw', 'CG-PC02', 2, 1, 18, 'PO0606001', '2006-06-15', '10:10:10')
go
