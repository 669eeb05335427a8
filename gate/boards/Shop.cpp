#include "boards/Shop.h"

#include <algorithm>

namespace gate {

Deadline FirstPart(Deadline deadline, size_t count) {
    const Deadline now = std::chrono::steady_clock::now();
    return now + (deadline - now) / static_cast<long>(count);
}

std::string StatusText(const std::string& host, long status) {
    const std::string what = host + " の応答 " + std::to_string(status) + ": ";
    switch (status) {
    case 401: return what + "認証が必要です";
    case 403: return what + "アクセスが許可されていません";
    case 404: return what + "見つかりません";
    case 429: return what + "アクセスが多すぎます。しばらく待ってください";
    case 503: return what + "サーバーが混雑しています";
    default: return what + (status >= 500 ? "サーバーの異常です" : "扱えない応答です");
    }
}

std::string ChallengeText(const std::string& host) {
    return host + " が人間かどうかの確認を求めています。ブラウザで開いてみてください";
}

bool IsChallenge(const Settings& settings, const OriginHead& head, const Transfer& transfer,
                 Deadline deadline) {
    if (std::ranges::any_of(settings.challengeHeaders,
                            [&](const std::string& name) { return head.Find(name) != nullptr; }))
        return true;
    if (head.status != 403 && head.status != 503)
        return false;
    transfer.WaitForEnd(deadline);
    const std::string body = transfer.Body();
    return std::any_of(
        settings.challengeMarks.begin(), settings.challengeMarks.end(),
        [&](const std::string& mark) { return body.find(mark) != std::string::npos; });
}

} // namespace gate
