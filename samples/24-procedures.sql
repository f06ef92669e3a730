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
-- accounts with IDType 1, objects with IDType 2; @Objects is 'ALL' when every object counts.
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
  and tblAccount.ID in (select ID from tblAccountTempID where IDType = 1)
  and (@Objects = 'ALL'
    or tblAccountDocumentObjects.ObjectID in (select ID from tblAccountTempID where IDType = 2))
group by tblAccount.Code, tblAccount.Name, tblAccountDocumentObjects.ObjectID
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
