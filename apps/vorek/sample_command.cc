#include <memory>

#include "command.h"

namespace vorek {

void AddSampleCommand(CLI::App& app) {
  auto folder = std::make_shared<std::string>();
  CLI::App* const command =
      app.add_subcommand("sample", "Make the sample database in a folder: DIR/sample.db");
  command->add_option("DIR", *folder, "the folder; made if it isn't there")->required();
  command->callback([folder] { throw CLI::RuntimeError(1); });
}

}  // namespace vorek
