// picojson alone: parse a JSON file and write it back compactly, the work an
// interpreter's jsonOpen + jsonSave does, without the interpreter.
//   picojson_reference.exe <in> <out> [buffer|stream]
// "buffer" reads the whole file, parses the text and writes the serialized
// text in one call; "stream" uses picojson's stream operators on file streams.
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include <picojson.h>

int wmain(int argc, wchar_t** argv) {
  if (argc < 3) return 2;
  const bool stream = argc > 3 && std::wstring(argv[3]) == L"stream";
  picojson::value value;
  if (stream) {
    std::ifstream in(argv[1]);
    in >> value;
    if (!picojson::get_last_error().empty()) return 1;
    std::ofstream out(argv[2]);
    out << value;
    return 0;
  }
  FILE* in = _wfopen(argv[1], L"rt");
  if (!in) return 1;
  std::string text;
  char buffer[1 << 16];
  for (size_t got; (got = std::fread(buffer, 1, sizeof buffer, in)) > 0;) text.append(buffer, got);
  std::fclose(in);
  const std::string error = picojson::parse(value, text);
  if (!error.empty()) return 1;
  text = value.serialize();
  FILE* out = _wfopen(argv[2], L"wt");
  if (!out) return 1;
  std::fwrite(text.data(), 1, text.size(), out);
  std::fclose(out);
  return 0;
}
