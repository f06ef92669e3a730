#include "vorek/components.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "vorek/error.h"

namespace vorek {
namespace {

namespace fs = std::filesystem;

// A folder with the libraries that the build made for the test.
class ComponentsTest : public testing::Test {
 protected:
  ComponentsTest() {
    fs::remove_all(folder.parent_path());
    fs::create_directories(folder / "System");
    Copy("told_form", "test.form.so");
    Copy("told_form", "test.nobody.so");
    Copy("old_form", "test.old.so");
    Copy("no_form", "test.none.so");
    Copy("told_form", "System/test.later.so");
    Copy("told_form", "../outside.so");
    std::ofstream(folder / "test.text.so") << "no library";
  }
  ~ComponentsTest() override { fs::remove_all(folder.parent_path()); }
  void Copy(const std::string& library, const std::string& name) {
    fs::copy_file(fs::path(VOREK_TEST_FORMS) / (library + ".so"), folder / name);
  }
  // The reason for which a component can't be made; "" for one that is.
  std::string Refusal(const std::string& prog_id) {
    try {
      components->Create(prog_id, 1);
    } catch (const Error& error) {
      EXPECT_TRUE(error.Is(ErrorNumber::kNoComponent));
      EXPECT_EQ(log, error.Description());
      return error.Description();
    }
    return "";
  }

  fs::path folder =
      fs::path(testing::TempDir()) /
      (std::string("vorek-") + testing::UnitTest::GetInstance()->current_test_info()->name()) /
      "forms";
  std::string log;
  std::shared_ptr<Components> components =
      ComponentsInFolder(folder.string(), [this](const std::string& reason) { log = reason; });
};

TEST_F(ComponentsTest, GivesALibraryWhatItsFormIsTold) {
  {
    const std::unique_ptr<Component> form = components->Create("test.form", 905);
    form->Set("UserID", 3);
    form->Set("OleConnectionString", std::string("متن"));
    EXPECT_THROW(form->Set("Wrong", std::string("x")), Error);
    form->Call("View", {std::string("12")});
    form->Call("ClearShow", {});
  }
  void* const library = dlopen((folder / "test.form.so").c_str(), RTLD_NOW | RTLD_NOLOAD);
  ASSERT_NE(library, nullptr);
  const auto told = reinterpret_cast<const char* (*)()>(dlsym(library, "told"));
  EXPECT_STREQ(told(),
               "test.form 905;UserID=3;OleConnectionString='متن';Wrong='x';View(12);"
               "ClearShow(null);gone");
  dlclose(library);
  EXPECT_EQ(log, "");
}

TEST_F(ComponentsTest, RefusesWhatIsNoForm) {
  const struct {
    const char* prog_id;
    const char* reason;  // a part of it
  } cases[] = {
      {"test.old", "نسخه ديگري"}, {"test.none", "vorek_form_plugin"},
      {"test.text", "باز نشد"},   {"test.nobody", "test.nobody"},
      {"test.absent", "نيست"},    {"../outside", "پذيرفتني نيست"},
      {"..", "پذيرفتني نيست"},    {"System/test.later", "پذيرفتني نيست"},
      {"a\\b", "پذيرفتني نيست"},  {"", "پذيرفتني نيست"},
  };
  for (const auto& c : cases) {
    EXPECT_NE(Refusal(c.prog_id).find(c.reason), std::string::npos) << c.prog_id << ": " << log;
  }
}

TEST_F(ComponentsTest, FindsInTheSubfolderWhatIsRegistered) {
  EXPECT_NE(Refusal("test.later"), "");
  components->Register("test.later.dll");
  log.clear();
  EXPECT_EQ(Refusal("test.later"), "");
}

TEST_F(ComponentsTest, AsksTheFolderForWhatTheHostDoesNotMake) {
  ComponentFactories factories;
  EXPECT_THROW(factories.Create("test.form", 1), Error);
  factories.SetNext(components);
  EXPECT_NE(factories.Create("test.form", 1), nullptr);
  factories.Add("Test.Form", [](std::int32_t) { return nullptr; });
  EXPECT_THROW(factories.Create("test.form", 1), Error);
}

}  // namespace
}  // namespace vorek
