-- Formulas in calculated columns: a share of the total, the same to one decimal place through a
-- bracket, and the distance to the row above by a function.
insert into tblVorekReport (ID, Title, SQLQuery) values
  (224, N'سهم مشتريان از فروش',
   N'Select tblSaleCustomer.Code as [كد مشتري], tblSaleCustomer.Name as [نام مشتري], sum(tblSaleInvoice.NetValue) as [مبلغ خالص], (Select sum(NetValue) from tblSaleInvoice) as [كل فروش] from tblSaleInvoice inner join tblSaleCustomer on tblSaleCustomer.ID = tblSaleInvoice.CustomerID group by tblSaleCustomer.Code, tblSaleCustomer.Name Order By sum(tblSaleInvoice.NetValue) desc')
GO
insert into tblVorekReportExpression (ReportID, ColumnNumber, Name, GeneralExpression, FirstRowExpression) values
  (224, 1, N'درصد سهم', 'C3/C4*100', null),
  (224, 2, N'درصد تجمعي', 'C5+P6', null),
  (224, 3, N'فاصله با رديف پيش', '@ABS(C3-P3)', '0'),
  (224, 4, N'ميانگين دو رديف', '(C3+P3)/2', 'C3')
GO
