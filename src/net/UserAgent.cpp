#include "net/NPHttp.h"

#include <Autolock.h>
#include <Locker.h>

#include <cstdio>
#include <sys/utsname.h>

const char* get_user_agent() {
    static BLocker sLock("user agent");
    static char sUserAgent[512] = "Monazilla";
    static bool sKnown = false;
    const BAutolock lock(sLock);
    utsname system;
    if (!sKnown && uname(&system) >= 0) {
        // Servers let in what calls itself "Monazilla/1.00".
        snprintf(sUserAgent, sizeof(sUserAgent), "Monazilla/1.00 (%s %s; %s; Itamori-20020123)",
                 system.sysname, system.release, system.machine);
        sKnown = true;
    }
    return sUserAgent;
}
