#include "engine/describe.h"

#include <cctype>
#include <sstream>
#include <vector>

#include "platform/text.h"

namespace engine {
namespace {

std::string utf8(const wchar_t* text) { return text ? platform::toUtf8(text) : std::string(); }

std::string xmlEscaped(const std::string& text) {
  std::string out;
  for (char c : text) {
    switch (c) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '"': out += "&quot;"; break;
      default: out += c;
    }
  }
  return out;
}

const char* kindText(FunctionKind kind) {
  switch (kind) {
    case FunctionKind::Error: return "success/error";
    case FunctionKind::Bool: return "true/false";
    default: return "plain";
  }
}

bool takesData(const Tag& tag) {
  for (const Parameter& p : tag.parameters())
    if (std::wstring_view(p.name) == L"data") return true;
  return false;
}

// The tags of each family, in the order the families began.
std::vector<std::vector<const Tag*>> byFamily(const FunctionRegistry& registry) {
  const auto& families = registry.families();
  std::vector<std::vector<const Tag*>> groups(families.size() + 1);
  for (const Tag* tag : registry.tags()) {
    size_t i = 0;
    while (i < families.size() && families[i] != tag->family) ++i;
    groups[i].push_back(tag);
  }
  return groups;
}

// --- The schema ---

void schemaAttribute(std::ostream& out, const Parameter& p) {
  const bool required = p.need != Need::Optional;
  out << "    <xs:attribute name=\"" << utf8(p.name) << '"';
  if (required) out << " use=\"required\"";
  if (p.form == Form::Choice) {
    out << ">\n      <xs:simpleType>\n        <xs:restriction base=\"xs:string\">\n";
    for (const std::wstring& choice : p.choices)
      out << "          <xs:enumeration value=\"" << xmlEscaped(platform::toUtf8(choice)) << "\"/>\n";
    out << "        </xs:restriction>\n      </xs:simpleType>\n    </xs:attribute>\n";
    return;
  }
  out << " type=\"" << (p.need == Need::NonEmpty ? "nonEmpty" : "xs:string") << "\"/>\n";
}

void schemaFunction(std::ostream& out, const Tag& tag) {
  out << "  <xs:complexType name=\"" << utf8(tag.name) << "\">\n";
  if (tag.doc)
    out << "    <xs:annotation><xs:documentation>" << xmlEscaped(utf8(tag.doc->summary))
        << "</xs:documentation></xs:annotation>\n";
  const auto handlers = handlerNames(tag.kind);
  if (!handlers.empty() || takesData(tag)) {
    out << "    <xs:choice minOccurs=\"0\" maxOccurs=\"unbounded\">\n";
    for (const wchar_t* handler : handlers) {
      const std::string name = utf8(handler);
      out << "      <xs:element name=\"" << name << "\" type=\""
          << (name == "onerrorspec" ? "errorSpecHandler" : "handler") << "\"/>\n";
    }
    if (takesData(tag)) out << "      <xs:element name=\"data\" type=\"xs:string\"/>\n";
    out << "    </xs:choice>\n";
  }
  out << "    <xs:attribute name=\"id\" type=\"xs:string\"/>\n";
  for (const Parameter& p : tag.parameters()) schemaAttribute(out, p);
  out << "  </xs:complexType>\n";
}

constexpr const char* kSchemaHead = R"text(<?xml version="1.0" encoding="UTF-8"?>
<!-- The schema of Upkeep scripts, made by `upkeep-check /schema` from the
     interpreter's own description of every tag. Regenerate it; do not edit. -->
<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema">
  <xs:element name="script">
    <xs:annotation><xs:documentation>A script: its functions run in order. `version` must name major version 1 (1.1 is expected); `log` names a trace file.</xs:documentation></xs:annotation>
    <xs:complexType>
      <xs:group ref="functions"/>
      <xs:attribute name="version" type="nonEmpty" use="required"/>
      <xs:attribute name="log" type="xs:string"/>
    </xs:complexType>
  </xs:element>
  <xs:simpleType name="nonEmpty">
    <xs:restriction base="xs:string"><xs:minLength value="1"/></xs:restriction>
  </xs:simpleType>
  <xs:complexType name="handler">
    <xs:group ref="functions"/>
  </xs:complexType>
  <xs:complexType name="errorSpecHandler">
    <xs:group ref="functions"/>
    <xs:attribute name="err" type="nonEmpty" use="required"/>
  </xs:complexType>
  <xs:complexType name="for">
    <xs:annotation><xs:documentation>Runs its body once for every item of `value`, split at any character of `delim`, with the item in the variable `var`.</xs:documentation></xs:annotation>
    <xs:group ref="functions"/>
    <xs:attribute name="var" type="nonEmpty" use="required"/>
    <xs:attribute name="value" type="nonEmpty" use="required"/>
    <xs:attribute name="delim" type="nonEmpty" use="required"/>
  </xs:complexType>
  <xs:complexType name="xmlForEach">
    <xs:annotation><xs:documentation>Runs its body for the element `xpath` finds under `handle`, then for each element `step` finds from the previous one, with the element under `destHandle`.</xs:documentation></xs:annotation>
    <xs:group ref="functions"/>
    <xs:attribute name="handle" type="nonEmpty" use="required"/>
    <xs:attribute name="xpath" type="xs:string"/>
    <xs:attribute name="step" type="nonEmpty" use="required"/>
    <xs:attribute name="destHandle" type="nonEmpty" use="required"/>
  </xs:complexType>
)text";

// --- The reference ---

std::string formText(const Parameter& p) {
  switch (p.form) {
    case Form::Text: return "text, expanded when it runs";
    case Form::Literal: return "text, as written";
    case Form::Integer: return "integer, read once (leading digits)";
    case Form::Flag: return "flag: `true` or `1`, else false";
    case Form::Handle: return "handle name";
    case Form::NewHandle: return "name for the new handle";
    case Form::Variable: return "variable name";
    case Form::Label: return "label";
    case Form::Choice: {
      std::string list;
      for (const std::wstring& choice : p.choices) list += (list.empty() ? "`" : ", `") + platform::toUtf8(choice) + "`";
      return "one of " + list;
    }
  }
  return {};
}

const char* needText(Need need) {
  switch (need) {
    case Need::NonEmpty: return "yes, not empty";
    case Need::Present: return "yes";
    default: return "no";
  }
}

// A table cell: a `|` would end it.
std::string cell(std::string text) {
  for (size_t at = text.find('|'); at != std::string::npos; at = text.find('|', at + 2)) text.insert(at, 1, '\\');
  return text;
}

std::string anchor(const Tag& tag) {
  std::string text = utf8(tag.name);
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

void referenceFunction(std::ostream& out, const Tag& tag) {
  out << "### `" << utf8(tag.name) << "`\n\n";
  if (tag.doc) out << utf8(tag.doc->summary) << "\n\n";
  out << "Kind: " << kindText(tag.kind);
  const auto handlers = handlerNames(tag.kind);
  for (size_t i = 0; i < handlers.size(); ++i) out << (i ? ", `" : "; handlers `") << utf8(handlers[i]) << '`';
  out << ".\n\n";
  if (!tag.parameters().empty()) {
    out << "| attribute | required | form | default |\n| --- | --- | --- | --- |\n";
    for (const Parameter& p : tag.parameters())
      out << "| `" << utf8(p.name) << "` | " << needText(p.need) << " | " << cell(formText(p)) << " | "
          << cell(p.defaultValue ? "`" + utf8(p.defaultValue) + "`" : std::string()) << " |\n";
    out << '\n';
  }
  if (!tag.doc) return;
  out << "Log lines:\n\n";
  std::istringstream lines(utf8(tag.doc->log));
  for (std::string line; std::getline(lines, line);) out << "    " << line << '\n';
  out << "\nResult: " << utf8(tag.doc->results) << "\n\n```xml\n" << utf8(tag.doc->example) << "\n```\n\n";
}

constexpr const char* kReferenceHead = R"text(# Function reference

Made by `upkeep-check /reference` from the interpreter's own description of every tag; regenerate
it, do not edit it. `upkeep.xsd` is made from the same description.

Every function element may carry an `id`, which makes it a label for `goto`, `onErrorGoTo` and
the loops. A success/error function may hold `onsuccess`, `onerror` and `onerrorspec err="…"`
handlers; a true/false function `onTrue` and `onFalse`; a plain function none. A missing required
attribute, or an empty one that must not be, refuses the script before it runs with
"Function '…' has invalid parameters (attributes)". Text attributes are expanded (`%name%`) each
time the function runs; every other form is used as written. Error texts are Windows error codes
in decimal.

Two elements are loops, rewritten into plain functions before the script runs:
`<for var="item" value="a;b;c" delim=";">…</for>` runs its body for each item, and
`<xmlForEach handle="doc" xpath="/cfg/item" step="following-sibling::item[1]" destHandle="it">…</xmlForEach>`
runs it for each element found.

Two switches tell what a run does. `upkeep.exe /whatif /file update.xml` makes no change: each
call that would change the machine logs `What if: <what it would do>` before its function's end
line and succeeds as it would have, reads stay real, and the run ends with `What if: N changes`
and a line per kind. `/jsonlog PATH` appends one JSON object a line to `PATH`: the run's start,
each function's end with its expanded attributes, result, time and whether it `changed` the
machine, and the run's end with its exit code and totals.

)text";

}  // namespace

std::string schemaText(const FunctionRegistry& registry) {
  std::ostringstream out;
  out << kSchemaHead;
  out << "  <xs:group name=\"functions\">\n    <xs:sequence>\n"
         "      <xs:choice minOccurs=\"0\" maxOccurs=\"unbounded\">\n"
         "        <xs:element name=\"for\" type=\"for\"/>\n"
         "        <xs:element name=\"xmlForEach\" type=\"xmlForEach\"/>\n";
  for (const Tag* tag : registry.tags())
    out << "        <xs:element name=\"" << utf8(tag->name) << "\" type=\"" << utf8(tag->name) << "\"/>\n";
  out << "      </xs:choice>\n    </xs:sequence>\n  </xs:group>\n";
  for (const Tag* tag : registry.tags()) schemaFunction(out, *tag);
  out << "</xs:schema>\n";
  return out.str();
}

std::string referenceText(const FunctionRegistry& registry) {
  std::ostringstream out;
  out << kReferenceHead;
  const auto groups = byFamily(registry);
  const auto& families = registry.families();
  for (size_t i = 0; i < groups.size(); ++i) {
    if (groups[i].empty()) continue;
    out << "- " << (i < families.size() ? utf8(families[i]) : "Other") << ":";
    for (const Tag* tag : groups[i]) out << " [`" << utf8(tag->name) << "`](#" << anchor(*tag) << ')';
    out << '\n';
  }
  out << '\n';
  for (size_t i = 0; i < groups.size(); ++i) {
    if (groups[i].empty()) continue;
    out << "## " << (i < families.size() ? utf8(families[i]) : "Other") << "\n\n";
    for (const Tag* tag : groups[i]) referenceFunction(out, *tag);
  }
  return out.str();
}

}  // namespace engine
