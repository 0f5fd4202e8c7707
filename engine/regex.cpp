#include "engine/regex.h"

#include <boost/regex.hpp>

namespace engine {

struct Regex::Impl {
  boost::wregex expression;
};

Regex::Regex(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
Regex::~Regex() = default;

std::unique_ptr<Regex> Regex::compile(const std::wstring& pattern) {
  try {
    auto impl = std::make_unique<Impl>(Impl{boost::wregex(pattern, boost::regex_constants::ECMAScript)});
    return std::unique_ptr<Regex>(new Regex(std::move(impl)));
  } catch (const std::exception&) {
    return nullptr;
  }
}

std::optional<std::vector<std::wstring>> Regex::match(const std::wstring& text) const {
  try {
    boost::wsmatch found;
    if (!boost::regex_match(text, found, impl_->expression)) return std::nullopt;
    std::vector<std::wstring> groups;
    groups.reserve(found.size());
    for (const auto& group : found) groups.push_back(group.matched ? group.str() : std::wstring());
    return groups;
  } catch (const std::exception&) {
    // Complexity or stack bounds exceeded.
    return std::nullopt;
  }
}

std::optional<bool> Regex::test(const std::wstring& text) const {
  try {
    return boost::regex_match(text, impl_->expression);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

}  // namespace engine
