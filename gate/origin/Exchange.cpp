#include "origin/Exchange.h"

#include "origin/Addresses.h"

#include <unistd.h>

#include <algorithm>
#include <charconv>

namespace gate {

namespace {

constexpr size_t kLongestHead = 64 << 10;
constexpr long kBufferSize = 64 << 10;

std::string_view Trimmed(std::string_view text) {
    const size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") + 1 - first);
}

// "HTTP/1.1 404 Not Found" or "HTTP/2 404".
long StatusOf(std::string_view line) {
    const size_t blank = line.find(' ');
    long status = 0;
    if (blank != std::string_view::npos)
        std::from_chars(line.data() + blank + 1, line.data() + line.size(), status);
    return status;
}

} // namespace

Exchange::Exchange(const Settings& settings, const OriginRequest& request, Transfer* transfer,
                   std::function<bool()> mustStop)
    : fSettings(settings), fRequest(request), fTransfer(transfer), fMustStop(std::move(mustStop)),
      fAllowed(settings.allowedAddresses) {}

Exchange::~Exchange() {
    curl_slist_free_all(fHeaders);
    curl_slist_free_all(fConnectTo);
}

std::string Exchange::Run(CURL* handle) {
    _SetUp(handle);
    _SetUpWay(handle);
    _SetUpAnswer(handle);
    const CURLcode code = curl_easy_perform(handle);
    if (fRequest.way)
        _TellWay(handle, code);
    long sent = 0;
    curl_easy_getinfo(handle, CURLINFO_REQUEST_SIZE, &sent);
    if (sent == 0)
        fTransfer->NoteNeverSent();
    return code == CURLE_OK ? std::string() : _FailureText(code);
}

void Exchange::_TellWay(CURL* handle, CURLcode code) const {
    const auto milliseconds = [handle](CURLINFO what) {
        curl_off_t microseconds = 0;
        curl_easy_getinfo(handle, what, &microseconds);
        return microseconds == 0 ? 0 : std::max<long>(1, static_cast<long>(microseconds / 1000));
    };
    Way& way = *fRequest.way;
    way.connectedMilliseconds = milliseconds(CURLINFO_CONNECT_TIME_T);
    way.secureMilliseconds = milliseconds(CURLINFO_APPCONNECT_TIME_T);
    way.totalMilliseconds = milliseconds(CURLINFO_TOTAL_TIME_T);
    if (code != CURLE_OK)
        way.problem = fProblem[0] != '\0' ? fProblem.data() : curl_easy_strerror(code);
    curl_certinfo* certificates = nullptr;
    if (curl_easy_getinfo(handle, CURLINFO_CERTINFO, &certificates) != CURLE_OK ||
        certificates == nullptr || certificates->num_of_certs < 1)
        return;
    for (const curl_slist* line = certificates->certinfo[0]; line != nullptr; line = line->next) {
        const std::string_view text = line->data;
        constexpr std::string_view kNames = "X509v3 Subject Alternative Name:";
        constexpr std::string_view kEnd = "Expire date:";
        if (text.starts_with(kNames))
            way.certificateNames = Trimmed(text.substr(kNames.size()));
        else if (text.starts_with(kEnd))
            way.certificateEnd = Trimmed(text.substr(kEnd.size()));
    }
}

void Exchange::_AddHeader(const std::string& line) {
    fHeaders = curl_slist_append(fHeaders, line.c_str());
}

void Exchange::_SetUp(CURL* handle) {
    const std::string url = std::string(fRequest.family->usesTls ? "https" : "http") + "://" +
                            fRequest.host + fRequest.path;
    curl_easy_setopt(handle, CURLOPT_URL, url.c_str());
    curl_easy_setopt(handle, CURLOPT_PATH_AS_IS, 1L);
    curl_easy_setopt(handle, CURLOPT_USERAGENT, fSettings.userAgent.c_str());
    // What comes compressed though nobody asked is opened all the same.
    curl_easy_setopt(handle, CURLOPT_ACCEPT_ENCODING, fRequest.takesCompressed ? "" : "identity");
    if (!fRequest.takesCompressed)
        _AddHeader("Accept-Encoding:");
    if (fRequest.rangeStart >= 0)
        curl_easy_setopt(handle, CURLOPT_RANGE,
                         (std::to_string(fRequest.rangeStart) + "-").c_str());
    if (fRequest.ifModifiedSince > 0) {
        curl_easy_setopt(handle, CURLOPT_TIMECONDITION, CURL_TIMECOND_IFMODSINCE);
        curl_easy_setopt(handle, CURLOPT_TIMEVALUE_LARGE,
                         static_cast<curl_off_t>(fRequest.ifModifiedSince));
    }
    for (const std::string& line : fRequest.headers)
        _AddHeader(line);
    if (fRequest.isPost) {
        _AddHeader("Expect:");
        // On a connection that was used before, the library would send it twice if that breaks.
        curl_easy_setopt(handle, CURLOPT_FRESH_CONNECT, 1L);
        curl_easy_setopt(handle, CURLOPT_POSTFIELDS, fRequest.body.c_str());
        curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE,
                         static_cast<curl_off_t>(fRequest.body.size()));
    }
    curl_easy_setopt(handle, CURLOPT_HTTPHEADER, fHeaders);
}

void Exchange::_SetUpWay(CURL* handle) {
    curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
    // Who stops does not wait for a look-up of a name, which nothing can stop.
    curl_easy_setopt(handle, CURLOPT_QUICK_EXIT, 1L);
    curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(handle, CURLOPT_FOLLOWLOCATION, 0L);
    curl_easy_setopt(handle, CURLOPT_HTTP_VERSION, CURL_HTTP_VERSION_2TLS);
    curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT, fSettings.connectSeconds);
    curl_easy_setopt(handle, CURLOPT_TIMEOUT_MS, _MillisecondsLeft());
    // The environment's proxies are the desktop's for web browsers; the gate has its own setting.
    curl_easy_setopt(handle, CURLOPT_PROXY, fSettings.outerProxy.c_str());
    _SetUpCertificates(handle);
    if (!fRequest.family->reach.empty()) {
        const std::string& reach = fRequest.family->reach;
        fAllowed.push_back(reach.substr(0, reach.rfind(':')));
        fConnectTo = curl_slist_append(fConnectTo, ("::" + reach).c_str());
        curl_easy_setopt(handle, CURLOPT_CONNECT_TO, fConnectTo);
    }
    if (fSettings.outerProxy.empty()) {
        curl_easy_setopt(handle, CURLOPT_OPENSOCKETFUNCTION, &Exchange::_OnSocket);
        curl_easy_setopt(handle, CURLOPT_OPENSOCKETDATA, this);
    }
}

// With a folder of authorities beside the file the library reads the file anew for each connection,
// which takes ten times as long as all the rest.
void Exchange::_SetUpCertificates(CURL* handle) {
    if (!fSettings.certificates.empty())
        curl_easy_setopt(handle, CURLOPT_CAINFO, fSettings.certificates.c_str());
    char* file = nullptr;
    curl_easy_getinfo(handle, CURLINFO_CAINFO, &file);
    if (!fSettings.certificates.empty() || (file != nullptr && access(file, R_OK) == 0))
        curl_easy_setopt(handle, CURLOPT_CAPATH, nullptr);
}

// Never 0, which would mean no end.
long Exchange::_MillisecondsLeft() const {
    using std::chrono::milliseconds;
    const long most = fSettings.transferSeconds * 1000;
    if (fRequest.endsBy == Deadline())
        return most;
    const auto left = std::chrono::duration_cast<milliseconds>(fRequest.endsBy -
                                                               std::chrono::steady_clock::now());
    return std::clamp<long>(left.count(), 1, most);
}

void Exchange::_SetUpAnswer(CURL* handle) {
    curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, &Exchange::_OnHeader);
    curl_easy_setopt(handle, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &Exchange::_OnBody);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, this);
    curl_easy_setopt(handle, CURLOPT_BUFFERSIZE, kBufferSize);
    curl_easy_setopt(handle, CURLOPT_XFERINFOFUNCTION, &Exchange::_OnProgress);
    curl_easy_setopt(handle, CURLOPT_XFERINFODATA, this);
    curl_easy_setopt(handle, CURLOPT_NOPROGRESS, 0L);
    if (fRequest.way) {
        curl_easy_setopt(handle, CURLOPT_CERTINFO, 1L);
        curl_easy_setopt(handle, CURLOPT_ERRORBUFFER, fProblem.data());
    }
}

// A head may follow on another ("100 Continue"): only the last one counts.
void Exchange::_TakeHeaderLine(std::string_view line) {
    const std::string_view text = Trimmed(line);
    if (text.empty()) {
        if (fHead.status >= 200)
            _FinishHead();
        return;
    }
    const size_t colon = text.find(':');
    if (line.starts_with("HTTP/")) {
        fHead = OriginHead();
        fHead.status = StatusOf(text);
    } else if (colon != std::string_view::npos) {
        fHead.headers.emplace_back(LowerCase(Trimmed(text.substr(0, colon))),
                                   Trimmed(text.substr(colon + 1)));
    }
}

void Exchange::_FinishHead() {
    const std::string* length = fHead.Find("content-length");
    if (length != nullptr && fHead.Find("content-encoding") == nullptr &&
        fHead.Find("transfer-encoding") == nullptr)
        std::from_chars(length->data(), length->data() + length->size(), fHead.length);
    fTransfer->SetHead(fHead);
}

size_t Exchange::_OnHeader(char* bytes, size_t size, size_t count, void* self) {
    Exchange* exchange = static_cast<Exchange*>(self);
    exchange->fHeadSize += size * count;
    exchange->fWasTooLong = exchange->fHeadSize > kLongestHead;
    if (exchange->fWasTooLong)
        return 0;
    exchange->_TakeHeaderLine({bytes, size * count});
    return size * count;
}

size_t Exchange::_OnBody(char* bytes, size_t size, size_t count, void* self) {
    Exchange* exchange = static_cast<Exchange*>(self);
    exchange->fWasTooLong =
        !exchange->fTransfer->Append({bytes, size * count}, exchange->fSettings.mostBytes);
    return exchange->fWasTooLong ? 0 : size * count;
}

// Called whenever the library has taken what was there, and each second.
int Exchange::_OnProgress(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
    const Exchange* exchange = static_cast<Exchange*>(self);
    exchange->fTransfer->Tell();
    return exchange->fMustStop() ? 1 : 0;
}

// Here every look-up and every redirect has been made: what is refused is the address itself.
curl_socket_t Exchange::_OnSocket(void* self, curlsocktype, curl_sockaddr* address) {
    Exchange* exchange = static_cast<Exchange*>(self);
    const bool isKeptAway = IsKeptAway(address->addr, exchange->fAllowed);
    if (const auto& way = exchange->fRequest.way)
        way->addresses.push_back({AddressText(address->addr), isKeptAway});
    if (isKeptAway) {
        exchange->fWasKeptAway = true;
        return CURL_SOCKET_BAD;
    }
    return socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
}

std::string Exchange::_FailureText(CURLcode code) const {
    const std::string& host = fRequest.host;
    if (fWasKeptAway)
        return host + " はこのコンピュータか内部ネットワークのアドレスなので接続しません";
    if (fWasTooLong)
        return host + " の応答が大きすぎます";
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST: return host + " のアドレスが見つかりません";
    case CURLE_COULDNT_CONNECT: return host + " に接続できません";
    case CURLE_PEER_FAILED_VERIFICATION: return host + " の証明書を確認できません";
    case CURLE_SSL_CONNECT_ERROR: return host + " と暗号化通信を始められません";
    case CURLE_OPERATION_TIMEDOUT: return host + " の応答が時間内に終わりません";
    case CURLE_GOT_NOTHING: return host + " から応答がありません";
    case CURLE_PARTIAL_FILE:
    case CURLE_RECV_ERROR: return host + " の応答が途中で切れました";
    case CURLE_ABORTED_BY_CALLBACK: return "中止しました";
    default: return host + " と通信できません (" + curl_easy_strerror(code) + ")";
    }
}

} // namespace gate
