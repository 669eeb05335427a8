#pragma once

#include <sys/types.h>

#include <Errors.h>

// The API's integer types. int32 is int on every platform: print it with "%d", or cast to long for
// "%ld".
typedef signed char int8;
typedef unsigned char uint8;
typedef short int16;
typedef unsigned short uint16;
typedef int int32;
typedef unsigned int uint32;
typedef long long int64;
typedef unsigned long long uint64;

typedef unsigned char uchar;

typedef volatile int32 vint32;
typedef volatile int64 vint64;

typedef int32 status_t;   // B_OK or a negative code of Errors.h
typedef int64 bigtime_t;  // microseconds
typedef uint32 type_code; // four characters, see TypeConstants.h
typedef uint32 perform_code;

#define B_INFINITE_TIMEOUT (9223372036854775807LL)

#ifndef min_c
#define min_c(a, b) ((a) > (b) ? (b) : (a))
#define max_c(a, b) ((a) > (b) ? (a) : (b))
#endif

// Each returns the value from before the change.
int32 atomic_add(volatile int32* value, int32 addend);
int32 atomic_and(volatile int32* value, int32 mask);
int32 atomic_or(volatile int32* value, int32 mask);
int32 atomic_get(volatile int32* value);
int32 atomic_set(volatile int32* value, int32 newValue);
