-- Who works with the system: positions, employees, users and their roles.
-- User 1 administers; 2 keeps the books; 3 sells in Tehran; 4 sells in the provinces; 5 is a guest
-- without any role.

insert into tblBranch (ID, Name) values (1, N'دفتر مركزي تهران'), (2, N'شعبه اصفهان')
GO
insert into tblPosition (ID, Name) values
  (1, N'مدير عامل'),
  (2, N'مدير مالي'),
  (3, N'حسابدار'),
  (4, N'مدير فروش تهران'),
  (5, N'مدير فروش شهرستان'),
  (6, N'كارشناس اداري'),
  (7, N'انباردار')
GO
insert into tblEmployee (ID, FirstName, SureName) values
  (1, N'بهرام', N'كياني'),
  (2, N'مريم', N'صالحي'),
  (3, N'عليرضا', N'نوري'),
  (4, N'كاوه', N'رستمي'),
  (5, N'شيرين', N'يزداني'),
  (6, N'نرگس', N'فلاح'),
  (7, N'داوود', N'باقري'),
  (8, N'پريسا', N'كريمي'),
  (9, N'حميد', N'عسگري'),
  (10, N'ليلا', N'توكلي'),
  (11, N'سعيد', N'قنبري'),
  (12, N'مينا', N'شريفي'),
  (13, N'فرهاد', N'مرادي'),
  (14, N'زهرا', N'حيدري'),
  (15, N'ايمان', N'جلالي'),
  (16, N'سارا', N'پناهي')
GO
insert into tblUser (ID, FullName, BranchID) values
  (1, N'بهرام كياني', 1),
  (2, N'مريم صالحي', 1),
  (3, N'كاوه رستمي', 1),
  (4, N'شيرين يزداني', 2),
  (5, N'كاربر مهمان', null)
GO
insert into tblRole (ID, Name, IsAdmin) values
  (1, N'راهبر سيستم', 1),
  (2, N'حسابداري', 0),
  (3, N'فروش', 0)
GO
insert into tblUserRole (RoleID, UserID) values (1, 1), (2, 2), (3, 3), (3, 4)
GO
