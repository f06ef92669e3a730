#ifndef VOREK_DOCUMENTS_H_
#define VOREK_DOCUMENTS_H_

#include <string>

namespace vorek {

// Finished documents: where they are kept and how the user gets to see them.
class Documents {
 public:
  virtual ~Documents() = default;

  // A path under which nothing lies yet, for a document of that file name: "گزارش.xlsx". Throws
  // Error(kPathAccess) where there is no place for documents.
  virtual std::string NewPath(const std::string& file_name) = 0;
  // Brings the document before the user, by the system's program for it; returns at once.
  virtual void Show(const std::string& path) = 0;
};

}  // namespace vorek

#endif  // VOREK_DOCUMENTS_H_
