#pragma once
// The services family: start, stop, delete and create services through the
// service control manager. Each class's code is in the file named after its tag.
#include <cstdint>
#include <string>

#include "engine/function.h"
#include "engine/registry.h"
#include "platform/owned.h"
#include "platform/services.h"

namespace api::services {

using engine::FunctionRetError;
using engine::Need;
using engine::Parameters;
using platform::UniqueServiceHandle;

// The lines of the steps; the leading %s is the tag.
constexpr engine::LogLine kCannotOpenScm{L"%s cannot open scm"};
constexpr engine::LogLine kCannotOpenService{L"%s cannot open service"};
constexpr engine::LogLine kCannotQueryStatus{L"%s cannot query status"};
constexpr engine::LogLine kCannotQueryStatusAgain{L"%s cannot query status2"};
constexpr engine::LogLine kStateChangeStart{L"%s function called for '%s', after wait for %d ms"};
// A step's line, checked for the tag as its one argument.
using StepLine = engine::CheckedFormat<const wchar_t*>;

// Every service function names its service in `name`.
class ServiceFunction : public FunctionRetError {
 public:
  static const Parameters& parameters();

 protected:
  // Logs the line of a failed step and hands its error on.
  uint32_t failedTo(uint32_t error, StepLine what) const;

  std::wstring name_;
};

// serviceStart and serviceStop: one request, then a poll every 100 ms until
// the service is in the awaited state or `waittime` has run out.
class ServiceStateChange : public ServiceFunction {
 public:
  // What the two functions differ in.
  struct Request {
    platform::ServiceAccess access;       // the right the request needs, besides querying
    platform::ServiceState awaitedState;  // Running or Stopped
    StepLine already;                     // the line when the service is in that state already
    StepLine refused;                     // the line when the request fails
    uint32_t (*send)(const UniqueServiceHandle&);
    const engine::TagDoc& doc;
  };

  explicit ServiceStateChange(const Request& request) : request_(request) {}
  void execute() override;
  static const Parameters& parameters();

 private:
  uint32_t change(const std::wstring& name) const;

  const Request& request_;
  int32_t waitTime_ = 0;
};

// serviceStart and serviceStop.
extern const ServiceStateChange::Request kServiceStart;
extern const ServiceStateChange::Request kServiceStop;

class FunctionServiceDelete : public ServiceFunction {
 public:
  void execute() override;
  static const engine::TagDoc doc;

 private:
  uint32_t remove(const std::wstring& name) const;
};

class FunctionServiceCreate : public ServiceFunction {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring displayName_, path_, group_, dependencies_;
  int32_t type_ = 0, startType_ = 0, errorControl_ = 0;
};

}  // namespace api::services
