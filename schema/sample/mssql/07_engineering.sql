-- Work centres, crews, product versions and bills of materials.

insert into En_WorkCent (WcNo, WcName, DepartNo, Pqc) values ('WC01', N'机加工车间', 'D04', 0)
insert into En_WorkCent (WcNo, WcName, DepartNo, Pqc) values ('WC02', N'热处理(外协)', 'D04', 1)
insert into En_WorkCent (WcNo, WcName, DepartNo, Pqc) values ('WC03', N'装配车间', 'D04', 0)
insert into En_WorkCent (WcNo, WcName, DepartNo, Pqc) values ('WC04', N'试验检测', 'D07', 1)
go

insert into En_Equip (EquipNo, CName, StkNo, DepartNo, bSubType) values ('EQ01', N'数控车床班组', 'WH03', 'D04', 0)
insert into En_Equip (EquipNo, CName, StkNo, DepartNo, bSubType) values ('EQ02', N'滚齿班组', 'WH03', 'D04', 0)
insert into En_Equip (EquipNo, CName, StkNo, DepartNo, bSubType) values ('EQ03', N'装配一班', 'WH03', 'D04', 0)
insert into En_Equip (EquipNo, CName, StkNo, DepartNo, bSubType) values ('EQ04', N'武进热处理外协组', 'WH01', 'D03', 1)
insert into En_Equip (EquipNo, CName, StkNo, DepartNo, bSubType) values ('EQ05', N'试验台班组', 'WH02', 'D07', 0)
go

insert into en_WcEquip (WcNo, EquipNo, SchSeqNo) values ('WC01', 'EQ01', 1)
insert into en_WcEquip (WcNo, EquipNo, SchSeqNo) values ('WC01', 'EQ02', 2)
insert into en_WcEquip (WcNo, EquipNo, SchSeqNo) values ('WC02', 'EQ04', 1)
insert into en_WcEquip (WcNo, EquipNo, SchSeqNo) values ('WC03', 'EQ03', 1)
insert into en_WcEquip (WcNo, EquipNo, SchSeqNo) values ('WC04', 'EQ05', 1)
go

-- Version B of the worm gear box takes imported bearings; the spur gear box has no bill yet.
insert into En_ProdVersion (ProdNo, Version) values ('WPA80-20', 'A')
insert into En_ProdVersion (ProdNo, Version) values ('WPA80-20', 'B')
insert into En_ProdVersion (ProdNo, Version) values ('ZQ350-23', 'A')
insert into En_ProdVersion (ProdNo, Version) values ('WG80-ASM', 'A')
go

insert into en_bom (ProdNo, Version, LineId, CompNo, CVersion, Qtyper, Factor, WcNo) values ('WPA80-20', 'A', 1, 'CS-HT200-80', '', 1, 1, 'WC03')
insert into en_bom (ProdNo, Version, LineId, CompNo, CVersion, Qtyper, Factor, WcNo) values ('WPA80-20', 'A', 2, 'WG80-ASM', 'A', 1, 1, 'WC03')
insert into en_bom (ProdNo, Version, LineId, CompNo, CVersion, Qtyper, Factor, WcNo) values ('WPA80-20', 'A', 3, 'ST-40CR-45', '', 1, 1, 'WC01')
insert into en_bom (ProdNo, Version, LineId, CompNo, CVersion, Qtyper, Factor, WcNo) values ('WPA80-20', 'A', 4, 'BR-6208', '', 2, 1, 'WC03')
insert into en_bom (ProdNo, Version, LineId, CompNo, CVersion, Qtyper, Factor, WcNo) values ('WPA80-20', 'A', 5, 'OS-45628', '', 2, 1, 'WC03')
insert into en_bom (ProdNo, Version, LineId, CompNo, CVersion, Qtyper, Factor, WcNo) values ('WPA80-20', 'A', 6, 'OIL-220', '', 1.5, 1, 'WC03')
insert into en_bom (ProdNo, Version, LineId, CompNo, CVersion, Qtyper, Factor, WcNo) values ('WPA80-20', 'A', 7, 'BT-M12-40', '', 8, 1, 'WC03')
insert into en_bom (ProdNo, Version, LineId, CompNo, CVersion, Qtyper, Factor, WcNo) values ('WPA80-20', 'B', 1, 'CS-HT200-80', '', 1, 1, 'WC03')
insert into en_bom (ProdNo, Version, LineId, CompNo, CVersion, Qtyper, Factor, WcNo) values ('WPA80-20', 'B', 2, 'WG80-ASM', 'A', 1, 1, 'WC03')
insert into en_bom (ProdNo, Version, LineId, CompNo, CVersion, Qtyper, Factor, WcNo) values ('WPA80-20', 'B', 3, 'ST-40CR-45', '', 1, 1, 'WC01')
insert into en_bom (ProdNo, Version, LineId, CompNo, CVersion, Qtyper, Factor, WcNo) values ('WPA80-20', 'B', 4, 'BR-6208-J', '', 2, 1, 'WC03')
insert into en_bom (ProdNo, Version, LineId, CompNo, CVersion, Qtyper, Factor, WcNo) values ('WPA80-20', 'B', 5, 'OS-45628', '', 2, 1, 'WC03')
insert into en_bom (ProdNo, Version, LineId, CompNo, CVersion, Qtyper, Factor, WcNo) values ('WPA80-20', 'B', 6, 'OIL-220', '', 1.5, 1, 'WC03')
insert into en_bom (ProdNo, Version, LineId, CompNo, CVersion, Qtyper, Factor, WcNo) values ('WPA80-20', 'B', 7, 'BT-M12-40', '', 8, 1, 'WC03')
insert into en_bom (ProdNo, Version, LineId, CompNo, CVersion, Qtyper, Factor, WcNo) values ('WG80-ASM', 'A', 1, 'BZ-ZCUSN-180', '', 1, 1, 'WC01')
go
