// The benchmark's reference: the same work as the interpreter's script, done by
// calling TinyXML and the XPath evaluator directly.
//   reference.exe <document> <queries, one a line> <output>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include <tinyxml.h>

#include "xpath/xpath.h"

int wmain(int argc, wchar_t** argv) {
  if (argc != 4) return 2;
  std::FILE* in = _wfopen(argv[1], L"rb");
  if (!in) return 3;
  TiXmlDocument document;
  const bool loaded = document.LoadFile(in);
  std::fclose(in);
  if (!loaded || !document.RootElement()) return 4;

  std::vector<std::string> queries;
  std::ifstream list(argv[2]);
  for (std::string line; std::getline(list, line);)
    if (!line.empty()) queries.push_back(line);
  size_t total = 0;
  for (const std::string& query : queries) {
    auto value = xpath::evaluateString(query, *document.RootElement());
    if (!value) return 5;
    total += value->size();
  }

  std::FILE* out = _wfopen(argv[3], L"w");
  if (!out) return 6;
  const bool saved = document.SaveFile(out);
  std::fclose(out);
  std::printf("%zu queries, %zu characters\n", queries.size(), total);
  return saved ? 0 : 7;
}
