// Reference for the preparation benchmark: TinyXML alone parsing a script.
#include <windows.h>

#include <cstdio>
#include <string>

#include <tinyxml.h>

int wmain(int argc, wchar_t** argv) {
  if (argc != 2) return 2;
  FILE* f = _wfopen(argv[1], L"rb");
  if (!f) return 2;
  std::string text;
  char buffer[1 << 16];
  for (size_t n; (n = fread(buffer, 1, sizeof buffer, f)) > 0;) text.append(buffer, n);
  fclose(f);
  LARGE_INTEGER start, end, frequency;
  QueryPerformanceFrequency(&frequency);
  QueryPerformanceCounter(&start);
  TiXmlDocument document;
  document.Parse(text.c_str(), nullptr, TIXML_ENCODING_UTF8);
  QueryPerformanceCounter(&end);
  std::printf("%.1f\n", 1000.0 * double(end.QuadPart - start.QuadPart) / double(frequency.QuadPart));
  return document.Error() ? 1 : 0;
}
