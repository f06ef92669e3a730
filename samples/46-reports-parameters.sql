-- Every kind of parameter in one form: two columns with pairs, times, an amount, the lists, an
-- entity, a text to search for, a check box, and a label that only says something.
create view vwSaleDocumentMajor as
select 901 as FormTypeID, ID as FormID, N'فاكتور ' + cast(Code as nvarchar(10)) as Name
from tblSaleInvoice
union all
select 904, ID, N'مشتري ' + Name from tblSaleCustomer
GO
insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (225, N'جستجوي فاكتور با همه انواع پارامتر',
   N'Select tblSaleInvoice.Code as [شماره فاكتور], tblSaleInvoice.FarsiInvoiceDate as [تاريخ فاكتور], tblSaleInvoice.InvoiceTime as [زمان], tblSaleCustomer.Name as [نام مشتري], tblSaleInvoice.NetValue as [مبلغ خالص] from tblSaleInvoice inner join tblSaleCustomer on tblSaleCustomer.ID = tblSaleInvoice.CustomerID Where (tblSaleInvoice.FarsiInvoiceDate >= @1) and (tblSaleInvoice.FarsiInvoiceDate <= @2) and (tblSaleInvoice.InvoiceTime >= @3) and (tblSaleInvoice.InvoiceTime <= @4) and (tblSaleInvoice.InvoiceTime - 480 <= @5) and (tblSaleInvoice.NetValue >= @6) and (tblSaleInvoice.CustomerID = @7) and (tblSaleInvoice.PromoterID = @8) and (tblSaleCustomer.PathID = @9) and (N''FormTypeID=901:FormID='' + cast(tblSaleInvoice.ID as nvarchar(10)) = @10) and (tblSaleCustomer.Name like @11) and (tblSaleCustomer.PathID in (Select t.ID from tblSaleRegion t inner join tblSaleRegion r on r.ID = t.ParentID Where r.ParentID = @12)) and (tblSaleCustomer.IsActive >= @13) and (tblSaleInvoice.ID in (Select tblSaleInvoiceDetail.InvoiceID from tblSaleInvoiceDetail inner join tblGoods on tblGoods.ID = tblSaleInvoiceDetail.GoodsID Where (tblGoods.GroupID in  @14))) and (N'''' = @15) Order By tblSaleInvoice.Code',
   2)
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, ColSpan, RowSpan, MajorView, MinorView, OrderByClause) values
  (225, 1, 1, N'از تاريخ', N'از تاريخ', 1, 'nvarchar', 1, 1, null, null, null),
  (225, 2, 2, N'تا تاريخ', N'تا تاريخ', 1, 'nvarchar', 1, 1, null, null, null),
  (225, 3, 3, N'از ساعت', N'از ساعت', 3, 'int', 1, 1, null, null, null),
  (225, 4, 4, N'تا ساعت', N'تا ساعت', 3, 'int', 1, 1, null, null, null),
  (225, 5, 5, N'حداكثر پس از گشايش', N'حداكثر پس از ساعت 8', 10, 'int', 1, 1, null, null, null),
  (225, 6, 6, N'حداقل مبلغ', N'حداقل مبلغ', 11, 'money', 1, 1, null, null, null),
  (225, 7, 7, N'مشتري', N'مشتري', 2, 'int', 2, 1, 'vwSaleCustomerMajor', 'Name', null),
  (225, 8, 8, N'بازارياب', N'بازارياب', 4, 'int', 1, 1, 'vwSalePromoterMajor', 'Name', null),
  (225, 9, 9, N'مسير', N'مسير', 9, 'int', 1, 4, 'vwSaleRegionMajor', 'Name', null),
  (225, 14, 10, N'گروه كالا', N'گروه كالا', 1007, 'int', 1, 4, 'vwGoodsGroupMajor', 'Name', 'Name'),
  (225, 10, 11, N'سند', N'سند', 13, 'nvarchar', 1, 1, 'vwSaleDocumentMajor', 'Name', null),
  (225, 11, 12, N'نام مشتري', N'نام مشتري', 1002, 'nvarchar', 1, 1, null, null, null),
  (225, 12, 13, N'استان', N'استان', 1003, 'int', 1, 1, 'vwSaleProvinceMajor', null, null),
  (225, 13, 14, N'فعال', N'فقط مشتريان فعال', 1006, 'bit', 1, 1, null, null, null),
  (225, 15, 15, N'راهنما', N'هر چه خالي بماند محدود نميكند', 1001, 'nvarchar', 1, 1, null, null, null)
GO

-- A text that is searched for, asked in the dialog.
insert into tblVorekReport (ID, Title, SQLQuery, FormTypeID, ShowFlatternParameters, Cols) values
  (226, N'جستجوي كالا', N'Select tblGoods.Code as [كد كالا], tblGoods.Name as [نام كالا] from tblGoods Where (tblGoods.Name like @1) Order By tblGoods.Code', 905, 0, 1)
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type) values
  (226, 1, 1, N'نام كالا', N'نام كالا', 1002, 'nvarchar')
GO
