#include "server/Desktop.h"

#include "interface/fonts/SystemFonts.h"
#include "server/Opener.h"
#include "server/Server.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QScreen>
#include <QUrl>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <unistd.h>

namespace server {

namespace {

std::mutex sLaunchLock;
// Guarded by sLaunchLock
bool sRecording = false;
std::vector<std::string> sLaunches;

bool Recorded(const std::string& launch) {
    std::lock_guard lock(sLaunchLock);
    if (sRecording)
        sLaunches.push_back(launch);
    return sRecording;
}

// Without the desktop's own opener. The toolkit writes some addresses anew: such a one is not what
// was asked for.
status_t OpenByToolkit(const std::string& address) {
    const QByteArray bytes = QByteArray::fromStdString(address);
    const QUrl url = QUrl::fromEncoded(bytes, QUrl::TolerantMode);
    if (!url.isValid() || url.toEncoded() != bytes)
        return B_BAD_VALUE;
    bool isOpen = false;
    Call([&] { isOpen = QDesktopServices::openUrl(url); });
    return isOpen ? B_OK : B_ERROR;
}

// Server thread only
std::string sScreenFile;   // of the platform without a display
std::string sOwnSelection; // where the desktop has no primary selection, within the program

} // namespace

ClipboardText ReadClipboard() {
    ClipboardText result;
    result.known = Call([&result] {
        result.utf8 = QGuiApplication::clipboard()->text(QClipboard::Clipboard).toStdString();
    });
    return result;
}

void SetClipboardText(const std::string& utf8) {
    Post([utf8] {
        QGuiApplication::clipboard()->setText(QString::fromStdString(utf8), QClipboard::Clipboard);
    });
}

void OfferPrimarySelection(const std::string& utf8) {
    Post([utf8] {
        sOwnSelection = utf8;
        QClipboard* clipboard = QGuiApplication::clipboard();
        if (clipboard->supportsSelection())
            clipboard->setText(QString::fromStdString(utf8), QClipboard::Selection);
    });
}

std::string PrimarySelection() {
    std::string result;
    Call([&result] {
        const QClipboard* clipboard = QGuiApplication::clipboard();
        result = clipboard->supportsSelection()
                     ? clipboard->text(QClipboard::Selection).toStdString()
                     : sOwnSelection;
    });
    return result;
}

status_t OpenUrl(const std::string& url) {
    if (Recorded(url))
        return B_OK;
    const status_t status = RunOpener(url);
    return status == B_ENTRY_NOT_FOUND ? OpenByToolkit(url) : status;
}

void OpenPath(const std::string& path) {
    if (!Recorded(path))
        Post([path] {
            QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(path)));
        });
}

void RecordLaunches() {
    std::lock_guard lock(sLaunchLock);
    sRecording = true;
    sLaunches.clear();
}

std::vector<std::string> RecordedLaunches() {
    std::lock_guard lock(sLaunchLock);
    return sLaunches;
}

namespace {

float PixelSize(const QFont& font) {
    const float smallest = 11;
    const QScreen* screen = QGuiApplication::primaryScreen();
    const double dots = screen != nullptr ? screen->logicalDotsPerInchY() : 96;
    const double pixels = font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF() * dots / 72;
    return qMax(smallest, static_cast<float>(qRound(pixels)));
}

} // namespace

void ReadSystemFonts() {
    const QFont plain = QGuiApplication::font();
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    InitSystemFonts(plain, PixelSize(plain), fixed, PixelSize(fixed));
}

void PrepareOffscreen() {
    if (qgetenv("QT_QPA_PLATFORM") != "offscreen")
        return;
    std::string file = (std::filesystem::temp_directory_path() / "screen-XXXXXX").string();
    const int descriptor = mkstemp(file.data());
    if (descriptor < 0)
        return;
    close(descriptor);
    std::ofstream(file) << R"({"screens": [{"name": "screen", "x": 0, "y": 0, "width": 1920,
        "height": 1200, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";
    qputenv("QT_QPA_PLATFORM", QByteArray("offscreen:configfile=") + file.c_str());
    sScreenFile = file;
}

void OffscreenIsPrepared() {
    if (sScreenFile.empty())
        return;
    unlink(sScreenFile.c_str());
    sScreenFile.clear();
    qputenv("QT_QPA_PLATFORM", "offscreen");
}

} // namespace server
