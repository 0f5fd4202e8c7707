#include "engine/registry.h"

#include <string_view>

#include "platform/text.h"

namespace engine {
namespace {

// The template as the reference shows it: a leading "%s" replaced by its subject.
std::wstring shown(const LogLine& line) {
  const std::wstring_view format = line.format;
  if (!line.subject || !format.starts_with(L"%s")) return std::wstring(format);
  return line.subject + std::wstring(format.substr(2));
}

}  // namespace

TagDoc::TagDoc(const wchar_t* summary, std::initializer_list<LogLine> lines, const wchar_t* results,
               const wchar_t* example)
    : summary(summary), log(nullptr), results(results), example(example), lines_(lines) {
  for (const LogLine& line : lines_) logText_ += (logText_.empty() ? L"" : L"\n") + shown(line);
  log = logText_.c_str();
}

std::span<const wchar_t* const> handlerNames(FunctionKind kind) {
  static const wchar_t* const error[] = {L"onsuccess", L"onerror", L"onerrorspec"};
  static const wchar_t* const boolean[] = {L"onTrue", L"onFalse"};
  switch (kind) {
    case FunctionKind::Error: return error;
    case FunctionKind::Bool: return boolean;
    default: return {};
  }
}

bool FunctionRegistry::add(const Tag& tag) {
  if (!tag.name || !*tag.name || !tag.factory || !tag.parameters) return false;
  auto [it, added] = tags_.try_emplace(tag.name, tag);
  if (!added) return false;
  it->second.family = families_.empty() ? nullptr : families_.back();
  byScriptName_.emplace(platform::toUtf8(tag.name), &it->second);
  return true;
}

bool FunctionRegistry::add(std::span<const Tag> tags) {
  bool all = true;
  for (const Tag& tag : tags) all = add(tag) && all;
  return all;
}

const Tag* FunctionRegistry::lookup(std::string_view name) const {
  auto it = byScriptName_.find(name);
  return it == byScriptName_.end() ? nullptr : it->second;
}

std::vector<const Tag*> FunctionRegistry::tags() const {
  std::vector<const Tag*> all;
  all.reserve(tags_.size());
  for (const auto& [name, tag] : tags_) all.push_back(&tag);
  return all;
}

}  // namespace engine
