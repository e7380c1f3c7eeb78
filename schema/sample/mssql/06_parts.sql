-- Stock locations, product codes, parts and their alternative units, price systems,
-- contract prices and purchase prices.
-- prodtype: P finished product, H semi-finished, M bought material. Prices include tax.

-- The line-side store of the assembly shop is refilled after the fact, so it may go below zero.
insert into Bs_Location (StkNo, StkName, DepartNo, AllowNeg, Effect) values ('WH01', N'原材料仓', 'D05', 0, 1)
insert into Bs_Location (StkNo, StkName, DepartNo, AllowNeg, Effect) values ('WH02', N'成品仓', 'D05', 0, 1)
insert into Bs_Location (StkNo, StkName, DepartNo, AllowNeg, Effect) values ('WH03', N'装配车间线边仓', 'D04', 1, 1)
go

insert into bs_ProdCode (ProdCode, TypeName) values ('01', N'成品减速机')
insert into bs_ProdCode (ProdCode, TypeName) values ('02', N'半成品')
insert into bs_ProdCode (ProdCode, TypeName) values ('03', N'铸件')
insert into bs_ProdCode (ProdCode, TypeName) values ('04', N'钢材')
insert into bs_ProdCode (ProdCode, TypeName) values ('05', N'轴承及标准件')
insert into bs_ProdCode (ProdCode, TypeName) values ('06', N'油品')
go

-- Batch control (bBatchProc) for castings, by foundry heat; lot control (bLotProc) for
-- bronze blanks and gear oil; the oil's lots also expire (bEffectProc); gear boxes carry
-- serial numbers. LotType 1: the newest lot is offered first.
insert into Bs_ProdList (PartNo, PartName, PartSpec, Unit, ProdCode, Alias, ShortNo, BarCode, CatType, CatType1, CatType2, CatType3, prodtype, Price, StdCost, TaxRate, MaxStk, MinPoQty, MinPur, LotType, BatchType, bLotProc, bBatchProc, bEffectProc, SerialControl) values ('WPA80-20', N'蜗轮蜗杆减速机', N'WPA80 速比1:20', N'台', '01', N'WPA80', '80A20', '6923456700011', N'减速机', N'蜗轮蜗杆', N'WP系列', N'标准品', 'P', 1850, 1150, 17, 50, 0, 0, 0, 0, 0, 0, 0, 1)
insert into Bs_ProdList (PartNo, PartName, PartSpec, Unit, ProdCode, Alias, ShortNo, BarCode, CatType, CatType1, CatType2, CatType3, prodtype, Price, StdCost, TaxRate, MaxStk, MinPoQty, MinPur, LotType, BatchType, bLotProc, bBatchProc, bEffectProc, SerialControl) values ('ZQ350-23', N'圆柱齿轮减速机', N'ZQ350 速比23.34', N'台', '01', N'ZQ350', '350Z23', '6923456700028', N'减速机', N'圆柱齿轮', N'ZQ系列', N'标准品', 'P', 6800, 4300, 17, 10, 0, 0, 0, 0, 0, 0, 0, 1)
insert into Bs_ProdList (PartNo, PartName, PartSpec, Unit, ProdCode, Alias, ShortNo, BarCode, CatType, CatType1, CatType2, CatType3, prodtype, Price, StdCost, TaxRate, MaxStk, MinPoQty, MinPur, LotType, BatchType, bLotProc, bBatchProc, bEffectProc, SerialControl) values ('WG80-ASM', N'蜗轮组件', N'WPA80用 m=4 z=40', N'套', '02', N'蜗轮', 'WG80', '', N'半成品', N'蜗轮', '', '', 'H', 520, 380, 17, 60, 0, 0, 0, 0, 0, 0, 0, 0)
insert into Bs_ProdList (PartNo, PartName, PartSpec, Unit, ProdCode, Alias, ShortNo, BarCode, CatType, CatType1, CatType2, CatType3, prodtype, Price, StdCost, TaxRate, MaxStk, MinPoQty, MinPur, LotType, BatchType, bLotProc, bBatchProc, bEffectProc, SerialControl) values ('CS-HT200-80', N'箱体铸件', N'WPA80 HT200', N'件', '03', N'箱体', 'XT80', '', N'原材料', N'铸件', '', '', 'M', 0, 180, 17, 300, 50, 50, 0, 1, 0, 1, 0, 0)
insert into Bs_ProdList (PartNo, PartName, PartSpec, Unit, ProdCode, Alias, ShortNo, BarCode, CatType, CatType1, CatType2, CatType3, prodtype, Price, StdCost, TaxRate, MaxStk, MinPoQty, MinPur, LotType, BatchType, bLotProc, bBatchProc, bEffectProc, SerialControl) values ('BZ-ZCUSN-180', N'锡青铜蜗轮坯', N'ZCuSn10Pb1 Φ180', N'件', '03', N'蜗轮坯', 'WLP180', '', N'原材料', N'铸件', '', '', 'M', 0, 82, 17, 200, 20, 20, 1, 0, 1, 0, 0, 0)
insert into Bs_ProdList (PartNo, PartName, PartSpec, Unit, ProdCode, Alias, ShortNo, BarCode, CatType, CatType1, CatType2, CatType3, prodtype, Price, StdCost, TaxRate, MaxStk, MinPoQty, MinPur, LotType, BatchType, bLotProc, bBatchProc, bEffectProc, SerialControl) values ('ST-40CR-45', N'蜗杆轴坯', N'40Cr Φ45×320', N'根', '04', N'蜗杆坯', 'WG45', '', N'原材料', N'钢材', '', '', 'M', 0, 35, 17, 400, 100, 20, 0, 0, 0, 0, 0, 0)
insert into Bs_ProdList (PartNo, PartName, PartSpec, Unit, ProdCode, Alias, ShortNo, BarCode, CatType, CatType1, CatType2, CatType3, prodtype, Price, StdCost, TaxRate, MaxStk, MinPoQty, MinPur, LotType, BatchType, bLotProc, bBatchProc, bEffectProc, SerialControl) values ('BR-6208', N'深沟球轴承', N'6208-2RS', N'套', '05', N'6208', '6208', '6901234567892', N'原材料', N'轴承', '', '', 'M', 0, 33, 17, 600, 100, 50, 0, 0, 0, 0, 0, 0)
insert into Bs_ProdList (PartNo, PartName, PartSpec, Unit, ProdCode, Alias, ShortNo, BarCode, CatType, CatType1, CatType2, CatType3, prodtype, Price, StdCost, TaxRate, MaxStk, MinPoQty, MinPur, LotType, BatchType, bLotProc, bBatchProc, bEffectProc, SerialControl) values ('BR-6208-J', N'深沟球轴承(进口)', N'6208-2RS P5', N'套', '05', N'6208进口', '6208J', '', N'原材料', N'轴承', '', '', 'M', 0, 85, 0, 200, 100, 100, 0, 0, 0, 0, 0, 0)
insert into Bs_ProdList (PartNo, PartName, PartSpec, Unit, ProdCode, Alias, ShortNo, BarCode, CatType, CatType1, CatType2, CatType3, prodtype, Price, StdCost, TaxRate, MaxStk, MinPoQty, MinPur, LotType, BatchType, bLotProc, bBatchProc, bEffectProc, SerialControl) values ('OS-45628', N'骨架油封', N'TC45×62×8', N'个', '05', N'油封', 'TC45', '', N'原材料', N'密封件', '', '', 'M', 0, 1.05, 17, 2000, 500, 100, 0, 0, 0, 0, 0, 0)
insert into Bs_ProdList (PartNo, PartName, PartSpec, Unit, ProdCode, Alias, ShortNo, BarCode, CatType, CatType1, CatType2, CatType3, prodtype, Price, StdCost, TaxRate, MaxStk, MinPoQty, MinPur, LotType, BatchType, bLotProc, bBatchProc, bEffectProc, SerialControl) values ('OIL-220', N'工业齿轮油', N'L-CKC220', N'升', '06', N'齿轮油', 'CKC220', '', N'辅料', N'油品', '', '', 'M', 0, 12.5, 17, 720, 180, 18, 0, 0, 1, 0, 1, 0)
insert into Bs_ProdList (PartNo, PartName, PartSpec, Unit, ProdCode, Alias, ShortNo, BarCode, CatType, CatType1, CatType2, CatType3, prodtype, Price, StdCost, TaxRate, MaxStk, MinPoQty, MinPur, LotType, BatchType, bLotProc, bBatchProc, bEffectProc, SerialControl) values ('BT-M12-40', N'六角头螺栓', N'M12×40 8.8级', N'个', '05', N'螺栓', 'M1240', '', N'原材料', N'标准件', '', '', 'M', 0, 0.35, 17, 5000, 1000, 500, 0, 0, 0, 0, 0, 0)
go

-- A line in an alternative unit holds ExRate of the part's unit per Factor of its own:
-- its quantity times ExRate over Factor is in the part's unit.
insert into Bs_PartUnit (PartNo, Unit, ExRate, Factor) values ('ST-40CR-45', N'捆', 20, 1)
insert into Bs_PartUnit (PartNo, Unit, ExRate, Factor) values ('BR-6208', N'箱', 50, 1)
insert into Bs_PartUnit (PartNo, Unit, ExRate, Factor) values ('OS-45628', N'包', 100, 1)
insert into Bs_PartUnit (PartNo, Unit, ExRate, Factor) values ('OIL-220', N'桶', 18, 1)
go

insert into bs_PriceSys (PriceSysNo, PriceSysName) values (1, N'一级代理价')
insert into bs_PriceSys (PriceSysNo, PriceSysName) values (2, N'二级经销价')
insert into bs_PriceSys (PriceSysNo, PriceSysName) values (3, N'出口价')
go

insert into bs_ProdPriceSys (ProdNo, PriceSysNo, Price, taxflag) values ('WPA80-20', 1, 1750, 1)
insert into bs_ProdPriceSys (ProdNo, PriceSysNo, Price, taxflag) values ('WPA80-20', 2, 1800, 1)
insert into bs_ProdPriceSys (ProdNo, PriceSysNo, Price, taxflag) values ('WPA80-20', 3, 1580, 0)
insert into bs_ProdPriceSys (ProdNo, PriceSysNo, Price, taxflag) values ('ZQ350-23', 1, 6600, 1)
insert into bs_ProdPriceSys (ProdNo, PriceSysNo, Price, taxflag) values ('ZQ350-23', 2, 6700, 1)
insert into bs_ProdPriceSys (ProdNo, PriceSysNo, Price, taxflag) values ('ZQ350-23', 3, 5800, 0)
go

insert into bs_CustPrice (CustNo, PartNo, Price, taxFlag, TaxRate) values ('C001', 'WPA80-20', 1700, 1, 17)
insert into bs_CustPrice (CustNo, PartNo, Price, taxFlag, TaxRate) values ('C001', 'ZQ350-23', 6800, 1, 17)
go

insert into bs_PuPart (VendNo, PartNo, Price, TaxFlag, TaxRate, NeedIqc) values ('V001', 'CS-HT200-80', 210, 1, 17, 1)
insert into bs_PuPart (VendNo, PartNo, Price, TaxFlag, TaxRate, NeedIqc) values ('V001', 'BZ-ZCUSN-180', 95, 1, 17, 1)
insert into bs_PuPart (VendNo, PartNo, Price, TaxFlag, TaxRate, NeedIqc) values ('V002', 'ST-40CR-45', 40.95, 1, 17, 0)
insert into bs_PuPart (VendNo, PartNo, Price, TaxFlag, TaxRate, NeedIqc) values ('V003', 'BR-6208', 38.5, 1, 17, 0)
insert into bs_PuPart (VendNo, PartNo, Price, TaxFlag, TaxRate, NeedIqc) values ('V003', 'OS-45628', 1.2, 1, 17, 0)
insert into bs_PuPart (VendNo, PartNo, Price, TaxFlag, TaxRate, NeedIqc) values ('V004', 'BR-6208-J', 1200, 0, 0, 1)
go
