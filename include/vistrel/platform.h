// Functions under the names of another system's interface, so that portable source code compiles
// here. On that system itself, only those for mutexes and times and OS_IsSSE exist. All of them are
// stateless. They trust the sizes they are given: like the C functions of the same kind, they
// overrun text buffers that are too small.
#pragma once

#include <pthread.h>

#include <cstdint>
#include <cstdio>

#ifndef _WIN32

// Convert 'A'..'Z' to 'a'..'z' and back, in place. Other bytes stay. Both return text.
char* strlwr(char* text);
char* strupr(char* text);

// strcmp of the lower-case texts. Bytes after the first 255 are ignored.
int strcmpi(const char* a, const char* b);

// strcat and strcpy. They ignore nSize and return 0.
int strcat_s(char* dst, unsigned int nSize, const char* src);
int strcpy_s(char* dst, unsigned int nSize, const char* src);

// *pFile = fopen(path, mode), null on failure. Always returns 0.
int fopen_s(std::FILE** pFile, const char* path, const char* mode);

// Sets n bytes to zero.
void ZeroMemory(void* p, int n);

#endif

// A mutex with default attributes; it is not recursive.
void OS_InitializeCriticalSection(pthread_mutex_t* m);
void OS_DeleteCriticalSection(pthread_mutex_t* m);
void OS_EnterCriticalSection(pthread_mutex_t* m);
void OS_LeaveCriticalSection(pthread_mutex_t* m);

// Codes of domains and folders.
constexpr int16_t kUserDomain = -32763;
constexpr int16_t kAppropriateDisk = -32767;
constexpr uint32_t kDocumentsFolder = 0x646F6373;  // docs
constexpr uint32_t kDomainLibrary = 0x646C6962;    // dlib

#ifndef _WIN32

// Writes a folder's name to path, a buffer of 1024 bytes, and creates nothing. The documents
// folder of the user's domain is that of the XDG user directories (XDG_DOCUMENTS_DIR in
// user-dirs.dirs, otherwise ~/Documents); the library of the appropriate disk is the XDG data
// folder (XDG_DATA_HOME, otherwise ~/.local/share). Returns 1 on success. Returns 0 and leaves path
// unchanged for any other pair, without a home folder, or if the name does not fit.
int SHGetSpecialFolderPath(char* path, int16_t nDomain, uint32_t nFolderType);

// Writes the name of the documents folder (nKind 1 or 3) or of the library (nKind 2). path must
// have 1024 bytes; nSize is ignored. Returns 0 on success. Returns -1 and leaves path unchanged for
// another kind or if there is no such folder.
int OS_GetDirectory(int nKind, char* path, int nSize);

// The size of the volume of "/" and the space on it that is available to users, in bytes, each as
// its low and its high 32 bits. path is ignored. If the system reports nothing, both are 0.
// Always returns 0.
int OS_GetDiskFreeSpaceEx(const char* path, uint32_t* pTotalLow, uint32_t* pTotalHigh,
                          uint32_t* pFreeLow, uint32_t* pFreeHigh);

#endif

// Milliseconds since an arbitrary start; wraps to 0 after 4294967.
uint32_t OS_GetTickCount();
uint32_t OS_timeGetTime();

// A date and a time of day.
struct _OS_SYSTEMTIME {
  uint16_t year, month;           // month: 1 to 12
  uint16_t dayOfWeek;             // 0
  uint16_t day;                   // of the month, from 1
  uint16_t hour, minute, second;  // hour: 0 to 23
  uint16_t milliseconds;          // 0
};

// The current time, in GMT despite the name.
void OS_GetLocalTime(_OS_SYSTEMTIME* pTime);

// Returns 1 if the library has packed operations and the enabled feature mask includes SSE, else 0.
// So ippSetCpuFeaturesMask selects one of the two paths of DM_HUE_KIMMEL.
int OS_IsSSE();
