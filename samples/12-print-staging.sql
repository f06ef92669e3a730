-- What a stored print template sees: the rows of the grid and its headers, kept for each user.

create table tblVorekCrystalReport (
  UserID int not null,
  ReportID int not null,
  Sequence int not null,
  Column1 nvarchar(500) default '', Column2 nvarchar(500) default '',
  Column3 nvarchar(500) default '', Column4 nvarchar(500) default '',
  Column5 nvarchar(500) default '', Column6 nvarchar(500) default '',
  Column7 nvarchar(500) default '', Column8 nvarchar(500) default '',
  Column9 nvarchar(500) default '', Column10 nvarchar(500) default '',
  Column11 nvarchar(500) default '', Column12 nvarchar(500) default '',
  Column13 nvarchar(500) default '', Column14 nvarchar(500) default '',
  Column15 nvarchar(500) default '', Column16 nvarchar(500) default '',
  Column17 nvarchar(500) default '', Column18 nvarchar(500) default '',
  Column19 nvarchar(500) default '', Column20 nvarchar(500) default '',
  Column21 nvarchar(500) default '', Column22 nvarchar(500) default '',
  Column23 nvarchar(500) default '', Column24 nvarchar(500) default '',
  Column25 nvarchar(500) default '', Column26 nvarchar(500) default '',
  Column27 nvarchar(500) default '', Column28 nvarchar(500) default '',
  Column29 nvarchar(500) default '', Column30 nvarchar(500) default '',
  Column31 nvarchar(500) default '', Column32 nvarchar(500) default '',
  Column33 nvarchar(500) default '', Column34 nvarchar(500) default '',
  Column35 nvarchar(500) default '', Column36 nvarchar(500) default '',
  Column37 nvarchar(500) default '', Column38 nvarchar(500) default '',
  Column39 nvarchar(500) default '', Column40 nvarchar(500) default '',
  Column41 nvarchar(500) default '', Column42 nvarchar(500) default '',
  Column43 nvarchar(500) default '', Column44 nvarchar(500) default '',
  Column45 nvarchar(500) default '', Column46 nvarchar(500) default '',
  Column47 nvarchar(500) default '', Column48 nvarchar(500) default '',
  Column49 nvarchar(500) default '', Column50 nvarchar(500) default '',
  primary key (UserID, ReportID, Sequence)
)
GO
create table tblVorekCrystalReportHeader (
  UserID int not null,
  ReportID int not null,
  Column1 nvarchar(500) default '', Column2 nvarchar(500) default '',
  Column3 nvarchar(500) default '', Column4 nvarchar(500) default '',
  Column5 nvarchar(500) default '', Column6 nvarchar(500) default '',
  Column7 nvarchar(500) default '', Column8 nvarchar(500) default '',
  Column9 nvarchar(500) default '', Column10 nvarchar(500) default '',
  Column11 nvarchar(500) default '', Column12 nvarchar(500) default '',
  Column13 nvarchar(500) default '', Column14 nvarchar(500) default '',
  Column15 nvarchar(500) default '', Column16 nvarchar(500) default '',
  Column17 nvarchar(500) default '', Column18 nvarchar(500) default '',
  Column19 nvarchar(500) default '', Column20 nvarchar(500) default '',
  Column21 nvarchar(500) default '', Column22 nvarchar(500) default '',
  Column23 nvarchar(500) default '', Column24 nvarchar(500) default '',
  Column25 nvarchar(500) default '', Column26 nvarchar(500) default '',
  Column27 nvarchar(500) default '', Column28 nvarchar(500) default '',
  Column29 nvarchar(500) default '', Column30 nvarchar(500) default '',
  Column31 nvarchar(500) default '', Column32 nvarchar(500) default '',
  Column33 nvarchar(500) default '', Column34 nvarchar(500) default '',
  Column35 nvarchar(500) default '', Column36 nvarchar(500) default '',
  Column37 nvarchar(500) default '', Column38 nvarchar(500) default '',
  Column39 nvarchar(500) default '', Column40 nvarchar(500) default '',
  Column41 nvarchar(500) default '', Column42 nvarchar(500) default '',
  Column43 nvarchar(500) default '', Column44 nvarchar(500) default '',
  Column45 nvarchar(500) default '', Column46 nvarchar(500) default '',
  Column47 nvarchar(500) default '', Column48 nvarchar(500) default '',
  Column49 nvarchar(500) default '', Column50 nvarchar(500) default ''
)
GO
create table tblQDLCrystalReportHeader (
  UserID int not null,
  ReportID int not null,
  Column1 nvarchar(500) default '', Column2 nvarchar(500) default '',
  Column3 nvarchar(500) default '', Column4 nvarchar(500) default '',
  Column5 nvarchar(500) default '', Column6 nvarchar(500) default '',
  Column7 nvarchar(500) default '', Column8 nvarchar(500) default '',
  Column9 nvarchar(500) default '', Column10 nvarchar(500) default '',
  Column11 nvarchar(500) default '', Column12 nvarchar(500) default '',
  Column13 nvarchar(500) default '', Column14 nvarchar(500) default '',
  Column15 nvarchar(500) default '', Column16 nvarchar(500) default '',
  Column17 nvarchar(500) default '', Column18 nvarchar(500) default '',
  Column19 nvarchar(500) default '', Column20 nvarchar(500) default '',
  Column21 nvarchar(500) default '', Column22 nvarchar(500) default '',
  Column23 nvarchar(500) default '', Column24 nvarchar(500) default '',
  Column25 nvarchar(500) default '', Column26 nvarchar(500) default '',
  Column27 nvarchar(500) default '', Column28 nvarchar(500) default '',
  Column29 nvarchar(500) default '', Column30 nvarchar(500) default '',
  Column31 nvarchar(500) default '', Column32 nvarchar(500) default '',
  Column33 nvarchar(500) default '', Column34 nvarchar(500) default '',
  Column35 nvarchar(500) default '', Column36 nvarchar(500) default '',
  Column37 nvarchar(500) default '', Column38 nvarchar(500) default '',
  Column39 nvarchar(500) default '', Column40 nvarchar(500) default '',
  Column41 nvarchar(500) default '', Column42 nvarchar(500) default '',
  Column43 nvarchar(500) default '', Column44 nvarchar(500) default '',
  Column45 nvarchar(500) default '', Column46 nvarchar(500) default '',
  Column47 nvarchar(500) default '', Column48 nvarchar(500) default '',
  Column49 nvarchar(500) default '', Column50 nvarchar(500) default ''
)
GO

-- The print of the invoices (report 201) has a view of its own, with names for its columns.
create view vwVorekCrystalReport_201 as
select UserID, ReportID, Sequence, Column2 as InvoiceCode, Column3 as InvoiceDate,
  Column4 as CustomerName, Column5 as PromoterName, Column6 as GrossValue, Column9 as NetValue
from tblVorekCrystalReport where ReportID = 201
GO
