-- Customers, vendors, and the sales staff's prospects, tasks and competitors.
-- CustType 0 is a customer, 1 a prospect of the sales staff (ObjectType 1: a partner);
-- flag 'X' marks a customer no longer dealt with. TradeType 0 home, 1 export.
-- PriceType names the price system a customer buys at; -1 none, list price.

insert into Bs_Customer (CustNo, CustName, ShortName, ShortKey, TaxId, SalesId, DepartNo, Currency, PayCode, PayType, TradeType, PriceType, Coeffi, SaleByTax, Credit, RegAddr, CustType, ObjectType, Area, flag, Sumday, Payday, ShipDays) values ('C001', N'南京江宁起重运输设备有限公司', N'江宁起重', 'JNQZ', '320121134900123', 'E002', 'D02', 'RMB', 3, 1, 0, 1, 1, 1, 500000, N'江苏省南京市江宁区天元西路218号', 0, 0, N'江苏', '', 25, 10, 2)
insert into Bs_Customer (CustNo, CustName, ShortName, ShortKey, TaxId, SalesId, DepartNo, Currency, PayCode, PayType, TradeType, PriceType, Coeffi, SaleByTax, Credit, RegAddr, CustType, ObjectType, Area, flag, Sumday, Payday, ShipDays) values ('C002', N'上海港通起重设备有限公司', N'上海港通', 'SHGT', '310115703245678', 'E002', 'D02', 'RMB', 4, 2, 0, 2, 0.95, 1, 300000, N'上海市浦东新区外高桥港区杨高北路88号', 0, 0, N'上海', '', 25, 10, 3)
insert into Bs_Customer (CustNo, CustName, ShortName, ShortKey, TaxId, SalesId, DepartNo, Currency, PayCode, PayType, TradeType, PriceType, Coeffi, SaleByTax, Credit, RegAddr, CustType, ObjectType, Area, flag, Sumday, Payday, ShipDays) values ('C003', N'无锡宏达输送机械厂', N'无锡宏达', 'WXHD', '320211250301456', 'E002', 'D02', 'RMB', 2, 0, 0, -1, 1, 1, 100000, N'江苏省无锡市滨湖区太湖西路16号', 0, 0, N'江苏', '', 0, 0, 1)
insert into Bs_Customer (CustNo, CustName, ShortName, ShortKey, TaxId, SalesId, DepartNo, Currency, PayCode, PayType, TradeType, PriceType, Coeffi, SaleByTax, Credit, RegAddr, CustType, ObjectType, Area, flag, Sumday, Payday, ShipDays) values ('C004', N'苏州金陵环保设备有限公司', N'苏州金陵', 'SZJL', '320506608712345', 'E008', 'D02', 'RMB', 1, 0, 0, -1, 1, 1, 0, N'江苏省苏州市吴中区东吴南路50号', 0, 0, N'江苏', 'X', 0, 0, 1)
insert into Bs_Customer (CustNo, CustName, ShortName, ShortKey, TaxId, SalesId, DepartNo, Currency, PayCode, PayType, TradeType, PriceType, Coeffi, SaleByTax, Credit, RegAddr, CustType, ObjectType, Area, flag, Sumday, Payday, ShipDays) values ('C005', N'汉堡传动技术贸易公司', N'汉堡传动', 'HBCD', '', 'E002', 'D02', 'EUR', 2, 0, 1, 3, 1, 0, 50000, N'德国汉堡市港口区', 0, 0, N'欧洲', '', 0, 0, 30)
insert into Bs_Customer (CustNo, CustName, ShortName, ShortKey, TaxId, SalesId, DepartNo, Currency, PayCode, PayType, TradeType, PriceType, Coeffi, SaleByTax, Credit, RegAddr, CustType, ObjectType, Area, flag, Sumday, Payday, ShipDays) values ('P001', N'常州天宁起重机械厂', N'天宁起重', 'CZTN', '320402137654321', 'E002', 'D02', 'RMB', 3, 1, 0, 1, 1, 1, 0, N'江苏省常州市天宁区青洋北路9号', 1, 1, N'江苏', '', 25, 10, 1)
go

insert into Bs_Vendor (VendNo, VendName, ShortName, ShortKey, TaxId, Buyer, DepartNo, Currency, PayCode, PayType, TradeType, SaleByTax, RegAddr, flag) values ('V001', N'常州武进精密铸造有限公司', N'武进铸造', 'WJZZ', '320483250187654', 'E003', 'D03', 'RMB', 3, 1, 0, 1, N'江苏省常州市武进区湖塘镇长虹路3号', '')
insert into Bs_Vendor (VendNo, VendName, ShortName, ShortKey, TaxId, Buyer, DepartNo, Currency, PayCode, PayType, TradeType, SaleByTax, RegAddr, flag) values ('V002', N'江阴澄江金属材料有限公司', N'澄江金属', 'CJJS', '320281742398765', 'E003', 'D03', 'RMB', 2, 0, 0, 1, N'江苏省江阴市滨江东路297号', '')
insert into Bs_Vendor (VendNo, VendName, ShortName, ShortKey, TaxId, Buyer, DepartNo, Currency, PayCode, PayType, TradeType, SaleByTax, RegAddr, flag) values ('V003', N'无锡惠山轴承销售有限公司', N'惠山轴承', 'HSZC', '320202135792468', 'E003', 'D03', 'RMB', 3, 1, 0, 1, N'江苏省无锡市崇安区通扬路120号', '')
insert into Bs_Vendor (VendNo, VendName, ShortName, ShortKey, TaxId, Buyer, DepartNo, Currency, PayCode, PayType, TradeType, SaleByTax, RegAddr, flag) values ('V004', N'大阪北堺部品株式会社', N'北堺部品', 'BJBP', '', 'E003', 'D03', 'JPY', 2, 0, 1, 0, N'日本大阪府堺市北区', '')
go

insert into Crm_SalePeriod (SalePeriodNo, Description, SalePeriodRate) values ('01', N'初步接洽', 10)
insert into Crm_SalePeriod (SalePeriodNo, Description, SalePeriodRate) values ('02', N'需求确认', 30)
insert into Crm_SalePeriod (SalePeriodNo, Description, SalePeriodRate) values ('03', N'方案报价', 50)
insert into Crm_SalePeriod (SalePeriodNo, Description, SalePeriodRate) values ('04', N'商务谈判', 70)
insert into Crm_SalePeriod (SalePeriodNo, Description, SalePeriodRate) values ('05', N'签订合同', 100)
go

insert into crm_TaskPlan (TaskId, TaskSub, CustNo, DueDate, TaskBy, Finished) values (1, N'回访江宁起重，确认WPA80减速机第二批交货时间', 'C001', '2006-06-05', 'E002', 1)
insert into crm_TaskPlan (TaskId, TaskSub, CustNo, DueDate, TaskBy, Finished) values (2, N'拜访天宁起重，了解下半年起升机构减速机需求', 'P001', '2006-06-20', 'E002', 0)
insert into crm_TaskPlan (TaskId, TaskSub, CustNo, DueDate, TaskBy, Finished) values (3, N'向上海港通寄送ZQ350样本及报价', 'C002', '2006-06-28', 'E002', 0)
go

insert into Crm_CompetitorList (CompId, ShortName, Area, Industry) values ('CP01', N'苏北传动', N'江苏', N'通用设备制造业')
insert into Crm_CompetitorList (CompId, ShortName, Area, Industry) values ('CP02', N'浙东齿轮', N'浙江', N'通用设备制造业')
go
