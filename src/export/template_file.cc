#include "export/template_file.h"

#include <string_view>
#include <utility>

#include "vorek/error.h"

namespace vorek {
namespace {

constexpr std::string_view kArchive("PK\x03\x04");
constexpr std::string_view kOldFormat("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");

[[noreturn]] void Refuse(const std::string& path, const std::string& reason) {
  throw Error(ErrorNumber::kInvalidCall, "الگوي «" + path + "» " + reason);
}

std::string Converted(Process& process, const std::string& path, const std::string& bytes,
                      const Question& question, std::string& note) {
  if (process.services.converter == nullptr) {
    Refuse(path, "به قالب قديمي اكسل است و برنامه تبديل آن در دسترس نيست.");
  }
  ConvertedWorkbook converted = process.services.converter->Convert(bytes, question);
  if (converted.charts_lost) {
    note = "الگو به قالب قديمي اكسل است؛ نمودارهاي آن در تبديل منتقل نمي شوند.";
  }
  return std::move(converted.bytes);
}

}  // namespace

TemplateFile OpenTemplateFile(Process& process, const std::string& path, const Question& question) {
  const Services& with = process.services;
  if (with.files == nullptr || with.spreadsheet == nullptr) {
    Refuse(path, "در اين برنامه باز نمي شود.");
  }
  if (!with.files->Exists(path)) {
    throw Error(ErrorNumber::kFileNotFound, "فايل الگوي «" + path + "» پيدا نشد.");
  }
  std::string bytes = with.files->Read(path);
  TemplateFile file;
  if (std::string_view(bytes).starts_with(kOldFormat)) {
    bytes = Converted(process, path, bytes, question, file.note);
  } else if (!std::string_view(bytes).starts_with(kArchive)) {
    Refuse(path, "فايل اكسل نيست.");
  }
  file.sheet = with.spreadsheet->OpenTemplate(std::move(bytes), path, question);
  return file;
}

}  // namespace vorek
