#include "settings/GateSettings.h"
#include "settings/ReadMarks.h"
#include "settings/Section.h"

#include <algorithm>

namespace gate {

namespace {

class SettingsReader {
public:
    SettingsReader(Settings* settings, std::vector<std::string>* remarks)
        : fSettings(settings), fRemarks(remarks) {}

    void Read(const toml::table& file) {
        Section top(file, "");
        top.Table("gate", fRemarks, [this](Section* section) { _ReadGate(section); });
        top.Table("origin", fRemarks, [this](Section* section) { _ReadOrigin(section); });
        top.Table("portal", fRemarks, [this](Section* section) { _ReadPortal(section); });
        top.Table("page", fRemarks,
                  [this](Section* section) { ReadPageMarks(section, &fSettings->pageMarks); });
        top.Table("answer", fRemarks, [this](Section* section) {
            ReadAnswerMarks(section, fRemarks, &fSettings->answerMarks);
        });
        top.Table("form", fRemarks,
                  [this](Section* section) { ReadForms(section, fRemarks, &fSettings->forms); });
        if (const toml::node* families = top.Take("family"))
            top.ForEach(*families, "family", [this](const toml::node& node) { _ReadFamily(node); });
        for (Family& family : fSettings->families)
            family.form = fSettings->forms[family.Post()];
        top.Remark(fRemarks);
    }

private:
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
        section->Texts("challenge_headers", &fSettings->challengeHeaders);
        size_t megabytes = fSettings->mostBytes >> 20;
        section->Whole("most_megabytes", 1, 64, &megabytes);
        fSettings->mostBytes = megabytes << 20;
    }

    void _ReadPortal(Section* section) {
        section->Texts("hosts", &fSettings->portalHosts);
        section->Texts("menus", &fSettings->menus);
        section->Texts("other_hosts", &fSettings->menuMarks.otherHosts);
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
        Section section(TableOf(node, "[family]"), "[family]");
        std::string name;
        section.Text("name", &name);
        if (name.empty())
            Refuse(node, "a family needs a name");
        Family* family = _FindFamily(name);
        _ReadKind(&section, family);
        if (const toml::node* post = section.Take("post"))
            family->post = PostKindOf(*post);
        if (const toml::node* charset = section.Take("charset"))
            family->charset = CharsetOf(*charset);
        section.Texts("wanted_cookies", &family->wantedCookies);
        section.Texts("dropped_cookies", &family->droppedCookies);
        section.Texts("dropped_errors", &family->droppedErrors);
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
            const std::string kind = TextOf(*node);
            if (kind != "dat" && kind != "rawmode" && kind != "offlaw")
                Refuse(*node, "kind is \"dat\", \"rawmode\" or \"offlaw\"");
            family->kind = kind == "dat"       ? FamilyKind::kDat
                           : kind == "rawmode" ? FamilyKind::kRawmode
                                               : FamilyKind::kOfflaw;
        }
        if (const toml::node* node = section->Take("scheme")) {
            const std::string scheme = TextOf(*node);
            if (scheme != "https" && scheme != "http")
                Refuse(*node, "scheme is \"https\" or \"http\"");
            family->usesTls = scheme == "https";
        }
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
            family->renamed.push_back({LowerCase(old.str()), LowerCase(TextOf(present))});
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
            family->archives.push_back({TextOf(dat != nullptr ? *dat : *page), page != nullptr});
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
        *error = LineOf(file.error().source()) + ": " + std::string(file.error().description());
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
