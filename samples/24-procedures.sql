-- Procedures that reports call.

-- Sales of each salesperson between two dates.
create procedure spSaleByPromoter @FromDate nvarchar(10), @ToDate nvarchar(10) as
select tblSalePromoter.Code as [كد بازارياب], tblSalePromoter.FullName as [نام بازارياب],
  count(*) as [تعداد فاكتور], sum(tblSaleInvoice.NetValue) as [مبلغ خالص],
  tblSalePromoter.CommissionPercent as [درصد پورسانت]
from tblSaleInvoice inner join tblSalePromoter on tblSalePromoter.ID = tblSaleInvoice.PromoterID
where tblSaleInvoice.FarsiInvoiceDate >= @FromDate and tblSaleInvoice.FarsiInvoiceDate <= @ToDate
group by tblSalePromoter.Code, tblSalePromoter.FullName, tblSalePromoter.CommissionPercent
order by tblSalePromoter.Code
GO

-- The customers that bought most.
create procedure spSaleTopCustomers as
select top 20 tblSaleCustomer.Code as [كد مشتري], tblSaleCustomer.Name as [نام مشتري],
  count(*) as [تعداد فاكتور], sum(tblSaleInvoice.NetValue) as [مبلغ خالص]
from tblSaleInvoice inner join tblSaleCustomer on tblSaleCustomer.ID = tblSaleInvoice.CustomerID
group by tblSaleCustomer.Code, tblSaleCustomer.Name
order by sum(tblSaleInvoice.NetValue) desc
GO

-- Fills tblSaleGroupTotals and returns nothing: the report reads that table.
create procedure spSaleGroupTotals as
delete from tblSaleGroupTotals
insert into tblSaleGroupTotals (GroupName, GoodsCount, Quantity, LineValue)
select tblGoodsGroup.Name, count(distinct tblGoods.ID), sum(tblSaleInvoiceDetail.Quantity),
  sum(tblSaleInvoiceDetail.LineValue)
from tblSaleInvoiceDetail
inner join tblGoods on tblGoods.ID = tblSaleInvoiceDetail.GoodsID
inner join tblGoodsGroup on tblGoodsGroup.ID = tblGoods.GroupID
group by tblGoodsGroup.Name
GO

-- Balances of accounts over the objects of a class. The keys chosen stand in tblAccountTempID:
-- accounts with IDType 1, objects with IDType 2; @Objects is 'ALL' when every object counts, and
-- so does every one when none was chosen.
create procedure spAccountBalanceMoeinOnMultiDetail1 @FromDate nvarchar(10), @ToDate nvarchar(10),
  @ClassID int, @Objects nvarchar(10), @Accounts nvarchar(10) as
select tblAccount.Code as [كد حساب], tblAccount.Name as [نام حساب],
  tblAccountDocumentObjects.ObjectID as [كد تفصيلي], sum(tblAccountDocumentDetail.Debit) as [بدهكار],
  sum(tblAccountDocumentDetail.Credit) as [بستانكار]
from tblAccountDocumentDetail
inner join tblAccountDocument on tblAccountDocument.ID = tblAccountDocumentDetail.DocumentID
inner join tblAccount on tblAccount.ID = tblAccountDocumentDetail.AccountID
inner join tblAccountDocumentObjects
  on tblAccountDocumentObjects.DocumentID = tblAccountDocumentDetail.DocumentID
  and tblAccountDocumentObjects.RowNumber = tblAccountDocumentDetail.RowNumber
  and tblAccountDocumentObjects.ClassID = @ClassID
where tblAccountDocument.FarsiDocumentDate >= @FromDate
  and tblAccountDocument.FarsiDocumentDate <= @ToDate
  and (tblAccount.ID in (select ID from tblAccountTempID where IDType = 1)
    or not exists (select ID from tblAccountTempID where IDType = 1))
  and (@Objects = 'ALL'
    or tblAccountDocumentObjects.ObjectID in (select ID from tblAccountTempID where IDType = 2)
    or not exists (select ID from tblAccountTempID where IDType = 2))
group by tblAccount.Code, tblAccount.Name, tblAccountDocumentObjects.ObjectID
GO

-- The same with the names of the objects and the balance.
create procedure spAccountBalanceMoeinOnMultiDetail2 @FromDate nvarchar(10), @ToDate nvarchar(10),
  @ClassID int, @Objects nvarchar(10), @Accounts nvarchar(10) as
select v.AccountCode as [كد حساب], v.AccountName as [نام حساب], v.ObjectID as [كد تفصيلي],
  v.ObjectName as [نام تفصيلي], sum(v.Debit) as [بدهكار], sum(v.Credit) as [بستانكار],
  sum(v.Debit) - sum(v.Credit) as [مانده]
from vwAccountLedgerLine v inner join tblAccount a on a.Code = v.AccountCode
where v.FarsiDocumentDate >= @FromDate and v.FarsiDocumentDate <= @ToDate and v.ClassID = @ClassID
  and (a.ID in (select ID from tblAccountTempID where IDType = 1)
    or not exists (select ID from tblAccountTempID where IDType = 1))
  and (@Objects = 'ALL' or v.ObjectID in (select ID from tblAccountTempID where IDType = 2)
    or not exists (select ID from tblAccountTempID where IDType = 2))
group by v.AccountCode, v.AccountName, v.ObjectID, v.ObjectName
order by v.AccountCode, v.ObjectID
GO

-- Balances of accounts over the objects of two classes, the second of which have IDType 3: in four
-- columns, and in eight with what was before the first day of the span.
create procedure spAccountBalanceMultiTafsil_4Cols @FromDate nvarchar(10), @ToDate nvarchar(10),
  @ClassID int, @Objects nvarchar(10), @SecondClassID int, @SecondObjects nvarchar(10),
  @Accounts nvarchar(10) as
select v.AccountCode as [كد حساب], v.AccountName as [نام حساب], v.ClassName as [نام طبقه],
  v.ObjectID as [كد تفصيلي], v.ObjectName as [نام تفصيلي], sum(v.Debit) as [گردش بدهكار],
  sum(v.Credit) as [گردش بستانكار],
  case when sum(v.Debit) > sum(v.Credit) then sum(v.Debit) - sum(v.Credit) else 0 end as [مانده بدهكار],
  case when sum(v.Credit) > sum(v.Debit) then sum(v.Credit) - sum(v.Debit) else 0 end as [مانده بستانكار]
from vwAccountLedgerLine v inner join tblAccount a on a.Code = v.AccountCode
where v.FarsiDocumentDate >= @FromDate and v.FarsiDocumentDate <= @ToDate
  and (a.ID in (select ID from tblAccountTempID where IDType = 1)
    or not exists (select ID from tblAccountTempID where IDType = 1))
  and ((v.ClassID = @ClassID
      and (v.ObjectID in (select ID from tblAccountTempID where IDType = 2)
        or not exists (select ID from tblAccountTempID where IDType = 2)))
    or (v.ClassID = @SecondClassID
      and (@SecondObjects = 'ALL' or v.ObjectID in (select ID from tblAccountTempID where IDType = 3)
        or not exists (select ID from tblAccountTempID where IDType = 3))))
group by v.AccountCode, v.AccountName, v.ClassID, v.ClassName, v.ObjectID, v.ObjectName
order by v.AccountCode, v.ClassID, v.ObjectID
GO
create procedure spAccountBalanceMultiTafsil_8Cols @FromDate nvarchar(10), @ToDate nvarchar(10),
  @ClassID int, @Objects nvarchar(10), @SecondClassID int, @SecondObjects nvarchar(10),
  @Accounts nvarchar(10) as
select v.AccountCode as [كد حساب], v.AccountName as [نام حساب], v.ClassName as [نام طبقه],
  v.ObjectID as [كد تفصيلي], v.ObjectName as [نام تفصيلي],
  sum(case when v.FarsiDocumentDate < @FromDate then v.Debit else 0 end) as [اول دوره بدهكار],
  sum(case when v.FarsiDocumentDate < @FromDate then v.Credit else 0 end) as [اول دوره بستانكار],
  sum(case when v.FarsiDocumentDate >= @FromDate then v.Debit else 0 end) as [طي دوره بدهكار],
  sum(case when v.FarsiDocumentDate >= @FromDate then v.Credit else 0 end) as [طي دوره بستانكار],
  sum(v.Debit) as [جمع بدهكار], sum(v.Credit) as [جمع بستانكار],
  case when sum(v.Debit) > sum(v.Credit) then sum(v.Debit) - sum(v.Credit) else 0 end as [مانده بدهكار],
  case when sum(v.Credit) > sum(v.Debit) then sum(v.Credit) - sum(v.Debit) else 0 end as [مانده بستانكار]
from vwAccountLedgerLine v inner join tblAccount a on a.Code = v.AccountCode
where v.FarsiDocumentDate <= @ToDate
  and (a.ID in (select ID from tblAccountTempID where IDType = 1)
    or not exists (select ID from tblAccountTempID where IDType = 1))
  and ((v.ClassID = @ClassID
      and (v.ObjectID in (select ID from tblAccountTempID where IDType = 2)
        or not exists (select ID from tblAccountTempID where IDType = 2)))
    or (v.ClassID = @SecondClassID
      and (@SecondObjects = 'ALL' or v.ObjectID in (select ID from tblAccountTempID where IDType = 3)
        or not exists (select ID from tblAccountTempID where IDType = 3))))
group by v.AccountCode, v.AccountName, v.ClassID, v.ClassName, v.ObjectID, v.ObjectName
order by v.AccountCode, v.ClassID, v.ObjectID
GO

-- Leaves nothing behind and returns nothing.
create procedure spSaleNothing as
delete from tblSaleGroupTotals
GO

-- The reports of regions and provinces read their views directly; a plain call does the same.
create procedure spSaleRegionPromoterReport @FromDate nvarchar(10), @ToDate nvarchar(10),
  @FromRegionID int, @ToRegionID int as
select * from vwSaleRegionPromoterReport
GO
create procedure spSaleExternalLocationReport @FromDate nvarchar(10), @ToDate nvarchar(10),
  @FromRegionID int, @ToRegionID int as
select * from vwSaleExternalLocationReport
GO
