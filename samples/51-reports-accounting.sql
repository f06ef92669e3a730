-- Reports from 2834 on: ledgers, turnovers and trial balances, whose numbers have a meaning of their
-- own. Their forms hold a period, two dates, two voucher numbers, two texts and three options in this
-- order, since a change of the one fills the others; their columns stand where subtotals look for them.

-- Accounts and their turnover; a row leads to the account's ledger.
insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (2834, N'مرور حسابها',
   N'Select tblAccount.Code as [كد حساب], tblAccount.Name as [نام حساب], sum(tblAccountDocumentDetail.Debit) as [بدهكار], sum(tblAccountDocumentDetail.Credit) as [بستانكار] from tblAccountDocumentDetail inner join tblAccountDocument on tblAccountDocument.ID = tblAccountDocumentDetail.DocumentID inner join tblAccount on tblAccount.ID = tblAccountDocumentDetail.AccountID Where (exists (Select tblAccountPeriod.ID from tblAccountPeriod where tblAccountPeriod.BeginDate <= tblAccountDocument.DocumentDate and tblAccountPeriod.EndDate >= tblAccountDocument.DocumentDate and (tblAccountPeriod.ID = @1))) and (tblAccountDocument.DocumentDate >= @2) and (tblAccountDocument.DocumentDate <= @3) and (tblAccountDocument.Code >= @4) and (tblAccountDocument.Code <= @5) and (tblAccount.Name like @6) and (tblAccountDocument.Description like @7) and (isnull(tblAccountDocument.IsPreDoc, 0) <= @8) and (tblAccountDocument.ID > @9) and (tblAccountDocumentDetail.Credit = 0 or (@10)=0) group by tblAccount.Code, tblAccount.Name Order By tblAccount.Code',
   2)
GO
-- The same by ledger, by class, and by object; each leads to the lines behind it.
insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (2840, N'مرور حسابهاي كل',
   N'Select v.LedgerCode as [كد كل], v.LedgerName as [نام كل], sum(v.Debit) as [گردش بدهكار], sum(v.Credit) as [گردش بستانكار], case when sum(v.Debit) > sum(v.Credit) then sum(v.Debit) - sum(v.Credit) else 0 end as [مانده بدهكار], case when sum(v.Credit) > sum(v.Debit) then sum(v.Credit) - sum(v.Debit) else 0 end as [مانده بستانكار] from vwAccountLedgerLine v Where (v.DocumentDate >= @1) and (v.DocumentDate <= @2) group by v.LedgerCode, v.LedgerName Order By v.LedgerCode',
   2)
GO
insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (2842, N'گردش طبقه هاي تفصيلي',
   N'Select v.ClassID as [كد طبقه], v.ClassName as [نام طبقه], v.AccountCode as [كد حساب], v.AccountName as [نام حساب], sum(v.Debit) as [گردش بدهكار], sum(v.Credit) as [گردش بستانكار], case when sum(v.Debit) > sum(v.Credit) then sum(v.Debit) - sum(v.Credit) else 0 end as [مانده بدهكار], case when sum(v.Credit) > sum(v.Debit) then sum(v.Credit) - sum(v.Debit) else 0 end as [مانده بستانكار] from vwAccountLedgerLine v Where (v.DocumentDate >= @1) and (v.DocumentDate <= @2) and (v.ClassID > 0) group by v.ClassID, v.ClassName, v.AccountCode, v.AccountName Order By v.ClassID, v.AccountCode',
   2)
GO
insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (2843, N'گردش تفصيلي ها',
   N'Select v.ClassID as [كد طبقه], v.ClassName as [نام طبقه], v.ObjectID as [كد تفصيلي], v.ObjectName as [نام تفصيلي], v.AccountCode as [كد حساب], v.AccountName as [نام حساب], sum(v.Debit) as [گردش بدهكار], sum(v.Credit) as [گردش بستانكار], case when sum(v.Debit) > sum(v.Credit) then sum(v.Debit) - sum(v.Credit) else 0 end as [مانده بدهكار], case when sum(v.Credit) > sum(v.Debit) then sum(v.Credit) - sum(v.Debit) else 0 end as [مانده بستانكار] from vwAccountLedgerLine v Where (v.DocumentDate >= @1) and (v.DocumentDate <= @2) and (v.ClassID > 0) and (v.ClassID = @3) and (v.AccountCode = @4) group by v.ClassID, v.ClassName, v.ObjectID, v.ObjectName, v.AccountCode, v.AccountName Order By v.ClassID, v.ObjectID, v.AccountCode',
   2)
GO
-- A ledger of lines. Columns 4 to 7 are hidden where the report that calls it tells them already.
insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (2844, N'دفتر حساب',
   N'Select v.DocumentCode as [شماره سند], v.FarsiDocumentDate as [تاريخ سند], v.RowNumber as [رديف سند], v.LedgerCode as [كد كل], v.LedgerName as [نام كل], v.AccountCode as [كد حساب], v.AccountName as [نام حساب], v.ObjectID as [كد تفصيلي], v.ObjectName as [نام تفصيلي], v.DocumentDescription as [شرح سند], v.Debit as [بدهكار], v.Credit as [بستانكار], 907 as FormTypeID, v.DocumentID as FormID, v.DocumentDate as [روز ميلادي], case when v.Debit > v.Credit then v.Debit - v.Credit else 0 end as [مانده بدهكار], case when v.Credit > v.Debit then v.Credit - v.Debit else 0 end as [مانده بستانكار] from vwAccountLedgerLine v Where (v.AccountCode = @1) and (v.DocumentDate >= @2) and (v.DocumentDate <= @3) and (v.LedgerCode = @4) and (v.ClassID = @5) and (v.ObjectID = @6) Order By v.DocumentDate, v.DocumentID, v.RowNumber',
   2)
GO
-- The trial balances: turnover before the period, within it, both, and the balance.
insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (2846, N'تراز آزمايشي هشت ستوني',
   N'Select v.AccountCode as [كد حساب], v.AccountName as [نام حساب], sum(case when v.DocumentDate < @2 then v.Debit else 0 end) as [اول دوره بدهكار], sum(case when v.DocumentDate < @2 then v.Credit else 0 end) as [اول دوره بستانكار], sum(case when v.DocumentDate >= @2 then v.Debit else 0 end) as [طي دوره بدهكار], sum(case when v.DocumentDate >= @2 then v.Credit else 0 end) as [طي دوره بستانكار], sum(v.Debit) as [جمع بدهكار], sum(v.Credit) as [جمع بستانكار], case when sum(v.Debit) > sum(v.Credit) then sum(v.Debit) - sum(v.Credit) else 0 end as [مانده بدهكار], case when sum(v.Credit) > sum(v.Debit) then sum(v.Credit) - sum(v.Debit) else 0 end as [مانده بستانكار] from vwAccountLedgerLine v Where (v.PeriodID = @1) and (v.DocumentDate <= @3) and ((v.DocumentCode >= @4) or (v.DocumentDate < @2)) and ((v.DocumentCode <= @5) or (v.DocumentDate < @2)) and (v.AccountName like @6) and (v.DocumentDescription like @7) and (v.IsPreDoc <= @8) and (v.DocumentID > @9) group by v.AccountCode, v.AccountName having (@10)=0 or sum(v.Debit) <> sum(v.Credit) Order By v.AccountCode',
   2)
GO
insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (2847, N'گردش حسابهاي هر حساب كل',
   N'Select v.LedgerCode as [كد كل], v.LedgerName as [نام كل], v.AccountCode as [كد حساب], v.AccountName as [نام حساب], sum(v.Debit) as [گردش بدهكار], sum(v.Credit) as [گردش بستانكار], count(*) as [تعداد رديف], max(v.FarsiDocumentDate) as [آخرين تاريخ], case when sum(v.Debit) > sum(v.Credit) then sum(v.Debit) - sum(v.Credit) else 0 end as [مانده بدهكار], case when sum(v.Credit) > sum(v.Debit) then sum(v.Credit) - sum(v.Debit) else 0 end as [مانده بستانكار] from vwAccountLedgerLine v Where (v.DocumentDate >= @1) and (v.DocumentDate <= @2) group by v.LedgerCode, v.LedgerName, v.AccountCode, v.AccountName Order By v.LedgerCode, v.AccountCode',
   2)
GO
-- Journals and ledgers.
insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (2848, N'دفتر روزنامه',
   N'Select v.DocumentCode as [شماره سند], v.FarsiDocumentDate as [تاريخ سند], v.RowNumber as [رديف سند], v.AccountCode as [كد حساب], v.AccountName as [نام حساب], v.ObjectName as [نام تفصيلي], v.DocumentDescription as [شرح سند], v.Debit as [بدهكار], v.Credit as [بستانكار], v.DocumentID as FormID, 907 as FormTypeID from vwAccountLedgerLine v Where (v.PeriodID = @1) and (v.DocumentDate >= @2) and (v.DocumentDate <= @3) and (v.DocumentCode >= @4) and (v.DocumentCode <= @5) and (v.AccountName like @6) and (v.DocumentDescription like @7) and (v.IsPreDoc <= @8) and (v.DocumentID > @9) and (v.Credit = 0 or (@10)=0) Order By v.DocumentDate, v.DocumentID, v.RowNumber',
   2)
GO
insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (2849, N'دفتر كل ماهانه',
   N'Select v.LedgerCode as [كد كل], v.LedgerName as [نام كل], left(v.FarsiDocumentDate, 7) as [ماه], sum(v.Debit) as [گردش بدهكار], sum(v.Credit) as [گردش بستانكار], case when sum(v.Debit) > sum(v.Credit) then sum(v.Debit) - sum(v.Credit) else 0 end as [مانده بدهكار], case when sum(v.Credit) > sum(v.Debit) then sum(v.Credit) - sum(v.Debit) else 0 end as [مانده بستانكار] from vwAccountLedgerLine v Where (v.PeriodID = @1) and (v.DocumentDate >= @2) and (v.DocumentDate <= @3) and (v.DocumentCode >= @4) and (v.DocumentCode <= @5) and (v.AccountName like @6) and (v.DocumentDescription like @7) and (v.IsPreDoc <= @8) and (v.DocumentID > @9) group by v.LedgerCode, v.LedgerName, left(v.FarsiDocumentDate, 7) having (@10)=0 or sum(v.Debit) <> sum(v.Credit) Order By v.LedgerCode, left(v.FarsiDocumentDate, 7)',
   2)
GO
insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (2850, N'تراز آزمايشي شش ستوني',
   N'Select v.AccountCode as [كد حساب], v.AccountName as [نام حساب], sum(case when v.DocumentDate < @2 then v.Debit else 0 end) as [اول دوره بدهكار], sum(case when v.DocumentDate < @2 then v.Credit else 0 end) as [اول دوره بستانكار], sum(case when v.DocumentDate >= @2 then v.Debit else 0 end) as [طي دوره بدهكار], sum(case when v.DocumentDate >= @2 then v.Credit else 0 end) as [طي دوره بستانكار], case when sum(v.Debit) > sum(v.Credit) then sum(v.Debit) - sum(v.Credit) else 0 end as [مانده بدهكار], case when sum(v.Credit) > sum(v.Debit) then sum(v.Credit) - sum(v.Debit) else 0 end as [مانده بستانكار] from vwAccountLedgerLine v Where (v.PeriodID = @1) and (v.DocumentDate <= @3) and ((v.DocumentCode >= @4) or (v.DocumentDate < @2)) and ((v.DocumentCode <= @5) or (v.DocumentDate < @2)) and (v.AccountName like @6) and (v.DocumentDescription like @7) and (v.IsPreDoc <= @10) and (v.DocumentID > @9) group by v.AccountCode, v.AccountName having (@8)=0 or sum(v.Debit) <> sum(v.Credit) Order By v.AccountCode',
   2)
GO
insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (2851, N'تراز هشت ستوني هر حساب كل',
   N'Select v.LedgerName as [نام كل], v.AccountCode as [كد حساب], v.AccountName as [نام حساب], sum(case when v.DocumentDate < @2 then v.Debit else 0 end) as [اول دوره بدهكار], sum(case when v.DocumentDate < @2 then v.Credit else 0 end) as [اول دوره بستانكار], sum(case when v.DocumentDate >= @2 then v.Debit else 0 end) as [طي دوره بدهكار], sum(case when v.DocumentDate >= @2 then v.Credit else 0 end) as [طي دوره بستانكار], sum(v.Debit) as [جمع بدهكار], sum(v.Credit) as [جمع بستانكار], case when sum(v.Debit) > sum(v.Credit) then sum(v.Debit) - sum(v.Credit) else 0 end as [مانده بدهكار], case when sum(v.Credit) > sum(v.Debit) then sum(v.Credit) - sum(v.Debit) else 0 end as [مانده بستانكار] from vwAccountLedgerLine v Where (v.PeriodID = @1) and (v.DocumentDate <= @3) and ((v.DocumentCode >= @4) or (v.DocumentDate < @2)) and ((v.DocumentCode <= @5) or (v.DocumentDate < @2)) and (v.AccountName like @6) and (v.DocumentDescription like @7) and (v.IsPreDoc <= @10) and (v.DocumentID > @9) group by v.LedgerCode, v.LedgerName, v.AccountCode, v.AccountName having (@8)=0 or sum(v.Debit) <> sum(v.Credit) Order By v.LedgerCode, v.AccountCode',
   2)
GO
insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (2852, N'تراز چهار ستوني با سطوح حساب',
   N'Select v.GroupCode as [كد گروه], v.GroupName as [نام گروه], v.LedgerCode as [كد كل], v.LedgerName as [نام كل], v.AccountCode as [كد حساب], v.AccountName as [نام حساب], count(*) as [تعداد رديف], sum(v.Debit) as [گردش بدهكار], sum(v.Credit) as [گردش بستانكار], case when sum(v.Debit) > sum(v.Credit) then sum(v.Debit) - sum(v.Credit) else 0 end as [مانده بدهكار], case when sum(v.Credit) > sum(v.Debit) then sum(v.Credit) - sum(v.Debit) else 0 end as [مانده بستانكار] from vwAccountLedgerLine v Where (v.PeriodID = @1) and (v.DocumentDate >= @2) and (v.DocumentDate <= @3) and (v.DocumentCode >= @4) and (v.DocumentCode <= @5) and (v.AccountName like @6) and (v.DocumentDescription like @7) and (v.IsPreDoc <= @8) and (v.DocumentID > @9) group by v.GroupCode, v.GroupName, v.LedgerCode, v.LedgerName, v.AccountCode, v.AccountName having (@10)=0 or sum(v.Debit) <> sum(v.Credit) Order By v.LedgerCode, v.AccountCode',
   2)
GO
insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (2853, N'تراز هشت ستوني با سطوح حساب',
   N'Select v.GroupCode as [كد گروه], v.GroupName as [نام گروه], v.LedgerCode as [كد كل], v.LedgerName as [نام كل], v.AccountCode as [كد حساب], v.AccountName as [نام حساب], count(*) as [تعداد رديف], sum(case when v.DocumentDate < @2 then v.Debit else 0 end) as [اول دوره بدهكار], sum(case when v.DocumentDate < @2 then v.Credit else 0 end) as [اول دوره بستانكار], sum(case when v.DocumentDate >= @2 then v.Debit else 0 end) as [طي دوره بدهكار], sum(case when v.DocumentDate >= @2 then v.Credit else 0 end) as [طي دوره بستانكار], sum(v.Debit) as [جمع بدهكار], sum(v.Credit) as [جمع بستانكار], case when sum(v.Debit) > sum(v.Credit) then sum(v.Debit) - sum(v.Credit) else 0 end as [مانده بدهكار], case when sum(v.Credit) > sum(v.Debit) then sum(v.Credit) - sum(v.Debit) else 0 end as [مانده بستانكار] from vwAccountLedgerLine v Where (v.PeriodID = @1) and (v.DocumentDate <= @3) and ((v.DocumentCode >= @4) or (v.DocumentDate < @2)) and ((v.DocumentCode <= @5) or (v.DocumentDate < @2)) and (v.AccountName like @6) and (v.DocumentDescription like @7) and (v.IsPreDoc <= @10) and (v.DocumentID > @9) group by v.GroupCode, v.GroupName, v.LedgerCode, v.LedgerName, v.AccountCode, v.AccountName having (@8)=0 or sum(v.Debit) <> sum(v.Credit) Order By v.LedgerCode, v.AccountCode',
   2)
GO
insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (2856, N'گردش روزانه حسابها',
   N'Select v.AccountCode as [كد حساب], v.AccountName as [نام حساب], v.FarsiDocumentDate as [تاريخ سند], sum(v.Debit) as [گردش بدهكار], sum(v.Credit) as [گردش بستانكار], case when sum(v.Debit) > sum(v.Credit) then sum(v.Debit) - sum(v.Credit) else 0 end as [مانده بدهكار], case when sum(v.Credit) > sum(v.Debit) then sum(v.Credit) - sum(v.Debit) else 0 end as [مانده بستانكار] from vwAccountLedgerLine v Where (v.PeriodID = @1) and (v.DocumentDate >= @2) and (v.DocumentDate <= @3) and (v.DocumentCode >= @4) and (v.DocumentCode <= @5) and (v.AccountName like @6) and (v.DocumentDescription like @7) and (v.IsPreDoc <= @8) and (v.DocumentID > @9) group by v.AccountCode, v.AccountName, v.FarsiDocumentDate having (@10)=0 or sum(v.Debit) <> sum(v.Credit) Order By v.AccountCode, v.FarsiDocumentDate',
   2)
GO
insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (2857, N'تراز چهار ستوني هر حساب كل',
   N'Select v.LedgerName as [نام كل], v.AccountCode as [كد حساب], v.AccountName as [نام حساب], sum(v.Debit) as [گردش بدهكار], sum(v.Credit) as [گردش بستانكار], case when sum(v.Debit) > sum(v.Credit) then sum(v.Debit) - sum(v.Credit) else 0 end as [مانده بدهكار], case when sum(v.Credit) > sum(v.Debit) then sum(v.Credit) - sum(v.Debit) else 0 end as [مانده بستانكار] from vwAccountLedgerLine v Where (v.PeriodID = @1) and (v.DocumentDate >= @2) and (v.DocumentDate <= @3) and (v.DocumentCode >= @4) and (v.DocumentCode <= @5) and (v.AccountName like @6) and (v.DocumentDescription like @7) and (v.IsPreDoc <= @8) and (v.DocumentID > @9) group by v.LedgerCode, v.LedgerName, v.AccountCode, v.AccountName having (@10)=0 or sum(v.Debit) <> sum(v.Credit) Order By v.LedgerCode, v.AccountCode',
   2)
GO
-- With the objects of each account.
insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (2858, N'تراز چهار ستوني تفصيلي ها',
   N'Select v.GroupCode as [كد گروه], v.GroupName as [نام گروه], v.LedgerCode as [كد كل], v.LedgerName as [نام كل], v.AccountCode as [كد حساب], v.AccountName as [نام حساب], v.AccountCode + N'' '' + v.ClassName as [حساب و طبقه], v.ObjectID as [كد تفصيلي], v.ObjectName as [نام تفصيلي], sum(v.Debit) as [گردش بدهكار], sum(v.Credit) as [گردش بستانكار], case when sum(v.Debit) > sum(v.Credit) then sum(v.Debit) - sum(v.Credit) else 0 end as [مانده بدهكار], case when sum(v.Credit) > sum(v.Debit) then sum(v.Credit) - sum(v.Debit) else 0 end as [مانده بستانكار], cast(v.AccountCode as int) * 1000 + v.ClassID as [ترتيب] from vwAccountLedgerLine v Where (v.PeriodID = @1) and (v.DocumentDate >= @2) and (v.DocumentDate <= @3) and (v.DocumentCode >= @4) and (v.DocumentCode <= @5) and (v.AccountName like @6) and (v.DocumentDescription like @7) and (v.IsPreDoc <= @8) and (v.DocumentID > @9) group by v.GroupCode, v.GroupName, v.LedgerCode, v.LedgerName, v.AccountCode, v.AccountName, v.ClassID, v.ClassName, v.ObjectID, v.ObjectName having (@10)=0 or sum(v.Debit) <> sum(v.Credit) Order By v.AccountCode, v.ClassID, v.ObjectID',
   2)
GO
insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (2859, N'تراز هشت ستوني تفصيلي ها',
   N'Select v.GroupCode as [كد گروه], v.GroupName as [نام گروه], v.LedgerCode as [كد كل], v.LedgerName as [نام كل], v.AccountCode as [كد حساب], v.AccountName as [نام حساب], v.AccountCode + N'' '' + v.ClassName as [حساب و طبقه], v.ObjectID as [كد تفصيلي], v.ObjectName as [نام تفصيلي], sum(case when v.DocumentDate < @2 then v.Debit else 0 end) as [اول دوره بدهكار], sum(case when v.DocumentDate < @2 then v.Credit else 0 end) as [اول دوره بستانكار], sum(case when v.DocumentDate >= @2 then v.Debit else 0 end) as [طي دوره بدهكار], sum(case when v.DocumentDate >= @2 then v.Credit else 0 end) as [طي دوره بستانكار], cast(v.AccountCode as int) * 1000 + v.ClassID as [ترتيب], count(*) as [تعداد رديف], sum(v.Debit) as [جمع بدهكار], sum(v.Credit) as [جمع بستانكار], case when sum(v.Debit) > sum(v.Credit) then sum(v.Debit) - sum(v.Credit) else 0 end as [مانده بدهكار], case when sum(v.Credit) > sum(v.Debit) then sum(v.Credit) - sum(v.Debit) else 0 end as [مانده بستانكار] from vwAccountLedgerLine v Where (v.PeriodID = @1) and (v.DocumentDate <= @3) and ((v.DocumentCode >= @4) or (v.DocumentDate < @2)) and ((v.DocumentCode <= @5) or (v.DocumentDate < @2)) and (v.AccountName like @6) and (v.DocumentDescription like @7) and (v.IsPreDoc <= @8) and (v.DocumentID > @9) group by v.GroupCode, v.GroupName, v.LedgerCode, v.LedgerName, v.AccountCode, v.AccountName, v.ClassID, v.ClassName, v.ObjectID, v.ObjectName having (@10)=0 or sum(v.Debit) <> sum(v.Credit) Order By v.AccountCode, v.ClassID, v.ObjectID',
   2)
GO
-- A year at a glance.
insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (2860, N'گردش ماهانه سال مالي',
   N'Select left(v.FarsiDocumentDate, 7) as [ماه], count(distinct v.DocumentID) as [تعداد سند], sum(v.Debit) as [گردش بدهكار], sum(v.Credit) as [گردش بستانكار] from vwAccountLedgerLine v Where (v.PeriodID = @1) group by left(v.FarsiDocumentDate, 7) Order By left(v.FarsiDocumentDate, 7)',
   1)
GO
insert into tblVorekReport (ID, Title, SQLQuery, Cols) values
  (2921, N'خلاصه اسناد سال مالي',
   N'Select v.DocumentCode as [شماره سند], v.FarsiDocumentDate as [تاريخ سند], v.DocumentDescription as [شرح سند], count(*) as [تعداد رديف], sum(v.Debit) as [گردش بدهكار], sum(v.Credit) as [گردش بستانكار], v.DocumentID as FormID, 907 as FormTypeID from vwAccountLedgerLine v Where (v.PeriodID = @1) and (v.DocumentDate >= @2) and (v.DocumentDate <= @3) and (v.DocumentCode >= @4) and (v.DocumentCode <= @5) group by v.DocumentID, v.DocumentCode, v.FarsiDocumentDate, v.DocumentDescription Order By v.DocumentCode',
   2)
GO

-- The forms. The reports 2850, 2851 and 2853 begin with their first two options off and the third on,
-- the others with the first one on.
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
  (2846, 1, 1, N'سال مالي', N'سال مالي', 2, 'int', 'vwAccountPeriodMajor', 'Name'),
  (2846, 2, 2, N'از تاريخ', N'از تاريخ', 1, 'datetime', null, null),
  (2846, 3, 3, N'تا تاريخ', N'تا تاريخ', 1, 'datetime', null, null),
  (2846, 4, 4, N'از شماره سند', N'از شماره سند', 1002, 'int', null, null),
  (2846, 5, 5, N'تا شماره سند', N'تا شماره سند', 1002, 'int', null, null),
  (2846, 6, 6, N'نام حساب', N'نام حساب', 1002, 'nvarchar', null, null),
  (2846, 7, 7, N'شرح سند', N'شرح سند', 1002, 'nvarchar', null, null),
  (2846, 8, 8, N'با پيش نويس', N'با اسناد پيش نويس', 1006, 'bit', null, null),
  (2846, 9, 9, N'بدون افتتاحيه', N'بدون سند افتتاحيه', 1006, 'bit', null, null),
  (2846, 10, 10, N'فقط مانده دار', N'فقط حسابهاي مانده دار', 1006, 'bit', null, null),
  (2850, 1, 1, N'سال مالي', N'سال مالي', 2, 'int', 'vwAccountPeriodMajor', 'Name'),
  (2850, 2, 2, N'از تاريخ', N'از تاريخ', 1, 'datetime', null, null),
  (2850, 3, 3, N'تا تاريخ', N'تا تاريخ', 1, 'datetime', null, null),
  (2850, 4, 4, N'از شماره سند', N'از شماره سند', 1002, 'int', null, null),
  (2850, 5, 5, N'تا شماره سند', N'تا شماره سند', 1002, 'int', null, null),
  (2850, 6, 6, N'نام حساب', N'نام حساب', 1002, 'nvarchar', null, null),
  (2850, 7, 7, N'شرح سند', N'شرح سند', 1002, 'nvarchar', null, null),
  (2850, 8, 8, N'فقط مانده دار', N'فقط حسابهاي مانده دار', 1006, 'bit', null, null),
  (2850, 9, 9, N'بدون افتتاحيه', N'بدون سند افتتاحيه', 1006, 'bit', null, null),
  (2850, 10, 10, N'با پيش نويس', N'با اسناد پيش نويس', 1006, 'bit', null, null)
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, MajorView, MinorView)
select r.ID, p.ParameterID, p.Sequence, p.Name, p.Description, p.ControlTypeID, p.Type, p.MajorView, p.MinorView
from tblVorekReportParameter p inner join tblVorekReport r on r.ID in (2849, 2852, 2856, 2857, 2858, 2859) where p.ReportID = 2846
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, MajorView, MinorView)
select r.ID, p.ParameterID, p.Sequence, p.Name, p.Description, p.ControlTypeID, p.Type, p.MajorView, p.MinorView
from tblVorekReportParameter p inner join tblVorekReport r on r.ID in (2848) where p.ReportID = 2834
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, MajorView, MinorView)
select r.ID, p.ParameterID, p.Sequence, p.Name, p.Description, p.ControlTypeID, p.Type, p.MajorView, p.MinorView
from tblVorekReportParameter p inner join tblVorekReport r on r.ID in (2851, 2853) where p.ReportID = 2850
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, MajorView, MinorView)
select 2921, ParameterID, Sequence, Name, Description, ControlTypeID, Type, MajorView, MinorView
from tblVorekReportParameter where ReportID = 2846 and ParameterID <= 5
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, MajorView, MinorView)
select 2860, ParameterID, Sequence, Name, Description, ControlTypeID, Type, MajorView, MinorView
from tblVorekReportParameter where ReportID = 2846 and ParameterID = 1
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, MajorView, MinorView) values
  (2840, 1, 1, N'از تاريخ', N'از تاريخ', 1, 'datetime', null, null),
  (2840, 2, 2, N'تا تاريخ', N'تا تاريخ', 1, 'datetime', null, null),
  (2842, 1, 1, N'از تاريخ', N'از تاريخ', 1, 'datetime', null, null),
  (2842, 2, 2, N'تا تاريخ', N'تا تاريخ', 1, 'datetime', null, null),
  (2843, 1, 1, N'از تاريخ', N'از تاريخ', 1, 'datetime', null, null),
  (2843, 2, 2, N'تا تاريخ', N'تا تاريخ', 1, 'datetime', null, null),
  (2847, 1, 1, N'از تاريخ', N'از تاريخ', 1, 'datetime', null, null),
  (2847, 2, 2, N'تا تاريخ', N'تا تاريخ', 1, 'datetime', null, null),
  (2843, 3, 3, N'طبقه', N'طبقه', 2, 'int', 'vwAccountClassMajor', 'Name'),
  (2843, 4, 4, N'كد حساب', N'كد حساب', 1002, 'nvarchar', null, null),
  (2844, 1, 1, N'كد حساب', N'كد حساب', 1002, 'nvarchar', null, null),
  (2844, 2, 2, N'از تاريخ', N'از تاريخ', 1, 'datetime', null, null),
  (2844, 3, 3, N'تا تاريخ', N'تا تاريخ', 1, 'datetime', null, null),
  (2844, 4, 4, N'كد كل', N'كد كل', 1002, 'nvarchar', null, null),
  (2844, 5, 5, N'طبقه', N'طبقه', 2, 'int', 'vwAccountClassMajor', 'Name'),
  (2844, 6, 6, N'كد تفصيلي', N'كد تفصيلي', 1002, 'int', null, null)
GO

-- From a class to its accounts, from there to the ledger, and on to the voucher.
insert into tblVorekRelatedReports (CallerReportID, CalledReportID, CallerReportColumn, CallerParameterID, CalledParameterID, isSecondary) values
  (2834, 2844, N'كد حساب', null, 1, 0),
  (2834, 2844, null, 2, 2, 0),
  (2834, 2844, null, 3, 3, 0),
  (2840, 2844, N'كد كل', null, 4, 0),
  (2840, 2844, null, 1, 2, 0),
  (2840, 2844, null, 2, 3, 0),
  (2842, 2843, N'كد طبقه', null, 3, 0),
  (2842, 2843, N'كد حساب', null, 4, 0),
  (2842, 2843, null, 1, 1, 0),
  (2842, 2843, null, 2, 2, 0),
  (2842, 2844, N'كد طبقه', null, 5, 1),
  (2842, 2844, N'كد حساب', null, 1, 1),
  (2842, 2844, null, 1, 2, 1),
  (2842, 2844, null, 2, 3, 1),
  (2843, 2844, N'كد طبقه', null, 5, 0),
  (2843, 2844, N'كد تفصيلي', null, 6, 0),
  (2843, 2844, N'كد حساب', null, 1, 0),
  (2843, 2844, null, 1, 2, 0),
  (2843, 2844, null, 2, 3, 0),
  (2846, 2844, N'كد حساب', null, 1, 0),
  (2846, 2844, null, 3, 3, 0),
  (2850, 2844, N'كد حساب', null, 1, 0),
  (2850, 2844, null, 3, 3, 0),
  (2851, 2844, N'كد حساب', null, 1, 0),
  (2851, 2844, null, 3, 3, 0),
  (2852, 2844, N'كد حساب', null, 1, 0),
  (2852, 2844, null, 3, 3, 0),
  (2853, 2844, N'كد حساب', null, 1, 0),
  (2853, 2844, null, 3, 3, 0),
  (2857, 2844, N'كد حساب', null, 1, 0),
  (2857, 2844, null, 3, 3, 0),
  (2844, 404, N'FormID', null, 1, 0),
  (2848, 404, N'FormID', null, 1, 0),
  (2921, 404, N'FormID', null, 1, 0)
GO

-- Widths, and the columns that programs alone read.
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width, MakeSum) values
  (2844, 1, 4, 1000, 0),
  (2844, 2, 4, 1200, 0),
  (2844, 3, 4, 800, 0),
  (2844, 4, 4, 800, 0),
  (2844, 5, 7, 1900, 0),
  (2844, 6, 4, 900, 0),
  (2844, 7, 7, 2000, 0),
  (2844, 8, 4, 900, 0),
  (2844, 9, 7, 2200, 0),
  (2844, 10, 7, 2600, 0),
  (2844, 11, 4, 1700, 0),
  (2844, 12, 4, 1700, 0),
  (2844, 13, 4, 0, 0),
  (2844, 14, 4, 0, 0),
  (2844, 15, 4, 1300, 0),
  (2844, 16, 4, 1700, 0),
  (2844, 17, 4, 1700, 0),
  (2848, 1, 4, 1000, 0),
  (2848, 2, 4, 1200, 0),
  (2848, 3, 4, 800, 0),
  (2848, 4, 4, 900, 0),
  (2848, 5, 7, 2000, 0),
  (2848, 6, 7, 2000, 0),
  (2848, 7, 7, 2600, 0),
  (2848, 8, 4, 1700, 1),
  (2848, 9, 4, 1700, 1),
  (2848, 10, 4, 0, 0),
  (2848, 11, 4, 0, 0),
  (2921, 1, 4, 1000, 0),
  (2921, 2, 4, 1200, 0),
  (2921, 3, 7, 3000, 0),
  (2921, 4, 4, 1000, 0),
  (2921, 5, 4, 1800, 1),
  (2921, 6, 4, 1800, 1),
  (2921, 7, 4, 0, 0),
  (2921, 8, 4, 0, 0)
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width, MakeSum) values
  (2840, 1, 4, 1000, 0), (2840, 2, 7, 2100, 0), (2840, 3, 4, 1900, 0), (2840, 4, 4, 1900, 0),
  (2840, 5, 4, 1900, 0), (2840, 6, 4, 1900, 0), (2842, 1, 4, 1000, 0), (2842, 2, 7, 2100, 0),
  (2842, 3, 4, 1000, 0), (2842, 4, 7, 2100, 0), (2842, 5, 4, 1900, 0), (2842, 6, 4, 1900, 0),
  (2842, 7, 4, 1900, 0), (2842, 8, 4, 1900, 0), (2843, 1, 4, 1000, 0), (2843, 2, 7, 2100, 0),
  (2843, 3, 4, 1000, 0), (2843, 4, 7, 2100, 0), (2843, 5, 4, 1000, 0), (2843, 6, 7, 2100, 0),
  (2843, 7, 4, 1900, 0), (2843, 8, 4, 1900, 0), (2843, 9, 4, 1900, 0), (2843, 10, 4, 1900, 0),
  (2846, 1, 4, 1000, 0), (2846, 2, 7, 2100, 0), (2846, 3, 4, 1900, 0), (2846, 4, 4, 1900, 0),
  (2846, 5, 4, 1900, 0), (2846, 6, 4, 1900, 0), (2846, 7, 4, 1900, 0), (2846, 8, 4, 1900, 0),
  (2846, 9, 4, 1900, 0), (2846, 10, 4, 1900, 0), (2847, 1, 4, 3600, 0), (2847, 2, 7, 2100, 0),
  (2847, 3, 4, 1000, 0), (2847, 4, 7, 2100, 0), (2847, 5, 4, 1900, 0), (2847, 6, 4, 1900, 0),
  (2847, 7, 4, 1000, 0), (2847, 8, 4, 1200, 0), (2847, 9, 4, 1900, 0), (2847, 10, 4, 1900, 0),
  (2849, 1, 4, 1000, 0), (2849, 2, 7, 2100, 0), (2849, 3, 4, 1000, 0), (2849, 4, 4, 1900, 0),
  (2849, 5, 4, 1900, 0), (2849, 6, 4, 1900, 0), (2849, 7, 4, 1900, 0), (2850, 1, 4, 1000, 0),
  (2850, 2, 7, 2100, 0), (2850, 3, 4, 1900, 0), (2850, 4, 4, 1900, 0), (2850, 5, 4, 1900, 0),
  (2850, 6, 4, 1900, 0), (2850, 7, 4, 1900, 0), (2850, 8, 4, 1900, 0), (2851, 1, 7, 2100, 0),
  (2851, 2, 4, 1000, 0), (2851, 3, 7, 3600, 0), (2851, 4, 4, 1900, 0), (2851, 5, 4, 1900, 0),
  (2851, 6, 4, 1900, 0), (2851, 7, 4, 1900, 0), (2851, 8, 4, 1900, 0), (2851, 9, 4, 1900, 0),
  (2851, 10, 4, 1900, 0), (2851, 11, 4, 1900, 0), (2852, 1, 4, 1000, 0), (2852, 2, 7, 2100, 0),
  (2852, 3, 4, 1000, 0), (2852, 4, 7, 2100, 0), (2852, 5, 4, 1000, 0), (2852, 6, 7, 2100, 0),
  (2852, 7, 4, 3600, 0), (2852, 8, 4, 1900, 0), (2852, 9, 4, 1900, 0), (2852, 10, 4, 1900, 0),
  (2852, 11, 4, 1900, 0), (2853, 1, 4, 1000, 0), (2853, 2, 7, 2100, 0), (2853, 3, 4, 1000, 0),
  (2853, 4, 7, 2100, 0), (2853, 5, 4, 1000, 0), (2853, 6, 7, 2100, 0), (2853, 7, 4, 3600, 0),
  (2853, 8, 4, 1900, 0), (2853, 9, 4, 1900, 0), (2853, 10, 4, 1900, 0), (2853, 11, 4, 1900, 0),
  (2853, 12, 4, 1900, 0), (2853, 13, 4, 1900, 0), (2853, 14, 4, 1900, 0), (2853, 15, 4, 1900, 0),
  (2856, 1, 4, 1000, 0), (2856, 2, 7, 2100, 0), (2856, 3, 4, 1200, 0), (2856, 4, 4, 1900, 0),
  (2856, 5, 4, 1900, 0), (2856, 6, 4, 1900, 0), (2856, 7, 4, 1900, 0), (2857, 1, 7, 2100, 0),
  (2857, 2, 4, 1000, 0), (2857, 3, 7, 3600, 0), (2857, 4, 4, 1900, 0), (2857, 5, 4, 1900, 0),
  (2857, 6, 4, 1900, 0), (2857, 7, 4, 1900, 0), (2858, 1, 4, 1000, 0), (2858, 2, 7, 2100, 0),
  (2858, 3, 4, 1000, 0), (2858, 4, 7, 2100, 0), (2858, 5, 4, 1000, 0), (2858, 6, 7, 2100, 0),
  (2858, 7, 7, 2100, 0), (2858, 8, 4, 1000, 0), (2858, 9, 7, 3600, 0), (2858, 10, 4, 1900, 0),
  (2858, 11, 4, 1900, 0), (2858, 12, 4, 1900, 0), (2858, 13, 4, 1900, 0), (2858, 14, 4, 0, 0),
  (2859, 1, 4, 1000, 0), (2859, 2, 7, 2100, 0), (2859, 3, 4, 1000, 0), (2859, 4, 7, 2100, 0),
  (2859, 5, 4, 1000, 0), (2859, 6, 7, 2100, 0), (2859, 7, 7, 2100, 0), (2859, 8, 4, 1000, 0),
  (2859, 9, 7, 3600, 0), (2859, 10, 4, 1900, 0), (2859, 11, 4, 1900, 0), (2859, 12, 4, 1900, 0),
  (2859, 13, 4, 1900, 0), (2859, 14, 4, 0, 0), (2859, 15, 4, 1000, 0), (2859, 16, 4, 1900, 0),
  (2859, 17, 4, 1900, 0), (2859, 18, 4, 1900, 0), (2859, 19, 4, 1900, 0), (2860, 1, 4, 1000, 0),
  (2860, 2, 4, 1000, 0), (2860, 3, 4, 1900, 0), (2860, 4, 4, 1900, 0), (2834, 1, 4, 1000, 0),
  (2834, 2, 7, 2600, 0), (2834, 3, 4, 1900, 0), (2834, 4, 4, 1900, 0)
GO

-- Balances over lists of accounts and of objects, which procedures gather.
insert into tblVorekReport (ID, Title, SQLQuery, SQLSP, IsStoredProcedure, Cols) values
  (411, N'مانده حسابها با نام تفصيلي', N'',
   N'spAccountBalanceMoeinOnMultiDetail2 ''1403/01/01'',''1404/12/29'',(@1),(@2),(@3)', 1, 1),
  (412, N'تراز چهار ستوني دو طبقه', N'',
   N'spAccountBalanceMultiTafsil_4Cols ''1404/01/01'',''1404/12/29'',(@1),(@2),(@4),(@5),(@3)', 1, 1),
  (413, N'تراز هشت ستوني دو طبقه', N'',
   N'spAccountBalanceMultiTafsil_8Cols ''1404/01/01'',''1404/12/29'',(@1),(@2),(@4),(@5),(@3)', 1, 1)
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, RowSpan, MajorView, MinorView, DepOnParameterIDObject)
select r.ID, p.ParameterID, p.Sequence, p.Name, p.Description, p.ControlTypeID, p.Type, p.RowSpan, p.MajorView, p.MinorView, p.DepOnParameterIDObject
from tblVorekReportParameter p inner join tblVorekReport r on r.ID in (411, 412, 413)
where p.ReportID = 406
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, RowSpan, MajorView, MinorView, DepOnParameterIDObject) values
  (412, 4, 4, N'طبقه دوم', N'طبقه دوم', 2, 'int', 1, 'vwAccountClassMajor', 'Name', null),
  (412, 5, 5, N'تفصيلي دوم', N'تفصيلي دوم', 1007, 'int', 4, 'vwRecPayCashMajor', 'Name', 4),
  (413, 4, 4, N'طبقه دوم', N'طبقه دوم', 2, 'int', 1, 'vwAccountClassMajor', 'Name', null),
  (413, 5, 5, N'تفصيلي دوم', N'تفصيلي دوم', 1007, 'int', 4, 'vwRecPayCashMajor', 'Name', 4)
GO
