#pragma once
// The description of a function's attributes. A function reads its attributes
// through its description, so what a tag accepts cannot drift from what the
// engine can list about it.
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "engine/integer.h"

namespace engine {

class FunctionBase;

// Whether an attribute must be present, and whether it may be empty.
enum class Need { Optional, Present, NonEmpty };

// How an attribute's text is used.
enum class Form {
  Text,      // expanded when the function runs
  Literal,   // taken as written
  Integer,   // read as a number once, at preparation
  Flag,      // true exactly for "true" or "1"
  Handle,    // the name of a handle the function uses, taken as written
  NewHandle, // the name under which the function stores a handle it opens
  Variable,  // the name of a variable, taken as written
  Label,     // the id of a function in the script
  Choice,    // one of a fixed list of values; any other is refused
};

struct Parameter;
// Converts an attribute's text into the function's member; false refuses it
// and leaves the text as it was. A text member takes the text over.
using StoreParameter = bool (*)(FunctionBase&, const Parameter&, std::wstring&);

struct Parameter {
  const wchar_t* name;
  Form form;
  Need need;
  // Stored as if written when the attribute is absent; nullptr: nothing stored.
  const wchar_t* defaultValue = nullptr;
  std::vector<std::wstring> choices;  // Choice: the accepted values, stored as their index
  StoreParameter store = nullptr;     // nullptr: checked here, read by the class's own override
};

using Parameters = std::vector<Parameter>;

// The description of a function without attributes.
inline const Parameters& noParameters() {
  static const Parameters none;
  return none;
}

// A derived class's list followed by its base's.
inline Parameters joined(Parameters own, const Parameters& inherited) {
  own.insert(own.end(), inherited.begin(), inherited.end());
  return own;
}

namespace detail {

template <class>
struct MemberOf;
template <class C, class M>
struct MemberOf<M C::*> {
  using Class = C;
  using Type = M;
};

template <auto member>
auto& field(FunctionBase& f) {
  return static_cast<typename MemberOf<decltype(member)>::Class&>(f).*member;
}

template <auto member>
bool storeText(FunctionBase& f, const Parameter&, std::wstring& value) {
  field<member>(f) = std::move(value);
  return true;
}

template <auto member>
bool storeInteger(FunctionBase& f, const Parameter&, std::wstring& value) {
  field<member>(f) = toInt(value);
  return true;
}

template <auto member>
bool storeFlag(FunctionBase& f, const Parameter&, std::wstring& value) {
  field<member>(f) = value == L"true" || value == L"1";
  return true;
}

template <auto member>
bool storeChoice(FunctionBase& f, const Parameter& p, std::wstring& value) {
  for (size_t i = 0; i < p.choices.size(); ++i) {
    if (p.choices[i] != value) continue;
    field<member>(f) = static_cast<typename MemberOf<decltype(member)>::Type>(i);
    return true;
  }
  return false;
}

}  // namespace detail

// One maker per form, each naming the member the attribute is stored in.
template <auto member>
Parameter text(const wchar_t* name, Need need = Need::Present, const wchar_t* defaultValue = nullptr) {
  return {name, Form::Text, need, defaultValue, {}, &detail::storeText<member>};
}

template <auto member>
Parameter literal(const wchar_t* name, Need need = Need::Present) {
  return {name, Form::Literal, need, nullptr, {}, &detail::storeText<member>};
}

template <auto member>
Parameter handle(const wchar_t* name, Need need = Need::Present) {
  return {name, Form::Handle, need, nullptr, {}, &detail::storeText<member>};
}

template <auto member>
Parameter newHandle(const wchar_t* name, Need need = Need::Present) {
  return {name, Form::NewHandle, need, nullptr, {}, &detail::storeText<member>};
}

template <auto member>
Parameter variable(const wchar_t* name, Need need = Need::Present) {
  return {name, Form::Variable, need, nullptr, {}, &detail::storeText<member>};
}

template <auto member>
Parameter label(const wchar_t* name, Need need = Need::Present) {
  return {name, Form::Label, need, nullptr, {}, &detail::storeText<member>};
}

template <auto member>
Parameter integer(const wchar_t* name, Need need = Need::Present, const wchar_t* defaultValue = nullptr) {
  return {name, Form::Integer, need, defaultValue, {}, &detail::storeInteger<member>};
}

template <auto member>
Parameter flag(const wchar_t* name, Need need = Need::Optional, const wchar_t* defaultValue = L"false") {
  return {name, Form::Flag, need, defaultValue, {}, &detail::storeFlag<member>};
}

// The member is an enumeration (or integer) whose values follow `values`' order.
template <auto member>
Parameter choice(const wchar_t* name, std::vector<std::wstring> values, Need need = Need::Present,
                 const wchar_t* defaultValue = nullptr) {
  return {name, Form::Choice, need, defaultValue, std::move(values), &detail::storeChoice<member>};
}

// An attribute only checked for presence here; the class's override reads it.
inline Parameter checked(const wchar_t* name, Form form, Need need = Need::Present) {
  return {name, form, need, nullptr, {}, nullptr};
}

}  // namespace engine
