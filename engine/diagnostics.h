#pragma once
// Where preparation reports what it finds wrong with a script. The
// interpreter logs the first error and stops; the checker collects every
// problem with its place in the file and goes on.
#include <string>

class TiXmlBase;

namespace engine {

enum class Severity { Error, Warning };

class Diagnostics {
 public:
  virtual ~Diagnostics() = default;
  // `message` is the interpreter's log line; `detail` says more where the
  // line does not (which attribute, which value), or is empty. `where` is the
  // node at fault, or nullptr. Returns true to go on preparing.
  virtual bool report(Severity severity, const TiXmlBase* where, const std::wstring& message,
                      const std::wstring& detail) = 0;
  // True when preparing only to check: nothing outside the document is
  // touched (no trace file is opened) and nothing runs.
  virtual bool checkOnly() const { return false; }
};

// The interpreter's: every problem is logged, and an error stops preparation.
class LogDiagnostics final : public Diagnostics {
 public:
  bool report(Severity severity, const TiXmlBase* where, const std::wstring& message,
              const std::wstring& detail) override;
};

}  // namespace engine
