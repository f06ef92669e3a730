#include "catalog/data_session.h"

#include <utility>

namespace vorek {
namespace {

std::string ProviderName(const std::string& connection_text) {
  const std::size_t end = connection_text.find(';');
  const std::string piece = connection_text.substr(0, end);
  const std::size_t equal = piece.find('=');
  if (end == std::string::npos || equal == std::string::npos) {
    throw Error(ErrorNumber::kInvalidCall,
                "The connection string has to begin with \"Provider=name;\".");
  }
  return piece.substr(equal + 1);
}

}  // namespace

DataSession DataSession::Sibling() const {
  DataSession sibling(providers_, limits_);
  sibling.running_ = running_;
  sibling.open_ = open_;
  sibling.progress_ = progress_;
  return sibling;
}

DtEn& DataSession::Get() {
  if (dten_ == nullptr) Renew("", "");
  return *dten_;
}

// The one in force stays until the new one is whole.
void DataSession::Renew(std::string provider, std::string connection_text) {
  auto dten = std::make_unique<DtEn>(providers_, *running_, *open_);
  dten->cnn.on_progress = progress_;
  dten->cnn.watch = watch_;
  dten->cnn.limits = limits_;
  dten->cnn.SetProvider(std::move(provider));
  dten->cnn.SetConnectionString(std::move(connection_text));
  dten_ = std::move(dten);
  ++binding_;
}

void DataSession::Check(const std::string& connection_text) const {
  FindProvider(providers_, ProviderName(connection_text));
}

void DataSession::Rebind(const std::string& connection_text) {
  Renew(ProviderName(connection_text), connection_text);
}

void DataSession::RebindTwice(const std::string& connection_text) {
  Rebind(connection_text);
  // The second pass names no provider: the object keeps the one of the first.
  Renew(dten_->cnn.Provider(), connection_text);
}

void DataSession::DropDead() {
  if (dten_ != nullptr) dten_->cnn.DropDead();
}

void DataSession::SetProgress(std::function<bool(std::size_t rows)> progress) {
  progress_ = std::move(progress);
  if (dten_ != nullptr) dten_->cnn.on_progress = progress_;
}

void DataSession::SetWatch(PassWatch* watch) {
  watch_ = watch;
  if (dten_ != nullptr) dten_->cnn.watch = watch;
}

void OpenSlot(Recordset& slot, std::string text) {
  slot.Close();
  slot.Open(std::move(text));
}

}  // namespace vorek
