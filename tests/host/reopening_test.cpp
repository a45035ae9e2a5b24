// Libraries that are opened and closed again and again. VISTREL_AMOUNT in the environment says how
// often.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <array>
#include <cstdio>

#include "tests/amount.h"
#include "tests/resident.h"
#include "vistrel/vistrel.h"

namespace vistrel {
namespace {

// libVistrel, loaded as long as this exists.
class LoadedLibrary {
 public:
  LoadedLibrary() : handle_(dlopen(VISTREL_FILE, RTLD_NOW | RTLD_LOCAL)) {}
  ~LoadedLibrary() { dlclose(handle_); }
  LoadedLibrary(const LoadedLibrary&) = delete;
  LoadedLibrary& operator=(const LoadedLibrary&) = delete;

  template <class Function>
  Function* named(const char* name) const {
    return reinterpret_cast<Function*>(dlsym(handle_, name));
  }

 private:
  void* handle_;
};

constexpr long kInexactKiB = 512;  // Linux counts in steps

// Opens every stream of the table's first eight, converts a gray frame on it, closes all.
bool opensAndConverts(const LoadedLibrary& library) {
  constexpr uint32_t kSide = 16;
  std::array<uint8_t, kSide * kSide> source;
  std::array<uint8_t, 3 * kSide * kSide> pixels{};
  source.fill(100);
  library.named<decltype(ImgLoadDriver)>("ImgLoadDriver")();
  bool isRight = true;
  for (uint32_t id = 0; id < 8; ++id) {
    pixels.fill(0);
    isRight &= library.named<decltype(ImgInitialize)>("ImgInitialize")(id, kSide, kSide) == 1;
    isRight &= library.named<decltype(ImgConvert8)>("ImgConvert8")(
                   id, IMG_FMT_BGR24, DM_BILINEAR, BAYER_RGGB, 0, kSide, kSide, 0, 0, kSide, kSide,
                   source.data(), pixels.data(), 8, 0) == 1;
    isRight &= pixels[3 * (kSide * 5 + 5)] == 100 && pixels[3 * (kSide * 5 + 5) + 2] == 100;
  }
  library.named<decltype(ImgUnloadDriver)>("ImgUnloadDriver")();
  return isRight;
}

// Calls the function that often, and expects the memory of the second half to be that of the first.
template <class Round>
void expectFlatMemory(uint64_t rounds, const Round& round) {
  long middle = 0;
  for (uint64_t i = 0; i < rounds; ++i) {
    if (i == rounds / 2) middle = test::residentKiB();
    ASSERT_TRUE(round()) << "round " << i;
  }
  // Sanitizers keep freed memory for a while, and find leaks themselves.
  if (!VISTREL_SANITIZED) {
    EXPECT_LE(test::residentKiB() - middle, kInexactKiB) << "KiB in the second half";
  }
}

TEST(Reopening, StreamsKeepNoMemory) {
  const LoadedLibrary library;
  const uint64_t rounds = test::amount(2000);
  expectFlatMemory(rounds, [&] { return opensAndConverts(library); });
  std::printf("%llu times opened and closed\n", static_cast<unsigned long long>(8 * rounds));
}

TEST(Reopening, TheLibraryKeepsNoMemory) {
  const uint64_t rounds = test::amount(300);
  expectFlatMemory(rounds, [] { return opensAndConverts(LoadedLibrary()); });
  std::printf("%llu times loaded and unloaded\n", static_cast<unsigned long long>(rounds));
}

}  // namespace
}  // namespace vistrel
