#ifndef VOREK_ACCESS_H_
#define VOREK_ACCESS_H_

#include <memory>

namespace vorek {

class AccessFile;
class Files;

// Microsoft Access files of the years 2000 to 2003 (.mdb): for WorldOptions::access_file. Rows are
// appended to a copy, which takes the file's place when it is whole. REQUIRES: files isn't null.
std::shared_ptr<AccessFile> JetAccessFiles(std::shared_ptr<Files> files);

}  // namespace vorek

#endif  // VOREK_ACCESS_H_
