#include "engine/log.h"
#include "functions/base/functions.h"
#include "functions/base/detail/string_ops.h"

namespace api::base {

namespace {

constexpr engine::LogLine kStart{L"StringGet variable %s, from %d, maxCount %d or to %s"};

}  // namespace

const Parameters& FunctionStringGet::parameters() {
  static const Parameters list = engine::joined({engine::variable<&FunctionStringGet::var_>(L"var", Need::NonEmpty),
       engine::text<&FunctionStringGet::value_>(L"value", Need::NonEmpty)}, spanParameters());
  return list;
}

void FunctionStringGet::execute() {
  engine::log(kStart, var_.c_str(), fromIndex_, maxCount_, toAnyChar_.c_str());
  // A loop's `%forvar%` is read in place, not copied: each item costs only itself.
  std::wstring expanded;
  variables().set(var_, spanOf(variables().expandView(value_, expanded), fromIndex_, maxCount_, toAnyChar_));
}

const engine::TagDoc FunctionStringGet::doc{
    L"Stores in `var` up to `maxCount` characters of `value` (expanded when it runs) from `fromIndex` (0 is the first), stopping before the first character that is one of `toAnyChar` (taken as written). The numbers are read when the script is prepared, and a negative one counts as a very large one (`maxCount=\"-1\"` takes the rest). Indices count UTF-16 code units; a `fromIndex` at or past the end gives the empty text.",
    {kStart},
    L"No result: a plain function has no handlers.",
    L"<assign var=\"entry\" value=\"App=24.3;C:\\Program Files\\App\"/>\n<stringGet var=\"version\" value=\"%entry%\" fromIndex=\"4\" maxCount=\"20\" toAnyChar=\";\"/>"};

}  // namespace api::base
