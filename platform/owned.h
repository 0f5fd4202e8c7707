#pragma once
// One owner for every kind of system handle: it closes the handle on every path
// out, moves but never copies, and knows which value means "none". Handles are
// opaque here; only platform/ turns them into the system's own types.
#include <cstdint>
#include <utility>

namespace platform {

template <class Traits>
class Owned {
 public:
  using Handle = typename Traits::Handle;

  Owned() = default;
  explicit Owned(Handle handle) : handle_(handle) {}
  Owned(Owned&& other) noexcept : handle_(other.release()) {}
  Owned& operator=(Owned&& other) noexcept {
    reset(other.release());
    return *this;
  }
  Owned(const Owned&) = delete;
  Owned& operator=(const Owned&) = delete;
  ~Owned() { reset(); }

  bool valid() const { return Traits::valid(handle_); }
  explicit operator bool() const { return valid(); }
  Handle get() const { return handle_; }
  Handle release() { return std::exchange(handle_, Traits::none()); }
  void reset(Handle handle = Traits::none()) {
    if (valid()) Traits::close(handle_);
    handle_ = handle;
  }
  // For calls that hand a new handle back through a pointer: closes the old one first.
  Handle* put() {
    reset();
    return &handle_;
  }

 private:
  Handle handle_ = Traits::none();
};

// Files, processes, threads, tokens, snapshots, events: CloseHandle. Both
// null and INVALID_HANDLE_VALUE mean "none", since the calls disagree.
struct KernelHandleTraits {
  using Handle = void*;
  static Handle none() { return nullptr; }
  static bool valid(Handle h) { return h != nullptr && h != invalid(); }
  static void close(Handle h);
  // INVALID_HANDLE_VALUE.
  static Handle invalid() { return reinterpret_cast<Handle>(intptr_t{-1}); }
};
using UniqueHandle = Owned<KernelHandleTraits>;
// Named for what they hold; closed like any kernel handle.
using UniqueProcess = UniqueHandle;
using UniqueThread = UniqueHandle;
using UniqueToken = UniqueHandle;
using UniqueSnapshot = UniqueHandle;

struct FindHandleTraits {
  using Handle = void*;
  static Handle none() { return KernelHandleTraits::invalid(); }
  static bool valid(Handle h) { return h != none() && h != nullptr; }
  static void close(Handle h);
};
using UniqueFind = Owned<FindHandleTraits>;

// Keys opened or created by the program; the predefined roots are never owned.
struct RegistryKeyTraits {
  using Handle = void*;
  static Handle none() { return nullptr; }
  static bool valid(Handle h) { return h != nullptr; }
  static void close(Handle h);
};
using UniqueKey = Owned<RegistryKeyTraits>;

struct ServiceHandleTraits {
  using Handle = void*;
  static Handle none() { return nullptr; }
  static bool valid(Handle h) { return h != nullptr; }
  static void close(Handle h);
};
using UniqueServiceHandle = Owned<ServiceHandleTraits>;

struct ModuleTraits {
  using Handle = void*;
  static Handle none() { return nullptr; }
  static bool valid(Handle h) { return h != nullptr; }
  static void close(Handle h);
};
using UniqueModule = Owned<ModuleTraits>;

// A file's view mapped into memory: UnmapViewOfFile.
struct MappedViewTraits {
  using Handle = const void*;
  static Handle none() { return nullptr; }
  static bool valid(Handle h) { return h != nullptr; }
  static void close(Handle h);
};
using UniqueView = Owned<MappedViewTraits>;

// A catalog administrator context; released in signature.cpp.
struct CatalogAdminTraits {
  using Handle = void*;
  static Handle none() { return nullptr; }
  static bool valid(Handle h) { return h != nullptr; }
  static void close(Handle h);
};
using UniqueCatalogAdmin = Owned<CatalogAdminTraits>;

}  // namespace platform
