// Reads back, through the same Windows calls Explorer, PowerShell and deployment
// tools use, the version resource and the application manifest of each program
// the release ships: those in the build directory, or in UPKEEP_PROGRAM_DIR when
// it is set (the package test points it at the unpacked archive).
#include <windows.h>
#include <objbase.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace {

const wchar_t* const kPrograms[] = {L"upkeep.exe", L"upkeep-password.exe", L"upkeep-check.exe"};

std::wstring programPath(const std::wstring& file) {
  wchar_t directory[MAX_PATH] = {};
  const DWORD length = GetEnvironmentVariableW(L"UPKEEP_PROGRAM_DIR", directory, MAX_PATH);
  return (length > 0 && length < MAX_PATH ? std::wstring(directory) : std::wstring(UPKEEP_BUILD_DIR)) + L"\\" + file;
}

std::vector<BYTE> versionInfo(const std::wstring& path) {
  DWORD ignored = 0;
  const DWORD size = GetFileVersionInfoSizeW(path.c_str(), &ignored);
  std::vector<BYTE> info(size);
  if (size == 0 || !GetFileVersionInfoW(path.c_str(), 0, size, info.data())) info.clear();
  return info;
}

std::wstring guidText(const GUID& id) {
  wchar_t text[40] = {};
  StringFromGUID2(id, text, 40);
  return text;
}

// A string of the version resource, found through its first translation as
// Explorer and .NET's FileVersionInfo find it; empty when it cannot be read.
std::wstring stringValue(const std::vector<BYTE>& info, const std::wstring& name) {
  struct Translation {
    WORD language, codePage;
  }* translation = nullptr;
  UINT size = 0;
  if (!VerQueryValueW(info.data(), L"\\VarFileInfo\\Translation", reinterpret_cast<void**>(&translation), &size) ||
      size < sizeof(Translation))
    return L"";
  wchar_t key[128] = {};
  swprintf(key, 128, L"\\StringFileInfo\\%04x%04x\\%ls", translation->language, translation->codePage, name.c_str());
  wchar_t* value = nullptr;
  if (!VerQueryValueW(info.data(), key, reinterpret_cast<void**>(&value), &size) || !value) return L"";
  return value;
}

// The project version as the four numbers of the fixed part: "1.1" is 1.1.0.0.
std::vector<unsigned> versionNumbers(const std::wstring& text) {
  std::vector<unsigned> numbers(4, 0);
  swscanf(text.c_str(), L"%u.%u.%u.%u", &numbers[0], &numbers[1], &numbers[2], &numbers[3]);
  return numbers;
}

// The compatibility answer as current Windows and Wine lay it out: MinGW's winnt.h
// still has the older element without maxversiontested.
struct CompatibilityElement {
  GUID id;
  ACTCTX_COMPATIBILITY_ELEMENT_TYPE type;
  ULONGLONG maxVersionTested;
};
struct CompatibilityInformation {
  DWORD count;
  CompatibilityElement elements[1];
};

class ShippedProgram : public testing::TestWithParam<const wchar_t*> {
 protected:
  std::wstring file() const { return GetParam(); }
  std::wstring path() const { return programPath(file()); }
};

TEST_P(ShippedProgram, NamesTheProductAndTheProjectVersion) {
  const auto info = versionInfo(path());
  ASSERT_FALSE(info.empty()) << "no version resource, error " << GetLastError();
  EXPECT_EQ(stringValue(info, L"FileVersion"), UPKEEP_VERSION);
  EXPECT_EQ(stringValue(info, L"ProductVersion"), UPKEEP_VERSION);
  EXPECT_EQ(stringValue(info, L"ProductName"), L"Upkeep");
  EXPECT_EQ(stringValue(info, L"OriginalFilename"), file());
  EXPECT_NE(stringValue(info, L"FileDescription"), L"");
}

TEST_P(ShippedProgram, FixedVersionIsTheSameVersion) {
  const auto info = versionInfo(path());
  ASSERT_FALSE(info.empty());
  VS_FIXEDFILEINFO* fixed = nullptr;
  UINT size = 0;
  ASSERT_TRUE(VerQueryValueW(info.data(), L"\\", reinterpret_cast<void**>(&fixed), &size));
  ASSERT_GE(size, sizeof(VS_FIXEDFILEINFO));
  EXPECT_EQ(fixed->dwSignature, 0xFEEF04BDu);
  EXPECT_EQ(fixed->dwFileType, static_cast<DWORD>(VFT_APP));
  const auto expected = versionNumbers(UPKEEP_VERSION);
  const std::vector<unsigned> file = {HIWORD(fixed->dwFileVersionMS), LOWORD(fixed->dwFileVersionMS),
                                      HIWORD(fixed->dwFileVersionLS), LOWORD(fixed->dwFileVersionLS)};
  const std::vector<unsigned> product = {HIWORD(fixed->dwProductVersionMS), LOWORD(fixed->dwProductVersionMS),
                                         HIWORD(fixed->dwProductVersionLS), LOWORD(fixed->dwProductVersionLS)};
  EXPECT_EQ(file, expected);
  EXPECT_EQ(product, expected);
}

TEST_P(ShippedProgram, CarriesTheManifestWindowsReadsAtStart) {
  HMODULE module = LoadLibraryExW(path().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
  ASSERT_NE(module, nullptr) << GetLastError();
  const bool found = FindResourceW(module, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24)) != nullptr;  // RT_MANIFEST
  FreeLibrary(module);
  ASSERT_TRUE(found);

  // Parsed by the system's own activation-context reader, as when the program starts.
  const std::wstring source = path();
  ACTCTXW request = {};
  request.cbSize = sizeof(request);
  request.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID;
  request.lpSource = source.c_str();
  request.lpResourceName = MAKEINTRESOURCEW(1);
  HANDLE context = CreateActCtxW(&request);
  ASSERT_NE(context, INVALID_HANDLE_VALUE) << "manifest refused, error " << GetLastError();

  ACTIVATION_CONTEXT_RUN_LEVEL_INFORMATION runLevel = {};
  SIZE_T written = 0;
  EXPECT_TRUE(QueryActCtxW(0, context, nullptr, RunlevelInformationInActivationContext, &runLevel,
                           sizeof(runLevel), &written));
  EXPECT_EQ(runLevel.RunLevel, ACTCTX_RUN_LEVEL_AS_INVOKER);
  EXPECT_EQ(runLevel.UiAccess, 0u);

  BYTE buffer[1024] = {};
  EXPECT_TRUE(QueryActCtxW(0, context, nullptr, CompatibilityInformationInActivationContext, buffer, sizeof(buffer),
                           &written));
  const auto* compatibility = reinterpret_cast<CompatibilityInformation*>(buffer);
  ASSERT_LE(offsetof(CompatibilityInformation, elements) + compatibility->count * sizeof(CompatibilityElement),
            written);
  std::set<std::wstring> systems;
  for (DWORD i = 0; i < compatibility->count; ++i) {
    if (compatibility->elements[i].type != ACTCTX_COMPATIBILITY_ELEMENT_TYPE_OS) continue;
    systems.insert(guidText(compatibility->elements[i].id));
  }
  const std::set<std::wstring> expected = {
      L"{35138B9A-5D96-4FBD-8E2D-A2440225F93A}",  // Windows 7
      L"{4A2F28E3-53B9-4441-BA9C-D69D4A4A6E38}",  // Windows 8
      L"{1F676C76-80E1-4239-95BB-83D0F6D0DA78}",  // Windows 8.1
      L"{8E0F7A12-BFB3-4FE8-B9A5-48FD50A15A9A}",  // Windows 10 and 11
  };
  EXPECT_EQ(systems, expected);

  wchar_t setting[16] = {};
  EXPECT_TRUE(QueryActCtxSettingsW(0, context, L"http://schemas.microsoft.com/SMI/2016/WindowsSettings",
                                   L"longPathAware", setting, 16, &written))
      << GetLastError();
  EXPECT_STREQ(setting, L"true");
  ReleaseActCtx(context);
}

INSTANTIATE_TEST_SUITE_P(Release, ShippedProgram, testing::ValuesIn(kPrograms),
                         [](const testing::TestParamInfo<const wchar_t*>& info) {
                           std::string name;
                           for (const wchar_t* c = info.param; *c && *c != L'.'; ++c)
                             if (iswalnum(*c)) name += static_cast<char>(*c);
                           return name;
                         });

TEST(ShippedPrograms, EachDescribesItself) {
  std::set<std::wstring> descriptions;
  for (const wchar_t* file : kPrograms) descriptions.insert(stringValue(versionInfo(programPath(file)), L"FileDescription"));
  EXPECT_EQ(descriptions.size(), std::size(kPrograms));
}

}  // namespace
