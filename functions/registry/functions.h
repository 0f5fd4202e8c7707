#pragma once
// The registry family: reading, listing, writing, creating and deleting keys
// and values, always in the program's native (64-bit) view.
// Each class's code is in the file named after its tag.
#include <cstdint>
#include <string>
#include <vector>

#include "engine/function.h"
#include "engine/registry.h"
#include "functions/registry/detail/root_key.h"
#include "platform/registry.h"

namespace api::registry {

using engine::FunctionRetBool;
using engine::FunctionRetError;
using engine::Need;
using engine::Parameters;

// Every registry function names a root (one of the five predefined keys,
// written exactly; any other name refuses the element) and a key below it.
template <class Kind>
class KeyFunction : public Kind {
 public:
  static const Parameters& parameters() {
    static const Parameters list = {engine::choice<&KeyFunction::root_>(L"root", detail::rootNames()),
                                    engine::text<&KeyFunction::key_>(L"key")};
    return list;
  }

 protected:
  // The root as the log shows it: its predefined handle value.
  void* root() const { return platform::rootKeyValue(root_); }
  platform::RootKey rootKey() const { return root_; }
  std::wstring key() const { return this->expand(key_); }

 private:
  platform::RootKey root_ = {};
  std::wstring key_;
};

using KeyErrorFunction = KeyFunction<FunctionRetError>;

class FunctionRegRead : public KeyErrorFunction {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring var_, value_;
};

// regGetKeys and regGetValues: the names in `var`, each followed by `delim`.
class NameList : public KeyErrorFunction {
 public:
  void execute() override;
  static const Parameters& parameters();

 protected:
  // The access the listing needs, and the listing itself (0 or an error code).
  virtual platform::KeyAccess access() const = 0;
  virtual uint32_t list(const platform::UniqueKey& key, std::vector<std::wstring>& names) const = 0;

 private:
  std::wstring var_, delim_;
};

class FunctionRegGetKeys : public NameList {
 public:
  static const engine::TagDoc doc;

 protected:
  platform::KeyAccess access() const override;
  uint32_t list(const platform::UniqueKey& key, std::vector<std::wstring>& names) const override;
};

class FunctionRegGetValues : public NameList {
 public:
  static const engine::TagDoc doc;

 protected:
  platform::KeyAccess access() const override;
  uint32_t list(const platform::UniqueKey& key, std::vector<std::wstring>& names) const override;
};

class FunctionRegWrite : public KeyErrorFunction {
 public:
  void execute() override;
  bool readAttributes() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  bool holds(const std::wstring& key, const std::wstring& value, const std::vector<uint8_t>& bytes) const;

  std::wstring value_, data_, typeName_;
  uint32_t type_ = 0;  // 0: a name without a text form, refused when the function runs
};

class FunctionRegExistsKey : public KeyFunction<FunctionRetBool> {
 public:
  void execute() override;
  static const engine::TagDoc doc;
};

class FunctionRegCreateKey : public KeyErrorFunction {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  bool volatile_ = false;
};

class FunctionRegDeleteKey : public KeyErrorFunction {
 public:
  void execute() override;
  static const engine::TagDoc doc;
};

class FunctionRegDeleteValue : public KeyErrorFunction {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring value_;
};

}  // namespace api::registry
