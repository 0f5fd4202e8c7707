/* The floor for regWrite + regRead: the registry calls the interpreter makes
   for one pair, made directly N times (N = first argument, default 10,000) on
   HKCU\Software\UpkeepBench: open for setting, set the REG_SZ value `v` to the
   pair's number, close; open for querying, query the size, query the data,
   close. Prints the last value read. */
#include <stdio.h>
#include <stdlib.h>
#include <wchar.h>
#include <windows.h>

int wmain(int argc, wchar_t** argv) {
  const long pairs = argc > 1 ? wcstol(argv[1], NULL, 10) : 10000;
  const wchar_t* path = L"Software\\UpkeepBench";
  wchar_t text[32], back[32] = L"";
  for (long i = 0; i < pairs; ++i) {
    HKEY key;
    swprintf(text, 32, L"%ld", i);
    if (RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_SET_VALUE, &key) != ERROR_SUCCESS) return 1;
    RegSetValueExW(key, L"v", 0, REG_SZ, (const BYTE*)text, (DWORD)((wcslen(text) + 1) * sizeof(wchar_t)));
    RegCloseKey(key);
    if (RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS) return 1;
    DWORD type = 0, size = 0;
    RegQueryValueExW(key, L"v", NULL, NULL, NULL, &size);
    size = sizeof back;
    RegQueryValueExW(key, L"v", NULL, &type, (BYTE*)back, &size);
    RegCloseKey(key);
  }
  wprintf(L"last %ls\n", back);
  return 0;
}
