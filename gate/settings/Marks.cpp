#include "settings/Marks.h"

namespace gate {

namespace {

constexpr const char* kBbsCgi = "{folder}/test/bbs.cgi";
constexpr const char* kReadCgi = "{folder}/test/read.cgi/{name}/{key}/";
constexpr const char* kOtherReadCgi = "/bbs/read.cgi/{board}/{key}/";

} // namespace

FormShape DefaultShape(PostKind kind) {
    switch (kind) {
    case PostKind::kBbs:
        return {kBbsCgi,
                kReadCgi,
                {{"FROM", "$name"},
                 {"mail", "$mail"},
                 {"MESSAGE", "$message"},
                 {"bbs", "$bbs"},
                 {"key", "$key"},
                 {"time", "$time"},
                 {"submit", "書き込む"},
                 {"oekaki_thread1", ""}}};
    case PostKind::kUtf8:
        return {kBbsCgi,
                kReadCgi,
                {{"FROM", "$name"},
                 {"mail", "$mail"},
                 {"MESSAGE", "$message"},
                 {"bbs", "$bbs"},
                 {"key", "$key"},
                 {"time", "$time"},
                 {"submit", "書"}},
                Charset::kUtf8};
    case PostKind::kRawmode:
        return {"/bbs/write.cgi/{board}/{key}/",
                kOtherReadCgi,
                {{"DIR", "$dir"},
                 {"BBS", "$bbs"},
                 {"KEY", "$key"},
                 {"TIME", "$time"},
                 {"NAME", "$name"},
                 {"MAIL", "$mail"},
                 {"MESSAGE", "$message"},
                 {"submit", "書き込む"}},
                Charset::kEucJp};
    case PostKind::kOfflaw: break;
    }
    return {"/bbs/write.cgi",
            kOtherReadCgi,
            {{"BBS", "$bbs"},
             {"KEY", "$key"},
             {"TIME", "$time"},
             {"NAME", "$name"},
             {"MAIL", "$mail"},
             {"MESSAGE", "$message"},
             {"submit", "書き込む"}}};
}

std::map<PostKind, FormShape> DefaultShapes() {
    std::map<PostKind, FormShape> shapes;
    for (const PostKind kind :
         {PostKind::kBbs, PostKind::kUtf8, PostKind::kRawmode, PostKind::kOfflaw})
        shapes[kind] = DefaultShape(kind);
    return shapes;
}

} // namespace gate
