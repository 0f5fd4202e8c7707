#include "engine/function.h"

#include "engine/integer.h"
#include "engine/log.h"
#include "platform/error_text.h"

namespace engine {

FunctionBase::~FunctionBase() {
  // Unlink the successors one by one instead of recursing through them.
  std::unique_ptr<FunctionBase> rest = std::move(next);
  while (rest) rest = std::move(rest->next);
}

const std::wstring* FunctionBase::attribute(const wchar_t* name) const {
  auto it = attributes_.find(name);
  return it == attributes_.end() ? nullptr : &it->second;
}

bool FunctionBase::readText(const wchar_t* name, std::wstring& out, Need need) const {
  const std::wstring* value = attribute(name);
  if (!value) return need == Need::Optional;
  if (value->empty() && need == Need::NonEmpty) return false;
  out = *value;
  return true;
}

bool FunctionBase::readInt(const wchar_t* name, int32_t& out, Need need) const {
  std::wstring text;
  const bool present = attribute(name) != nullptr;
  if (!readText(name, text, need)) return false;
  if (present) out = toInt(text);
  return true;
}

bool FunctionBase::readFlag(const wchar_t* name, bool& out, Need need) const {
  std::wstring text;
  const bool present = attribute(name) != nullptr;
  if (!readText(name, text, need)) return false;
  if (present) out = text == L"true" || text == L"1";
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
  const std::wstring format = std::wstring(tag ? tag : name().c_str()) + L" function end with %s. err:'%s'";
  log(format.c_str(), failed_ ? L"error" : L"success", errorText_.c_str());
}

void FunctionRetBool::finish(bool result) {
  result_ = result;
  const std::wstring format = name() + L" function end with %s.";
  log(format.c_str(), result ? L"True" : L"False");
}

}  // namespace engine
