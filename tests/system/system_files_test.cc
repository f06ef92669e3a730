#include "adapters/system/system_files.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <future>
#include <thread>

#include "adapters/system/file_settings.h"
#include "platform/memory_files.h"
#include "support/scratch_folder.h"
#include "vorek/error.h"
#include "vorek/system.h"

namespace vorek {
namespace {

namespace fs = std::filesystem;

class SystemFilesTest : public testing::Test {
 protected:
  std::string At(const std::string& name) const { return folder_.Path(name); }
  long ErrorOf(const std::function<void()>& call, std::string* description = nullptr) const {
    try {
      call();
      return 0;
    } catch (const Error& error) {
      if (description != nullptr) *description = error.Description();
      return error.Number();
    }
  }
  std::size_t FilesInFolder() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder_.Folder()), fs::directory_iterator()));
  }

  ScratchFolder folder_;
  SystemFiles files_;
};

TEST_F(SystemFilesTest, WritesAndReadsBytesAsTheyAre) {
  const std::string bytes("line\r\n\0\xFF گزارش", 16);
  files_.Write(At("گزارش.txt"), "old");
  files_.Write(At("گزارش.txt"), bytes);
  EXPECT_EQ(files_.Read(At("گزارش.txt")), bytes);
  EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(SystemFilesTest, AMissingFileAndAMissingFolderHaveTheirNumber) {
  EXPECT_FALSE(files_.Exists(At("none")));
  EXPECT_FALSE(files_.Exists(folder_.Folder().string()));
  EXPECT_EQ(ErrorOf([&] { files_.Read(At("none")); }), 53);
  EXPECT_EQ(ErrorOf([&] { files_.Write(At("none/file"), "x"); }), 53);
  EXPECT_EQ(ErrorOf([&] { files_.Read(folder_.Folder().string()); }), 75);
}

TEST_F(SystemFilesTest, AFailedWriteLeavesTheOldFileAndNothingElse) {
  files_.Write(At("keep"), "old");
  fs::create_directory(At("folder"));
  EXPECT_EQ(ErrorOf([&] { files_.Write(At("folder"), "x"); }), 75);
  EXPECT_EQ(ErrorOf([&] { files_.Write("/dev/full/x", "x"); }), 53);
  EXPECT_EQ(files_.Read(At("keep")), "old");
  EXPECT_EQ(FilesInFolder(), 2U);
}

TEST_F(SystemFilesTest, ADeviceIsNeitherAFileNorReplacedByOne) {
  ASSERT_EQ(::mkfifo(At("device").c_str(), 0600), 0);
  for (const std::string& path : {At("device"), std::string("/dev/null")}) {
    EXPECT_FALSE(files_.Exists(path)) << path;
    std::string description;
    EXPECT_EQ(ErrorOf([&] { files_.Write(path, "x"); }, &description), 75) << path;
    EXPECT_TRUE(description.ends_with(path + ": Not a regular file")) << description;
    EXPECT_FALSE(fs::is_regular_file(path)) << path;
  }
  EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(SystemFilesTest, WhatCantBeSeenIsntTakenForMissing) {
  fs::create_symlink(At("loop"), At("loop"));
  EXPECT_EQ(ErrorOf([&] { files_.Exists(At("loop")); }), 75);
  EXPECT_EQ(ErrorOf([&] { files_.Exists(At(std::string(300, 'x'))); }), 75);
  files_.Write(At("file"), "x");
  EXPECT_FALSE(files_.Exists(At("file/none")));
}

TEST_F(SystemFilesTest, AWriteThatRunsOutOfRoomLeavesTheOldFile) {
  files_.Write(At("keep"), "old");
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
  const rlimit small{1000, before.rlim_max};
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  const long number = ErrorOf([&] { files_.Write(At("keep"), std::string(5000, 'x')); });
  ::setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(number, 75);
  EXPECT_EQ(files_.Read(At("keep")), "old");
  EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(SystemFilesTest, KeepsPermissionsAndFollowsALink) {
  files_.Write(At("real"), "old");
  ASSERT_EQ(::chmod(At("real").c_str(), 0640), 0);
  fs::create_symlink(At("real"), At("link"));
  files_.Write(At("link"), "new");
  EXPECT_TRUE(fs::is_symlink(At("link")));
  EXPECT_EQ(files_.Read(At("real")), "new");
  EXPECT_EQ(fs::status(At("real")).permissions(), fs::perms(0640));
}

TEST_F(SystemFilesTest, WhatIsNewIsForItsOwnerAlone) {
  const auto mode = [&](const char* name) {
    return fs::status(At(name)).permissions() & fs::perms::all;
  };
  const mode_t mask = ::umask(0);
  files_.MakeFoldersFor(At("a/b/file"));
  files_.Write(At("a/b/file"), "x");
  const auto out = files_.Create(At("export.csv"));
  EXPECT_EQ(
      fs::status(fs::directory_iterator(folder_.Folder())->path()).permissions() & fs::perms(077),
      fs::perms::none);
  out->Commit();
  ::umask(mask);
  EXPECT_EQ(mode("a"), fs::perms(0700));
  EXPECT_EQ(mode("a/b"), fs::perms(0700));
  EXPECT_EQ(mode("a/b/file"), fs::perms(0600));
  EXPECT_EQ(mode("export.csv"), fs::perms(0600));
  ASSERT_EQ(::chmod(At("export.csv").c_str(), 0644), 0);
  files_.Create(At("export.csv"))->Commit();
  EXPECT_EQ(mode("export.csv"), fs::perms(0644));
}

// Leaves off in the midst of a file, as a program that is killed.
void LeaveHalfAFile(const std::string& path) {
  const pid_t child = ::fork();
  if (child == 0) {
    const auto out = SystemFiles().Create(path);
    out->Write("half");
    ::_exit(0);
  }
  ::waitpid(child, nullptr, 0);
}

TEST_F(SystemFilesTest, SweepsWhatAKilledProgramLeft) {
  files_.Write(At("a"), "old");
  LeaveHalfAFile(At("a"));
  LeaveHalfAFile(At("other"));
  const auto written = files_.Create(At("a"));
  EXPECT_EQ(FilesInFolder(), 3U);          // a, its new one, and what is left of the other
  std::ofstream(At("a.1-0.tmp")).close();  // of a program that runs
  std::ofstream(At("a.999999999-0.tmp.txt")).close();
  std::ofstream(At("a.x-0.tmp")).close();
  files_.Write(At("a"), "new");
  EXPECT_EQ(FilesInFolder(), 6U);
  written->Commit();
  files_.Write(At("other"), "x");
  EXPECT_EQ(FilesInFolder(), 5U);
}

TEST_F(SystemFilesTest, ALockKeepsOthersOut) {
  constexpr int kTimes = 200;
  const auto add = [&](const std::string& key) {
    FileSettings settings(std::make_shared<SystemFiles>(), At("settings.conf"));
    for (int i = 0; i < kTimes; ++i) {
      settings.Save(key, std::to_string(i), "x");
      std::this_thread::sleep_for(std::chrono::milliseconds(1));  // the other's turn
    }
  };
  auto other = std::async(std::launch::async, [&] { add("other"); });
  add("one");
  other.get();
  const text::Sections sections = text::ParseKeyValues(files_.Read(At("settings.conf")));
  EXPECT_EQ(sections.at("one").size(), 200U);
  EXPECT_EQ(sections.at("other").size(), 200U);
}

TEST_F(SystemFilesTest, WritesSettingsAtOnceForTheirOwnerAlone) {
  const auto files = std::make_shared<SystemFiles>();
  const auto mode = [&](const char* name) {
    return fs::status(At(name)).permissions() & fs::perms::all;
  };
  FileSettings settings(files, At("sub/settings.conf"));
  settings.Save("Setting", "DialogPath", "/a");
  EXPECT_EQ(mode("sub/settings.conf"), fs::perms(0600));
  ASSERT_EQ(::chmod(At("sub/settings.conf").c_str(), 0644), 0);
  settings.Save("Setting", "Other", "x");
  EXPECT_EQ(mode("sub/settings.conf"), fs::perms(0600));
  EXPECT_EQ(settings.Get("Setting", "DialogPath", ""), "/a");

  const auto memory = std::make_shared<MemoryFiles>();
  FilePropertyStore store(memory, "store");
  store.WriteProperty("UserID", "1", "-1");
  store.WriteProperty("PeriodID", "2", "-1");
  EXPECT_EQ(memory->writes, 0);
  store.Commit();
  EXPECT_EQ(memory->writes, 1);
  EXPECT_EQ(store.ReadProperty("UserID", "") + store.ReadProperty("PeriodID", ""), "12");
  memory->fail_writes = true;
  store.WriteProperty("UserID", "9", "-1");
  EXPECT_THROW(store.Commit(), Error);
  EXPECT_EQ(store.ReadProperty("UserID", ""), "1");
}

TEST_F(SystemFilesTest, MakesTheFoldersOfAPath) {
  files_.MakeFoldersFor(At("a/b/file"));
  files_.Write(At("a/b/file"), "x");
  EXPECT_TRUE(files_.Exists(At("a/b/file")));
  EXPECT_NE(ErrorOf([&] { files_.MakeFoldersFor(At("a/b/file/c/file")); }), 0);
}

TEST(MachineFunctionFile, HostThenEnvironmentThenSettingsFolder) {
  ::setenv("HOME", "/home/u", 1);
  ::unsetenv("XDG_CONFIG_HOME");
  ::unsetenv("VOREK_FUNCTIONS");
  EXPECT_EQ(MachineFunctionFile(), "/home/u/.config/vorek/ANALIZEM.FUN");
  ::setenv("XDG_CONFIG_HOME", "/settings", 1);
  EXPECT_EQ(MachineFunctionFile(), "/settings/vorek/ANALIZEM.FUN");
  ::setenv("XDG_CONFIG_HOME", "relative", 1);
  EXPECT_EQ(MachineFunctionFile(), "/home/u/.config/vorek/ANALIZEM.FUN");
  ::setenv("VOREK_FUNCTIONS", "/env.fun", 1);
  EXPECT_EQ(MachineFunctionFile(), "/env.fun");
  EXPECT_EQ(MachineFunctionFile("/host.fun"), "/host.fun");
}

}  // namespace
}  // namespace vorek
