-- Reports 501 to 599: attendance. A whole number whose name says زمان is shown as hours and minutes.

insert into tblVorekReport (ID, Title, SQLQuery) values
  (501, N'كاركرد روزانه',
   N'Select tblAttendance.FarsiDate as [تاريخ], tblEmployee.SureName as [نام خانوادگي], tblEmployee.FirstName as [نام], tblAttendance.EntryTime as [زمان ورود], tblAttendance.ExitTime as [زمان خروج], tblAttendance.WorkTime as [زمان], tblAttendance.OverTime as [اضافه كار زمان], tblAttendance.LeaveKind as [نوع مرخصي] from tblAttendance inner join tblEmployee on tblEmployee.ID = tblAttendance.EmployeeID Order By tblAttendance.FarsiDate, tblEmployee.SureName'),
  (502, N'جمع كاركرد كارمندان',
   N'Select tblEmployee.SureName as [نام خانوادگي], tblEmployee.FirstName as [نام], count(*) as [روز], sum(tblAttendance.WorkTime) as [زمان كاركرد], sum(tblAttendance.OverTime) as OverCTime, sum(tblAttendance.WorkTime) / 60.0 as [ساعت اعشاري] from tblAttendance inner join tblEmployee on tblEmployee.ID = tblAttendance.EmployeeID group by tblEmployee.SureName, tblEmployee.FirstName Order By tblEmployee.SureName'),
  (503, N'روزهاي مرخصي',
   N'Select tblEmployee.SureName as [نام خانوادگي], left(tblAttendance.FarsiDate, 7) as [ماه], count(*) as [روز] from tblAttendance inner join tblEmployee on tblEmployee.ID = tblAttendance.EmployeeID Where tblAttendance.LeaveKind > 0 group by tblEmployee.SureName, left(tblAttendance.FarsiDate, 7)')
GO
update tblVorekReport set MakeTranspose = 1 where ID = 503
GO
insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width, MakeSum, TransposeType) values
  (502, 1, 7, 1600, 0, 0), (502, 2, 7, 1200, 0, 0), (502, 3, 4, 800, 0, 0), (502, 4, 4, 1400, 1, 0),
  (502, 5, 4, 1400, 1, 0), (502, 6, 4, 1400, 0, 0),
  (503, 1, 7, 1600, 0, 2), (503, 2, 4, 1000, 0, 1), (503, 3, 4, 1000, 0, 0)
GO
