#include "export/attachment.h"

#include <gtest/gtest.h>

#include <string>

#include "export/form_template.h"
#include "platform/memory_files.h"
#include "support/random_report.h"

namespace vorek {
namespace {

// Names come one after the other; the first is taken already.
class CountedNames : public TemporaryFiles {
 public:
  explicit CountedNames(MemoryFiles& files) : files_(files) {}
  std::string Folder() const override { return folder; }
  std::string NewName() override { return "rad" + std::to_string(count_++) + ".tmp"; }
  void Delete(const std::string& path) override { files_.contents.erase(path); }
  std::string folder = "/tmp";

 private:
  MemoryFiles& files_;
  int count_ = 0;
};

class AttachmentTest : public testing::Test {
 protected:
  AttachmentTest() {
    random_.process.services.files = files_;
    random_.process.services.temporary_files = names_;
  }

  std::string Fetch(const MemoryRow& row) {
    random_.database->Answer(
        "Select * from tblVorekFormAttachment Where FormTypeID = 2302 and FormID = 7 and "
        "RowNumber = 3",
        MakeResult({{"FileExtension", kVarWChar},
                    {"IsExternal", kBoolean},
                    {"FilePath", kVarWChar},
                    {"FileData", kVarWChar}},
                   {row}));
    return FetchAttachment(random_.process, random_.notices, kTemplateFormType, 7, 3);
  }

  RandomReport random_{1};
  std::shared_ptr<MemoryFiles> files_ = std::make_shared<MemoryFiles>();
  std::shared_ptr<CountedNames> names_ = std::make_shared<CountedNames>(*files_);
};

TEST_F(AttachmentTest, CopiesBytesUnderANewNameWithItsExtension) {
  files_->contents["/tmp/rad0.tmp"] = "another";
  EXPECT_EQ(Fetch({"xls", "0", std::nullopt, "0x504B00ff"}), "/tmp/rad1.xls");
  EXPECT_EQ(files_->contents["/tmp/rad1.xls"], std::string("PK\0\xFF", 4));
  EXPECT_EQ(files_->contents.count("/tmp/rad0.tmp"), 0U);
  EXPECT_EQ(Fetch({std::nullopt, std::nullopt, std::nullopt, std::nullopt}), "/tmp/rad2.tmp");
  EXPECT_EQ(files_->contents["/tmp/rad2.tmp"], "");
}

TEST_F(AttachmentTest, NoExtensionLeadsElsewhere) {
  EXPECT_EQ(Fetch({"/../../etc/cron.d/x", "0", std::nullopt, "0x41"}), "/tmp/rad0.etccrondx");
  EXPECT_EQ(Fetch({"..", "0", std::nullopt, "0x41"}), "/tmp/rad1.");
}

TEST_F(AttachmentTest, AnExternalFileIsNamedAsItStands) {
  EXPECT_EQ(Fetch({"xls", "1", "/share/t.xls", "0x41"}), "/share/t.xls");
  EXPECT_EQ(Fetch({"xls", "1", std::nullopt, "0x41"}), "");
  EXPECT_TRUE(files_->contents.empty());
}

TEST_F(AttachmentTest, WithoutAFolderTheUserIsTold) {
  names_->folder.clear();
  EXPECT_EQ(Fetch({"xls", "0", std::nullopt, "0x41"}), "");
  ASSERT_EQ(random_.notices.told.size(), 1U);
  EXPECT_EQ(random_.notices.told[0], "خطا|C:\\Windows\\Temp\r\nشاخه موقت ويندوز پيدا نشد.");
}

}  // namespace
}  // namespace vorek
