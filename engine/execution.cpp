#include "engine/engine.h"

#include "engine/log.h"
#include "engine/log_lines.h"
#include "engine/run_record.h"
#include "platform/changes.h"
#include "platform/clock.h"

namespace engine {
namespace {

// After a function (or a handler list ending with it): its successor, or the
// successor of the nearest owner that has one.
FunctionBase* continuation(FunctionBase* function) {
  for (FunctionBase* f = function; f; f = f->parent)
    if (f->next) return f->next.get();
  return nullptr;
}

}  // namespace

FunctionBase* Engine::label(const std::wstring& name) const {
  auto it = labels_.find(name);
  return it == labels_.end() ? nullptr : it->second.function;
}

void Engine::run() {
  for (FunctionBase* current = head_.get(); current;) current = step(current);
}

FunctionBase* Engine::step(FunctionBase* f) {
  if (!recordingRun()) return next(f);
  runtime_.expansions.clear();
  runtime_.recording = true;
  runtime_.foundNothingToChange = false;
  const uint64_t changesBefore = platform::changesMade();
  const uint32_t started = platform::tickCount();
  FunctionBase* following = next(f);
  const bool changed = platform::changesMade() != changesBefore && !runtime_.foundNothingToChange;
  recordFunctionEnd(*f, started, changed);
  runtime_.recording = false;
  return following;
}

FunctionBase* Engine::next(FunctionBase* f) {
  if (const std::wstring* target = f->jumpTarget()) {
    log(kGoTo, target->c_str());
    return label(*target);
  }
  f->execute();

  if (f->kind() == FunctionKind::Bool) {
    auto* b = static_cast<FunctionRetBool*>(f);
    if (!b->getResult() && b->falseHandler) {
      log(kEnterOnFalse);
      return b->falseHandler.get();
    }
    if (b->getResult() && b->trueHandler) {
      log(kEnterOnTrue);
      return b->trueHandler.get();
    }
  } else if (f->kind() == FunctionKind::Error) {
    auto* e = static_cast<FunctionRetError*>(f);
    if (!e->hasError()) {
      if (e->successHandler) {
        log(kEnterOnSuccess);
        return e->successHandler.get();
      }
      return continuation(f);
    }
    const std::wstring error = e->getErrorText();
    runtime_.variables.set(L"error", error);
    if (auto it = e->errorHandlers.find(error); it != e->errorHandlers.end()) {
      log(kEnterOnErrorSpec, error.c_str());
      return it->second.get();
    }
    if (e->errorHandler) {
      log(kEnterOnError, error.c_str());
      return e->errorHandler.get();
    }
    if (!runtime_.errorTarget.empty()) {
      log(kEnterOnErrorGoTo, error.c_str());
      return label(runtime_.errorTarget);
    }
  }
  return continuation(f);
}

void Engine::reset() {
  runtime_.impersonation.reset();
  labels_.clear();
  runtime_.variables.reset();
  runtime_.errorTarget.clear();
  runtime_.handles.cleanUp();
  head_.reset();
  setTraceFile(L"");
}

}  // namespace engine
