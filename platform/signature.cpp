#include "platform/signature.h"

#include <windows.h>
#include <wincrypt.h>
#include <wintrust.h>
#include <softpub.h>
#include <mscat.h>

#include <type_traits>
#include <vector>

#include "platform/injected_error.h"
#include "platform/owned.h"
#include "platform/system_library.h"

namespace platform {
namespace {

// The calls of wintrust, loaded from the system folder on first use.
struct Wintrust {
  decltype(&WinVerifyTrust) verifyTrust;
  decltype(&CryptCATAdminAcquireContext) acquireContext;
  decltype(&CryptCATAdminReleaseContext) releaseContext;
  decltype(&CryptCATAdminCalcHashFromFileHandle) calcHash;
  decltype(&CryptCATAdminEnumCatalogFromHash) enumCatalog;
  decltype(&CryptCATAdminReleaseCatalogContext) releaseCatalog;
  decltype(&CryptCATCatalogInfoFromContext) catalogInfo;

  bool loaded() const {
    return verifyTrust && acquireContext && releaseContext && calcHash && enumCatalog && releaseCatalog &&
           catalogInfo;
  }
};

const Wintrust& wintrust() {
  static const Wintrust calls = [] {
    uint32_t error = 0;
    const auto find = [&error](auto& function, const char* name) {
      function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(systemExport(L"wintrust.dll", name, error));
    };
    Wintrust c{};
    find(c.verifyTrust, "WinVerifyTrust");
    find(c.acquireContext, "CryptCATAdminAcquireContext");
    find(c.releaseContext, "CryptCATAdminReleaseContext");
    find(c.calcHash, "CryptCATAdminCalcHashFromFileHandle");
    find(c.enumCatalog, "CryptCATAdminEnumCatalogFromHash");
    find(c.releaseCatalog, "CryptCATAdminReleaseCatalogContext");
    find(c.catalogInfo, "CryptCATCatalogInfoFromContext");
    return c;
  }();
  return calls;
}

}  // namespace

// An admin context exists only when wintrust was loaded.
void CatalogAdminTraits::close(Handle h) { wintrust().releaseContext(h, 0); }

namespace {

constexpr DWORD kEmbeddedFlags = WTD_CACHE_ONLY_URL_RETRIEVAL | WTD_HASH_ONLY_FLAG;  // 0x1200
constexpr DWORD kCatalogFlags = WTD_CACHE_ONLY_URL_RETRIEVAL | WTD_SAFER_FLAG;       // 0x1100

LONG verify(WINTRUST_DATA& data) {
  if (failedOnPurpose(Call::Signature)) return static_cast<LONG>(GetLastError());
  GUID action = WINTRUST_ACTION_GENERIC_VERIFY_V2;
  data.cbStruct = sizeof data;
  data.dwUIChoice = WTD_UI_NONE;
  data.fdwRevocationChecks = WTD_REVOKE_NONE;
  data.dwStateAction = WTD_STATEACTION_IGNORE;
  return wintrust().verifyTrust(nullptr, &action, &data);
}

// The catalogs that hold a hash, one at a time; the current one is released
// when the walk moves on or ends.
class CatalogWalk {
 public:
  CatalogWalk(HCATADMIN admin, std::vector<BYTE>& hash) : admin_(admin), hash_(hash) { advance(); }
  CatalogWalk(const CatalogWalk&) = delete;
  CatalogWalk& operator=(const CatalogWalk&) = delete;
  ~CatalogWalk() {
    if (catalog_) wintrust().releaseCatalog(admin_, catalog_, 0);
  }
  HCATINFO current() const { return catalog_; }
  // Passing the current catalog as the previous one releases it and hands back the next.
  void advance() {
    if (failedOnPurpose(Call::Signature)) {  // the walk ends, as when no catalog is left
      if (catalog_) wintrust().releaseCatalog(admin_, catalog_, 0);
      catalog_ = nullptr;
      return;
    }
    catalog_ = wintrust().enumCatalog(admin_, hash_.data(), static_cast<DWORD>(hash_.size()), 0,
                                                catalog_ ? &catalog_ : nullptr);
  }

 private:
  HCATADMIN admin_;
  std::vector<BYTE>& hash_;
  HCATINFO catalog_ = nullptr;
};

}  // namespace

bool hasEmbeddedSignature(const std::wstring& path) {
  if (!wintrust().loaded()) return false;
  WINTRUST_FILE_INFO file{};
  file.cbStruct = sizeof file;
  file.pcwszFilePath = path.c_str();
  WINTRUST_DATA data{};
  data.dwUnionChoice = WTD_CHOICE_FILE;
  data.pFile = &file;
  data.dwProvFlags = kEmbeddedFlags;
  return verify(data) == 0;
}

bool isSignedInCatalog(const std::wstring& path) {
  const Wintrust& calls = wintrust();
  if (!calls.loaded()) return false;
  if (failedOnPurpose(Call::Open)) return false;
  UniqueHandle file(
      CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.valid()) return false;
  DWORD size = 0;
  if (failedOnPurpose(Call::Signature)) return false;
  if (!calls.calcHash(file.get(), &size, nullptr, 0) &&
      GetLastError() != ERROR_INSUFFICIENT_BUFFER)
    return false;
  std::vector<BYTE> hash(size);
  if (size == 0 || failedOnPurpose(Call::Signature) || !calls.calcHash(file.get(), &size, hash.data(), 0))
    return false;
  hash.resize(size);
  UniqueCatalogAdmin admin;
  if (failedOnPurpose(Call::Signature)) return false;
  if (!calls.acquireContext(admin.put(), nullptr, 0)) {
    admin.release();  // the failed call may leave anything behind
    return false;
  }
  for (CatalogWalk walk(admin.get(), hash); walk.current(); walk.advance()) {
    CATALOG_INFO info{};
    info.cbStruct = sizeof info;
    if (failedOnPurpose(Call::Signature) || !calls.catalogInfo(walk.current(), &info, 0)) break;
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
    if (verify(data) == 0) return true;
  }
  return false;
}

}  // namespace platform
