-- Reports 101 to 199: customers, goods, regions, salespeople.
-- Alignment 4 is centre, 7 right; widths are twips.

insert into tblVorekReport (ID, Title, Notes, SQLQuery, FormTypeID, ShowDiagram) values
  (101, N'فهرست مشتريان', N'با سقف اعتبار هر مشتري',
   N'Select tblSaleCustomer.ID as ''مشخصه'', tblSaleCustomer.Code as ''كد مشتري'', tblSaleCustomer.Name as ''نام مشتري'', tblSaleRegion.Name as ''مسير'', tblSalePromoter.FullName as ''بازارياب'', tblSaleCustomer.Phone as ''تلفن'', tblSaleCustomer.NationalCode as ''كد ملي'', tblSaleCustomer.CreditLimit as ''سقف اعتبار'', tblSaleCustomer.FarsiRegisterDate as ''تاريخ ثبت'' from tblSaleCustomer inner join tblSaleRegion on tblSaleRegion.ID = tblSaleCustomer.PathID inner join tblSalePromoter on tblSalePromoter.ID = tblSaleCustomer.PromoterID Where tblSaleCustomer.IsActive = 1 Order By tblSaleCustomer.Code',
   904, 0)
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width, MergeType, TransposeType, MakeSum) values
  (101, 1, 4, 0, 0, 0, 0), (101, 2, 4, 1000, 0, 0, 0), (101, 3, 7, 2800, 0, 0, 0),
  (101, 4, 7, 1500, 0, 0, 0), (101, 5, 7, 1700, 0, 0, 0), (101, 6, 4, 1500, 0, 0, 0),
  (101, 7, 4, 1400, 0, 0, 0), (101, 8, 4, 1700, 0, 0, 0), (101, 9, 4, 1200, 0, 0, 0)
GO

-- No layout rows: alignment and width come from the types of the fields.
insert into tblVorekReport (ID, Title, SQLQuery, FormTypeID) values
  (102, N'فهرست كالاها',
   N'Select tblGoods.ID, tblGoods.Code as [كد كالا], tblGoods.Name as [نام كالا], tblGoodsGroup.Name as [گروه كالا], tblGoods.Unit as [واحد], tblGoods.Price as [قيمت فروش], tblGoods.Weight as [وزن], tblGoods.PackCount as [تعداد در بسته] from tblGoods inner join tblGoodsGroup on tblGoodsGroup.ID = tblGoods.GroupID Order By tblGoods.Code',
   905)
GO

-- Trees: the children of a row are read when it is opened.
insert into tblVorekReport (ID, Title, SQLQuery, MakeTree, ShowPopupTree) values
  (103, N'گروههاي كالا',
   N'Select tblGoodsGroup.ID, tblGoodsGroup.ParentID, tblGoodsGroup.Code as [كد گروه], tblGoodsGroup.Name as [نام گروه], (Select count(*) from tblGoods where tblGoods.GroupID = tblGoodsGroup.ID) as [تعداد كالا] from tblGoodsGroup Order By tblGoodsGroup.Code',
   1, 0),
  (104, N'مناطق فروش',
   N'Select tblSaleRegion.ID, tblSaleRegion.ParentID, tblSaleRegion.Code as [كد منطقه], tblSaleRegion.Name as [نام منطقه] from tblSaleRegion Order By tblSaleRegion.Code',
   1, 0)
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width) values
  (103, 1, 4, 0), (103, 2, 4, 0), (103, 3, 4, 1200), (103, 4, 7, 2600), (103, 5, 4, 1200),
  (104, 1, 4, 0), (104, 2, 4, 0), (104, 3, 4, 1200), (104, 4, 7, 2600)
GO

-- Larger letters and higher rows.
insert into tblVorekReport (ID, Title, SQLQuery, FontSize, ReportRowHeight) values
  (105, N'بازاريابان',
   N'Select tblSalePromoter.Code as [كد], tblSalePromoter.FullName as [نام بازارياب], tblSaleRegion.Name as [منطقه], tblSalePromoter.CommissionPercent as [درصد پورسانت], tblSalePromoter.FarsiHireDate as [تاريخ استخدام], tblSalePromoter.Mobile as [تلفن همراه] from tblSalePromoter inner join tblSaleRegion on tblSaleRegion.ID = tblSalePromoter.RegionID Order By tblSalePromoter.Code',
   12, 400)
GO

-- Parameters in the panel: a combo box, a text that is searched for, a check box.
insert into tblVorekReport (ID, Title, SQLQuery, FormTypeID, Cols) values
  (106, N'جستجوي مشتريان',
   N'Select tblSaleCustomer.ID as [مشخصه], tblSaleCustomer.Code as [كد مشتري], tblSaleCustomer.Name as [نام مشتري], tblSaleCustomer.Phone as [تلفن], tblSaleCustomer.CreditLimit as [سقف اعتبار] from tblSaleCustomer Where (tblSaleCustomer.PathID in (Select ID from tblSaleRegion where ParentID in (Select ID from tblSaleRegion where ParentID = @1))) and (tblSaleCustomer.Name like @2) and (tblSaleCustomer.IsActive = @3) Order By tblSaleCustomer.Code',
   904, 2)
GO
insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, ControlTypeID, Type, MajorView) values
  (106, 1, 1, N'استان', N'استان', 1003, 'int', 'vwSaleProvinceMajor'),
  (106, 2, 2, N'نام مشتري', N'نام مشتري', 1002, 'nvarchar', null),
  (106, 3, 3, N'فعال', N'فقط مشتريان فعال', 1006, 'bit', null)
GO

-- A double click on a customer opens its invoices, Ctrl+Enter its receipts.
insert into tblVorekRelatedReports (CallerReportID, CalledReportID, CallerReportColumn, CalledParameterID, isSecondary) values
  (101, 203, N'مشخصه', 1, 0), (101, 302, N'مشخصه', 1, 1),
  (106, 203, N'مشخصه', 1, null)
GO
insert into tblVorekReportGroup (FromID, ToID, Title) values
  (100, 199, N'اطلاعات پايه'),
  (200, 299, N'فروش'),
  (300, 399, N'خزانه'),
  (400, 499, N'حسابداري'),
  (500, 599, N'كاركرد كارمندان'),
  (900, 999, N'حالتهاي ويژه'),
  (2800, 2999, N'دفترها و ترازها')
GO
