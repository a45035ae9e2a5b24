#include <sys/statvfs.h>

#include <cstdlib>
#include <cstring>
#include <fstream>

#include "platform/xdg.h"
#include "vistrel/platform.h"

namespace {

constexpr size_t kPathBytes = 1024;

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

std::string folderOf(int16_t domain, uint32_t type) {
  const vistrel::core::XdgVariables variables = {variable("HOME"), variable("XDG_CONFIG_HOME"),
                                                 variable("XDG_DATA_HOME")};
  if (domain == kUserDomain && type == kDocumentsFolder) {
    std::ifstream userDirs(vistrel::core::xdgUserDirsFile(variables));
    return vistrel::core::xdgDocumentsFolder(variables, userDirs);
  }
  if (domain == kAppropriateDisk && type == kDomainLibrary)
    return vistrel::core::xdgDataFolder(variables);
  return "";
}

void store(uint64_t value, uint32_t* pLow, uint32_t* pHigh) {
  *pLow = static_cast<uint32_t>(value);
  *pHigh = static_cast<uint32_t>(value >> 32);
}

}  // namespace

int SHGetSpecialFolderPath(char* path, int16_t nDomain, uint32_t nFolderType) {
  const std::string folder = folderOf(nDomain, nFolderType);
  if (folder.empty() || folder.size() >= kPathBytes) return 0;
  std::memcpy(path, folder.c_str(), folder.size() + 1);
  return 1;
}

int OS_GetDirectory(int nKind, char* path, int) {
  switch (nKind) {
    case 1:
    case 3: return SHGetSpecialFolderPath(path, kUserDomain, kDocumentsFolder) ? 0 : -1;
    case 2: return SHGetSpecialFolderPath(path, kAppropriateDisk, kDomainLibrary) ? 0 : -1;
    default: return -1;
  }
}

int OS_GetDiskFreeSpaceEx(const char*, uint32_t* pTotalLow, uint32_t* pTotalHigh,
                          uint32_t* pFreeLow, uint32_t* pFreeHigh) {
  struct statvfs volume;
  if (statvfs("/", &volume) != 0) volume = {};
  store(uint64_t{volume.f_blocks} * volume.f_frsize, pTotalLow, pTotalHigh);
  store(uint64_t{volume.f_bavail} * volume.f_frsize, pFreeLow, pFreeHigh);
  return 0;
}
