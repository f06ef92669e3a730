-- Reports 201 to 299: invoices, their lines, returns.

insert into tblVorekReport (ID, Title, Notes, SQLQuery, FormTypeID) values
  (201, N'فهرست فاكتورهاي فروش', N'همه فاكتورها به ترتيب شماره',
   N'Select tblSaleInvoice.ID as ''مشخصه'', tblSaleInvoice.Code as ''شماره فاكتور'', tblSaleInvoice.FarsiInvoiceDate as ''تاريخ فاكتور'', tblSaleCustomer.Name as ''نام مشتري'', tblSalePromoter.FullName as ''بازارياب'', tblSaleInvoice.GrossValue as ''مبلغ ناخالص'', tblSaleInvoice.DiscountValue as ''تخفيف'', tblSaleInvoice.TaxValue as ''ماليات'', tblSaleInvoice.NetValue as ''مبلغ خالص'', tblSaleInvoice.InvoiceTime as ''زمان ثبت'', tblSaleInvoice.Description as ''شرح'' from tblSaleInvoice inner join tblSaleCustomer on tblSaleCustomer.ID = tblSaleInvoice.CustomerID inner join tblSalePromoter on tblSalePromoter.ID = tblSaleInvoice.PromoterID Order By tblSaleInvoice.Code',
   901)
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width, MergeType, TransposeType, MakeSum) values
  (201, 1, 4, 0, 0, 0, 0), (201, 2, 4, 1200, 0, 0, 0), (201, 3, 4, 1200, 0, 0, 0),
  (201, 4, 7, 2800, 0, 0, 0), (201, 5, 7, 1700, 0, 0, 0), (201, 6, 4, 1800, 0, 0, 0),
  (201, 7, 4, 1500, 0, 0, 0), (201, 8, 4, 1500, 0, 0, 0), (201, 9, 4, 1800, 0, 0, 0),
  (201, 10, 4, 900, 0, 0, 0), (201, 11, 7, 1800, 0, 0, 0)
GO

-- A long query is kept in two columns, the second continuing the first where it breaks off.
insert into tblVorekReport (ID, Title, SQLQuery, Reserved, FormTypeID) values
  (202, N'اقلام فاكتورهاي فروش',
   N'Select tblSaleInvoiceDetail.InvoiceID as ''مشخصه فاكتور'', tblSaleInvoiceDetail.RowNumber as ''رديف قلم'', tblSaleInvoice.Code as ''شماره فاكتور'', tblSaleInvoice.FarsiInvoiceDate as ''تاريخ فاكتور'', tblGoods.Name as ''نام كالا'', tblSaleInvoiceDetail.Quantity as ''مقدار'', tblGoods.Unit as ''وا',
   N'حد'', tblSaleInvoiceDetail.UnitPrice as ''في'', tblSaleInvoiceDetail.DiscountPercent as ''درصد تخفيف'', tblSaleInvoiceDetail.LineValue as ''مبلغ'' from tblSaleInvoiceDetail inner join tblSaleInvoice on tblSaleInvoice.ID = tblSaleInvoiceDetail.InvoiceID inner join tblGoods on tblGoods.ID = tblSaleInvoiceDetail.GoodsID Order By tblSaleInvoiceDetail.InvoiceID, tblSaleInvoiceDetail.RowNumber',
   902)
GO

-- Called from 101 and 106; asks for the customer when it is opened by itself.
insert into tblVorekReport (ID, Title, SQLQuery, FormTypeID) values
  (203, N'فاكتورهاي يك مشتري',
   N'Select tblSaleInvoice.ID as [مشخصه], tblSaleInvoice.Code as [شماره فاكتور], tblSaleInvoice.FarsiInvoiceDate as [تاريخ فاكتور], tblSaleInvoice.NetValue as [مبلغ خالص] from tblSaleInvoice Where (tblSaleInvoice.CustomerID = @1) Order By tblSaleInvoice.Code',
   901),
  (204, N'اقلام يك فاكتور',
   N'Select tblSaleInvoiceDetail.InvoiceID as [مشخصه فاكتور], tblSaleInvoiceDetail.RowNumber as [رديف قلم], tblGoods.Name as [نام كالا], tblSaleInvoiceDetail.Quantity as [مقدار], tblSaleInvoiceDetail.UnitPrice as [في], tblSaleInvoiceDetail.LineValue as [مبلغ] from tblSaleInvoiceDetail inner join tblGoods on tblGoods.ID = tblSaleInvoiceDetail.GoodsID Where (tblSaleInvoiceDetail.InvoiceID = @1) Order By tblSaleInvoiceDetail.RowNumber',
   902)
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, MajorView, MinorView) values
  (203, 1, 1, N'مشتري', N'مشتري', 2, 'int', 'vwSaleCustomerMajor', 'Name'),
  (204, 1, 1, N'مشخصه فاكتور', N'مشخصه فاكتور', 1002, 'int', null, null)
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width, MakeSum) values
  (204, 1, 4, 0, 0), (204, 2, 4, 900, 0), (204, 3, 7, 2800, 0), (204, 4, 4, 1200, 0),
  (204, 5, 4, 1600, 0), (204, 6, 4, 1800, 1)
GO
insert into tblVorekRelatedReports (CallerReportID, CalledReportID, CallerReportColumn, CalledParameterID) values
  (201, 204, N'مشخصه', 1), (203, 204, N'مشخصه', 1)
GO

-- Row security: invoices by their own form, their lines by the invoice they belong to. Positions
-- 4 and 5 see the invoices of their provinces, 1 sees all, any other sees none.
insert into tblVorekReport (ID, Title, SQLQuery, MakeSecure, FormTypeID) values
  (205, N'فاكتورهاي قابل مشاهده براي من',
   N'Select tblSaleInvoice.ID, tblSaleInvoice.Code as [شماره فاكتور], tblSaleInvoice.FarsiInvoiceDate as [تاريخ فاكتور], tblSaleCustomer.Name as [نام مشتري], tblSaleInvoice.NetValue as [مبلغ خالص] from tblSaleInvoice inner join tblSaleCustomer on tblSaleCustomer.ID = tblSaleInvoice.CustomerID Where tblSaleInvoice.NetValue > 0 Order By tblSaleInvoice.Code',
   1, 901),
  (206, N'اقلام قابل مشاهده براي من',
   N'Select tblSaleInvoiceDetail.InvoiceID, tblSaleInvoiceDetail.RowNumber as [رديف قلم], tblGoods.Name as [نام كالا], tblSaleInvoiceDetail.LineValue as [مبلغ] from tblSaleInvoiceDetail inner join tblGoods on tblGoods.ID = tblSaleInvoiceDetail.GoodsID Order By tblSaleInvoiceDetail.InvoiceID',
   1, 902)
GO

-- The form of a row comes with the row: invoices (901) and returns (903) in one list.
insert into tblVorekReport (ID, Title, SQLQuery) values
  (207, N'فاكتورها و مرجوعي ها',
   N'Select tblAll.FormTypeID as FormTypeID, tblAll.FormID as FormID, tblAll.Kind as [نوع], tblAll.FarsiDate as [تاريخ], tblAll.Amount as [مبلغ] from (Select 901 as FormTypeID, ID as FormID, N''فاكتور'' as Kind, FarsiInvoiceDate as FarsiDate, NetValue as Amount from tblSaleInvoice union all Select 903, ID, N''مرجوعي'', FarsiReturnDate, -ReturnValue from tblSaleReturn) tblAll Order By tblAll.FarsiDate, tblAll.FormID')
GO

-- Cross tables: months across, regions down; the second has two values for each cell, and the
-- third counts on a layout of the cross table.
insert into tblVorekReport (ID, Title, SQLQuery, MakeTranspose) values
  (208, N'فروش ماهانه استانها',
   N'Select p.Name as [استان], left(tblSaleInvoice.FarsiInvoiceDate, 7) as [ماه], sum(tblSaleInvoice.NetValue) as [مبلغ] from tblSaleInvoice inner join tblSaleCustomer on tblSaleCustomer.ID = tblSaleInvoice.CustomerID inner join tblSaleRegion t on t.ID = tblSaleCustomer.PathID inner join tblSaleRegion r on r.ID = t.ParentID inner join tblSaleRegion p on p.ID = r.ParentID Where tblSaleInvoice.FarsiInvoiceDate >= ''1404/01/01'' group by p.Name, left(tblSaleInvoice.FarsiInvoiceDate, 7)',
   1),
  (209, N'فروش ماهانه بازاريابان',
   N'Select tblSalePromoter.FullName as [بازارياب], left(tblSaleInvoice.FarsiInvoiceDate, 7) as [ماه], count(*) as [تعداد فاكتور], sum(tblSaleInvoice.NetValue) as [مبلغ] from tblSaleInvoice inner join tblSalePromoter on tblSalePromoter.ID = tblSaleInvoice.PromoterID Where tblSaleInvoice.FarsiInvoiceDate >= ''1404/01/01'' group by tblSalePromoter.FullName, left(tblSaleInvoice.FarsiInvoiceDate, 7)',
   1),
  (210, N'فروش گروههاي كالا در دو سال',
   N'Select tblGoodsGroup.Name as [گروه كالا], left(tblSaleInvoice.FarsiInvoiceDate, 4) as [سال], sum(tblSaleInvoiceDetail.LineValue) as [مبلغ] from tblSaleInvoiceDetail inner join tblSaleInvoice on tblSaleInvoice.ID = tblSaleInvoiceDetail.InvoiceID inner join tblGoods on tblGoods.ID = tblSaleInvoiceDetail.GoodsID inner join tblGoodsGroup on tblGoodsGroup.ID = tblGoods.GroupID group by tblGoodsGroup.Name, left(tblSaleInvoice.FarsiInvoiceDate, 4)',
   1)
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width, TransposeType) values
  (208, 1, 7, 1800, 2), (208, 2, 4, 1200, 1), (208, 3, 4, 1800, 0),
  (209, 1, 7, 1800, 2), (209, 2, 4, 1200, 1), (209, 3, 4, 1200, 0), (209, 4, 4, 1800, 0),
  (210, 1, 7, 1800, 2), (210, 2, 4, 1200, 1), (210, 3, 4, 1800, 0)
GO
insert into tblVorekReportTranspose (ReportID, ColumnNumber, Alignment, Width, MergeType, SortedAfterTransporting) values
  (210, 1, 7, 2400, 0, 1), (210, 2, 4, 2000, 0, 0), (210, 3, 4, 2000, 0, 0)
GO

-- Folded rows: one row a salesperson with the names of the customers; one row a customer, by its
-- code, with the invoices added up.
insert into tblVorekReport (ID, Title, SQLQuery, MakeMerge) values
  (211, N'مشتريان هر بازارياب',
   N'Select tblSalePromoter.FullName as [بازارياب], tblSaleCustomer.Name as [مشتريان], tblSaleCustomer.CreditLimit as [جمع اعتبار], tblSalePromoter.Mobile as [تلفن همراه] from tblSaleCustomer inner join tblSalePromoter on tblSalePromoter.ID = tblSaleCustomer.PromoterID Where tblSaleCustomer.IsActive = 1',
   1),
  (212, N'فاكتورهاي روز هر بازارياب',
   N'Select tblSaleInvoice.PromoterID * 1000000 + 14040000 as [كد], tblSaleInvoice.Code as [شماره فاكتورها], tblSaleInvoice.NetValue as [جمع مبلغ] from tblSaleInvoice Where tblSaleInvoice.FarsiInvoiceDate >= ''1404/10/01''',
   1)
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width, MergeType) values
  (211, 1, 7, 1800, 1), (211, 2, 7, 6000, 3), (211, 3, 4, 2000, 2), (211, 4, 4, 1500, 0),
  (212, 1, 4, 1500, 1), (212, 2, 7, 5000, null), (212, 3, 4, 2000, 2)
GO

-- What a query may say of today and of who asks.
insert into tblVorekReport (ID, Title, SQLQuery) values
  (213, N'مشخصات اجراي گزارش',
   N'Select <FarsiReportDate> as [امروز], <ReportTime> as [ساعت], <UserID> as [كاربر], <PositionID> as [موقعيت], <EmployeeID> as [كارمند], <LanguageID> as [زبان], count(*) as [فاكتورهاي تا امروز] from tblSaleInvoice Where tblSaleInvoice.FarsiInvoiceDate <= تاريخ اجراي گزارش and مشخصه كاربر > 0')
GO

-- Stored procedures: with arguments, without; one whose rows are read by the report's own query,
-- one whose rows lie in the table of its name.
insert into tblVorekReport (ID, Title, SQLQuery, SQLSP, IsStoredProcedure, Cols) values
  (214, N'فروش بازاريابان در يك دوره', N'', N'spSaleByPromoter (@1), (@2)', 1, 2),
  (215, N'بيست مشتري برتر', N'', N'spSaleTopCustomers', 1, 1),
  (216, N'جمع فروش گروهها به ترتيب مبلغ', N'Select GroupName as [گروه كالا], GoodsCount as [تعداد كالا], Quantity as [مقدار], LineValue as [مبلغ] from tblSaleGroupTotals Order By LineValue desc', N'spSaleGroupTotals', 1, 1),
  (217, N'جمع فروش گروهها', N'', N'spSaleGroupTotals', 1, 1)
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type) values
  (214, 1, 1, N'از تاريخ', N'از تاريخ', 1, 'nvarchar'),
  (214, 2, 2, N'تا تاريخ', N'تا تاريخ', 1, 'nvarchar')
GO

-- Parameters of many kinds; the same asked in a dialog.
insert into tblVorekReport (ID, Title, SQLQuery, FormTypeID, ShowFlatternParameters, Cols) values
  (218, N'فروش كالا', N'Select tblSaleInvoice.Code as [شماره فاكتور], tblSaleInvoice.FarsiInvoiceDate as [تاريخ فاكتور], tblSaleCustomer.Name as [نام مشتري], tblGoods.Name as [نام كالا], tblSaleInvoiceDetail.Quantity as [مقدار], tblSaleInvoiceDetail.LineValue as [مبلغ] from tblSaleInvoiceDetail inner join tblSaleInvoice on tblSaleInvoice.ID = tblSaleInvoiceDetail.InvoiceID inner join tblSaleCustomer on tblSaleCustomer.ID = tblSaleInvoice.CustomerID inner join tblGoods on tblGoods.ID = tblSaleInvoiceDetail.GoodsID Where (tblSaleInvoice.FarsiInvoiceDate >= @1) and (tblSaleInvoice.FarsiInvoiceDate <= @2) and (tblGoods.GroupID in  @3) and (tblSaleInvoice.CustomerID = @4) and (tblSaleInvoiceDetail.LineValue >= @5) and (tblGoods.Name like @6) Order By tblSaleInvoice.Code', null, 1, 2),
  (219, N'فروش كالا در يك دوره', N'Select tblGoods.Code as [كد كالا], tblGoods.Name as [نام كالا], sum(tblSaleInvoiceDetail.Quantity) as [مقدار], sum(tblSaleInvoiceDetail.LineValue) as [مبلغ] from tblSaleInvoiceDetail inner join tblSaleInvoice on tblSaleInvoice.ID = tblSaleInvoiceDetail.InvoiceID inner join tblGoods on tblGoods.ID = tblSaleInvoiceDetail.GoodsID Where (tblSaleInvoice.FarsiInvoiceDate >= @1) and (tblSaleInvoice.FarsiInvoiceDate <= @2) group by tblGoods.Code, tblGoods.Name Order By tblGoods.Code', null, 0, 2)
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, ColSpan, RowSpan, MajorView, MinorView, OrderByClause) values
  (218, 1, 1, N'از تاريخ', N'از تاريخ', 1, 'nvarchar', 1, 1, null, null, null),
  (218, 2, 2, N'تا تاريخ', N'تا تاريخ', 1, 'nvarchar', 1, 1, null, null, null),
  (218, 3, 3, N'گروه كالا', N'گروه كالا', 1007, 'int', 1, 4, 'vwGoodsGroupMajor', 'Name', 'Name'),
  (218, 4, 4, N'مشتري', N'مشتري', 2, 'int', 1, 1, 'vwSaleCustomerMajor', 'Name', null),
  (218, 5, 5, N'حداقل مبلغ', N'حداقل مبلغ', 11, 'money', 1, 1, null, null, null),
  (218, 6, 6, N'نام كالا', N'نام كالا', 1002, 'nvarchar', 1, 1, null, null, null),
  (219, 1, 1, N'از تاريخ', N'از تاريخ', 1, 'nvarchar', 1, 1, null, null, null),
  (219, 2, 2, N'تا تاريخ', N'تا تاريخ', 1, 'nvarchar', 1, 1, null, null, null)
GO
insert into tblVorekReportParameterConfig (ReportID, Name, ListOfParameters, UserID, isShared) values
  (218, N'نيمه اول 1404', N'@6=''''&@5=&@4=0&@3=(-1)&@2=''1404/06/31''&@1=''1404/01/01''', 2, 0)
GO

-- Calculated columns: what is left after discount and tax, its share, a running total. The last
-- column shows negative amounts as nothing.
insert into tblVorekReport (ID, Title, SQLQuery, FormTypeID) values
  (220, N'تجمعي فروش اسفند 1404',
   N'Select tblSaleInvoice.Code as [شماره فاكتور], tblSaleInvoice.FarsiInvoiceDate as [تاريخ فاكتور], tblSaleInvoice.GrossValue as [مبلغ ناخالص], tblSaleInvoice.DiscountValue as [تخفيف], tblSaleInvoice.NetValue as [مبلغ خالص] from tblSaleInvoice Where tblSaleInvoice.FarsiInvoiceDate >= ''1404/12/01'' Order By tblSaleInvoice.Code',
   901)
GO
insert into tblVorekReportExpression (ReportID, ColumnNumber, Name, GeneralExpression, FirstRowExpression, JustShowPositiveValue) values
  (220, 1, N'پس از تخفيف', 'C3-C4', null, null),
  (220, 2, N'تجمعي', 'C5+P7', 'C5', null),
  (220, 3, N'اضافه بر رديف پيش', 'C5-P5', '0', 1)
GO

-- A sum row under the amounts.
insert into tblVorekReport (ID, Title, SQLQuery) values
  (221, N'جمع فروش مشتريان',
   N'Select tblSaleCustomer.Code as [كد مشتري], tblSaleCustomer.Name as [نام مشتري], count(*) as [تعداد فاكتور], sum(tblSaleInvoice.NetValue) as [مبلغ خالص] from tblSaleInvoice inner join tblSaleCustomer on tblSaleCustomer.ID = tblSaleInvoice.CustomerID group by tblSaleCustomer.Code, tblSaleCustomer.Name Order By tblSaleCustomer.Code')
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width, MakeSum) values
  (221, 1, 4, 1000, 0), (221, 2, 7, 2800, 0), (221, 3, 4, 1200, 1), (221, 4, 4, 2000, 1)
GO

-- The sales of regions and of provinces are gathered by the system itself, and shown as a tree.
insert into tblVorekReport (ID, Title, SQLQuery, SQLSP, IsStoredProcedure, MakeTree, Cols) values
  (222, N'فروش مناطق و بازاريابان', N'', N'spSaleRegionPromoterReport (@1),(@2),(@3),(@4)', 1, 1, 2),
  (223, N'فروش مناطق جغرافيايي', N'', N'spSaleExternalLocationReport (@1),(@2),(@3),(@4)', 1, 1, 2)
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, MajorView, MinorView) values
  (222, 1, 1, N'از تاريخ', N'از تاريخ', 1, 'nvarchar', null, null),
  (222, 2, 2, N'تا تاريخ', N'تا تاريخ', 1, 'nvarchar', null, null),
  (222, 3, 3, N'از منطقه', N'از منطقه', 2, 'int', 'vwSaleRegionMajor', 'Name'),
  (222, 4, 4, N'تا منطقه', N'تا منطقه', 2, 'int', 'vwSaleRegionMajor', 'Name'),
  (223, 1, 1, N'از تاريخ', N'از تاريخ', 1, 'nvarchar', null, null),
  (223, 2, 2, N'تا تاريخ', N'تا تاريخ', 1, 'nvarchar', null, null),
  (223, 3, 3, N'از منطقه', N'از منطقه', 2, 'int', 'vwSaleRegionMajor', 'Name'),
  (223, 4, 4, N'تا منطقه', N'تا منطقه', 2, 'int', 'vwSaleRegionMajor', 'Name')
GO
