// VISTREL_SANITIZED: whether a sanitizer watches, which makes everything slower and ends a program
// that asks for more memory than there is.
#pragma once

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define VISTREL_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define VISTREL_SANITIZED 1
#endif
#endif
#ifndef VISTREL_SANITIZED
#define VISTREL_SANITIZED 0
#endif
