// The processor that runs the tests, compared with what the compiler's runtime finds.
#include "cpu/cpuid.h"

#include <gtest/gtest.h>

#include "vistrel/processor.h"

namespace vistrel::core::test {
namespace {

#if defined(__x86_64__) || defined(__i386__)

TEST(ThisProcessor, HasWhatTheCompilersRuntimeFinds) {
  EXPECT_EQ(ipp_has_cpuid(), 1);
  EXPECT_EQ(ipp_is_GenuineIntel(), __builtin_cpu_is("intel") != 0);
  EXPECT_EQ(ipp_is_mmx_extension(), __builtin_cpu_supports("mmx") != 0);
  EXPECT_EQ(ipp_is_ssx_extension(), __builtin_cpu_supports("sse") != 0);
  EXPECT_EQ(ipp_is_wni_extension(), __builtin_cpu_supports("sse2") != 0);
  EXPECT_EQ(ipp_is_pni_extension(), __builtin_cpu_supports("sse3") != 0);
  EXPECT_EQ(ipp_is_mni_extension(), __builtin_cpu_supports("ssse3") != 0);
  EXPECT_EQ(ipp_is_sse41_extension(), __builtin_cpu_supports("sse4.1") != 0);
  EXPECT_EQ(ipp_is_sse42_extension(), __builtin_cpu_supports("sse4.2") != 0);
  EXPECT_EQ(ipp_is_avx_extension(), __builtin_cpu_supports("avx") != 0);
#if defined(__x86_64__)
  EXPECT_EQ(ipp_is_em64t_extension(), 1u);
#endif
}

TEST(ThisProcessor, CountsTime) {
  const uint64_t before = ipp_get_pentium_counter();
  uint64_t after = before;
  for (int i = 0; i < 1000000 && after == before; ++i) after = ipp_get_pentium_counter();
  EXPECT_GT(after, before);
}

#else

TEST(ThisProcessor, AnswersNothing) {
  EXPECT_EQ(ipp_has_cpuid(), 0);
  EXPECT_EQ(ipp_max_cpuid_input(), 0u);
  EXPECT_EQ(ipp_is_ssx_extension(), 0);
  EXPECT_EQ(ipp_is_avx_extension(), 0);
  EXPECT_EQ(ipp_is_GenuineIntel(), 0);
  EXPECT_EQ(ipp_get_pentium_counter(), 0u);
}

#endif

}  // namespace
}  // namespace vistrel::core::test
