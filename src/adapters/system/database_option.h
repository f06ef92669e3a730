#ifndef VOREK_ADAPTERS_SYSTEM_DATABASE_OPTION_H_
#define VOREK_ADAPTERS_SYSTEM_DATABASE_OPTION_H_

#include <string>

namespace vorek {

// True for a connection string; any other text that names a database is the file of an embedded
// one.
bool IsConnectionString(const std::string& database);

// The connection string that a person means.
std::string ConnectionStringOf(const std::string& database);

// The password that a program is given otherwise than in the list of processes: the first line of
// the file, or without a file the environment variable VOREK_PASSWORD. Throws Error if the file
// can't be read.
std::string PasswordGiven(const std::string& password_file);

// The connection string of a program's option; one without a password gets the one that is given.
// Throws Error if the file or the string can't be read.
std::string DatabaseOption(const std::string& database, const std::string& password_file);

}  // namespace vorek

#endif  // VOREK_ADAPTERS_SYSTEM_DATABASE_OPTION_H_
