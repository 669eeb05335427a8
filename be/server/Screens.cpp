#include "server/Screens.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <mutex>
#include <vector>

namespace server {

namespace {

std::mutex sLock;
std::vector<ScreenInfo> sScreens; // guarded by sLock; the main one first

ScreenInfo Describe(const QScreen* screen) {
    return {Inclusive(screen->geometry()), Inclusive(screen->availableGeometry()),
            static_cast<float>(screen->devicePixelRatio())};
}

void ReadScreens() {
    std::vector<ScreenInfo> screens;
    const QScreen* primary = QGuiApplication::primaryScreen();
    if (primary != nullptr)
        screens.push_back(Describe(primary));
    for (const QScreen* screen : QGuiApplication::screens()) {
        if (screen != primary)
            screens.push_back(Describe(screen));
    }
    std::lock_guard lock(sLock);
    sScreens = std::move(screens);
}

void Follow(const QScreen* screen) {
    QObject::connect(screen, &QScreen::geometryChanged, ReadScreens);
    QObject::connect(screen, &QScreen::availableGeometryChanged, ReadScreens);
}

} // namespace

BRect Inclusive(const QRect& rect) {
    return BRect(static_cast<float>(rect.left()), static_cast<float>(rect.top()),
                 static_cast<float>(rect.right()), static_cast<float>(rect.bottom()));
}

ScreenInfo MainScreen() {
    std::lock_guard lock(sLock);
    return sScreens.empty() ? ScreenInfo() : sScreens.front();
}

ScreenInfo ScreenAt(BPoint where) {
    std::lock_guard lock(sLock);
    for (const ScreenInfo& screen : sScreens) {
        if (screen.frame.Contains(where))
            return screen;
    }
    return sScreens.empty() ? ScreenInfo() : sScreens.front();
}

ScreenInfo ScreenOf(BRect area) {
    ScreenInfo best = MainScreen();
    float most = 0;
    for (const ScreenInfo& screen : AllScreens()) {
        const BRect common = screen.frame & area;
        const float size = common.IsValid() ? (common.Width() + 1) * (common.Height() + 1) : 0;
        if (size > most)
            best = screen;
        most = std::max(most, size);
    }
    return best;
}

std::vector<ScreenInfo> AllScreens() {
    std::lock_guard lock(sLock);
    return sScreens.empty() ? std::vector<ScreenInfo>(1) : sScreens;
}

void PretendScreens(const std::vector<ScreenInfo>& screens) {
    std::lock_guard lock(sLock);
    sScreens = screens;
}

void WatchScreens() {
    ReadScreens();
    for (const QScreen* screen : QGuiApplication::screens())
        Follow(screen);
    QObject::connect(qApp, &QGuiApplication::screenAdded, [](QScreen* screen) {
        Follow(screen);
        ReadScreens();
    });
    QObject::connect(qApp, &QGuiApplication::screenRemoved, [](QScreen*) { ReadScreens(); });
    QObject::connect(qApp, &QGuiApplication::primaryScreenChanged, [](QScreen*) { ReadScreens(); });
}

} // namespace server
