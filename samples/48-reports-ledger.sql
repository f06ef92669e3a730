-- Reports 2834, 2844 and 2851: the ledger reports, whose numbers have a meaning of their own.
-- Their forms hold a period, two dates, two voucher numbers, two texts and three options in this
-- order, since a change of the one fills the others.

insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (2834, N'مرور حسابها',
   N'Select tblAccount.Code as [كد حساب], tblAccount.Name as [نام حساب], sum(tblAccountDocumentDetail.Debit) as [بدهكار], sum(tblAccountDocumentDetail.Credit) as [بستانكار] from tblAccountDocumentDetail inner join tblAccountDocument on tblAccountDocument.ID = tblAccountDocumentDetail.DocumentID inner join tblAccount on tblAccount.ID = tblAccountDocumentDetail.AccountID Where (exists (Select tblAccountPeriod.ID from tblAccountPeriod where tblAccountPeriod.BeginDate <= tblAccountDocument.DocumentDate and tblAccountPeriod.EndDate >= tblAccountDocument.DocumentDate and (tblAccountPeriod.ID = @1))) and (tblAccountDocument.DocumentDate >= @2) and (tblAccountDocument.DocumentDate <= @3) and (tblAccountDocument.Code >= @4) and (tblAccountDocument.Code <= @5) and (tblAccount.Name like @6) and (tblAccountDocument.Description like @7) and (isnull(tblAccountDocument.IsPreDoc, 0) <= @8) and (tblAccountDocument.ID > @9) and (tblAccountDocumentDetail.Credit = 0 or (@10)=0) group by tblAccount.Code, tblAccount.Name Order By tblAccount.Code',
   2),
  (2851, N'دفتر روزنامه به تفكيك حساب',
   N'Select tblAccount.Name as [نام حساب], tblAccountDocument.Code as [شماره سند], tblAccountDocument.FarsiDocumentDate as [تاريخ سند], tblAccountDocumentDetail.Debit as [بدهكار], tblAccountDocumentDetail.Credit as [بستانكار] from tblAccountDocumentDetail inner join tblAccountDocument on tblAccountDocument.ID = tblAccountDocumentDetail.DocumentID inner join tblAccount on tblAccount.ID = tblAccountDocumentDetail.AccountID Where (exists (Select tblAccountPeriod.ID from tblAccountPeriod where tblAccountPeriod.BeginDate <= tblAccountDocument.DocumentDate and tblAccountPeriod.EndDate >= tblAccountDocument.DocumentDate and (tblAccountPeriod.ID = @1))) and (tblAccountDocument.DocumentDate >= @2) and (tblAccountDocument.DocumentDate <= @3) and (tblAccountDocument.Code >= @4) and (tblAccountDocument.Code <= @5) and (tblAccount.Name like @6) and (tblAccountDocument.Description like @7) and (isnull(tblAccountDocument.IsPreDoc, 0) <= @8) and (tblAccountDocument.ID > @9) and (tblAccountDocumentDetail.Credit = 0 or (@10)=0) Order By tblAccount.Code, tblAccountDocument.ID',
   2),
  (2844, N'دفتر حساب',
   N'Select tblAccountDocument.ID as [مشخصه], tblAccountDocument.Code as [شماره سند], tblAccountDocument.FarsiDocumentDate as [تاريخ سند], tblAccount.ID as [مشخصه حساب], tblAccount.Code as [كد حساب], tblAccount.ParentID as [مشخصه كل], tblAccountDocumentDetail.RowNumber as [رديف سند], tblAccount.Name as [نام حساب], tblAccountDocument.Description as [شرح سند], tblAccountDocumentDetail.Description as [شرح رديف], tblAccountDocumentDetail.Debit as [بدهكار], tblAccountDocumentDetail.Credit as [بستانكار], tblAccountDocumentObjects.ClassID as [طبقه], tblAccountDocumentObjects.ObjectID as [تفصيلي], tblAccountDocument.DocumentDate as [روز ميلادي], tblAccountDocumentDetail.Debit - tblAccountDocumentDetail.Credit as [خالص], isnull(tblAccountDocument.IsPreDoc, 0) as [پيش نويس] from tblAccountDocumentDetail inner join tblAccountDocument on tblAccountDocument.ID = tblAccountDocumentDetail.DocumentID inner join tblAccount on tblAccount.ID = tblAccountDocumentDetail.AccountID left join tblAccountDocumentObjects on tblAccountDocumentObjects.DocumentID = tblAccountDocumentDetail.DocumentID and tblAccountDocumentObjects.RowNumber = tblAccountDocumentDetail.RowNumber Where (tblAccount.Code = @1) and (tblAccountDocument.DocumentDate >= @2) and (tblAccountDocument.DocumentDate <= @3) Order By tblAccountDocument.ID, tblAccountDocumentDetail.RowNumber',
   2)
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, MajorView, MinorView) values
  (2834, 1, 1, N'سال مالي', N'سال مالي', 2, 'int', 'vwAccountPeriodMajor', 'Name'),
  (2834, 2, 2, N'از تاريخ', N'از تاريخ', 1, 'datetime', null, null),
  (2834, 3, 3, N'تا تاريخ', N'تا تاريخ', 1, 'datetime', null, null),
  (2834, 4, 4, N'از شماره سند', N'از شماره سند', 1002, 'int', null, null),
  (2834, 5, 5, N'تا شماره سند', N'تا شماره سند', 1002, 'int', null, null),
  (2834, 6, 6, N'نام حساب', N'نام حساب', 1002, 'nvarchar', null, null),
  (2834, 7, 7, N'شرح سند', N'شرح سند', 1002, 'nvarchar', null, null),
  (2834, 8, 8, N'با پيش نويس', N'با اسناد پيش نويس', 1006, 'bit', null, null),
  (2834, 9, 9, N'بدون افتتاحيه', N'بدون سند افتتاحيه', 1006, 'bit', null, null),
  (2834, 10, 10, N'فقط بدهكار', N'فقط گردش بدهكار', 1006, 'bit', null, null),
  (2844, 1, 1, N'كد حساب', N'كد حساب', 1002, 'nvarchar', null, null),
  (2844, 2, 2, N'از تاريخ', N'از تاريخ', 1, 'datetime', null, null),
  (2844, 3, 3, N'تا تاريخ', N'تا تاريخ', 1, 'datetime', null, null)
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, MajorView, MinorView)
select 2851, ParameterID, Sequence, Name, Description, ControlTypeID, Type, MajorView, MinorView
from tblVorekReportParameter where ReportID = 2834
GO
insert into tblVorekRelatedReports (CallerReportID, CalledReportID, CallerReportColumn, CallerParameterID, CalledParameterID) values
  (2834, 2844, N'كد حساب', null, 1), (2834, 2844, null, 2, 2), (2834, 2844, null, 3, 3)
GO
