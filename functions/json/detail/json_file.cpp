#include "functions/json/detail/json_file.h"

#include <cmath>
#include <string_view>

namespace api::json::helpers {
namespace {

// picojson's default context with two fixes for hostile input. Its nesting
// bound (DEFAULT_MAX_DEPTHS) is only counted for arrays, so objects nested
// deeply enough recurse until the stack runs out; here objects count too.
// And a number beyond double's range ("1e999") made the library throw from
// value(double); here it ends the parse as a syntax error right after the
// number (the library ignores set_number's answer, so the item callbacks,
// which see the input, report it).
class BoundedContext {
 public:
  BoundedContext(picojson::value* out, size_t depth) : out_(out), depth_(depth) {}
  BoundedContext(const BoundedContext&) = delete;
  BoundedContext& operator=(const BoundedContext&) = delete;

  bool outOfRange() const { return outOfRange_; }

  bool set_null() {
    *out_ = picojson::value();
    return true;
  }
  bool set_bool(bool b) {
    *out_ = picojson::value(b);
    return true;
  }
  bool set_number(double number) {
    outOfRange_ = !std::isfinite(number);
    if (!outOfRange_) *out_ = picojson::value(number);
    return !outOfRange_;
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
    return picojson::_parse(child, in) && !child.outOfRange();
  }
  bool parse_array_stop(size_t) {
    ++depth_;
    return true;
  }
  bool parse_object_start() { return open(picojson::object_type); }
  template <typename Iter>
  bool parse_object_item(picojson::input<Iter>& in, const std::string& key) {
    BoundedContext child(&out_->get<picojson::object>()[key], depth_);
    return picojson::_parse(child, in) && !child.outOfRange();
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
  bool outOfRange_ = false;
};

bool isAnyOf(std::string_view set, char c) { return set.find(c) != std::string_view::npos; }

// The library's message for a document that is one out-of-range number:
// the line of the number and the rest of that line after it.
std::string outOfRangeMessage(const std::string& text) {
  int line = 1;
  size_t at = 0;
  for (; at < text.size() && isAnyOf(" \t\r\n", text[at]); ++at)
    if (text[at] == '\n') ++line;
  while (at < text.size() && isAnyOf("0123456789+-eE.", text[at])) ++at;
  std::string message = "syntax error at line " + std::to_string(line) + " near: ";
  for (; at < text.size() && text[at] != '\n'; ++at)
    if (static_cast<unsigned char>(text[at]) >= ' ') message.push_back(text[at]);
  return message;
}

}  // namespace

void parseDocument(const std::string& text, picojson::value& out) {
  picojson::set_last_error(std::string());
  std::string error;
  BoundedContext context(&out, picojson::DEFAULT_MAX_DEPTHS);
  picojson::_parse(context, text.begin(), text.end(), &error);
  if (error.empty() && context.outOfRange()) error = outOfRangeMessage(text);
  if (!error.empty()) picojson::set_last_error(error);
}

}  // namespace api::json::helpers
