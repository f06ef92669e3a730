#ifndef CSV_PROVIDER_H_
#define CSV_PROVIDER_H_

#include <vorek/database.h>

#include <memory>

// "Provider=CsvFolder;Folder=<folder>;Catalogue=<SQL text>": each NAME.csv of the folder is a table
// NAME, read when the connection is opened; nothing is written back. A file for a table of the
// catalogue (tblVorekReport.csv) gives its rows, any other one makes a table of texts and numbers.
// The statements themselves are run by the embedded database, in memory.
std::shared_ptr<vorek::DatabaseProvider> CsvFolderProvider();

#endif  // CSV_PROVIDER_H_
