/*
 * For LD_PRELOAD: when the program ends, writes to descriptor 9 how many streams it acquired and
 * released, and how many conversions ran without a stream of the caller's.
 */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <stdint.h>
#include <stdio.h>

static int taken, given_back, others;

static void* next(const char* name) { return dlsym(RTLD_NEXT, name); }

int32_t vistrel_stream_acquire(uint32_t wait, void** stream, void* error) {
  int32_t (*take)(uint32_t, void**, void*);
  *(void**)&take = next("vistrel_stream_acquire");
  __atomic_add_fetch(&taken, 1, __ATOMIC_RELAXED);
  return take(wait, stream, error);
}

int32_t vistrel_stream_release(void* stream, void* error) {
  int32_t (*give_back)(void*, void*);
  *(void**)&give_back = next("vistrel_stream_release");
  __atomic_add_fetch(&given_back, 1, __ATOMIC_RELAXED);
  return give_back(stream, error);
}

int32_t vistrel_convert(const void* frame, const void* conversion, const void* image, void* error) {
  int32_t (*convert)(const void*, const void*, const void*, void*);
  *(void**)&convert = next("vistrel_convert");
  __atomic_add_fetch(&others, 1, __ATOMIC_RELAXED);
  return convert(frame, conversion, image, error);
}

__attribute__((destructor)) static void report(void) {
  dprintf(9, "%d taken, %d back, %d others", taken, given_back, others);
}
