#include "platform/download.h"

#include <windows.h>
#include <urlmon.h>

#include "platform/changes.h"
#include "platform/fault.h"
#include "platform/output_file.h"
#include "platform/system_library.h"

namespace platform {
namespace {

// Redirects followed before a download fails with INET_E_REDIRECT_FAILED:
// WinINet's own default. Wine's service follows a redirect loop forever.
constexpr unsigned kMaxRedirects = 5;

// Watches one download through the service's progress reports: stops it after
// too many redirects, and remembers how many bytes arrived of how many the
// server announced. Lives on the stack of the blocking call that uses it.
class DownloadWatch : public IBindStatusCallback {
 public:
  // What the service's own result becomes once the transfer is judged.
  HRESULT outcome(HRESULT result) const {
    if (tooManyRedirects_) return INET_E_REDIRECT_FAILED;
    if (FAILED(result)) return result;
    // A body cut short: Windows' service fails it so, Wine's reports success.
    if (announced_ != 0 && received_ != announced_) return INET_E_DOWNLOAD_FAILURE;
    return result;
  }

  HRESULT STDMETHODCALLTYPE OnProgress(ULONG progress, ULONG progressMax, ULONG status, LPCWSTR) override {
    switch (status) {
      case BINDSTATUS_REDIRECTING: ++redirects_; break;
      case BINDSTATUS_SENDINGREQUEST: ++requests_; break;  // Wine reports a redirect only so
      case BINDSTATUS_BEGINDOWNLOADDATA:
      case BINDSTATUS_DOWNLOADINGDATA:
      case BINDSTATUS_ENDDOWNLOADDATA:
        received_ = progress;
        announced_ = progressMax;
        break;
      default: break;
    }
    tooManyRedirects_ = redirects_ > kMaxRedirects || requests_ > kMaxRedirects + 1;
    return tooManyRedirects_ ? E_ABORT : S_OK;
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = id == IID_IUnknown || id == IID_IBindStatusCallback ? this : nullptr;
    return *object ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE OnStartBinding(DWORD, IBinding*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetPriority(LONG*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE OnLowResource(DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE OnStopBinding(HRESULT, LPCWSTR) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetBindInfo(DWORD*, BINDINFO*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE OnDataAvailable(DWORD, DWORD, FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE OnObjectAvailable(REFIID, IUnknown*) override { return E_NOTIMPL; }

 private:
  unsigned redirects_ = 0, requests_ = 0;
  ULONG received_ = 0, announced_ = 0;
  bool tooManyRedirects_ = false;
};

// The one call into the service, taken from the system folder only: `url`
// into `file`, judged by the watch.
HRESULT fetch(const std::wstring& url, const std::wstring& file) {
  uint32_t error = 0;
  const auto download = systemFunction<decltype(URLDownloadToFileW)>(L"urlmon.dll", "URLDownloadToFileW", error);
  if (!download) return HRESULT_FROM_WIN32(error);
  DownloadWatch watch;
  return watch.outcome(download(nullptr, url.c_str(), file.c_str(), 0, &watch));
}

}  // namespace

int32_t downloadToFile(const std::wstring& url, const std::wstring& file) {
  if (whatIf()) return static_cast<int32_t>(wouldChange(Call::Download, L"download " + url + L" to " + file));
  Replacement replacement;
  uint32_t error = replacement.create(file);
  if (error == 0) error = replacement.file().close();
  if (error != 0) return HRESULT_FROM_WIN32(error);
  // A Windows code fails as the service reports one; an HRESULT is taken as it is.
  const uint32_t fault = injectedFault(Call::Download);
  const HRESULT result = fault ? static_cast<HRESULT>(fault <= 0xFFFF ? HRESULT_FROM_WIN32(fault) : fault)
                               : fetch(url, replacement.name());
  if (FAILED(result)) return result;
  return HRESULT_FROM_WIN32(replacement.putInPlace());
}

}  // namespace platform
