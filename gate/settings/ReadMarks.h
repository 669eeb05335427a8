#pragma once

#include "settings/GateSettings.h"
#include "settings/Section.h"

namespace gate {

// The tables that tell what servers' pages and forms look like. Each changes what it names. They
// throw WrongValue.
void ReadPageMarks(Section* section, PageMarks* marks);
void ReadAnswerMarks(Section* section, std::vector<std::string>* remarks, AnswerMarks* marks);
void ReadForms(Section* section, std::vector<std::string>* remarks,
               std::map<PostKind, FormShape>* forms);

// "bbs", "utf8", "rawmode" or "offlaw"; "cp932", "euc-jp" or "utf-8".
PostKind PostKindOf(const toml::node& node);
Charset CharsetOf(const toml::node& node);

} // namespace gate
