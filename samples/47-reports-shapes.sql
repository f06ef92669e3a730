-- Reports 227 to 231 and 407: the shapes of a result beside those of 208 to 212 and 401.

-- Cross tables over sales regions: three values a cell as rows below a row; and one value with
-- widths of its own, sorted by its first month once it stands.
insert into tblVorekReport (ID, Title, SQLQuery, MakeTranspose) values
  (227, N'فروش ماهانه مناطق',
   N'Select r.Name as [منطقه], left(tblSaleInvoice.FarsiInvoiceDate, 7) as [ماه], count(*) as [تعداد فاكتور], sum(tblSaleInvoice.DiscountValue) as [تخفيف], sum(tblSaleInvoice.NetValue) as [مبلغ] from tblSaleInvoice inner join tblSaleCustomer on tblSaleCustomer.ID = tblSaleInvoice.CustomerID inner join tblSaleRegion t on t.ID = tblSaleCustomer.PathID inner join tblSaleRegion r on r.ID = t.ParentID Where tblSaleInvoice.FarsiInvoiceDate >= ''1404/01/01'' group by r.Name, left(tblSaleInvoice.FarsiInvoiceDate, 7)',
   1),
  (228, N'تعداد فاكتور مناطق در فصل بهار',
   N'Select r.Name as [منطقه], left(tblSaleInvoice.FarsiInvoiceDate, 7) as [ماه], count(*) as [تعداد فاكتور] from tblSaleInvoice inner join tblSaleCustomer on tblSaleCustomer.ID = tblSaleInvoice.CustomerID inner join tblSaleRegion t on t.ID = tblSaleCustomer.PathID inner join tblSaleRegion r on r.ID = t.ParentID Where tblSaleInvoice.FarsiInvoiceDate >= ''1404/01/01'' and tblSaleInvoice.FarsiInvoiceDate <= ''1404/03/31'' group by r.Name, left(tblSaleInvoice.FarsiInvoiceDate, 7)',
   1)
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width, TransposeType) values
  (227, 1, 7, 1800, 2), (227, 2, 4, 1200, 1), (227, 3, 4, 1200, 0), (227, 4, 4, 1800, 0),
  (227, 5, 4, 1800, 0),
  (228, 1, 7, 1800, 2), (228, 2, 4, 1200, 1), (228, 3, 4, 1200, 0)
GO
insert into tblVorekReportTranspose (ReportID, ColumnNumber, Alignment, Width, MergeType, SortedAfterTransporting) values
  (228, 1, 7, 2600, 0, 0), (228, 2, 4, 1500, 0, 1), (228, 3, 4, 1500, 0, 0), (228, 4, 4, 1500, 0, 0)
GO

-- Folded: one row an invoice of a customer, its goods joined, its amounts added.
insert into tblVorekReport (ID, Title, SQLQuery, MakeMerge) values
  (229, N'كالاهاي فاكتورهاي يك مشتري',
   N'Select tblSaleInvoice.Code as [شماره فاكتور], tblSaleInvoice.FarsiInvoiceDate as [تاريخ فاكتور], tblGoods.Name as [كالاها], tblSaleInvoiceDetail.Quantity as [مقدار], tblSaleInvoiceDetail.LineValue as [مبلغ] from tblSaleInvoiceDetail inner join tblSaleInvoice on tblSaleInvoice.ID = tblSaleInvoiceDetail.InvoiceID inner join tblGoods on tblGoods.ID = tblSaleInvoiceDetail.GoodsID Where (tblSaleInvoice.CustomerID = @1) Order By tblSaleInvoice.Code, tblSaleInvoiceDetail.RowNumber',
   1)
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, MajorView, MinorView) values
  (229, 1, 1, N'مشتري', N'مشتري', 2, 'int', 'vwSaleCustomerMajor', 'Name')
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width, MergeType) values
  (229, 1, 4, 1500, 1), (229, 2, 4, 1400, 0), (229, 3, 7, 6000, 3), (229, 4, 4, 1200, 2),
  (229, 5, 4, 2000, 2)
GO

-- Totals of whole numbers, money, decimals and times; averages are asked for by the menu.
insert into tblVorekReport (ID, Title, SQLQuery) values
  (230, N'فاكتورهاي هر بازارياب با جمع و ميانگين',
   N'Select tblSalePromoter.FullName as [بازارياب], count(*) as [تعداد فاكتور], sum(tblSaleInvoice.NetValue) as [مبلغ خالص], sum(tblSaleInvoice.InvoiceTime) / count(*) as [زمان], sum(d.Quantity) as [مقدار] from tblSaleInvoice inner join tblSalePromoter on tblSalePromoter.ID = tblSaleInvoice.PromoterID inner join (Select InvoiceID, sum(Quantity) as Quantity from tblSaleInvoiceDetail group by InvoiceID) d on d.InvoiceID = tblSaleInvoice.ID group by tblSalePromoter.FullName Order By tblSalePromoter.FullName')
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width, MakeSum) values
  (230, 1, 7, 2200, 0), (230, 2, 4, 1200, 1), (230, 3, 4, 2200, 1), (230, 4, 4, 1200, 1),
  (230, 5, 4, 1600, 1)
GO

-- 100,000 rows that are stored nowhere: each line of each invoice beside 36 of the goods.
insert into tblVorekReport (ID, Title, SQLQuery) values
  (231, N'صد هزار رديف',
   N'Select top 100000 tblSaleInvoice.Code as [شماره فاكتور], tblSaleInvoice.FarsiInvoiceDate as [تاريخ فاكتور], tblSaleInvoiceDetail.RowNumber as [رديف فاكتور], g.Code as [كد كالا], g.Name as [نام كالا], tblSaleInvoiceDetail.Quantity as [مقدار], tblSaleInvoiceDetail.Quantity * g.Price as [مبلغ] from tblSaleInvoiceDetail inner join tblSaleInvoice on tblSaleInvoice.ID = tblSaleInvoiceDetail.InvoiceID inner join tblGoods g on g.ID <= 36 Order By tblSaleInvoice.Code, tblSaleInvoiceDetail.RowNumber, g.Code')
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width, MakeSum) values
  (231, 1, 4, 1400, 0), (231, 2, 4, 1400, 0), (231, 3, 4, 1000, 0), (231, 4, 4, 1200, 0),
  (231, 5, 7, 2600, 0), (231, 6, 4, 1400, 0), (231, 7, 4, 2000, 0)
GO

-- A tree of four levels: the chart of accounts and below its accounts their months.
insert into tblVorekReport (ID, Title, SQLQuery, MakeTree) values
  (407, N'درخت حسابها با گردش ماهانه',
   N'Select tblAccount.ID, tblAccount.ParentID, tblAccount.Code as [كد حساب], tblAccount.Name as [نام حساب], vwAccountTurnover.Debit as [گردش بدهكار], vwAccountTurnover.Credit as [گردش بستانكار] from tblAccount left join vwAccountTurnover on vwAccountTurnover.ID = tblAccount.ID union all Select tblAccountDocumentDetail.AccountID * 1000 + (cast(left(tblAccountDocument.FarsiDocumentDate, 4) as int) - 1403) * 12 + cast(substring(tblAccountDocument.FarsiDocumentDate, 6, 2) as int), tblAccountDocumentDetail.AccountID, left(tblAccountDocument.FarsiDocumentDate, 7), N''گردش ماه'', sum(tblAccountDocumentDetail.Debit), sum(tblAccountDocumentDetail.Credit) from tblAccountDocumentDetail inner join tblAccountDocument on tblAccountDocument.ID = tblAccountDocumentDetail.DocumentID group by tblAccountDocumentDetail.AccountID, left(tblAccountDocument.FarsiDocumentDate, 4), substring(tblAccountDocument.FarsiDocumentDate, 6, 2), left(tblAccountDocument.FarsiDocumentDate, 7)',
   1)
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width) values
  (407, 1, 4, 0), (407, 2, 4, 0), (407, 3, 4, 1200), (407, 4, 7, 2600), (407, 5, 4, 2000),
  (407, 6, 4, 2000)
GO
