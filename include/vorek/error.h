#ifndef VOREK_ERROR_H_
#define VOREK_ERROR_H_

#include <exception>
#include <new>
#include <stdexcept>
#include <string>

namespace vorek {

// Numbers of the errors that the system raises or looks for. Those of a database are ADO's, so
// that a host which handled them before still can.
enum class ErrorNumber : long {
  kConnection = -2147467259,     // 80004005: a connection failed or was lost
  kSyntax = -2147217900,         // 80040E14: the server refused the text
  kMissingObject = -2147217865,  // 80040E37: no such table, view or procedure
  kTimeout = -2147217871,        // 80040E31: the command ran out of time
  kCancelled = -2147217842,      // 80040E4E: the operation was cancelled
  kOutOfMemory = 7,
  kInternal = 51,
  kOverflow = 6,       // a number beyond what its field holds
  kSubscript = 9,      // an index outside its table
  kTypeMismatch = 13,  // a text where a number is read
  kInvalidCall = 5,    // an argument that the operation can't take
  kFileNotFound = 53,
  kPathAccess = 75,
  kNullUse = 94,            // a NULL where a value is read
  kBadTemplate = 321,       // a file that is no template of the kind that is wanted
  kNoComponent = 429,       // nobody can make a component of that name
  kObjectClosed = 3704,     // a recordset that isn't open
  kObjectOpen = 3705,       // a recordset that is open already
  kItemNotFound = 3265,     // a field, control or property of that name doesn't exist
  kBadFilter = 3001,        // a filter text that can't be read
  kNoCurrentRecord = 3021,  // read at the end of a recordset
};

// The one exception type of the system: a number and a description for a person. Thrown by value,
// caught by reference; what() is the description.
class Error : public std::runtime_error {
 public:
  Error(ErrorNumber number, const std::string& description)
      : std::runtime_error(description), number_(static_cast<long>(number)) {}
  Error(long number, const std::string& description)
      : std::runtime_error(description), number_(number) {}

  long Number() const { return number_; }
  bool Is(ErrorNumber number) const { return number_ == static_cast<long>(number); }
  std::string Description() const { return what(); }

 private:
  long number_;
};

// Runs one statement whose failure the system ignores by design. Returns true if it went through.
// Want of memory is no such failure: it may leave out anything, and is thrown on.
template <typename Statement>
bool IgnoreErrors(Statement&& statement) {
  try {
    statement();
    return true;
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const Error& error) {
    if (error.Is(ErrorNumber::kOutOfMemory)) throw;
    return false;
  } catch (const std::exception&) {
    return false;
  }
}

// The same where nothing can be thrown any more: in a destructor, behind another failure, and
// behind what is done already.
template <typename Statement>
bool IgnoreAllErrors(Statement&& statement) noexcept {
  try {
    statement();
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace vorek

#endif  // VOREK_ERROR_H_
