// upkeep-password.exe PASSWORD: prints the enciphered hexadecimal form of a
// password, for attributes that accept passwords in enciphered form.
#include <cstdio>
#include <string>

#include "engine/cipher_text.h"
#include "platform/system_library.h"
#include "platform/text.h"

int wmain(int argc, wchar_t** argv) {
  platform::restrictLibrarySearch();
  if (argc != 2) {
    std::fputs(
        "Usage: upkeep-password.exe <password>\n"
        "Prints the password enciphered with the interpreter's built-in key, as hexadecimal text.\n",
        stdout);
    return 1;
  }
  // Passwords are deciphered as text in the ANSI code page, so encode them that way.
  std::fputs(platform::toUtf8(engine::encipherToHex(platform::toAnsi(argv[1]))).c_str(), stdout);
  std::fputs("\n", stdout);
  return 0;
}
