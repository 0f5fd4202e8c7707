#include "engine/function.h"

#include <cstddef>
#include <memory_resource>

#include <tinyxml.h>

#include "engine/ascii.h"
#include "engine/integer.h"
#include "engine/log.h"
#include "engine/log_lines.h"
#include "engine/script_file.h"
#include "platform/error_text.h"
#include "platform/errors.h"
#include "platform/format.h"
#include "platform/text.h"

namespace engine {

namespace {

std::pmr::memory_resource& functionPool() {
  // Never destroyed, so that a function freed late, by a static, still finds it.
  static auto* pool = new std::pmr::unsynchronized_pool_resource;
  return *pool;
}

}  // namespace

void* FunctionBase::operator new(std::size_t size) {
  return functionPool().allocate(size, alignof(std::max_align_t));
}

void FunctionBase::operator delete(void* function, std::size_t size) {
  functionPool().deallocate(function, size, alignof(std::max_align_t));
}

FunctionBase::~FunctionBase() {
  // Unlink the successors one by one instead of recursing through them.
  std::unique_ptr<FunctionBase> rest = std::move(next);
  while (rest) rest = std::move(rest->next);
}

namespace {

// The `data` parameter may be written as the text of a <data> child.
std::optional<std::wstring> dataChild(const TiXmlElement& element) {
  const TiXmlElement* data = element.FirstChildElement("data");
  if (!data) return std::nullopt;
  const TiXmlNode* first = data->FirstChild();
  const TiXmlText* text = first ? first->ToText() : nullptr;
  return text ? scriptString(text->Value()) : std::wstring();
}

}  // namespace

std::optional<std::wstring> FunctionBase::attribute(const wchar_t* name) const {
  if (!element_) return std::nullopt;
  for (const TiXmlAttribute* a = element_->FirstAttribute(); a; a = a->Next())
    if (isAsciiName(a->NameTStr(), name)) return platform::fromUtf8(a->ValueStr());
  if (std::wstring_view(name) == L"data") return dataChild(*element_);
  return std::nullopt;
}

Attributes FunctionBase::attributes() const {
  Attributes all;
  if (!element_) return all;
  for (const TiXmlAttribute* a = element_->FirstAttribute(); a; a = a->Next())
    all.insert_or_assign(scriptString(a->Name()), scriptString(a->Value()));
  if (!all.count(L"data"))
    if (std::optional<std::wstring> data = dataChild(*element_)) all.emplace(L"data", std::move(*data));
  return all;
}

std::wstring FunctionBase::expand(const std::wstring& text) const {
  std::wstring expanded = runtime_->variables.expand(text);
  if (runtime_->recording) runtime_->expansions.emplace_back(text, expanded);
  return expanded;
}

const std::wstring& FunctionBase::expandedAs(const std::wstring& written) const {
  for (const auto& [text, expanded] : runtime_->expansions)
    if (text == written) return expanded;
  return written;
}

bool FunctionBase::refuse(std::wstring why) const {
  runtime_->refusal = std::move(why);
  return false;
}

bool FunctionBase::readParameters() {
  if (!parameters_) return true;
  for (const Parameter& p : *parameters_) {
    std::optional<std::wstring> value = attribute(p.name);
    if (!value) {
      if (p.need != Need::Optional) return refuse(platform::format(L"'%s' is missing", p.name));
      if (!p.store || !p.defaultValue) continue;
      std::wstring written = p.defaultValue;
      if (!p.store(*this, p, written)) return false;
      continue;
    }
    if (value->empty() && p.need == Need::NonEmpty) return refuse(platform::format(L"'%s' is empty", p.name));
    if (p.store && !p.store(*this, p, *value)) {
      std::wstring accepted;
      for (const std::wstring& choice : p.choices) accepted += (accepted.empty() ? L"'" : L", '") + choice + L"'";
      return refuse(platform::format(L"'%s' cannot be '%s'%s%s", p.name, value->c_str(),
                                     accepted.empty() ? L"" : L"; it takes ", accepted.c_str()));
    }
  }
  return true;
}

void FunctionRetError::fail(uint32_t windowsError) { fail(platform::errorText(windowsError)); }

void FunctionRetError::fail(std::wstring text) {
  failed_ = true;
  errorText_ = std::move(text);
}

void FunctionRetError::clearResult() {
  failed_ = false;
  errorText_.clear();
}

void FunctionRetError::logEnd(const wchar_t* tag) const {
  log(kErrorEnd, tag ? tag : name(), failed_ ? L"error" : L"success", errorText_.c_str());
}

void FunctionRetError::endWith(uint32_t code, const wchar_t* tag) {
  if (code == platform::kErrorWaitTimeout) {
    fail(L"timeout");
  } else if (code != 0) {
    fail(code);
  }
  logEnd(tag);
}

void FunctionRetBool::finish(bool result) {
  result_ = result;
  log(kBoolEnd, name(), result ? L"True" : L"False");
}

void FunctionRetBool::finishAs(const std::wstring& subject, bool result) {
  result_ = result;
  log(kSubjectEnd, subject.c_str(), result ? L"True" : L"False");
}

}  // namespace engine
