#include "drive/commands.h"

namespace vorek::drive {

const Commands& AllCommands() {
  static const Commands commands = [] {
    Commands all;
    for (Commands part : {ReportCommands(), UserCommands(), MenuCommands(), ListCommands(),
                          ShownCommands(), StageCommands()}) {
      all.merge(part);
    }
    return all;
  }();
  return commands;
}

}  // namespace vorek::drive
