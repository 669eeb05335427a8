#include "browser/BrowserWindow.h"
#include "workers/SubjectWorkers.h"

SubjectReader::SubjectReader(const SubjectJob& job)
    : Worker(job.window, job.control), fJob(job), fUrl(job.url.c_str()) {}

void SubjectReader::AddThread(int32 number, const char* title, const char* count, const char* dat) {
    Window().CallForThreads([&](BrowserWindow* window) {
        window->addThreadItem(Request(), number, title, count, dat);
    });
}
