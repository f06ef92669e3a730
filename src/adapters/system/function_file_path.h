#ifndef VOREK_ADAPTERS_SYSTEM_FUNCTION_FILE_PATH_H_
#define VOREK_ADAPTERS_SYSTEM_FUNCTION_FILE_PATH_H_

#include <string>

namespace vorek {

// Where the user functions of formulas lie: the path that the host names, else the environment
// variable VOREK_FUNCTIONS, else vorek/ANALIZEM.FUN in the user's settings folder
// ($XDG_CONFIG_HOME, $HOME/.config). Empty, which means no file, where there is none of all these.
std::string FunctionFilePath(const std::string& by_host = "");

}  // namespace vorek

#endif  // VOREK_ADAPTERS_SYSTEM_FUNCTION_FILE_PATH_H_
