/*
 * Processor detection and the choice of the code variant that runs. Plain C.
 *
 * ippStaticInit, which ImgLoadDriver calls, detects the processor once and
 * chooses a variant; until then the base variant runs. The variables behind
 * these functions are not protected by a lock: call functions that change them
 * only while no other call is running.
 *
 * On other processor architectures nothing is detected: probes return 0, and
 * ippStaticInit returns 20. On 64-bit ARM every variant uses NEON; elsewhere
 * all are the base variant.
 */
#ifndef VISTREL_PROCESSOR_H
#define VISTREL_PROCESSOR_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The variant that runs: 0 and 1 base, 2 SSSE3, 3 SSE4.1 and above. */
extern uint32_t ippJumpIndexForMergedLibs;

/* 1 on a processor with SSSE3 and MOVBE but no SSE4.1, else 0. */
extern uint32_t ippJumpIndexForMergedLibsLP;

/* Bits of a feature mask. */
enum {
  IPP_CPU_MMX = 0x0001,
  IPP_CPU_SSE = 0x0002,
  IPP_CPU_SSE2 = 0x0004,
  IPP_CPU_SSE3 = 0x0008,
  IPP_CPU_SSSE3 = 0x0010,
  IPP_CPU_MOVBE = 0x0020,
  IPP_CPU_SSE41 = 0x0040,
  IPP_CPU_SSE42 = 0x0080,
  IPP_CPU_AVX = 0x0100,    /* the processor has the instructions */
  IPP_CPU_AVX_OS = 0x0200, /* the operating system has enabled them */
  IPP_CPU_AES = 0x0400,
  IPP_CPU_CLMUL = 0x0800,
  IPP_CPU_FAMILY_B = 0x1000, /* reserved, on processor family 0xB only */

  /* Never detected. If enabled, they keep variant 3 from using wider registers. */
  IPP_CPU_NO_AVX2 = 0x20000000, /* and no AVX-512; on 64-bit ARM, no NEON */
  IPP_CPU_NO_AVX512 = 0x40000000
};

/*
 * Detects the processor and chooses the variant and the enabled features.
 * Returns 0 on success, 36 below the base level, 20 on a processor of another
 * vendor; in each case the choice is made.
 */
int32_t ippStaticInit(void);
int32_t ippInit(void); /* the same function */

/*
 * Forces a level by its code, without checking that the processor has it:
 * 0, 32, 66 SSE3; 33, 34, 67 SSSE3; 36 SSSE3 with MOVBE; 35, 68 SSE4.1;
 * 37, 69 SSE4.2; 38, 71 with AES; 0xFFFFFFFF detects, as ippInit does.
 * Returns 0 on success, 36 if the code is known but has no variant, 21 if it is
 * unknown; 36 and 21 change nothing.
 */
int32_t ippStaticInitCpu(uint32_t nCode);
int32_t ippInitCpu(uint32_t nCode); /* the same function */

/*
 * Writes the detected features to *pMask and, unless pRegs is null, EAX, EBX,
 * ECX and EDX of CPUID leaf 1 to pRegs. If *pMask holds the eight bytes
 * "getinfoa", pRegs[0] and pRegs[2] select another leaf and sub-leaf.
 * Returns 0 on success, 36 on a processor without CPUID, -8 if pMask is null.
 */
int32_t ippGetCpuFeatures(uint64_t* pMask, uint32_t* pRegs);

/* The enabled features, as chosen or as set here. The setter returns 0. */
int32_t ippSetCpuFeaturesMask(uint64_t nMask);
uint64_t ippGetEnabledCpuFeatures(void);

/*
 * Writes the detected features to *pMask and returns 1. Without CPUID it returns
 * 0 and leaves *pMask unchanged.
 */
int32_t ownGetMaskFeatures(uint64_t* pMask);

/* Returns 1 if every bit of nMask is enabled, else 0. */
int32_t ownGetFeature(uint64_t nMask);

/* Like ippSetCpuFeaturesMask, but returns 1. */
int32_t ownSetFeatureMask(uint64_t nMask);

/* Runs CPUID and writes EAX, EBX, ECX and EDX to pRegs. */
void ownGetReg(uint32_t* pRegs, uint32_t nLeaf, uint32_t nSubLeaf);

/*
 * pTable: pairs of a cache descriptor byte and a size; a descriptor of 0 ends it.
 * Returns the size in the first pair whose descriptor CPUID leaf 2 reports, or
 * -1 if there is none.
 */
int32_t ownGetCacheSize(const uint32_t* pTable);

/* Processor probes: 1 or 0, or the number that the name stands for. */
int32_t ipp_has_cpuid(void);
uint32_t ipp_max_cpuid_input(void);
int32_t ipp_has_rdtsc(void);
int32_t ipp_is_mmx_extension(void);
int32_t ipp_is_ssx_extension(void); /* SSE */
int32_t ipp_is_wni_extension(void); /* SSE2 */
int32_t ipp_is_htt_extension(void); /* several logical processors */
int32_t ipp_is_pni_extension(void); /* SSE3 */
int32_t ipp_is_mni_extension(void); /* SSSE3 */
int32_t ipp_is_sse41_extension(void);
int32_t ipp_is_sse42_extension(void);
int32_t ipp_is_movbe(void);
int32_t ipp_is_avx_extension(void);     /* and enabled by the operating system */
int32_t ipp_get_cores_on_die(void);     /* 1 if not known */
uint64_t ipp_get_pentium_counter(void); /* the time stamp counter */
int32_t ipp_is_GenuineIntel(void);

/* 64-bit mode: 1 or 0, or the highest extended leaf if that is too low to know. */
uint32_t ipp_is_em64t_extension(void);

/* What CPUID says about the processor. Features are 1 or 0. */
typedef struct IppPentiumIdent {
  int32_t family, stepping, model, type; /* fields of EAX of leaf 1 */
  int32_t leaf1Edx, leaf2Eax, leaf2Edx;  /* whole registers */
  int32_t mmx;                           /* as ipp_is_mmx_extension */
  int32_t reserved;                      /* not written */
  int32_t sse, sse2, htt, sse3;          /* as the probes of these features */
  int32_t em64t;                         /* as ipp_is_em64t_extension */
  int32_t ssse3, cores, sse41, sse42;    /* as the probes; cores as ipp_get_cores_on_die */
  int32_t extendedFamily, extendedModel; /* fields of EAX of leaf 1 */
  int32_t movbe;                         /* as ipp_is_movbe */
  int32_t avx;                           /* the processor has AVX, whether or not it is enabled */
  int32_t osxsave;                       /* the operating system saves extended registers */
} IppPentiumIdent;

/* Fills *pIdent, which must not be null. */
void ipp_get_pentium_ident(IppPentiumIdent* pIdent);

#ifdef __cplusplus
}
#endif

#endif
