#include "adapters/sqlite/file_place.h"

#include <sys/statvfs.h>
#include <sys/vfs.h>

#include <algorithm>
#include <array>

namespace vorek::sqlite {
namespace {

// File systems behind which another machine may stand, by the numbers of statfs(2).
constexpr std::array<unsigned long, 12> kShared = {
    0x6969,      // NFS
    0x517B,      // SMB
    0xFF534D42,  // CIFS
    0xFE534D42,  // SMB 2
    0x65735546,  // FUSE: what lies behind it can't be told
    0x01021997,  // 9P
    0x5346414F,  // AFS
    0x73757245,  // Coda
    0x00C36400,  // Ceph
    0x01161970,  // GFS 2
    0x7461636F,  // OCFS 2
    0x0BD00BD0,  // Lustre
};

}  // namespace

bool IsOnLocalDisk(const std::string& path) {
  struct statfs place {};
  if (::statfs(path.c_str(), &place) != 0) return false;
  const auto kind = static_cast<unsigned long>(place.f_type) & 0xFFFFFFFFUL;
  return std::find(kShared.begin(), kShared.end(), kind) == kShared.end();
}

bool IsOnReadOnlyDisk(const std::string& path) {
  struct statvfs place {};
  return ::statvfs(path.c_str(), &place) == 0 && (place.f_flag & ST_RDONLY) != 0;
}

}  // namespace vorek::sqlite
