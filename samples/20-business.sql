-- The books of a trading company: who it sells to and what, its invoices, returns and receipts,
-- its accounts and vouchers, and the attendance of its employees. Amounts are rials; a Farsi date
-- is the text yyyy/mm/dd of the Persian calendar; times are minutes.

-- Regions are three levels deep: province, region, path.
create table tblSaleRegion (
  ID int not null primary key,
  ParentID int,
  Code nvarchar(20) not null,
  Name nvarchar(100) not null,
  foreign key (ParentID) references tblSaleRegion (ID)
)
GO
create table tblSalePromoter (
  ID int not null primary key,
  Code nvarchar(20) not null,
  FullName nvarchar(100) not null,
  RegionID int not null,
  CommissionPercent decimal(5,2) not null,
  FarsiHireDate nvarchar(10) not null,
  Mobile nvarchar(20),
  foreign key (RegionID) references tblSaleRegion (ID)
)
GO
create table tblSaleCustomer (
  ID int not null primary key,
  Code int not null,
  Name nvarchar(100) not null,
  PathID int not null,
  PromoterID int not null,
  Phone nvarchar(20),
  NationalCode bigint,
  CreditLimit money not null,
  FarsiRegisterDate nvarchar(10) not null,
  IsActive bit not null default 1,
  foreign key (PathID) references tblSaleRegion (ID),
  foreign key (PromoterID) references tblSalePromoter (ID)
)
GO
create table tblGoodsGroup (
  ID int not null primary key,
  ParentID int,
  Code nvarchar(20) not null,
  Name nvarchar(100) not null,
  foreign key (ParentID) references tblGoodsGroup (ID)
)
GO
create table tblGoods (
  ID int not null primary key,
  Code int not null,
  Name nvarchar(100) not null,
  GroupID int not null,
  Unit nvarchar(20) not null,
  Price money not null,
  Weight float,
  PackCount smallint not null,
  foreign key (GroupID) references tblGoodsGroup (ID)
)
GO

-- Invoices: GrossValue less DiscountValue plus TaxValue gives NetValue.
create table tblSaleInvoice (
  ID int not null primary key,
  Code int not null,
  CustomerID int not null,
  PromoterID int not null,
  InvoiceDate datetime not null,
  FarsiInvoiceDate nvarchar(10) not null,
  InvoiceTime int not null,
  GrossValue money not null,
  DiscountValue money not null,
  TaxValue money not null,
  NetValue money not null,
  Description nvarchar(200),
  foreign key (CustomerID) references tblSaleCustomer (ID),
  foreign key (PromoterID) references tblSalePromoter (ID)
)
GO
create index IX_SaleInvoice_Customer on tblSaleInvoice (CustomerID)
GO
create index IX_SaleInvoice_Date on tblSaleInvoice (FarsiInvoiceDate)
GO
create table tblSaleInvoiceDetail (
  InvoiceID int not null,
  RowNumber smallint not null,
  GoodsID int not null,
  Quantity decimal(18,3) not null,
  UnitPrice money not null,
  DiscountPercent decimal(5,2) not null,
  LineValue money not null,
  primary key (InvoiceID, RowNumber),
  foreign key (InvoiceID) references tblSaleInvoice (ID),
  foreign key (GoodsID) references tblGoods (ID)
)
GO
create index IX_SaleInvoiceDetail_Goods on tblSaleInvoiceDetail (GoodsID)
GO
create table tblSaleReturn (
  ID int not null primary key,
  Code int not null,
  SaleInvoiceID int,
  CustomerID int not null,
  FarsiReturnDate nvarchar(10) not null,
  ReturnValue money not null,
  Reason nvarchar(200),
  foreign key (SaleInvoiceID) references tblSaleInvoice (ID),
  foreign key (CustomerID) references tblSaleCustomer (ID)
)
GO

-- Treasury: a cash desk or bank account is opened and closed in turns.
create table tblRecPayCash (
  ID int not null primary key,
  Name nvarchar(100) not null,
  AccountID int not null
)
GO
create table tblRecPayCashTurn (
  ID int not null primary key,
  CashID int not null,
  Name nvarchar(100) not null,
  FarsiFromDate nvarchar(10) not null,
  FarsiToDate nvarchar(10) not null,
  foreign key (CashID) references tblRecPayCash (ID)
)
GO
create table tblRecPayReceipt (
  ID int not null primary key,
  Code int not null,
  CustomerID int not null,
  CashTurnID int not null,
  FarsiReceiptDate nvarchar(10) not null,
  Amount money not null,
  Kind nvarchar(20) not null,
  ChequeNumber bigint,
  FarsiDueDate nvarchar(10),
  foreign key (CustomerID) references tblSaleCustomer (ID),
  foreign key (CashTurnID) references tblRecPayCashTurn (ID)
)
GO
create index IX_RecPayReceipt_Customer on tblRecPayReceipt (CustomerID)
GO

-- Accounts are three levels deep. A voucher's lines name an account, and where the account asks
-- for it an object of a class: a customer, a cash desk.
create table tblAccount (
  ID int not null primary key,
  ParentID int,
  Code nvarchar(20) not null,
  Name nvarchar(100) not null,
  foreign key (ParentID) references tblAccount (ID)
)
GO
create table tblAccountClass (
  ID int not null primary key,
  Name nvarchar(100) not null,
  ViewMajor nvarchar(100),
  ViewMinor nvarchar(100)
)
GO
create table tblAccountPeriod (
  ID int not null primary key,
  Name nvarchar(100) not null,
  FarsiBeginDate nvarchar(10) not null,
  FarsiEndDate nvarchar(10) not null,
  BeginDate datetime not null,
  EndDate datetime not null
)
GO
create table tblAccountDocument (
  ID int not null primary key,
  Code int,
  IsPreDoc bit,
  DocumentDate datetime not null,
  FarsiDocumentDate nvarchar(10) not null,
  Description nvarchar(200)
)
GO
create table tblAccountDocumentDetail (
  DocumentID int not null,
  RowNumber smallint not null,
  AccountID int not null,
  Debit money not null,
  Credit money not null,
  Description nvarchar(200),
  primary key (DocumentID, RowNumber),
  foreign key (DocumentID) references tblAccountDocument (ID),
  foreign key (AccountID) references tblAccount (ID)
)
GO
create index IX_AccountDocumentDetail_Account on tblAccountDocumentDetail (AccountID)
GO
create table tblAccountDocumentObjects (
  DocumentID int not null,
  RowNumber smallint not null,
  ClassID int not null,
  ObjectID int not null,
  primary key (DocumentID, RowNumber, ClassID)
)
GO

-- Attendance: when each employee came and went, in minutes of the day.
create table tblAttendance (
  ID int identity(1,1) primary key,
  EmployeeID int not null,
  FarsiDate nvarchar(10) not null,
  EntryTime int,
  ExitTime int,
  WorkTime int not null,
  OverTime int not null,
  LeaveKind tinyint not null default 0,
  foreign key (EmployeeID) references tblEmployee (ID)
)
GO

-- Work tables of reports.
create table tblSaleRegionPromoterReport (
  FarsiFromDate nvarchar(10),
  FarsiToDate nvarchar(10),
  RegionID int,
  ToRegionID int
)
GO
create table tblSaleRegionPromoterReport2 (
  ID int,
  ParentID int,
  ExternalLocation nvarchar(100),
  Region nvarchar(100),
  Path nvarchar(100),
  Promoter nvarchar(100),
  CustomerCode int,
  CustomerName nvarchar(100),
  InvoiceValue money,
  DiscountValue money,
  ReturnValue money
)
GO
create table tblAccountTempID (
  ID int not null,
  IDType int not null
)
GO
create table tblSaleGroupTotals (
  GroupName nvarchar(100),
  GoodsCount int,
  Quantity decimal(18,3),
  LineValue money
)
GO

-- The folder that exports start from.
create table tblBasePath (
  BasePath nvarchar(260)
)
GO
insert into tblBasePath (BasePath) values (N'.')
GO
