#include "server/DemoServer.h"

#include <ctime>

#include <httplib.h>

#include <parsedate.h>

#include "server/Answers.h"
#include "server/Pages.h"
#include "server/Posting.h"
#include "server/Text.h"

namespace {

// The path of a request without the host of the absolute form, and without the query.
std::string pathOf(const std::string& target) {
    std::string path = target.substr(0, target.find('?'));
    const std::string kScheme = "http://";
    if (!path.starts_with(kScheme))
        return path;
    size_t slash = path.find('/', kScheme.size());
    return slash == std::string::npos ? "/" : path.substr(slash);
}

std::string queryOf(const std::string& target) {
    size_t mark = target.find('?');
    return mark == std::string::npos ? "" : target.substr(mark + 1);
}

bool cutEnd(std::string* text, const std::string& end) {
    if (!text->ends_with(end))
        return false;
    text->resize(text->size() - end.size());
    return true;
}

} // namespace

// Noted before the answer goes out, so that who has the answer finds it in the log. The mutex is
// held.
template <class HttpRequest>
void DemoServer::_Log(const HttpRequest& request, int status, size_t bytes) {
    const std::string path = pathOf(request.target);
    fRequests.push_back({request.method, path, request.get_header_value("Range"),
                         request.get_header_value("If-Modified-Since"), status, bytes,
                         fUnderWay[path]});
}

void DemoServer::_BeginRequest(const std::string& path) {
    std::lock_guard guard(fMutex);
    fUnderWay[path]++;
}

void DemoServer::_EndRequest(const std::string& path) {
    std::lock_guard guard(fMutex);
    fUnderWay[path]--;
}

struct DemoServer::Http {
    explicit Http(DemoServer& demo) : owner(demo) {
        // One request a connection: nobody waits for an idle one when the server stops.
        server.set_keep_alive_max_count(1);
        // Not the library's SO_REUSEPORT: two servers on one port would share its connections.
        server.set_socket_options([](int socket) {
            int yes = 1;
            setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof(yes));
        });
        server.set_pre_routing_handler([this](const httplib::Request& request, httplib::Response&) {
            owner._BeginRequest(pathOf(request.target));
            // Ranges are applied here, not by the library: it would make a 304 with a range a 416.
            const_cast<httplib::Request&>(request).ranges.clear();
            return httplib::Server::HandlerResponse::Unhandled;
        });
        // Called when the answer has gone out.
        server.set_logger([this](const httplib::Request& request, const httplib::Response&) {
            owner._EndRequest(pathOf(request.target));
        });
        server.Get(".*", [this](const httplib::Request& request, httplib::Response& response) {
            Get(request, response);
        });
        // The body is read as it comes: as a form it would be limited to 8 KB.
        server.Post(".*", [this](const httplib::Request& request, httplib::Response& response,
                                 const httplib::ContentReader& reader) {
            std::string body;
            reader([&](const char* bytes, size_t size) {
                body.append(bytes, size);
                return body.size() < 1024 * 1024;
            });
            Post(request, body, response);
        });
    }

    void Get(const httplib::Request& request, httplib::Response& response);
    void Post(const httplib::Request& request, const std::string& body,
              httplib::Response& response);

    DemoServer& owner;
    httplib::Server server;
};

void DemoServer::Http::Get(const httplib::Request& request, httplib::Response& response) {
    Question question = {pathOf(request.target), queryOf(request.target),
                         request.get_header_value("Range"),
                         parsedate(request.get_header_value("If-Modified-Since").c_str(), -1)};
    std::unique_lock lock(owner.fMutex);
    Answer answer = answerTo(owner.fBoards, question);
    while (answer.stalls && !owner.fIsEnding) {
        owner.fStalled++;
        owner.fFateChanged.wait(lock);
        owner.fStalled--;
        answer = answerTo(owner.fBoards, question);
    }
    response.status = answer.status;
    if (answer.modified > 0)
        response.set_header("Last-Modified", httpDate(answer.modified));
    if (!answer.contentRange.empty())
        response.set_header("Content-Range", answer.contentRange);
    if (!answer.location.empty())
        response.set_header("Location", answer.location);
    owner._Log(request, answer.status, answer.body.size());
    if (answer.status != 304)
        response.set_content(answer.body, answer.type.c_str());
}

void DemoServer::Http::Post(const httplib::Request& request, const std::string& body,
                            httplib::Response& response) {
    std::string path = pathOf(request.target);
    bool isBbsCgi = path == "/test/bbs.cgi";
    if (!isBbsCgi && !cutEnd(&path, "/bbs/write.cgi")) {
        response.status = 404;
        return;
    }
    PostRequest post;
    post.kind = isBbsCgi ? BoardKind::kDat : BoardKind::kCgi;
    post.prefix = isBbsCgi || path.empty() ? "" : path.substr(1);
    post.referer = request.get_header_value("Referer");
    post.form = body;
    std::unique_lock lock(owner.fMutex);
    while (owner.fPostStyle == PostStyle::kStalled && !owner.fIsEnding) {
        owner.fStalled++;
        owner.fFateChanged.wait(lock);
        owner.fStalled--;
    }
    std::string page = styledPage(takePost(owner.fBoards, post, time(nullptr)), owner.fPostStyle);
    owner._Log(request, 200, page.size());
    response.set_content(page, "text/html");
}

DemoServer::DemoServer() = default;

DemoServer::~DemoServer() {
    Stop();
}

bool DemoServer::LoadBoards(const std::string& folder, std::string* error) {
    std::lock_guard guard(fMutex);
    return fBoards.Load(folder, error);
}

void DemoServer::AddBoard(const std::string& folder, int threads, BoardKind kind) {
    std::lock_guard guard(fMutex);
    fBoards.Categories().push_back({toCp932("たくさん"), "many.example", {}});
    Board& board = fBoards.Categories().back().boards.emplace_back(folder, folder, kind);
    constexpr int kFirstKey = 1012345678;
    for (int i = 0; i < threads; i++) {
        std::string number = std::to_string(i + 1);
        Thread& thread = board.AddThread(std::to_string(kFirstKey + i),
                                         toCp932("スレッド その" + number), kFirstKey + i);
        board.AddPost(thread, {"", "", toCp932("02/01/30 08:07"), toCp932("最初の書きこみ")},
                      kFirstKey + i);
    }
}

std::vector<std::string> DemoServer::Keys(const std::string& board) const {
    std::lock_guard guard(fMutex);
    std::vector<std::string> keys;
    if (Board* found = const_cast<BoardSet&>(fBoards).Find(board)) {
        for (const Thread& thread : found->Threads())
            keys.push_back(thread.key);
    }
    return keys;
}

Thread* DemoServer::_Find(const std::string& board, const std::string& key) const {
    Board* found = const_cast<BoardSet&>(fBoards).Find(board);
    return found ? found->Find(key) : nullptr;
}

bool DemoServer::Grow(const std::string& board, const std::string& key, int posts) {
    std::lock_guard guard(fMutex);
    Board* found = fBoards.Find(board);
    Thread* thread = _Find(board, key);
    for (int i = 0; thread && i < posts; i++) {
        std::string text = "新しい書きこみ " + std::to_string(thread->posts + 1) + "\n>>1 さんへ。";
        time_t now = time(nullptr);
        found->AddPost(*thread, {"", "sage", toCp932(postDate(now)), toCp932(text)}, now);
    }
    return thread != nullptr;
}

bool DemoServer::SetFate(const std::string& board, const std::string& key, Fate fate) {
    std::lock_guard guard(fMutex);
    Thread* thread = _Find(board, key);
    if (thread)
        thread->fate = fate;
    fFateChanged.notify_all();
    return thread != nullptr;
}

void DemoServer::SetPostStyle(PostStyle style) {
    std::lock_guard guard(fMutex);
    fPostStyle = style;
    fFateChanged.notify_all();
}

int DemoServer::CountStalled() const {
    std::lock_guard guard(fMutex);
    return fStalled;
}

std::string DemoServer::Dat(const std::string& board, const std::string& key) const {
    std::lock_guard guard(fMutex);
    const Thread* thread = _Find(board, key);
    return thread ? thread->dat : "";
}

std::string DemoServer::Menu() const {
    std::lock_guard guard(fMutex);
    return menuPage(fBoards);
}

bool DemoServer::Start(int port) {
    Stop();
    fHttp = std::make_unique<Http>(*this);
    const char* const kLoopback = "127.0.0.1";
    if (port == 0)
        fPort = fHttp->server.bind_to_any_port(kLoopback);
    else
        fPort = fHttp->server.bind_to_port(kLoopback, port) ? port : -1;
    if (fPort <= 0) {
        fHttp.reset();
        return false;
    }
    fThread = std::thread([this] { fHttp->server.listen_after_bind(); });
    // The library forgets a stop that comes before it runs.
    while (!fHttp->server.is_running())
        std::this_thread::yield();
    return true;
}

void DemoServer::Stop() {
    if (!fHttp)
        return;
    {
        std::lock_guard guard(fMutex);
        fIsEnding = true;
        fFateChanged.notify_all();
    }
    fHttp->server.stop();
    fThread.join();
    fIsEnding = false;
    fHttp.reset();
}

std::vector<DemoServer::Request> DemoServer::Requests() const {
    std::lock_guard guard(fMutex);
    return fRequests;
}

size_t DemoServer::CountRequests(const std::string& path) const {
    std::lock_guard guard(fMutex);
    size_t count = 0;
    for (const Request& request : fRequests)
        count += request.path == path;
    return count;
}

size_t DemoServer::CountBytes(const std::string& path) const {
    std::lock_guard guard(fMutex);
    size_t bytes = 0;
    for (const Request& request : fRequests)
        bytes += request.path == path ? request.bytes : 0;
    return bytes;
}

void DemoServer::ForgetRequests() {
    std::lock_guard guard(fMutex);
    fRequests.clear();
}
