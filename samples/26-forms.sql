-- The data-entry forms behind reports and the tables that they edit. Form 901 (invoice) and 906
-- (receipt) are secured by position; the lines of an invoice (902) follow their invoice.
-- 903 is the return, 904 the customer, 905 goods, 907 the voucher. 901, 902 and 907 are shown by the
-- host; 904 by the form runner, the others by components of their own.

insert into tblVorekFormType (ID, FileName, IsSystemBuilt, SecurityTypeID) values
  (901, 'comScreenMill.comScreenRun.dll', 1, 1),
  (902, 'comScreenMill.comScreenRun.dll', 1, 0),
  (903, 'comSale.comSaleReturn.dll', 0, 0),
  (904, 'comScreenMill.comScreenRun.dll', 0, 0),
  (905, 'comSale.comGoods.dll', 0, 0),
  (906, 'comRecPay.comReceipt.dll#3', 0, 1),
  (907, 'comScreenMill.comScreenRun.dll', 1, 0)
GO
insert into tblVorekTable (Name) values
  ('tblSaleInvoice'), ('tblSaleInvoiceDetail'), ('tblSaleReturn'), ('tblSaleCustomer'), ('tblGoods'),
  ('tblRecPayReceipt'), ('tblAccountDocument'), ('tblAccountDocumentDetail')
GO
insert into tblVorekTableFormRelationship (FormTypeID, TableName, IsMaster) values
  (901, 'tblSaleInvoice', 1), (901, 'tblSaleInvoiceDetail', 0),
  (902, 'tblSaleInvoiceDetail', 1),
  (903, 'tblSaleReturn', 1),
  (904, 'tblSaleCustomer', 1),
  (905, 'tblGoods', 1),
  (906, 'tblRecPayReceipt', 1),
  (907, 'tblAccountDocument', 1), (907, 'tblAccountDocumentDetail', 0)
GO
insert into tblVorekColumn (ID, TableName, Name, IsPrimaryKey, Type) values
  (1, 'tblSaleInvoice', 'ID', 1, 'int'),
  (2, 'tblSaleInvoice', 'Code', 0, 'int'),
  (3, 'tblSaleInvoice', 'CustomerID', 0, 'int'),
  (4, 'tblSaleInvoice', 'PromoterID', 0, 'int'),
  (5, 'tblSaleInvoice', 'InvoiceDate', 0, 'datetime'),
  (6, 'tblSaleInvoice', 'FarsiInvoiceDate', 0, 'nvarchar'),
  (7, 'tblSaleInvoice', 'NetValue', 0, 'money'),
  (8, 'tblSaleInvoiceDetail', 'InvoiceID', 1, 'int'),
  (9, 'tblSaleInvoiceDetail', 'RowNumber', 1, 'smallint'),
  (10, 'tblSaleInvoiceDetail', 'GoodsID', 0, 'int'),
  (11, 'tblSaleInvoiceDetail', 'Quantity', 0, 'decimal'),
  (12, 'tblSaleInvoiceDetail', 'UnitPrice', 0, 'money'),
  (13, 'tblSaleReturn', 'ID', 1, 'int'),
  (14, 'tblSaleReturn', 'SaleInvoiceID', 0, 'int'),
  (15, 'tblSaleReturn', 'ReturnValue', 0, 'money'),
  (16, 'tblSaleCustomer', 'ID', 1, 'int'),
  (17, 'tblSaleCustomer', 'Code', 0, 'int'),
  (18, 'tblSaleCustomer', 'Name', 0, 'nvarchar'),
  (19, 'tblGoods', 'ID', 1, 'int'),
  (20, 'tblGoods', 'Code', 0, 'int'),
  (21, 'tblGoods', 'Name', 0, 'nvarchar'),
  (22, 'tblRecPayReceipt', 'ID', 1, 'int'),
  (23, 'tblRecPayReceipt', 'CustomerID', 0, 'int'),
  (24, 'tblRecPayReceipt', 'Amount', 0, 'money'),
  (25, 'tblAccountDocument', 'ID', 1, 'int'),
  (26, 'tblAccountDocument', 'Code', 0, 'int'),
  (27, 'tblAccountDocumentDetail', 'DocumentID', 1, 'int'),
  (28, 'tblAccountDocumentDetail', 'RowNumber', 1, 'smallint')
GO
insert into tblVorekRelatedTables (ReferenceTable, ReferenceKey, DependentTable, ForeignKey) values
  ('tblSaleInvoice', 'ID', 'tblSaleInvoiceDetail', 'InvoiceID'),
  ('tblGoods', 'ID', 'tblSaleInvoiceDetail', 'GoodsID'),
  ('tblSaleCustomer', 'ID', 'tblSaleInvoice', 'CustomerID'),
  ('tblSaleInvoice', 'ID', 'tblSaleReturn', 'SaleInvoiceID'),
  ('tblSaleCustomer', 'ID', 'tblRecPayReceipt', 'CustomerID'),
  ('tblAccountDocument', 'ID', 'tblAccountDocumentDetail', 'DocumentID')
GO
