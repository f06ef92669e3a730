#ifndef VOREK_CLIPBOARD_H_
#define VOREK_CLIPBOARD_H_

#include <string>

namespace vorek {

class Clipboard {
 public:
  virtual ~Clipboard() = default;

  virtual void Clear() = 0;
  // In place of what was there: a text, and beside it the same as HTML, if that isn't empty.
  virtual void Put(const std::string& text, const std::string& html) = 0;
};

}  // namespace vorek

#endif  // VOREK_CLIPBOARD_H_
