#pragma once
// Script functions that touch nothing but the variable store, so the engine's
// pure parts can prepare and run scripts natively (the fuzz targets) without
// the families. Each appends "<tag>;" to the variable `trail` and expands
// every attribute it has.
#include <string>

#include "engine/function.h"
#include "engine/registry.h"

namespace stand_in {

// Refuses an element that has a `bad` attribute, as a family refuses bad parameters.
template <class Base>
class Recording : public Base {
 public:
  static const engine::Parameters& parameters() { return engine::noParameters(); }
  bool readAttributes() override { return !this->attribute(L"bad"); }

 protected:
  void record() {
    for (const auto& [name, value] : this->attributes()) this->expand(value);
    this->variables().set(L"trail", this->variables().get(L"trail") + this->name() + L";");
  }
  std::wstring expanded(const wchar_t* name) const {
    const auto value = this->attribute(name);
    return value ? this->expand(*value) : std::wstring();
  }
};

class Plain : public Recording<engine::FunctionBase> {
 public:
  void execute() override { record(); }
};

// `target`: the label it jumps to (the loop makes the jump itself).
class Goto : public Recording<engine::FunctionBase> {
 public:
  void execute() override {}
  bool readAttributes() override {
    const auto target = attribute(L"target");
    target_ = target ? *target : std::wstring();
    return target.has_value();
  }
  const std::wstring* jumpTarget() const override { return &target_; }

 private:
  std::wstring target_;
};

// Fails with the expanded `fail` text when it is not empty.
class Error : public Recording<engine::FunctionRetError> {
 public:
  void execute() override {
    record();
    clearResult();
    if (std::wstring text = expanded(L"fail"); !text.empty()) fail(std::move(text));
    logEnd();
  }
};

// True when the expanded `result` is "1".
class Bool : public Recording<engine::FunctionRetBool> {
 public:
  void execute() override {
    record();
    finish(expanded(L"result") == L"1");
  }
};

// The stand-ins under the names of the functions the loops expand into, and
// under "plain", "error", "bool" and "goto".
inline engine::FunctionRegistry registry() {
  using engine::tag;
  engine::FunctionRegistry r;
  for (const wchar_t* name : {L"plain", L"nothing", L"assign", L"stringGet", L"stringDelete", L"stringTrim"})
    r.add(tag<Plain>(name));
  const engine::Tag others[] = {tag<Goto>(L"goto"), tag<Error>(L"error"), tag<Error>(L"xmlGetElement"),
                                tag<Bool>(L"bool"), tag<Bool>(L"test")};
  r.add(others);
  return r;
}

}  // namespace stand_in
