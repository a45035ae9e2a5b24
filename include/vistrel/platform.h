// Names of another system's interface in plain form, so that common source code compiles here.
// Everything is stateless. Sizes are taken as promised, not tested: text buffers that are too
// small are overrun as by the C functions of the same kind.
#pragma once

#include <pthread.h>

#include <cstdint>
#include <cstdio>

// Text, in place: 'A'..'Z' to 'a'..'z' and back. Other bytes stay. They return text.
char* strlwr(char* text);
char* strupr(char* text);

// As strcmp, of the lowered texts. Bytes past the first 255 do not count.
int strcmpi(const char* a, const char* b);

// strcat and strcpy. They ignore nSize and return 0.
int strcat_s(char* dst, unsigned int nSize, const char* src);
int strcpy_s(char* dst, unsigned int nSize, const char* src);

// *pFile = fopen(path, mode), null when that failed. Returns 0 in any case.
int fopen_s(std::FILE** pFile, const char* path, const char* mode);

// Zero in n bytes.
void ZeroMemory(void* p, int n);

// A mutex with default attributes: not recursive.
void OS_InitializeCriticalSection(pthread_mutex_t* m);
void OS_DeleteCriticalSection(pthread_mutex_t* m);
void OS_EnterCriticalSection(pthread_mutex_t* m);
void OS_LeaveCriticalSection(pthread_mutex_t* m);

// Domains and folders, as codes of four characters.
constexpr int16_t kUserDomain = -32763;
constexpr int16_t kAppropriateDisk = -32767;
constexpr uint32_t kDocumentsFolder = 0x646F6373;  // docs
constexpr uint32_t kDomainLibrary = 0x646C6962;    // dlib

// Writes a folder's name to path, a buffer of 1024 bytes; creates nothing. The user's documents
// folder is the one of the XDG user directories (XDG_DOCUMENTS_DIR in user-dirs.dirs, otherwise
// ~/Documents); the library of the appropriate disk is the XDG data folder (XDG_DATA_HOME,
// otherwise ~/.local/share). Returns 1; or 0, with path untouched, for any other pair, without a
// home folder, and for a name that does not fit.
int SHGetSpecialFolderPath(char* path, int16_t nDomain, uint32_t nFolderType);

// nKind 1 or 3: the documents folder; 2: the library. path has 1024 bytes, whatever nSize says.
// Returns 0; or -1, with path untouched, for another kind or where there is no such folder.
int OS_GetDirectory(int nKind, char* path, int nSize);

// Size of the volume of "/" in bytes and what of it a user may still fill, as low and high words;
// path is ignored. What the system does not tell reads as 0. Returns 0.
int OS_GetDiskFreeSpaceEx(const char* path, uint32_t* pTotalLow, uint32_t* pTotalHigh,
                          uint32_t* pFreeLow, uint32_t* pFreeHigh);

// Milliseconds from an arbitrary start, back to 0 after 4294967.
uint32_t OS_GetTickCount();
uint32_t OS_timeGetTime();

struct _OS_SYSTEMTIME {
  uint16_t year, month, dayOfWeek, day, hour, minute, second, milliseconds;
};

// The present time, in GMT despite the name. dayOfWeek and milliseconds are always 0.
void OS_GetLocalTime(_OS_SYSTEMTIME* pTime);

// 1 when the library has packed operations and the enabled feature mask holds SSE, else 0. So
// ippSetCpuFeaturesMask chooses between the two paths of DM_HUE_KIMMEL.
int OS_IsSSE();
