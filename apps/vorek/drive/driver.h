#ifndef VOREK_APPS_VOREK_DRIVE_DRIVER_H_
#define VOREK_APPS_VOREK_DRIVE_DRIVER_H_

#include <cstddef>
#include <istream>
#include <ostream>
#include <string>
#include <vector>

#include "drive/session.h"
#include "vorek/error.h"

namespace vorek::drive {

// Drives one control by the lines of a script; docs/drive.md describes the language.
class Driver {
 public:
  // What the commands print goes to `out`.
  explicit Driver(std::ostream& out);

  // Runs a script to its end or to the first line that fails. Throws Error with the line's number
  // and the reason.
  void Run(std::istream& script);

  // One line by itself, as an interactive user gives it. Throws Error with the reason.
  void RunLine(const std::string& line);

  // All words that may stand at the end of this head of a line, for completion.
  std::vector<std::string> Completions(const std::string& head, const std::string& word);

 private:
  void Play(const Block& block);
  void PlayLine(const ScriptLine& line);
  std::size_t ReadWhen(const Block& block, std::size_t at);
  void RaiseFailure();

  Session session_;
};

}  // namespace vorek::drive

#endif  // VOREK_APPS_VOREK_DRIVE_DRIVER_H_
