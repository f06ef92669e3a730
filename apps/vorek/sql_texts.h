#ifndef VOREK_APPS_VOREK_SQL_TEXTS_H_
#define VOREK_APPS_VOREK_SQL_TEXTS_H_

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace vorek {

// The folder of the SQL texts that databases are made of: a given one, or the one that lies beside
// an installed program, or where it lay when the program was built.
std::filesystem::path SqlTextFolder(const std::string& given);

// The texts of a folder in the order of their names. Throws Error(kFileNotFound) if it has none.
std::vector<std::filesystem::path> SqlTexts(const std::filesystem::path& folder);

// Makes an embedded database by the texts, beside its place, and moves it there when it is whole.
// Throws Error with the name of the text that failed; then there is no file.
void MakeDatabase(const std::filesystem::path& database,
                  const std::vector<std::filesystem::path>& texts);

// Runs what works with files, with their failures as Error(kPathAccess).
void WithFiles(const std::function<void()>& work);

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_SQL_TEXTS_H_
