// upkeep-password.exe PASSWORD: prints the enciphered hexadecimal form of a
// password, for attributes that accept passwords in enciphered form.
#include <windows.h>

#include <cstdio>
#include <string>

#include "engine/cipher_text.h"
#include "platform/text.h"

int wmain(int argc, wchar_t** argv) {
  if (argc != 2) {
    std::fputs(
        "Usage: upkeep-password.exe <password>\n"
        "Prints the password enciphered with the interpreter's built-in key, as hexadecimal text.\n",
        stdout);
    return 1;
  }
  // Passwords are deciphered as text in the ANSI code page, so encode them that way.
  const std::wstring password = argv[1];
  std::string bytes(
      static_cast<size_t>(WideCharToMultiByte(CP_ACP, 0, password.c_str(), -1, nullptr, 0, nullptr, nullptr)), '\0');
  WideCharToMultiByte(CP_ACP, 0, password.c_str(), -1, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
  bytes.pop_back();  // the terminating zero
  std::fputs(platform::toUtf8(engine::encipherToHex(bytes)).c_str(), stdout);
  std::fputs("\n", stdout);
  return 0;
}
