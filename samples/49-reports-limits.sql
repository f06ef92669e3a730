-- Reports 901 to 999: what happens at the limits and with faulty definitions.

insert into tblVorekReport (ID, Title, SQLQuery) values
  (901, N'گزارش بدون سطر', N'Select tblSaleInvoice.Code as [شماره فاكتور], tblSaleInvoice.FarsiInvoiceDate as [تاريخ فاكتور], tblSaleInvoice.NetValue as [مبلغ خالص] from tblSaleInvoice Where tblSaleInvoice.FarsiInvoiceDate > ''1500/01/01'''),
  (902, N'تقسيم بر صفر', N'Select tblSaleInvoice.Code as [شماره فاكتور], tblSaleInvoice.NetValue / (tblSaleInvoice.DiscountValue - tblSaleInvoice.DiscountValue) as [نسبت] from tblSaleInvoice'),
  (903, N'جدول ناموجود', N'Select * from tblSaleWarehouse'),
  (904, N'گزارش بدون متن', N''),
  (906, N'همه انواع با مقدار تهي', N'Select cast(null as int) as IntValue, cast(null as bigint) as BigValue, cast(null as decimal(18,3)) as DecimalValue, cast(null as float) as FloatValue, cast(null as money) as MoneyValue, cast(null as nvarchar(20)) as TextValue, cast(null as datetime) as DateValue, cast(null as bit) as BitValue, cast(null as int) as [زمان]'),
  (907, N'همه انواع', N'Select cast(7 as int) as IntValue, cast(9000000000 as bigint) as BigValue, cast(12.500 as decimal(18,3)) as DecimalValue, cast(0.25 as float) as FloatValue, cast(-1234567.5 as money) as MoneyValue, cast(N''متن'' as nvarchar(20)) as TextValue, cast(''2025-03-21'' as datetime) as DateValue, cast(1 as bit) as BitValue, cast(125 as int) as [زمان]'),
  (908, N'ستون نامهاي تهي', N'Select tblGoods.Code as '''', tblGoods.Name as '''' from tblGoods'),
  (911, N'چيدمان ناپيوسته', N'Select tblSaleInvoice.Code as [شماره], tblSaleInvoice.FarsiInvoiceDate as [تاريخ], tblSaleInvoice.NetValue as [مبلغ], tblSaleInvoice.Description as [شرح], tblSaleInvoice.InvoiceTime as [زمان], tblSaleInvoice.CustomerID as [مشتري] from tblSaleInvoice Where tblSaleInvoice.ID < 10'),
  (912, N'چيدمان بيش از ستونها', N'Select tblGoods.Code as [كد], tblGoods.Price as [قيمت] from tblGoods Where tblGoods.ID < 10')
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width, MergeType, TransposeType, MakeSum) values
  (911, 1, 4, 900, 0, 0, 0), (911, 2, 4, 1100, 0, 0, 0), (911, 5, 7, 3000, 0, 0, 0),
  (912, 1, 4, 900, 0, 0, 0), (912, 2, null, null, null, null, null), (912, 9, 7, 3000, 0, 0, 0)
GO

-- Not a tree: MakeTree counts for the value 1 alone, and the result must have ID and PARENTID.
insert into tblVorekReport (ID, Title, SQLQuery, MakeTree) values
  (913, N'درخت با مقدار 2', N'Select tblGoodsGroup.ID, tblGoodsGroup.ParentID, tblGoodsGroup.Name as [نام] from tblGoodsGroup', 2),
  (914, N'درخت بدون والد', N'Select tblGoodsGroup.ID, tblGoodsGroup.Name as [نام] from tblGoodsGroup', 1)
GO

-- Permitted to a role that nobody holds: administrators alone see it.
insert into tblVorekReport (ID, Title, SQLQuery) values
  (915, N'گزارش محرمانه', N'Select tblUser.ID, tblUser.FullName as [نام] from tblUser')
GO
insert into tblRolePermissionOnReport (ReportID, RoleID) values (915, 99)
GO

-- Cross and folded tables whose roles are missing, a key without rows, a calculated column that
-- can't be calculated.
insert into tblVorekReport (ID, Title, SQLQuery, MakeTranspose, MakeMerge) values
  (916, N'جدول متقاطع بدون ستون', N'Select tblGoods.Unit as [واحد], tblGoods.Price as [قيمت] from tblGoods', 1, 0),
  (917, N'ادغام بدون كليد', N'Select tblGoods.Unit as [واحد], tblGoods.Price as [قيمت] from tblGoods', 0, 1),
  (918, N'ستون محاسباتي نادرست', N'Select tblGoods.Code as [كد], tblGoods.Price as [قيمت], 0 as [صفر] from tblGoods Where tblGoods.ID < 6', 0, 0)
GO
insert into tblVorekReportExpression (ReportID, ColumnNumber, Name, GeneralExpression) values
  (918, 1, N'تقسيم بر صفر', 'C2/C3'), (918, 2, N'ناتمام', 'C2+(C1'), (918, 3, N'درست', 'C2*2')
GO

-- Row security that can't work: the query groups its rows.
insert into tblVorekReport (ID, Title, SQLQuery, MakeSecure, FormTypeID) values
  (919, N'امنيت در گزارش گروهي', N'Select tblSaleInvoice.ID, count(*) as [تعداد] from tblSaleInvoice group by tblSaleInvoice.ID', 1, 901)
GO

-- A procedure that leaves nothing: no rows, no reading query, no table of its name.
insert into tblVorekReport (ID, Title, SQLQuery, SQLSP, IsStoredProcedure) values
  (921, N'روال بدون نتيجه', N'', N'spSaleNothing', 1)
GO
