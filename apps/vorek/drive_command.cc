#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>

#include "command.h"
#include "drive/driver.h"
#include "drive/prompt.h"

namespace vorek {
namespace {

void RunScript(drive::Driver& driver, std::istream& script) {
  try {
    driver.Run(script);
  } catch (const Error& error) {
    std::cout.flush();
    std::cerr << error.Description() << '\n';
    throw CLI::RuntimeError(1);
  }
}

// A script's paths are relative to it, so that it runs anywhere.
void RunFile(drive::Driver& driver, const std::string& file) {
  std::ifstream script(file);
  // A folder can be opened too, and holds no line.
  if (!script || std::filesystem::is_directory(file)) {
    throw Error(ErrorNumber::kFileNotFound, "The script " + file + " can't be read.");
  }
  const std::filesystem::path folder = std::filesystem::path(file).parent_path();
  if (!folder.empty()) std::filesystem::current_path(folder);
  RunScript(driver, script);
}

}  // namespace

void AddDriveCommand(CLI::App& app) {
  auto file = std::make_shared<std::string>();
  CLI::App* const command =
      app.add_subcommand("drive", "Drive a report control by a script, a command a line");
  command->add_option("FILE", *file, "the script; - or nothing for standard input");
  command->callback([file] {
    drive::Driver driver(std::cout);
    if (!file->empty() && *file != "-") {
      RunFile(driver, *file);
    } else if (isatty(STDIN_FILENO) != 0) {
      drive::RunPrompt(driver);
    } else {
      RunScript(driver, std::cin);
    }
  });
}

}  // namespace vorek
