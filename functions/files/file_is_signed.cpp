#include <windows.h>
#include <wincrypt.h>
#include <wintrust.h>
#include <softpub.h>
#include <mscat.h>

#include <vector>

#include "engine/log.h"
#include "functions/files/functions.h"
#include "platform/file_system.h"

namespace api::files {
namespace {

constexpr DWORD kEmbeddedFlags = WTD_CACHE_ONLY_URL_RETRIEVAL | WTD_HASH_ONLY_FLAG;  // 0x1200
constexpr DWORD kCatalogFlags = WTD_CACHE_ONLY_URL_RETRIEVAL | WTD_SAFER_FLAG;       // 0x1100

LONG verify(WINTRUST_DATA& data) {
  GUID action = WINTRUST_ACTION_GENERIC_VERIFY_V2;
  data.cbStruct = sizeof data;
  data.dwUIChoice = WTD_UI_NONE;
  data.fdwRevocationChecks = WTD_REVOKE_NONE;
  data.dwStateAction = WTD_STATEACTION_IGNORE;
  return WinVerifyTrust(nullptr, &action, &data);
}

bool hasEmbeddedSignature(const std::wstring& path) {
  WINTRUST_FILE_INFO file{};
  file.cbStruct = sizeof file;
  file.pcwszFilePath = path.c_str();
  WINTRUST_DATA data{};
  data.dwUnionChoice = WTD_CHOICE_FILE;
  data.pFile = &file;
  data.dwProvFlags = kEmbeddedFlags;
  return verify(data) == 0;
}

// Releases the catalog administrator context on every path out.
struct CatalogAdmin {
  HCATADMIN handle = nullptr;
  ~CatalogAdmin() {
    if (handle) CryptCATAdminReleaseContext(handle, 0);
  }
};

// System files are signed through a security catalog holding their hash.
bool isSignedInCatalog(const std::wstring& path) {
  platform::UniqueHandle file(
      CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.valid()) return false;
  DWORD size = 0;
  if (!CryptCATAdminCalcHashFromFileHandle(file.get(), &size, nullptr, 0) &&
      GetLastError() != ERROR_INSUFFICIENT_BUFFER)
    return false;
  std::vector<BYTE> hash(size);
  if (size == 0 || !CryptCATAdminCalcHashFromFileHandle(file.get(), &size, hash.data(), 0)) return false;
  CatalogAdmin admin;
  if (!CryptCATAdminAcquireContext(&admin.handle, nullptr, 0)) {
    admin.handle = nullptr;
    return false;
  }
  HCATINFO catalog = CryptCATAdminEnumCatalogFromHash(admin.handle, hash.data(), size, 0, nullptr);
  bool signedFile = false;
  while (catalog) {
    CATALOG_INFO info{};
    info.cbStruct = sizeof info;
    if (!CryptCATCatalogInfoFromContext(catalog, &info, 0)) break;
    WINTRUST_CATALOG_INFO member{};
    member.cbStruct = sizeof member;
    member.pcwszCatalogFilePath = info.wszCatalogFile;
    member.pcwszMemberFilePath = path.c_str();
    member.hMemberFile = file.get();
    member.pbCalculatedFileHash = hash.data();
    member.cbCalculatedFileHash = size;
    WINTRUST_DATA data{};
    data.dwUnionChoice = WTD_CHOICE_CATALOG;
    data.pCatalog = &member;
    data.dwProvFlags = kCatalogFlags;
    if (verify(data) == 0) {
      signedFile = true;
      break;
    }
    // Passing the current catalog as the previous one hands it back.
    catalog = CryptCATAdminEnumCatalogFromHash(admin.handle, hash.data(), size, 0, &catalog);
  }
  if (catalog) CryptCATAdminReleaseCatalogContext(admin.handle, catalog, 0);
  return signedFile;
}

}  // namespace

void FunctionFileIsSigned::execute() {
  const std::wstring path = expand(path_);
  engine::log(L"fileIsSigned function called for %s", path.c_str());
  finish(hasEmbeddedSignature(path) || isSignedInCatalog(path));
}

}  // namespace api::files
