-- Stock as the notes above leave it: the movement ledger, on-hand per part, batch, lot
-- and location, the lots with their effective dates, serial numbers in stock and the
-- month-end costs. On-hand is what the ledger took in less what it gave out.

-- One ledger row per stock line of a posted note, in the part's unit: batchType I in,
-- O out, C lost in a count. A transfer line gives one row out and one row in.
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (3010, 1, 1, 'CS-HT200-80', 'WH01', 'B051220', 'I', '00', 30, '2006-01-05')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (3010, 1, 2, 'BZ-ZCUSN-180', 'WH01', '', 'I', 'L0511A', 25, '2006-01-05')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (3010, 1, 3, 'ST-40CR-45', 'WH01', '', 'I', '00', 60, '2006-01-05')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (3010, 1, 4, 'BR-6208', 'WH01', '', 'I', '00', 120, '2006-01-05')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (3010, 1, 5, 'OS-45628', 'WH01', '', 'I', '00', 200, '2006-01-05')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (3010, 1, 6, 'OIL-220', 'WH01', '', 'I', 'L0512B', 180, '2006-01-05')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (3010, 1, 7, 'OIL-220', 'WH01', '', 'I', 'L0507A', 18, '2006-01-05')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (3010, 1, 8, 'BT-M12-40', 'WH03', '', 'I', '00', 150, '2006-01-05')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (3010, 1, 9, 'WG80-ASM', 'WH01', '', 'I', '00', 30, '2006-01-05')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (3010, 1, 10, 'ZQ350-23', 'WH02', '', 'I', '00', 3, '2006-01-05')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (3010, 1, 11, 'WPA80-20', 'WH02', '', 'I', '00', 5, '2006-01-05')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (3400, 2, 1, 'OS-45628', 'WH01', '', 'C', '00', 2, '2006-03-31')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (2020, 4, 1, 'CS-HT200-80', 'WH01', 'B060410', 'I', '00', 100, '2006-04-10')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (2020, 4, 2, 'BZ-ZCUSN-180', 'WH01', '', 'I', 'L0604A', 40, '2006-04-10')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (2020, 6, 1, 'BR-6208', 'WH01', '', 'I', '00', 200, '2006-04-18')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (2020, 6, 2, 'OS-45628', 'WH01', '', 'I', '00', 500, '2006-04-18')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (3130, 9, 1, 'BR-6208', 'WH01', '', 'O', '00', 10, '2006-05-06')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (3130, 9, 1, 'BR-6208', 'WH03', '', 'I', '00', 10, '2006-05-06')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (6040, 10, 1, 'CS-HT200-80', 'WH01', 'B051220', 'O', '00', 20, '2006-05-08')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (6040, 10, 2, 'WG80-ASM', 'WH01', '', 'O', '00', 20, '2006-05-08')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (6040, 10, 3, 'ST-40CR-45', 'WH01', '', 'O', '00', 20, '2006-05-08')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (6040, 10, 4, 'BR-6208', 'WH01', '', 'O', '00', 40, '2006-05-08')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (6040, 10, 5, 'OS-45628', 'WH01', '', 'O', '00', 40, '2006-05-08')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (6040, 10, 6, 'OIL-220', 'WH01', '', 'O', 'L0512B', 30, '2006-05-08')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (6040, 10, 7, 'BT-M12-40', 'WH03', '', 'O', '00', 160, '2006-05-08')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (6060, 11, 1, 'BR-6208', 'WH03', '', 'O', '00', 2, '2006-05-12')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (6050, 12, 1, 'OS-45628', 'WH01', '', 'I', '00', 1, '2006-05-18')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (6080, 13, 1, 'WPA80-20', 'WH02', '', 'I', '00', 12, '2006-05-20')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (1020, 15, 1, 'WPA80-20', 'WH02', '', 'O', '00', 10, '2006-05-25')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (1020, 15, 2, 'ZQ350-23', 'WH02', '', 'O', '00', 2, '2006-05-25')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (1020, 15, 3, 'OIL-220', 'WH01', '', 'O', 'L0512B', 18, '2006-05-25')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (1030, 19, 1, 'WPA80-20', 'WH02', '', 'I', '00', 1, '2006-06-16')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (2030, 20, 1, 'OS-45628', 'WH01', '', 'O', '00', 20, '2006-06-19')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (2110, 21, 1, 'ST-40CR-45', 'WH01', '', 'I', '00', 40, '2006-06-20')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (1610, 24, 1, 'WPA80-20', 'WH02', '', 'O', '00', 2, '2006-06-26')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (2120, 25, 1, 'ST-40CR-45', 'WH01', '', 'O', '00', 20, '2006-06-27')
insert into st_partRec (BillId, RefNo, LineId, PartNo, Location, BatchNo, batchType, LotNo, Qty, RecDate) values (1620, 26, 1, 'WPA80-20', 'WH02', '', 'I', '00', 1, '2006-06-28')
go

insert into St_onhand (PartNo, BatchNo, LotNo, Location, Qty) values ('CS-HT200-80', 'B051220', '00', 'WH01', 10)
insert into St_onhand (PartNo, BatchNo, LotNo, Location, Qty) values ('CS-HT200-80', 'B060410', '00', 'WH01', 100)
insert into St_onhand (PartNo, BatchNo, LotNo, Location, Qty) values ('BZ-ZCUSN-180', '', 'L0511A', 'WH01', 25)
insert into St_onhand (PartNo, BatchNo, LotNo, Location, Qty) values ('BZ-ZCUSN-180', '', 'L0604A', 'WH01', 40)
insert into St_onhand (PartNo, BatchNo, LotNo, Location, Qty) values ('ST-40CR-45', '', '00', 'WH01', 60)
insert into St_onhand (PartNo, BatchNo, LotNo, Location, Qty) values ('BR-6208', '', '00', 'WH01', 270)
insert into St_onhand (PartNo, BatchNo, LotNo, Location, Qty) values ('BR-6208', '', '00', 'WH03', 8)
insert into St_onhand (PartNo, BatchNo, LotNo, Location, Qty) values ('OS-45628', '', '00', 'WH01', 639)
insert into St_onhand (PartNo, BatchNo, LotNo, Location, Qty) values ('OIL-220', '', 'L0512B', 'WH01', 132)
insert into St_onhand (PartNo, BatchNo, LotNo, Location, Qty) values ('OIL-220', '', 'L0507A', 'WH01', 18)
insert into St_onhand (PartNo, BatchNo, LotNo, Location, Qty) values ('BT-M12-40', '', '00', 'WH03', -10)
insert into St_onhand (PartNo, BatchNo, LotNo, Location, Qty) values ('WG80-ASM', '', '00', 'WH01', 10)
insert into St_onhand (PartNo, BatchNo, LotNo, Location, Qty) values ('ZQ350-23', '', '00', 'WH02', 1)
insert into St_onhand (PartNo, BatchNo, LotNo, Location, Qty) values ('WPA80-20', '', '00', 'WH02', 7)
go

-- The same rows with the lot's effective date and the day the batch came in, for the pickers.
insert into st_OnHandAndBatchNoAndLotNo (PartNo, BatchNo, LotNo, Location, Qty, EffectDate, BatchNoDate) values ('CS-HT200-80', 'B051220', '00', 'WH01', 10, null, '2005-12-20')
insert into st_OnHandAndBatchNoAndLotNo (PartNo, BatchNo, LotNo, Location, Qty, EffectDate, BatchNoDate) values ('CS-HT200-80', 'B060410', '00', 'WH01', 100, null, '2006-04-10')
insert into st_OnHandAndBatchNoAndLotNo (PartNo, BatchNo, LotNo, Location, Qty, EffectDate, BatchNoDate) values ('BZ-ZCUSN-180', '', 'L0511A', 'WH01', 25, null, null)
insert into st_OnHandAndBatchNoAndLotNo (PartNo, BatchNo, LotNo, Location, Qty, EffectDate, BatchNoDate) values ('BZ-ZCUSN-180', '', 'L0604A', 'WH01', 40, null, null)
insert into st_OnHandAndBatchNoAndLotNo (PartNo, BatchNo, LotNo, Location, Qty, EffectDate, BatchNoDate) values ('ST-40CR-45', '', '00', 'WH01', 60, null, null)
insert into st_OnHandAndBatchNoAndLotNo (PartNo, BatchNo, LotNo, Location, Qty, EffectDate, BatchNoDate) values ('BR-6208', '', '00', 'WH01', 270, null, null)
insert into st_OnHandAndBatchNoAndLotNo (PartNo, BatchNo, LotNo, Location, Qty, EffectDate, BatchNoDate) values ('BR-6208', '', '00', 'WH03', 8, null, null)
insert into st_OnHandAndBatchNoAndLotNo (PartNo, BatchNo, LotNo, Location, Qty, EffectDate, BatchNoDate) values ('OS-45628', '', '00', 'WH01', 639, null, null)
insert into st_OnHandAndBatchNoAndLotNo (PartNo, BatchNo, LotNo, Location, Qty, EffectDate, BatchNoDate) values ('OIL-220', '', 'L0512B', 'WH01', 132, '2007-12-31', null)
insert into st_OnHandAndBatchNoAndLotNo (PartNo, BatchNo, LotNo, Location, Qty, EffectDate, BatchNoDate) values ('OIL-220', '', 'L0507A', 'WH01', 18, '2006-05-31', null)
insert into st_OnHandAndBatchNoAndLotNo (PartNo, BatchNo, LotNo, Location, Qty, EffectDate, BatchNoDate) values ('BT-M12-40', '', '00', 'WH03', -10, null, null)
insert into st_OnHandAndBatchNoAndLotNo (PartNo, BatchNo, LotNo, Location, Qty, EffectDate, BatchNoDate) values ('WG80-ASM', '', '00', 'WH01', 10, null, null)
insert into st_OnHandAndBatchNoAndLotNo (PartNo, BatchNo, LotNo, Location, Qty, EffectDate, BatchNoDate) values ('ZQ350-23', '', '00', 'WH02', 1, null, null)
insert into st_OnHandAndBatchNoAndLotNo (PartNo, BatchNo, LotNo, Location, Qty, EffectDate, BatchNoDate) values ('WPA80-20', '', '00', 'WH02', 7, null, null)
go

-- Bronze blanks do not expire; the gear oil keeps eighteen months, and lot L0507A ran out
-- at the end of May.
insert into st_Lot (PartNo, LotNo, EffectDate) values ('BZ-ZCUSN-180', 'L0511A', null)
insert into st_Lot (PartNo, LotNo, EffectDate) values ('BZ-ZCUSN-180', 'L0604A', null)
insert into st_Lot (PartNo, LotNo, EffectDate) values ('OIL-220', 'L0512B', '2007-12-31')
insert into st_Lot (PartNo, LotNo, EffectDate) values ('OIL-220', 'L0507A', '2006-05-31')
go

-- Gear boxes left in the finished goods store: the shipment took the five of December,
-- the first five of the job, ZQ0511001 and ZQ0511002; WPA0512001 came back damaged;
-- WPA0605006 and WPA0605007 went out on consignment, and WPA0605007 came back.
insert into St_PartSerial (PartNo, SerialNo, Location) values ('WPA80-20', 'WPA0512001', 'WH02')
insert into St_PartSerial (PartNo, SerialNo, Location) values ('WPA80-20', 'WPA0605007', 'WH02')
insert into St_PartSerial (PartNo, SerialNo, Location) values ('WPA80-20', 'WPA0605008', 'WH02')
insert into St_PartSerial (PartNo, SerialNo, Location) values ('WPA80-20', 'WPA0605009', 'WH02')
insert into St_PartSerial (PartNo, SerialNo, Location) values ('WPA80-20', 'WPA0605010', 'WH02')
insert into St_PartSerial (PartNo, SerialNo, Location) values ('WPA80-20', 'WPA0605011', 'WH02')
insert into St_PartSerial (PartNo, SerialNo, Location) values ('WPA80-20', 'WPA0605012', 'WH02')
insert into St_PartSerial (PartNo, SerialNo, Location) values ('ZQ350-23', 'ZQ0511003', 'WH02')
go

-- Month-end unit costs; a note is costed at the latest month present (March).
insert into st_MonthPartCost (Period, PartNo, cost) values (200602, 'WPA80-20', 1160)
insert into st_MonthPartCost (Period, PartNo, cost) values (200602, 'ZQ350-23', 4320)
insert into st_MonthPartCost (Period, PartNo, cost) values (200602, 'WG80-ASM', 382)
insert into st_MonthPartCost (Period, PartNo, cost) values (200602, 'CS-HT200-80', 178)
insert into st_MonthPartCost (Period, PartNo, cost) values (200603, 'WPA80-20', 1180)
insert into st_MonthPartCost (Period, PartNo, cost) values (200603, 'ZQ350-23', 4350)
insert into st_MonthPartCost (Period, PartNo, cost) values (200603, 'WG80-ASM', 385)
insert into st_MonthPartCost (Period, PartNo, cost) values (200603, 'CS-HT200-80', 180)
insert into st_MonthPartCost (Period, PartNo, cost) values (200603, 'BZ-ZCUSN-180', 82)
insert into st_MonthPartCost (Period, PartNo, cost) values (200603, 'ST-40CR-45', 35)
insert into st_MonthPartCost (Period, PartNo, cost) values (200603, 'BR-6208', 33)
insert into st_MonthPartCost (Period, PartNo, cost) values (200603, 'OS-45628', 1.05)
insert into st_MonthPartCost (Period, PartNo, cost) values (200603, 'OIL-220', 12.5)
insert into st_MonthPartCost (Period, PartNo, cost) values (200603, 'BT-M12-40', 0.35)
go
