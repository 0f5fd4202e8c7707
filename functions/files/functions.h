#pragma once
// The files family: queries, copy, move, delete, find and text-file handles.
// Each class's code is in the file named after its tag.
#include <cstdint>
#include <memory>
#include <string>

#include "engine/function.h"
#include "engine/registry.h"
#include "functions/close_handle.h"
#include "functions/files/detail/path_filter.h"

namespace api::files {


using engine::FunctionBase;
using engine::FunctionRetBool;
using engine::FunctionRetError;
using engine::Need;
using engine::Parameters;

// The line of a file that fileCopySingle or fileCopyPattern leaves as it is.
constexpr engine::LogLine kSkippedSameLwt{L"File '%s' skipped due to the same LWT"};

// dirExists, fileExists and fileIsSigned: one non-empty `path`.
class PathQuery : public FunctionRetBool {
 public:
  static const Parameters& parameters();

 protected:
  std::wstring path_;
};

class FunctionDirExists : public PathQuery {
 public:
  void execute() override;
  static const engine::TagDoc doc;
};

class FunctionFileExists : public PathQuery {
 public:
  void execute() override;
  static const engine::TagDoc doc;
};

class FunctionFileIsSigned : public PathQuery {
 public:
  void execute() override;
  static const engine::TagDoc doc;
};

class FunctionDirCreate : public FunctionRetError {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring path_;
};

// `src` and `dest` (both non-empty) and `failIfExists` (default true).
class CopyFunction : public FunctionRetError {
 public:
  static const Parameters& parameters();

 protected:
  std::wstring src_, dest_;
  bool failIfExists_ = true;
};

class FunctionFileCopySingle : public CopyFunction {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  bool diffLWTOnly_ = false;
};

// Serves fileMove and dirMove alike; log lines carry the tag it was made for.
class FunctionFileMoveSingle : public CopyFunction {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  bool afterReboot_ = false;
};

class FunctionDirCopyRecursive : public CopyFunction {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;
  bool readAttributes() override;

 private:
  bool ignoreErrors_ = false;
  bool diffLWTOnly_ = false;
  std::wstring include_, exclude_;
  PathFilter filter_;
};

class FunctionFileCopyPattern : public CopyFunction {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  bool ignoreErrors_ = false;
  bool diffLWTOnly_ = false;
};

// dirDeleteRec and fileDeletePattern: `path` and the three failure options.
class DeleteFunction : public FunctionRetError {
 public:
  static const Parameters& parameters();

 protected:
  std::wstring path_;
  bool ignoreErrors_ = false;
  bool afterRebootIfFails_ = false;
  bool renameIfFails_ = false;
};

class FunctionDirDeleteRecursive : public DeleteFunction {
 public:
  void execute() override;
  static const engine::TagDoc doc;
};

class FunctionFileDeletePattern : public DeleteFunction {
 public:
  void execute() override;
  static const engine::TagDoc doc;
};

// fileFind lists files under `dir`, dirFind directories under `rootDir`.
class FunctionFileFind : public FunctionRetError {
 public:
  // What sets the two tags apart.
  struct Variant {
    bool directories;
    const engine::TagDoc& doc;
  };

  explicit FunctionFileFind(const Variant& variant) : directories_(variant.directories) {}
  void execute() override;
  static const Parameters& parameters(const Variant& variant);

 private:
  bool directories_ = false;
  std::wstring root_, pattern_, var_, delim_;
  int32_t depth_ = 0;
};

extern const FunctionFileFind::Variant kFileFind;
extern const FunctionFileFind::Variant kDirFind;

class FunctionFileOpenOrCreate : public FunctionRetBool {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring path_, handle_;
  bool append_ = false;
};

class FunctionFileWrite : public FunctionRetBool {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring handle_, string_;
};

// Fetches `url` into `file`; ends with fileCopySingle's end line.
class FunctionFileDownload : public FunctionRetError {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring url_, file_;
};

// fileClose: the one close function, with its line and description.
extern const FunctionCloseHandle::Variant kFileClose;

}  // namespace api::files
