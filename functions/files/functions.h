#pragma once
// The files family: queries, copy, move, delete, find and text-file handles.
// Each class's code is in the file named after its tag.
#include <cstdint>
#include <memory>
#include <string>

#include "engine/function.h"
#include "functions/files/path_filter.h"

namespace api::files {

using engine::FunctionBase;
using engine::FunctionRetBool;
using engine::FunctionRetError;

// dirExists, fileExists and fileIsSigned: one non-empty `path`.
class PathQuery : public FunctionRetBool {
 public:
  bool readAttributes() override;

 protected:
  std::wstring path_;
};

class FunctionDirExists : public PathQuery {
 public:
  void execute() override;
};

class FunctionFileExists : public PathQuery {
 public:
  void execute() override;
};

class FunctionFileIsSigned : public PathQuery {
 public:
  void execute() override;
};

class FunctionDirCreate : public FunctionRetError {
 public:
  void execute() override;
  bool readAttributes() override;

 private:
  std::wstring path_;
};

// `src` and `dest` (both non-empty) and `failIfExists` (default true).
class CopyFunction : public FunctionRetError {
 public:
  bool readAttributes() override;

 protected:
  std::wstring src_, dest_;
  bool failIfExists_ = true;
};

class FunctionFileCopySingle : public CopyFunction {
 public:
  void execute() override;
  bool readAttributes() override;

 private:
  bool diffLWTOnly_ = false;
};

// Serves fileMove and dirMove alike; log lines carry the tag it was made for.
class FunctionFileMoveSingle : public CopyFunction {
 public:
  void execute() override;
  bool readAttributes() override;

 private:
  bool afterReboot_ = false;
};

class FunctionDirCopyRecursive : public CopyFunction {
 public:
  void execute() override;
  bool readAttributes() override;

 private:
  bool ignoreErrors_ = false;
  bool diffLWTOnly_ = false;
  PathFilter filter_;
};

class FunctionFileCopyPattern : public CopyFunction {
 public:
  void execute() override;
  bool readAttributes() override;

 private:
  bool ignoreErrors_ = false;
  bool diffLWTOnly_ = false;
};

// dirDeleteRec and fileDeletePattern: `path` and the three failure options.
class DeleteFunction : public FunctionRetError {
 public:
  bool readAttributes() override;

 protected:
  std::wstring path_;
  bool ignoreErrors_ = false;
  bool afterRebootIfFails_ = false;
  bool renameIfFails_ = false;
};

class FunctionDirDeleteRecursive : public DeleteFunction {
 public:
  void execute() override;
};

class FunctionFileDeletePattern : public DeleteFunction {
 public:
  void execute() override;
};

// fileFind lists files, dirFind directories; the mode is fixed at creation.
class FunctionFileFind : public FunctionRetError {
 public:
  explicit FunctionFileFind(bool directories) : directories_(directories) {}
  void execute() override;
  bool readAttributes() override;

 private:
  bool directories_;
  std::wstring root_, pattern_, var_, delim_;
  int32_t depth_ = 0;
};

// The text-file functions end with "<prefix> end with True|False" instead of
// the usual bool end line, so they keep their own result.
class TextFileFunction : public FunctionRetBool {
 public:
  bool getResult() const override { return result_; }

 protected:
  void end(const wchar_t* prefix, bool result);

 private:
  bool result_ = false;
};

class FunctionFileOpenOrCreate : public TextFileFunction {
 public:
  void execute() override;
  bool readAttributes() override;

 private:
  std::wstring path_, handle_;
  bool append_ = false;
};

class FunctionFileWrite : public TextFileFunction {
 public:
  void execute() override;
  bool readAttributes() override;

 private:
  std::wstring handle_, string_;
};

class FunctionFileClose : public FunctionBase {
 public:
  void execute() override;
  bool readAttributes() override;

 private:
  std::wstring handle_;
};

}  // namespace api::files
