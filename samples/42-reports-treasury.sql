-- Reports 301 to 399: receipts and what customers owe.

insert into tblVorekReport (ID, Title, SQLQuery, MakeSecure, FormTypeID, LockPrintPreview) values
  (301, N'فهرست دريافتها',
   N'Select tblRecPayReceipt.ID as [مشخصه], tblRecPayReceipt.Code as [شماره دريافت], tblRecPayReceipt.FarsiReceiptDate as [تاريخ دريافت], tblSaleCustomer.Name as [نام مشتري], tblRecPayCash.Name as [صندوق], tblRecPayReceipt.Kind as [نوع], tblRecPayReceipt.Amount as [مبلغ], tblRecPayReceipt.ChequeNumber as [شماره چك], tblRecPayReceipt.FarsiDueDate as [تاريخ سررسيد] from tblRecPayReceipt inner join tblSaleCustomer on tblSaleCustomer.ID = tblRecPayReceipt.CustomerID inner join tblRecPayCashTurn on tblRecPayCashTurn.ID = tblRecPayReceipt.CashTurnID inner join tblRecPayCash on tblRecPayCash.ID = tblRecPayCashTurn.CashID Order By tblRecPayReceipt.Code',
   0, 906, 1),
  (302, N'دريافتهاي يك مشتري',
   N'Select tblRecPayReceipt.ID as [مشخصه], tblRecPayReceipt.FarsiReceiptDate as [تاريخ دريافت], tblRecPayReceipt.Kind as [نوع], tblRecPayReceipt.Amount as [مبلغ] from tblRecPayReceipt Where (tblRecPayReceipt.CustomerID = @1) Order By tblRecPayReceipt.FarsiReceiptDate',
   0, 906, 0),
  (303, N'گردش صندوق در يك دوره',
   N'Select tblRecPayReceipt.Code as [شماره دريافت], tblRecPayReceipt.FarsiReceiptDate as [تاريخ دريافت], tblSaleCustomer.Name as [نام مشتري], tblRecPayReceipt.Amount as [مبلغ] from tblRecPayReceipt inner join tblSaleCustomer on tblSaleCustomer.ID = tblRecPayReceipt.CustomerID inner join tblRecPayCashTurn on tblRecPayCashTurn.ID = tblRecPayReceipt.CashTurnID Where (tblRecPayCashTurn.CashID = @1) and (tblRecPayReceipt.CashTurnID = @2) Order By tblRecPayReceipt.Code',
   0, null, 0),
  (304, N'دريافتهاي قابل مشاهده براي من',
   N'Select tblRecPayReceipt.ID, tblRecPayReceipt.FarsiReceiptDate as [تاريخ دريافت], tblRecPayReceipt.Amount as [مبلغ] from tblRecPayReceipt Order By tblRecPayReceipt.ID',
   1, 906, 0)
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width, MakeSum) values
  (301, 1, 4, 0, 0), (301, 2, 4, 1200, 0), (301, 3, 4, 1200, 0), (301, 4, 7, 2800, 0),
  (301, 5, 7, 1500, 0), (301, 6, 4, 900, 0), (301, 7, 4, 1800, 1), (301, 8, 4, 1200, 0),
  (301, 9, 4, 1200, 0)
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, ColSpan, MajorView, MinorView, DepOnParameterIDForm) values
  (302, 1, 1, N'مشتري', N'مشتري', 2, 'int', 1, 'vwSaleCustomerMajor', 'Name', null),
  (303, 1, 1, N'صندوق', N'صندوق', 2, 'int', 1, 'vwRecPayCashMajor', 'Name', null),
  (303, 2, 2, N'دوره صندوق', N'دوره صندوق', 2, 'int', 1, 'vwRecPayCashTurnMajor', 'Name', 1)
GO

-- What each customer owes: invoices less returns less receipts.
insert into tblVorekReport (ID, Title, SQLQuery, FormTypeID) values
  (305, N'مانده مشتريان',
   N'Select tblSaleCustomer.ID as [مشخصه], tblSaleCustomer.Code as [كد مشتري], tblSaleCustomer.Name as [نام مشتري], isnull((Select sum(NetValue) from tblSaleInvoice where CustomerID = tblSaleCustomer.ID), 0) as [فروش], isnull((Select sum(ReturnValue) from tblSaleReturn where CustomerID = tblSaleCustomer.ID), 0) as [مرجوعي], isnull((Select sum(Amount) from tblRecPayReceipt where CustomerID = tblSaleCustomer.ID), 0) as [دريافتي] from tblSaleCustomer Order By tblSaleCustomer.Code',
   904)
GO
insert into tblVorekReportExpression (ReportID, ColumnNumber, Name, GeneralExpression) values
  (305, 1, N'مانده', 'C4-C5-C6')
GO
insert into tblVorekRelatedReports (CallerReportID, CalledReportID, CallerReportColumn, CalledParameterID, isSecondary) values
  (305, 302, N'مشخصه', 1, 0), (305, 203, N'مشخصه', 1, 1)
GO
