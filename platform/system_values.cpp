// The project's codes are Windows' own: checked against its headers whenever
// the Windows build compiles.
#include <windows.h>

#include "platform/errors.h"
#include "platform/registry.h"
#include "platform/services.h"

namespace platform {

static_assert(kErrorFileNotFound == ERROR_FILE_NOT_FOUND);
static_assert(kErrorPathNotFound == ERROR_PATH_NOT_FOUND);
static_assert(kErrorAccessDenied == ERROR_ACCESS_DENIED);
static_assert(kErrorInvalidHandle == ERROR_INVALID_HANDLE);
static_assert(kErrorInvalidData == ERROR_INVALID_DATA);
static_assert(kErrorNotSameDevice == ERROR_NOT_SAME_DEVICE);
static_assert(kErrorNoMoreFiles == ERROR_NO_MORE_FILES);
static_assert(kErrorGenFailure == ERROR_GEN_FAILURE);
static_assert(kErrorFileExists == ERROR_FILE_EXISTS);
static_assert(kErrorInvalidParameter == ERROR_INVALID_PARAMETER);
static_assert(kErrorBufferOverflow == ERROR_BUFFER_OVERFLOW);
static_assert(kErrorDiskFull == ERROR_DISK_FULL);
static_assert(kErrorNotImplemented == ERROR_CALL_NOT_IMPLEMENTED);
static_assert(kErrorAlreadyExists == ERROR_ALREADY_EXISTS);
static_assert(kErrorFilenameTooLong == ERROR_FILENAME_EXCED_RANGE);
static_assert(kErrorWaitTimeout == WAIT_TIMEOUT);
static_assert(kErrorNoMoreItems == ERROR_NO_MORE_ITEMS);
static_assert(kErrorProcessAborted == ERROR_PROCESS_ABORTED);
static_assert(kErrorNotFound == ERROR_NOT_FOUND);
static_assert(kErrorUnsupportedType == ERROR_UNSUPPORTED_TYPE);
static_assert(kErrorDecryptionFailed == ERROR_DECRYPTION_FAILED);

constexpr uint32_t code(ValueType type) { return static_cast<uint32_t>(type); }
static_assert(code(ValueType::None) == REG_NONE && code(ValueType::Sz) == REG_SZ);
static_assert(code(ValueType::ExpandSz) == REG_EXPAND_SZ && code(ValueType::Binary) == REG_BINARY);
static_assert(code(ValueType::Dword) == REG_DWORD && code(ValueType::DwordBigEndian) == REG_DWORD_BIG_ENDIAN);
static_assert(code(ValueType::Link) == REG_LINK && code(ValueType::MultiSz) == REG_MULTI_SZ);
static_assert(code(ValueType::ResourceList) == REG_RESOURCE_LIST && code(ValueType::Qword) == REG_QWORD);

constexpr uint32_t code(ServiceState state) { return static_cast<uint32_t>(state); }
static_assert(code(ServiceState::Stopped) == SERVICE_STOPPED && code(ServiceState::Running) == SERVICE_RUNNING);
static_assert(code(ServiceState::StartPending) == SERVICE_START_PENDING);
static_assert(code(ServiceState::StopPending) == SERVICE_STOP_PENDING);
static_assert(code(ServiceState::ContinuePending) == SERVICE_CONTINUE_PENDING);
static_assert(code(ServiceState::PausePending) == SERVICE_PAUSE_PENDING &&
              code(ServiceState::Paused) == SERVICE_PAUSED);

}  // namespace platform
