#include "today/TodayServer.h"

#include "server/Text.h"
#include "today/Certificates.h"
#include "today/Families.h"

#include <httplib.h>

#include <algorithm>

namespace {

constexpr size_t kMostBytes = 1024 * 1024;

const std::vector<std::string> kHosts = {"today.example", "*.today.example", "rooms.example",
                                         "town.example"};

std::string lowerHost(std::string host) {
    host = host.substr(0, host.find(':'));
    std::transform(host.begin(), host.end(), host.begin(),
                   [](unsigned char c) { return static_cast<char>(tolower(c)); });
    return host;
}

today::Question questionOf(const httplib::Request& request, std::string body) {
    const size_t mark = request.target.find('?');
    today::Question question;
    question.method = request.method;
    question.host = lowerHost(request.get_header_value("Host"));
    question.path = request.target.substr(0, mark);
    question.query = mark == std::string::npos ? "" : request.target.substr(mark + 1);
    question.range = request.get_header_value("Range");
    question.modifiedSince = request.get_header_value("If-Modified-Since");
    question.noneMatch = request.get_header_value("If-None-Match");
    question.cookie = request.get_header_value("Cookie");
    question.referer = request.get_header_value("Referer");
    question.userAgent = request.get_header_value("User-Agent");
    question.type = request.get_header_value("Content-Type");
    question.body = std::move(body);
    return question;
}

} // namespace

struct TodayServer::Http {
    Http(TodayServer& today, const today::Certificates& certificates)
        : owner(today), server(certificates.Certificate(), certificates.Key()) {
        // One request a connection: nobody waits for an idle one when the server stops.
        server.set_keep_alive_max_count(1);
        server.set_socket_options([](int socket) {
            int yes = 1;
            setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof(yes));
        });
        // Ranges are applied here, not by the library.
        server.set_pre_routing_handler([](const httplib::Request& request, httplib::Response&) {
            const_cast<httplib::Request&>(request).ranges.clear();
            return httplib::Server::HandlerResponse::Unhandled;
        });
        server.Get(".*", [this](const httplib::Request& request, httplib::Response& response) {
            Answer(questionOf(request, ""), response);
        });
        server.Post(".*", [this](const httplib::Request& request, httplib::Response& response,
                                 const httplib::ContentReader& reader) {
            std::string body;
            reader([&](const char* bytes, size_t size) {
                body.append(bytes, size);
                return body.size() < kMostBytes;
            });
            Answer(questionOf(request, std::move(body)), response);
        });
    }

    void Answer(const today::Question& question, httplib::Response& response) {
        std::lock_guard lock(owner.fMutex);
        const today::Answer answer = today::answerTo(owner.fWorld, question, time(nullptr));
        response.status = answer.status;
        for (const auto& [name, value] : answer.headers)
            response.set_header(name, value);
        owner.fRequests.push_back({question, answer.status, answer.body.size()});
        if (answer.status != 304)
            response.set_content(answer.body, answer.type);
    }

    TodayServer& owner;
    httplib::SSLServer server;
};

TodayServer::TodayServer() = default;

TodayServer::~TodayServer() {
    Stop();
}

bool TodayServer::LoadBoards(const std::string& folder, std::string* error) {
    std::lock_guard lock(fMutex);
    return fWorld.boards.Load(folder, error);
}

bool TodayServer::Start(const std::string& folder, std::string* error, int port) {
    today::Certificates certificates;
    fAuthority = folder + "/authority.pem";
    if (!certificates.Make(kHosts) || !certificates.WriteAuthority(fAuthority)) {
        *error = fAuthority + ": the certificates can't be made";
        return false;
    }
    fHttp = std::make_unique<Http>(*this, certificates);
    fPort = port == 0 ? fHttp->server.bind_to_any_port("127.0.0.1") : port;
    if (!fHttp->server.is_valid() || fPort <= 0 ||
        (port != 0 && !fHttp->server.bind_to_port("127.0.0.1", port))) {
        *error = "port " + std::to_string(port) + " is not free";
        return false;
    }
    fThread = std::thread([this] { fHttp->server.listen_after_bind(); });
    // The library forgets a stop that comes before it runs.
    while (!fHttp->server.is_running())
        std::this_thread::yield();
    return true;
}

void TodayServer::Stop() {
    if (fThread.joinable()) {
        fHttp->server.stop();
        fThread.join();
    }
    fHttp.reset();
}

std::string TodayServer::GateSettings(int plainPort) const {
    const std::string reach = "reach = \"127.0.0.1:" + std::to_string(fPort) + "\"\n";
    const bool isAlone = plainPort == 0;
    return "[origin]\ncertificates = \"" + fAuthority +
           "\"\nallowed_addresses = [\"127.0.0.1\"]\nlist_seconds = 0\n\n"
           "[portal]\nhosts = [\"portal.itamori.example\", \"menu.today.example\"]\nmenus = [" +
           (isAlone ? "" : "\"http://menu.plain.example/newbbsmenu.html\", ") +
           "\"https://menu.today.example/bbsmenu.json\"]\n\n" +
           (isAlone ? ""
                    : "[[family]]\nname = \"plain\"\nkind = \"dat\"\nscheme = \"http\"\n"
                      "hosts = [\"*.plain.example\"]\nreach = \"127.0.0.1:" +
                          std::to_string(plainPort) + "\"\n\n") +
           "[[family]]\nname = \"today\"\nkind = \"dat\"\n"
           "hosts = [\"today.example\", \"*.today.example\"]\n"
           "renamed = { \"yesterday.example\" = \"today.example\" }\n"
           "archives = [\n"
           "    { dat = \"https://{host}/{board}/oyster/{key4}/{key}.dat\" },\n"
           "    { page = \"https://{host}/test/read.cgi/{board}/{key}/1-\" },\n"
           "    { page = \"https://kako.today.example/test/read.cgi/{board}/{key}/1-\" },\n]\n" +
           reach +
           "\n[[family]]\nname = \"rooms\"\nkind = \"rawmode\"\nhosts = [\"rooms.example\"]\n"
           "whole_path = \"/bbs/rawmode.cgi/{board}/{key}/\"\n"
           "rest_path = \"/bbs/rawmode.cgi/{board}/{key}/{first}-n\"\n"
           "archives = [{ page = \"https://{host}/bbs/read_archive.cgi/{board}/{key}/\" }]\n" +
           reach +
           "\n[[family]]\nname = \"town\"\nkind = \"offlaw\"\nhosts = [\"town.example\"]\n"
           "whole_path = \"/bbs/offlaw.cgi/2/{board}/{key}/\"\n"
           "rest_path = \"/bbs/offlaw.cgi/2/{board}/{key}/{first}-\"\n"
           "archives = []\n" +
           reach;
}

std::vector<std::string> TodayServer::Keys(const std::string& board) const {
    std::lock_guard lock(fMutex);
    std::vector<std::string> keys;
    if (const Board* found = fWorld.boards.Find(board)) {
        for (const Thread& thread : found->Threads())
            keys.push_back(thread.key);
    }
    return keys;
}

std::string TodayServer::Dat(const std::string& board, const std::string& key) const {
    std::lock_guard lock(fMutex);
    const Thread* thread = fWorld.Find(board, key);
    return thread != nullptr ? thread->dat : "";
}

bool TodayServer::Grow(const std::string& board, const std::string& key, int posts) {
    std::lock_guard lock(fMutex);
    Board* found = fWorld.boards.Find(board);
    Thread* thread = found != nullptr ? found->Find(key) : nullptr;
    for (int i = 0; thread != nullptr && i < posts; i++) {
        const std::string text =
            std::to_string(thread->posts + 1) + " 番目です。https://x.example/";
        const std::string date = postDate(time(nullptr)) + " ID:grown" + std::to_string(i);
        found->AddPost(*thread, {"", "sage", toCp932(date), toCp932(text)}, time(nullptr));
    }
    return thread != nullptr;
}

bool TodayServer::Delete(const std::string& board, const std::string& key, int number) {
    std::lock_guard lock(fMutex);
    Thread* thread = fWorld.Find(board, key);
    if (thread == nullptr || number < 1 || number > thread->posts)
        return false;
    size_t start = 0;
    for (int i = 1; i < number; i++)
        start = thread->dat.find('\n', start) + 1;
    const size_t end = thread->dat.find('\n', start) + 1;
    const std::string line = today::deletedLine(number == 1 ? thread->title : "");
    thread->dat.replace(start, end - start, line);
    thread->modified = std::max(time(nullptr), thread->modified + 1);
    return true;
}

bool TodayServer::Drop(const std::string& board, const std::string& key, const today::Fall& fall) {
    std::lock_guard lock(fMutex);
    if (fWorld.Find(board, key) == nullptr)
        return false;
    fWorld.falls[key] = fall;
    return true;
}

void TodayServer::ExpireTickets() {
    std::lock_guard lock(fMutex);
    fWorld.tickets.overdue.merge(fWorld.tickets.good);
    fWorld.tickets.good.clear();
}

void TodayServer::SetPostError(const std::string& code, const std::string& text) {
    std::lock_guard lock(fMutex);
    fWorld.errorCode = code;
    fWorld.errorText = text;
}

std::vector<TodayServer::Request> TodayServer::Requests() const {
    std::lock_guard lock(fMutex);
    return fRequests;
}

void TodayServer::ForgetRequests() {
    std::lock_guard lock(fMutex);
    fRequests.clear();
}
