-- Reports 240 to 246, 306 and 408: ways out of a row, to other reports and to forms of every kind.

-- A chain of three: what the customers of a province owe, the invoices of one of them, the lines of
-- one of those (203 and 204 stand with the sales). Ctrl+Enter leads to the customer's receipts.
insert into tblVorekReport (ID, Title, SQLQuery, FormTypeID) values
  (306, N'مانده مشتريان يك استان',
   N'Select tblSaleCustomer.ID as [مشخصه], tblSaleCustomer.Code as [كد مشتري], tblSaleCustomer.Name as [نام مشتري], isnull((Select sum(NetValue) from tblSaleInvoice where CustomerID = tblSaleCustomer.ID), 0) as [فروش], isnull((Select sum(Amount) from tblRecPayReceipt where CustomerID = tblSaleCustomer.ID), 0) as [دريافتي] from tblSaleCustomer Where (tblSaleCustomer.PathID in (Select ID from tblSaleRegion where ParentID in (Select ID from tblSaleRegion where ParentID = @1))) Order By tblSaleCustomer.Code',
   904)
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, MajorView, MinorView) values
  (306, 1, 1, N'استان', N'استان', 2, 'int', 'vwSaleProvinceMajor', 'Name')
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width, MakeSum) values
  (306, 1, 4, 0, 0), (306, 2, 4, 1000, 0), (306, 3, 7, 2800, 0), (306, 4, 4, 1800, 1),
  (306, 5, 4, 1800, 1)
GO
insert into tblVorekReportExpression (ReportID, ColumnNumber, Name, GeneralExpression) values
  (306, 1, N'مانده', 'C4-C5')
GO
insert into tblVorekRelatedReports (CallerReportID, CalledReportID, CallerReportColumn, CalledParameterID, isSecondary) values
  (306, 203, N'مشخصه', 1, 0), (306, 302, N'مشخصه', 1, 1)
GO

-- A link by parameter: the province that was asked for goes on to the report of its cities.
insert into tblVorekReport (ID, Title, SQLQuery) values
  (240, N'فروش يك استان',
   N'Select p.Name as [استان], count(*) as [تعداد فاكتور], sum(tblSaleInvoice.NetValue) as [مبلغ] from tblSaleInvoice inner join tblSaleCustomer on tblSaleCustomer.ID = tblSaleInvoice.CustomerID inner join tblSaleRegion t on t.ID = tblSaleCustomer.PathID inner join tblSaleRegion r on r.ID = t.ParentID inner join tblSaleRegion p on p.ID = r.ParentID Where (p.ID = @1) group by p.Name'),
  (241, N'فروش شهرهاي يك استان',
   N'Select r.Name as [شهر], count(*) as [تعداد فاكتور], sum(tblSaleInvoice.NetValue) as [مبلغ] from tblSaleInvoice inner join tblSaleCustomer on tblSaleCustomer.ID = tblSaleInvoice.CustomerID inner join tblSaleRegion t on t.ID = tblSaleCustomer.PathID inner join tblSaleRegion r on r.ID = t.ParentID Where (r.ParentID = @1) group by r.Name Order By r.Name')
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, MajorView, MinorView) values
  (240, 1, 1, N'استان', N'استان', 2, 'int', 'vwSaleProvinceMajor', 'Name'),
  (241, 1, 1, N'استان', N'استان', 2, 'int', 'vwSaleProvinceMajor', 'Name')
GO
insert into tblVorekRelatedReports (CallerReportID, CalledReportID, CallerParameterID, CalledParameterID) values
  (240, 241, 1, 1)
GO

-- A cross table leads to itself: the same months for the province of the row alone.
insert into tblVorekReport (ID, Title, SQLQuery, MakeTranspose) values
  (242, N'فروش ماهانه شهرها',
   N'Select p.ID as [كد استان], p.Name as [استان], left(tblSaleInvoice.FarsiInvoiceDate, 7) as [ماه], sum(tblSaleInvoice.NetValue) as [مبلغ] from tblSaleInvoice inner join tblSaleCustomer on tblSaleCustomer.ID = tblSaleInvoice.CustomerID inner join tblSaleRegion t on t.ID = tblSaleCustomer.PathID inner join tblSaleRegion r on r.ID = t.ParentID inner join tblSaleRegion p on p.ID = r.ParentID Where tblSaleInvoice.FarsiInvoiceDate >= ''1404/01/01'' and (p.ID >= @1) group by p.ID, p.Name, left(tblSaleInvoice.FarsiInvoiceDate, 7) Order By p.ID',
   1)
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, MajorView, MinorView) values
  (242, 1, 1, N'از استان', N'از استان', 2, 'int', 'vwSaleProvinceMajor', 'Name')
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width, TransposeType) values
  (242, 1, 4, 1000, 2), (242, 2, 7, 1800, 2), (242, 3, 4, 1200, 1), (242, 4, 4, 1800, 0)
GO
insert into tblVorekRelatedReports (CallerReportID, CalledReportID, PassingField, ParameterID) values
  (242, 242, N'كد استان', 1)
GO

-- A tree whose closed rows open in a window of their own. The field before ParentID is the row's
-- key, and the report has a parameter: without one there is nothing to pass, and no window.
insert into tblVorekReport (ID, Title, SQLQuery, MakeTree, ShowPopupTree) values
  (408, N'حسابها به تفكيك پنجره',
   N'Select tblAccount.ID, tblAccount.ParentID, tblAccount.Code as [كد حساب], tblAccount.Name as [نام حساب], vwAccountTurnover.Debit as [گردش بدهكار], vwAccountTurnover.Credit as [گردش بستانكار] from tblAccount left join vwAccountTurnover on vwAccountTurnover.ID = tblAccount.ID Where (isnull(vwAccountTurnover.Debit, 0) >= @1) Order By tblAccount.Code',
   1, 1)
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type) values
  (408, 1, 1, N'كمترين گردش', N'كمترين گردش بدهكار', 1002, 'int')
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width) values
  (408, 1, 4, 0), (408, 2, 4, 0), (408, 3, 4, 1200), (408, 4, 7, 2600), (408, 5, 4, 2000),
  (408, 6, 4, 2000)
GO

-- Rows that lead to forms. 102 opens the form of its goods, 301 that of receipts with the number 3,
-- 207 the form that each row names, one of which isn't there.
insert into tblVorekReport (ID, Title, SQLQuery, FormTypeID) values
  (243, N'مشتريان غيرفعال',
   N'Select tblSaleCustomer.ID as [مشخصه], tblSaleCustomer.Code as [كد مشتري], tblSaleCustomer.Name as [نام مشتري], tblSaleCustomer.Phone as [تلفن] from tblSaleCustomer Where tblSaleCustomer.IsActive = 0 Order By tblSaleCustomer.Code',
   904),
  (244, N'فاكتورهاي بزرگ',
   N'Select tblSaleInvoice.ID as [مشخصه], tblSaleInvoice.Code as [شماره فاكتور], tblSaleInvoice.FarsiInvoiceDate as [تاريخ فاكتور], tblSaleInvoice.NetValue as [مبلغ خالص] from tblSaleInvoice Where tblSaleInvoice.NetValue >= 1500000000 Order By tblSaleInvoice.NetValue desc',
   901)
GO

-- A procedure tells the form by its headers.
create procedure spSaleFormsOfInvoices as
select top 10 901 as FormTypeID, tblSaleInvoice.ID as FormID, tblSaleInvoice.Code as [شماره فاكتور],
  tblSaleInvoice.NetValue as [مبلغ خالص]
from tblSaleInvoice order by tblSaleInvoice.NetValue desc
GO
create procedure spGoodsForms as
select top 5 905 as FormTypeID, tblGoods.ID as FormID, tblGoods.Name as [نام كالا]
from tblGoods order by tblGoods.Code
GO
insert into tblVorekReport (ID, Title, SQLQuery, SQLSP, IsStoredProcedure) values
  (245, N'ده فاكتور بزرگ', N'', N'spSaleFormsOfInvoices', 1),
  (246, N'پنج كالاي نخست', N'', N'spGoodsForms', 1)
GO
