#include <cstring>

#include "vistrel/platform.h"

namespace {

constexpr size_t kCompared = 255;

struct LoweredCopy {
  char text[kCompared + 1] = {};

  explicit LoweredCopy(const char* source) {
    std::strncpy(text, source, kCompared);
    strlwr(text);
  }
};

}  // namespace

char* strlwr(char* text) {
  for (char* p = text; *p; ++p)
    if (*p >= 'A' && *p <= 'Z') *p = static_cast<char>(*p + 32);
  return text;
}

char* strupr(char* text) {
  for (char* p = text; *p; ++p)
    if (*p >= 'a' && *p <= 'z') *p = static_cast<char>(*p - 32);
  return text;
}

int strcmpi(const char* a, const char* b) {
  return std::strcmp(LoweredCopy(a).text, LoweredCopy(b).text);
}

int strcat_s(char* dst, unsigned int, const char* src) {
  std::strcat(dst, src);
  return 0;
}

int strcpy_s(char* dst, unsigned int, const char* src) {
  std::strcpy(dst, src);
  return 0;
}

int fopen_s(std::FILE** pFile, const char* path, const char* mode) {
  *pFile = std::fopen(path, mode);
  return 0;
}

void ZeroMemory(void* p, int n) { std::memset(p, 0, static_cast<size_t>(n)); }
