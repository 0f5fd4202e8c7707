#pragma once
// What the checker sees in a script that a run cannot refuse but an attacker
// could use: programs and DLLs named without a full path (Windows searches
// folders others may write to), plain-text passwords, a download over plain
// HTTP that is run without a signature check, and a wait for or a kill of the
// interpreter itself.
#include <map>
#include <string>
#include <vector>

class TiXmlElement;

namespace engine {

struct Risk {
  const TiXmlElement* where;
  std::wstring text;
};

class RiskChecks {
 public:
  // Called for every function element, in the order of the file.
  void visit(const TiXmlElement& element, std::vector<Risk>& out);

 private:
  void checkRun(const TiXmlElement& element, const wchar_t* what, std::vector<Risk>& out);

  std::map<std::wstring, int> unverified_;  // file downloaded over http:// (lower case) -> line of the download
};

}  // namespace engine
