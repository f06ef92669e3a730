#ifndef VOREK_EVAL_FUNCTION_FILE_H_
#define VOREK_EVAL_FUNCTION_FILE_H_

#include <string>
#include <string_view>

#include "eval/keyed_list.h"
#include "vorek/evaluation.h"

// The text of the file that keeps user functions between runs: a line of warning, then a line
// "NAME","BODY" for each function; lines end with CR LF.
namespace vorek {

// Adds the functions of the file's text to the list, names and bodies in upper case. Passed over
// are the first line, a line of another shape and a name that is there already; a refused body
// becomes the empty text. Line ends without CR are read as well.
void ReadFunctions(std::string_view text, KeyedList<FunctionClass>& functions);

// True for a text that begins as WriteFunctions does.
bool IsFunctionFile(std::string_view text);

std::string WriteFunctions(const KeyedList<FunctionClass>& functions);

}  // namespace vorek

#endif  // VOREK_EVAL_FUNCTION_FILE_H_
