-- Reports 401 to 499: the chart of accounts and its vouchers.

insert into tblVorekReport (ID, Title, SQLQuery, MakeTree) values
  (401, N'درخت حسابها',
   N'Select tblAccount.ID, tblAccount.ParentID, tblAccount.Code as [كد حساب], tblAccount.Name as [نام حساب], vwAccountTurnover.Debit as [گردش بدهكار], vwAccountTurnover.Credit as [گردش بستانكار] from tblAccount left join vwAccountTurnover on vwAccountTurnover.ID = tblAccount.ID Order By tblAccount.Code',
   1)
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width) values
  (401, 1, 4, 0), (401, 2, 4, 0), (401, 3, 4, 1200), (401, 4, 7, 2600), (401, 5, 4, 2000),
  (401, 6, 4, 2000)
GO

-- Only the bookkeepers' role (and administrators) may see it.
insert into tblVorekReport (ID, Title, SQLQuery) values
  (402, N'تراز آزمايشي دو ستوني',
   N'Select tblAccount.Code as [كد حساب], tblAccount.Name as [نام حساب], sum(tblAccountDocumentDetail.Debit) as [بدهكار], sum(tblAccountDocumentDetail.Credit) as [بستانكار] from tblAccountDocumentDetail inner join tblAccount on tblAccount.ID = tblAccountDocumentDetail.AccountID group by tblAccount.Code, tblAccount.Name Order By tblAccount.Code')
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width, MakeSum) values
  (402, 1, 4, 1200, 0), (402, 2, 7, 2600, 0), (402, 3, 4, 2200, 1), (402, 4, 4, 2200, 1)
GO
insert into tblRolePermissionOnReport (ReportID, RoleID) values (402, 2)
GO

insert into tblVorekReport (ID, Title, SQLQuery, FormTypeID) values
  (403, N'اسناد حسابداري',
   N'Select tblAccountDocument.ID as [مشخصه], tblAccountDocument.Code as [شماره سند], tblAccountDocument.DocumentDate as [روز ميلادي], tblAccountDocument.FarsiDocumentDate as [تاريخ سند], tblAccountDocument.Description as [شرح], sum(tblAccountDocumentDetail.Debit) as [جمع سند] from tblAccountDocument left join tblAccountDocumentDetail on tblAccountDocumentDetail.DocumentID = tblAccountDocument.ID group by tblAccountDocument.ID, tblAccountDocument.Code, tblAccountDocument.DocumentDate, tblAccountDocument.FarsiDocumentDate, tblAccountDocument.Description Order By tblAccountDocument.ID',
   907),
  (404, N'رديفهاي يك سند',
   N'Select tblAccountDocumentDetail.RowNumber as [رديف سند], tblAccount.Code as [كد حساب], tblAccount.Name as [نام حساب], tblAccountDocumentDetail.Debit as [بدهكار], tblAccountDocumentDetail.Credit as [بستانكار] from tblAccountDocumentDetail inner join tblAccount on tblAccount.ID = tblAccountDocumentDetail.AccountID Where (tblAccountDocumentDetail.DocumentID = @1) Order By tblAccountDocumentDetail.RowNumber',
   null),
  (405, N'دفتر بانك ملت',
   N'Select tblAccountDocument.Code as [شماره سند], tblAccountDocument.FarsiDocumentDate as [تاريخ سند], tblAccountDocument.Description as [شرح], tblAccountDocumentDetail.Debit as [بدهكار], tblAccountDocumentDetail.Credit as [بستانكار] from tblAccountDocumentDetail inner join tblAccountDocument on tblAccountDocument.ID = tblAccountDocumentDetail.DocumentID Where tblAccountDocumentDetail.AccountID = 1102 Order By tblAccountDocument.ID, tblAccountDocumentDetail.RowNumber',
   null)
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type) values
  (404, 1, 1, N'مشخصه سند', N'مشخصه سند', 1002, 'int')
GO
insert into tblVorekRelatedReports (CallerReportID, CalledReportID, CallerReportColumn, CalledParameterID) values
  (403, 404, N'مشخصه', 1)
GO

-- A running balance: each row adds to the one above.
insert into tblVorekReportExpression (ReportID, ColumnNumber, Name, GeneralExpression, FirstRowExpression) values
  (405, 1, N'مانده', 'C4-C5+P6', 'C4-C5')
GO

-- Balances over chosen accounts and objects of a class; what is chosen in the second list depends
-- on the class chosen in the first.
insert into tblVorekReport (ID, Title, SQLQuery, SQLSP, IsStoredProcedure, Cols) values
  (406, N'مانده حسابها به تفكيك تفصيلي', N'',
   N'spAccountBalanceMoeinOnMultiDetail1 ''1403/01/01'',''1404/12/29'',(@1),(@2),(@3)', 1, 1)
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, RowSpan, MajorView, MinorView, DepOnParameterIDObject) values
  (406, 1, 1, N'طبقه تفصيلي', N'طبقه تفصيلي', 2, 'int', 1, 'vwAccountClassMajor', 'Name', null),
  (406, 2, 2, N'تفصيلي', N'تفصيلي', 1007, 'int', 4, 'vwSaleCustomerMajor', 'Name', 1),
  (406, 3, 3, N'حساب', N'حساب', 1007, 'int', 4, 'vwAccountTwoLevels', 'Name', null)
GO
