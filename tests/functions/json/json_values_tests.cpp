// Script texts to JSON values and back: the number forms, index texts and
// insert values that the script cases reach only one at a time.
#include <gtest/gtest.h>

#include "functions/json/detail/json_values.h"

namespace api::json::helpers {
namespace {

picojson::value parsed(const std::string& text) {
  picojson::value value;
  EXPECT_EQ(picojson::parse(value, text), "") << text;
  return value;
}

TEST(JsonValues, ScalarsReadAsScriptTexts) {
  static constexpr std::pair<const char*, const wchar_t*> kCases[] = {
      {"0", L"0"},
      {"-0", L"-0"},
      {"8443", L"8443"},
      {"1.5e3", L"1500"},
      {"-12.0", L"-12"},
      {"0.1", L"0.10000000000000001"},
      {"9007199254740991", L"9007199254740991"},  // 2^53 - 1: still integral
      {"9007199254740992", L"9007199254740992"},  // 2^53: %.17g, same digits
      {"1e20", L"1e+20"},
      {"true", L"true"},
      {"false", L"false"},
      {"\"\"", L""},
      {"\"caf\\u00e9\"", L"caf\u00e9"},
      {"\"a\\u0000b\"", L"a"},  // a string ends at its first NUL
  };
  for (const auto& [json, text] : kCases) {
    const picojson::value value = parsed(json);
    EXPECT_TRUE(isScalar(value)) << json;
    EXPECT_EQ(scalarText(value), text) << json;
  }
}

TEST(JsonValues, TypeNames) {
  static constexpr std::pair<const char*, const wchar_t*> kCases[] = {{"{}", L"object"},    {"[]", L"array"},
                                                                      {"\"x\"", L"string"}, {"true", L"boolean"},
                                                                      {"1", L"number"},     {"null", L"null"}};
  for (const auto& [json, name] : kCases) EXPECT_STREQ(typeName(parsed(json)), name) << json;
  EXPECT_FALSE(isScalar(parsed("null")));
  EXPECT_FALSE(isScalar(parsed("[]")));
}

TEST(JsonValues, IndexesReadLikeStoi) {
  static constexpr std::pair<const wchar_t*, std::optional<int>> kCases[] = {{L"0", 0},
                                                                             {L" \t7", 7},
                                                                             {L"+3x", 3},
                                                                             {L"-1", -1},
                                                                             {L"007", 7},
                                                                             {L"2147483647", 2147483647},
                                                                             {L"-2147483648", -2147483647 - 1},
                                                                             {L"2147483648", std::nullopt},
                                                                             {L"", std::nullopt},
                                                                             {L"x1", std::nullopt},
                                                                             {L"-", std::nullopt},
                                                                             {L" ", std::nullopt}};
  for (const auto& [text, index] : kCases) EXPECT_EQ(parseIndex(text), index) << text;
}

TEST(JsonValues, InsertValuesFollowTheFirstAttributeGiven) {
  const std::wstring empty, text = L"x", number = L"12", flag = L"true";
  struct Case {
    const std::wstring *stringValue, *numberValue, *boolValue;
    const wchar_t* expanded;
    ScalarSource::Error error;
    const char* json;  // the value made, serialised
  };
  const Case cases[] = {
      {&empty, &number, &flag, L"", ScalarSource::Error::None, "\"\""},  // an empty string still wins
      {nullptr, &number, &flag, L"1.5e3", ScalarSource::Error::None, "1500"},
      {nullptr, &number, nullptr, L" -2x", ScalarSource::Error::None, "-2"},
      {nullptr, &number, nullptr, L"x", ScalarSource::Error::Number, nullptr},
      {nullptr, &number, nullptr, L"1e999", ScalarSource::Error::Number, nullptr},  // no infinity in JSON
      {nullptr, &number, nullptr, L"nan", ScalarSource::Error::Number, nullptr},
      {nullptr, &empty, &flag, L"1", ScalarSource::Error::None, "true"},  // an empty number is not given
      {nullptr, nullptr, &flag, L"0", ScalarSource::Error::None, "false"},
      {nullptr, nullptr, &flag, L"True", ScalarSource::Error::Boolean, nullptr},
      {nullptr, nullptr, &flag, L"", ScalarSource::Error::Boolean, nullptr},
      {nullptr, &empty, &empty, L"1", ScalarSource::Error::Type, nullptr},
      {nullptr, nullptr, nullptr, L"1", ScalarSource::Error::Type, nullptr},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << "expanded '" << c.expanded << "'");
    ScalarSource source;
    source.choose(c.stringValue, c.numberValue, c.boolValue);
    picojson::value made;
    EXPECT_EQ(source.convert(c.expanded, made), c.error);
    if (c.json) {
      EXPECT_EQ(made.serialize(), c.json);
    }
  }
}

}  // namespace
}  // namespace api::json::helpers
