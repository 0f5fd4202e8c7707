#pragma once
// The json family: JSON documents under named handles, addressed by key paths
// and array indexes. Each class's code is in the file named after its tag.
// Every function is true/false and logs its own "<tag> end with" line.
#include <optional>
#include <string>

#include "engine/function.h"
#include "engine/registry.h"
#include "functions/close_handle.h"
#include "engine/log.h"
#include "functions/json/detail/json_handles.h"
#include "functions/json/detail/json_values.h"

namespace api::json {


using engine::Need;
using engine::Parameters;

namespace helpers {

// The lines of the element lookup by index.
constexpr engine::LogLine kNotAnArray{L"Handle %s does not refer to a JSON array"};
constexpr engine::LogLine kNotAnIndex{L"Could not convert %s to an integer index"};
constexpr engine::LogLine kOutOfBounds{L"Index %s is out of bounds for array %s"};
// The lines of the array edits and of the insert functions' values; the
// leading %s is the tag.
constexpr engine::LogLine kEditNotAnArray{L"%s handle %s does not refer to a JSON array"};
constexpr engine::LogLine kEditNotAnIndex{L"%s could not convert %s to an integer index"};
constexpr engine::LogLine kEditOutOfBounds{L"%s index %s is out of bounds for array %s"};
constexpr engine::LogLine kNotANumber{L"%s cannot convert value %s to number"};
constexpr engine::LogLine kNotABoolean{L"%s cannot convert value %s to boolean"};
constexpr engine::LogLine kUnknownValueType{L"%s unrecognized value type"};
constexpr engine::LogLine kUnknownNonScalarType{L"%s unrecognized non scalar type"};
// A handle that holds no JSON object, after the tag; the getters end it with a full stop.
constexpr engine::LogLine kNotAnObject{L"%s handle %s does not refer to a JSON object"};
constexpr engine::LogLine kNotAnObjectStop{L"%s handle %s does not refer to a JSON object."};

// Base of every JSON function but jsonOpen: the result, the path walk and the
// array element by index.
class FunctionJsonManipulator : public engine::FunctionRetBool {
 protected:
  // Sets the result and logs "<tag> end with True|False" (tag: this function's).
  void end(bool result, const wchar_t* tag = nullptr) { finishAs(tag ? tag : name(), result); }

  // The value attributes of the insert functions: at most one is used, see ScalarSource.
  static const engine::Parameters& scalarParameters();
  bool readParametersAndScalar(ScalarSource& source);

  // Walks object keys separated by "/" (empty tokens skipped) from the
  // location; false when a step is not an object or lacks the key.
  static bool walkPath(JsonLocation& location, const std::wstring& path);

  // The location when the handle holds an object.
  std::optional<JsonLocation> findObject(const std::wstring& handle) const;

  // The element `indexText` of the array under `handle`, logging why not;
  // `index` receives the parsed index.
  std::optional<JsonLocation> elementByIndex(const std::wstring& handle, const std::wstring& indexText,
                                             int* index = nullptr) const;

  // For the array edits: the array under `handle` and the index, which must be
  // below the length, or up to it when `endAllowed` (an append). Logs the
  // failure with this function's tag.
  picojson::array* arrayForEdit(const std::wstring& handle, const std::wstring& indexText, bool endAllowed,
                                size_t& index) const;

  // The value of an insert function, logging why it cannot be made.
  bool convertScalar(const ScalarSource& source, const std::wstring& expanded, picojson::value& out) const;
};

// "object" or "array" as an empty value; nothing for any other type text.
std::optional<picojson::value> emptyNonScalar(const std::wstring& type);

}  // namespace helpers

using helpers::FunctionJsonManipulator;

class FunctionJsonOpen : public engine::FunctionRetBool {
 public:
  void execute() override;
  static const engine::TagDoc doc;
  static const engine::Parameters& parameters();

 private:
  std::wstring path_, handle_;
};

// jsonClose: the one close function, with its line and description.
extern const FunctionCloseHandle::Variant kJsonClose;

class FunctionJsonSave : public FunctionJsonManipulator {
 public:
  void execute() override;
  static const engine::TagDoc doc;
  static const engine::Parameters& parameters();

 private:
  std::wstring path_, handle_;
};

class FunctionJsonGetTypeFromObject : public FunctionJsonManipulator {
 public:
  void execute() override;
  static const engine::TagDoc doc;
  static const engine::Parameters& parameters();

 private:
  std::wstring handle_, xpath_, var_;
};

class FunctionJsonGetTypeFromArray : public FunctionJsonManipulator {
 public:
  void execute() override;
  static const engine::TagDoc doc;
  static const engine::Parameters& parameters();

 private:
  std::wstring handle_, index_, var_;
};

class FunctionJsonGetScalarFromObject : public FunctionJsonManipulator {
 public:
  void execute() override;
  static const engine::TagDoc doc;
  static const engine::Parameters& parameters();

 private:
  std::wstring handle_, xpath_, var_;
};

class FunctionJsonGetArrayFromObject : public FunctionJsonManipulator {
 public:
  void execute() override;
  static const engine::TagDoc doc;
  static const engine::Parameters& parameters();

 private:
  std::wstring objectHandle_, arrayHandle_, xpath_;
};

class FunctionJsonGetScalarFromArray : public FunctionJsonManipulator {
 public:
  void execute() override;
  static const engine::TagDoc doc;
  static const engine::Parameters& parameters();

 private:
  std::wstring handle_, index_, var_;
};

class FunctionJsonGetNonScalarFromArray : public FunctionJsonManipulator {
 public:
  void execute() override;
  static const engine::TagDoc doc;
  static const engine::Parameters& parameters();

 private:
  std::wstring arrayHandle_, nonScalarHandle_, index_;
};

class FunctionJsonGetArrayLength : public FunctionJsonManipulator {
 public:
  void execute() override;
  static const engine::TagDoc doc;
  static const engine::Parameters& parameters();

 private:
  std::wstring handle_, var_;
};

class FunctionJsonInsertScalarIntoObject : public FunctionJsonManipulator {
 public:
  void execute() override;
  static const engine::TagDoc doc;
  static const engine::Parameters& parameters();
  bool readAttributes() override;

 private:
  std::wstring handle_, xpath_, name_;
  helpers::ScalarSource value_;
};

class FunctionJsonInsertScalarIntoArray : public FunctionJsonManipulator {
 public:
  void execute() override;
  static const engine::TagDoc doc;
  static const engine::Parameters& parameters();
  bool readAttributes() override;

 private:
  std::wstring handle_, index_;
  helpers::ScalarSource value_;
};

class FunctionJsonInsertEmptyNonScalarIntoObject : public FunctionJsonManipulator {
 public:
  void execute() override;
  static const engine::TagDoc doc;
  static const engine::Parameters& parameters();

 private:
  std::wstring handle_, xpath_, name_, type_;
};

class FunctionJsonInsertEmptyNonScalarIntoArray : public FunctionJsonManipulator {
 public:
  void execute() override;
  static const engine::TagDoc doc;
  static const engine::Parameters& parameters();

 private:
  std::wstring handle_, index_, type_;
};

class FunctionJsonRemoveFieldFromObject : public FunctionJsonManipulator {
 public:
  void execute() override;
  static const engine::TagDoc doc;
  static const engine::Parameters& parameters();

 private:
  std::wstring handle_, xpath_, name_;
};

// Writes no end line.
class FunctionJsonRemoveFieldFromArray : public FunctionJsonManipulator {
 public:
  void execute() override;
  static const engine::TagDoc doc;
  static const engine::Parameters& parameters();

 private:
  std::wstring handle_, index_;
};

}  // namespace api::json
