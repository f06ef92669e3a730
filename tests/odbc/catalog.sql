-- A small catalogue in PostgreSQL's own dialect, with what the system expects of a server: isnull,
-- sysobjects, syscolumns.
create function isnull(anyelement, anyelement) returns anyelement language sql
  as 'select coalesce($1, $2)';
create table sysobjects (name varchar(100), type varchar(2), id int);
insert into sysobjects values ('tblRolePermissionOnReport', 'U', 1), ('tblInvoice', 'U', 2);
create table syscolumns (name varchar(100), id int);
create table tblVorekReport (ID int primary key, Title varchar(200), Notes varchar(200),
  CreateDate timestamp default '2025-03-21', SQLQuery varchar(4000), MakeTree int, MakeTranspose int,
  MakeMerge int, MakeSecure int, ShowDiagram int, FormTypeID int, FontSize int, ReportRowHeight int,
  Cols int default 1);
create table tblVorekReportLayout (ReportID int, ColumnNumber int, Alignment int, Width int,
  MergeType int, TransposeType int, MakeSum int);
create table tblVorekReportTranspose (ReportID int, ColumnNumber int, Alignment int, Width int,
  MergeType int, SortedAfterTransporting int);
create table tblVorekReportExpression (ReportID int, ColumnNumber int, Name varchar(100),
  GeneralExpression varchar(500), FirstRowExpression varchar(500), JustShowPositiveValue int);
create table tblVorekReportParameter (ReportID int, ParameterID int, Sequence int, Name varchar(100),
  Description varchar(200), ControlTypeID int, Type varchar(30), ColSpan int, RowSpan int,
  Visible int, MajorView varchar(100), MinorView varchar(100), WhereClause varchar(500),
  OrderByClause varchar(200), DepOnParameterIDForm int, DepOnParameterIDObject int);
create table tblVorekReportParameterConfig (ReportID int, Name varchar(100),
  ListOfParameters varchar(4000), UserID int, isShared int);
create table tblVorekSystemParameters (ID int, Value int);
create table tblRole (ID int, IsAdmin int);
create table tblUserRole (RoleID int, UserID int);
create table tblRolePermissionOnReport (ReportID int, RoleID int);
create table tblUser (ID int, FullName varchar(100), BranchID int);
create table tblEmployee (ID int, FirstName varchar(50), SureName varchar(50));
create table tblPosition (ID int, Name varchar(100));
create table tblVorekFormType (ID int, FileName varchar(100), IsSystemBuilt int, SecurityTypeID int);
create table tblVorekTable (Name varchar(100));
create table tblVorekTableFormRelationship (FormTypeID int, TableName varchar(100), IsMaster int);
create table tblVorekColumn (ID int, TableName varchar(100), Name varchar(100), IsPrimaryKey int,
  Type varchar(30));
create table tblVorekRelatedTables (ReferenceTable varchar(100), ReferenceKey varchar(100),
  DependentTable varchar(100), ForeignKey varchar(100));
create table tblVorekAllowablePosition (FormTypeID int, FormID int, PositionID int);
insert into tblUser values (1, 'بهرام كياني', 1);
insert into tblRole values (1, 0), (2, 0);
insert into tblUserRole values (1, 1);

create table tblInvoice (ID int primary key, FarsiDate varchar(10), Customer varchar(50),
  Amount money, Weight numeric(18,3), Minutes int);
insert into tblInvoice values
  (1, '1404/01/05', 'فروشگاه اميد', 1234567.5, 12.500, 125),
  (2, '1404/01/06', 'پخش نور', -1500, 0.25, 59),
  (3, '1404/01/07', null, null, null, null);
insert into tblVorekFormType values (901, 'comScreenMill.comScreenRun.dll', 1, 1);
insert into tblVorekTableFormRelationship values (901, 'tblInvoice', 1);
insert into tblVorekAllowablePosition values (901, 1, 4), (901, 3, 4);

insert into tblVorekReport (ID, Title, SQLQuery, MakeSecure, FormTypeID) values
  (1, 'فاكتورها', 'Select ID as "مشخصه", FarsiDate as "تاريخ", Customer as "مشتري", Amount as "مبلغ", Weight as "وزن", Minutes as "زمان" from tblInvoice Order By ID', 0, 901),
  (2, 'فاكتورهاي من', 'Select tblInvoice.ID, Customer as "مشتري" from tblInvoice Order By tblInvoice.ID', 1, 901),
  (3, 'خطا', 'Select ID from tblNowhere', 0, null),
  (4, 'محرمانه', 'Select 1 as a', 0, null),
  (5, 'يك فاكتور', 'Select ID, Customer from tblInvoice Where (ID = @1) and (FarsiDate >= @2)', 0, null),
  (6, 'كند', 'Select ID, pg_sleep(20) as s from tblInvoice', 0, null);
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description,
  ControlTypeID, Type, ColSpan, RowSpan) values
  (5, 1, 1, 'شماره', 'شماره', 1002, 'int', 1, 1), (5, 2, 2, 'تاريخ', 'تاريخ', 1, 'nvarchar', 1, 1);
insert into tblVorekReportLayout values (1, 1, 4, 0, 0, 0, 0), (1, 2, 4, 1100, 0, 0, 0);
insert into tblRolePermissionOnReport values (4, 2);
