#include "functions/json/json_file.h"

#include <cmath>
#include <cstdio>
#include <io.h>
#include <memory>

namespace api::json::helpers {
namespace {

struct FileCloser {
  void operator()(FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<FILE, FileCloser>;

// picojson's default context with two fixes for hostile input. Its nesting
// bound (DEFAULT_MAX_DEPTHS) is only counted for arrays, so objects nested
// deeply enough recurse until the stack runs out; here objects count too.
// And a number beyond double's range ("1e999") made the library throw from
// value(double); here it is a syntax error like any other bad number.
class BoundedContext {
 public:
  BoundedContext(picojson::value* out, size_t depth) : out_(out), depth_(depth) {}
  BoundedContext(const BoundedContext&) = delete;
  BoundedContext& operator=(const BoundedContext&) = delete;

  bool set_null() {
    *out_ = picojson::value();
    return true;
  }
  bool set_bool(bool b) {
    *out_ = picojson::value(b);
    return true;
  }
  bool set_number(double number) {
    if (!std::isfinite(number)) return false;
    *out_ = picojson::value(number);
    return true;
  }
  template <typename Iter>
  bool parse_string(picojson::input<Iter>& in) {
    *out_ = picojson::value(picojson::string_type, false);
    return picojson::_parse_string(out_->get<std::string>(), in);
  }
  bool parse_array_start() { return open(picojson::array_type); }
  template <typename Iter>
  bool parse_array_item(picojson::input<Iter>& in, size_t) {
    picojson::array& elements = out_->get<picojson::array>();
    elements.emplace_back();
    BoundedContext child(&elements.back(), depth_);
    return picojson::_parse(child, in);
  }
  bool parse_array_stop(size_t) {
    ++depth_;
    return true;
  }
  bool parse_object_start() { return open(picojson::object_type); }
  template <typename Iter>
  bool parse_object_item(picojson::input<Iter>& in, const std::string& key) {
    BoundedContext child(&out_->get<picojson::object>()[key], depth_);
    return picojson::_parse(child, in);
  }
  bool parse_object_stop() {
    ++depth_;
    return true;
  }

 private:
  bool open(int type) {
    if (depth_ == 0) return false;
    --depth_;
    *out_ = picojson::value(type, false);
    return true;
  }

  picojson::value* out_;
  size_t depth_;
};

}  // namespace

bool readTextFile(const std::wstring& path, std::string& out) {
  File file(_wfopen(path.c_str(), L"rt"));
  if (!file) return false;
  out.clear();
  const long long size = _filelengthi64(_fileno(file.get()));
  if (size > 0) out.reserve(static_cast<size_t>(size));
  char buffer[1 << 16];
  size_t got = 0;
  while ((got = std::fread(buffer, 1, sizeof buffer, file.get())) > 0) out.append(buffer, got);
  return true;
}

bool writeTextFile(const std::wstring& path, const std::string& text) {
  File file(_wfopen(path.c_str(), L"wt"));
  if (!file) return false;
  std::fwrite(text.data(), 1, text.size(), file.get());
  return true;
}

void parseDocument(const std::string& text, picojson::value& out) {
  picojson::set_last_error(std::string());
  std::string error;
  BoundedContext context(&out, picojson::DEFAULT_MAX_DEPTHS);
  picojson::_parse(context, text.begin(), text.end(), &error);
  if (!error.empty()) picojson::set_last_error(error);
}

}  // namespace api::json::helpers
