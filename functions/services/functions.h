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

// Every service function names its service in `name`.
class ServiceFunction : public FunctionRetError {
 public:
  static const Parameters& parameters();

 protected:
  // Logs "<tag> <what>" for a failed step and hands its error on.
  uint32_t failedTo(uint32_t error, const wchar_t* what) const;
  // Records `error` (258 reads "timeout") and logs the end line.
  void finishWith(uint32_t error);

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
    const wchar_t* already;  // the line when the service is in that state already
    const wchar_t* refused;  // the line when the request fails
    uint32_t (*send)(const UniqueServiceHandle&);
  };

  explicit ServiceStateChange(const Request& request) : request_(request) {}
  void execute() override;
  static const Parameters& parameters();

 private:
  uint32_t change(const std::wstring& name) const;

  const Request& request_;
  int32_t waitTime_ = 0;
};

class FunctionServiceStart : public ServiceStateChange {
 public:
  FunctionServiceStart();
  static const engine::TagDoc doc;
};

class FunctionServiceStop : public ServiceStateChange {
 public:
  FunctionServiceStop();
  static const engine::TagDoc doc;
};

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
