#include <SupportDefs.h>

int32 atomic_add(volatile int32* value, int32 addend) {
    return __atomic_fetch_add(value, addend, __ATOMIC_SEQ_CST);
}

int32 atomic_and(volatile int32* value, int32 mask) {
    return __atomic_fetch_and(value, mask, __ATOMIC_SEQ_CST);
}

int32 atomic_or(volatile int32* value, int32 mask) {
    return __atomic_fetch_or(value, mask, __ATOMIC_SEQ_CST);
}

int32 atomic_get(volatile int32* value) {
    return __atomic_load_n(value, __ATOMIC_SEQ_CST);
}

int32 atomic_set(volatile int32* value, int32 newValue) {
    return __atomic_exchange_n(value, newValue, __ATOMIC_SEQ_CST);
}
