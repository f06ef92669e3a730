-- Views: what the input controls of parameter forms offer (ID and Name; ParentID where it is a
-- tree, Alt where there is a second way to name a row), and what reports read.

create view vwVorekBasePath as select BasePath from tblBasePath
GO
create view vwBranchMajor as select ID, Name from tblBranch
GO
create view vwEmployeeMajor as
select ID, FirstName + N' ' + SureName as Name from tblEmployee
GO
create view vwSaleCustomerMajor as select ID, Name, Code as Alt from tblSaleCustomer
GO
create view vwSalePromoterMajor as select ID, FullName as Name from tblSalePromoter
GO
create view vwSaleRegionMajor as select ID, ParentID, Name from tblSaleRegion
GO
create view vwSaleProvinceMajor as select ID, Name from tblSaleRegion where ParentID is null
GO
create view vwGoodsMajor as select ID, Name, Code as Alt from tblGoods
GO
create view vwGoodsGroupMajor as select ID, ParentID, Name from tblGoodsGroup
GO
create view vwRecPayCashMajor as select ID, Name from tblRecPayCash
GO
create view vwRecPayCashTurnMajor as select ID, Name, CashID from tblRecPayCashTurn
GO
create view vwAccountPeriodMajor as select ID, Name from tblAccountPeriod
GO
create view vwAccountClassMajor as select ID, Name from tblAccountClass
GO
create view vwAccountTwoLevels as
select tblAccount.ID, tblAccount.ParentID, tblAccount.Name, tblAccount.Code as Alt
from tblAccount where tblAccount.ParentID is not null
GO

-- Debit and credit of every account, those of the accounts below it included.
create view vwAccountTurnover as
select a.ID, sum(d.Debit) as Debit, sum(d.Credit) as Credit
from tblAccount a
inner join tblAccount x on x.ID = a.ID or x.ParentID = a.ID
  or x.ParentID in (select y.ID from tblAccount y where y.ParentID = a.ID)
inner join tblAccountDocumentDetail d on d.AccountID = x.ID
group by a.ID
GO

-- Sales of a span of dates and regions, which the caller leaves in tblSaleRegionPromoterReport:
-- regions with their customers below them, and provinces with their customers below them.
create view vwSaleRegionPromoterReport as
select r.ID as ID, null as ParentID, p.Name as GeoLocation, r.Name as Region, N'' as Path,
  N'' as Promoter, null as CustomerCode, N'' as CustomerName,
  sum(i.GrossValue) as InvoiceValue, sum(i.DiscountValue) as DiscountValue, 0 as ReturnValue
from tblSaleRegionPromoterReport b
inner join tblSaleInvoice i on i.FarsiInvoiceDate >= b.FarsiFromDate
  and i.FarsiInvoiceDate <= b.FarsiToDate
inner join tblSaleCustomer c on c.ID = i.CustomerID
inner join tblSaleRegion t on t.ID = c.PathID
inner join tblSaleRegion r on r.ID = t.ParentID
inner join tblSaleRegion p on p.ID = r.ParentID
where (b.RegionID < 1 or r.ID >= b.RegionID) and (b.ToRegionID < 1 or r.ID <= b.ToRegionID)
group by r.ID, p.Name, r.Name
union all
select 100000 + c.ID, r.ID, p.Name, r.Name, t.Name, m.FullName, c.Code, c.Name,
  sum(i.GrossValue), sum(i.DiscountValue),
  isnull((select sum(x.ReturnValue) from tblSaleReturn x where x.CustomerID = c.ID), 0)
from tblSaleRegionPromoterReport b
inner join tblSaleInvoice i on i.FarsiInvoiceDate >= b.FarsiFromDate
  and i.FarsiInvoiceDate <= b.FarsiToDate
inner join tblSaleCustomer c on c.ID = i.CustomerID
inner join tblSalePromoter m on m.ID = c.PromoterID
inner join tblSaleRegion t on t.ID = c.PathID
inner join tblSaleRegion r on r.ID = t.ParentID
inner join tblSaleRegion p on p.ID = r.ParentID
where (b.RegionID < 1 or r.ID >= b.RegionID) and (b.ToRegionID < 1 or r.ID <= b.ToRegionID)
group by c.ID, r.ID, p.Name, r.Name, t.Name, m.FullName, c.Code, c.Name
GO
create view vwSaleExternalLocationReport as
select p.ID as ID, null as ParentID, p.Name as GeoLocation, N'' as Region, N'' as Path,
  N'' as Promoter, null as CustomerCode, N'' as CustomerName,
  sum(i.GrossValue) as InvoiceValue, sum(i.DiscountValue) as DiscountValue, 0 as ReturnValue
from tblSaleRegionPromoterReport b
inner join tblSaleInvoice i on i.FarsiInvoiceDate >= b.FarsiFromDate
  and i.FarsiInvoiceDate <= b.FarsiToDate
inner join tblSaleCustomer c on c.ID = i.CustomerID
inner join tblSaleRegion t on t.ID = c.PathID
inner join tblSaleRegion r on r.ID = t.ParentID
inner join tblSaleRegion p on p.ID = r.ParentID
group by p.ID, p.Name
union all
select 100000 + c.ID, p.ID, p.Name, r.Name, t.Name, m.FullName, c.Code, c.Name,
  sum(i.GrossValue), sum(i.DiscountValue),
  isnull((select sum(x.ReturnValue) from tblSaleReturn x where x.CustomerID = c.ID), 0)
from tblSaleRegionPromoterReport b
inner join tblSaleInvoice i on i.FarsiInvoiceDate >= b.FarsiFromDate
  and i.FarsiInvoiceDate <= b.FarsiToDate
inner join tblSaleCustomer c on c.ID = i.CustomerID
inner join tblSalePromoter m on m.ID = c.PromoterID
inner join tblSaleRegion t on t.ID = c.PathID
inner join tblSaleRegion r on r.ID = t.ParentID
inner join tblSaleRegion p on p.ID = r.ParentID
group by c.ID, p.ID, p.Name, r.Name, t.Name, m.FullName, c.Code, c.Name
GO

-- What a voucher's line may name beside its account, by class.
create view vwAccountObject as
select 1 as ClassID, ID, Name from tblSaleCustomer
union all
select 2, ID, Name from tblRecPayCash
GO

-- Each line of each voucher with the period of its day, the three levels of its account, and the
-- object of a class; class 0 for a line without one.
create view vwAccountLedgerLine as
select p.ID as PeriodID, t.ID as DocumentID, t.Code as DocumentCode, isnull(t.IsPreDoc, 0) as IsPreDoc,
  t.DocumentDate, t.FarsiDocumentDate, t.Description as DocumentDescription, d.RowNumber,
  d.Debit, d.Credit, a.Code as AccountCode, a.Name as AccountName, k.Code as LedgerCode,
  k.Name as LedgerName, g.Code as GroupCode, g.Name as GroupName, isnull(o.ClassID, 0) as ClassID,
  isnull(c.Name, N'بدون تفصيلي') as ClassName, isnull(o.ObjectID, 0) as ObjectID,
  isnull(x.Name, N'') as ObjectName
from tblAccountDocumentDetail d
inner join tblAccountDocument t on t.ID = d.DocumentID
inner join tblAccountPeriod p on p.BeginDate <= t.DocumentDate and p.EndDate >= t.DocumentDate
inner join tblAccount a on a.ID = d.AccountID
inner join tblAccount k on k.ID = a.ParentID
inner join tblAccount g on g.ID = k.ParentID
left join tblAccountDocumentObjects o on o.DocumentID = d.DocumentID and o.RowNumber = d.RowNumber
left join tblAccountClass c on c.ID = o.ClassID
left join vwAccountObject x on x.ClassID = o.ClassID and x.ID = o.ObjectID
GO
