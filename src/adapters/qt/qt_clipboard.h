#ifndef VOREK_ADAPTERS_QT_QT_CLIPBOARD_H_
#define VOREK_ADAPTERS_QT_QT_CLIPBOARD_H_

#include "vorek/clipboard.h"

namespace vorek::qt {

// The desktop's clipboard.
class QtClipboard : public Clipboard {
 public:
  void Clear() override;
  void Put(const std::string& text, const std::string& html) override;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_QT_CLIPBOARD_H_
