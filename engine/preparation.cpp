#include "engine/engine.h"

#include <cwchar>

#include <tinyxml.h>

#include "engine/integer.h"
#include "engine/script_file.h"
#include "engine/log.h"
#include "engine/loops.h"
#include "engine/nearest_name.h"
#include "platform/format.h"
#include "platform/text.h"

namespace engine {
namespace {

constexpr int kExpectedMajor = 1;
constexpr int kExpectedMinor = 1;

}  // namespace

// The known tag nearest to an unknown one, for the checker's message.
std::wstring Engine::suggestedTag(const std::wstring& tag) const {
  std::vector<std::wstring_view> names = {L"for", L"xmlForEach"};
  for (const Tag* known : registry_.tags()) names.push_back(known->name);
  return didYouMean(tag, names);
}

bool LogDiagnostics::report(Severity severity, const TiXmlBase*, const std::wstring& message, const std::wstring&) {
  log(L"%s", message.c_str());
  return severity == Severity::Warning;
}

bool checkVersion(const TiXmlElement& root, Diagnostics& diagnostics) {
  const std::wstring text = scriptString(root.Attribute("version"));
  if (text.empty()) {
    diagnostics.report(Severity::Error, &root, L"Version not found", {});
    return false;
  }
  const int major = toInt(text);
  const size_t dot = text.find(L'.');
  const int minor = dot == std::wstring::npos ? 0 : toInt(std::wstring_view(text).substr(dot + 1));
  if (major != kExpectedMajor) {
    diagnostics.report(Severity::Error, &root,
                       platform::format(L"Cannot continue... Expected version: %d.%d, current version: %s",
                                        kExpectedMajor, kExpectedMinor, text.c_str()),
                       {});
    return false;
  }
  if (minor != kExpectedMinor)
    diagnostics.report(Severity::Warning, &root,
                       platform::format(L"Warning! Different minor version. Expected: %d.%d, current: %s",
                                        kExpectedMajor, kExpectedMinor, text.c_str()),
                       {});
  return true;
}

bool Engine::problem(const TiXmlBase* where, const std::wstring& message, const std::wstring& detail) {
  failed_ = true;
  if (!diagnostics_.report(Severity::Error, where, message, detail)) stopped_ = true;
  return !stopped_;
}

bool Engine::prepare(TiXmlDocument& document, const Presets& presets) {
  failed_ = stopped_ = false;
  TiXmlElement* root = document.RootElement();
  if (!root) {
    problem(&document, L"Root not found");
    return false;
  }
  if (!checkVersion(*root, diagnostics_)) return false;
  reset();
  for (const auto& [name, value] : presets) runtime_.variables.set(name, value);
  const char* trace = root->Attribute("log");
  if (trace && !diagnostics_.checkOnly()) setTraceFile(runtime_.variables.expand(scriptString(trace)));
  if (!buildList(nullptr, *root, head_)) return false;
  for (const auto& [name, label] : labels_) {
    // "reffered" is the program's established wording, which scripts and log readers match.
    if (!label.definition && !problem(label.reference, platform::format(L"Label '%s' is reffered, but not present", name.c_str())))
      return false;
  }
  return !failed_;
}

bool Engine::buildList(FunctionBase* owner, TiXmlElement& parent, std::unique_ptr<FunctionBase>& head) {
  FunctionBase* last = nullptr;
  for (TiXmlElement* element = parent.FirstChildElement(); element; element = element->NextSiblingElement()) {
    const std::string_view tag = element->ValueStr();
    if (const Loop* loop = findLoop(tag)) {
      loopLine_ = element->Row();
      std::wstring why;
      if (!usable(*loop, *element, why)) {
        if (problem(element, loop->invalid, why)) continue;
        head.reset();
        return false;
      }
      element = loop->expand(*element);
    }
    std::unique_ptr<FunctionBase> function = buildFunction(owner, *element);
    if (stopped_) {
      head.reset();
      return false;
    }
    if (!function) continue;
    // A check keeps no functions: each is let go once checked, and the next
    // one is made in its memory.
    if (diagnostics_.checkOnly()) continue;
    FunctionBase* current = function.get();
    (last ? last->next : head) = std::move(function);
    last = current;
  }
  return true;
}

// Returns nullptr when the element makes no function; a function refused for
// its attributes is still built when preparation goes on, so that its
// handlers are checked too.
std::unique_ptr<FunctionBase> Engine::buildFunction(FunctionBase* owner, TiXmlElement& element) {
  const Tag* entry = registry_.lookup(element.ValueStr());
  if (!entry) {
    const std::wstring tag = scriptString(element.Value());
    problem(&element, platform::format(L"Function '%s' not found", tag.c_str()), suggestedTag(tag));
    return nullptr;
  }
  const wchar_t* tag = entry->name;
  std::unique_ptr<FunctionBase> function = entry->factory();
  if (!function) {
    problem(&element, platform::format(L"Cannot create function '%s'", tag));
    return nullptr;
  }
  function->attach(runtime_, tag, entry->kind, entry->parameters(), element);
  // Elements a loop was rewritten into have no place of their own in the file.
  function->setLine(element.Row() > 0 ? element.Row() : loopLine_);
  runtime_.refusal.clear();
  if (!function->readAttributes() &&
      !problem(&element, platform::format(L"Function '%s' has invalid parameters (attributes)", tag),
               runtime_.refusal))
    return nullptr;
  if (!buildHandlers(*function, element)) return nullptr;
  function->parent = owner;

  if (const std::optional<std::wstring> id = function->attribute(L"id"); id && !id->empty() &&
      !addLabel(*id, function.get(), element))
    return nullptr;
  if (const std::wstring* target = function->labelReference(); target && !target->empty())
    labels_.try_emplace(*target, Label{nullptr, nullptr, &element});
  return function;
}

bool Engine::addLabel(const std::wstring& name, FunctionBase* function, const TiXmlElement& element) {
  auto [it, added] = labels_.try_emplace(name, Label{&element, nullptr, nullptr});
  if (added || !it->second.definition) {
    it->second.definition = &element;
    it->second.function = diagnostics_.checkOnly() ? nullptr : function;
    return true;
  }
  return problem(&element, platform::format(L"Label '%s' is used for two different function instances.", name.c_str()));
}

bool Engine::buildHandler(FunctionBase& function, TiXmlElement* handler, std::unique_ptr<FunctionBase>& head) {
  return !handler || buildList(&function, *handler, head);
}

bool Engine::buildHandlers(FunctionBase& function, TiXmlElement& element) {
  if (function.kind() == FunctionKind::Error) {
    auto& f = static_cast<FunctionRetError&>(function);
    for (TiXmlElement* handler = element.FirstChildElement("onerrorspec"); handler;
         handler = handler->NextSiblingElement("onerrorspec")) {
      const char* err = handler->Attribute("err");
      if (!err || !*err) {
        if (!problem(handler, platform::format(
                                  L"Handler 'onerrorspec' for function '%s' does not have err attribute or it is empty",
                                  function.name())))
          return false;
        continue;
      }
      std::unique_ptr<FunctionBase> list;
      if (!buildList(&function, *handler, list)) return false;
      if (list) f.errorHandlers[scriptString(err)] = std::move(list);
    }
    return buildHandler(function, element.FirstChildElement("onerror"), f.errorHandler) &&
           buildHandler(function, element.FirstChildElement("onsuccess"), f.successHandler);
  }
  if (function.kind() == FunctionKind::Bool) {
    auto& f = static_cast<FunctionRetBool&>(function);
    return buildHandler(function, element.FirstChildElement("onTrue"), f.trueHandler) &&
           buildHandler(function, element.FirstChildElement("onFalse"), f.falseHandler);
  }
  return true;
}

}  // namespace engine
