#include "server/Server.h"

#include "server/Desktop.h"
#include "server/NativeWindow.h"
#include "server/Screens.h"
#include "server/Signals.h"

#include <QApplication>
#include <QFileInfo>
#include <QIcon>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <clocale>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <memory>
#include <mutex>

namespace server {

namespace {

const QEvent::Type kWakeEvent = static_cast<QEvent::Type>(QEvent::User + 1);

// A wait for the end of a piece of work; the waiter goes on too when the server stops.
struct Waiter {
    bool done = false;
};

// What is to be done, in order. Qt is only told that there is something.
class WorkQueue : public QObject {
public:
    bool Add(std::function<void()> work) {
        std::lock_guard lock(fLock);
        if (fClosed)
            return false;
        fWork.push_back(std::move(work));
        if (!fWoken) {
            fWoken = true;
            QCoreApplication::postEvent(this, new QEvent(kWakeEvent));
        }
        return true;
    }

    bool AddAndWait(const std::function<void()>& work) {
        auto waiter = std::make_shared<Waiter>();
        const bool added = Add([this, waiter, &work] {
            work();
            std::lock_guard lock(fLock);
            waiter->done = true;
            fDone.notify_all();
        });
        if (!added)
            return false;
        std::unique_lock lock(fLock);
        fDone.wait(lock, [&] { return waiter->done || (fClosed && !fBusy); });
        return waiter->done;
    }

    void Drain() {
        std::unique_lock lock(fLock);
        fWoken = false;
        while (!fWork.empty() && !fClosed) {
            const std::function<void()> work = std::move(fWork.front());
            fWork.pop_front();
            fBusy = true;
            lock.unlock();
            work();
            lock.lock();
            fBusy = false;
        }
        fDone.notify_all();
    }

    void Close() {
        std::deque<std::function<void()>> dropped;
        std::lock_guard lock(fLock);
        fClosed = true;
        dropped.swap(fWork);
        fDone.notify_all();
    }

protected:
    void customEvent(QEvent* event) override {
        if (event->type() == kWakeEvent)
            Drain();
    }

private:
    std::mutex fLock;
    std::condition_variable fDone;
    // Guarded by fLock
    std::deque<std::function<void()>> fWork;
    bool fWoken = false;
    bool fBusy = false;
    bool fClosed = false;
};

// Constant once the server has started; the queue outlives every thread that may post.
std::atomic<WorkQueue*> sQueue{nullptr};
std::atomic<Qt::HANDLE> sThread{nullptr};

// Server thread only
QApplication* sApplication = nullptr;
std::function<void()> sQuitHandler;
std::function<void(bool)> sActivationHandler;
bool sActive = false;

// Positions can't be chosen under Wayland, so X11 is preferred where both are; without either there
// is no display, and Qt would end the process.
bool ChoosePlatform() {
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        return true;
    if (qEnvironmentVariableIsSet("DISPLAY")) {
        qputenv("QT_QPA_PLATFORM", "xcb;wayland");
        return true;
    }
    return qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
}

void FollowActivation(Qt::ApplicationState state) {
    const bool active = state == Qt::ApplicationActive;
    if (active == sActive)
        return;
    sActive = active;
    if (sActivationHandler)
        sActivationHandler(active);
}

// The picture that stands beside the program under its name.
void UseProgramIcon() {
    const QString path = QCoreApplication::applicationFilePath() + QLatin1String(".png");
    if (QFileInfo::exists(path))
        QGuiApplication::setWindowIcon(QIcon(path));
}

void Connect(const std::string& programName) {
    static int argc = 1;
    static char name[] = "itamori";
    static char* argv[] = {name, nullptr};
    PrepareOffscreen();
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    sApplication = new QApplication(argc, argv);
    OffscreenIsPrepared();
    sApplication->setQuitOnLastWindowClosed(false);
    // Windows without a title bear the program's name.
    QCoreApplication::setApplicationName(QString::fromStdString(programName));
    UseProgramIcon();
    // The toolkit has taken the user's locale over; dates and numbers in files and requests must
    // not follow.
    setlocale(LC_TIME, "C");
    setlocale(LC_NUMERIC, "C");
    QObject::connect(sApplication, &QGuiApplication::applicationStateChanged, FollowActivation);
}

} // namespace

bool Start(const std::string& programName) {
    if (sQueue != nullptr)
        return true;
    if (!ChoosePlatform()) {
        fprintf(stderr, "no display: set DISPLAY, WAYLAND_DISPLAY or QT_QPA_PLATFORM=offscreen\n");
        return false;
    }
    Connect(programName);
    sThread = QThread::currentThreadId();
    sQueue = new WorkQueue;
    WatchScreens();
    WatchSignals([] {
        if (sQuitHandler)
            sQuitHandler();
    });
    return true;
}

void Serve() {
    // What waits in the queue is done inside of the loop: an end that is among it would otherwise
    // be lost.
    QApplication::exec();
    sQueue.load()->Close();
}

void Stop() {
    Post([] { QCoreApplication::exit(0); });
}

void Disconnect() {
    if (WorkQueue* queue = sQueue)
        queue->Close();
    NativeWindow::CloseAll();
    ForgetSignals();
    delete sApplication;
    sApplication = nullptr;
}

bool IsServerThread() {
    return sThread == QThread::currentThreadId();
}

void Post(std::function<void()> work) {
    if (WorkQueue* queue = sQueue)
        queue->Add(std::move(work));
}

bool Call(const std::function<void()>& work) {
    WorkQueue* queue = sQueue;
    if (queue == nullptr)
        return false;
    if (!IsServerThread())
        return queue->AddAndWait(work);
    if (sApplication == nullptr)
        return false;
    queue->Drain();
    work();
    return true;
}

void PostLater(bigtime_t microseconds, std::function<void()> work) {
    Post([microseconds, work = std::move(work)] {
        QTimer::singleShot(static_cast<int>(microseconds / 1000), sApplication, work);
    });
}

void BringForward() {
    Post([] {
        if (NativeWindow* last = NativeWindow::LastActive())
            last->BringForward();
    });
}

void SetQuitHandler(std::function<void()> handler) {
    sQuitHandler = std::move(handler);
}

void SetActivationHandler(std::function<void(bool)> handler) {
    sActivationHandler = std::move(handler);
}

} // namespace server
