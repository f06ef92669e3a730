-- The tables that describe reports: the catalogue itself, its dependents, the forms and tables
-- behind reports, system parameters, users and their rights.

create table tblVorekReport (
  ID int not null primary key,
  Title nvarchar(200),
  Notes nvarchar(max),
  CreateDate datetime not null default '2024-03-20',
  SQLQuery nvarchar(max),
  Reserved nvarchar(max),
  SQLSP nvarchar(max),
  IsStoredProcedure bit default 0,
  MakeTree int default 0,
  ShowPopupTree bit default 0,
  MakeTranspose bit default 0,
  MakeMerge bit default 0,
  MakeSecure bit default 0,
  ShowDiagram bit default 0,
  FormTypeID int,
  FontSize int,
  ReportRowHeight int,
  ShowFlatternParameters bit default 1,
  LockPrintPreview bit default 0,
  HasProgressBar bit default 0,
  Cols int default 1
)
GO
-- Names for ranges of report numbers, in lists of reports. A database may do without it.
create table tblVorekReportGroup (
  FromID int not null primary key,
  ToID int not null,
  Title nvarchar(200)
)
GO
create table tblVorekReportLayout (
  ReportID int not null,
  ColumnNumber int not null,
  Alignment smallint,
  Width smallint,
  MergeType int,
  TransposeType int,
  MakeSum bit,
  primary key (ReportID, ColumnNumber),
  foreign key (ReportID) references tblVorekReport (ID)
)
GO
create table tblVorekReportTranspose (
  ReportID int not null,
  ColumnNumber int not null,
  Alignment smallint,
  Width smallint,
  MergeType int,
  SortedAfterTransporting bit,
  primary key (ReportID, ColumnNumber),
  foreign key (ReportID) references tblVorekReport (ID)
)
GO
create table tblVorekReportExpression (
  ReportID int not null,
  ColumnNumber int not null,
  Name nvarchar(100),
  GeneralExpression nvarchar(500),
  FirstRowExpression nvarchar(500),
  JustShowPositiveValue int,
  primary key (ReportID, ColumnNumber),
  foreign key (ReportID) references tblVorekReport (ID)
)
GO
create table tblVorekReportParameter (
  ReportID int not null,
  ParameterID int not null,
  Sequence int,
  Name nvarchar(100),
  Description nvarchar(200),
  ControlTypeID int,
  Type nvarchar(30),
  ColSpan int not null default 1,
  RowSpan int not null default 1,
  Visible bit default 1,
  MajorView nvarchar(100),
  MinorView nvarchar(100),
  WhereClause nvarchar(500),
  OrderByClause nvarchar(200),
  DepOnParameterIDForm int,
  DepOnParameterIDObject int,
  primary key (ReportID, ParameterID),
  foreign key (ReportID) references tblVorekReport (ID)
)
GO
create table tblVorekReportParameterConfig (
  ReportID int not null,
  Name nvarchar(100) not null,
  ListOfParameters nvarchar(max),
  UserID int,
  isShared bit
)
GO
create table tblVorekRelatedReports (
  CallerReportID int not null,
  CalledReportID int,
  CallerReportColumn nvarchar(100),
  CallerParameterID int,
  CalledParameterID int,
  ParameterID int,
  PassingField nvarchar(100),
  isSecondary bit
)
GO
create table tblVorekReportNeedRefresh (
  UserID int not null,
  ReportID int not null
)
GO

-- Rights.
create table tblRole (
  ID int not null primary key,
  Name nvarchar(100),
  IsAdmin bit not null default 0
)
GO
create table tblBranch (
  ID int not null primary key,
  Name nvarchar(100)
)
GO
create table tblUser (
  ID int not null primary key,
  FullName nvarchar(100),
  BranchID int
)
GO
create table tblUserRole (
  RoleID int not null,
  UserID int not null,
  primary key (RoleID, UserID),
  foreign key (RoleID) references tblRole (ID),
  foreign key (UserID) references tblUser (ID)
)
GO
create table tblRolePermissionOnReport (
  ReportID int not null,
  RoleID int not null,
  primary key (ReportID, RoleID)
)
GO
create table tblEmployee (
  ID int not null primary key,
  FirstName nvarchar(50),
  SureName nvarchar(50)
)
GO
create table tblPosition (
  ID int not null primary key,
  Name nvarchar(100)
)
GO

-- The forms and tables behind reports.
create table tblVorekFormType (
  ID int not null primary key,
  FileName nvarchar(100),
  IsSystemBuilt bit,
  SecurityTypeID int
)
GO
create table tblVorekTable (
  Name nvarchar(100) not null primary key
)
GO
create table tblVorekTableFormRelationship (
  FormTypeID int not null,
  TableName nvarchar(100) not null,
  IsMaster bit,
  primary key (FormTypeID, TableName)
)
GO
create table tblVorekColumn (
  ID int not null primary key,
  TableName nvarchar(100) not null,
  Name nvarchar(100) not null,
  IsPrimaryKey bit not null default 0,
  Type nvarchar(30)
)
GO
create table tblVorekRelatedTables (
  ReferenceTable nvarchar(100) not null,
  ReferenceKey nvarchar(100) not null,
  DependentTable nvarchar(100) not null,
  ForeignKey nvarchar(100) not null
)
GO
create table tblVorekAllowablePosition (
  FormTypeID int not null,
  FormID int not null,
  PositionID int not null,
  primary key (FormTypeID, FormID, PositionID)
)
GO
create table tblVorekFormAttachment (
  FormTypeID int not null,
  FormID int not null,
  RowNumber smallint not null,
  Title nvarchar(200),
  FileName nvarchar(260),
  FileExtension nvarchar(10),
  IsExternal bit,
  FilePath nvarchar(260),
  FileData varbinary(max),
  primary key (FormTypeID, FormID, RowNumber)
)
GO

-- System parameters. Both switches are off: windows of related reports are not modal (123), and
-- the workbook export formats its cells (6).
create table tblVorekSystemParameters (
  ID int not null primary key,
  Value int
)
GO
insert into tblVorekSystemParameters (ID, Value) values (123, 0), (6, 0)
GO
