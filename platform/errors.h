#pragma once
// The error codes the program names, with the values Windows gives them. A
// failed call reports its code as a uint32_t; these are the ones the code
// compares with or fails with itself.
#include <cstdint>

namespace platform {

constexpr uint32_t kErrorFileNotFound = 2;
constexpr uint32_t kErrorPathNotFound = 3;
constexpr uint32_t kErrorAccessDenied = 5;
constexpr uint32_t kErrorInvalidHandle = 6;
constexpr uint32_t kErrorInvalidData = 13;
constexpr uint32_t kErrorNotSameDevice = 17;
constexpr uint32_t kErrorNoMoreFiles = 18;
constexpr uint32_t kErrorGenFailure = 31;
constexpr uint32_t kErrorFileExists = 80;
constexpr uint32_t kErrorInvalidParameter = 87;
constexpr uint32_t kErrorBufferOverflow = 111;  // also: binary registry text with a character that is no hex digit
constexpr uint32_t kErrorDiskFull = 112;
// What every call of the native stand-in answers: the system is not there.
constexpr uint32_t kErrorNotImplemented = 120;
constexpr uint32_t kErrorAlreadyExists = 183;
constexpr uint32_t kErrorFilenameTooLong = 206;
constexpr uint32_t kErrorWaitTimeout = 258;  // a wait that ran out of time
constexpr uint32_t kErrorNoMoreItems = 259;
constexpr uint32_t kErrorProcessAborted = 1067;
constexpr uint32_t kErrorNotFound = 1168;
constexpr uint32_t kErrorUnsupportedType = 1630;
constexpr uint32_t kErrorDecryptionFailed = 6001;

}  // namespace platform
