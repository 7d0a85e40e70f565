#pragma once

#include <windows.h>

#include <utility>

#include "bridge/win32/last_error.h"

namespace corvane {

/// The scoped owner of one handle. `Traits` say what is owned:
///   using Handle = ...;
///   static Handle none();               // the value that owns nothing and is never closed
///   static void close(Handle) noexcept;
/// A closer that is found at run time is a member of the traits, and their `close` is not static:
///   ScopedHandle<SidTraits> sid({RUNTIME_FUNCTION(advapi32, FreeSid)});
/// Closing keeps the thread's last error.
template <class Traits>
class ScopedHandle {
 public:
  using Handle = typename Traits::Handle;

  explicit ScopedHandle(Handle handle = Traits::none()) noexcept : handle_(handle) {}
  explicit ScopedHandle(const Traits& traits, Handle handle = Traits::none()) noexcept
      : traits_(traits), handle_(handle) {}
  ScopedHandle(ScopedHandle&& other) noexcept : traits_(other.traits_), handle_(other.release()) {}
  ScopedHandle& operator=(ScopedHandle&& other) noexcept {
    std::swap(traits_, other.traits_);
    std::swap(handle_, other.handle_);
    return *this;
  }
  ScopedHandle(const ScopedHandle&) = delete;
  ScopedHandle& operator=(const ScopedHandle&) = delete;
  ~ScopedHandle() { close(); }

  explicit operator bool() const noexcept { return handle_ != Traits::none(); }
  Handle get() const noexcept { return handle_; }

  /// Hands the handle over: it is the caller's to close, or visibly to leave open.
  [[nodiscard]] Handle release() noexcept { return std::exchange(handle_, Traits::none()); }

  /// Where a function that opens is to put what it opened. What was owned is closed.
  [[nodiscard]] Handle* receive() noexcept {
    close();
    return &handle_;
  }

  void close() noexcept {
    if (handle_ != Traits::none()) {
      const LastErrorKeeper keeper;
      traits_.close(release());
    }
  }

 private:
  [[no_unique_address]] Traits traits_;
  Handle handle_;
};

struct ModuleTraits {
  using Handle = HMODULE;
  static Handle none() noexcept { return nullptr; }
  static void close(Handle module) noexcept { FreeLibrary(module); }
};

/// A module loaded with LoadLibrary; freed with FreeLibrary.
using ScopedModule = ScopedHandle<ModuleTraits>;

struct LocalTraits {
  using Handle = void*;
  static Handle none() noexcept { return nullptr; }
  static void close(Handle block) noexcept { LocalFree(block); }
};

/// A block that the system allocated with LocalAlloc, such as FormatMessage's text; freed with
/// LocalFree.
using LocalHolder = ScopedHandle<LocalTraits>;

struct KernelHandleTraits {
  using Handle = HANDLE;
  static Handle none() noexcept { return nullptr; }
  static void close(Handle handle) noexcept { CloseHandle(handle); }
};

/// A kernel object other than a file, such as a mapping: null when it could not be made.
using ScopedKernelHandle = ScopedHandle<KernelHandleTraits>;

struct FileTraits {
  using Handle = HANDLE;
  static Handle none() noexcept { return INVALID_HANDLE_VALUE; }
  static void close(Handle file) noexcept { CloseHandle(file); }
};

/// An open file: INVALID_HANDLE_VALUE when it could not be opened.
using ScopedFile = ScopedHandle<FileTraits>;

struct SearchTraits {
  using Handle = HANDLE;
  static Handle none() noexcept { return INVALID_HANDLE_VALUE; }
  static void close(Handle search) noexcept { FindClose(search); }
};

/// A search begun with FindFirstFile; ended with FindClose.
using ScopedSearch = ScopedHandle<SearchTraits>;

struct ViewTraits {
  using Handle = void*;
  static Handle none() noexcept { return nullptr; }
  static void close(Handle view) noexcept { UnmapViewOfFile(view); }
};

/// A mapped view of a file; ended with UnmapViewOfFile.
using ScopedView = ScopedHandle<ViewTraits>;

}  // namespace corvane
