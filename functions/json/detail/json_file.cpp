#include "functions/json/detail/json_file.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace api::json::helpers {
namespace {

// The characters picojson takes for a number: it hands any run of them that
// starts with "-" or a digit to strtod, which also takes forms JSON forbids
// ("012", "-.5", "1.", "2.e3"). A save would then write them back changed.
constexpr std::string_view kNumberCharacters = "0123456789+-.eE";

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Whether `token` is a number as JSON defines it:
// -?(0|[1-9][0-9]*)(\.[0-9]+)?([eE][+-]?[0-9]+)?
bool isJsonNumber(std::string_view token) {
  size_t at = 0;
  const auto digits = [&] {
    const size_t from = at;
    while (at < token.size() && isDigit(token[at])) ++at;
    return at > from;
  };
  const auto next = [&](std::string_view any) {
    return at < token.size() && any.find(token[at]) != std::string_view::npos;
  };
  if (next("-")) ++at;
  if (next("0")) {
    ++at;
  } else if (!digits()) {
    return false;
  }
  if (next(".")) {
    ++at;
    if (!digits()) return false;
  }
  if (next("eE")) {
    ++at;
    if (next("+-")) ++at;
    if (!digits()) return false;
  }
  return at == token.size();
}

// False when `rest` starts with a number JSON forbids; anything else is left to the library.
bool numberAllowed(std::string_view rest) {
  if (rest.empty() || (rest[0] != '-' && !isDigit(rest[0]))) return true;
  return isJsonNumber(rest.substr(0, rest.find_first_not_of(kNumberCharacters)));
}

// picojson's default context with two fixes for hostile input. Its nesting
// bound (DEFAULT_MAX_DEPTHS) is only counted for arrays, so objects nested
// deeply enough recurse until the stack runs out; here objects count too.
// And a number beyond double's range ("1e999") made the library throw from
// value(double); here it ends the parse as a syntax error right after the
// number (the library ignores set_number's answer, so the item callbacks,
// which see the input, report it). The item callbacks also refuse a number
// JSON forbids before the library reads it, so the error points at it.
class BoundedContext {
 public:
  using Iter = std::string::const_iterator;
  BoundedContext(picojson::value* out, size_t depth, Iter end) : out_(out), depth_(depth), end_(end) {}
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
  bool parse_array_item(picojson::input<Iter>& in, size_t) {
    if (!numberAheadAllowed(in)) return false;
    picojson::array& elements = out_->get<picojson::array>();
    elements.emplace_back();
    BoundedContext child(&elements.back(), depth_, end_);
    return picojson::_parse(child, in) && !child.outOfRange();
  }
  bool parse_array_stop(size_t) {
    ++depth_;
    return true;
  }
  bool parse_object_start() { return open(picojson::object_type); }
  bool parse_object_item(picojson::input<Iter>& in, const std::string& key) {
    if (!numberAheadAllowed(in)) return false;
    BoundedContext child(&out_->get<picojson::object>()[key], depth_, end_);
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

  // False when the next value is a number JSON forbids; the input then stands at it.
  bool numberAheadAllowed(picojson::input<Iter>& in) const {
    in.skip_ws();
    const Iter at = in.cur();
    return numberAllowed(std::string_view(at == end_ ? nullptr : &*at, static_cast<size_t>(end_ - at)));
  }

  picojson::value* out_;
  size_t depth_;
  Iter end_;
  bool outOfRange_ = false;
};

constexpr std::string_view kWhiteSpace = " \t\r\n";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// The library's message for a syntax error at `at`: the line and the rest
// of that line, control characters left out.
std::string syntaxErrorAt(const std::string& text, size_t at) {
  const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n');
  std::string message = "syntax error at line " + std::to_string(line) + " near: ";
  for (; at < text.size() && text[at] != '\n'; ++at)
    if (static_cast<unsigned char>(text[at]) >= ' ') message.push_back(text[at]);
  return message;
}

// For a document that is one out-of-range number: the error right after the number.
std::string outOfRangeMessage(const std::string& text, size_t from) {
  size_t at = std::min(text.find_first_not_of(kWhiteSpace, from), text.size());
  at = std::min(text.find_first_not_of("0123456789+-eE.", at), text.size());
  return syntaxErrorAt(text, at);
}

}  // namespace

void parseDocument(const std::string& text, picojson::value& out) {
  picojson::set_last_error(std::string());
  // A UTF-8 byte-order mark (Notepad and Windows PowerShell write one) is not
  // part of the document.
  const size_t start = text.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0 ? kByteOrderMark.size() : 0;
  // A document that is one number JSON forbids: no item callback sees it.
  const size_t first = std::min(text.find_first_not_of(kWhiteSpace, start), text.size());
  if (!numberAllowed(std::string_view(text).substr(first))) {
    picojson::set_last_error(syntaxErrorAt(text, first));
    return;
  }
  std::string error;
  BoundedContext context(&out, picojson::DEFAULT_MAX_DEPTHS, text.end());
  const auto end = picojson::_parse(context, text.begin() + static_cast<std::ptrdiff_t>(start), text.end(), &error);
  if (error.empty() && context.outOfRange()) error = outOfRangeMessage(text, start);
  // The value is the whole document: only white space may follow it, or a
  // save would drop the rest.
  if (error.empty()) {
    const size_t rest = text.find_first_not_of(kWhiteSpace, static_cast<size_t>(end - text.begin()));
    if (rest != std::string::npos) error = syntaxErrorAt(text, rest);
  }
  if (!error.empty()) picojson::set_last_error(error);
}

}  // namespace api::json::helpers
