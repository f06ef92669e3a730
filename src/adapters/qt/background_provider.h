#ifndef VOREK_ADAPTERS_QT_BACKGROUND_PROVIDER_H_
#define VOREK_ADAPTERS_QT_BACKGROUND_PROVIDER_H_

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/qt/busy_screen.h"
#include "vorek/database.h"

namespace vorek::qt {

// Another provider whose connections live on threads of their own. The caller waits as before, but
// its windows stay alive (BusyScreen) once a statement takes longer than a moment. A statement that
// is run while another one is waited for is refused with Error(kInvalidCall).
class BackgroundProvider : public DatabaseProvider {
 public:
  BackgroundProvider(std::shared_ptr<DatabaseProvider> provider, std::shared_ptr<BusyScreen> busy)
      : provider_(std::move(provider)), busy_(std::move(busy)) {}

  bool Answers(std::string_view provider_name) const override {
    return provider_->Answers(provider_name);
  }
  std::unique_ptr<DatabaseConnection> Connect(std::string_view connection_string) override {
    return ConnectWhile(connection_string, nullptr);
  }
  std::unique_ptr<DatabaseConnection> ConnectWhile(std::string_view connection_string,
                                                   const std::function<bool()>& goes_on) override;

 private:
  std::shared_ptr<DatabaseProvider> provider_;
  std::shared_ptr<BusyScreen> busy_;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_BACKGROUND_PROVIDER_H_
