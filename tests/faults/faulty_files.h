#ifndef VOREK_TESTS_FAULTS_FAULTY_FILES_H_
#define VOREK_TESTS_FAULTS_FAULTY_FILES_H_

#include <memory>
#include <string>
#include <utility>

#include "adapters/system/system_files.h"
#include "faults/failing_memory.h"
#include "vorek/error.h"

namespace vorek {

// The machine's files, of which the n-th operation fails: a question, a reading, an opening, a
// write, a flush with its rename.
class FaultyFiles : public Files {
 public:
  // From now on the n-th operation fails with these words of the system; 0 for none.
  void Arm(int n, std::string words) {
    fails_at_ = n;
    words_ = std::move(words);
    done_ = 0;
  }
  // How many there were since.
  int Disarm() {
    fails_at_ = 0;
    return done_;
  }
  bool Fired() const { return fails_at_ > 0 && done_ >= fails_at_; }

  bool Exists(const std::string& path) const override {
    Count(path);
    return files_.Exists(path);
  }
  std::string Read(const std::string& path) const override {
    Count(path);
    return files_.Read(path);
  }
  void Write(const std::string& path, std::string_view bytes) override {
    Count(path);
    files_.Write(path, bytes);
  }
  void WritePrivate(const std::string& path, std::string_view bytes) override {
    Count(path);
    files_.WritePrivate(path, bytes);
  }
  std::unique_ptr<OutputFile> Create(const std::string& path) override {
    Count(path);
    return std::make_unique<Output>(*this, files_.Create(path), path);
  }
  void MakeFoldersFor(const std::string& path) override {
    Count(path);
    files_.MakeFoldersFor(path);
  }

 private:
  class Output : public OutputFile {
   public:
    Output(FaultyFiles& files, std::unique_ptr<OutputFile> file, std::string path)
        : files_(files), file_(std::move(file)), path_(std::move(path)) {}
    void Write(std::string_view bytes) override {
      files_.Count(path_);
      file_->Write(bytes);
    }
    void Overwrite(std::uint64_t offset, std::string_view bytes) override {
      files_.Count(path_);
      file_->Overwrite(offset, bytes);
    }
    void Commit() override {
      files_.Count(path_);
      file_->Commit();
    }

   private:
    FaultyFiles& files_;
    std::unique_ptr<OutputFile> file_;
    std::string path_;
  };

  void Count(const std::string& path) const {
    if (++done_ != fails_at_) return;
    const failing_memory::Pause pause;
    throw Error(ErrorNumber::kPathAccess, path + ": " + words_);
  }

  SystemFiles files_;
  int fails_at_ = 0;
  mutable int done_ = 0;
  std::string words_;
};

}  // namespace vorek

#endif  // VOREK_TESTS_FAULTS_FAULTY_FILES_H_
