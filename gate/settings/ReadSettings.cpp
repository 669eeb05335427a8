#include "settings/GateSettings.h"

#include <algorithm>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>

#define TOML_EXCEPTIONS 0
#include <toml++/toml.h>

namespace gate {

namespace {

// What stands at a key is not what the key takes.
struct WrongValue : std::runtime_error {
    using std::runtime_error::runtime_error;
};

std::string Place(const toml::source_region& source) {
    std::ostringstream text;
    text << (source.path ? *source.path : std::string()) << ":" << source.begin.line;
    return text.str();
}

[[noreturn]] void Refuse(const toml::node& node, const std::string& why) {
    throw WrongValue(Place(node.source()) + ": " + why);
}

// Takes the keys of one table; what is left in the end is not known.
class Section {
public:
    Section(const toml::table& table, std::string name) : fTable(table), fName(std::move(name)) {}

    const toml::node* Take(std::string_view key) {
        fTaken.emplace_back(key);
        return fTable.get(key);
    }
    void Text(std::string_view key, std::string* value) {
        if (const toml::node* node = Take(key))
            *value = TextOf(*node);
    }
    template <typename Number>
    void Whole(std::string_view key, int64_t least, int64_t most, Number* value) {
        const toml::node* node = Take(key);
        if (node == nullptr)
            return;
        const std::optional<int64_t> number = node->value_exact<int64_t>();
        if (!number || *number < least || *number > most)
            Refuse(*node, std::string(key) + " takes a number from " + std::to_string(least) +
                              " to " + std::to_string(most));
        *value = static_cast<Number>(*number);
    }
    void Texts(std::string_view key, std::vector<std::string>* values) {
        const toml::node* node = Take(key);
        if (node == nullptr)
            return;
        values->clear();
        ForEach(*node, key, [&](const toml::node& item) { values->push_back(TextOf(item)); });
    }
    template <typename Call>
    void ForEach(const toml::node& node, std::string_view key, Call call) {
        const toml::array* items = node.as_array();
        if (items == nullptr)
            Refuse(node, std::string(key) + " takes a list");
        for (const toml::node& item : *items)
            call(item);
    }
    void Remark(std::vector<std::string>* remarks) const {
        for (const auto& [key, node] : fTable) {
            if (std::find(fTaken.begin(), fTaken.end(), key.str()) == fTaken.end())
                remarks->push_back(Place(node.source()) + ": \"" + std::string(key.str()) +
                                   "\" is no key of " + fName);
        }
    }

    static std::string TextOf(const toml::node& node) {
        const std::optional<std::string> text = node.value_exact<std::string>();
        if (!text)
            Refuse(node, "a text in quotes is wanted here");
        return *text;
    }

private:
    const toml::table& fTable;
    const std::string fName;
    std::vector<std::string> fTaken;
};

class SettingsReader {
public:
    SettingsReader(Settings* settings, std::vector<std::string>* remarks)
        : fSettings(settings), fRemarks(remarks) {}

    void Read(const toml::table& file) {
        Section top(file, "the file");
        _Table(&top, "gate", [this](Section* section) { _ReadGate(section); });
        _Table(&top, "origin", [this](Section* section) { _ReadOrigin(section); });
        _Table(&top, "portal", [this](Section* section) { _ReadPortal(section); });
        if (const toml::node* families = top.Take("family"))
            top.ForEach(*families, "family", [this](const toml::node& node) { _ReadFamily(node); });
        top.Remark(fRemarks);
    }

private:
    template <typename Call>
    void _Table(Section* top, std::string_view name, Call call) {
        const toml::node* node = top->Take(name);
        if (node == nullptr)
            return;
        const toml::table* table = node->as_table();
        if (table == nullptr)
            Refuse(*node, "[" + std::string(name) + "] is wanted here");
        Section section(*table, "[" + std::string(name) + "]");
        call(&section);
        section.Remark(fRemarks);
    }

    void _ReadGate(Section* section) {
        section->Whole("port", 1, 65535, &fSettings->port);
        section->Whole("connections", 1, 1024, &fSettings->connections);
        section->Whole("answer_seconds", 1, 25, &fSettings->answerSeconds);
    }

    void _ReadOrigin(Section* section) {
        section->Text("user_agent", &fSettings->userAgent);
        section->Text("certificates", &fSettings->certificates);
        section->Text("proxy", &fSettings->outerProxy);
        section->Texts("allowed_addresses", &fSettings->allowedAddresses);
        section->Whole("connect_seconds", 1, 60, &fSettings->connectSeconds);
        section->Whole("transfer_seconds", 1, 600, &fSettings->transferSeconds);
        section->Whole("list_seconds", 0, 3600, &fSettings->listSeconds);
        section->Texts("challenge_marks", &fSettings->challengeMarks);
        size_t megabytes = fSettings->mostBytes >> 20;
        section->Whole("most_megabytes", 1, 64, &megabytes);
        fSettings->mostBytes = megabytes << 20;
    }

    void _ReadPortal(Section* section) {
        section->Texts("hosts", &fSettings->portalHosts);
        section->Texts("menus", &fSettings->menus);
    }

    Family* _FindFamily(const std::string& name) {
        for (Family& family : fSettings->families) {
            if (family.name == name)
                return &family;
        }
        fSettings->families.emplace_back();
        fSettings->families.back().name = name;
        return &fSettings->families.back();
    }

    void _ReadFamily(const toml::node& node) {
        const toml::table* table = node.as_table();
        if (table == nullptr)
            Refuse(node, "[[family]] is wanted here");
        Section section(*table, "[[family]]");
        std::string name;
        section.Text("name", &name);
        if (name.empty())
            Refuse(node, "a family needs a name");
        Family* family = _FindFamily(name);
        _ReadKind(&section, family);
        _ReadPost(&section, family);
        section.Texts("wanted_cookies", &family->wantedCookies);
        section.Texts("hosts", &family->hosts);
        section.Text("reach", &family->reach);
        section.Text("whole_path", &family->wholePath);
        section.Text("rest_path", &family->restPath);
        section.Whole("pause_milliseconds", 0, 60000, &family->pauseMilliseconds);
        _ReadRenamed(&section, family);
        _ReadArchives(&section, family);
        if (const toml::node* statuses = section.Take("dropped_statuses")) {
            family->droppedStatuses.clear();
            section.ForEach(*statuses, "dropped_statuses", [&](const toml::node& item) {
                family->droppedStatuses.push_back(item.value<long>().value_or(0));
            });
        }
        section.Remark(fRemarks);
    }

    static void _ReadKind(Section* section, Family* family) {
        if (const toml::node* node = section->Take("kind")) {
            const std::string kind = Section::TextOf(*node);
            if (kind != "dat" && kind != "rawmode" && kind != "offlaw")
                Refuse(*node, "kind is \"dat\", \"rawmode\" or \"offlaw\"");
            family->kind = kind == "dat"       ? FamilyKind::kDat
                           : kind == "rawmode" ? FamilyKind::kRawmode
                                               : FamilyKind::kOfflaw;
        }
        if (const toml::node* node = section->Take("scheme")) {
            const std::string scheme = Section::TextOf(*node);
            if (scheme != "https" && scheme != "http")
                Refuse(*node, "scheme is \"https\" or \"http\"");
            family->usesTls = scheme == "https";
        }
    }

    static void _ReadPost(Section* section, Family* family) {
        const toml::node* node = section->Take("post");
        if (node == nullptr)
            return;
        static const std::map<std::string, PostKind> kKinds = {{"bbs", PostKind::kBbs},
                                                               {"utf8", PostKind::kUtf8},
                                                               {"rawmode", PostKind::kRawmode},
                                                               {"offlaw", PostKind::kOfflaw}};
        const auto known = kKinds.find(Section::TextOf(*node));
        if (known == kKinds.end())
            Refuse(*node, "post is \"bbs\", \"utf8\", \"rawmode\" or \"offlaw\"");
        family->post = known->second;
    }

    static void _ReadRenamed(Section* section, Family* family) {
        const toml::node* node = section->Take("renamed");
        if (node == nullptr)
            return;
        const toml::table* names = node->as_table();
        if (names == nullptr)
            Refuse(*node, "renamed takes { \"old name\" = \"present name\" }");
        family->renamed.clear();
        for (const auto& [old, present] : *names)
            family->renamed.push_back({LowerCase(old.str()), LowerCase(Section::TextOf(present))});
    }

    static void _ReadArchives(Section* section, Family* family) {
        const toml::node* node = section->Take("archives");
        if (node == nullptr)
            return;
        family->archives.clear();
        section->ForEach(*node, "archives", [&](const toml::node& item) {
            const toml::table* place = item.as_table();
            const toml::node* dat = place != nullptr ? place->get("dat") : nullptr;
            const toml::node* page = place != nullptr ? place->get("page") : nullptr;
            if ((dat == nullptr) == (page == nullptr))
                Refuse(item, "archives takes { dat = \"…\" } and { page = \"…\" }");
            family->archives.push_back(
                {Section::TextOf(dat != nullptr ? *dat : *page), page != nullptr});
        });
    }

    Settings* const fSettings;
    std::vector<std::string>* const fRemarks;
};

} // namespace

bool ReadSettings(const std::string& path, Settings* settings, std::string* error,
                  std::vector<std::string>* remarks) {
    const toml::parse_result file = toml::parse_file(path);
    if (!file) {
        *error = Place(file.error().source()) + ": " + std::string(file.error().description());
        return false;
    }
    try {
        Settings changed = *settings;
        SettingsReader(&changed, remarks).Read(file.table());
        changed.files.push_back(path);
        *settings = std::move(changed);
    } catch (const WrongValue& wrong) {
        *error = wrong.what();
        return false;
    }
    return true;
}

} // namespace gate
